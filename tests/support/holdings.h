#pragma once

#include "flow/holdings.h"

#include <optional>

/// Holdings as tests make and read them.

/// What a store holds that has taken these in: amounts of a generic type add up.
inline cHoldings holdingsOf(const cResList& resources) {
    cHoldings holdings;
    for (const cResPtr& resource : resources) {
        cHoldings::cList& list = holdings.listOf(resource->getResType());
        if (isGeneric(resource->getResType()))
            list.amount = list.amount.value_or(0.0) + resource->quantity();
        else
            list.add(resource);
    }
    return holdings;
}

/// The resources held of a type, in their order.
inline cResList heldOf(const cHoldings& holdings, const cResType& type) {
    const cHoldings::cList* list = holdings.find(&type);
    return list == nullptr ? cResList() : cResList(list->held().begin(), list->held().end());
}

/// The amount held of a type, if there is one.
inline std::optional<double> amountHeld(const cHoldings& holdings, const cResType& type) {
    const cHoldings::cList* list = holdings.find(&type);
    return list == nullptr ? std::nullopt : list->amount;
}
