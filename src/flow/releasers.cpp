#include "flow/releasers.h"

namespace {

void addAmount(std::optional<double>& held, double amount) { held = held ? *held + amount : amount; }

}  // namespace

bool cReleasers::release(const cRes& resource) {
    cHoldings::cList* held = holdings.find(resource.getResType());
    if (held == nullptr || held->empty()) return false;

    const cResGen* released = resource.asAmount();
    if (held->amount) {
        if (released->getAmount() < *held->amount)
            *held->amount -= released->getAmount();
        else
            held->clear();
        return true;
    }
    if (released == nullptr) {
        held->remove(resource);
        return true;
    }
    cResGen* holding = held->held().front()->asAmount();
    if (holding != nullptr && released->getAmount() < holding->getAmount())
        holding->subtract(*released);
    else
        held->clear();
    return true;
}

cResList cReleasers::getHoldings(cResType* type) const {
    const cHoldings::cList* list = holdings.find(type);
    if (list == nullptr) return {};
    if (list->amount) return {makeCounted<cResGen>(type, *list->amount)};
    return {list->held().begin(), list->held().end()};
}

void cReleasers::addHoldings(const cResList& resources) {
    if (resources.empty()) return;

    const std::size_t taken = isGeneric(resources.front()->getResType()) ? 1 : resources.size();
    for (std::size_t i = 0; i < taken; ++i) addHolding(*resources[i]);
}

void cReleasers::addHolding(cRes& resource) {
    cHoldings::cList& held = holdings.listOf(resource.getResType());
    if (isGeneric(resource.getResType()))
        addAmount(held.amount, resource.quantity());
    else
        held.add(keep(resource));
}

void cReleasers::mergeHolding(cRes& resource) {
    cHoldings::cList& held = holdings.listOf(resource.getResType());
    const cResGen* added = resource.asAmount();
    cResGen* holding = held.held().empty() ? nullptr : held.held().front()->asAmount();
    if (added != nullptr && holding != nullptr)
        holding->add(*added);
    else
        addHolding(resource);
}

double cReleasers::countOf(const std::string& keyword, const cResType* type) const {
    const cHoldings::cList* held = holdings.find(type);
    if (keyword != "Count" || held == nullptr) return 0.0;
    return held->amount ? *held->amount : static_cast<double>(held->held().size());
}
