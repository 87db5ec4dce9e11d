#pragma once

#include "flow/compound.h"
#include "flow/homogHolder.h"
#include "flow/releasers.h"
#include "kernel/receiver.h"

#include <cstdint>

/// Gathers what flows in during one burst and sends it on as the parts of a compound of its own type.
///
/// An Assembler builds one compound in its life. Every later burst fills the same object with new parts and sends it
/// again: where it still waits in a queue, its contents are replaced as it stands there, and it stands there twice.
/// Models rely on it. Only the first out-link, by name, ever carries anything.
class cNodeAuxAssembler : public cNodeReceiver, public cHomogHolder, public cReleasers {
public:
    /// Takes the name "Assembler" and a number, or stays without a name if that one is taken.
    cNodeAuxAssembler() { setName("Assembler" + std::to_string(getElementCounter())); }
    /// Empties the compound, which could stand among its own parts.
    ~cNodeAuxAssembler() override;

    std::string getKind() const override { return "ASSEMBLER"; }
    void checkStart() const override { refuseStartWithoutOutLinks("Assembler"); }

    void flowBegin() override;
    void receive(cRes& resource) override { addHolding(resource); }
    void flowSettle() override;
    /// Sends the compound when the last open flow closes, also without a part.
    /// @throws cException (code 2) if the Assembler's type is no compound type, and what the successor throws.
    void flowEnd() override;
    /// Does nothing: the compound, what has come and a burst that never came to its end stay, also into later
    /// replications.
    void resetElement() override {}

protected:
    std::int32_t nSources = 0;  // open flows towards this node

private:
    void makeCompound();

    cShared<cResCompound> compound;  // made at the first burst
};
