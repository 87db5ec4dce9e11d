#include "model/modelReader.h"

#include "flow/link.h"
#include "kernel/combi.h"
#include "kernel/network.h"
#include "language/compilation.h"
#include "language/numberText.h"
#include "language/rounding.h"
#include "language/words.h"
#include "model/lineSource.h"
#include "model/modelBuilder.h"
#include "model/modelStatement.h"
#include "model/propertyTable.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <system_error>
#include <tuple>

namespace {

constexpr double firstPosition = 200.0;  // where a new element lies until its position is read

std::optional<eLinkKind> linkKindOf(std::string_view keyword) {
    const auto* row = std::ranges::find(linkKindWords, keyword, &cLinkKindWord::word);
    return row == linkKindWords.end() ? std::nullopt : std::optional(row->kind);
}

bool isTypeKind(const std::string& word) {
    return word == typeKindWord::generic || word == typeKindWord::characterized || word == typeKindWord::compound;
}

/// A text of the file as a message can hold it: on one line, without control characters, and not too long.
std::string shown(std::string text, std::size_t longest = 60) {
    const bool isLong = text.size() > longest;
    text.resize(std::min(text.size(), longest));
    std::ranges::replace(text, '\n', ' ');
    std::ranges::replace_if(
        text, [](char c) { return ('\0' <= c && c < ' ') || c == '\x7F'; }, '?');
    return isLong ? text + "..." : text;
}

std::string quoted(const std::string& text) { return '"' + shown(text) + '"'; }

std::string describe(const cException& failure) {
    std::string text = failure.message.empty() ? "not an expression" : failure.message;
    if (!failure.location.empty()) text += " (" + failure.location + ')';
    constexpr std::size_t longest = 200;
    return shown(text, longest);
}

/// Reads one file. Each test of the format is a member; `readLine` makes them in order.
class cReader {
public:
    cReader(std::istream& text, cModelBuilder& modelBuilder)
        : lines(text), builder(modelBuilder), network(modelBuilder.network()) {}

    cModelReading read();

private:
    bool next(std::string& line);
    bool readLine(const std::string& line);
    void readType();
    void readElement(const cElementForm& form);
    cResType* typeOfNode();
    void readLink(const std::shared_ptr<cLink>& link, eLinkKind kind);
    void joinEnd(cLink& link, std::size_t word, bool (cModelBuilder::*attach)(cLink&, cNetworkElement&));
    void setLinkType(cLink& link);
    void enter(const std::shared_ptr<cNetworkElement>& element);
    void forgetFailures(const std::string& name);
    void readCode();
    void declareNames(const std::string& code);
    void readSaveProps();
    void readProperty(ePropertyTest test);
    void readPosition();
    void readConnectionPoints();
    void readCounter();
    void retryExpressions();

    bool isComplete(std::size_t words);
    cNetworkElement* lookUp(const std::string& name);
    cResType* lookUpType(const std::string& name);
    void warn(const std::string& message) { reading.warnings.push_back({statementLine, message}); }

    /// A property whose value failed as an expression, to be tried once more.
    struct cFailed {
        std::size_t line;
        const cProperty* property;
        std::string value;
    };

