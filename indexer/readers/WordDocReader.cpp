#include "indexer/readers/WordDocReader.h"

#include "indexer/Progress.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tallyvox::indexer::readers {

namespace {

constexpr std::uint32_t endOfChain = 0xFFFFFFFE;

std::uint32_t le16(std::string_view b, std::size_t at)
{
    if (at > b.size() || b.size() - at < 2) {
        return 0;
    }
    return static_cast<unsigned char>(b[at]) | static_cast<unsigned char>(b[at + 1]) << 8;
}

std::uint32_t le32(std::string_view b, std::size_t at)
{
    if (at > b.size() || b.size() - at < 4) {
        return 0;
    }
    return le16(b, at) | le16(b, at + 2) << 16;
}

// An OLE compound file ([MS-CFB]): streams are sector chains through the FAT; small
// streams live in the mini stream.
class CompoundFile {
public:
    explicit CompoundFile(std::string_view file) : m_file(file) {}

    bool open()
    {
        if (m_file.substr(0, 8) != std::string_view("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8)) {
            return false;
        }
        const std::uint32_t shift = le16(m_file, 0x1E);
        if (shift != 9 && shift != 12) {
            return false;
        }
        m_sectorSize = std::size_t{1} << shift;
        const std::size_t sectors = m_file.size() / m_sectorSize;
        // FAT sectors: 109 listed in the header, the rest in the DIFAT chain.
        std::vector<std::uint32_t> fatSectors;
        const std::uint32_t fatCount = le32(m_file, 0x2C);
        for (std::size_t i = 0; i < 109 && fatSectors.size() < fatCount; ++i) {
            fatSectors.push_back(le32(m_file, 0x4C + 4 * i));
        }
        std::uint32_t difat = le32(m_file, 0x44);
        for (std::size_t hops = 0; difat < endOfChain && fatSectors.size() < fatCount &&
                                   fatSectors.size() < sectors && hops < sectors;
             ++hops) {
            const std::size_t base = offsetOf(difat);
            for (std::size_t i = 0; i + 1 < m_sectorSize / 4 && fatSectors.size() < fatCount; ++i) {
                fatSectors.push_back(le32(m_file, base + 4 * i));
            }
            difat = le32(m_file, base + m_sectorSize - 4);
        }
        for (const std::uint32_t s : fatSectors) {
            const std::size_t base = offsetOf(s);
            if (base + m_sectorSize > m_file.size()) {
                continue;
            }
            for (std::size_t i = 0; i < m_sectorSize / 4; ++i) {
                m_fat.push_back(le32(m_file, base + 4 * i));
            }
        }
        m_directory = chain(le32(m_file, 0x30), m_fat, m_sectorSize, offsetFn(), SIZE_MAX);
        if (m_directory.size() < 128) {
            return false;
        }
        m_miniCutoff = le32(m_file, 0x38);
        const std::string miniFatBytes =
            chain(le32(m_file, 0x3C), m_fat, m_sectorSize, offsetFn(), SIZE_MAX);
        for (std::size_t i = 0; i + 4 <= miniFatBytes.size(); i += 4) {
            m_miniFat.push_back(le32(miniFatBytes, i));
        }
        m_miniStream = chain(le32(m_directory, 0x74), m_fat, m_sectorSize, offsetFn(),
                             le32(m_directory, 0x78));
        return true;
    }

    /// A stream directly inside the root storage.
    std::optional<std::string> stream(std::string_view name) const
    {
        // Walk the root's children (a red-black tree by sibling links) without recursion.
        const std::size_t entries = m_directory.size() / 128;
        std::vector<std::uint32_t> pending{le32(m_directory, 0x4C)};
        std::vector<bool> seen(entries, false);
        while (!pending.empty()) {
            const std::uint32_t id = pending.back();
            pending.pop_back();
            if (id >= entries || seen[id]) {
                continue;
            }
            seen[id] = true;
            const std::size_t e = std::size_t{id} * 128;
            pending.push_back(le32(m_directory, e + 0x44));
            pending.push_back(le32(m_directory, e + 0x48));
            if (m_directory[e + 0x42] == 2 && entryName(e) == name) {
                const std::uint32_t start = le32(m_directory, e + 0x74);
                const std::uint32_t size = le32(m_directory, e + 0x78);
                if (size < m_miniCutoff) {
                    return chain(start, m_miniFat, 64, miniOffsetFn(), size);
                }
                return chain(start, m_fat, m_sectorSize, offsetFn(), size);
            }
        }
        return std::nullopt;
    }

private:
    std::size_t offsetOf(std::uint32_t sector) const
    {
        return (std::size_t{sector} + 1) * m_sectorSize;
    }

    std::function<std::string_view(std::uint32_t)> offsetFn() const
    {
        return [this](std::uint32_t s) -> std::string_view {
            const std::size_t at = offsetOf(s);
            return at < m_file.size() ? m_file.substr(at, m_sectorSize) : std::string_view();
        };
    }

    std::function<std::string_view(std::uint32_t)> miniOffsetFn() const
    {
        return [this](std::uint32_t s) -> std::string_view {
            const std::size_t at = std::size_t{s} * 64;
            return at < m_miniStream.size() ? std::string_view(m_miniStream).substr(at, 64)
                                            : std::string_view();
        };
    }

    std::string entryName(std::size_t e) const
    {
        const std::size_t bytes = std::min<std::size_t>(le16(m_directory, e + 0x40), 64);
        std::string name;
        for (std::size_t i = 0; i + 1 < bytes; i += 2) {
            const std::uint32_t c = le16(m_directory, e + i);
            if (c == 0) {
                break;
            }
            name.push_back(c < 0x80 ? static_cast<char>(c) : '?');
        }
        return name;
    }

    // Follows a chain; a bad link ends it. A sector met twice means the chain loops: the file
    // is damaged, and the stream is what came before the loop. Going round again would
    // repeat those sectors up to the stream's size and read the repeats as more text.
    template <typename Sector>
    static std::string chain(std::uint32_t start, const std::vector<std::uint32_t>& fat,
                             std::size_t sectorSize, Sector sector, std::size_t size)
    {
        std::string out;
        std::vector<bool> visited(fat.size(), false);
        while (start < fat.size() && out.size() < size) {
            if (visited[start]) {
                CutReport::note("Word: a sector chain loops; the file is damaged");
                break;
            }
            visited[start] = true;
            const std::string_view data = sector(start);
            if (data.empty()) {
                break;
            }
            out.append(data.substr(0, std::min(sectorSize, size - out.size())));
            start = fat[start];
        }
        return out;
    }

    std::string_view m_file;
    std::size_t m_sectorSize = 512;
    std::uint32_t m_miniCutoff = 4096;
    std::vector<std::uint32_t> m_fat;
    std::vector<std::uint32_t> m_miniFat;
    std::string m_directory;
    std::string m_miniStream;
};

// Turns Word's characters into text: marks become boundaries, field codes are dropped
// while their results stay.
class WordText {
public:
    explicit WordText(TextSink& sink) : m_sink(sink) {}
    ~WordText() { flush(); }
    WordText(const WordText&) = delete;
    WordText& operator=(const WordText&) = delete;

