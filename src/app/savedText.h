#pragma once

class QByteArray;
class QString;
class QWidget;

/// Writes `text` to `path`. The file comes into being whole or not at all; what stood there before is kept until then.
/// A failure is told in a box of `asker`.
/// @return whether the file was written.
bool saveText(QWidget* asker, const QString& path, const QByteArray& text);

/// The box that tells why `path` couldn't be written.
void showSaveFailure(QWidget* asker, const QString& path, const QString& reason);
