#include "app/canvasModel.h"

#include "app/globalCodeDialog.h"
#include "editor/dialogRes.h"
#include "editor/elementFactory.h"
#include "editor/linkHandle.h"
#include "editor/nodePoint.h"
#include "editor/tqFusionQueue.h"
#include "editor/tqLink.h"
#include "editor/tqScene.h"
#include "kernel/network.h"

#include <cmath>

namespace {

bool attach(cLink& link, bool isStart, cNetworkElement& element) {
    auto* node = dynamic_cast<cTQNode*>(&element);
    auto& drawn = dynamic_cast<cTQLink&>(link);
    return node != nullptr && drawn.connectEnd(isStart, node) && drawn.isConnectedTo(isStart, node);
}

cTQNode* engineEnd(const cLink& link, bool isStart) {
    return dynamic_cast<cTQNode*>(isStart ? link.getPredNode() : link.getSuccNode());
}

void takePoint(cTQLink& link, bool isStart, tNodeCP* point) {
    if (point == nullptr) return;
    link.handleFor(isStart)->attach(*point);
    link.handleFor(isStart)->setColour(Qt::green);
}

/// Where the user sees an end of the link: at the fusion queue that it sits on, else at the engine's node.
cTQNode* shownEnd(const cTQLink& link, bool isStart) {
    cTQFusionQueue* fusion = link.fusionAt(isStart);
    return fusion != nullptr ? fusion : engineEnd(link, isStart);
}

/// A file can lack the points of a link: its handles then take those that face the other end.
void attachLooseHandles(cTQLink& link) {
    for (const bool isStart : {true, false}) {
        const cTQNode* node = shownEnd(link, isStart);
        if (node == nullptr || link.handleFor(isStart)->attachment() != nullptr) continue;
        const cTQNode* other = shownEnd(link, !isStart);
        takePoint(link, isStart, node->pointNearestTo(other == nullptr ? link.scenePos() : other->scenePos()));
    }
}

}  // namespace

cCanvasModel::cCanvasModel(cNetwork& drawnNetwork, cTQScene& canvas, cDialogRes& typeDialog,
                           cGlobalCodeDialog& codeEditor)
    : model(drawnNetwork), scene(canvas), types(typeDialog), code(codeEditor) {}

std::string cCanvasModel::decoded(const std::string& line) { return QString::fromStdString(line).toStdString(); }

void cCanvasModel::addResourceType(const std::string& name, const std::string& kind) {
    types.addResType(QString::fromStdString(name), QString::fromStdString(kind));
}

void cCanvasModel::setSaveProps(const std::string& typeName, const std::string& names) {
    types.setSaveProps(typeName, names);
}

void cCanvasModel::insert(cNetworkElement& element) { scene.insertElement(dynamic_cast<cTQNetworkElement&>(element)); }

std::shared_ptr<cNetworkElement> cCanvasModel::makeNode(const std::string& kind, cResType* type) {
    std::shared_ptr<cNetworkElement> node = makeSavedNode(kind, type);
    if (node != nullptr) insert(*node);
    return node;
}

std::shared_ptr<cNetworkElement> cCanvasModel::makeFusionQueue(const std::string& name, const std::string& queueName) {
    std::shared_ptr<cNetworkElement> fusion = makeSavedFusionQueue(name, queueName);
    insert(*fusion);
    return fusion;
}

std::shared_ptr<cLink> cCanvasModel::makeLink(const std::string& name) {
    auto link = std::make_shared<cTQLink>(name);
    insert(*link);
    return link;
}

bool cCanvasModel::attachStart(cLink& link, cNetworkElement& element) { return attach(link, true, element); }

bool cCanvasModel::attachEnd(cLink& link, cNetworkElement& element) { return attach(link, false, element); }

void cCanvasModel::place(cNetworkElement& element, double x, double y) {
    auto* drawn = dynamic_cast<cTQNetworkElement*>(&element);
    if (drawn != nullptr && std::isfinite(x) && std::isfinite(y)) drawn->setPos(x, y);
}

void cCanvasModel::setConnectionPoints(cLink& link, int start, int end) {
    auto& drawn = dynamic_cast<cTQLink&>(link);
    for (const bool isStart : {true, false})
        if (const cTQNode* node = engineEnd(link, isStart))
            takePoint(drawn, isStart, node->cpByIndex(isStart ? start : end));
}

void cCanvasModel::setGlobalCode(const std::string& text) { code.setText(QString::fromStdString(text)); }

void cCanvasModel::finish() {
    model.forEachElement([](cNetworkElement& element) {
        if (auto* link = dynamic_cast<cTQLink*>(&element)) attachLooseHandles(*link);
        dynamic_cast<cTQNetworkElement&>(element).writeTabs();
    });
    scene.update();
}

std::vector<cSavedType> cCanvasModel::resourceTypes() {
    std::vector<cSavedType> saved;
    for (const auto& [name, record] : types.getRecords())
        saved.push_back({record->name, record->kind.toStdString(), record->saveProps});
    return saved;
}

std::optional<std::string> cCanvasModel::typedText(const cNetworkElement& element, std::string_view keyword) {
    const std::optional<QString> text = dynamic_cast<const cTQNetworkElement&>(element).typedText(keyword);
    return text ? std::optional(text->toStdString()) : std::nullopt;
}

cSavedPlace cCanvasModel::place(const cNetworkElement& element) {
    const QPointF position = dynamic_cast<const cTQNetworkElement&>(element).scenePos();
    return {position.x(), position.y()};
}

std::string cCanvasModel::fusedQueue(const cNetworkElement& fusionQueue) {
    return dynamic_cast<const cTQFusionQueue&>(fusionQueue).getQueueName();
}

cSavedEnd cCanvasModel::linkEnd(const cLink& link, bool isStart) {
    const auto& drawn = dynamic_cast<const cTQLink&>(link);
    const tNodeCP* point = drawn.handleFor(isStart)->attachment();
    const cTQFusionQueue* fusion = drawn.fusionAt(isStart);
    return {point == nullptr ? 0 : point->index, fusion == nullptr ? std::string() : fusion->getName()};
}

std::string cCanvasModel::globalCode() { return code.text().toStdString(); }
