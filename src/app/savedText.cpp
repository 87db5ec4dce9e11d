#include "app/savedText.h"

#include "editor/messageBox.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>

namespace {

/// The context of the texts below for translations.
struct cSavedText {
    Q_DECLARE_TR_FUNCTIONS(cSavedText)
};

}  // namespace

bool saveText(QWidget* asker, const QString& path, const QByteArray& text) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit()) return true;

    showSaveFailure(asker, path, file.errorString());
    return false;
}

void showSaveFailure(QWidget* asker, const QString& path, const QString& reason) {
    messageBox::show(asker, QMessageBox::Critical, cSavedText::tr("Error"),
                     cSavedText::tr("Cannot save %1:\n%2").arg(QDir::toNativeSeparators(path), reason));
}
