#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

/// Marks on places 0, 1, 2 and so on. The next marked one is found 64 places at a time.
class cMarkedPlaces {
public:
    /// Makes places without marks.
    void restart(std::size_t placeCount) {
        count = placeCount;
        words.assign((placeCount + bits - 1) / bits, 0);
    }
    /// The number of places.
    std::size_t size() const { return count; }
    /// Marks a place; does nothing where there is none.
    void mark(std::size_t place) {
        if (place < count) words[place / bits] |= std::uint64_t{1} << (place % bits);
    }
    void unmark(std::size_t place) {
        if (place < count) words[place / bits] &= ~(std::uint64_t{1} << (place % bits));
    }
    /// The first marked place from `place` on, or `size()`.
    std::size_t next(std::size_t place) const {
        if (place >= count) return count;
        std::size_t word = place / bits;
        std::uint64_t rest = words[word] & (~std::uint64_t{0} << (place % bits));
        while (rest == 0) {
            if (++word == words.size()) return count;
            rest = words[word];
        }
        return word * bits + static_cast<std::size_t>(std::countr_zero(rest));
    }

private:
    static constexpr std::size_t bits = 64;

    std::size_t count = 0;
    std::vector<std::uint64_t> words;
};
