#include "flow/linkDraw.h"

#include "flow/link.h"
#include "flow/linkRules.h"
#include "flow/releasers.h"
#include "flow/resourceOrder.h"
#include "kernel/queue.h"
#include "language/symbols.h"

#include <limits>
#include <utility>

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

void cLinkDraw::draw(cReleasers& taker) {
    cNodeQueue* queue = link.ends().queue;
    if (queue == nullptr)
        throw cException{failureCode::expression, "Link \"" + link.getName() + "\" has no queue to draw from.", {}, {}};

    const cDrawCount count(nDraws);
    if (isGeneric(queue->getResType()))
        drawAmounts(*queue, taker);
    else if (isCharacterized(queue->getResType()))
        taker.addHoldings(drawInstances(*queue));
}

void cLinkDraw::drawAmounts(cNodeQueue& queue, cReleasers& taker) {
    cResGen drawn(link.getResType(), 0.0);
    while (queue.getCurCount() != 0.0) {
        if (isTrue(drawUntil.evaluate(link.getName()))) break;
        drawn.add(queue.drawAmount(drawAmt.evaluate(link.getName())));
        countDraw();
        link.model().breathe();
    }
    if (drawn.getAmount() != 0.0) taker.addHolding(drawn);
}

cResList cLinkDraw::drawInstances(cNodeQueue& queue) {
    if (!queue.getContents().empty() && queue.isFirstInFirstOut() && drawsQuietly()) return drawInPlace(queue);

    cResList candidates(queue.getContents().begin(), queue.getContents().end());
    cResList drawn;
    for (const cResPtr& candidate : orderedByKey(std::move(candidates), drawOrder, link.getName(), link.symbols())) {
        if (isTrue(drawUntil.evaluate(link.getName()))) break;
        drawIfItPasses(queue, candidate, drawn);
    }
    return drawn;
}

/// Whether nothing that a draw evaluates can change the queue under it, and all candidates have the same key.
bool cLinkDraw::drawsQuietly() const {
    const std::string& owner = link.getName();
    return !link.hasOnFlowStatements() && drawOrder.isQuiet(owner) && drawUntil.isQuiet(owner) &&
           drawWhere.isQuiet(owner);
}

/// Walks the queue itself, where a copy of it would cost more than the draw. What a host puts in meanwhile stands
/// behind all that waited when the draw began, and isn't reached.
cResList cLinkDraw::drawInPlace(cNodeQueue& queue) {
    keyOf(*queue.getContents().front(), drawOrder, link.getName(), link.symbols());
    cResList drawn;
    std::size_t i = 0;
    for (std::size_t left = queue.getContents().size(); left > 0; --left) {
        if (isTrue(drawUntil.evaluate(link.getName()))) break;
        const cResPtr candidate = queue.getContents()[i];
        if (!drawIfItPasses(queue, candidate, drawn)) ++i;
    }
    return drawn;
}

/// @return whether it was taken out.
bool cLinkDraw::drawIfItPasses(cNodeQueue& queue, const cResPtr& candidate, cResList& drawn) {
    const cSymbols::cResourceInHand inHand(link.symbols(), candidate.get());
    if (!isTrue(drawWhere.evaluate(link.getName()))) return false;

    cResPtr taken = queue.drawInstance(candidate);
    const bool isTaken = taken != nullptr;
    if (isTaken) drawn.push_back(std::move(taken));
    countDraw();
    return isTaken;
}

void cLinkDraw::countDraw() {
    if (nDraws < std::numeric_limits<std::int32_t>::max()) ++nDraws;
    link.runOnFlowStatements();
}
