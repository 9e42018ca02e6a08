#include "indexer/BinaryPlistWriter.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tallyvox::indexer {

namespace {

// Bytes needed to write value as an unsigned big-endian number: 1, 2, 4 or 8.
unsigned widthFor(std::uint64_t value)
{
    if (value <= 0xFF) {
        return 1;
    }
    if (value <= 0xFFFF) {
        return 2;
    }
    if (value <= 0xFFFFFFFFull) {
        return 4;
    }
    return 8;
}

// The low nibble of an integer marker for each width.
unsigned char widthCode(unsigned width)
{
    return width == 1 ? 0 : width == 2 ? 1 : width == 4 ? 2 : 3;
}

class Output {
public:
    explicit Output(std::FILE* file) : m_file(file), m_buffer(new char[capacity]) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    std::uint64_t offset() const { return m_written + m_size; }

    /// Room for n more bytes, which the caller writes at the pointer returned.
    char* reserve(std::size_t n)
    {
        if (capacity - m_size < n) {
            flush();
        }
        return m_buffer.get() + m_size;
    }
    void commit(std::size_t n) { m_size += n; }

    void byte(unsigned char b)
    {
        reserve(1)[0] = static_cast<char>(b);
        commit(1);
    }
    void bytes(std::string_view data)
    {
        while (!data.empty()) {
            const std::size_t n = data.size() < capacity ? data.size() : capacity;
            std::memcpy(reserve(n), data.data(), n);
            commit(n);
            data.remove_prefix(n);
        }
    }
    void bigEndian(std::uint64_t value, unsigned width)
    {
        char* out = reserve(width);
        for (unsigned i = 0; i < width; ++i) {
            out[i] = static_cast<char>(value >> (8 * (width - 1 - i)));
        }
        commit(width);
    }
    // count numbers of width bytes each, big-endian, next() giving each in turn.
    template <typename Next>
    void numbers(std::uint64_t count, unsigned width, Next next)
    {
        while (count > 0) {
            const std::uint64_t n = count < capacity / 8 ? count : capacity / 8;
            char* out = reserve(n * width);
            for (std::uint64_t i = 0; i < n; ++i, out += width) {
                // The value's low bytes, big-endian: byte-swap it whole and keep its tail.
                const std::uint64_t swapped = __builtin_bswap64(next());
                char bytes[8];
                std::memcpy(bytes, &swapped, 8);
                std::memcpy(out, bytes + 8 - width, width);
            }
            commit(n * width);
            count -= n;
        }
    }
    // An integer object: 1, 2 and 4-byte forms are unsigned, the 8-byte form is signed.
    void integer(std::uint64_t value)
    {
        const unsigned width = widthFor(value);
        byte(static_cast<unsigned char>(0x10 | widthCode(width)));
        bigEndian(value, width);
    }
    // A marker whose low nibble holds a length, or 0xF and an integer object when it is 15+.
    void marker(unsigned char type, std::uint64_t length)
    {
        if (length < 15) {
            byte(static_cast<unsigned char>(type | length));
        } else {
            byte(static_cast<unsigned char>(type | 0x0F));
            integer(length);
        }
    }
    bool flush()
    {
        if (m_size > 0 && std::fwrite(m_buffer.get(), 1, m_size, m_file) != m_size) {
            m_ok = false;
        }
        m_written += m_size;
        m_size = 0;
        return m_ok;
    }

private:
    static constexpr std::size_t capacity = 1u << 20;
    std::FILE* m_file;
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_size = 0;
    std::uint64_t m_written = 0;
    bool m_ok = true;
};

bool isAscii(std::string_view text)
{
    std::size_t i = 0;
    for (; i + 8 <= text.size(); i += 8) {
        std::uint64_t v;
        std::memcpy(&v, text.data() + i, 8);
        if ((v & 0x8080808080808080ull) != 0) {
            return false;
        }
    }
    for (; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) >= 0x80) {
            return false;
        }
    }
    return true;
}

// The code point of the UTF-8 sequence at p, and its length; a malformed byte reads as
// U+FFFD of length 1.
struct CodePoint {
    std::uint32_t value;
    std::size_t length;
};

CodePoint decodeUtf8(const unsigned char* p, const unsigned char* end)
{
    const std::uint32_t lead = *p;
    const std::size_t length = lead < 0x80    ? 1
                               : lead >= 0xF0 ? 4
                               : lead >= 0xE0 ? 3
                               : lead >= 0xC0 ? 2
                                              : 0;
    if (length == 0 || static_cast<std::size_t>(end - p) < length) {
        return {0xFFFD, 1};
    }
    std::uint32_t c = length == 1 ? lead : lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((p[i] & 0xC0) != 0x80) {
            return {0xFFFD, 1};
        }
        c = (c << 6) | (p[i] & 0x3Fu);
    }
    return c > 0x10FFFF ? CodePoint{0xFFFD, 1} : CodePoint{c, length};
}

