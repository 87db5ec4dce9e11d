#include "model/engineBuilder.h"

#include "flow/assembler.h"
#include "flow/disassembler.h"
#include "flow/dynafork.h"
#include "flow/fork.h"
#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/consolidator.h"
#include "kernel/network.h"
#include "kernel/normal.h"
#include "kernel/queue.h"
#include "model/modelStatement.h"

#include <array>
#include <string_view>

namespace {

constexpr const char* firstTypeOfLinks = "Default";

struct cNodeKind {
    std::string_view word;
    std::shared_ptr<cNetworkElement> (*make)(cResType* type);
};

template <typename cKind>
std::shared_ptr<cNetworkElement> makeUntyped(cResType*) {
    return std::make_shared<cKind>();
}

template <typename cKind>
std::shared_ptr<cNetworkElement> makeTyped(cResType* type) {
    auto node = std::make_shared<cKind>();
    node->setResType(type);
    return node;
}

constexpr std::array nodeKinds{
    cNodeKind{"COMBI", makeUntyped<cNodeActCombi>},
    cNodeKind{"NORMAL", makeUntyped<cNodeActNormal>},
    cNodeKind{"CONSOLIDATOR", makeUntyped<cNodeConsolidator>},
    cNodeKind{"QUEUE", makeTyped<cNodeQueue>},
    cNodeKind{"ASSEMBLER", makeTyped<cNodeAuxAssembler>},
    cNodeKind{"DISASSEMBLER", makeTyped<cNodeAuxDisAssembler>},
    cNodeKind{"FORK", makeTyped<cNodeAuxFork>},
    cNodeKind{"DYNAFORK", makeTyped<cNodeAuxDynafork>},
};

/// A second place on the drawing for a queue. Nothing is drawn here, so it is but a name by which links find the queue.
class cFusionQueue : public cNetworkElement {
public:
    explicit cFusionQueue(std::string fusedQueue) : queueName(std::move(fusedQueue)) {}

    std::string getKind() const override { return std::string(fusionQueueWord); }
    void resetElement() override {}

    const std::string& getQueueName() const { return queueName; }

private:
    std::string queueName;
};

/// The node that a link joins when it is attached to `element`, or null.
cNode* nodeBehind(cNetworkElement& element, const cNetwork& model) {
    if (const auto* fusion = dynamic_cast<const cFusionQueue*>(&element))
        return model.findElement<cNodeQueue>(fusion->getQueueName());
    return dynamic_cast<cNode*>(&element);
}

}  // namespace

void cEngineBuilder::addResourceType(const std::string& name, const std::string& kind) {
    model.resourceTypes[name] = makeResType(name, kind);
}

std::shared_ptr<cNetworkElement> cEngineBuilder::makeNode(const std::string& kind, cResType* type) {
    for (const cNodeKind& row : nodeKinds)
        if (row.word == kind) return row.make(type);
    return nullptr;
}

std::shared_ptr<cNetworkElement> cEngineBuilder::makeFusionQueue(const std::string& name,
                                                                 const std::string& queueName) {
    auto fusion = std::make_shared<cFusionQueue>(queueName);
    fusion->setName(name);
    return fusion;
}

std::shared_ptr<cLink> cEngineBuilder::makeLink(const std::string& name) {
    auto link = std::make_shared<cLink>(name);
    if (cResType* type = model.findResourceType(firstTypeOfLinks)) link->setResType(type);
    return link;
}

bool cEngineBuilder::attachStart(cLink& link, cNetworkElement& element) {
    cNode* node = nodeBehind(element, model);
    if (node != nullptr) link.setPredNode(node);
    return node != nullptr && link.getPredNode() == node;
}

bool cEngineBuilder::attachEnd(cLink& link, cNetworkElement& element) {
    cNode* node = nodeBehind(element, model);
    if (node != nullptr) link.setSuccNode(node);
    return node != nullptr && link.getSuccNode() == node;
}
