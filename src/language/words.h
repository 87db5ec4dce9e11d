#pragma once

#include <string>
#include <string_view>
#include <vector>

/// How texts of the language fall apart into pieces.

/// The words of a statement. White space separates and is dropped. A word with a single quote in it takes in the words
/// behind it, each after one blank, up to and with the next word that holds a single quote, or to the end.
std::vector<std::string> tokeniseStatement(const std::string& text);

/// The dot-separated parts of a name. A last part is taken only if it isn't empty: "A." has one part, "" has none.
std::vector<std::string> splitName(std::string_view name);

/// The words from index `first` on, each followed by one blank.
std::string joinWords(const std::vector<std::string>& words, std::size_t first);

/// The lines of `text`, parted at line feeds, empty ones kept: a text that ends in a line feed has an empty last line.
std::vector<std::string> splitLines(std::string_view text);
