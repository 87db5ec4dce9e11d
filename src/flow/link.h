#pragma once

#include "flow/homogHolder.h"
#include "flow/linkDraw.h"
#include "flow/linkFlow.h"
#include "flow/linkKind.h"
#include "flow/linkRelease.h"
#include "flow/linkRules.h"
#include "kernel/network.h"
#include "kernel/receiver.h"

#include <array>
#include <optional>
#include <string>

class cNodeActCombi;
class cNodeQueue;
class cReleasers;

/// Joins two nodes and says how resources go from the first to the second.
///
/// A link has the rules of every kind in it; which of them applies follows from the pair of nodes, and is worked out
/// when it is connected. Its expressions run on behalf of the link: PredNode and nDraws mean this link's.
/// Ownership: the nodes only point here. A link takes itself out of them in its destructor.
class cLink : public cNetworkElement, public cHomogHolder, public cLinkDraw, public cLinkRelease, public cLinkFlow {
public:
    /// A link without ends. An empty name asks for a default one; a name that is refused leaves the link without.
    explicit cLink(const std::string& name = {});
    ~cLink() override;

    /// "DRAWLINK", "RELEASELINK" or "FLOWLINK"; empty while the link is none of them.
    std::string getKind() const override;
    void checkStart() const override;
    /// "nDraws": the draws made so far in the present attempt, 0 outside one.
    /// @throws cException (code 2) for any other keyword.
    double getAttribute(const std::string& keyword) override;
    void resetElement() override { clearOnFlowStatements(); }

    /// Connects an end, or takes it off with null. The end connected first is taken as it is; with the second the pair
    /// decides, by one of two tables that differ for links out of Assemblers and Disassemblers: kind, type of the link,
    /// or a refusal, which changes nothing.
    /// @return the kind that the link now has, or `kindRefused`.
    eLinkKind setPredNode(cNode* node);
    eLinkKind setSuccNode(cNode* node);
    cNode* getPredNode() const { return predNode; }
    cNode* getSuccNode() const { return succNode; }

    /// The ends as what they are for the link, null where they aren't. Kept, because every event asks.
    struct cEnds {
        cNodeQueue* queue = nullptr;        ///< in front, to draw from
        cReleasers* releasers = nullptr;    ///< in front, to release from
        cNodeReceiver* receiver = nullptr;  ///< behind, to receive
        cNodeActCombi* combi = nullptr;     ///< behind, to wake
    };
    const cEnds& ends() const { return knownEnds; }

    std::int32_t getDrawCount() const { return nDraws; }
    eLinkKind getLinkKind() const { return linkKind; }
    /// Stores the kind. A draw link's draw condition becomes "PredNode.CurCount", a release link's amount "1".
    void setLinkKind(eLinkKind kind);

    /// Sets the text of a rule, without a trial evaluation. @throws cException as compiling does; the text stays.
    void setRuleText(eLinkRule rule, const std::string& text);
    const std::string& getRuleText(eLinkRule rule) const;

    void addOnFlowStatement(const std::string& text);
    /// Runs the ONFLOW code: once for each draw, each release and each resource that a Fork sends this way.
    virtual void runOnFlowStatements() { runStatementList(onFlowStatements, network()); }
    bool hasOnFlowStatements() const { return !onFlowStatements.empty(); }
    virtual void clearOnFlowStatements() { onFlowStatements.clear(); }

    /// Tells the successor of a flow.
    /// @throws cException (code 2) if it is no node that can receive, or if the flow goes in a circle.
    template <void (cNodeReceiver::*operation)()>
    void forSuccessor() {
        const cNetwork::cNesting flow(network(), *this);
        network().breathe();
        (receiver().*operation)();
    }
    /// Sends a resource to the successor. @throws cException (code 2) as `forSuccessor`.
    void passOn(cRes& resource);

    cSymbols& symbols() const { return *network().symbols; }
    cNetwork& model() const { return network(); }

private:
    cNodeReceiver& receiver() const {
        if (knownEnds.receiver == nullptr) failWithoutReceiver();
        return *knownEnds.receiver;
    }
    [[noreturn]] void failWithoutReceiver() const;
    eLinkKind refuseEnd(eLinkKind reason);
    eLinkKind become(eLinkKind kind, std::optional<cResType*> type);

    const std::array<cExpression*, linkRules.size()> rules;  // by eLinkRule
    cStatementList onFlowStatements;
    cNode* predNode = nullptr;
    cNode* succNode = nullptr;
    cEnds knownEnds;
    eLinkKind linkKind = kindIncomplete;
};

/// Tells the successors of all out-links of `node` of a flow, in the order of the links.
/// @throws cException (code 2) at the first that is no node that can receive.
template <void (cNodeReceiver::*operation)()>
void tellSuccessors(const cNode& node) {
    for (cLink* link : node.outLinkWalk()) link->forSuccessor<operation>();
}
