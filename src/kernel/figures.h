#pragma once

#include <string>

/// Figures as result tables show them. Exact ties are rounded away from zero; a NaN is "nan", infinities are "inf" and
/// "-inf"; zero has no sign.

/// Fixed notation with two decimals.
std::string fixedFigure(double value);

/// The shorter of fixed and exponent notation with six significant digits, without trailing zeros: 1e+06, 0.0001, 12.5.
std::string generalFigure(double value);
