#include "flow/linkRelease.h"

#include "flow/link.h"
#include "flow/linkRules.h"
#include "flow/releasers.h"
#include "flow/resourceOrder.h"
#include "language/symbols.h"

#include <utility>

cLinkRelease::cLinkRelease(cLink& owner, cEvaluationContext& model)
    : releaseAmt(newRuleExpression(model, eLinkRule::releaseAmt)),
      releaseUntil(newRuleExpression(model, eLinkRule::releaseUntil)),
      releaseOrder(newRuleExpression(model, eLinkRule::releaseOrder)),
      releaseWhere(newRuleExpression(model, eLinkRule::releaseWhere)),
      link(owner) {}

void cLinkRelease::release() {
    cReleasers* from = link.ends().releasers;
    if (from == nullptr) {
        const std::string message = "Link \"" + link.getName() + "\" has no node in front that can release.";
        throw cException{failureCode::expression, message, {}, {}};
    }
    if (isGeneric(link.getResType()))
        releaseAmount(*from);
    else if (isCharacterized(link.getResType()))
        releaseInstances(*from);
}

void cLinkRelease::releaseAmount(cReleasers& from) {
    const double amount = releaseAmt.evaluate(link.getName());
    cResGen released(link.getResType(), amount);
    link.runOnFlowStatements();
    from.release(released);
    link.passOn(released);
}

void cLinkRelease::releaseInstances(cReleasers& from) {
    cSymbols& symbols = link.symbols();
    cResList held = from.getHoldings(link.getResType());
    for (const cResPtr& candidate : orderedByKey(std::move(held), releaseOrder, link.getName(), symbols)) {
        if (isTrue(releaseUntil.evaluate(link.getName()))) break;
        {
            const cSymbols::cResourceInHand inHand(symbols, candidate.get());
            if (!isTrue(releaseWhere.evaluate(link.getName()))) continue;
            from.release(*candidate);
            link.runOnFlowStatements();
        }
        link.passOn(*candidate);
    }
}
