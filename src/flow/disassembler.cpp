#include "flow/disassembler.h"

#include "flow/link.h"
#include "language/symbols.h"

void cNodeAuxDisAssembler::flowBegin() {
    if (++nSources == 1) tellSuccessors(*this, &cNodeReceiver::flowBegin);
}

void cNodeAuxDisAssembler::receive(cResPtr resource) {
    auto* compound = dynamic_cast<cResCompound*>(resource.get());
    if (compound == nullptr) return;

    const cSymbols::cResourceInHand inHand(*network().symbols, compound);
    activeMark = true;
    holdings = compound->contents;
    for (cLink* link : outLinkWalk()) link->release();
    activeMark = false;
    holdings.clear();
}

void cNodeAuxDisAssembler::flowSettle() { tellSuccessors(*this, &cNodeReceiver::flowSettle); }

void cNodeAuxDisAssembler::flowEnd() {
    if (--nSources == 0) tellSuccessors(*this, &cNodeReceiver::flowEnd);
}
