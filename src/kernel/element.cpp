#include "kernel/element.h"

#include "kernel/network.h"
#include "language/symbols.h"

#include <string_view>

namespace {

constexpr std::size_t longestName = 15;
constexpr std::string_view nameCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
constexpr std::size_t letterCount = 52;  // the letters stand first among the characters

bool isElementName(const std::string& name) {
    if (name.empty() || name.size() > longestName) return false;
    if (name.find_first_not_of(nameCharacters) != std::string::npos) return false;
    return nameCharacters.find(name.front()) < letterCount;
}

}  // namespace

cNetworkElement::cNetworkElement() : model(&cNetwork::current()), elementId(elementCounter++) {}

bool cNetworkElement::setName(const std::string& newName) {
    if (!isElementName(newName)) return false;
    if (network().elements.contains(newName)) return newName == elementName;

    const auto entry = network().elements.find(elementName);
    if (entry != network().elements.end() && entry->second.get() == this)
        network().elements.rename(elementName, newName);
    network().symbols->namesChanged();
    elementName = newName;
    return true;
}

void cNetworkElement::ensureName() {
    constexpr std::int64_t numberRange = 100000000;  // what has room behind the word
    for (std::int64_t number = elementCounter; elementName.empty(); ++number)
        setName("Element" + std::to_string(number % numberRange));
}

void cNetworkElement::refuseStart(const std::string& reason) {
    throw cException{failureCode::startUp, "Simulation failed to start.\n" + reason, {}, {}};
}

double cNetworkElement::getAttribute(const std::string&) { throw cException{failureCode::noKeywords, {}, {}, {}}; }

void cNetworkElement::takeDefaultName(const std::string& prefix) {
    while (!setName(prefix + std::to_string(elementCounter))) elementId = elementCounter++;
}
