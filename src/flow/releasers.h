#pragma once

#include "flow/holdings.h"

#include <string>

/// A store of whatever a node can release, by type: one amount of a generic type, and any number of instances of a
/// characterized one, in the order in which they came.
class cReleasers {
public:
    cReleasers() = default;
    virtual ~cReleasers() = default;
    cReleasers(const cReleasers&) = delete;
    cReleasers& operator=(const cReleasers&) = delete;

    /// Gives a resource up: lowers or removes the generic holding, or takes the instance out. `resource` itself
    /// travels on.
    /// @return whether the type was held; also true if it was, but not this instance of it.
    virtual bool release(const cRes& resource);

    /// The amount of a generic type as it is now, all instances of a characterized one, nothing for a type that isn't
    /// held.
    cResList getHoldings(cResType* type) const;
    /// Takes a list in. The type of its first resource decides: of a generic list only the first is looked at.
    void addHoldings(const cResList& resources);
    /// Takes a resource in. Only under a generic type do amounts add up.
    void addHolding(cRes& resource);

    /// For "Count", the amount or the number of instances held of a type, 0 if there is none; 0 for other keywords.
    double countOf(const std::string& keyword, const cResType* type) const;

protected:
    /// Takes a resource in. Amounts of one type add up, whatever type that is.
    void mergeHolding(cRes& resource);

    cHoldings holdings;
};
