#pragma once

#include <memory>
#include <string>

class cLink;
class cNetwork;
class cNetworkElement;
class cResType;

/// Makes the parts of a model that a file tells of. The reader knows the rules of the format; what an element is made
/// of, plain or drawn, is for the builder to decide.
class cModelBuilder {
public:
    virtual ~cModelBuilder() = default;

    /// The network that is being filled. The reader enters the elements in it.
    virtual cNetwork& network() = 0;

    /// What stands for a line that isn't UTF-8. Where texts are but bytes, it stands for itself.
    virtual std::string decoded(const std::string& line) { return line; }

    /// Makes a resource type. `kind` is one of the kind words of types; the name is new.
    virtual void addResourceType(const std::string& name, const std::string& kind) = 0;
    /// Takes the save properties of a type, each followed by one blank. They have no lasting effect.
    virtual void setSaveProps(const std::string& typeName, const std::string& names) = 0;

    /// Makes a node, by its default name, of a kind word such as "COMBI", with a resource type where the kind has one.
    /// @param type null for a kind without, and where a file names a type that doesn't exist.
    /// @return null for a word that is no kind of node.
    virtual std::shared_ptr<cNetworkElement> makeNode(const std::string& kind, cResType* type) = 0;
    /// Makes a second place on the drawing for a queue.
    virtual std::shared_ptr<cNetworkElement> makeFusionQueue(const std::string& name, const std::string& queueName) = 0;
    /// Makes a link without ends. Until something else gives it a type it has the one called "Default", if there is
    /// one.
    virtual std::shared_ptr<cLink> makeLink(const std::string& name) = 0;

    /// Connects an end of a link to an element of the model. @return whether that end is now attached.
    virtual bool attachStart(cLink& link, cNetworkElement& element) = 0;
    virtual bool attachEnd(cLink& link, cNetworkElement& element) = 0;

    /// Positions on the drawing, in scene units.
    virtual void place(cNetworkElement& element, double x, double y) = 0;
    /// The numbers of the connection points at which a link begins and ends.
    virtual void setConnectionPoints(cLink& link, int start, int end) = 0;

    /// The text of the Global Code.
    virtual void setGlobalCode(const std::string& text) = 0;
    /// The file has been read: whatever shows an element may show what it now holds.
    virtual void finish() = 0;
};
