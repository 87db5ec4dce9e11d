#include "language/symbols.h"

#include "flow/link.h"
#include "flow/releasers.h"
#include "kernel/activity.h"
#include "kernel/network.h"
#include "kernel/queue.h"
#include "language/numberText.h"
#include "language/words.h"

#include <algorithm>
#include <array>

namespace {

constexpr int deepestVariable = 200;

constexpr std::array activityKeywords{"CurInst", "TotInst", "AveDur", "Duration"};
constexpr std::array queueKeywords{"CurCount", "TotCount", "AveWait", "AveCont"};

constexpr std::array vocabulary{
    cSymbols::cAttribute{"SimTime", 0},   cSymbols::cAttribute{"InContext", 1},
    cSymbols::cAttribute{"CurInst", 1},   cSymbols::cAttribute{"TotInst", 1},
    cSymbols::cAttribute{"Duration", 1},  cSymbols::cAttribute{"AveDur", 1},
    cSymbols::cAttribute{"SDDur", 1},     cSymbols::cAttribute{"MaxDur", 1},
    cSymbols::cAttribute{"MinDur", 1},    cSymbols::cAttribute{"FirstStart", 1},
    cSymbols::cAttribute{"LastStart", 1}, cSymbols::cAttribute{"AveInter", 1},
    cSymbols::cAttribute{"SDInter", 1},   cSymbols::cAttribute{"MaxInter", 1},
    cSymbols::cAttribute{"MinInter", 1},  cSymbols::cAttribute{"LastAmtReceived", 3},
    cSymbols::cAttribute{"CurCount", 3},  cSymbols::cAttribute{"AveCount", 3},
    cSymbols::cAttribute{"AveWait", 3},   cSymbols::cAttribute{"MaxCount", 3},
    cSymbols::cAttribute{"MinCount", 3},  cSymbols::cAttribute{"TotCount", 3},
    cSymbols::cAttribute{"Count", 4},     cSymbols::cAttribute{"nDraws", 5},
    cSymbols::cAttribute{"AveVal", 7},    cSymbols::cAttribute{"MaxVal", 7},
    cSymbols::cAttribute{"MinVal", 7},    cSymbols::cAttribute{"SDVal", 7},
    cSymbols::cAttribute{"SumVal", 7},    cSymbols::cAttribute{"Value", 7},
    cSymbols::cAttribute{"TimeIn", 7},    cSymbols::cAttribute{"ResNum", 7},
    cSymbols::cAttribute{"BirthTime", 7},
};

template <typename cWords>
bool isOneOf(const std::string& word, const cWords& words) {
    return std::ranges::find(words, word) != words.end();
}

}  // namespace

cSymbols::cSymbols(cNetwork& model, std::int64_t firstSeed)
    : network(model), streams(static_cast<std::uint32_t>(firstSeed)) {}

std::span<const cSymbols::cAttribute> cSymbols::attributeClasses() { return vocabulary; }

double cSymbols::hostGet(const std::string& key) { return network.hostGet(key); }

void cSymbols::breathe() { network.breathe(); }

void cSymbols::popResource() {
    if (!resourceStack.empty()) resourceStack.pop_back();
}

/// The first rule that answers wins: a number, a global name, a path from an element, what belongs to the owning link.
double cSymbols::resolve(const std::string& operand, const std::string& owner) {
    if (const auto number = parseNumber(operand)) return *number;

    const std::vector<std::string> parts = splitName(operand);
    if (parts.empty()) return 0.0;
    const auto value = parts.size() == 1 ? resolveGlobal(parts[0]) : resolvePath(parts);
    return value ? *value : resolveOfLink(parts, owner);
}

