#pragma once

#include "flow/resource.h"

#include <string>
#include <vector>

/// A store of whatever a node can release, by type: one holding of a generic type, whose amounts merge, and any number
/// of instances of a characterized one, in the order in which they came.
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

    /// The one holding of a generic type, all instances of a characterized one, nothing for a type that isn't held.
    std::vector<cResPtr> getHoldings(const cResType* type) const;
    /// Takes a list in. The type of its first resource decides: of a generic list only the first is looked at.
    void addHoldings(const std::vector<cResPtr>& resources);
    /// Takes a resource in. Only under a generic type do amounts add up.
    void addHolding(const cResPtr& resource);

    /// For "Count", the amount or the number of instances held of a type, 0 if there is none; 0 for other keywords.
    double countOf(const std::string& keyword, const cResType* type) const;

protected:
    /// Takes a resource in. Amounts of one type add up, whatever type that is.
    void mergeHolding(const cResPtr& resource);

    cHoldings holdings;
};
