#pragma once

#include "flow/holdings.h"

/// A characterized resource that can carry others.
class cResCompound : public cResChar {
public:
    explicit cResCompound(cResTypeCompound* type) : cResChar(type) {}

    cHoldings contents;  ///< the parts; they may stand in other lists too
};
