#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

class cLink;
class cNetwork;
class cNetworkElement;

/// A resource type as a model file holds it.
struct cSavedType {
    std::string name;
    std::string kind;  ///< a kind word of types
    std::string saveProps;
};

/// A place on the drawing, in scene units.
struct cSavedPlace {
    double x = 0.0;
    double y = 0.0;
};

/// An end of a link as a model file holds it.
struct cSavedEnd {
    int point = 0;           ///< the number of the connection point
    std::string fusionName;  ///< of the fusion queue that the end sits on; empty: it sits on a node
};

/// What a model is written from. The writer knows the rules of the format, and asks the engine for all that the engine
/// knows; a source adds what only those who show the model know.
class cModelSource {
public:
    virtual ~cModelSource() = default;

    /// The network that is written.
    virtual cNetwork& network() = 0;

    /// The types of the model, by name.
    virtual std::vector<cSavedType> resourceTypes() = 0;

    /// What stands in the field of a property: what the user has typed, though the engine may not have it yet.
    /// @param keyword the property's in model files.
    /// @return nothing where no field shows the property: what the engine has is then what counts.
    virtual std::optional<std::string> typedText(const cNetworkElement& element, std::string_view keyword) = 0;

    /// Where an element lies.
    virtual cSavedPlace place(const cNetworkElement& element) = 0;
    /// The name of the queue that a fusion queue stands for.
    virtual std::string fusedQueue(const cNetworkElement& fusionQueue) = 0;
    virtual cSavedEnd linkEnd(const cLink& link, bool isStart) = 0;

    /// The text of the Global Code.
    virtual std::string globalCode() = 0;
};
