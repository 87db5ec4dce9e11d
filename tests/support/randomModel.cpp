#include "support/randomModel.h"

#include <algorithm>
#include <array>
#include <random>
#include <string_view>
#include <vector>

namespace {

using cTexts = std::vector<std::string>;

/// Numbers and choices from a seed. The generator is the standard's, whose numbers are the same everywhere; its
/// distributions are not, so they are not used.
class cChance {
public:
    explicit cChance(std::uint32_t seed) : numbers(seed) {}

    std::size_t below(std::size_t bound) { return numbers() % bound; }
    std::size_t between(std::size_t low, std::size_t high) { return low + below(high - low + 1); }
    bool percent(std::size_t share) { return below(100) < share; }
    template <typename cList>
    const auto& oneOf(const cList& list) {
        return list[below(std::size(list))];
    }

private:
    std::mt19937 numbers;
};

struct cMadeNode {
    std::string keyword;
    std::string name;
    std::string type;  // empty for activities

    bool isActivity() const { return type.empty(); }
    bool isBranching() const { return keyword == "FORK" || keyword == "DYNAFORK"; }
};

struct cMadeLink {
    std::string keyword;
    std::string name;
    std::string from;
    std::string to;
    std::string type;  // written where the ends leave it open
    bool carriesAmounts = false;
};

const std::array<std::string, 2> amountTypes{"Soil", "Rock"};
const std::array<std::string, 2> instanceTypes{"Truck", "Panel"};

bool isAmount(const std::string& type) { return std::ranges::find(amountTypes, type) != amountTypes.end(); }

class cMaker {
public:
    explicit cMaker(std::uint32_t seed) : chance(seed) {}

    std::string make();

private:
    void makeNodes();
    void makeLinks();
    void linkIntoCombi(const cMadeNode& combi);
    void linkOutOf(std::size_t node);
    void addLink(const std::string& keyword, const std::string& from, const cMadeNode& to, const std::string& type);
    void makeProperties();
    void makeLinkRules();
    void makeCode();

    std::string freshName(const std::string& stem);
    std::string elementText();
    std::string fusedName(const cMadeNode& node, bool isQueueEnd);
    std::string endCondition();
    std::string amount();
    std::string duration();
    std::string condition();
    std::string value(int depth = 0);
    std::string statement();
    const cMadeNode& someNode(bool (*fits)(const cMadeNode&));
    template <typename cFits>
    std::vector<std::size_t> nodesBehind(std::size_t first, cFits fits) const;
    void tell(const std::string& line) { text += line + '\n'; }

