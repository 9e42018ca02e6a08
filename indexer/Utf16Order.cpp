#include "indexer/Utf16Order.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace tallyvox::indexer {

namespace {

constexpr std::uint64_t highBits = 0x8080808080808080ull;

inline std::uint64_t loadBigEndian(const char* p)
{
    std::uint64_t v;
    std::memcpy(&v, p, 8);
    return __builtin_bswap64(v);
}

} // namespace

std::uint64_t utf16OrderPrefix(std::string_view word)
{
    std::uint64_t key = 0;
    if (word.size() >= 8) {
        key = loadBigEndian(word.data());
    } else {
        for (std::size_t i = 0; i < word.size(); ++i) {
            key |= std::uint64_t{static_cast<unsigned char>(word[i])} << (56 - 8 * i);
        }
    }
    if ((key & highBits) == 0) {
        return key;
    }
    std::uint64_t remapped = 0;
    for (int shift = 56; shift >= 0; shift -= 8) {
        const auto byte = static_cast<unsigned char>(key >> shift);
        remapped |= std::uint64_t{utf16OrderByte(byte)} << shift;
    }
    return remapped;
}

int compareUtf16Order(std::string_view a, std::string_view b)
{
    const std::size_t n = std::min(a.size(), b.size());
    std::size_t i = 0;
    for (; i + 8 <= n; i += 8) {
        const std::uint64_t x = loadBigEndian(a.data() + i);
        const std::uint64_t y = loadBigEndian(b.data() + i);
        if (x != y) {
            i += static_cast<std::size_t>(__builtin_clzll(x ^ y) / 8);
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
