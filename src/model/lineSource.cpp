#include "model/lineSource.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Characters of several bytes, by the first byte: how many there are, and where the second one lies. Its limits leave
/// out what has a shorter form, halves of pairs, and what is beyond the last character. All others lie between 0x80
/// and 0xBF.
struct cLeadBytes {
    unsigned char first;
    unsigned char last;
    std::size_t length;
    unsigned char lowSecond;
    unsigned char highSecond;
};

constexpr std::array leadBytes{
    cLeadBytes{0xC2, 0xDF, 2, 0x80, 0xBF}, cLeadBytes{0xE0, 0xE0, 3, 0xA0, 0xBF}, cLeadBytes{0xE1, 0xEC, 3, 0x80, 0xBF},
    cLeadBytes{0xED, 0xED, 3, 0x80, 0x9F}, cLeadBytes{0xEE, 0xEF, 3, 0x80, 0xBF}, cLeadBytes{0xF0, 0xF0, 4, 0x90, 0xBF},
    cLeadBytes{0xF1, 0xF3, 4, 0x80, 0xBF}, cLeadBytes{0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool isWithin(char character, unsigned char low, unsigned char high) {
    const auto byte = static_cast<unsigned char>(character);
    return low <= byte && byte <= high;
}

/// How many bytes the character in front has; 0 if there is none.
std::size_t lengthOfFirst(std::string_view bytes) {
    if (isWithin(bytes[0], 0x00, 0x7F)) return 1;
    const auto* lead =
        std::ranges::find_if(leadBytes, [&](const cLeadBytes& row) { return isWithin(bytes[0], row.first, row.last); });
    if (lead == leadBytes.end() || bytes.size() < lead->length ||
        !isWithin(bytes[1], lead->lowSecond, lead->highSecond))
        return 0;
    const std::string_view others = bytes.substr(2, lead->length - 2);
    return std::ranges::all_of(others, [](char byte) { return isWithin(byte, 0x80, 0xBF); }) ? lead->length : 0;
}

}  // namespace

bool isUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = lengthOfFirst(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

cLineSource::cLineSource(std::istream& text) : stream(text) {}

bool cLineSource::next(std::string& line) {
    if (!std::getline(stream, line)) return false;
    ++number;
    if (number == 1 && line.starts_with(byteOrderMark)) line.erase(0, byteOrderMark.size());
    if (line.ends_with('\r')) line.pop_back();
    return true;
}

bool cLineSource::atEnd() { return stream.peek() == std::istream::traits_type::eof(); }
