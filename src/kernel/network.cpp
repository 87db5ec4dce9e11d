#include "kernel/network.h"

#include "kernel/element.h"
#include "language/symbols.h"

#include <chrono>

std::int64_t cNetwork::calendarSeconds() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
}

void cNetwork::runStatements() { runStatementList(statements, *this); }

void cNetwork::runBeforeTimeAdvance() { runStatementList(beforeTimeAdvance, *this); }

void cNetwork::runAfterTimeAdvance() {
    runStatementList(afterTimeAdvance, *this);

    std::vector<const cStatement*> due;
    for (const cConditional& conditional : conditionalStatements)
        if (isTrue(conditional.condition->evaluate())) due.push_back(conditional.statement.get());
    for (const cStatement* statement : due) statement->execute(*this);
}

void cNetwork::breatheNow() {
    turnsWithoutEvents = 0;
    processHostEvents();
}

cResType* cNetwork::findResourceType(const std::string& name) const {
    const auto entry = resourceTypes.find(name);
    return entry == resourceTypes.end() ? nullptr : entry->second.get();
}

void cNetwork::cNesting::failIn(const cStatement& statement) {
    throw cException{failureCode::statement, "Endless recursion in statement:\n" + statement.getText(), {}, {}};
}

void cNetwork::cNesting::failIn(const cNetworkElement& link) {
    throw cException{failureCode::expression, "Endless flow through link \"" + link.getName() + "\".", {}, {}};
}
