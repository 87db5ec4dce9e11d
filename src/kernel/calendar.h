#pragma once

#include "flow/counted.h"

#include <cstdint>
#include <vector>

class cActInstance;

/// The ends of running instances that are still to come, first things first: by end time, those of one time in the
/// order in which they were scheduled.
///
/// An instance stands before the first one that doesn't end earlier or at the same time. For times that are numbers
/// that is a priority queue: here a binary heap whose entries carry time and order as one number, so that the walk down
/// chooses the smaller child without a branch. A time that is not a number is before nothing and behind nothing: it
/// goes to the very front, and stands in the way of all that was there, which is set aside until it has been taken.
/// Cost: the logarithm of the number of instances.
class cCalendar {
public:
    cCalendar() = default;
    ~cCalendar() { clear(); }
    cCalendar(const cCalendar&) = delete;
    cCalendar& operator=(const cCalendar&) = delete;

    bool empty() const { return heap.empty() && aside.empty(); }
    std::size_t size() const { return count; }
    /// The next one. Only of a calendar that isn't empty, as `takeFront`.
    const cActInstance& front() const { return *(heap.empty() ? aside.back().instance : heap.front().instance); }
    void insert(cShared<cActInstance> instance);
    cShared<cActInstance> takeFront();
    void clear();

    /// All instances in their order. Cost: a sort.
    std::vector<cShared<cActInstance>> inOrder() const;

private:
    __extension__ using cKey = unsigned __int128;  // the time, in the order of numbers, and behind it the order
    struct cEntry {
        cKey key;
        cActInstance* instance;  // held
    };
    using cHeap = std::vector<cEntry>;
    /// What stands behind an instance whose end is not a number.
    struct cAside {
        cActInstance* instance;  // held
        cHeap heap;
    };

    static cKey keyOf(double time, std::uint64_t order);
    cActInstance* releaseFront();
    void siftUp(const cEntry& entry);
    void siftDown(const cEntry& entry);

    cHeap heap;
    std::vector<cAside> aside;  // the last one is next
    std::uint64_t scheduled = 0;
    std::size_t count = 0;
};
