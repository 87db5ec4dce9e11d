#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The line of a model file as a list of words, which the tests for the kinds of statement take from.
class cModelStatement {
public:
    /// Words are parted by blanks and ";".
    explicit cModelStatement(const std::string& line);

    /// The word at `index`, or an empty text where there is none.
    const std::string& word(std::size_t index) const;
    std::size_t size() const { return words.size(); }

    /// Takes the keyword and the name off and gives the rest joined without blanks. The rest stays as the list: a test
    /// further on may find its own keyword in it.
    std::string takeValue();
    /// The words from `first` on, each followed by one blank.
    std::string rest(std::size_t first) const;

private:
    std::vector<std::string> words;
};

/// Whether `line` holds the keyword of an element or a link with a blank behind it, wherever that stands.
bool holdsElementKeyword(std::string_view line);
