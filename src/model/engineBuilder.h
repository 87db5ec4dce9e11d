#pragma once

#include "model/modelBuilder.h"

/// Builds a model of plain engine elements, which nobody draws: positions and connection points are dropped.
class cEngineBuilder : public cModelBuilder {
public:
    explicit cEngineBuilder(cNetwork& filled) : model(filled) {}

    cNetwork& network() override { return model; }
    void addResourceType(const std::string& name, const std::string& kind) override;
    void setSaveProps(const std::string&, const std::string&) override {}
    std::shared_ptr<cNetworkElement> makeNode(const std::string& kind, cResType* type) override;
    std::shared_ptr<cNetworkElement> makeFusionQueue(const std::string& name, const std::string& queueName) override;
    std::shared_ptr<cLink> makeLink(const std::string& name) override;
    bool attachStart(cLink& link, cNetworkElement& element) override;
    bool attachEnd(cLink& link, cNetworkElement& element) override;
    void place(cNetworkElement&, double, double) override {}
    void setConnectionPoints(cLink&, int, int) override {}
    void setGlobalCode(const std::string&) override {}
    void finish() override {}

private:
    cNetwork& model;
};
