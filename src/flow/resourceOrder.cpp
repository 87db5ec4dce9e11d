#include "flow/resourceOrder.h"

#include "language/symbols.h"

#include <cstdint>
#include <utility>
#include <vector>

double keyOf(cRes& resource, const cExpression& key, const std::string& owner, cSymbols& symbols) {
    if (key.isSelfContained(owner)) return key.evaluate(owner);  // nobody sees what is in hand

    const cSymbols::cResourceInHand inHand(symbols, &resource);
    return key.evaluate(owner);
}

cResList orderedByKey(cResList candidates, const cExpression& key, const std::string& owner, cSymbols& symbols) {
    if (candidates.empty()) return {};
    if (key.isQuiet(owner)) {  // the same for all: no formula reaches the resource in hand
        keyOf(*candidates.front(), key, owner, symbols);
        return candidates;
    }
    std::vector<std::uint32_t> order;  // places in `candidates`: they move at less cost than what stands there
    order.reserve(candidates.size());
    for (std::uint32_t candidate = 0; candidate < candidates.size(); ++candidate) {
        const double candidateKey = keyOf(*candidates[candidate], key, owner, symbols);
        auto place = order.begin();
        while (place != order.end() && !(keyOf(*candidates[*place], key, owner, symbols) > candidateKey)) {
            ++place;
            symbols.breathe();
        }
        order.insert(place, candidate);
    }
    cResList ordered;
    ordered.reserve(order.size());
    for (const std::uint32_t place : order) ordered.push_back(std::move(candidates[place]));
    return ordered;
}
