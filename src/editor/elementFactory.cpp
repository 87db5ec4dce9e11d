#include "editor/elementFactory.h"

#include "editor/tqAssembler.h"
#include "editor/tqCombi.h"
#include "editor/tqConsolidator.h"
#include "editor/tqDisAssembler.h"
#include "editor/tqDynafork.h"
#include "editor/tqFork.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqNormal.h"
#include "editor/tqQueue.h"

#include <QStringList>
#include <array>

namespace {

using cElementPtr = std::shared_ptr<cNetworkElement>;

template <typename cElement>
cElementPtr makePlain() {
    return std::make_shared<cElement>();
}

template <typename cElement>
cElementPtr makeOfDefaultType() {
    return std::make_shared<cElement>(cNetwork::current().findResourceType("Default"));
}

/// Stands for the first queue of the model.
cElementPtr makeFusionQueue() {
    const cTQQueue* first = nullptr;
    cNetwork::current().forEachElement([&](cNetworkElement& element) {
        if (first == nullptr) first = dynamic_cast<cTQQueue*>(&element);
    });
    if (first == nullptr) return nullptr;
    return std::make_shared<cTQFusionQueue>(std::string(), first->getName());
}

struct cKind {
    const char* word;
    cElementPtr (*make)();
};

constexpr std::array kinds{
    cKind{"Combi", makePlain<cTQCombi>},
    cKind{"NormalAct", makePlain<cTQNormal>},
    cKind{"Queue", makeOfDefaultType<cTQQueue>},
    cKind{fusionQueueKind, makeFusionQueue},
    cKind{"Link", makePlain<cTQLink>},
    cKind{"Fork", makeOfDefaultType<cTQFork>},
    cKind{"Dynafork", makeOfDefaultType<cTQDynafork>},
    cKind{"Assembler", makePlain<cTQAssembler>},
    cKind{"Disassembler", makePlain<cTQDisAssembler>},
    cKind{"Consolidator", makePlain<cTQConsolidator>},
};

/// Some kinds stay without a name when their default one is taken or too long, and the model needs one.
void ensureName(cNetworkElement& element) {
    for (int number = cNetworkElement::getElementCounter(); element.getName().empty(); ++number)
        element.setName("Element" + std::to_string(number % 100000000));
}

}  // namespace

cElementPtr makeElement(const QString& kind) {
    for (const cKind& row : kinds) {
        if (kind != QLatin1String(row.word)) continue;
        cElementPtr element = row.make();
        if (element != nullptr) ensureName(*element);
        return element;
    }
    return nullptr;
}

const QStringList& elementKinds() {
    static const QStringList words = [] {
        QStringList list;
        for (const cKind& row : kinds) list.append(QLatin1String(row.word));
        return list;
    }();
    return words;
}
