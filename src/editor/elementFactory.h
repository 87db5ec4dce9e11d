#pragma once

#include <QString>
#include <memory>
#include <string>

class cNetworkElement;
class cResType;

/// Makes the element that an icon of the stencil stands for, under a name that no other element has. It is neither in
/// the model nor on the canvas yet.
/// @return null for a word that is no kind, and for a fusion queue in a model without a queue.
std::shared_ptr<cNetworkElement> makeElement(const QString& kind);

/// What model files call for: a node by its keyword, with a resource type where the kind has one, and a fusion queue
/// for a queue that need not be there yet. They have names that no other element has; a file's own comes later.
/// @return null for a word that is no keyword of a node.
std::shared_ptr<cNetworkElement> makeSavedNode(const std::string& keyword, cResType* type);
std::shared_ptr<cNetworkElement> makeSavedFusionQueue(const std::string& name, const std::string& queueName);

/// The kinds, in the order of the stencil.
const QStringList& elementKinds();
/// The kind that stands for a queue which must exist.
inline constexpr const char* fusionQueueKind = "FusionQueue";