    cChance chance;
    std::vector<cMadeNode> nodes;  // queues, Combis, then receivers in the order in which flows may pass them
    std::vector<cMadeLink> links;
    cTexts fusions;  // "NAME QUEUE"
    int names = 0;
    std::string text;
};

bool isQueue(const cMadeNode& node) { return node.keyword == "QUEUE"; }
bool isCombi(const cMadeNode& node) { return node.keyword == "COMBI"; }
bool isActivity(const cMadeNode& node) { return node.isActivity(); }

/// Names whose order isn't that of making: links are walked by name.
std::string cMaker::freshName(const std::string& stem) {
    const char first = static_cast<char>('A' + chance.below(26));
    return std::string(1, first) + stem + std::to_string(++names);
}

const cMadeNode& cMaker::someNode(bool (*fits)(const cMadeNode&)) {
    std::vector<const cMadeNode*> fitting;
    for (const cMadeNode& node : nodes)
        if (fits(node)) fitting.push_back(&node);
    return *chance.oneOf(fitting);
}

template <typename cFits>
std::vector<std::size_t> cMaker::nodesBehind(std::size_t first, cFits fits) const {
    std::vector<std::size_t> fitting;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if ((isQueue(nodes[i]) || i > first) && !isCombi(nodes[i]) && fits(nodes[i])) fitting.push_back(i);
    return fitting;
}

void cMaker::makeNodes() {
    for (const auto& types : {amountTypes, instanceTypes})
        for (const std::string& type : types)
            for (std::size_t n = chance.between(1, 2); n > 0; --n) nodes.push_back({"QUEUE", freshName("q"), type});
    for (std::size_t n = chance.between(1, 4); n > 0; --n) nodes.push_back({"COMBI", freshName("c"), ""});
    for (std::size_t n = chance.between(0, 7); n > 0; --n) {
        const std::string keyword = chance.oneOf(
            std::array{"NORMAL", "NORMAL", "CONSOLIDATOR", "FORK", "DYNAFORK", "ASSEMBLER", "DISASSEMBLER"});
        const bool isTyped = keyword != "NORMAL" && keyword != "CONSOLIDATOR";
        const bool takesAny = keyword == "FORK" || keyword == "DYNAFORK";
        const std::string type =
            takesAny && chance.percent(50) ? chance.oneOf(amountTypes) : chance.oneOf(instanceTypes);
        nodes.push_back({keyword, freshName("n"), isTyped ? type : ""});
    }
    if (chance.percent(40)) fusions.push_back(freshName("f") + ' ' + someNode(isQueue).name);
}

/// At times a link is attached to the fusion queue that stands for its queue.
std::string cMaker::fusedName(const cMadeNode& node, bool isQueueEnd) {
    for (const std::string& fusion : fusions) {
        const std::size_t blank = fusion.find(' ');
        if (isQueueEnd && fusion.substr(blank + 1) == node.name && chance.percent(50)) return fusion.substr(0, blank);
    }
    return node.name;
}

void cMaker::addLink(const std::string& keyword, const std::string& from, const cMadeNode& to,
                     const std::string& type) {
    const bool isTyped = to.isActivity() || to.keyword == "ASSEMBLER" || to.keyword == "DISASSEMBLER";
    const bool typeIsKept = keyword == "RELEASELINK" && isTyped;
    links.push_back(
        {keyword, freshName("l"), from, fusedName(to, isQueue(to)), typeIsKept ? type : "", isAmount(type)});
}

void cMaker::linkIntoCombi(const cMadeNode& combi) {
    std::vector<std::string> taken;
    for (std::size_t n = chance.between(1, 3); n > 0; --n) {
        const cMadeNode& queue = someNode(isQueue);
        if (std::ranges::find(taken, queue.name) != taken.end()) continue;
        taken.push_back(queue.name);
        links.push_back({"DRAWLINK", freshName("l"), fusedName(queue, true), combi.name, "", isAmount(queue.type)});
    }
}

void cMaker::linkOutOf(std::size_t node) {
    const cMadeNode from = nodes[node];
    const bool sendsOneType = from.isBranching() || from.keyword == "ASSEMBLER";
    const auto takes = [](const std::string& type) {
        return [type](const cMadeNode& to) { return to.isActivity() || to.keyword == "ASSEMBLER" || to.type == type; };
    };
    for (std::size_t n = chance.between(1, 3); n > 0; --n) {
        const std::string type = sendsOneType         ? from.type
                                 : chance.percent(50) ? chance.oneOf(amountTypes)
                                                      : chance.oneOf(instanceTypes);
        const std::vector<std::size_t> ends = nodesBehind(node, takes(type));
        const cMadeNode& to = nodes[chance.oneOf(ends)];
        addLink(from.isBranching() ? "FLOWLINK" : "RELEASELINK", from.name, to, type);
    }
}

void cMaker::makeLinks() {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        if (isCombi(nodes[i])) linkIntoCombi(nodes[i]);
        if (!isQueue(nodes[i])) linkOutOf(i);
    }
}

std::string cMaker::elementText() {
    std::string lines;
    for (const cMadeNode& node : nodes)
        lines += node.keyword + ' ' + node.name + (node.isActivity() ? "" : ' ' + node.type) + ";\n";
    lines += '\n';
    for (const std::string& fusion : fusions) lines += "FUSIONQUEUE " + fusion + ";\n";
    lines += '\n';
    for (const cMadeLink& link : links)
        lines += link.keyword + ' ' + link.name + ' ' + link.from + ' ' + link.to +
                 (link.type.empty() ? "" : ' ' + link.type) + ";\n";
    return lines + '\n';
}

