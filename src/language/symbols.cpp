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

cMeaning lastingNumber(double number) { return {.number = number, .isLasting = true}; }

/// A figure of `subject` that can be asked for again and again.
cMeaning figureOf(const void* subject, double (*read)(const void*, const void*)) {
    return {.read = read, .subject = subject, .isLasting = true};
}

template <typename cKind>
const cKind& as(const void* subject) {
    return *static_cast<const cKind*>(subject);
}

cMeaning figureAt(const double& place) { return {.place = &place, .isLasting = true}; }

/// The figures that expressions name.
struct cFigure {
    std::string_view keyword;
    double (*read)(const void* subject, const void*) = nullptr;
    const double& (*place)(const void* subject) = nullptr;  // of a figure that stands in one place
};

constexpr std::array activityFigures{
    cFigure{"CurInst", [](const void* s, const void*) -> double { return as<cNodeAct>(s).getCurInst(); }, nullptr},
    cFigure{"TotInst", [](const void* s, const void*) -> double { return as<cNodeAct>(s).getTotInst(); }, nullptr},
    cFigure{"AveDur", [](const void* s, const void*) { return as<cNodeAct>(s).getAveDur(); }, nullptr},
    cFigure{"Duration", [](const void* s, const void*) { return as<cNodeAct>(s).currentDuration(); }, nullptr},
};

constexpr std::array queueFigures{
    cFigure{"CurCount", nullptr,
            [](const void* s) -> const double& { return as<cNodeQueue>(s).getStatistics().curCount; }},
    cFigure{"TotCount", nullptr,
            [](const void* s) -> const double& { return as<cNodeQueue>(s).getStatistics().totCount; }},
    cFigure{"AveWait", [](const void* s, const void*) { return as<cNodeQueue>(s).averageWait(); }, nullptr},
    cFigure{"AveCont", [](const void* s, const void*) { return as<cNodeQueue>(s).averageContent(); }, nullptr},
};

