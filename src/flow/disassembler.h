#pragma once

#include "flow/homogHolder.h"
#include "flow/releasers.h"
#include "kernel/receiver.h"

#include <cstdint>

/// Takes compounds apart: each out-link releases from the parts by its own type and rules, as from an activity. The
/// compound keeps listing its parts; those that no link takes stay there alone. Anything but a compound disappears.
class cNodeAuxDisAssembler : public cNodeReceiver, public cHomogHolder, public cReleasers {
public:
    /// Takes the name "Disassembler" and a number if both fit in a name, which they do for the first thousand elements.
    cNodeAuxDisAssembler() { setName("Disassembler" + std::to_string(getElementCounter())); }

    std::string getKind() const override { return "DISASSEMBLER"; }

    void flowBegin() override;
    void receive(cResPtr resource) override;
    void flowSettle() override;
    void flowEnd() override;
    void resetElement() override {}

private:
    std::int32_t nSources = 0;  // open flows towards this node
};