std::string cMaker::amount() { return chance.oneOf(std::array{"1", "1", "2", "0.5", "3", "1+Rnd()", "Uniform(1,2)"}); }

std::string cMaker::duration() {
    const std::array forms{"0",
                           "5",
                           "1.25",
                           "Uniform(1,3)",
                           "Exponential(2)",
                           "Triangular(1,2,4)",
                           "Pert(1,2,4)",
                           "Gamma(2,1.5)",
                           "Normal(6,0.5)",
                           "sUniform(1,3,1)",
                           "sNormal(5,0.4,2)",
                           "sExponential(3,Rnd()*3)",
                           "level+1",
                           "pace",
                           "Rnd()*4+0.1",
                           "2-3"};
    const std::string form = chance.oneOf(forms);
    return chance.percent(25) ? form + '+' + value(1) + "%4" : form;
}

/// A value that needn't be positive. Nothing is divided by what can be 0.
std::string cMaker::value(int depth) {
    constexpr int deepest = 3;
    if (depth < deepest && chance.percent(45)) {
        const std::string operation = chance.oneOf(std::array{"+", "-", "*", "<", ">=", "==", "&", "|", "%"});
        if (operation == "%") return "((" + value(depth + 1) + ")%7)";
        const std::string inner = value(depth + 1) + operation + value(depth + 1);
        return chance.percent(50) ? '(' + inner + ')' : '[' + inner + ']';
    }
    switch (chance.below(8)) {
        case 0: return "SimTime";
        case 1: return someNode(isQueue).name + chance.oneOf(std::array{".CurCount", ".TotCount", ".AveCont"});
        case 2: return someNode(isActivity).name + chance.oneOf(std::array{".TotInst", ".CurInst", ".AveDur"});
        case 3: return "level";
        case 4: return "pace";
        case 5: return "Rnd()";
        case 6: return std::to_string(chance.below(100)) + '.' + std::to_string(chance.below(1000));
        default: return std::to_string(chance.below(20));
    }
}

std::string cMaker::condition() { return value(1) + chance.oneOf(std::array{"<", ">", "<=", ">=", "=="}) + value(1); }

void cMaker::makeProperties() {
    for (const cMadeNode& node : nodes) {
        if (node.isActivity() && node.keyword != "CONSOLIDATOR") tell("DURATION " + node.name + ' ' + duration() + ';');
        if (isCombi(node)) {
            tell("SEMAPHORE " + node.name + ' ' + node.name + ".CurInst<" + std::to_string(chance.between(1, 4)) +
                 (chance.percent(20) ? "&(" + condition() + ')' : "") + ';');
            if (chance.percent(50)) tell("PRIORITY " + node.name + ' ' + (chance.percent(50) ? "3" : value(1)) + ';');
        }
        if (node.keyword == "CONSOLIDATOR" && chance.percent(70))
            tell("CONSOLIDATEWHEN " + node.name + ' ' + (chance.percent(50) ? "Rnd()>0.6" : condition()) + ';');
        if (isQueue(node))
            tell("TBINITIALCONTENT " + node.name + ' ' + (isAmount(node.type) ? amount() + "+" : "") +
                 std::to_string(chance.below(8)) + ';');
    }
}

void cMaker::makeLinkRules() {
    for (const cMadeLink& link : links) {
        if (link.keyword == "DRAWLINK") {
            if (chance.percent(30)) tell("ENOUGH " + link.name + " PredNode.CurCount>=" + amount() + ';');
            if (link.carriesAmounts && chance.percent(40)) tell("DRAWAMT " + link.name + ' ' + amount() + ';');
            if (chance.percent(20)) tell("DRAWUNTIL " + link.name + " nDraws>=" + amount() + ';');
            if (chance.percent(25)) tell("DRAWORDER " + link.name + ' ' + value(2) + ';');
            if (chance.percent(20)) tell("DRAWWHERE " + link.name + ' ' + condition() + ';');
        } else if (link.keyword == "RELEASELINK") {
            if (chance.percent(40)) tell("RELEASEAMT " + link.name + ' ' + amount() + ';');
            if (chance.percent(15)) tell("RELEASEUNTIL " + link.name + ' ' + condition() + ';');
            if (chance.percent(25)) tell("RELEASEORDER " + link.name + ' ' + value(2) + ';');
            if (chance.percent(20)) tell("RELEASEWHERE " + link.name + ' ' + condition() + ';');
        } else {
            tell("STRENGTH " + link.name + ' ' + (chance.percent(60) ? amount() : "1+" + value(3) + "%3") + ';');
        }
    }
}

