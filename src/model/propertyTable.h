#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

class cNetworkElement;

/// The tests for property statements, in the order in which the reader makes them. A statement meets at most one
/// keyword of each test.
enum class ePropertyTest { activity, consolidator, initialContent, link };

/// One property statement: keyword, element name, value.
struct cProperty {
    std::string_view keyword;
    ePropertyTest test;
    /// Gives the value to an element. @return false if the element is of a class without this property.
    /// @throws cException if the value is no expression or its trial fails; the element keeps the text.
    bool (*set)(cNetworkElement& element, std::string_view keyword, const std::string& value);
    /// The value that an element has, or nothing if files hold none for its class.
    std::optional<std::string> (*get)(const cNetworkElement& element, std::string_view keyword);
};

/// The properties, in the order in which the statements of one element are written: of nodes, and of links.
std::span<const cProperty> nodeProperties();
std::span<const cProperty> linkProperties();

/// The property of a keyword in a test, or null.
const cProperty* findProperty(ePropertyTest test, const std::string& keyword);
