#pragma once

class QString;
class QWidget;

/// What the Help menu tells.

QString aboutText();
/// The names and functions that expressions know, as rich text.
QString functionListText();

/// Show the texts in boxes of `parent`, and wait until they are closed.
void showAbout(QWidget* parent);
void showFunctionList(QWidget* parent);
