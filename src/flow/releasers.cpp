#include "flow/releasers.h"

#include <algorithm>

bool cReleasers::release(const cRes& resource) {
    const auto [first, end] = holdings.equal_range(resource.getResType());
    if (first == end) return false;

    if (const cResGen* released = resource.asAmount()) {
        cResGen* holding = first->second->asAmount();
        if (holding != nullptr && released->getAmount() < holding->getAmount())
            holding->subtract(*released);
        else
            holdings.erase(first, end);
        return true;
    }
    const auto held = std::find_if(first, end, [&](const auto& entry) { return entry.second.get() == &resource; });
    if (held != end) holdings.erase(held);
    return true;
}

std::vector<cResPtr> cReleasers::getHoldings(const cResType* type) const {
    std::vector<cResPtr> held;
    const auto [first, end] = holdings.equal_range(type);
    for (auto entry = first; entry != end; ++entry) held.push_back(entry->second);
    return held;
}

void cReleasers::addHoldings(const std::vector<cResPtr>& resources) {
    if (resources.empty()) return;

    const std::size_t taken = isGeneric(resources.front()->getResType()) ? 1 : resources.size();
    for (std::size_t i = 0; i < taken; ++i) addHolding(resources[i]);
}

void cReleasers::addHolding(const cResPtr& resource) {
    if (isGeneric(resource->getResType()))
        mergeHolding(resource);
    else
        holdings.emplace(resource->getResType(), resource);
}

void cReleasers::mergeHolding(const cResPtr& resource) {
    const cResGen* added = resource->asAmount();
    const auto present = holdings.lower_bound(resource->getResType());
    const bool isHeld = present != holdings.end() && present->first == resource->getResType();
    cResGen* holding = isHeld ? present->second->asAmount() : nullptr;
    if (added != nullptr && holding != nullptr)
        holding->add(*added);
    else
        holdings.emplace(resource->getResType(), resource);
}

double cReleasers::countOf(const std::string& keyword, const cResType* type) const {
    const auto [first, end] = holdings.equal_range(type);
    if (keyword != "Count" || first == end) return 0.0;
    return isGeneric(type) ? first->second->quantity() : static_cast<double>(std::distance(first, end));
}
