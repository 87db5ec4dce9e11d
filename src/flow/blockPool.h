#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <new>

/// Blocks of memory for the small things that a simulation makes and lets go of all the time: compounds, instances of
/// activities, lists of what a draw has taken. A block that was let go is kept for the next of its size, so that a
/// simulation in its steady state asks the system for next to nothing.
///
/// Each thread has its own blocks, which it lets go of itself, and gives back to the system when it ends; what is let
/// go later than that stays with the process. Where the address sanitizer looks on nothing is kept, so that it sees
/// every use of what was let go.
class cBlockPool {
public:
    static void* take(std::size_t size) {
        if (keepsNothing || size > largestSize) return ::operator new(size);
        cFreeBlock*& first = listOf(size);
        if (first == nullptr) return takeFromSystem(size);
        cFreeBlock* block = first;
        first = block->next;
        return block;
    }
    static void giveBack(void* memory, std::size_t size) noexcept {
        if (keepsNothing || size > largestSize) return ::operator delete(memory);
        cFreeBlock*& first = listOf(size);
        first = new (memory) cFreeBlock{first};
    }

private:
#if defined(__SANITIZE_ADDRESS__)
    static constexpr bool keepsNothing = true;
#elif defined(__has_feature)
    static constexpr bool keepsNothing = __has_feature(address_sanitizer);
#else
    static constexpr bool keepsNothing = false;
#endif
    static constexpr std::size_t step = 16;
    static constexpr std::size_t largestSize = 256;

    struct cFreeBlock {
        cFreeBlock* next;
    };
    using cLists = std::array<cFreeBlock*, largestSize / step + 1>;

    static std::size_t stepsOf(std::size_t size) { return (size + step - 1) / step; }
    static cFreeBlock*& listOf(std::size_t size) { return lists[stepsOf(size)]; }
    static void* takeFromSystem(std::size_t size);

    // Without a destructor, so that an access needs no check; takeFromSystem sees to the end of the thread.
    static inline constinit thread_local cLists lists{};
};

/// Takes what is small from the pool, and everything else from the system.
template <typename cObject>
class cPoolAllocator {
public:
    using value_type = cObject;

    cPoolAllocator() = default;
    template <typename cOther>
    cPoolAllocator(const cPoolAllocator<cOther>&) {}  // NOLINT(google-explicit-constructor): an allocator's own rule

    cObject* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(cObject)) throw std::bad_array_new_length();
        return static_cast<cObject*>(cBlockPool::take(count * sizeof(cObject)));
    }
    void deallocate(cObject* memory, std::size_t count) noexcept {
        cBlockPool::giveBack(memory, count * sizeof(cObject));
    }
    template <typename cOther>
    bool operator==(const cPoolAllocator<cOther>&) const {
        return true;
    }
};
