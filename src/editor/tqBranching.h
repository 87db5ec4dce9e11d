#pragma once

#include "editor/tqLink.h"
#include "editor/tqNode.h"
#include "editor/typedNode.h"
#include "flow/branching.h"

/// A Fork or a Dynafork on the canvas, over the engine's class of it: the branch that a flow takes is shown.
template <typename cKernel>
class cTQBranching : public cTQNode, public virtual cKernel {
public:
    void forgetBursts() override {
        cKernel::nSources = 0;
        cKernel::chosenLink = nullptr;
    }

protected:
    cTQBranching(cNodeShape newShape, cResType* type) : cTQNode(std::move(newShape)) { cKernel::setResType(type); }

    std::vector<cFormRow> formRows() override {
        return {nameRow(tr("Name:")), streamRow(tr("Stream:")), typeChoiceRow(tr("Resource Type:"), *this, *this)};
    }
};
