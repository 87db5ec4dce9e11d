#include "flow/disassembler.h"

#include "flow/compound.h"
#include "flow/link.h"
#include "language/symbols.h"

void cNodeAuxDisAssembler::flowBegin() {
    if (++nSources == 1) tellSuccessors<&cNodeReceiver::flowBegin>(*this);
}

void cNodeAuxDisAssembler::receive(cRes& resource) {
    auto* compound = dynamic_cast<cResCompound*>(&resource);
    if (compound == nullptr) return;

    opened = compound;
    const cSymbols::cResourceInHand inHand(*network().symbols, compound);
    activeMark = true;
    holdings = compound->contents;
    for (cLink* link : outLinkWalk()) link->release();
    activeMark = false;
    holdings.clear();
    opened = nullptr;
}

/// What is left of an amount is left of it in the compound too: it lists the same one.
bool cNodeAuxDisAssembler::release(const cRes& resource) {
    const bool isHeld = cReleasers::release(resource);
    const cHoldings::cList* left = holdings.find(resource.getResType());
    if (opened != nullptr && left != nullptr && left->amount)
        opened->contents.listOf(resource.getResType()).amount = left->amount;
    return isHeld;
}

void cNodeAuxDisAssembler::flowSettle() { tellSuccessors<&cNodeReceiver::flowSettle>(*this); }

void cNodeAuxDisAssembler::flowEnd() {
    if (--nSources == 0) tellSuccessors<&cNodeReceiver::flowEnd>(*this);
}