    /// Characters the document says it holds, so that progress can be reported.
    void expect(std::uint64_t characters) { m_expected = characters; }

    void put(std::uint32_t unit)
    {
        ++m_seen;
        char32_t c = m_surrogates.join(unit);
        switch (c) {
        case 0: // a high surrogate waiting for its pair, or NUL
            return;
        case 0x13: // field begin: its code follows
            m_fields.push_back(true);
            ++m_inCode;
            return;
        case 0x14: // field separator: its result follows
            if (!m_fields.empty() && m_fields.back()) {
                m_fields.back() = false;
                --m_inCode;
            }
            return;
        case 0x15:
            if (!m_fields.empty()) {
                m_inCode -= m_fields.back() ? 1 : 0;
                m_fields.pop_back();
            }
            return;
        default:
            break;
        }
        if (m_inCode > 0) {
            return;
        }
        if (c == 0x1E) {
            c = 0x2011; // non-breaking hyphen
        } else if (c == 0x1F || c < 0x09 || (c >= 0x0E && c < 0x20)) {
            return; // optional hyphen, anchors of pictures, notes and objects
        } else if (c < 0x20) {
            flush();
            m_sink.boundary(); // paragraph, cell, line and page marks, tab
            return;
        }
        append(c);
    }

private:
    void append(char32_t c)
    {
        appendUtf8(m_text, c);
        if (m_text.size() >= 65536) {
            flush();
        }
    }

    void flush()
    {
        if (!m_text.empty()) {
            m_sink.text(m_text);
            m_text.clear();
        }
        if (m_expected > 0) {
            progress::setShare(std::min(m_seen, m_expected), m_expected);
        }
    }

