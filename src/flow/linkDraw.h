#pragma once

#include "flow/resource.h"
#include "language/expression.h"

#include <cstdint>
#include <vector>

class cLink;
class cNodeQueue;
class cReleasers;

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
    /// @param taker takes in what was drawn, when the draw is over.
    /// @throws cException (code 2) if there is no queue, and what rules and code throw.
    virtual void draw(cReleasers& taker);

protected:
    cExpression enough;
    cExpression drawUntil;
    cExpression drawAmt;
    cExpression drawOrder;
    cExpression drawWhere;
    std::int32_t nDraws = 0;  // not 0 only inside a draw

private:
    void drawAmounts(cNodeQueue& queue, cReleasers& taker);
    cResList drawInstances(cNodeQueue& queue);
    cResList drawInPlace(cNodeQueue& queue);
    bool drawsQuietly() const;
    bool drawIfItPasses(cNodeQueue& queue, const cResPtr& candidate, cResList& drawn);
    void countDraw();

    cLink& link;
};