template <typename cKind, typename cFigures>
std::optional<cMeaning> figureIn(const cKind& subject, const cFigures& figures, const std::string& keyword) {
    const auto* figure = std::ranges::find(figures, keyword, &cFigure::keyword);
    if (figure == figures.end()) return std::nullopt;
    return figure->place == nullptr ? figureOf(&subject, figure->read) : figureAt(figure->place(&subject));
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

double cSymbols::resolve(const std::string& operand, const std::string& owner) {
    return meaningOf(operand, owner).value();
}

/// The first rule that answers wins: a number, a global name, a path from an element, what belongs to the owning link.
cMeaning cSymbols::meaningOf(const std::string& operand, const std::string& owner) {
    if (const auto number = parseNumber(operand)) return lastingNumber(*number);

    const std::vector<std::string> parts = splitName(operand);
    if (parts.empty()) return lastingNumber(0.0);
    const auto meaning = parts.size() == 1 ? meaningOfGlobal(parts[0]) : meaningOfPath(parts);
    if (meaning) return *meaning;

    cMeaning ofLink = meaningOfLink(parts, owner);
    if (network.findElement<cNodeAct>(parts[0]) != nullptr) ofLink.isLasting = false;  // what it holds comes and goes
    return ofLink;
}

/// A number followed by rubbish counts as its integer part. Declared names win over SimTime.
std::optional<cMeaning> cSymbols::meaningOfGlobal(const std::string& name) {
    if (const std::int32_t integer = leadingInteger(name); integer != 0 || name == "0") return lastingNumber(integer);

    if (const auto declared = declaredNames.find(name); declared != declaredNames.end()) {
        if (declared->second == eNameKind::saveValue)
            if (const double* stored = network.saveValues.valueOf(name)) return figureAt(*stored);
        if (declared->second == eNameKind::variable)
            if (const auto* formula = network.variables.valueOf(name)) {
                const auto evaluate = [](const void* symbols, const void* place) {
                    const auto current = as<std::shared_ptr<const cExpression>>(place);  // may be replaced meanwhile
                    return as<cSymbols>(symbols).evaluateVariable(*current);
                };
                return cMeaning{
                    .read = evaluate, .subject = this, .detail = formula, .isLasting = true, .isFormula = true};
            }
    }
    if (name == "SimTime") return figureAt(network.simTime);
    return std::nullopt;
}

/// A VARIABLE is a live formula: computed at each reference.
double cSymbols::evaluateVariable(const cExpression& formula) const {
    struct cDepth {
        explicit cDepth(int& depthCount) : depth(depthCount) { ++depth; }
        ~cDepth() { --depth; }
        int& depth;
    };
    if (variableDepth >= deepestVariable) {
        const std::string message = "Endless recursion in " + formula.getText();
        throw cException{failureCode::expression, message, {}, formula.getText()};
    }
    const cDepth depth(variableDepth);
    network.breathe();
    return formula.evaluate();
}

std::optional<cMeaning> cSymbols::meaningOfPath(const std::vector<std::string>& parts) {
    cNetworkElement* element = network.findElement(parts[0]);
    if (auto* activity = dynamic_cast<cNodeAct*>(element)) return meaningInActivity(*activity, parts);
    if (auto* queue = dynamic_cast<cNodeQueue*>(element)) return figureIn(*queue, queueFigures, parts[1]);
    return std::nullopt;
}

/// One of the activity's figures, or the number of the first resource of a type that its current instance holds, which
/// is another one each time.
std::optional<cMeaning> cSymbols::meaningInActivity(cNodeAct& activity, const std::vector<std::string>& parts) {
    if (const auto figure = figureIn(activity, activityFigures, parts[1])) return figure;

    const cResType* type = network.findResourceType(parts[1]);
    if (type == nullptr || parts.size() < 3) return std::nullopt;
    if (currentInstance == nullptr || currentInstance->getOwnerActivity() != &activity) return std::nullopt;

    const cHoldings::cList* held = currentInstance->getResources().find(type);
    const cResChar* resource = held == nullptr || held->held().empty() ? nullptr : held->held().front()->asInstance();
    if (resource != nullptr && parts[2] == "ResNum")
        return cMeaning{.number = static_cast<double>(resource->getResNum())};
    if (resource != nullptr && parts[2] == "Count") return cMeaning{.number = resource->getUnitCount()};
    return std::nullopt;
}

/// What only an expression of a link can name: its predecessor and its count of draws. The owner is looked up with
/// insertion; an owner that doesn't exist leaves an entry without an element.
cMeaning cSymbols::meaningOfLink(const std::vector<std::string>& parts, const std::string& owner) {
    const bool namesPredecessor = parts[0] == "PredNode";
    if (!namesPredecessor && parts[0] != "nDraws") return lastingNumber(0.0);

    const auto* link = dynamic_cast<const cLink*>(network.elements.valueWithInsertion(owner).get());
    cMeaning meaning = lastingNumber(0.0);
    if (link != nullptr && !namesPredecessor)
        meaning = figureOf(link, [](const void* s, const void*) -> double { return as<cLink>(s).getDrawCount(); });
    else if (link != nullptr && link->getPredNode() != nullptr)
        meaning = meaningInPredecessor(*link->getPredNode(), parts);
    meaning.isOfOwner = true;
    return meaning;
}

cMeaning cSymbols::meaningInPredecessor(cNode& predecessor, const std::vector<std::string>& parts) {
    if (parts.size() == 2) {
        const auto* queue = dynamic_cast<const cNodeQueue*>(&predecessor);
        if (const auto figure = queue == nullptr ? std::nullopt : figureIn(*queue, queueFigures, parts[1]))
            return *figure;
        return {.number = predecessor.getAttribute(parts[1])};
    }
    const auto* releasers = dynamic_cast<const cReleasers*>(network.findElement(predecessor.getName()));
    const cResType* type = parts.size() == 3 ? network.findResourceType(parts[1]) : nullptr;
    if (releasers == nullptr || type == nullptr || parts[2] != "Count") return lastingNumber(0.0);
    const auto count = [](const void* s, const void* held) {
        return as<cReleasers>(s).countOf("Count", &as<cResType>(held));
    };
    return {.read = count, .subject = releasers, .detail = type, .isLasting = true};
}
