// Rounding without a text against rounding over the text, bit by bit, on many values of each kind that could part them.
//
// rounding VALUES
//
// Prints a line per kind; ends with status 1 if a single value differs.

#include "language/rounding.h"
#include "support/roundingValues.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

struct cKind {
    const char* name;
    double (*next)(std::mt19937_64&);
    std::int64_t percent;
};

constexpr cKind kinds[]{
    {"any bits", roundingValues::anyBits, 4},
    {"magnitudes of models", roundingValues::ofModels, 30},
    {"exact halves and neighbours", roundingValues::nearExactHalf, 25},
    {"decimal halves and neighbours", roundingValues::nearDecimalHalf, 25},
    {"the border to the text", roundingValues::nearBorder, 6},
    {"zeros, denormals, half a millionth", roundingValues::tiny, 10},
};

/// What the comparison of one kind gave.
struct cOutcome {
    std::int64_t withoutText = 0;  // values below the border; the others take the text both times
    std::int64_t different = 0;
};

cOutcome compare(const cKind& kind, std::int64_t count, std::uint64_t seed) {
    std::mt19937_64 numbers(seed);
    cOutcome outcome;
    for (std::int64_t i = 0; i < count; ++i) {
        const double value = kind.next(numbers);
        const auto fast = std::bit_cast<std::uint64_t>(roundThroughText(value));
        const auto plain = std::bit_cast<std::uint64_t>(roundByText(value));
        if (std::fabs(value) < roundingValues::border) ++outcome.withoutText;
        if (fast != plain && ++outcome.different <= 10) std::printf("  differs: %a\n", value);
    }
    return outcome;
}

}  // namespace

int main(int argc, char** argv) {
    const std::int64_t values = argc == 2 ? std::atoll(argv[1]) : 0;
    if (values < 100) return 2;
    std::int64_t different = 0;
    std::uint64_t seed = 1;
    for (const cKind& kind : kinds) {
        const std::int64_t count = values / 100 * kind.percent;
        const cOutcome outcome = compare(kind, count, seed++);
        std::printf("%-36s %11lld values, %11lld without a text, %lld differ\n", kind.name,
                    static_cast<long long>(count), static_cast<long long>(outcome.withoutText),
                    static_cast<long long>(outcome.different));
        std::fflush(stdout);
        different += outcome.different;
    }
    return different == 0 ? 0 : 1;
}
