#include "kernel/queue.h"

#include "flow/link.h"
#include "flow/resourceOrder.h"
#include "kernel/combi.h"
#include "kernel/trace.h"
#include "language/symbols.h"

#include <algorithm>
#include <array>
#include <string_view>

cNodeQueue::cNodeQueue() : initialContent(*network().symbols, "0"), orderKey(*network().symbols, "TimeIn") {
    takeDefaultName("Queue");
}

/// Every change of the content begins here: the time segment since the last change ends.
void cNodeQueue::closeSegment() {
    const double now = network().simTime;
    statistics.prevCount = statistics.curCount;
    statistics.lastChangeCopy = now;
    statistics.areaUnderCount += (now - statistics.lastChange) * statistics.curCount;
    statistics.lastChange = now;
}

void cNodeQueue::receive(cRes& resource) {
    closeSegment();
    if (isGeneric(resType))
        receiveAmount(resource);
    else if (isCharacterized(resType))
        receiveInstance(resource);
    if (statistics.curCount > statistics.maxCont) statistics.maxCont = statistics.curCount;
    redrawQueue();
}

void cNodeQueue::receiveAmount(cRes& resource) {
    const cResGen* received = resource.asAmount();
    if (received == nullptr) failOnFamily(resource);

    accumulator().add(*received);
    statistics.curCount += received->getAmount();
    statistics.totCount += received->getAmount();
    runEntryCode(resource);
}

void cNodeQueue::receiveInstance(cRes& resource) {
    cResChar* received = resource.asInstance();
    if (received == nullptr) failOnFamily(resource);

    const cSymbols::cResourceInHand inHand(*network().symbols, received);
    received->timeIn = network().simTime;
    const double key = orderKeyOf(resource);
    std::size_t place = isFirstInFirstOut() ? contentsList.size() : 0;
    while (place < contentsList.size() && !(orderKeyOf(*contentsList[place]) > key)) {
        ++place;
        network().breathe();
    }
    contentsList.insert(contentsList.begin() + static_cast<std::ptrdiff_t>(std::min(place, contentsList.size())),
                        cResPtr(received));
    statistics.curCount += 1.0;
    statistics.totCount += 1.0;
    runEntryCode(*received);
}

void cNodeQueue::runEntryCode(cRes& resource) {
    const cSymbols::cCurrent current(network().symbols->currentResource, &resource);
    onEntry();
}

void cNodeQueue::onEntry() {
    network().trace.entry();
    network().eventPoint();
    runStatementList(onEntryStatements, network());
}

void cNodeQueue::onDrawFrom() {
    network().trace.draw(network().simTime, getName(), statistics.curCount, statistics.totCount);
    network().eventPoint();
}

double cNodeQueue::orderKeyOf(cRes& resource) const { return keyOf(resource, orderKey, {}, *network().symbols); }

double cNodeQueue::drawAmount(double amount) {
    closeSegment();
    const double taken = amount < statistics.curCount ? amount : statistics.curCount;
    if (isGeneric(resType)) {
        accumulator().subtract(amount);
        statistics.curCount = accumulator().getAmount();
        if (statistics.curCount < statistics.minCont) statistics.minCont = statistics.curCount;
    }
    markCombis();
    redrawQueue();
    onDrawFrom();
    return taken;
}

cResPtr cNodeQueue::drawInstance(cResPtr resource) {
    closeSegment();
    const auto place = std::find(contentsList.begin(), contentsList.end(), resource);
    if (place == contentsList.end()) {
        markCombis();
        redrawQueue();
        onDrawFrom();
        return nullptr;
    }
    contentsList.erase(place);
    statistics.curCount = static_cast<double>(contentsList.size());
    redrawQueue();
    onDrawFrom();
    return resource;
}

void cNodeQueue::markCombis() {
    for (cLink* link : outLinkWalk())
        if (cNodeActCombi* combi = link->ends().combi) combi->markQueueChanged();
}

void cNodeQueue::setResType(cResType* newType) {
    if (newType == getResType()) return;
    cHomogHolder::setResType(newType);
    emptyContents();
}

void cNodeQueue::emptyContents() {
    contentsList.clear();
    if (isGeneric(resType)) contentsList.push_back(makeCounted<cResGen>(getResType(), 0.0));
}

cResGen& cNodeQueue::accumulator() { return static_cast<cResGen&>(*contentsList.front()); }

void cNodeQueue::failOnFamily(const cRes& resource) const {
    const std::string received = resource.getResType() == nullptr ? "" : resource.getResType()->getTypeName();
    const std::string message = "Queue \"" + getName() + "\" of type \"" + getResType()->getTypeName() +
                                "\" can't hold a resource of type \"" + received + "\".";
    throw cException{failureCode::expression, message, "In queue " + getName(), {}};
}

double cNodeQueue::averageWait() const {
    return statistics.lastChangeCopy == 0.0 ? 0.0 : statistics.areaUnderCount / statistics.totCount;
}

double cNodeQueue::averageContent() const {
    return statistics.totCount == 0.0 ? 0.0 : statistics.areaUnderCount / network().simTime;
}

double cNodeQueue::getAttribute(const std::string& keyword) {
    struct cRow {
        std::string_view keyword;
        double (*value)(const cNodeQueue&);
    };
    static constexpr std::array rows{
        cRow{"LastAmtReceived", [](const cNodeQueue&) { return 0.0; }},  // nothing has ever recorded it
        cRow{"CurCount", [](const cNodeQueue& queue) { return queue.statistics.curCount; }},
        cRow{"AveCont", [](const cNodeQueue& queue) { return queue.averageContent(); }},
        cRow{"AveWait", [](const cNodeQueue& queue) { return queue.averageWait(); }},
        cRow{"MaxCont", [](const cNodeQueue& queue) { return queue.statistics.maxCont; }},
        cRow{"MinCont", [](const cNodeQueue& queue) { return queue.statistics.minCont; }},
        cRow{"TotCount", [](const cNodeQueue& queue) { return queue.statistics.totCount; }},
    };
    for (const cRow& row : rows)
        if (row.keyword == keyword) return row.value(*this);

    elementError.message = "Invalid keyword " + keyword;
    elementError.location = "In queue " + getName();
    throw cException{elementError};
}

void cNodeQueue::resetElement() {
    statistics = {};
    onEntryStatements.clear();
    emptyContents();
}

void cNodeQueue::setOrderKeyText(const std::string& text) { orderKey.compile(text, cExpression::eTrial::run, {}); }

void cNodeQueue::setInitialContentText(const std::string& text) {
    initialContent.compile(text, cExpression::eTrial::run, {});
}

void cNodeQueue::addOnEntryStatement(const std::string& text) {
    onEntryStatements.push_back(std::make_unique<cStatement>(text));
}
