#include "editor/typedLines.h"

#include <QString>
#include <QTextDocument>
#include <QTextEdit>

QString typedLines(const QTextEdit& editor) {
    QString text = editor.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));  // Return
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));       // Shift and Return
    return text;
}
