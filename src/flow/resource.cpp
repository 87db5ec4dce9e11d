#include "flow/resource.h"

#include "kernel/network.h"
#include "language/symbols.h"

namespace {

constexpr std::size_t longestInstanceName = 63;

template <typename cList>
void eraseIfHeld(cList& list, const std::string& name, const cResChar* resource) {
    const auto entry = list.find(name);
    if (entry != list.end() && entry->second == resource) list.erase(entry);
}

}  // namespace

cResChar::cResChar(cResTypeChar* type)
    : cRes(type, false), charType(type), resNum(++type->instanceCount), birthTime(cNetwork::current().simTime) {
    instanceName = (type->getTypeName() + '_' + std::to_string(resNum)).substr(0, longestInstanceName);
    for (const std::string& name : type->getSaveProps()) props[name] = 0.0;
}

cResChar::~cResChar() {
    eraseIfHeld(charType->instances, instanceName, this);
    eraseIfHeld(cNetwork::current().resources, instanceName, this);
}

void cResChar::enterInLists() {
    charType->instances[instanceName] = this;
    cNetwork::current().resources[instanceName] = this;
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
        const auto computed = charType->computedProps.find(name);
        if (computed == charType->computedProps.end()) return false;
        value = computed->second->evaluate();
    }
    return true;
}
