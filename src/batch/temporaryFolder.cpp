#include "batch/temporaryFolder.h"

#include "batch/fileError.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

cTemporaryFolder::cTemporaryFolder() {
    std::error_code noDirectory;
    const std::filesystem::path directory = std::filesystem::temp_directory_path(noDirectory);
    if (noDirectory) throw systemFileError("use", "the folder for temporary files", noDirectory.value());

    std::string name = directory / "timbersim-run-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw systemFileError("make a folder in", directory, errno);
    path = name;
}

cTemporaryFolder::~cTemporaryFolder() {
    std::error_code alreadyGone;
    std::filesystem::remove_all(path, alreadyGone);
}
