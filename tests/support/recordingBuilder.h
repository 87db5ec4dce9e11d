#pragma once

#include "flow/link.h"
#include "model/engineBuilder.h"

#include <locale>
#include <sstream>
#include <string>
#include <vector>

/// Writes down what a builder that draws would be told, one text for each call: "place C1 320 140". Makes plain engine
/// elements.
class cRecordingBuilder : public cEngineBuilder {
public:
    using cEngineBuilder::cEngineBuilder;

    void addResourceType(const std::string& name, const std::string& kind) override {
        note("type", name, kind);
        cEngineBuilder::addResourceType(name, kind);
    }
    void setSaveProps(const std::string& typeName, const std::string& names) override {
        note("saveProps", typeName, '[' + names + ']');
        cEngineBuilder::setSaveProps(typeName, names);
    }
    std::shared_ptr<cNetworkElement> makeNode(const std::string& kind, cResType* type) override {
        note("node", kind, type == nullptr ? "-" : type->getTypeName());
        return cEngineBuilder::makeNode(kind, type);
    }
    std::shared_ptr<cNetworkElement> makeFusionQueue(const std::string& name, const std::string& queueName) override {
        note("fusion", name, queueName);
        return cEngineBuilder::makeFusionQueue(name, queueName);
    }
    std::shared_ptr<cLink> makeLink(const std::string& name) override {
        note("link", name);
        return cEngineBuilder::makeLink(name);
    }
    bool attachStart(cLink& link, cNetworkElement& element) override {
        note("start", link.getName(), element.getName());
        return cEngineBuilder::attachStart(link, element);
    }
    bool attachEnd(cLink& link, cNetworkElement& element) override {
        note("end", link.getName(), element.getName());
        return cEngineBuilder::attachEnd(link, element);
    }
    void place(cNetworkElement& element, double x, double y) override {
        note("place", element.getName(), x, y);
        cEngineBuilder::place(element, x, y);
    }
    void setConnectionPoints(cLink& link, int start, int end) override {
        note("points", link.getName(), start, end);
        cEngineBuilder::setConnectionPoints(link, start, end);
    }
    void setGlobalCode(const std::string& text) override {
        note("code", '[' + text + ']');
        cEngineBuilder::setGlobalCode(text);
    }
    void finish() override {
        note("finish");
        cEngineBuilder::finish();
    }

    std::vector<std::string> calls;

private:
    /// Joins the pieces with blanks; numbers with up to ten digits.
    template <typename... cPieces>
    void note(const std::string& call, const cPieces&... pieces) {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        text.precision(10);
        text << call;
        ((text << ' ' << pieces), ...);
        calls.push_back(text.str());
    }
};
