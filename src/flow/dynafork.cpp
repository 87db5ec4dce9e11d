#include "flow/dynafork.h"

#include "flow/link.h"

void cNodeAuxDynafork::flowBegin() {
    if (++nSources == 1) tellSuccessors(*this, &cNodeReceiver::flowBegin);
}

void cNodeAuxDynafork::flowSettle() { tellSuccessors(*this, &cNodeReceiver::flowSettle); }

void cNodeAuxDynafork::flowEnd() {
    if (--nSources == 0) tellSuccessors(*this, &cNodeReceiver::flowEnd);
}
