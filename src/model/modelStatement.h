#pragma once

#include <cstdint>
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

/// Stands on the lines in front of and behind the Global Code.
inline constexpr std::string_view codeMark = "<CODE>";
/// What gives a resource type its save properties, wherever it stands on a line.
inline constexpr std::string_view savePropsWord = "SAVEPROPS";

/// The words in front of statements that are no element's own property: a second place of a queue, where a node and the
/// ends of a link lie, and the counter behind element numbers.
inline constexpr std::string_view fusionQueueWord = "FUSIONQUEUE";
inline constexpr std::string_view nodePlaceWord = "POSNODE";
inline constexpr std::string_view linkPlaceWord = "POSLINK";
inline constexpr std::string_view counterWord = "RANKCOUNT";

/// The largest counter behind element numbers that a file can give: a longer number doesn't fit behind "Normal" in a
/// default name.
inline constexpr std::int32_t largestCounter = 900000000;

/// The forms of element statements: the words they need, the keyword included, and whether the next one is a type.
struct cElementForm {
    std::string_view keyword;
    std::size_t words;
    bool isTyped;
};

/// The form of a keyword of an element or a link, or null.
const cElementForm* findElementForm(std::string_view keyword);
/// Whether `line` holds the keyword of an element or a link with a blank behind it, wherever that stands.
bool holdsElementKeyword(std::string_view line);
/// Whether reading ends at `line`: it holds such a keyword, but doesn't begin with one.
bool endsReading(const std::string& line);
