// Which pairs of nodes a link may join, and what it becomes by joining them.

#include "flow/link.h"
#include "flow/releasers.h"
#include "kernel/combi.h"
#include "kernel/queue.h"
#include "language/symbols.h"

#include <array>
#include <optional>
#include <string_view>

namespace {

/// The classes of node that the tables tell apart: as predecessors (rows) and as successors (columns).
enum class eRow : std::size_t { queue, activity, fork, assembler, disassembler };
enum class eColumn : std::size_t { combi, queue, startedByFlow, fork, assembler, disassembler };

struct cNodeClass {
    std::string_view kindWord;
    eRow row;
    eColumn column;
};

constexpr std::array nodeClasses{
    cNodeClass{"QUEUE", eRow::queue, eColumn::queue},
    cNodeClass{"COMBI", eRow::activity, eColumn::combi},
    cNodeClass{"NORMAL", eRow::activity, eColumn::startedByFlow},
    cNodeClass{"CONSOLIDATOR", eRow::activity, eColumn::startedByFlow},
    cNodeClass{"FORK", eRow::fork, eColumn::fork},
    cNodeClass{"DYNAFORK", eRow::fork, eColumn::fork},
    cNodeClass{"ASSEMBLER", eRow::assembler, eColumn::assembler},
    cNodeClass{"DISASSEMBLER", eRow::disassembler, eColumn::disassembler},
};

enum class eTypeFrom { link, predecessor, successor };

/// One cell: the kind that a pair makes, whose type the link takes, and whether the nodes' types must be equal.
struct cRule {
    eLinkKind kind = kindRefused;
    eTypeFrom typeFrom = eTypeFrom::link;
    bool ifEqual = false;
};

constexpr cRule refused{};
constexpr cRule drawOfPred{kindDraw, eTypeFrom::predecessor};
constexpr cRule releaseKeeps{kindRelease, eTypeFrom::link};
constexpr cRule releaseOfPred{kindRelease, eTypeFrom::predecessor};
constexpr cRule releaseOfSucc{kindRelease, eTypeFrom::successor};
constexpr cRule releaseEqualOfPred{kindRelease, eTypeFrom::predecessor, true};
constexpr cRule flowOfPred{kindFlow, eTypeFrom::predecessor};
constexpr cRule flowOfSucc{kindFlow, eTypeFrom::successor};
constexpr cRule flowEqualOfPred{kindFlow, eTypeFrom::predecessor, true};
constexpr cRule flowEqualOfSucc{kindFlow, eTypeFrom::successor, true};

using cTable = std::array<std::array<cRule, 6>, 5>;

// Rows: queue; Combi, Normal, Consolidator; Fork, Dynafork; Assembler; Disassembler.
// Columns: Combi; queue; Normal, Consolidator; Fork, Dynafork; Assembler; Disassembler.
constexpr cTable whenSuccessorComesLast{{
    {drawOfPred, refused, refused, refused, refused, refused},
    {refused, releaseOfSucc, releaseKeeps, releaseOfSucc, releaseKeeps, releaseOfSucc},
    {refused, flowEqualOfPred, flowOfPred, flowEqualOfPred, flowOfPred, flowEqualOfPred},
    {refused, releaseEqualOfPred, releaseOfPred, releaseEqualOfPred, releaseOfPred, releaseOfPred},
    {refused, releaseOfSucc, releaseKeeps, releaseOfSucc, releaseKeeps, releaseOfPred},
}};

// Not the same: connected in this order, a link out of an Assembler is a flow link, and one out of a Disassembler takes
// other types. Readers and editors connect the predecessor first.
constexpr cTable whenPredecessorComesLast{{
    {drawOfPred, refused, refused, refused, refused, refused},
    {refused, releaseOfSucc, releaseKeeps, releaseOfSucc, releaseKeeps, releaseOfSucc},
    {refused, flowEqualOfSucc, flowOfPred, flowEqualOfSucc, flowOfPred, flowEqualOfSucc},
    {refused, flowEqualOfSucc, flowOfPred, flowEqualOfSucc, flowOfPred, flowOfSucc},
    {refused, releaseOfSucc, releaseKeeps, releaseOfSucc, releaseOfPred, releaseOfSucc},
}};

const cNodeClass* classOf(const cNode& node) {
    const std::string kind = node.getKind();
    for (const cNodeClass& nodeClass : nodeClasses)
        if (nodeClass.kindWord == kind) return &nodeClass;
    return nullptr;
}

cResType* typeOf(cNode& node) {
    const auto* holder = dynamic_cast<const cHomogHolder*>(&node);
    return holder == nullptr ? nullptr : holder->getResType();
}

/// The cell for a pair, or nothing if a node is of no class in the tables.
std::optional<cRule> ruleFor(const cTable& table, const cNode& predecessor, const cNode& successor) {
    const cNodeClass* from = classOf(predecessor);
    const cNodeClass* to = classOf(successor);
    if (from == nullptr || to == nullptr) return std::nullopt;
    return table[static_cast<std::size_t>(from->row)][static_cast<std::size_t>(to->column)];
}

/// What a pair makes of the link, before anything is attached: a kind to go on with, or a refusal to return.
struct cVerdict {
    bool attach = false;
    eLinkKind kind = kindIncomplete;
    std::optional<cResType*> type = std::nullopt;  // what the link takes; nothing where it keeps its own
};

cVerdict judge(const cTable& table, cNode& predecessor, cNode& successor, const cLink& link) {
    const std::optional<cRule> rule = ruleFor(table, predecessor, successor);
    if (!rule) return {false, link.getLinkKind()};
    if (rule->kind == kindRefused) return {false, kindRefused};
    if (rule->ifEqual && typeOf(predecessor) != typeOf(successor)) return {false, kindTypeMismatch};
    switch (rule->typeFrom) {
        case eTypeFrom::predecessor: return {true, rule->kind, typeOf(predecessor)};
        case eTypeFrom::successor: return {true, rule->kind, typeOf(successor)};
        case eTypeFrom::link: break;
    }
    return {true, rule->kind};
}

}  // namespace

