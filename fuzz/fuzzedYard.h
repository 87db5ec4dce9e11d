#pragma once

#include "fuzzedNetwork.h"

/// A small model with all kinds of elements, types and names in it: stone goes in skips up a shaft. Its whole run is a
/// few dozen events.
///
/// Shaft and Skips -> Fill -> Couple (Assembler) -> Sets -> Hoist -> Uncouple (Disassembler) -> Skips and Weigh ->
/// Grade (Fork) -> Waste and Batch (Consolidator) -> Bins (Dynafork) -> BinA and BinB.
class cFuzzedYard : public cFuzzedNetwork {
public:
    /// A run with the model's own Global Code, which declares its names.
    void runAsItStands() { run(code); }
    /// The same, with further statements behind that code.
    void runAlso(const std::string& further) { run(code + further); }

    static constexpr const char* drawLink = "db";     ///< draws a skip for Fill
    static constexpr const char* releaseLink = "re";  ///< releases stone from the parts of a set

private:
    static constexpr const char* model = R"(
GENTYPE Ore;
COMPTYPE Skip;
COMPTYPE Set;
COMBI Fill;
COMBI Hoist;
CONSOLIDATOR Batch;
NORMAL Weigh;
FORK Grade Ore;
DYNAFORK Bins Ore;
ASSEMBLER Couple Set;
DISASSEMBLER Uncouple Set;
QUEUE Shaft Ore;
QUEUE Skips Skip;
QUEUE Sets Set;
QUEUE BinA Ore;
QUEUE BinB Ore;
QUEUE Waste Ore;
FUSIONQUEUE SkipsBelow Skips;
DRAWLINK da Shaft Fill;
DRAWLINK db SkipsBelow Fill;
RELEASELINK ra Fill Couple Ore;
RELEASELINK rb Fill Couple Skip;
RELEASELINK rc Couple Sets;
DRAWLINK dc Sets Hoist;
RELEASELINK rd Hoist Uncouple;
RELEASELINK re Uncouple Weigh Ore;
RELEASELINK rf Uncouple Skips Skip;
RELEASELINK rg Weigh Grade;
FLOWLINK fa Grade Batch;
FLOWLINK fb Grade Waste;
RELEASELINK rh Batch Bins;
FLOWLINK fc Bins BinA;
FLOWLINK fd Bins BinB;
DURATION Fill 1.5;
DURATION Hoist Uniform(4,5);
DURATION Weigh Pace/4;
SEMAPHORE Fill (Sets.CurCount<1)&(Hoist.CurInst<1);
CONSOLIDATEWHEN Batch Weigh.TotInst%2==0;
TBINITIALCONTENT Shaft 6;
TBINITIALCONTENT Skips 2;
DRAWAMT da 2;
RELEASEAMT ra PredNode.Ore.Count;
RELEASEAMT re PredNode.Ore.Count;
STRENGTH fa 4;
STRENGTH fd BinA.CurCount+1;
<CODE>
SAVEVALUE Pace 1;
VARIABLE Load Pace*2+Rnd();
<CODE>
RANKCOUNT 33;
)";

    const std::string code = read(model);
};
