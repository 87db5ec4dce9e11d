#include "batch/outputFile.h"

#include "batch/fileError.h"
#include "batch/stopSignal.h"

#include <cerrno>
#include <fcntl.h>

namespace {

constexpr mode_t newFileMode = 0666;  // less what the user's mask takes away
constexpr mode_t permissionBits = 07777;

/// A file beside `target` that isn't there yet: this process's own, also among others in the same folder.
std::filesystem::path partPath(const std::filesystem::path& target) {
    static int counter = 0;
    const std::string number = std::to_string(getpid()) + '-' + std::to_string(++counter);
    return target.parent_path() / (".timbersim-run-" + number + ".part");
}

}  // namespace

cOutputFile::cOutputFile(const std::string& path) : name(path), target(path) {
    if (path == standardOutput)
        openStandardOutput();
    else
        openPath();
}

cOutputFile::~cOutputFile() {
    if (!part.empty()) unlink(part.c_str());
}

/// A descriptor of our own, so that it can be closed: some file systems tell only then that a disk is full.
void cOutputFile::openStandardOutput() {
    name = "standard output";
    file = cFileDescriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0));
    if (!file.isOpen()) fail(errno);
}

void cOutputFile::openPath() {
    struct stat old {};
    const bool exists = stat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT) fail(errno);
    if (exists && S_ISDIR(old.st_mode)) fail(EISDIR);
    if (exists && !S_ISREG(old.st_mode)) return openInPlace();
    openBeside(exists ? &old : nullptr);
}

void cOutputFile::openInPlace() {
    file = cFileDescriptor(open(target.c_str(), O_WRONLY | O_CLOEXEC));
    if (file.isOpen()) return;
    if (errno == EINTR) throwIfStopped();
    fail(errno);
}

void cOutputFile::openBeside(const struct stat* old) {
    if (old != nullptr) {
        // Replacing a file asks for no right to write to it; who took that right away meant to keep the file.
        if (access(target.c_str(), W_OK) != 0) fail(errno);
        std::error_code unresolved;
        const std::filesystem::path behindLinks = std::filesystem::canonical(target, unresolved);
        if (!unresolved) target = behindLinks;
    }
    do {
        part = partPath(target);
        file = cFileDescriptor(open(part.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode));
    } while (!file.isOpen() && errno == EEXIST);
    if (!file.isOpen()) {
        part.clear();
        fail(errno);
    }
    if (old != nullptr) fchmod(file.number(), old->st_mode & permissionBits);
}

void cOutputFile::write(std::string_view text) {
    while (failure == 0 && !text.empty()) {
        const ssize_t count = ::write(file.number(), text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            failure = errno;
    }
}

void cOutputFile::commit() {
    if (!file.close() && failure == 0) failure = errno;
    if (failure != 0) fail(failure);
    if (part.empty()) return;
    if (std::rename(part.c_str(), target.c_str()) != 0) fail(errno);
    part.clear();
}

void cOutputFile::fail(int errorNumber) const { throw systemFileError("write", name, errorNumber); }
