#include "app/traceDialog.h"

#include "app/savedText.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace {

constexpr QSize startSize(640, 480);

}  // namespace

traceDialog::traceDialog(const QString& traceName, const QString& traceText, QWidget* parent)
    : QDialog(parent), text(traceText) {
    setObjectName(QStringLiteral("traceDialog"));
    setWindowTitle(traceName);
    // The button leads nowhere: it has never been joined to `saveTrace`, which others can call.
    auto* save = new QPushButton(tr("Save To File"));
    save->setObjectName(QStringLiteral("saveTraceButton"));
    save->setAutoDefault(false);
    auto* label = new QLabel(text);
    label->setObjectName(QStringLiteral("traceLabel"));
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMargin(6);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("traceArea"));
    area->setWidgetResizable(true);
    area->setWidget(label);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(save, 0, Qt::AlignLeft);
    layout->addWidget(area, 1);
    resize(startSize);
}

void traceDialog::saveTrace() {
    const QString path =
        QFileDialog::getSaveFileName(this, tr("Save Outfile"), QStringLiteral("."), QStringLiteral("*.*"));
    if (!path.isEmpty()) saveText(this, path, text.toUtf8());
}
