#include "flow/holdings.h"

#include <algorithm>

/// Where it would have to grow it first takes up the places that are free, if they are many.
void cHoldings::cList::add(const cResPtr& resource) {
    if (gone > 0 && resources.size() == resources.capacity() && 2 * gone >= resources.size()) {
        resources.erase(resources.begin(), resources.begin() + static_cast<std::ptrdiff_t>(gone));
        gone = 0;
    }
    resources.push_back(resource);
}

void cHoldings::cList::remove(const cRes& resource) {
    const auto first = resources.begin() + static_cast<std::ptrdiff_t>(gone);
    const auto found = std::ranges::find(first, resources.end(), &resource, &cResPtr::get);
    if (found == resources.end()) return;
    if (found != first) {
        resources.erase(found);
        return;
    }
    *first = nullptr;
    if (++gone == resources.size()) clear();
}

cHoldings& cHoldings::operator=(const cHoldings& other) {
    if (!std::ranges::equal(lists, other.lists, {}, &cList::getType, &cList::getType)) {
        lists = other.lists;
        return *this;
    }
    for (std::size_t i = 0; i < lists.size(); ++i) {
        lists[i].amount = other.lists[i].amount;
        if (lists[i].resources.empty() && other.lists[i].resources.empty()) continue;
        lists[i].resources = other.lists[i].resources;
        lists[i].gone = other.lists[i].gone;
    }
    return *this;
}

std::size_t cHoldings::placeAmongMany(const cResType* type) const {
    return static_cast<std::size_t>(std::ranges::lower_bound(lists, type, {}, &cList::getType) - lists.begin());
}

cHoldings::cList& cHoldings::newList(const cResType* type) {
    return *lists.emplace(lists.begin() + static_cast<std::ptrdiff_t>(placeOf(type)), type);
}

std::size_t cHoldings::size() const {
    std::size_t count = 0;
    for (const cList& list : lists) count += list.held().size() + (list.amount ? 1 : 0);
    return count;
}
