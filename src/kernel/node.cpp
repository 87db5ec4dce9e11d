#include "kernel/node.h"

#include "flow/link.h"

namespace {

void eraseLink(std::map<std::string, cLink*>& links, const cLink* link) {
    const auto entry = links.find(link->getName());
    if (entry != links.end() && entry->second == link)
        links.erase(entry);
    else  // the link was renamed since it was attached
        std::erase_if(links, [&](const auto& attached) { return attached.second == link; });
}

}  // namespace

void cNode::cWalk::make(const cLinks& attached) {
    links.clear();
    for (const auto& [name, link] : attached) links.push_back(link);
    isMade = true;
}

cNode::~cNode() {
    while (!inLinks.empty()) inLinks.begin()->second->setSuccNode(nullptr);
    while (!outLinks.empty()) outLinks.begin()->second->setPredNode(nullptr);
}

void cNode::addInLink(cLink* link) {
    const auto present = inLinks.find(link->getName());
    if (present != inLinks.end() && present->second != link) present->second->setSuccNode(nullptr);
    inLinks[link->getName()] = link;
    inWalk.forget();
}

void cNode::addOutLink(cLink* link) {
    const auto present = outLinks.find(link->getName());
    if (present != outLinks.end() && present->second != link) present->second->setPredNode(nullptr);
    outLinks[link->getName()] = link;
    outWalk.forget();
}

void cNode::removeInLink(cLink* link) {
    eraseLink(inLinks, link);
    inWalk.forget();
}

void cNode::removeOutLink(cLink* link) {
    eraseLink(outLinks, link);
    outWalk.forget();
}

void cNode::refuseStartWithoutOutLinks(const std::string& kind) const {
    if (outLinks.empty())
        refuseStart(kind + " \"" + getName() +
                    "\" does not have any outlinks which causes a logical error in the model.");
}
