#pragma once

#include "language/exception.h"

#include <cstdint>
#include <memory>
#include <string>

class cNetwork;

/// Whatever is named in a model: the nodes and the links.
///
/// Ownership: the network's map of elements; nodes and links refer to each other by plain pointers, which their
/// destructors take back.
class cNetworkElement : public std::enable_shared_from_this<cNetworkElement> {
public:
    virtual ~cNetworkElement() = default;
    cNetworkElement(const cNetworkElement&) = delete;
    cNetworkElement& operator=(const cNetworkElement&) = delete;

    const std::string& getName() const { return elementName; }
    /// Renames the element, and re-enters it in the network's map if it stands there under its present name. A name has
    /// at most 15 letters, digits and underscores and begins with a letter.
    /// @return false, with the name as it was, if `newName` isn't such a name or another entry of the map has it.
    virtual bool setName(const std::string& newName);
    /// Gives an element that has no name one that no other has. Some kinds are without one if their default name is
    /// taken or too long, and so is whatever was given a name that it couldn't take.
    void ensureName();

    /// The element's kind word, as in model files; empty if it has none.
    virtual std::string getKind() const { return {}; }
    /// The value of a statistic now, by keyword.
    /// @throws cException (code 3, without a message) for elements that answer no keyword.
    virtual double getAttribute(const std::string& keyword);
    /// Refuses a run that can't end well as the element is linked now. @throws cException (code 4) with the reason.
    virtual void checkStart() const {}
    /// Returns the element to its state before a run.
    virtual void resetElement() = 0;

    std::int32_t getElementId() const { return elementId; }

    bool activeMark = false;  ///< raised while the element is working on something; read as InContext

    /// The process-wide number behind `elementId` and the default names. Counts every element that was ever made; a
    /// model file can raise it.
    static std::int32_t getElementCounter() { return elementCounter; }
    static void setElementCounter(std::int32_t value) { elementCounter = value; }

protected:
    cNetworkElement();

    /// Names a new element after its kind and the counter, trying further numbers until one is free.
    void takeDefaultName(const std::string& prefix);

    cNetwork& network() const { return *model; }

    [[noreturn]] static void refuseStart(const std::string& reason);

    cException elementError;  ///< where the element builds an error before it throws a copy

private:
    static inline std::int32_t elementCounter = 0;

    cNetwork* model;
    std::string elementName;
    std::int32_t elementId;
};
