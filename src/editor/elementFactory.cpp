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
#include <string_view>

namespace {

using cElementPtr = std::shared_ptr<cNetworkElement>;

/// The type of a node that is dropped, where its kind has one from the start.
enum class eFirstType : std::uint8_t { none, usual };

template <typename cElement>
cElementPtr makePlain(cResType*) {
    return std::make_shared<cElement>();
}

template <typename cElement>
cElementPtr makeTyped(cResType* type) {
    return std::make_shared<cElement>(type);
}

template <typename cElement>
cElementPtr makeTypedLater(cResType* type) {
    auto element = std::make_shared<cElement>();
    if (type != nullptr) element->setResType(type);
    return element;
}

/// Stands for the first queue of the model.
cElementPtr makeFusionQueue(cResType*) {
    const cTQQueue* first = nullptr;
    cNetwork::current().forEachElement([&](cNetworkElement& element) {
        if (first == nullptr) first = dynamic_cast<cTQQueue*>(&element);
    });
    if (first == nullptr) return nullptr;
    return std::make_shared<cTQFusionQueue>(std::string(), first->getName());
}

struct cKind {
    const char* word;          // of the stencil
    std::string_view keyword;  // of model files, where these call for it by that alone
    cElementPtr (*make)(cResType* type);
    eFirstType firstType;
};

constexpr std::array kinds{
    cKind{"Combi", "COMBI", makePlain<cTQCombi>, eFirstType::none},
    cKind{"NormalAct", "NORMAL", makePlain<cTQNormal>, eFirstType::none},
    cKind{"Queue", "QUEUE", makeTyped<cTQQueue>, eFirstType::usual},
    cKind{fusionQueueKind, {}, makeFusionQueue, eFirstType::none},
    cKind{"Link", {}, makePlain<cTQLink>, eFirstType::none},
    cKind{"Fork", "FORK", makeTyped<cTQFork>, eFirstType::usual},
    cKind{"Dynafork", "DYNAFORK", makeTyped<cTQDynafork>, eFirstType::usual},
    cKind{"Assembler", "ASSEMBLER", makeTypedLater<cTQAssembler>, eFirstType::none},
    cKind{"Disassembler", "DISASSEMBLER", makeTypedLater<cTQDisAssembler>, eFirstType::none},
    cKind{"Consolidator", "CONSOLIDATOR", makePlain<cTQConsolidator>, eFirstType::none},
};

cResType* firstTypeOf(const cKind& kind) {
    return kind.firstType == eFirstType::usual ? cNetwork::current().findResourceType("Default") : nullptr;
}

}  // namespace

cElementPtr makeElement(const QString& kind) {
    for (const cKind& row : kinds) {
        if (kind != QLatin1String(row.word)) continue;
        cElementPtr element = row.make(firstTypeOf(row));
        if (element != nullptr) element->ensureName();
        return element;
    }
    return nullptr;
}

cElementPtr makeSavedNode(const std::string& keyword, cResType* type) {
    for (const cKind& row : kinds) {
        if (row.keyword.empty() || keyword != row.keyword) continue;
        cElementPtr node = row.make(type);
        node->ensureName();
        return node;
    }
    return nullptr;
}

cElementPtr makeSavedFusionQueue(const std::string& name, const std::string& queueName) {
    auto fusion = std::make_shared<cTQFusionQueue>(name, queueName);
    fusion->ensureName();
    return fusion;
}

const QStringList& elementKinds() {
    static const QStringList words = [] {
        QStringList list;
        for (const cKind& row : kinds) list.append(QLatin1String(row.word));
        return list;
    }();
    return words;
}
