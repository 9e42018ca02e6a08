#include "indexer/readers/Utf8.h"

namespace tallyvox::indexer::readers {

void appendUtf8(std::string& out, char32_t c)
{
    const auto byte = [&out](char32_t b) { out.push_back(static_cast<char>(b)); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | (c >> 6));
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | (c >> 12));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | (c >> 18));
        byte(0x80 | ((c >> 12) & 0x3F));
        byte(0x80 | ((c >> 6) & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

} // namespace tallyvox::indexer::readers