eLinkKind cLink::setSuccNode(cNode* node) {
    cVerdict verdict{true};
    if (node != nullptr && predNode != nullptr) verdict = judge(whenSuccessorComesLast, *predNode, *node, *this);
    if (!verdict.attach) return refuseEnd(verdict.kind);

    if (succNode != nullptr) succNode->removeInLink(this);
    succNode = node;
    knownEnds.receiver = dynamic_cast<cNodeReceiver*>(node);
    knownEnds.combi = dynamic_cast<cNodeActCombi*>(node);
    if (node != nullptr) node->addInLink(this);
    return become(verdict.kind, verdict.type);
}

eLinkKind cLink::setPredNode(cNode* node) {
    cVerdict verdict{true};
    if (node != nullptr && succNode != nullptr) verdict = judge(whenPredecessorComesLast, *node, *succNode, *this);
    if (!verdict.attach) return refuseEnd(verdict.kind);

    if (predNode != nullptr) predNode->removeOutLink(this);
    predNode = node;
    knownEnds.queue = dynamic_cast<cNodeQueue*>(node);
    knownEnds.releasers = dynamic_cast<cReleasers*>(node);
    if (node != nullptr) node->addOutLink(this);
    return become(verdict.kind, verdict.type);
}

/// The end asked for isn't attached; only a mismatch of types leaves a mark.
eLinkKind cLink::refuseEnd(eLinkKind reason) {
    if (reason == kindTypeMismatch) linkKind = kindTypeMismatch;
    return reason;
}

eLinkKind cLink::become(eLinkKind kind, std::optional<cResType*> type) {
    symbols().namesChanged();
    if (type) setResType(*type);
    setLinkKind(kind);
    return linkKind;
}
