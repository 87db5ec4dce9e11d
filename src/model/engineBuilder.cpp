#include "model/engineBuilder.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/network.h"
#include "kernel/queue.h"

#include <array>
#include <string_view>

namespace {

struct cNodeKind {
    std::string_view word;
    std::shared_ptr<cNetworkElement> (*make)(cResType* type);
};

constexpr std::array nodeKinds{
    cNodeKind{"COMBI", [](cResType*) -> std::shared_ptr<cNetworkElement> { return std::make_shared<cNodeActCombi>(); }},
    cNodeKind{"QUEUE",
              [](cResType* type) -> std::shared_ptr<cNetworkElement> {
                  auto queue = std::make_shared<cNodeQueue>();
                  queue->setResType(type);
                  return queue;
              }},
};

std::unique_ptr<cResType> makeType(const std::string& name, const std::string& kind) {
    if (kind == typeKindWord::generic) return std::make_unique<cResTypeGen>(name);
    if (kind == typeKindWord::compound) return std::make_unique<cResTypeCompound>(name);
    return std::make_unique<cResTypeChar>(name);
}

}  // namespace

void cEngineBuilder::addResourceType(const std::string& name, const std::string& kind) {
    model.resourceTypes[name] = makeType(name, kind);
}

std::shared_ptr<cNetworkElement> cEngineBuilder::makeNode(const std::string& kind, cResType* type) {
    for (const cNodeKind& row : nodeKinds)
        if (row.word == kind) return row.make(type);
    return nullptr;
}

std::shared_ptr<cNetworkElement> cEngineBuilder::makeFusionQueue(const std::string&, const std::string&) {
    return nullptr;
}

std::shared_ptr<cLink> cEngineBuilder::makeLink(const std::string& name) { return std::make_shared<cLink>(name); }

bool cEngineBuilder::attachStart(cLink& link, cNetworkElement& element) {
    auto* node = dynamic_cast<cNode*>(&element);
    if (node != nullptr) link.setPredNode(node);
    return node != nullptr && link.getPredNode() == node;
}

bool cEngineBuilder::attachEnd(cLink& link, cNetworkElement& element) {
    auto* node = dynamic_cast<cNode*>(&element);
    if (node != nullptr) link.setSuccNode(node);
    return node != nullptr && link.getSuccNode() == node;
}
