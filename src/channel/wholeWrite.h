#pragma once

#include <string_view>

/// Writes all of `bytes` to an open file of the system, and waits where it must.
/// @return false if nobody takes them: the reader is gone, or the disk is full.
bool writeWhole(int descriptor, std::string_view bytes);

/// Whether the other end of a pipe or socket that was written to is gone.
bool isReaderGone(int descriptor);
