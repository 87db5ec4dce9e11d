#include "channel/wholeWrite.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

/// Until there is room, or nobody who could make some: the next write tells which.
void awaitRoom(int descriptor) {
    pollfd awaited{descriptor, POLLOUT, 0};
    poll(&awaited, 1, -1);
}

}  // namespace

bool writeWhole(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno == EAGAIN)  // whoever shares the file made it one that doesn't wait
            awaitRoom(descriptor);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

bool isReaderGone(int descriptor) {
    pollfd looked{descriptor, 0, 0};
    return poll(&looked, 1, 0) > 0;  // with no events asked for, only ends are told
}
