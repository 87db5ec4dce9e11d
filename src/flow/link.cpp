#include "flow/link.h"

#include "language/symbols.h"

cLinkFlow::cLinkFlow(cEvaluationContext& model) : strength(newRuleExpression(model, eLinkRule::strength)) {}

cLink::cLink(const std::string& name)
    : cLinkDraw(*this, *network().symbols),
      cLinkRelease(*this, *network().symbols),
      cLinkFlow(*network().symbols),
      rules{&enough,     &drawUntil,    &drawAmt,      &drawOrder,    &drawWhere,
            &releaseAmt, &releaseUntil, &releaseOrder, &releaseWhere, &strength} {
    if (!name.empty()) {
        setName(name);
        return;
    }
    while (!setName("Link" + std::to_string(getElementCounter()))) setElementCounter(getElementCounter() + 1);
}

cLink::~cLink() {
    symbols().namesChanged();
    if (succNode != nullptr) succNode->removeInLink(this);
    if (predNode != nullptr) predNode->removeOutLink(this);
}

std::string cLink::getKind() const {
    for (const cLinkKindWord& row : linkKindWords)
        if (row.kind == linkKind) return std::string(row.word);
    return {};
}

void cLink::checkStart() const {
    if (predNode == nullptr || succNode == nullptr) refuseStart("One or more links not connected properly.");
}

double cLink::getAttribute(const std::string& keyword) {
    if (keyword == "nDraws") return nDraws;

    elementError.code = failureCode::expression;
    elementError.message = "Invalid keyword";
    elementError.location = "In link" + getName();
    throw cException{elementError};
}

void cLink::setLinkKind(eLinkKind kind) {
    linkKind = kind;
    if (kind == kindDraw) setRuleText(eLinkRule::enough, "PredNode.CurCount");
    if (kind == kindRelease) setRuleText(eLinkRule::releaseAmt, "1");
}

void cLink::setRuleText(eLinkRule rule, const std::string& text) {
    rules[static_cast<std::size_t>(rule)]->compile(text, cExpression::eTrial::skip, getName());
}

const std::string& cLink::getRuleText(eLinkRule rule) const { return rules[static_cast<std::size_t>(rule)]->getText(); }

void cLink::addOnFlowStatement(const std::string& text) {
    onFlowStatements.push_back(std::make_unique<cStatement>(text));
}

void cLink::failWithoutReceiver() const {
    const std::string message = "Link \"" + getName() + "\" leads to no node that can receive.";
    throw cException{failureCode::expression, message, {}, {}};
}

void cLink::passOn(cRes& resource) {
    const cNetwork::cNesting flow(network(), *this);
    network().breathe();
    receiver().receive(resource);
}
