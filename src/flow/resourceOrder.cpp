#include "flow/resourceOrder.h"

#include "language/symbols.h"

#include <utility>

double keyOf(const cResPtr& resource, const cExpression& key, const std::string& owner, cSymbols& symbols) {
    const cSymbols::cResourceInHand inHand(symbols, resource.get());
    return key.evaluate(owner);
}

std::vector<cResPtr> orderedByKey(std::vector<cResPtr> candidates, const cExpression& key, const std::string& owner,
                                  cSymbols& symbols) {
    if (candidates.empty()) return {};
    if (key.isQuiet(owner)) {  // the same for all: no formula reaches the resource in hand
        keyOf(candidates.front(), key, owner, symbols);
        return candidates;
    }
    std::vector<cResPtr> ordered;
    for (cResPtr& candidate : candidates) {
        const double candidateKey = keyOf(candidate, key, owner, symbols);
        auto place = ordered.begin();
        while (place != ordered.end() && !(keyOf(*place, key, owner, symbols) > candidateKey)) {
            ++place;
            symbols.breathe();
        }
        ordered.insert(place, std::move(candidate));
    }
    return ordered;
}
