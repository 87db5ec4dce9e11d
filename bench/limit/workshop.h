#pragma once

// What the hand-written programs are made of: the engine's random generator and samples, a calendar, and the same
// statistics of queues and activities as the engine keeps, as plain structs that the compiler can see through.
// No language, no rounding, no trace, no names: this is how fast a simulation of that kind can be.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

class cRandom {
public:
    explicit cRandom(std::uint32_t seed) : state(seed) {}

    double uniform() {
        const std::uint64_t low = step() - 1;
        const std::uint64_t high = step() - 1;
        const std::uint64_t pair = low + high * 2147483646U;
        if (pair >= 0x3FE0000000000000) return uniform();
        return static_cast<double>(pair / 511) * 0x1p-53;
    }
    double uniform(double low, double high) { return uniform() * (high - low) + low; }
    double exponential(double rate) { return -std::log(1.0 - uniform()) / rate; }
    double triangular(double low, double mode, double high) {
        const double u = uniform();
        const double range = high - low;
        if (u <= 2.0 / range) return low + std::sqrt(range * u * (mode - low));
        return high - std::sqrt(range * (1.0 - u) * (high - mode));
    }
    double normal(double mean, double deviation) {
        double p;
        double s;
        do {
            p = 2.0 * uniform() - 1.0;
            const double q = 2.0 * uniform() - 1.0;
            s = p * p + q * q;
        } while (s >= 1.0 || s == 0.0);
        return mean + deviation * p * std::sqrt(-2.0 * std::log(s) / s);
    }

private:
    std::uint32_t step() {
        const std::uint64_t product = std::uint64_t{48271} * state;  // modulo 2^31 - 1 without a division
        std::uint64_t folded = (product & 0x7FFFFFFF) + (product >> 31);
        if (folded >= 0x7FFFFFFF) folded -= 0x7FFFFFFF;
        return state = static_cast<std::uint32_t>(folded);
    }

    std::uint32_t state;
};

/// The ends of running instances. A binary heap whose entries carry time and order of scheduling as one number, so that
/// the smaller child is chosen without a branch. Times are not negative.
class cCalendar {
public:
    struct cEnd {
        unsigned __int128 key;
        std::uint32_t activity;
        double duration;
    };

    bool empty() const { return ends.empty(); }
    double nextTime() const { return std::bit_cast<double>(static_cast<std::uint64_t>(ends.front().key >> 64)); }

    void schedule(double time, std::uint32_t activity) {
        const auto key = static_cast<unsigned __int128>(std::bit_cast<std::uint64_t>(time)) << 64 | ++scheduled;
        std::size_t hole = ends.size();
        ends.push_back({});
        while (hole > 0) {
            const std::size_t parent = (hole - 1) / 2;
            if (ends[parent].key < key) break;
            ends[hole] = ends[parent];
            hole = parent;
        }
        ends[hole] = {key, activity, 0.0};
    }
    std::uint32_t take() {
        const std::uint32_t activity = ends.front().activity;
        const cEnd last = ends.back();
        ends.pop_back();
        const std::size_t count = ends.size();
        if (count == 0) return activity;
        std::size_t hole = 0;
        for (std::size_t child = 1; child + 1 < count; child = 2 * hole + 1) {
            child += static_cast<std::size_t>(ends[child + 1].key < ends[child].key);
            if (last.key < ends[child].key) break;
            ends[hole] = ends[child];
            hole = child;
        }
        const std::size_t only = 2 * hole + 1;
        if (only + 1 == count && ends[only].key < last.key) {
            ends[hole] = ends[only];
            hole = only;
        }
        ends[hole] = last;
        return activity;
    }
    void clear() {
        ends.clear();
        scheduled = 0;
    }

private:
    std::vector<cEnd> ends;
    std::uint64_t scheduled = 0;
};

/// A queue of amounts and its figures.
struct cStock {
    double count = 0.0;
    double total = 0.0;
    double smallest = 0.0;
    double largest = 0.0;
    double area = 0.0;
    double lastChange = 0.0;

    void add(double amount, double now) {
        area += (now - lastChange) * count;
        lastChange = now;
        count += amount;
        total += amount;
        largest = std::max(largest, count);
    }
    void take(double amount, double now) {
        area += (now - lastChange) * count;
        lastChange = now;
        count -= amount;
        smallest = std::min(smallest, count);
    }
    void print(const char* name, double now) const {
        std::printf("%s now %g, total %g, average %g, wait %g, from %g to %g\n", name, count, total, area / now,
                    area / total, smallest, largest);
    }
};

/// The figures of an activity: durations by Welford's recurrence (1962), and the intervals between starts.
struct cWork {
    std::int64_t instances = 0;
    double meanDuration = 0.0;
    double durationSpread = 0.0;
    double shortest = 1e6;
    double longest = -1.0;
    double firstStart = 1e5;
    double lastStart = -1.0;
    double firstEnd = 1e5;
    double lastEnd = -1.0;
    double meanInterval = 0.0;
    double intervalSpread = 0.0;
    double shortestInterval = 1e6;
    double longestInterval = -1.0;

    void count(double start, double duration) {
        if (instances > 0) countInterval(start - lastStart);
        ++instances;
        firstStart = std::min(firstStart, start);
        lastStart = start;
        firstEnd = std::min(firstEnd, start + duration);
        lastEnd = std::max(lastEnd, start + duration);
        shortest = std::min(shortest, duration);
        longest = std::max(longest, duration);
        const double delta = duration - meanDuration;
        meanDuration += delta / static_cast<double>(instances);
        durationSpread += (duration - meanDuration) * delta;
    }
    void countInterval(double interval) {
        shortestInterval = std::min(shortestInterval, interval);
        longestInterval = std::max(longestInterval, interval);
        const double delta = interval - meanInterval;
        meanInterval += delta / static_cast<double>(instances);
        intervalSpread += (interval - meanInterval) * delta;
    }
    void print(const char* name) const {
        const auto n = static_cast<double>(instances);
        std::printf("%s %lld instances, duration %g +- %g (%g to %g), interval %g +- %g (%g to %g), %g to %g\n", name,
                    static_cast<long long>(instances), meanDuration, std::sqrt(durationSpread / (n - 1.0)), shortest,
                    longest, meanInterval, std::sqrt(intervalSpread / (n - 2.0)), shortestInterval, longestInterval,
                    firstStart, lastEnd);
    }
};
