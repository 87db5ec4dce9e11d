#pragma once

#include "language/expression.h"

/// The part of a link that leads out of a Fork or a Dynafork: the weight of this branch.
class cLinkFlow {
public:
    explicit cLinkFlow(cEvaluationContext& model);

protected:
    cExpression strength;
};
