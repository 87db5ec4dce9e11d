#include "model/modelWriter.h"

#include "flow/assembler.h"
#include "flow/disassembler.h"
#include "flow/link.h"
#include "kernel/network.h"
#include "kernel/propertyWords.h"
#include "model/modelSource.h"
#include "model/modelStatement.h"
#include "model/propertyTable.h"

#include <array>
#include <charconv>
#include <set>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr const char* noFusion = "0";

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

/// Six significant digits, in the shorter of fixed and exponent form.
std::string placeText(double coordinate) {
    constexpr int digits = 6;
    std::array<char, 32> text{};
    const auto [end, failure] =
        std::to_chars(text.data(), text.data() + text.size(), coordinate, std::chars_format::general, digits);
    return {text.data(), end};
}

/// Both ends are at nodes, and the pair is one that files have a word for. They have none for a link that was refused a
/// node of another type (kindTypeMismatch), though it is still at the nodes that it joined before.
bool isComplete(const cLink& link) {
    return !link.getKind().empty() && link.getPredNode() != nullptr && link.getSuccNode() != nullptr;
}

/// Whether the reader can't take the type of a link from its ends.
bool namesItsType(const cLink& link) {
    const cNode* start = link.getPredNode();
    const cNode* end = link.getSuccNode();
    const bool isEndTyped =
        dynamic_cast<const cHomogHolder*>(start) != nullptr || dynamic_cast<const cHomogHolder*>(end) != nullptr;
    return !isEndTyped || dynamic_cast<const cNodeAuxAssembler*>(end) != nullptr ||
           dynamic_cast<const cNodeAuxDisAssembler*>(end) != nullptr ||
           dynamic_cast<const cNodeAuxDisAssembler*>(start) != nullptr;
}

std::string typeWord(const cHomogHolder& holder) {
    const cResType* type = holder.getResType();
    return type == nullptr ? std::string() : ' ' + type->getTypeName();
}

/// Whether a name or a value makes a statement look like one of another kind. The format has no way around that.
bool isMisread(const std::string& statement) {
    const std::string keyword = cModelStatement(statement).word(0);
    const bool losesProperty =
        findProperty(ePropertyTest::activity, keyword) != nullptr && statement.find(savePropsWord) != std::string::npos;
    return losesProperty || endsReading(statement) || statement.find(codeMark) != std::string::npos;
}

/// Writes one model, section by section.
class cWriter {
public:
    explicit cWriter(cModelSource& modelSource) : source(modelSource), network(modelSource.network()) {}

    cModelWriting write();

private:
    void writeTypes();
    void writeElements();
    void tellSharedNames();
    std::string plainElement(const cNetworkElement& element);
    std::string linkElement(const cLink& link);
    void writeNodeProperties();
    void writeLinkProperties();
    std::string linkValue(const cLink& link, const cProperty& property);
    void writeCode();
    void writePlaces();
    std::string linkPlace(const cLink& link);
    void writeCounter();

    void tell(const std::string& statement);
    template <typename cCallable>
    void forEachNode(cCallable call);
    template <typename cCallable>
    void forEachCompleteLink(cCallable call);

    cModelSource& source;
    cNetwork& network;
    cModelWriting writing;
};

cModelWriting cWriter::write() {
    const auto leftOver = network.elements.find("PredNode");
    if (leftOver != network.elements.end() && leftOver->second == nullptr) network.elements.erase("PredNode");

    writeTypes();
    writeElements();
    writeNodeProperties();
    writeLinkProperties();
    writeCode();
    writePlaces();
    writeCounter();
    return std::move(writing);
}

template <typename cCallable>
void cWriter::forEachNode(cCallable call) {
    network.forEachElement([&](const cNetworkElement& element) {
        if (dynamic_cast<const cLink*>(&element) == nullptr) call(element);
    });
}

template <typename cCallable>
void cWriter::forEachCompleteLink(cCallable call) {
    network.forEachElement([&](const cNetworkElement& element) {
        const auto* link = dynamic_cast<const cLink*>(&element);
        if (link == nullptr) return;
        if (isComplete(*link))
            call(*link);
        else
            writing.hasIncompleteLink = true;
    });
}

void cWriter::tell(const std::string& statement) {
    if (isMisread(statement))
        writing.warnings.push_back("Reading the file will go wrong at \"" + trimmed(statement) +
                                   "\": no name may hold <CODE> or SAVEPROPS, or end in a word such as QUEUE or COMBI "
                                   "in capitals.");
    writing.text += statement;
}

/// Types of a kind that no element can be given are not written.
void cWriter::writeTypes() {
    for (const cSavedType& type : source.resourceTypes()) {
        const bool isCompound = type.kind == typeKindWord::compound;
        if (!isCompound && type.kind != typeKindWord::generic) {
            writing.warnings.push_back("The resource type " + type.name + " is not in the file: " + type.kind +
                                       " can be read, but not written.");
            continue;
        }
        const std::string statement = type.kind + ' ' + type.name + ";\n";
        if (cModelStatement(statement).word(1) != type.name)
            writing.warnings.push_back("The name of the resource type " + type.name + " will end at its first ;");
        tell(statement);
        if (isCompound && !type.saveProps.empty())
            tell(std::string(savePropsWord) + ' ' + type.name + ' ' + type.saveProps + ";\n");
    }
}