std::string cMaker::statement() {
    switch (chance.below(7)) {
        case 0: return "PRINT log \"at %f n=%d\" SimTime " + value(1);
        case 1: return "PRINT other \"%f\" " + value();
        case 2: return "POST \"%f of %d\" SimTime " + value(2);
        case 3: return "ASSIGN level (level+" + std::to_string(chance.below(4)) + ")%9";
        case 4: return "SETATTRIBUTE " + someNode(isActivity).name + " Duration " + duration();
        case 5: return "ASSIGN level " + value(2) + "%5";
        default: {
            const cMadeNode& queue = someNode(isQueue);
            return "INIT " + queue.name + " 1" + (isAmount(queue.type) ? "" : " 1");
        }
    }
}

std::string cMaker::endCondition() {
    std::string condition = "SIMULATECONDITION (SimTime>=" + std::to_string(chance.between(30, 90)) + ')';
    for (const cMadeNode& node : nodes)
        if (node.isActivity()) condition += "|(" + node.name + ".TotInst>=150)";
    return condition + ';';
}

void cMaker::makeCode() {
    tell("/<CODE>");
    if (chance.percent(50)) tell("SEED " + std::to_string(chance.below(1000000)) + ';');
    if (chance.percent(60)) tell("STREAMS " + std::to_string(chance.below(4)) + ';');
    tell("SAVEVALUE level " + std::to_string(chance.below(5)) + ';');
    tell("VARIABLE pace " + std::string(chance.oneOf(std::array{"Uniform(1,3)", "level+2", "2.5", "Rnd()*level+1"})) +
         ';');
    tell(endCondition());
    if (chance.percent(40)) tell("MULTISIM " + std::to_string(chance.between(2, 3)) + ';');
    tell("ADDTORESULTS Next Rnd()+sRnd(1)+sRnd(2);");  // tells how far the streams have come
    if (chance.percent(60)) tell("ADDTORESULTS Figure level+" + someNode(isQueue).name + ".TotCount;");
    if (chance.percent(30)) tell("AFTERTIMEADVANCE " + statement() + ';');
    if (chance.percent(30)) tell("BEFORETIMEADVANCE " + statement() + ';');
    if (chance.percent(40)) tell("IF " + condition() + ' ' + statement() + ';');
    for (const cMadeNode& node : nodes) {
        if (isQueue(node) && chance.percent(20)) tell("ONENTRY " + node.name + " PRINT in \"%f\" " + value(1) + ';');
        if (isCombi(node) && chance.percent(25)) tell("BEFOREDRAWS " + node.name + ' ' + statement() + ';');
        for (const char* event : {"ONSTART ", "BEFOREEND ", "ONEND "})
            if (node.isActivity() && chance.percent(25)) tell(event + node.name + ' ' + statement() + ';');
    }
    for (const cMadeLink& link : links)
        if (chance.percent(20)) tell("ONFLOW " + link.name + ' ' + statement() + ';');
    tell("/<CODE>");
}

std::string cMaker::make() {
    for (const std::string& type : amountTypes) tell("GENTYPE " + type + ';');
    for (const std::string& type : instanceTypes) tell("COMPTYPE " + type + ';');
    makeNodes();
    makeLinks();
    text += elementText();
    makeProperties();
    makeLinkRules();
    makeCode();
    tell("RANKCOUNT " + std::to_string(nodes.size() + links.size() + fusions.size()) + ';');
    return text;
}

}  // namespace

std::string randomModel(std::uint32_t seed) { return cMaker(seed).make(); }
