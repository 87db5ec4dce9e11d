#include "model/propertyTable.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/consolidator.h"
#include "kernel/propertyWords.h"
#include "kernel/queue.h"

#include <array>

namespace {

template <typename cKind, void (cKind::*setter)(const std::string&)>
bool setText(cNetworkElement& element, std::string_view, const std::string& value) {
    auto* owner = dynamic_cast<cKind*>(&element);
    if (owner == nullptr) return false;
    (owner->*setter)(value);
    return true;
}

template <typename cKind, const std::string& (cKind::*getter)() const>
std::optional<std::string> getText(const cNetworkElement& element, std::string_view) {
    const auto* owner = dynamic_cast<const cKind*>(&element);
    if (owner == nullptr) return std::nullopt;
    return (owner->*getter)();
}

/// A Consolidator takes a duration from a file, but none is written for it.
std::optional<std::string> getDuration(const cNetworkElement& element, std::string_view keyword) {
    if (dynamic_cast<const cNodeConsolidator*>(&element) != nullptr) return std::nullopt;
    return getText<cNodeAct, &cNodeAct::getDurationText>(element, keyword);
}

const cLinkRule* findRule(std::string_view keyword) {
    for (const cLinkRule& rule : linkRules)
        if (rule.modelKey == keyword) return &rule;
    return nullptr;
}

bool setLinkRule(cNetworkElement& element, std::string_view keyword, const std::string& value) {
    auto* link = dynamic_cast<cLink*>(&element);
    if (link == nullptr) return false;
    link->setRuleText(findRule(keyword)->rule, value);
    return true;
}

std::optional<std::string> getLinkRule(const cNetworkElement& element, std::string_view keyword) {
    const auto* link = dynamic_cast<const cLink*>(&element);
    if (link == nullptr) return std::nullopt;
    return link->getRuleText(findRule(keyword)->rule);
}

constexpr std::array propertiesOfNodes{
    cProperty{propertyWord::duration, ePropertyTest::activity, setText<cNodeAct, &cNodeAct::setDurationText>,
              getDuration},
    cProperty{propertyWord::priority, ePropertyTest::activity, setText<cNodeActCombi, &cNodeActCombi::setPriorityText>,
              getText<cNodeActCombi, &cNodeActCombi::getPriorityText>},
    cProperty{propertyWord::semaphore, ePropertyTest::activity,
              setText<cNodeActCombi, &cNodeActCombi::setSemaphoreText>,
              getText<cNodeActCombi, &cNodeActCombi::getSemaphoreText>},
    cProperty{propertyWord::consolidateWhen, ePropertyTest::consolidator,
              setText<cNodeConsolidator, &cNodeConsolidator::setFiringConditionText>,
              getText<cNodeConsolidator, &cNodeConsolidator::getFiringConditionText>},
    cProperty{propertyWord::initialContent, ePropertyTest::initialContent,
              setText<cNodeQueue, &cNodeQueue::setInitialContentText>,
              getText<cNodeQueue, &cNodeQueue::getInitialContentText>},
};

constexpr auto propertiesOfLinks = [] {
    std::array<cProperty, linkRules.size()> properties{};
    for (std::size_t i = 0; i < properties.size(); ++i)
        properties[i] = {linkRules[i].modelKey, ePropertyTest::link, setLinkRule, getLinkRule};
    return properties;
}();

}  // namespace

std::span<const cProperty> nodeProperties() { return propertiesOfNodes; }

std::span<const cProperty> linkProperties() { return propertiesOfLinks; }

const cProperty* findProperty(ePropertyTest test, const std::string& keyword) {
    for (const auto& properties : {nodeProperties(), linkProperties()})
        for (const cProperty& property : properties)
            if (property.test == test && property.keyword == keyword) return &property;
    return nullptr;
}
