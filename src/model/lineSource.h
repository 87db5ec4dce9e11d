#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

/// Whether bytes are a text in UTF-8, in its strict form.
bool isUtf8(std::string_view bytes);

/// The lines of a text, one after another. A line ends with a line feed, alone or behind a carriage return; a byte
/// order mark in front of UTF-8 text is passed over.
class cLineSource {
public:
    explicit cLineSource(std::istream& text);

    /// Reads the next line into `line`. @return false at the end.
    bool next(std::string& line);
    /// Whether the line read last was the last one.
    bool atEnd();
    /// The number of the line read last, from 1.
    std::size_t lineNumber() const { return number; }

private:
    std::istream& stream;
    std::size_t number = 0;
};
