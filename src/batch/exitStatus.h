#pragma once

/// How the program tells its caller what became of the run.
namespace exitStatus {
inline constexpr int done = 0;
inline constexpr int modelFailed = 1;
inline constexpr int wrongUsage = 2;
inline constexpr int fileTrouble = 3;  ///< a file can't be read or written
inline constexpr int stopped = 130;    ///< by Ctrl-C; 128 and the number of the signal, as shells count
}  // namespace exitStatus
