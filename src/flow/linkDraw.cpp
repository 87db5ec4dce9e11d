#include "flow/linkDraw.h"

#include "flow/link.h"
#include "flow/linkRules.h"
#include "flow/resourceOrder.h"
#include "kernel/queue.h"
#include "language/symbols.h"

#include <limits>

namespace {

/// The number of draws is 0 again when a draw is over, however it ends.
class cDrawCount {
public:
    explicit cDrawCount(std::int32_t& drawCount) : count(drawCount) { count = 0; }
    ~cDrawCount() { count = 0; }
    cDrawCount(const cDrawCount&) = delete;
    cDrawCount& operator=(const cDrawCount&) = delete;

private:
    std::int32_t& count;
};

}  // namespace

cLinkDraw::cLinkDraw(cLink& owner, cEvaluationContext& model)
    : enough(newRuleExpression(model, eLinkRule::enough)),
      drawUntil(newRuleExpression(model, eLinkRule::drawUntil)),
      drawAmt(newRuleExpression(model, eLinkRule::drawAmt)),
      drawOrder(newRuleExpression(model, eLinkRule::drawOrder)),
      drawWhere(newRuleExpression(model, eLinkRule::drawWhere)),
      link(owner) {}

double cLinkDraw::evaluateEnough() const { return enough.evaluate(link.getName()); }

std::vector<cResPtr> cLinkDraw::draw() {
    cNodeQueue* queue = link.ends().queue;
    if (queue == nullptr)
        throw cException{failureCode::expression, "Link \"" + link.getName() + "\" has no queue to draw from.", {}, {}};

    const cDrawCount count(nDraws);
    if (isGeneric(queue->getResType())) return drawAmounts(*queue);
    if (isCharacterized(queue->getResType())) return drawInstances(*queue);
    return {};
}

std::vector<cResPtr> cLinkDraw::drawAmounts(cNodeQueue& queue) {
    const auto drawn = newAmount(link.getResType(), 0.0);
    while (queue.getCurCount() != 0.0) {
        if (isTrue(drawUntil.evaluate(link.getName()))) break;
        drawn->add(queue.drawAmount(drawAmt.evaluate(link.getName())));
        countDraw();
        link.model().breathe();
    }
    if (drawn->getAmount() == 0.0) return {};
    return {drawn};
}

std::vector<cResPtr> cLinkDraw::drawInstances(cNodeQueue& queue) {
    cSymbols& symbols = link.symbols();
    std::vector<cResPtr> drawn;
    for (const cResPtr& candidate : orderedByKey(queue.getContents(), drawOrder, link.getName(), symbols)) {
        if (isTrue(drawUntil.evaluate(link.getName()))) break;

        const cSymbols::cResourceInHand inHand(symbols, candidate.get());
        if (!isTrue(drawWhere.evaluate(link.getName()))) continue;
        if (cResPtr taken = queue.drawInstance(candidate)) drawn.push_back(std::move(taken));
        countDraw();
    }
    return drawn;
}

void cLinkDraw::countDraw() {
    if (nDraws < std::numeric_limits<std::int32_t>::max()) ++nDraws;
    link.runOnFlowStatements();
}
