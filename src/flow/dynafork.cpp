#include "flow/dynafork.h"

#include "flow/link.h"

void cNodeAuxDynafork::flowBegin() {
    if (++nSources == 1) tellSuccessors<&cNodeReceiver::flowBegin>(*this);
}

void cNodeAuxDynafork::flowSettle() { tellSuccessors<&cNodeReceiver::flowSettle>(*this); }

void cNodeAuxDynafork::flowEnd() {
    if (--nSources == 0) tellSuccessors<&cNodeReceiver::flowEnd>(*this);
}
