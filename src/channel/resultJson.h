#pragma once

#include <string>

class cNetwork;

/// The results as one JSON object in compact form, on one line without a line feed, its keys sorted. NaN and
/// infinities, which JSON can't tell, are null; counts have no decimal point. Without a gathered replication the object
/// is empty.
std::string buildResultsJson(const cNetwork& network);