/// A number followed by rubbish counts as its integer part. Declared names win over SimTime.
std::optional<double> cSymbols::resolveGlobal(const std::string& name) {
    if (const std::int32_t integer = leadingInteger(name); integer != 0 || name == "0") return integer;

    if (const auto declared = declaredNames.find(name); declared != declaredNames.end()) {
        const auto stored = network.saveValues.find(name);
        if (declared->second == eNameKind::saveValue && stored != network.saveValues.end()) return stored->second;
        if (declared->second == eNameKind::variable && network.variables.contains(name)) return evaluateVariable(name);
    }
    if (name == "SimTime") return network.simTime;
    return std::nullopt;
}

/// A VARIABLE is a live formula: computed at each reference.
double cSymbols::evaluateVariable(const std::string& name) {
    struct cDepth {
        explicit cDepth(int& depthCount) : depth(depthCount) { ++depth; }
        ~cDepth() { --depth; }
        int& depth;
    };
    const std::shared_ptr<const cExpression> formula = network.variables.at(name);  // may be replaced meanwhile
    if (variableDepth >= deepestVariable) {
        const std::string message = "Endless recursion in " + formula->getText();
        throw cException{failureCode::expression, message, {}, formula->getText()};
    }
    const cDepth depth(variableDepth);
    breathe();
    return formula->evaluate();
}

std::optional<double> cSymbols::resolvePath(const std::vector<std::string>& parts) {
    cNetworkElement* element = network.findElement(parts[0]);
    if (auto* activity = dynamic_cast<cNodeAct*>(element)) return resolveActivityPath(*activity, parts);
    if (auto* queue = dynamic_cast<cNodeQueue*>(element)) return resolveQueuePath(*queue, parts);
    return std::nullopt;
}

/// One of the activity's figures, or the number of the first resource of a type that its current instance holds.
std::optional<double> cSymbols::resolveActivityPath(cNodeAct& activity, const std::vector<std::string>& parts) {
    if (isOneOf(parts[1], activityKeywords)) return activity.getAttribute(parts[1]);

    const cResType* type = network.findResourceType(parts[1]);
    if (type == nullptr || parts.size() < 3) return std::nullopt;
    if (currentInstance == nullptr || currentInstance->getOwnerActivity() != &activity) return std::nullopt;

    const auto [first, end] = currentInstance->getResources().equal_range(type);
    const auto* resource = first == end ? nullptr : dynamic_cast<const cResChar*>(first->second.get());
    if (resource != nullptr && parts[2] == "ResNum") return resource->getResNum();
    if (resource != nullptr && parts[2] == "Count") return resource->getUnitCount();
    return std::nullopt;
}

std::optional<double> cSymbols::resolveQueuePath(cNodeQueue& queue, const std::vector<std::string>& parts) {
    if (!isOneOf(parts[1], queueKeywords)) return std::nullopt;
    return queue.getAttribute(parts[1]);
}

/// What only an expression of a link can name: its predecessor and its count of draws. The owner is looked up with
/// insertion; an owner that doesn't exist leaves an entry without an element.
double cSymbols::resolveOfLink(const std::vector<std::string>& parts, const std::string& owner) {
    const bool namesPredecessor = parts[0] == "PredNode";
    if (!namesPredecessor && parts[0] != "nDraws") return 0.0;

    auto* link = dynamic_cast<cLink*>(network.elements[owner].get());
    if (link == nullptr) return 0.0;
    if (!namesPredecessor) return link->getAttribute("nDraws");

    cNode* predecessor = link->getPredNode();
    if (predecessor == nullptr) return 0.0;
    if (parts.size() == 2) return predecessor->getAttribute(parts[1]);
    if (parts.size() == 3) return resolveHoldings(*predecessor, parts);
    return 0.0;
}

double cSymbols::resolveHoldings(const cNetworkElement& predecessor, const std::vector<std::string>& parts) {
    const auto* releasers = dynamic_cast<const cReleasers*>(network.findElement(predecessor.getName()));
    const cResType* type = network.findResourceType(parts[1]);
    return releasers == nullptr || type == nullptr ? 0.0 : releasers->countOf(parts[2], type);
}
