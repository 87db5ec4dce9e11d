#include "flow/blockPool.h"

/// A thread that has taken blocks gives those that it keeps back when it ends.
void* cBlockPool::takeFromSystem(std::size_t size) {
    struct cReturn {
        ~cReturn() {
            for (cFreeBlock*& first : lists)
                while (first != nullptr) {
                    cFreeBlock* block = first;
                    first = block->next;
                    ::operator delete(block);
                }
        }
    };
    static thread_local const cReturn atEnd;
    static_cast<void>(&atEnd);
    return ::operator new(stepsOf(size) * step);
}
