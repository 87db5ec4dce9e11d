#pragma once

#include "kernel/element.h"

#include <map>
#include <string>
#include <vector>

class cLink;

/// An element that links join.
class cNode : public cNetworkElement {
public:
    /// Detaches all links.
    ~cNode() override;

    /// Enters a link under its name. A link that stood there under the same name loses this end.
    virtual void addInLink(cLink* link);
    virtual void addOutLink(cLink* link);
    /// Takes a link out; does nothing if it isn't there.
    virtual void removeInLink(cLink* link);
    virtual void removeOutLink(cLink* link);

    /// The links by the names they had when they were attached. Walks follow the byte order of the names, not the order
    /// of creation: it decides the order of draws and releases.
    const std::map<std::string, cLink*>& getInLinks() const { return inLinks; }
    const std::map<std::string, cLink*>& getOutLinks() const { return outLinks; }
    /// The same links in the same order, for the walks of every event.
    const std::vector<cLink*>& inLinkWalk() const { return inWalk.of(inLinks); }
    const std::vector<cLink*>& outLinkWalk() const { return outWalk.of(outLinks); }

protected:
    /// @param kind what the user calls the node. @throws cException (code 4) if no link leads out of it.
    void refuseStartWithoutOutLinks(const std::string& kind) const;

private:
    using cLinks = std::map<std::string, cLink*>;

    /// Links in a row. Made at the first walk after a change: many links come one after the other.
    class cWalk {
    public:
        const std::vector<cLink*>& of(const cLinks& attached) {
            if (!isMade) make(attached);
            return links;
        }
        void forget() { isMade = false; }

    private:
        void make(const cLinks& attached);

        std::vector<cLink*> links;
        bool isMade = true;
    };

    cLinks inLinks;
    cLinks outLinks;
    mutable cWalk inWalk;
    mutable cWalk outWalk;
};
