#include "flow/assembler.h"

#include "flow/link.h"
#include "language/symbols.h"

cNodeAuxAssembler::~cNodeAuxAssembler() {
    if (compound != nullptr) compound->contents.clear();
}

void cNodeAuxAssembler::flowBegin() {
    if (++nSources != 1) return;
    activeMark = true;
    tellSuccessors<&cNodeReceiver::flowBegin>(*this);
}

void cNodeAuxAssembler::flowSettle() { tellSuccessors<&cNodeReceiver::flowSettle>(*this); }

/// The stack of resources in hand is not in step here from the second burst on: only a new compound is put on it, and
/// one is taken off each time.
void cNodeAuxAssembler::flowEnd() {
    if (--nSources != 0) return;
    if (compound == nullptr) makeCompound();
    compound->contents = holdings;
    network().symbols->popResource();

    if (!getOutLinks().empty()) {
        cLink& first = *getOutLinks().begin()->second;
        first.passOn(*compound);
        first.forSuccessor<&cNodeReceiver::flowEnd>();
    }
    holdings.clear();
}

void cNodeAuxAssembler::makeCompound() {
    auto* type = dynamic_cast<cResTypeCompound*>(getResType());
    if (type == nullptr) {
        elementError.code = failureCode::expression;
        elementError.message = "Assembler \"" + getName() + "\" has no compound resource type.";
        throw cException{elementError};
    }
    compound = makeCounted<cResCompound>(type);
    network().symbols->pushResource(compound.get());
}
