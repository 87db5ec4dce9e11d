#pragma once

#include "app/tsApp.h"
#include "editor/linkHandle.h"
#include "editor/nodePoint.h"
#include "editor/tqCombi.h"
#include "editor/tqLink.h"
#include "editor/tqQueue.h"

#include <QPoint>
#include <memory>
#include <string>

/// A window whose user has drawn a model: five units in the queue Soil, which the Combi Load takes one by one, each for
/// 10, into the queue Hauled. All five are under way at once, so a run has one advance of the clock behind time 0.
class cDrawnModel {
public:
    cDrawnModel() {
        soil = &drop<cTQQueue>("Queue", {200, 100}, "Soil");
        load = &drop<cTQCombi>("Combi", {300, 100}, "Load");
        hauled = &drop<cTQQueue>("Queue", {400, 100}, "Hauled");
        soil->setInitialContentText("5");
        load->setDurationText("10");
        soil->writeTabs();  // fields show what the engine has, as after Ok
        load->writeTabs();
        draws = &join("Draws", *soil, *load);
        releases = &join("Releases", *load, *hauled);
    }

    /// What a drop of an icon makes, under another name.
    template <typename cKind>
    cKind& drop(const char* kind, QPoint place, const char* name) {
        const auto before = window.elements.size();
        window.createElementFromDrop(kind, place);
        Q_ASSERT(window.elements.size() == before + 1);
        cKind* made = nullptr;
        window.forEachElement([&](cNetworkElement& element) {
            auto* candidate = dynamic_cast<cKind*>(&element);
            if (candidate != nullptr && candidate->isSelected()) made = candidate;
        });
        made->setName(name);
        return *made;
    }
    cTQLink& join(const char* name, cTQNode& from, cTQNode& to) {
        cTQLink& link = drop<cTQLink>("Link", {300, 300}, name);
        link.dropHandle(true, from.cpByIndex(0));
        link.dropHandle(false, to.cpByIndex(4));
        return link;
    }

    tsApp window;
    cTQQueue* soil;
    cTQQueue* hauled;
    cTQCombi* load;
    cTQLink* draws;
    cTQLink* releases;
};
