#pragma once

#include "language/expression.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class cHomogHolder;

/// The kind words of resource types, in model files and dialogs.
namespace typeKindWord {
inline constexpr const char* generic = "GENTYPE";
inline constexpr const char* characterized = "CHARTYPE";
inline constexpr const char* compound = "COMPTYPE";
}  // namespace typeKindWord

/// A kind of resource, known to the model by its name.
///
/// Ownership: the network's map of types. `holders` only points at the elements that took this type; a holder takes
/// itself out when it is destroyed, and a type that is destroyed leaves its holders without a type.
class cResType {
public:
    virtual ~cResType();
    cResType(const cResType&) = delete;
    cResType& operator=(const cResType&) = delete;

    /// Whether its resources are amounts. All others are identified instances.
    bool isGeneric() const { return generic; }
    const std::string& getTypeName() const { return typeName; }
    /// The network's map of types keeps its key: whoever renames a type moves that too.
    void setTypeName(std::string newName) { typeName = std::move(newName); }
    const std::string& getTypeKind() const { return typeKind; }
    const std::vector<cHomogHolder*>& getHolders() const { return holders; }

    /// Enters a holder once more, also one that is there already.
    void addHolder(cHomogHolder* holder) { holders.push_back(holder); }
    void removeHolder(cHomogHolder* holder) { std::erase(holders, holder); }

    /// Gives every holder, as often as it stands in the list, the type `replacement`, and forgets them all.
    void moveHoldersTo(cResType* replacement);

protected:
    cResType(std::string name, std::string kind, bool hasAmounts)
        : generic(hasAmounts), typeName(std::move(name)), typeKind(std::move(kind)) {}

private:
    bool generic;
    std::string typeName;
    std::string typeKind;
    std::vector<cHomogHolder*> holders;
};

inline bool isGeneric(const cResType* type) { return type != nullptr && type->isGeneric(); }
inline bool isCharacterized(const cResType* type) { return type != nullptr && !type->isGeneric(); }

/// A type without identity: its resources are amounts, and amounts add up.
class cResTypeGen : public cResType {
public:
    explicit cResTypeGen(std::string name) : cResType(std::move(name), typeKindWord::generic, true) {}
};

/// A type whose resources are identified instances with a name, a number, times and properties.
class cResTypeChar : public cResType {
public:
    explicit cResTypeChar(std::string name, std::string kind = typeKindWord::characterized)
        : cResType(std::move(name), std::move(kind), false) {}

    /// Replaces the names of the properties that every instance made from now on stores a value for.
    virtual void setSaveProps(std::vector<std::string> names) { saveProps = std::move(names); }
    const std::vector<std::string>& getSaveProps() const { return saveProps; }

    std::map<std::string, std::unique_ptr<cExpression>> computedProps;  ///< properties worked out on demand
    std::int32_t instanceCount = 0;  ///< instances made in this replication; numbers the next one

private:
    std::vector<std::string> saveProps;
};

/// The type of characterized resources that can carry others.
class cResTypeCompound : public cResTypeChar {
public:
    explicit cResTypeCompound(std::string name) : cResTypeChar(std::move(name), typeKindWord::compound) {}
};

/// A type of a kind word. A word that is none makes a characterized type.
std::unique_ptr<cResType> makeResType(const std::string& name, std::string_view kind);
