#pragma once

#include "flow/resource.h"
#include "language/expression.h"

class cLink;
class cReleasers;

/// The part of a link that gives resources out of a node that holds them.
class cLinkRelease {
public:
    explicit cLinkRelease(cLink& owner, cEvaluationContext& model);
    virtual ~cLinkRelease() = default;
    cLinkRelease(const cLinkRelease&) = delete;
    cLinkRelease& operator=(const cLinkRelease&) = delete;

    /// Releases from the predecessor to the successor. The link's own type decides how.
    ///
    /// Generic: sends `releaseAmt` on, whatever the predecessor holds; the ONFLOW code runs before its holding is
    /// lowered. Characterized: walks its holdings of the type by ascending `releaseOrder` until `releaseUntil` is not 0
    /// and sends each for which `releaseWhere` isn't 0; the ONFLOW code runs after the resource was given up.
    /// A link without a type carries nothing.
    /// @throws cException (code 2) if an end is no node for it, and what rules and code throw.
    virtual void release();

protected:
    cExpression releaseAmt;
    cExpression releaseUntil;
    cExpression releaseOrder;
    cExpression releaseWhere;

private:
    void releaseAmount(cReleasers& from);
    void releaseInstances(cReleasers& from);

    cLink& link;
};
