#include "model/propertyTable.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/consolidator.h"
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

bool setLinkRule(cNetworkElement& element, std::string_view keyword, const std::string& value) {
    auto* link = dynamic_cast<cLink*>(&element);
    if (link == nullptr) return false;
    for (const cLinkRule& rule : linkRules)
        if (rule.modelKey == keyword) link->setRuleText(rule.rule, value);
    return true;
}

constexpr std::array elementProperties{
    cProperty{"DURATION", ePropertyTest::activity, setText<cNodeAct, &cNodeAct::setDurationText>},
    cProperty{"PRIORITY", ePropertyTest::activity, setText<cNodeActCombi, &cNodeActCombi::setPriorityText>},
    cProperty{"SEMAPHORE", ePropertyTest::activity, setText<cNodeActCombi, &cNodeActCombi::setSemaphoreText>},
    cProperty{"CONSOLIDATEWHEN", ePropertyTest::consolidator,
              setText<cNodeConsolidator, &cNodeConsolidator::setFiringConditionText>},
    cProperty{"TBINITIALCONTENT", ePropertyTest::initialContent,
              setText<cNodeQueue, &cNodeQueue::setInitialContentText>},
};

constexpr auto linkProperties = [] {
    std::array<cProperty, linkRules.size()> properties{};
    for (std::size_t i = 0; i < properties.size(); ++i)
        properties[i] = {linkRules[i].modelKey, ePropertyTest::link, setLinkRule};
    return properties;
}();

}  // namespace

const cProperty* findProperty(ePropertyTest test, const std::string& keyword) {
    for (const cProperty& property : elementProperties)
        if (property.test == test && property.keyword == keyword) return &property;
    for (const cProperty& property : linkProperties)
        if (property.test == test && property.keyword == keyword) return &property;
    return nullptr;
}
