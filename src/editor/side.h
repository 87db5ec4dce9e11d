#pragma once

#include <QPointF>

#include <cstdint>

/// The side of a node at which a connection point or the handle of a link lies.
enum eSide : std::int32_t {
    sideTop = 0,
    sideBottom = 1,
    sideRight = 2,
    sideLeft = 3,
};

/// The unit vector that leads away from a node at `side`; y grows downwards, as on the canvas.
constexpr QPointF outward(eSide side) {
    switch (side) {
        case sideTop: return {0.0, -1.0};
        case sideBottom: return {0.0, 1.0};
        case sideRight: return {1.0, 0.0};
        case sideLeft: return {-1.0, 0.0};
    }
    return {};
}
