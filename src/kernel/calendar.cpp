#include "kernel/calendar.h"

#include "kernel/activityInstance.h"

#include <algorithm>
#include <bit>
#include <cmath>

/// A time's bits as a number of the same order: of negative times all bits are turned round, of others the sign alone.
/// Both zeros are one time.
cCalendar::cKey cCalendar::keyOf(double time, std::uint64_t order) {
    constexpr std::uint64_t sign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(time + 0.0);
    const std::uint64_t ordered = (bits & sign) != 0 ? ~bits : bits | sign;
    return static_cast<cKey>(ordered) << 64 | order;
}

void cCalendar::insert(cShared<cActInstance> instance) {
    const double end = instance->getEndTime();
    ++count;
    if (std::isnan(end)) {
        aside.push_back({instance.release(), std::move(heap)});
        heap.clear();
        return;
    }
    const cEntry entry{keyOf(end, ++scheduled), instance.release()};
    heap.push_back(entry);
    siftUp(entry);
}

/// Moves the hole at the end of the heap up to where `entry` belongs.
void cCalendar::siftUp(const cEntry& entry) {
    std::size_t hole = heap.size() - 1;
    while (hole > 0) {
        const std::size_t parent = (hole - 1) / 2;
        if (heap[parent].key < entry.key) break;
        heap[hole] = heap[parent];
        hole = parent;
    }
    heap[hole] = entry;
}

/// Moves the hole at the top of the heap down to where `entry` belongs.
void cCalendar::siftDown(const cEntry& entry) {
    const std::size_t size = heap.size();
    std::size_t hole = 0;
    for (std::size_t child = 1; child < size; child = 2 * hole + 1) {
        if (child + 1 < size) child += static_cast<std::size_t>(heap[child + 1].key < heap[child].key);
        if (entry.key < heap[child].key) break;
        heap[hole] = heap[child];
        hole = child;
    }
    heap[hole] = entry;
}

cActInstance* cCalendar::releaseFront() {
    if (heap.empty()) {
        cActInstance* instance = aside.back().instance;
        heap = std::move(aside.back().heap);
        aside.pop_back();
        return instance;
    }
    cActInstance* instance = heap.front().instance;
    const cEntry last = heap.back();
    heap.pop_back();
    if (!heap.empty()) siftDown(last);
    return instance;
}

cShared<cActInstance> cCalendar::takeFront() {
    --count;
    return cShared<cActInstance>::adopt(releaseFront());
}

void cCalendar::clear() {
    while (!empty()) {
        for (const cEntry& entry : heap) cShared<cActInstance>::adopt(entry.instance);
        heap.clear();
        if (!aside.empty()) cShared<cActInstance>::adopt(releaseFront());
    }
    count = 0;
}

std::vector<cShared<cActInstance>> cCalendar::inOrder() const {
    std::vector<cShared<cActInstance>> ordered;
    const auto append = [&](cHeap entries) {
        std::ranges::sort(entries, {}, &cEntry::key);
        for (const cEntry& entry : entries) ordered.emplace_back(entry.instance);
    };
    append(heap);
    for (auto behind = aside.rbegin(); behind != aside.rend(); ++behind) {
        ordered.emplace_back(behind->instance);
        append(behind->heap);
    }
    return ordered;
}
