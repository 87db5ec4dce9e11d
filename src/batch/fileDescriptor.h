#pragma once

#include <unistd.h>
#include <utility>

/// Owns an open file of the system. Empty when opening failed.
class cFileDescriptor {
public:
    cFileDescriptor() = default;
    /// @param opened the result of open(): below 0 if that failed.
    explicit cFileDescriptor(int opened) : descriptor(opened) {}
    ~cFileDescriptor() { close(); }
    cFileDescriptor(cFileDescriptor&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}
    cFileDescriptor& operator=(cFileDescriptor&& other) noexcept {
        if (this != &other) close();
        descriptor = std::exchange(other.descriptor, -1);
        return *this;
    }

    bool isOpen() const { return descriptor >= 0; }
    int number() const { return descriptor; }
    /// @return whether the system took all that had been written. Some file systems tell only now.
    bool close() { return !isOpen() || ::close(std::exchange(descriptor, -1)) == 0; }

private:
    int descriptor = -1;
};