void cWriter::writeElements() {
    tellSharedNames();
    const auto isFusion = [](const cNetworkElement& element) { return element.getKind() == fusionQueueWord; };
    forEachNode([&](const cNetworkElement& element) {
        if (!isFusion(element)) tell(plainElement(element));
    });
    writing.text += '\n';
    forEachNode([&](const cNetworkElement& element) {
        if (isFusion(element))
            tell(element.getKind() + ' ' + element.getName() + ' ' + source.fusedQueue(element) + ";\n");
    });
    writing.text += '\n';
    forEachCompleteLink([&](const cLink& link) { tell(linkElement(link)); });
    writing.text += '\n';
}

/// An element that a file couldn't give its name has one that a later element of the file could take.
void cWriter::tellSharedNames() {
    std::set<std::string> names;
    network.forEachElement([&](const cNetworkElement& element) {
        if (!names.insert(element.getName()).second)
            writing.warnings.push_back("Several elements are called " + element.getName() +
                                       "; only the last will be read.");
    });
}

std::string cWriter::plainElement(const cNetworkElement& element) {
    std::string statement = element.getKind() + ' ' + element.getName();
    if (const auto* holder = dynamic_cast<const cHomogHolder*>(&element)) statement += typeWord(*holder);
    return statement + ";\n";
}

std::string cWriter::linkElement(const cLink& link) {
    std::string statement = link.getKind() + ' ' + link.getName();
    for (const bool isStart : {true, false}) {
        const std::string fusionName = source.linkEnd(link, isStart).fusionName;
        const cNode* node = isStart ? link.getPredNode() : link.getSuccNode();
        statement += ' ' + (fusionName.empty() ? node->getName() : fusionName);
    }
    if (namesItsType(link)) statement += typeWord(link);
    return statement + ";\n";
}

void cWriter::writeNodeProperties() {
    forEachNode([this](const cNetworkElement& element) {
        for (const cProperty& property : nodeProperties()) {
            const std::optional<std::string> stored = property.get(element, property.keyword);
            if (!stored) continue;
            std::string value = source.typedText(element, property.keyword).value_or(*stored);
            if (property.keyword != propertyWord::consolidateWhen) value = trimmed(value);
            if (value.find('\n') != std::string::npos)
                writing.warnings.push_back(std::string(property.keyword) + " of " + element.getName() +
                                           " has several lines; only the first will be read.");
            tell(std::string(property.keyword) + ' ' + element.getName() + ' ' + value + ";\n");
        }
    });
}

/// What is drawn goes by what the engine has; the other values go by their fields.
std::string cWriter::linkValue(const cLink& link, const cProperty& property) {
    const std::string stored = property.get(link, property.keyword).value_or(std::string());
    const std::string typed = source.typedText(link, property.keyword).value_or(stored);
    if (property.keyword == modelKeyOf(eLinkRule::enough)) return typed.empty() ? typed : stored;
    if (property.keyword == modelKeyOf(eLinkRule::drawUntil)) return typed.empty() ? stored : typed;
    return property.keyword == modelKeyOf(eLinkRule::drawAmt) ? stored : typed;
}

void cWriter::writeLinkProperties() {
    forEachCompleteLink([this](const cLink& link) {
        for (const cProperty& property : linkProperties())
            tell('\n' + std::string(property.keyword) + ' ' + link.getName() + ' ' + linkValue(link, property) + ';');
        writing.text += '\n';
    });
}

void cWriter::writeCode() {
    const std::string code = trimmed(source.globalCode());
    if (code.find(codeMark) != std::string::npos)
        writing.warnings.push_back("The Global Code holds " + std::string(codeMark) +
                                   ", which ends it when the file is read.");
    const std::string markLine = "\n/" + std::string(codeMark) + '\n';
    writing.text += markLine + code + markLine;
}

std::string cWriter::linkPlace(const cLink& link) {
    const cSavedEnd start = source.linkEnd(link, true);
    const cSavedEnd end = source.linkEnd(link, false);
    std::string statement = std::string(linkPlaceWord) + ' ' + link.getName();
    for (const cSavedEnd& each : {start, end}) statement += ' ' + std::to_string(each.point);
    for (const cSavedEnd& each : {start, end})
        statement += ' ' + (each.fusionName.empty() ? noFusion : each.fusionName);
    return statement + ";\n";
}

void cWriter::writePlaces() {
    forEachCompleteLink([this](const cLink& link) { tell(linkPlace(link)); });
    forEachNode([this](const cNetworkElement& element) {
        const cSavedPlace place = source.place(element);
        tell(std::string(nodePlaceWord) + ' ' + element.getName() + ' ' + placeText(place.x) + ' ' +
             placeText(place.y) + ";\n");
    });
}

void cWriter::writeCounter() {
    const std::int32_t counter = cNetworkElement::getElementCounter();
    if (counter > largestCounter)
        writing.warnings.emplace_back("The counter behind element numbers is larger than a reader takes.");
    writing.text += std::string(counterWord) + ' ' + std::to_string(counter) + ";\n";
}

}  // namespace

cModelWriting writeModel(cModelSource& source) { return cWriter(source).write(); }
