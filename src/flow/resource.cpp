#include "flow/resource.h"

#include "kernel/network.h"
#include "language/symbols.h"

#include <cassert>

namespace {

constexpr std::size_t longestInstanceName = 63;

}  // namespace

cResPtr keep(cRes& resource) {
    if (resource.holderCount() > 0) return cResPtr(&resource);

    assert(resource.asAmount() != nullptr);
    return makeCounted<cResGen>(resource.getResType(), resource.quantity());
}

cResChar::cResChar(cResTypeChar* type)
    : cRes(type, false), resNum(++type->instanceCount), birthTime(cNetwork::current().simTime) {
    for (const std::string& name : type->getSaveProps()) props[name] = 0.0;
}

std::string cResChar::getInstanceName() const {
    return (getResType()->getTypeName() + '_' + std::to_string(resNum)).substr(0, longestInstanceName);
}

bool cResChar::getProperty(const std::string& name, double& value) {
    if (name == "TimeIn") {
        value = timeIn;
    } else if (name == "ResNum") {
        value = resNum;
    } else if (name == "BirthTime") {
        value = birthTime;
    } else if (const auto stored = props.find(name); stored != props.end()) {
        value = stored->second;
    } else {
        const cSymbols::cResourceInHand inHand(*cNetwork::current().symbols, this);
        const auto computed = getCharType()->computedProps.find(name);
        if (computed == getCharType()->computedProps.end()) return false;
        value = computed->second->evaluate();
    }
    return true;
}
