#pragma once

#include "language/expression.h"

class cLink;

/// The part of a link that leads out of a Fork or a Dynafork: the weight of this branch.
class cLinkFlow {
public:
    cLinkFlow(cLink& owner, cEvaluationContext& model);

    cLink& getLink() const { return link; }

protected:
    cExpression strength;

private:
    cLink& link;
};
