#pragma once

#include <span>
#include <string_view>
#include <vector>

class cNetworkElement;

/// The figures that results hold of an element: names and values, told once for rows, tables and JSON.

/// What stands behind the element's name in its column names: six for a queue, nine for an activity, none for others.
std::span<const std::string_view> columnSuffixes(const cNetworkElement& element);

/// Appends the present figures of `element`, one for each of its columns.
void appendColumnValues(cNetworkElement& element, std::vector<double>& row);
