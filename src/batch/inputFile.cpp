#include "batch/inputFile.h"

#include "batch/fileDescriptor.h"
#include "batch/fileError.h"
#include "batch/stopSignal.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

std::string readPlainFile(const std::string& path) {
    if (path.find('\0') != std::string::npos)
        throw cFileError{"can't read the model: There is a zero byte in its name."};
    struct stat found {};
    if (stat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode))
        throw cFileError{"can't read " + path + ": It is not a plain file."};
    return readFile(path);
}

std::string readFile(const std::string& path) {
    const cFileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    throwIfStopped();
    if (!file.isOpen()) throw systemFileError("read", path, errno);

    std::string text;
    std::array<char, 65536> piece{};
    for (;;) {
        const ssize_t count = read(file.number(), piece.data(), piece.size());
        const int errorNumber = errno;
        throwIfStopped();
        if (count < 0 && errorNumber != EINTR) throw systemFileError("read", path, errorNumber);
        if (count == 0) return text;
        if (count > 0) text.append(piece.data(), static_cast<std::size_t>(count));
    }
}
