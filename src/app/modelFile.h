#pragma once

class QString;
class tsApp;

/// Where the window meets model files on the disk.

/// Writes the model to `path`. @return whether the file holds it now; if not, the user has been told why.
bool writeModelFile(tsApp& window, const QString& path);
/// Fills the empty model from `path`. @return whether it holds the file's model now; if not, the user has been told
/// why.
bool readModelFile(tsApp& window, const QString& path);
