#pragma once

#include "flow/homogHolder.h"
#include "flow/releasers.h"
#include "kernel/receiver.h"

#include <cstdint>

class cResCompound;

/// Takes compounds apart: each out-link releases from the parts by its own type and rules, as from an activity. The
/// compound keeps listing its parts; those that no link takes stay there alone. Anything but a compound disappears.
class cNodeAuxDisAssembler : public cNodeReceiver, public cHomogHolder, public cReleasers {
public:
    /// Takes the name "Disassembler" and a number, or stays without a name if that one is taken or too long.
    cNodeAuxDisAssembler() { setName("Disassembler" + std::to_string(getElementCounter())); }

    std::string getKind() const override { return "DISASSEMBLER"; }

    void flowBegin() override;
    /// @throws cException what the rules of the out-links, their code and the successors throw.
    void receive(cRes& resource) override;
    bool release(const cRes& resource) override;
    void flowSettle() override;
    void flowEnd() override;
    /// Does nothing: a burst that never came to its end stays open.
    void resetElement() override {}

protected:
    std::int32_t nSources = 0;  // open flows towards this node

private:
    cResCompound* opened = nullptr;  // the compound that came last, while its parts are released
};
