#include "language/operators.h"

#include "language/rounding.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using cCombine = double (*)(double, double);
using cSample = double (*)(cSampler&, std::span<const double>);

constexpr double bracketPrecedence = 100.0;
constexpr double functionPrecedence = 120.0;

double sum(double left, double right) { return left + right; }
double difference(double left, double right) { return left - right; }
double product(double left, double right) { return left * right; }
double power(double left, double right) { return std::pow(left, right); }

double divide(double left, double right) {
    if (right == 0.0) throw cException{failureCode::expression, "Division by 0.", {}, {}};
    return left / right;
}

double remainder(double left, double right) {
    const std::int32_t divisor = truncateToInt32(right);
    if (divisor == 0) throw cException{failureCode::expression, "Division by 0.", {}, {}};
    if (divisor == -1) return 0.0;  // also where the quotient, minus the minimum, has no room in the type
    return truncateToInt32(left) % divisor;
}

constexpr double truth(bool condition) { return condition ? 1.0 : 0.0; }

double isDifferent(double left, double right) { return truth(left != right); }
double isEqual(double left, double right) { return truth(left == right); }
double isLess(double left, double right) { return truth(left < right); }
double isLessOrEqual(double left, double right) { return truth(left <= right); }
double isGreater(double left, double right) { return truth(left > right); }
double isGreaterOrEqual(double left, double right) { return truth(left >= right); }
double areBoth(double left, double right) { return truth(left != 0.0 && right != 0.0); }
double isEither(double left, double right) { return truth(left != 0.0 || right != 0.0); }

template <cCombine combine>
double rounded(double left, double right) {
    return roundThroughText(combine(left, right));
}

constexpr cOperator bracket(std::string_view name) { return {name, 0, bracketPrecedence}; }

template <cCombine combine>
constexpr cOperator binary(std::string_view name, double precedence) {
    return {name, 2, precedence, eOperatorKind::operatorOrBracket, combine, rounded<combine>};
}

/// An operator whose values are whole numbers of 32 bits, which rounding leaves as they are.
template <cCombine combine>
constexpr cOperator binaryOfWhole(std::string_view name, double precedence) {
    return {name, 2, precedence, eOperatorKind::operatorOrBracket, combine, combine};
}

constexpr cOperator unserved(std::string_view name, std::int32_t argCount, double precedence) {
    return {name, argCount, precedence};
}

constexpr cOperator onStreamZero(std::string_view name, std::int32_t argCount, cSample sample) {
    return {name, argCount, functionPrecedence, eOperatorKind::function, nullptr, nullptr, sample};
}

constexpr cOperator onStream(std::string_view name, std::int32_t argCount, cSample sample) {
    return {name, argCount, functionPrecedence, eOperatorKind::function, nullptr, nullptr, sample, true};
}

/// A function whose parameters may keep its loop from ending.
constexpr cOperator breathing(cOperator row) {
    row.mayBreathe = true;
    return row;
}

constexpr cOperator reserved(std::string_view name, std::int32_t argCount) {
    return {name, argCount, functionPrecedence, eOperatorKind::function};
}

using cArguments = std::span<const double>;

double rnd(cSampler& sampler, cArguments) { return sampler.uniform(); }
double uniform(cSampler& sampler, cArguments a) { return sampler.uniform(a[0], a[1]); }
double triangular(cSampler& sampler, cArguments a) { return sampler.triangular(a[0], a[1], a[2]); }
double pert(cSampler& sampler, cArguments a) { return sampler.pert(a[0], a[1], a[2]); }
double pertpg(cSampler& sampler, cArguments a) { return sampler.pertFromPercentiles(a[0], a[1], a[2]); }
double gammaSample(cSampler& sampler, cArguments a) { return sampler.gamma(a[0], a[1]); }
double exponential(cSampler& sampler, cArguments a) { return sampler.exponential(a[0]); }
double normal(cSampler& sampler, cArguments a) { return sampler.normal(a[0], a[1]); }

