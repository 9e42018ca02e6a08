#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tallyvox::indexer {

// The result file lists its words in UTF-16 code-unit order, the order in which the
// application compares its strings, so that it can check the order instead of sorting.
// For well-formed UTF-8 that is byte order, except that the lead bytes of U+E000..U+FFFF
// (0xEE, 0xEF) must sort after those of the supplementary planes (0xF0..0xF4), whose
// surrogates come before them in UTF-16. Only lead bytes take those values, so remapping
// them gives the order byte by byte.

/// A byte as it orders in UTF-16 code-unit order.
constexpr unsigned utf16OrderByte(unsigned char byte)
{
    if (byte == 0xEE || byte == 0xEF) {
        return byte + 5u; // after 0xF0..0xF4 moved down
    }
    if (byte >= 0xF0 && byte <= 0xF4) {
        return byte - 2u;
    }
    return byte;
}

/// The first eight bytes of word, zero-padded and remapped, as a number that orders like
/// them. Words never hold a zero byte, so a shorter word sorts before its extensions.
std::uint64_t utf16OrderPrefix(std::string_view word);

/// A big-endian eight-byte prefix with its bytes remapped as utf16OrderByte does.
std::uint64_t remapOrderPrefix(std::uint64_t prefix);

/// Negative, zero or positive as a sorts before, with or after b in UTF-16 code-unit order.
/// Inline: the sorts call it on most pairs of words.
inline int compareUtf16Order(std::string_view a, std::string_view b)
{
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        std::uint64_t x;
        std::uint64_t y;
        std::memcpy(&x, a.data() + i, 8);
        std::memcpy(&y, b.data() + i, 8);
        if (x != y) {
            i += static_cast<std::size_t>(__builtin_ctzll(x ^ y) / 8);
            break;
        }
    }
    while (i < n && a[i] == b[i]) {
        ++i;
    }
    if (i == n) {
        return a.size() < b.size() ? -1 : (a.size() > b.size() ? 1 : 0);
    }
    return utf16OrderByte(static_cast<unsigned char>(a[i])) <
                   utf16OrderByte(static_cast<unsigned char>(b[i]))
               ? -1
               : 1;
}

} // namespace tallyvox::indexer
