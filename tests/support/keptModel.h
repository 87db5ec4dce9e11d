#pragma once

#include "flow/link.h"
#include "kernel/network.h"
#include "model/engineBuilder.h"
#include "model/modelSource.h"

#include <cmath>
#include <map>
#include <string>
#include <utility>

/// A model of plain engine elements that keeps what a drawing would, to be written again: places, connection points,
/// ends on fusion queues, the Global Code. Nobody types into it, so fields show what the engine has.
class cKeptModel : public cEngineBuilder, public cModelSource {
public:
    using cEngineBuilder::cEngineBuilder;

    cNetwork& network() override { return cEngineBuilder::network(); }

    void addResourceType(const std::string& name, const std::string& kind) override {
        cEngineBuilder::addResourceType(name, kind);
        types[name] = kind;
    }
    std::shared_ptr<cNetworkElement> makeFusionQueue(const std::string& name, const std::string& queueName) override {
        auto fusion = cEngineBuilder::makeFusionQueue(name, queueName);
        for (int number = 0; fusion->getName().empty(); ++number) fusion->setName("Fusion" + std::to_string(number));
        fusedQueues[fusion.get()] = queueName;
        return fusion;
    }
    bool attachStart(cLink& link, cNetworkElement& element) override {
        const bool isAttached = cEngineBuilder::attachStart(link, element);
        if (isAttached) keepEnd(link, true, element);
        return isAttached;
    }
    bool attachEnd(cLink& link, cNetworkElement& element) override {
        const bool isAttached = cEngineBuilder::attachEnd(link, element);
        if (isAttached) keepEnd(link, false, element);
        return isAttached;
    }
    void place(cNetworkElement& element, double x, double y) override {
        if (std::isfinite(x) && std::isfinite(y)) places[&element] = {x, y};
    }
    void setConnectionPoints(cLink& link, int start, int end) override {
        ends[{&link, true}].point = start;
        ends[{&link, false}].point = end;
    }
    void setGlobalCode(const std::string& text) override { code = text; }

    std::vector<cSavedType> resourceTypes() override {
        std::vector<cSavedType> saved;
        for (const auto& [name, kind] : types) saved.push_back({name, kind, {}});
        return saved;
    }
    std::optional<std::string> typedText(const cNetworkElement& element, std::string_view keyword) override {
        const auto text = typed.find({element.getName(), std::string(keyword)});
        return text == typed.end() ? std::nullopt : std::optional(text->second);
    }
    cSavedPlace place(const cNetworkElement& element) override { return places[&element]; }
    std::string fusedQueue(const cNetworkElement& fusionQueue) override { return fusedQueues[&fusionQueue]; }
    cSavedEnd linkEnd(const cLink& link, bool isStart) override { return ends[{&link, isStart}]; }
    std::string globalCode() override { return code; }

    /// What the field of an element's property shows in place of what the engine has.
    std::map<std::pair<std::string, std::string>, std::string> typed;
    std::string code;

private:
    void keepEnd(const cLink& link, bool isStart, const cNetworkElement& element) {
        ends[{&link, isStart}].fusionName = element.getKind() == "FUSIONQUEUE" ? element.getName() : std::string();
    }

    std::map<std::string, std::string> types;
    std::map<const cNetworkElement*, cSavedPlace> places;
    std::map<const cNetworkElement*, std::string> fusedQueues;
    std::map<std::pair<const cLink*, bool>, cSavedEnd> ends;
};
