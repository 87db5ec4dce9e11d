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

std::uint32_t cCalendar::keep(std::shared_ptr<cActInstance> instance) {
    if (room.empty()) {
        instances.push_back(std::move(instance));
        return static_cast<std::uint32_t>(instances.size()) - 1;
    }
    const std::uint32_t place = room.back();
    room.pop_back();
    instances[place] = std::move(instance);
    return place;
}

void cCalendar::insert(std::shared_ptr<cActInstance> instance) {
    const double end = instance->getEndTime();
    const std::uint32_t place = keep(std::move(instance));
    ++count;
    if (std::isnan(end)) {
        aside.push_back({place, std::move(heap)});
        heap.clear();
        return;
    }
    const cEntry entry{keyOf(end, ++scheduled), place};
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

const std::shared_ptr<cActInstance>& cCalendar::front() const {
    return instances[heap.empty() ? aside.back().place : heap.front().place];
}

std::uint32_t cCalendar::takePlace() {
    if (heap.empty()) {
        const std::uint32_t place = aside.back().place;
        heap = std::move(aside.back().heap);
        aside.pop_back();
        return place;
    }
    const std::uint32_t place = heap.front().place;
    const cEntry last = heap.back();
    heap.pop_back();
    if (!heap.empty()) siftDown(last);
    return place;
}

std::shared_ptr<cActInstance> cCalendar::takeFront() {
    const std::uint32_t place = takePlace();
    --count;
    room.push_back(place);
    return std::move(instances[place]);
}

void cCalendar::clear() {
    instances.clear();
    room.clear();
    heap.clear();
    aside.clear();
    count = 0;
}

std::vector<std::shared_ptr<cActInstance>> cCalendar::inOrder() const {
    std::vector<std::shared_ptr<cActInstance>> ordered;
    const auto append = [&](cHeap entries) {
        std::ranges::sort(entries, {}, &cEntry::key);
        for (const cEntry& entry : entries) ordered.push_back(instances[entry.place]);
    };
    append(heap);
    for (auto behind = aside.rbegin(); behind != aside.rend(); ++behind) {
        ordered.push_back(instances[behind->place]);
        append(behind->heap);
    }
    return ordered;
}
