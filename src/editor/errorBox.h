#pragma once

#include <cstdint>

class QString;
class QWidget;

/// Shows a critical box as `messageBox::show` does. @param code of the failure that is told; 0 where there is none.
void showErrorBox(QWidget* parent, const QString& title, const QString& text, std::int32_t code = 0);