    TextSink& m_sink;
    std::uint64_t m_expected = 0;
    std::uint64_t m_seen = 0;
    std::string m_text;
    std::vector<bool> m_fields; // per open field: still in its code
    int m_inCode = 0;
    SurrogateJoiner m_surrogates;
};

// Windows-1252 for bytes 0x80-0x9F; the rest of a compressed piece is Latin-1.
constexpr std::uint16_t cp1252High[32] = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};

std::uint32_t fromCp1252(unsigned char b)
{
    return b >= 0x80 && b < 0xA0 ? cp1252High[b - 0x80] : b;
}

void readPieces(std::string_view word, std::string_view table, std::size_t fcClx,
                std::size_t lcbClx, std::uint64_t characters, WordText& out)
{
    if (fcClx > table.size()) {
        return;
    }
    std::string_view clx = table.substr(fcClx, lcbClx);
    // Skip the property modifiers (Prc) before the piece table (Pcdt).
    std::size_t i = 0;
    while (i < clx.size() && clx[i] == 0x01) {
        i += 3 + le16(clx, i + 1);
    }
    if (i >= clx.size() || clx[i] != 0x02) {
        return;
    }
    const std::string_view plc = clx.substr(std::min(clx.size(), i + 5), le32(clx, i + 1));
    if (plc.size() < 4) {
        return;
    }
    const std::size_t pieces = (plc.size() - 4) / 12;
    std::uint64_t delivered = 0;
    for (std::size_t k = 0; k < pieces && delivered < characters; ++k) {
        const std::uint32_t cpStart = le32(plc, 4 * k);
        const std::uint32_t cpEnd = le32(plc, 4 * (k + 1));
        if (cpEnd <= cpStart) {
            continue;
        }
        const std::uint64_t count =
            std::min<std::uint64_t>(cpEnd - cpStart, characters - delivered);
        delivered += count;
        const std::uint32_t fc = le32(plc, 4 * (pieces + 1) + 8 * k + 2);
        if ((fc & 0x40000000) != 0) {
            const std::size_t at = (fc & 0x3FFFFFFF) / 2;
            for (std::uint64_t n = 0; n < count && at + n < word.size(); ++n) {
                out.put(fromCp1252(static_cast<unsigned char>(word[at + n])));
            }
        } else {
            const std::size_t at = fc & 0x3FFFFFFF;
            for (std::uint64_t n = 0; n < count && at + 2 * n + 1 < word.size(); ++n) {
                out.put(le16(word, at + 2 * n));
            }
        }
    }
}

} // namespace

bool readWordDocument(std::string_view file, TextSink& sink)
{
    CompoundFile cfb(file);
    if (!cfb.open()) {
        return false;
    }
    const auto word = cfb.stream("WordDocument");
    if (!word || word->size() < 0x20) {
        return false;
    }
    const std::uint32_t ident = le16(*word, 0);
    const std::uint32_t nFib = le16(*word, 2);
    const std::uint32_t flags = le16(*word, 0x0A);
    if ((ident != 0xA5EC && ident != 0xA5DC) || (flags & 0x0100) != 0) {
        return true; // not a Word text stream we know, or encrypted
    }
    WordText out(sink);
    if (nFib < 101) {
        // Word 6/95: the text is one run of 8-bit characters.
        const std::uint32_t fcMin = le32(*word, 0x18);
        const std::uint32_t fcMac = le32(*word, 0x1C);
        out.expect(fcMac > fcMin ? fcMac - fcMin : 0);
        for (std::size_t at = fcMin; at < fcMac && at < word->size(); ++at) {
            out.put(fromCp1252(static_cast<unsigned char>((*word)[at])));
        }
        return true;
    }
    // FibBase, then counted arrays of 16-bit, 32-bit and (fc, lcb) pair values.
    const std::size_t csw = le16(*word, 32);
    const std::size_t lwAt = 34 + 2 * csw + 2;
    const std::size_t cslw = le16(*word, lwAt - 2);
    const std::size_t pairsAt = lwAt + 4 * cslw + 2;
    const std::size_t pairCount = le16(*word, pairsAt - 2);
    if (cslw < 11 || pairCount <= 33) {
        return true;
    }
    std::uint64_t characters = 0;
    for (const std::size_t story : {3, 4, 5, 7, 8, 9, 10}) { // text, notes, headers, ...
        characters += le32(*word, lwAt + 4 * story);
    }
    const auto table = cfb.stream((flags & 0x0200) != 0 ? "1Table" : "0Table");
    if (!table) {
        return true;
    }
    out.expect(characters);
    readPieces(*word, *table, le32(*word, pairsAt + std::size_t{33} * 8),
               le32(*word, pairsAt + std::size_t{33} * 8 + 4), characters, out);
    return true;
}

} // namespace tallyvox::indexer::readers
