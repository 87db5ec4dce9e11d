#pragma once

#include <cstdint>

/// The rounding contracts of the language: results of models depend on them to the last bit.

/// What is left of `value` after it was printed with "%f" and read back: six decimal places. NaN and infinities stay.
double roundThroughText(double value);

/// `value` truncated toward zero; the type's minimum if that is out of range or `value` is not a number.
std::int32_t truncateToInt32(double value);

/// `value` truncated toward zero; the type's minimum if that is out of range or `value` is not a number.
std::int64_t truncateToInt64(double value);