// By byte order of the names: the tokeniser takes the first row that fits. "%" binds as loosely as "+".
constexpr std::array table{
    unserved("!", 1, 90.0),
    binaryOfWhole<isDifferent>("!=", 50.0),
    binaryOfWhole<remainder>("%", 60.0),
    binaryOfWhole<areBoth>("&", 45.0),
    bracket("("),
    bracket(")"),
    binary<product>("*", 70.0),
    binary<sum>("+", 60.0),
    cOperator{",", 0, 0.0, eOperatorKind::separator},
    binary<difference>("-", 60.0),
    binary<divide>("/", 70.0),
    binaryOfWhole<isLess>("<", 50.0),
    binaryOfWhole<isLessOrEqual>("<=", 50.0),
    binaryOfWhole<isEqual>("==", 50.0),
    binaryOfWhole<isGreater>(">", 50.0),
    binaryOfWhole<isGreaterOrEqual>(">=", 50.0),
    reserved("Beta", 2),
    reserved("Erlang", 2),
    onStreamZero("Exponential", 1, exponential),
    unserved("GET", 1, bracketPrecedence),
    breathing(onStreamZero("Gamma", 2, gammaSample)),
    onStreamZero("Normal", 2, normal),
    reserved("NormalInv", 3),
    unserved("POST", 1, bracketPrecedence),
    breathing(onStreamZero("Pert", 3, pert)),
    breathing(onStreamZero("Pertpg", 3, pertpg)),
    onStreamZero("Rnd", 0, rnd),
    reserved("ScaledBeta", 4),
    reserved("StdNormalInv", 1),
    onStreamZero("Triangular", 3, triangular),
    onStreamZero("Uniform", 2, uniform),
    bracket("["),
    bracket("]"),
    binary<power>("^", 80.0),
    reserved("sBeta", 3),
    reserved("sErlang", 3),
    onStream("sExponential", 2, exponential),
    breathing(onStream("sGamma", 3, gammaSample)),
    onStream("sNormal", 3, normal),
    breathing(onStream("sPert", 4, pert)),
    breathing(onStream("sPertpg", 4, pertpg)),
    onStream("sRnd", 1, rnd),
    reserved("sScaledBeta", 5),
    onStream("sTriangular", 4, triangular),
    onStream("sUniform", 3, uniform),
    binaryOfWhole<isEither>("|", 40.0),
};

static_assert(std::ranges::is_sorted(table, {}, &cOperator::name));
static_assert(std::ranges::max(table, {}, &cOperator::argCount).argCount == mostArguments);

/// The rows whose names begin with `first`.
std::span<const cOperator> rowsBeginningWith(char first) {
    const auto initial = [](const cOperator& row) { return row.name.front(); };
    return {std::ranges::lower_bound(table, first, {}, initial), std::ranges::upper_bound(table, first, {}, initial)};
}

bool standsAsKey(const cOperator& row, std::string_view text, std::size_t position, std::size_t begin) {
    if (text.substr(position, row.name.size()) != row.name) return false;

    const std::size_t behind = position + row.name.size();
    if (row.kind == eOperatorKind::function) return position == begin && (behind == text.size() || text[behind] == '(');
    if (row.name == "<" || row.name == ">") return behind == text.size() || text[behind] != '=';
    return true;
}

}  // namespace

const cOperator* findOperator(std::string_view name) {
    const auto* row = std::ranges::lower_bound(table, name, {}, &cOperator::name);
    return row != table.end() && row->name == name ? row : nullptr;
}

std::span<const cOperator> operatorTable() { return table; }

const cOperator* operatorAt(std::string_view text, std::size_t position, std::size_t begin) {
    for (const cOperator& row : rowsBeginningWith(text[position]))
        if (standsAsKey(row, text, position, begin)) return &row;
    return nullptr;
}
