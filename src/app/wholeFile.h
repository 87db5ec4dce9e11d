#pragma once

class QByteArray;
class QString;

/// Files that are read or written whole or not at all. Each returns what went wrong, in words for the user; empty if
/// nothing did.

/// Reads a plain file into `text`. Pipes and devices are refused: they can keep us waiting for ever.
QString readWholeFile(const QString& path, QByteArray& text);

/// Puts `text` in the place of the file at `path`, whatever comes between: it is written beside its place, to `path`
/// and ".new", is complete on the disk before it takes the place in one step, and is removed where it can't. Nothing is
/// replaced that is a symbolic link or no plain file, or that may not be written to. The permissions of what stood
/// there stay, and its group, if the user is in it; other names of the same file keep the old text.
QString replaceFile(const QString& path, const QByteArray& text);
