#pragma once

#include "language/distributions.h"
#include "language/exception.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The operators, brackets and functions of the expression language, as one table.

/// The largest number of arguments that a row of the table takes.
inline constexpr std::size_t mostArguments = 5;

enum class eOperatorKind : std::int32_t { operatorOrBracket = 0, function = 1, separator = 2 };

/// One row of the operator table.
struct cOperator {
    std::string_view name;
    std::int32_t argCount = 0;  ///< operands taken from the value stack; of a function, its exact number of arguments
    double precedence = 0.0;
    eOperatorKind kind = eOperatorKind::operatorOrBracket;

    /// The value of an operator of two operands, left before right. Null for brackets and what is not served.
    double (*combine)(double left, double right) = nullptr;
    /// The same value, rounded. Null together with `combine`.
    double (*combineRounded)(double left, double right) = nullptr;
    /// The value of a function, its arguments in written order without the stream number. Null if not served.
    double (*sample)(cSampler& sampler, std::span<const double> arguments) = nullptr;
    bool lastIsStream = false;  ///< the last argument is the number of the stream to draw from, else it is stream 0
    bool mayBreathe = false;    ///< a sample may take so long that the host gets to process its events
};

/// The row of `name`, or null.
const cOperator* findOperator(std::string_view name);

/// All rows, by byte order of their names.
std::span<const cOperator> operatorTable();

/// The row whose name stands at `position` of `text` as a key, or null. `begin` is where the text that is not yet
/// parted into tokens begins: a function counts only there, and only with "(" or nothing behind it. Where several
/// names stand, the first by byte order wins ("!" before "!="), but "<" and ">" give way to "<=" and ">=".
const cOperator* operatorAt(std::string_view text, std::size_t position, std::size_t begin);

/// The value of a row for its arguments in written order, not yet rounded.
/// @throws cException (code 2) if the row has no implementation, or the operation fails.
inline double applyOperator(const cOperator& row, std::span<const double> arguments, cRandomStreams& streams,
                            cBreath& breath) {
    if (row.combine != nullptr) return row.combine(arguments[0], arguments[1]);
    if (row.sample == nullptr)
        throw cException{failureCode::expression, "Operator or Function not recognized.", {}, {}};

    if (!row.lastIsStream) {
        cSampler sampler(streams.first(), breath);
        return row.sample(sampler, arguments);
    }
    cSampler sampler(streams.select(arguments.back()), breath);
    return row.sample(sampler, arguments.first(arguments.size() - 1));
}
