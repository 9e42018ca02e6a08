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
    return (key & highBits) == 0 ? key : remapOrderPrefix(key);
}

std::uint64_t remapOrderPrefix(std::uint64_t prefix)
{
    std::uint64_t remapped = 0;
    for (int shift = 56; shift >= 0; shift -= 8) {
        const auto byte = static_cast<unsigned char>(prefix >> shift);
        remapped |= std::uint64_t{utf16OrderByte(byte)} << shift;
    }
    return remapped;
}

} // namespace tallyvox::indexer
