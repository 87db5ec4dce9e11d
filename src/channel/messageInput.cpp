#include "channel/messageInput.h"

#include <array>
#include <cerrno>
#include <unistd.h>

bool cMessageInput::receive() {
    std::array<char, 65536> piece{};
    const ssize_t count = read(descriptor, piece.data(), piece.size());
    if (count > 0) {
        lines.append({piece.data(), static_cast<std::size_t>(count)});
        return true;
    }
    return count < 0 && (errno == EINTR || errno == EAGAIN);
}
