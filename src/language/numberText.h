#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Numbers as text, both ways, with a decimal point whatever the locale of the process is.

/// `value` in fixed notation as "%f" prints it, exact halves to even, with `decimals` digits behind the point.
/// A NaN is "nan" without a sign, infinities are "inf" and "-inf".
std::string fixedText(double value, int decimals = 6);

/// The value of `text` if the C library's strtod takes the whole of it (leading white space, hexadecimal, "inf" and
/// "nan" included), else nothing.
std::optional<double> parseNumber(const std::string& text);

/// The number that `text` begins with, as the C library's atof reads it; 0.0 if there is none.
double leadingNumber(const std::string& text);

/// The integer that `text` begins with, as the C library's atoi reads it; 0 if there is none.
std::int32_t leadingInteger(const std::string& text);
