#pragma once

#include "language/expression.h"

/// The part of a link that leads out of a Fork or a Dynafork: the weight of this branch.
class cLinkFlow {
public:
    explicit cLinkFlow(cEvaluationContext& model);

    /// The weight of the branch now. Runs on behalf of nobody: PredNode means nothing in it.
    double evaluateStrength() const { return strength.evaluate(); }

protected:
    cExpression strength;
};
