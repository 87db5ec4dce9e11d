#pragma once

#include "flow/resource.h"
#include "kernel/node.h"

/// A node that resources can flow into. An activity's end is one burst of flow, told to each successor in this order:
/// `flowBegin`, any number of `receive`, `flowEnd`, the end code of the activity, `flowSettle`. Each throws a
/// cException where rules or code of the model fail.
class cNodeReceiver : public virtual cNode {
public:
    /// Whether the node does something when a burst begins and ends. A walk may leave out one that doesn't.
    virtual bool heedsBursts() const { return true; }
    /// A burst of flow is about to come.
    virtual void flowBegin() = 0;
    /// Takes a resource in. An instance must be held by somebody; an amount need live only as long as the call.
    virtual void receive(cRes& resource) = 0;
    /// The firing is over.
    virtual void flowSettle() = 0;
    /// The burst is over, and what came can be acted on.
    virtual void flowEnd() = 0;
};
