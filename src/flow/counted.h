#pragma once

#include "flow/blockPool.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <utility>

/// An object that goes when nobody holds it any more. Its memory comes from the pool of blocks.
///
/// The count of holders is a plain number: objects, and all that hold them, belong to one thread. That is why it isn't
/// a std::shared_ptr, which counts with the whole machine watching as soon as the process has a second thread.
class cCounted {
public:
    cCounted(const cCounted&) = delete;
    cCounted& operator=(const cCounted&) = delete;

    /// How many hold the object. Nobody ever does where it is a plain variable.
    std::uint32_t holderCount() const { return holders; }

    static void* operator new(std::size_t size) { return cBlockPool::take(size); }
    static void operator delete(void* memory, std::size_t size) { cBlockPool::giveBack(memory, size); }

protected:
    cCounted() = default;
    virtual ~cCounted() = default;

private:
    template <typename cObject>
    friend class cShared;

    std::uint32_t holders = 0;
};

/// Holds an object of a class derived from cCounted, or nothing.
template <typename cObject>
class cShared {
public:
    cShared() = default;
    cShared(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): as any pointer
    explicit cShared(cObject* newObject) : object(newObject) { hold(); }
    cShared(const cShared& other) : object(other.object) { hold(); }
    cShared(cShared&& other) noexcept : object(std::exchange(other.object, nullptr)) {}
    template <std::derived_from<cObject> cDerived>
    cShared(const cShared<cDerived>& other) : object(other.get()) {  // NOLINT(google-explicit-constructor)
        hold();
    }
    ~cShared() { letGo(); }
    cShared& operator=(cShared other) noexcept {
        std::swap(object, other.object);
        return *this;
    }

    cObject* get() const { return object; }
    cObject* operator->() const { return object; }
    cObject& operator*() const { return *object; }
    explicit operator bool() const { return object != nullptr; }
    bool operator==(const cShared& other) const = default;
    bool operator==(std::nullptr_t) const { return object == nullptr; }

    /// Gives the object away without letting go of it: somebody must `adopt` it.
    cObject* release() { return std::exchange(object, nullptr); }
    static cShared adopt(cObject* released) {
        cShared shared;
        shared.object = released;
        return shared;
    }
    /// How many hold the object; 0 if there is none.
    std::uint32_t holderCount() const { return object == nullptr ? 0 : object->holderCount(); }

private:
    void hold() {
        if (object != nullptr) ++static_cast<cCounted*>(object)->holders;
    }
    void letGo() {
        if (object == nullptr) return;
        auto* counted = static_cast<cCounted*>(object);
        if (--counted->holders == 0) delete counted;
    }

    cObject* object = nullptr;
};

/// A new object, held by the pointer that comes back alone.
template <typename cObject, typename... cArguments>
cShared<cObject> makeCounted(cArguments&&... arguments) {
    return cShared<cObject>(new cObject(std::forward<cArguments>(arguments)...));
}
