#pragma once

#include <string>

/// A queue, a Combi, a link between the two, in the form in which they are written.
inline const std::string smallModel =
    "GENTYPE Default;\n"
    "COMBI C1;\n"
    "QUEUE Q1 Default;\n"
    "\n"
    "\n"
    "DRAWLINK L1 Q1 C1;\n"
    "\n"
    "DURATION C1 5;\n"
    "PRIORITY C1 ;\n"
    "SEMAPHORE C1 ;\n"
    "TBINITIALCONTENT Q1 3;\n"
    "\n"
    "ENOUGH L1 ;\n"
    "DRAWUNTIL L1 ;\n"
    "DRAWAMT L1 1;\n"
    "DRAWORDER L1 ;\n"
    "DRAWWHERE L1 ;\n"
    "RELEASEAMT L1 ;\n"
    "RELEASEUNTIL L1 ;\n"
    "RELEASEORDER L1 ;\n"
    "RELEASEWHERE L1 ;\n"
    "STRENGTH L1 ;\n"
    "\n"
    "/<CODE>\n"
    "VARIABLE Cycles 0;\n"
    "/<CODE>\n"
    "POSLINK L1 3 11 0 0;\n"
    "POSNODE C1 320 140;\n"
    "POSNODE Q1 120 140;\n"
    "RANKCOUNT 3;\n";
