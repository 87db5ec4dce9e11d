#pragma once

#include <QString>
#include <memory>

class cNetworkElement;

/// Makes the element that an icon of the stencil stands for, under a name that no other element has. It is neither in
/// the model nor on the canvas yet.
/// @return null for a word that is no kind, and for a fusion queue in a model without a queue.
std::shared_ptr<cNetworkElement> makeElement(const QString& kind);

/// The kinds, in the order of the stencil.
const QStringList& elementKinds();
/// The kind that stands for a queue which must exist.
inline constexpr const char* fusionQueueKind = "FusionQueue";
