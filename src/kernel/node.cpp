#include "kernel/node.h"

#include "flow/link.h"

namespace {

void eraseLink(std::map<std::string, cLink*>& links, const cLink* link) {
    std::erase_if(links, [&](const auto& entry) { return entry.second == link; });
}

}  // namespace

cNode::~cNode() {
    while (!inLinks.empty()) inLinks.begin()->second->setSuccNode(nullptr);
    while (!outLinks.empty()) outLinks.begin()->second->setPredNode(nullptr);
}

void cNode::addInLink(cLink* link) {
    const auto present = inLinks.find(link->getName());
    if (present != inLinks.end() && present->second != link) present->second->setSuccNode(nullptr);
    inLinks[link->getName()] = link;
}

void cNode::addOutLink(cLink* link) {
    const auto present = outLinks.find(link->getName());
    if (present != outLinks.end() && present->second != link) present->second->setPredNode(nullptr);
    outLinks[link->getName()] = link;
}

void cNode::removeInLink(cLink* link) { eraseLink(inLinks, link); }

void cNode::removeOutLink(cLink* link) { eraseLink(outLinks, link); }
