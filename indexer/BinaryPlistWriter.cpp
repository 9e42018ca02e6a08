#include "indexer/BinaryPlistWriter.h"

#include <cstdint>
#include <string>
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

class Output {
public:
    explicit Output(std::FILE* file) : m_file(file) { m_buffer.reserve(capacity); }

    std::uint64_t offset() const { return m_written + m_buffer.size(); }
    bool ok() const { return m_ok; }

    void byte(unsigned char b)
    {
        m_buffer.push_back(static_cast<char>(b));
        if (m_buffer.size() >= capacity) {
            flush();
        }
    }
    void bytes(std::string_view data)
    {
        m_buffer.append(data);
        if (m_buffer.size() >= capacity) {
            flush();
        }
    }
    void bigEndian(std::uint64_t value, unsigned width)
    {
        for (unsigned i = width; i-- > 0;) {
            byte(static_cast<unsigned char>(value >> (8 * i)));
        }
    }
    // An integer object: 1, 2 and 4-byte forms are unsigned, the 8-byte form is signed.
    void integer(std::uint64_t value)
    {
        const unsigned width = widthFor(value);
        byte(static_cast<unsigned char>(0x10 | (width == 1   ? 0
                                                : width == 2 ? 1
                                                : width == 4 ? 2
                                                             : 3)));
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
        if (!m_buffer.empty() &&
            std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_file) != m_buffer.size()) {
            m_ok = false;
        }
        m_written += m_buffer.size();
        m_buffer.clear();
        return m_ok;
    }

private:
    static constexpr std::size_t capacity = 1u << 20;
    std::FILE* m_file;
    std::string m_buffer;
    std::uint64_t m_written = 0;
    bool m_ok = true;
};

bool isAscii(std::string_view text)
{
    for (char c : text) {
        if (static_cast<unsigned char>(c) >= 0x80) {
            return false;
        }
    }
    return true;
}

// UTF-8 to UTF-16 code units; a malformed byte becomes U+FFFD.
void toUtf16(std::string_view text, std::u16string& units)
{
    units.clear();
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        std::uint32_t c = *p;
        std::size_t length = c < 0x80 ? 1 : c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : c >= 0xC0 ? 2 : 0;
        if (length == 0 || static_cast<std::size_t>(end - p) < length) {
            units.push_back(0xFFFD);
            ++p;
            continue;
        }
        if (length > 1) {
            c &= 0xFFu >> (length + 1);
            bool valid = true;
            for (std::size_t i = 1; i < length; ++i) {
                valid = valid && (p[i] & 0xC0) == 0x80;
                c = (c << 6) | (p[i] & 0x3F);
            }
            if (!valid || c > 0x10FFFF) {
                units.push_back(0xFFFD);
                ++p;
                continue;
            }
        }
        if (c >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(c));
        }
        p += length;
    }
}

} // namespace

bool writeBinaryPlist(std::FILE* file, const WordMap& words)
{
    // Objects: 0 the dictionary, 1..n the keys, then one integer per distinct count.
    const std::uint64_t n = words.size();
    std::unordered_map<std::uint64_t, std::uint64_t> countObjects;
    std::vector<std::uint64_t> counts;
    words.forEach([&](std::string_view, std::uint64_t count) {
        if (countObjects.emplace(count, 1 + n + counts.size()).second) {
            counts.push_back(count);
        }
    });
    const std::uint64_t objectCount = 1 + n + counts.size();
    const unsigned refWidth = widthFor(objectCount - 1);
    std::vector<std::uint64_t> offsets;
    offsets.reserve(objectCount);

    Output out(file);
    out.bytes("bplist00");
    offsets.push_back(out.offset());
    out.marker(0xD0, n);
    for (std::uint64_t i = 1; i <= n; ++i) {
        out.bigEndian(i, refWidth);
    }
    words.forEach([&](std::string_view, std::uint64_t count) {
        out.bigEndian(countObjects[count], refWidth);
    });
    std::u16string units;
    words.forEach([&](std::string_view word, std::uint64_t) {
        offsets.push_back(out.offset());
        if (isAscii(word)) {
            out.marker(0x50, word.size());
            out.bytes(word);
            return;
        }
        toUtf16(word, units);
        out.marker(0x60, units.size());
        for (char16_t unit : units) {
            out.bigEndian(unit, 2);
        }
    });
    for (std::uint64_t count : counts) {
        offsets.push_back(out.offset());
        out.integer(count);
    }

    const std::uint64_t tableOffset = out.offset();
    const unsigned offsetWidth = widthFor(tableOffset);
    for (std::uint64_t offset : offsets) {
        out.bigEndian(offset, offsetWidth);
    }
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
