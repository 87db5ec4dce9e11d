#pragma once

#include <string>
#include <vector>

class cModelSource;

/// A model as text.
struct cModelWriting {
    std::string text;                ///< of a `.tbsmx` file
    bool hasIncompleteLink = false;  ///< links that join no legal pair are left out
    /// What the text holds but a reader won't give back, each in a sentence; the format can't tell it.
    std::vector<std::string> warnings;
};

/// Writes the text of a `.tbsmx` file: types, elements, fusion queues, links, the properties of each, the Global Code,
/// positions and the counter behind element numbers; elements by name. Values are written as the user sees them, which
/// can be before the engine has them.
///
/// An empty entry "PredNode" leaves the network's map of elements: a name looked up is no element.
cModelWriting writeModel(cModelSource& source);
