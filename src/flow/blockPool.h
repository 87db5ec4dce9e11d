#pragma once

#include <array>
#include <cstddef>
#include <new>

/// Blocks of memory for the small things that every event makes and lets go of: amounts on their way, holdings,
/// running instances. A block that was let go is kept for the next of its size, so that a simulation in its steady
/// state asks the system for nothing.
///
/// Each thread has its own blocks, and gives them back when it ends; a block may be let go by another thread. Where the
/// address sanitizer looks on nothing is kept, so that it sees every use of what was let go.
class cBlockPool {
public:
    static void* take(std::size_t size) {
        if (keepsNothing) return ::operator new(size);
        cList& list = listOf(size);
        if (list.first == nullptr) return ::operator new(roundedUp(size));
        cFreeBlock* block = list.first;
        list.first = block->next;
        return block;
    }
    static void giveBack(void* memory, std::size_t size) noexcept {
        if (keepsNothing) return ::operator delete(memory);
        cList& list = listOf(size);
        list.first = new (memory) cFreeBlock{list.first};
    }

    static constexpr std::size_t largestSize = 256;

private:
#if defined(__SANITIZE_ADDRESS__)
    static constexpr bool keepsNothing = true;
#elif defined(__has_feature)
    static constexpr bool keepsNothing = __has_feature(address_sanitizer);
#else
    static constexpr bool keepsNothing = false;
#endif
    static constexpr std::size_t step = 16;

    struct cFreeBlock {
        cFreeBlock* next;
    };
    struct cList {
        cFreeBlock* first = nullptr;
        ~cList() {
            while (first != nullptr) {
                cFreeBlock* next = first->next;
                ::operator delete(first);
                first = next;
            }
        }
    };

    static std::size_t roundedUp(std::size_t size) { return (size + step - 1) / step * step; }
    static cList& listOf(std::size_t size) {
        static thread_local std::array<cList, largestSize / step + 1> lists;
        return lists[roundedUp(size) / step];
    }
};

/// Takes single objects from the pool, and everything else from the system.
template <typename cObject>
class cPoolAllocator {
public:
    using value_type = cObject;

    cPoolAllocator() = default;
    template <typename cOther>
    cPoolAllocator(const cPoolAllocator<cOther>&) {}  // NOLINT(google-explicit-constructor): an allocator's own rule

    cObject* allocate(std::size_t count) {
        const std::size_t size = count * sizeof(cObject);
        return static_cast<cObject*>(size <= cBlockPool::largestSize ? cBlockPool::take(size) : ::operator new(size));
    }
    void deallocate(cObject* memory, std::size_t count) noexcept {
        const std::size_t size = count * sizeof(cObject);
        if (size <= cBlockPool::largestSize)
            cBlockPool::giveBack(memory, size);
        else
            ::operator delete(memory);
    }
    template <typename cOther>
    bool operator==(const cPoolAllocator<cOther>&) const {
        return true;
    }
};
