#pragma once

#include <filesystem>

/// A folder of this process alone in the system's temporary directory, gone with all that is in it at the end.
class cTemporaryFolder {
public:
    /// @throws cFileError if it can't be made.
    cTemporaryFolder();
    ~cTemporaryFolder();
    cTemporaryFolder(const cTemporaryFolder&) = delete;
    cTemporaryFolder& operator=(const cTemporaryFolder&) = delete;

    const std::filesystem::path& getPath() const { return path; }

private:
    std::filesystem::path path;
};