// UTF-8 to UTF-16 code units.
void toUtf16(std::string_view text, std::vector<char16_t>& units)
{
    units.clear();
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        const CodePoint c = decodeUtf8(p, end);
        if (c.value >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD800 + ((c.value - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + ((c.value - 0x10000) & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(c.value));
        }
        p += c.length;
    }
}

// Integer objects for the distinct counts; small counts are looked up in an array.
class CountObjects {
public:
    explicit CountObjects(std::uint64_t firstObject) : m_next(firstObject) {}

    void note(std::uint64_t count)
    {
        if (count < smallLimit) {
            if (count >= m_small.size()) {
                // Grown as counts need it: a short document's counts are all small, and
                // clearing the whole array would cost it more than its words.
                m_small.resize(std::min<std::size_t>(smallLimit, std::bit_ceil(count + 1)), 0);
            }
            if (m_small[count] == 0) {
                m_small[count] = m_next++;
                m_counts.push_back(count);
            }
        } else if (m_large.emplace(count, m_next).second) {
            ++m_next;
            m_counts.push_back(count);
        }
    }
    std::uint64_t objectOf(std::uint64_t count) const
    {
        return count < smallLimit ? m_small[count] : m_large.at(count);
    }
    /// The distinct counts, in the order of their objects.
    const std::vector<std::uint64_t>& counts() const { return m_counts; }

private:
    static constexpr std::uint64_t smallLimit = 1 << 16;
    std::vector<std::uint64_t> m_small;
    std::unordered_map<std::uint64_t, std::uint64_t> m_large;
    std::vector<std::uint64_t> m_counts;
    std::uint64_t m_next;
};

} // namespace

bool writeBinaryPlist(std::FILE* file, const WordMap& words)
{
    // Objects: 0 the dictionary, 1..n the keys in UTF-16 order, then one integer per
    // distinct count. In the file the keys come first, so that one ordered pass writes them
    // and notes what the dictionary needs; the dictionary and the integers follow.
    const std::uint64_t n = words.size();
    CountObjects countObjects(n + 1);
    words.forEach([&](std::string_view, std::uint64_t count) { countObjects.note(count); });
    const std::uint64_t objectCount = n + 1 + countObjects.counts().size();
    const unsigned refWidth = widthFor(objectCount - 1);

    // Each key's size rather than its offset: half the memory on a table of millions of
    // words, and the offsets follow from the sizes, the keys lying end to end.
    std::vector<std::uint32_t> keySizes; // a key object is never near 4 GB: words are shorter
    keySizes.reserve(n);
    std::vector<std::uint32_t> valueRefs; // object numbers stay far below 2^32
    valueRefs.reserve(n);
    Output out(file);
    out.bytes("bplist00");
    std::vector<char16_t> units;
    words.forEachInOrder([&](std::string_view word, std::uint64_t count) {
        const std::uint64_t start = out.offset();
        valueRefs.push_back(static_cast<std::uint32_t>(countObjects.objectOf(count)));
        if (isAscii(word)) {
            out.marker(0x50, word.size());
            out.bytes(word);
        } else {
            toUtf16(word, units);
            out.marker(0x60, units.size());
            for (char16_t unit : units) {
                char* to = out.reserve(2);
                to[0] = static_cast<char>(unit >> 8);
                to[1] = static_cast<char>(unit & 0xFF);
                out.commit(2);
            }
        }
        keySizes.push_back(static_cast<std::uint32_t>(out.offset() - start));
    });

    const std::uint64_t dictionaryOffset = out.offset();
    out.marker(0xD0, n);
    std::uint64_t ref = 0;
    out.numbers(n, refWidth, [&ref] { return ++ref; });
    const std::uint32_t* value = valueRefs.data();
    out.numbers(n, refWidth, [&value] { return *value++; });
    std::vector<std::uint64_t> countOffsets;
    for (std::uint64_t count : countObjects.counts()) {
        countOffsets.push_back(out.offset());
        out.integer(count);
    }

    // The offsets in object order: the dictionary, the keys from just after the header,
    // then the counts.
    const std::uint64_t tableOffset = out.offset();
    const unsigned offsetWidth = widthFor(tableOffset);
    out.bigEndian(dictionaryOffset, offsetWidth);
    std::uint64_t keyOffset = 8;
    const std::uint32_t* size = keySizes.data();
    out.numbers(n, offsetWidth, [&keyOffset, &size] {
        const std::uint64_t at = keyOffset;
        keyOffset += *size++;
        return at;
    });
    const std::uint64_t* countOffset = countOffsets.data();
    out.numbers(countOffsets.size(), offsetWidth, [&countOffset] { return *countOffset++; });
    for (int i = 0; i < 6; ++i) {
        out.byte(0);
    }
    out.byte(static_cast<unsigned char>(offsetWidth));
    out.byte(static_cast<unsigned char>(refWidth));
    out.bigEndian(objectCount, 8);
    out.bigEndian(0, 8);
    out.bigEndian(tableOffset, 8);
    return out.flush();
}

} // namespace tallyvox::indexer