    cLineSource lines;
    cModelBuilder& builder;
    cNetwork& network;
    cModelStatement statement{{}};
    std::size_t statementLine = 0;  // where `statement` stands; the lines run ahead of it while they are code
    cModelReading reading;
    std::map<std::pair<std::string, std::string_view>, cFailed> failed;  // by element and keyword: the last counts
};

cModelReading cReader::read() {
    std::string line;
    while (next(line))
        if (!line.empty() && !readLine(line)) break;
    retryExpressions();
    builder.finish();

    bool hasElement = false;
    network.forEachElement([&](const cNetworkElement&) { hasElement = true; });
    reading.isRunnable = hasElement || reading.globalCode.find_first_not_of(" \t\r\n") != std::string::npos;
    std::ranges::stable_sort(reading.warnings, {}, &cModelWarning::line);
    return std::move(reading);
}

/// The next line, as the builder can hold it. @return false at the end.
bool cReader::next(std::string& line) {
    if (!lines.next(line)) return false;
    if (isUtf8(line)) return true;
    reading.warnings.push_back({lines.lineNumber(), "is not UTF-8"});
    line = builder.decoded(line);
    return true;
}

/// @return false where reading stops.
bool cReader::readLine(const std::string& line) {
    statement = cModelStatement(line);
    statementLine = lines.lineNumber();
    if (isTypeKind(statement.word(0))) {
        readType();
    } else if (holdsElementKeyword(line)) {
        const cElementForm* form = findElementForm(statement.word(0));
        if (form == nullptr) {
            warn("reading stopped here: the line holds an element keyword but begins with " +
                 quoted(statement.word(0)));
            return false;
        }
        readElement(*form);
    }

    if (line.find(codeMark) != std::string::npos)
        readCode();
    else if (line.find(savePropsWord) != std::string::npos)
        readSaveProps();
    else
        readProperty(ePropertyTest::activity);
    readProperty(ePropertyTest::consolidator);
    readProperty(ePropertyTest::initialContent);
    readProperty(ePropertyTest::link);

    statement = cModelStatement(line);  // whole again: the tests for properties have taken from it
    if (statement.word(0) == nodePlaceWord) readPosition();
    if (statement.word(0) == linkPlaceWord) readConnectionPoints();
    if (statement.word(0) == counterWord) readCounter();
    return true;
}

bool cReader::isComplete(std::size_t words) {
    if (statement.size() >= words) return true;
    warn(shown(statement.word(0)) + " has too few words behind it: " + std::to_string(statement.size() - 1) + " of " +
         std::to_string(words - 1));
    return false;
}

/// Looks up with insertion: a name that no element has is left in the map, without an element.
cNetworkElement* cReader::lookUp(const std::string& name) {
    cNetworkElement* element = network.elements[name].get();
    if (element == nullptr) warn("there is no element " + quoted(name));
    return element;
}

cResType* cReader::lookUpType(const std::string& name) {
    cResType* type = network.findResourceType(name);
    if (type == nullptr) warn("there is no resource type " + quoted(name));
    return type;
}

/// A type that exists is kept as it is.
void cReader::readType() {
    if (!isComplete(2)) return;
    if (network.findResourceType(statement.word(1)) != nullptr) return;
    builder.addResourceType(statement.word(1), statement.word(0));
}

void cReader::readElement(const cElementForm& form) {
    if (!isComplete(form.words)) return;

    if (const auto kind = linkKindOf(form.keyword)) {
        const std::shared_ptr<cLink> link = builder.makeLink(statement.word(1));
        readLink(link, *kind);
        enter(link);
        return;
    }
    if (form.keyword == fusionQueueWord) return enter(builder.makeFusionQueue(statement.word(1), statement.word(2)));
    enter(builder.makeNode(statement.word(0), form.isTyped ? typeOfNode() : nullptr));
}

/// A node that was saved before it had a type has none in its statement.
cResType* cReader::typeOfNode() {
    if (statement.size() > 2) return lookUpType(statement.word(2));
    warn(statement.word(0) + ' ' + quoted(statement.word(1)) + " has no resource type");
    return nullptr;
}

/// The order counts: the ends decide kind and type, and the statement's own words then win.
void cReader::readLink(const std::shared_ptr<cLink>& link, eLinkKind kind) {
    joinEnd(*link, 2, &cModelBuilder::attachStart);
    joinEnd(*link, 3, &cModelBuilder::attachEnd);
    setLinkType(*link);
    link->setLinkKind(kind);
    if (link->getResType() == nullptr)
        warn("link " + quoted(statement.word(1)) + " has no resource type: it carries nothing");
}

void cReader::joinEnd(cLink& link, std::size_t word, bool (cModelBuilder::*attach)(cLink&, cNetworkElement&)) {
    cNetworkElement* element = lookUp(statement.word(word));
    if (element != nullptr && !(builder.*attach)(link, *element))
        warn("link " + quoted(statement.word(1)) + " can't join " + quoted(statement.word(2)) + " to " +
             quoted(statement.word(3)));
}

/// With a fifth word, the type of that name; without, that of the start node, else of the end node, if one has a type.
void cReader::setLinkType(cLink& link) {
    constexpr std::size_t wordsWithType = 5;
    if (statement.size() > wordsWithType) return warn(statement.word(0) + " has more words than it takes");

    if (statement.size() == wordsWithType) {
        if (cResType* type = lookUpType(statement.word(4))) link.setResType(type);
        return;
    }
    for (cNode* end : {link.getPredNode(), link.getSuccNode()}) {
        const auto* holder = dynamic_cast<const cHomogHolder*>(end);
        if (holder == nullptr) continue;
        if (holder->getResType() != link.getResType()) link.setResType(holder->getResType());
        return;
    }
}

/// What failed belongs to the element that had the name until now.
void cReader::forgetFailures(const std::string& name) {
    const auto first = failed.lower_bound({name, {}});
    auto end = first;
    while (end != failed.end() && end->first.first == name) ++end;
    failed.erase(first, end);
}

/// Enters an element under the name of its statement, also when it could not take that name.
void cReader::enter(const std::shared_ptr<cNetworkElement>& element) {
    const std::string& name = statement.word(1);
    element->ensureName();  // not sooner: nodes know a link by the name that it had when it was attached
    if (!element->setName(name))
        warn("the name " + quoted(name) + " is taken or not a name; the element is called " +
             quoted(element->getName()));
    forgetFailures(name);
    if (auto* combi = dynamic_cast<cNodeActCombi*>(element.get())) network.combis[name] = combi;
    network.elements[name] = element;
    builder.place(*element, firstPosition, firstPosition);
}

/// Reads up to the closing mark. At the end of the file without one, the last line is not part of the code.
void cReader::readCode() {
    std::string code;
    std::string line;
    bool isClosed = false;
    while (next(line)) {
        isClosed = line.find(codeMark) != std::string::npos;
        if (isClosed || lines.atEnd()) break;
        code += line + '\n';
    }
    if (!isClosed) warn("the code has no closing <CODE>; the last line of the file is lost");
    reading.globalCode = code;
    builder.setGlobalCode(code);
    declareNames(code);
}

/// Runs the declarations alone, so that expressions of elements can be checked against the names.
void cReader::declareNames(const std::string& code) {
    compileCode(network, splitLines(code), eCompiled::declarations);
    for (std::size_t i = 0; i < network.statements.size(); ++i) {
        const cStatement& declaration = *network.statements[i];
        try {
            declaration.execute(network);
        } catch (const cException& failure) {
            if (failure.code >= failureCode::userStop) throw;
            warn("declaration " + quoted(declaration.getText()) + ": " + describe(failure));
        }
    }
    network.statements.clear();
}

void cReader::readSaveProps() {
    if (isComplete(2)) builder.setSaveProps(statement.word(1), statement.rest(2));
}

/// An empty value leaves what the element has.
void cReader::readProperty(ePropertyTest test) {
    const cProperty* property = findProperty(test, statement.word(0));
    if (property == nullptr || !isComplete(2)) return;

    const std::string name = statement.word(1);
    cNetworkElement* element = lookUp(name);
    const std::string value = statement.takeValue();
    if (element == nullptr || value.empty()) return;
    failed.erase({name, property->keyword});
    try {
        if (!property->set(*element, property->keyword, value))
            warn(quoted(name) + " has no " + std::string(property->keyword));
    } catch (const cException& failure) {
        if (failure.code >= failureCode::userStop) throw;
        failed[{name, property->keyword}] = {statementLine, property, value};
    }
}

/// Every name that the file declares is there now.
void cReader::retryExpressions() {
    std::vector<std::tuple<std::size_t, std::string, cFailed>> inOrder;
    inOrder.reserve(failed.size());
    for (const auto& [key, entry] : failed) inOrder.emplace_back(entry.line, key.first, entry);
    std::ranges::sort(inOrder, {}, [](const auto& entry) { return std::get<0>(entry); });
    for (const auto& [line, name, entry] : inOrder) {
        auto* element = network.findElement(name);
        if (element == nullptr) continue;
        try {
            entry.property->set(*element, entry.property->keyword, entry.value);
        } catch (const cException& failure) {
            if (failure.code >= failureCode::userStop) throw;
            reading.warnings.push_back({line, std::string(entry.property->keyword) + " of " + quoted(name) + ", " +
                                                  quoted(entry.value) + ": " + describe(failure)});
        }
    }
}

void cReader::readPosition() {
    if (!isComplete(4)) return;
    if (cNetworkElement* element = lookUp(statement.word(1)))
        builder.place(*element, leadingNumber(statement.word(2)), leadingNumber(statement.word(3)));
}

void cReader::readConnectionPoints() {
    if (!isComplete(4)) return;
    cNetworkElement* element = lookUp(statement.word(1));
    if (element == nullptr) return;
    if (auto* link = dynamic_cast<cLink*>(element))
        builder.setConnectionPoints(*link, truncateToInt32(leadingNumber(statement.word(2))),
                                    truncateToInt32(leadingNumber(statement.word(3))));
    else
        warn(quoted(statement.word(1)) + " is no link");
}

/// Raises the counter behind element numbers, never lowers it.
void cReader::readCounter() {
    if (statement.size() != 2) return;
    const std::string& word = statement.word(1);
    std::int32_t counter = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), counter);
    if (failure != std::errc{} || end != word.data() + word.size() || counter > largestCounter)
        return warn(std::string(counterWord) + ' ' + quoted(word) + " is no counter");
    if (counter > cNetworkElement::getElementCounter()) cNetworkElement::setElementCounter(counter);
}

}  // namespace

cModelReading readModel(std::istream& text, cModelBuilder& builder) { return cReader(text, builder).read(); }
