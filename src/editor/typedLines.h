#pragma once

class QString;
class QTextEdit;

/// The text of an editor of several lines as the user typed it: lines are parted by line feeds, and no-break spaces
/// stay what they are, which Qt's own plain text turns into blanks.
QString typedLines(const QTextEdit& editor);
