#pragma once

#include "flow/resource.h"
#include "language/expression.h"

#include <cstdint>
#include <vector>

class cLink;
class cNodeQueue;

/// The part of a link that takes resources out of a queue.
class cLinkDraw {
public:
    explicit cLinkDraw(cLink& owner, cEvaluationContext& model);
    virtual ~cLinkDraw() = default;
    cLinkDraw(const cLinkDraw&) = delete;
    cLinkDraw& operator=(const cLinkDraw&) = delete;

    /// The value of the draw condition now: whether the Combi may start as far as this link is concerned.
    double evaluateEnough() const;

    /// Draws from the queue in front. Its type decides how.
    ///
    /// Generic: while the queue holds something and `drawUntil` is 0, asks for `drawAmt`; what came is one amount.
    /// Characterized: walks the queue by ascending `drawOrder`, equal keys in queue order, until `drawUntil` is not 0,
    /// and takes each resource for which `drawWhere` isn't 0. Keys are worked out anew at each compare.
    /// @return what was drawn; empty if nothing was.
    /// @throws cException (code 2) if there is no queue, and what rules and code throw.
    virtual std::vector<cResPtr> draw();

protected:
    cExpression enough;
    cExpression drawUntil;
    cExpression drawAmt;
    cExpression drawOrder;
    cExpression drawWhere;
    std::int32_t nDraws = 0;  // not 0 only inside a draw

private:
    std::vector<cResPtr> drawAmounts(cNodeQueue& queue);
    std::vector<cResPtr> drawInstances(cNodeQueue& queue);
    std::vector<cResPtr> drawInPlace(cNodeQueue& queue);
    bool drawsQuietly() const;
    bool drawIfItPasses(cNodeQueue& queue, const cResPtr& candidate, std::vector<cResPtr>& drawn);
    void countDraw();

    cLink& link;
};
