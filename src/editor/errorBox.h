#pragma once

class QString;
class QWidget;

/// Shows a critical box and waits until it is closed.
///
/// The box belongs to `parent` and may be taken down together with it: a caller that goes on afterwards must know
/// whether what it works on is still there.
void showErrorBox(QWidget* parent, const QString& title, const QString& text);
