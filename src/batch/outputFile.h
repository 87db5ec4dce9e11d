#pragma once

#include "batch/fileDescriptor.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>

/// The path that stands for standard output.
inline constexpr std::string_view standardOutput = "-";

/// A file that comes into being whole or not at all. It is written beside its place under a name of its own, so that
/// what stood there before is kept until `commit` puts the new one in its stead, with the old one's permissions.
/// Standard output, pipes and devices can't be replaced: these are written to as they are.
class cOutputFile {
public:
    /// Opens for writing; a pipe may keep us waiting for its reader.
    /// @param path where the file is to stand, or "-" for standard output.
    /// @throws cFileError if nothing could be written there, and cException (code 5) if the user's stop came while it
    /// kept us waiting. Nothing has been touched then.
    explicit cOutputFile(const std::string& path);
    /// Leaves everything as it was before, unless committed.
    ~cOutputFile();
    cOutputFile(const cOutputFile&) = delete;
    cOutputFile& operator=(const cOutputFile&) = delete;

    /// Appends. The first failure is kept for `commit`, and what is written behind it is dropped.
    void write(std::string_view text);
    /// Closes the file and puts it in its place. @throws cFileError if not everything could be written; what stood in
    /// the place before is still there then.
    void commit();

private:
    void openStandardOutput();
    void openPath();
    void openInPlace();
    void openBeside(const struct stat* old);
    [[noreturn]] void fail(int errorNumber) const;

    std::string name;  // for messages
    std::filesystem::path target;
    std::filesystem::path part;  // what is written before `commit`; empty where that is the target itself
    cFileDescriptor file;
    int failure = 0;  // the error number of the first write that failed
};
