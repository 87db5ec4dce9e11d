#pragma once

#include <string>

class cNetwork;

/// The results as one JSON object on one line, its keys sorted, and a line feed behind it. NaN and infinities, which
/// JSON can't tell, are null; counts have no decimal point. Without a gathered replication the object is empty.
std::string resultJson(const cNetwork& network);
