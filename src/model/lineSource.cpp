#include "model/lineSource.h"

#include <string_view>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

}  // namespace

cLineSource::cLineSource(std::istream& text) : stream(text) {}

bool cLineSource::next(std::string& line) {
    if (!std::getline(stream, line)) return false;
    ++number;
    if (number == 1 && line.starts_with(byteOrderMark)) line.erase(0, byteOrderMark.size());
    if (line.ends_with('\r')) line.pop_back();
    return true;
}

bool cLineSource::atEnd() { return stream.peek() == std::istream::traits_type::eof(); }
