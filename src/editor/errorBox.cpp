#include "editor/errorBox.h"

#include "editor/messageBox.h"

void showErrorBox(QWidget* parent, const QString& title, const QString& text, std::int32_t code) {
    messageBox::show(parent, QMessageBox::Critical, title, text, code);
}
