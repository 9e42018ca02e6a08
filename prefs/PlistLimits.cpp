#include "prefs/PlistLimits.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace tallyvox {

namespace {

// Where the tag opened at start ends: its '>', not one inside a quoted attribute value;
// the size when it never does.
qsizetype tagEnd(const QByteArray& xml, qsizetype start)
{
    char quote = 0;
    for (qsizetype at = start + 1; at < xml.size(); ++at) {
        const char c = xml[at];
        if (quote) {
            quote = c == quote ? 0 : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            return at;
        }
    }
    return xml.size();
}

// The element nesting of XML text, without parsing it: comments, CDATA, declarations and
// processing instructions do not nest.
bool xmlWithinLimits(const QByteArray& xml, int deepestNesting)
{
    const auto skipPast = [&xml](const char* end, qsizetype from) {
        const qsizetype found = xml.indexOf(end, from);
        return found < 0 ? xml.size() : found + qsizetype(std::strlen(end));
    };
    int depth = 0;
    qsizetype i = 0;
    while ((i = xml.indexOf('<', i)) >= 0) {
        if (xml.mid(i, 4) == "<!--") {
            i = skipPast("-->", i + 4);
            continue;
        }
        if (xml.mid(i, 9) == "<![CDATA[") {
            i = skipPast("]]>", i + 9);
            continue;
        }
        const char next = i + 1 < xml.size() ? xml[i + 1] : '\0';
        const qsizetype end = tagEnd(xml, i);
        if (next == '/') {
            depth = std::max(0, depth - 1);
        } else if (next != '?' && next != '!' && end < xml.size() && xml[end - 1] != '/' &&
                   ++depth > deepestNesting) {
            return false;
        }
        i = end;
    }
    return true;
}

// A binary property list as far as its shape goes: the trailer, the offset table and the
// references of arrays, sets and dictionaries.
class BinaryShape {
public:
    explicit BinaryShape(const QByteArray& bytes) : m_bytes(bytes) {}

    bool withinLimits(const PlistLimits& limits)
    {
        constexpr qsizetype headerSize = 8;
        constexpr qsizetype trailerSize = 32;
        const qsizetype size = m_bytes.size();
        if (size < headerSize + trailerSize) {
            return false;
        }
        const qsizetype trailer = size - trailerSize;
        m_offsetSize = static_cast<int>(byteAt(trailer + 6));
        m_refSize = static_cast<int>(byteAt(trailer + 7));
        const std::optional<quint64> count = number(trailer + 8, 8);
        const std::optional<quint64> top = number(trailer + 16, 8);
        const std::optional<quint64> table = number(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_refSize < 1 || m_refSize > 8 || !count ||
            !top || !table || *count == 0 || *top >= *count || *table >= quint64(trailer) ||
            *count > (quint64(trailer) - *table) / quint64(m_offsetSize)) {
            return false;
        }
        m_table = qsizetype(*table);
        m_end = trailer;
        m_depth.assign(*count, unvisited);
        m_objects.assign(*count, 0);
        return walk(qsizetype(*top), limits);
    }

private:
    static constexpr int unvisited = -1;
    static constexpr int onPath = -2;

    quint8 byteAt(qsizetype at) const { return static_cast<quint8>(m_bytes[at]); }

    std::optional<quint64> number(qsizetype at, int width) const
    {
        if (at < 0 || width < 1 || width > 8 || at + width > m_bytes.size()) {
            return std::nullopt;
        }
        quint64 value = 0;
        for (int i = 0; i < width; ++i) {
            value = (value << 8) | byteAt(at + i);
        }
        return value;
    }

    // The objects that object index refers to, or nothing when it is malformed.
    std::optional<std::vector<qsizetype>> children(qsizetype index) const
    {
        const std::optional<quint64> offset = number(m_table + index * m_offsetSize, m_offsetSize);
        if (!offset || *offset < 8 || *offset >= quint64(m_end)) {
            return std::nullopt;
        }
        auto at = qsizetype(*offset);
        const quint8 marker = byteAt(at++);
        const int type = marker >> 4;
        // Arrays (0xA), sets (0xC) and dictionaries (0xD) hold references; nothing else does.
        if (type != 0xA && type != 0xC && type != 0xD) {
            return std::vector<qsizetype>{};
        }
        quint64 length = marker & 0x0F;
        if (length == 0x0F) {
            if (at >= m_end || (byteAt(at) >> 4) != 0x1) {
                return std::nullopt;
            }
            const int width = 1 << (byteAt(at) & 0x0F);
            const std::optional<quint64> extended = number(at + 1, width);
            if (!extended) {
                return std::nullopt;
            }
            length = *extended;
            at += 1 + width;
            if (at > m_end) {
                return std::nullopt;
            }
        }
        const quint64 refs = type == 0xD ? length * 2 : length;
        if (length > quint64(m_end) || refs > quint64(m_end - at) / quint64(m_refSize)) {
            return std::nullopt;
        }
        std::vector<qsizetype> result;
        result.reserve(refs);
        for (quint64 i = 0; i < refs; ++i) {
            const std::optional<quint64> ref = number(at + qsizetype(i) * m_refSize, m_refSize);
            if (!ref || *ref >= m_depth.size()) {
                return std::nullopt;
            }
            result.push_back(qsizetype(*ref));
        }
        return result;
    }

    // Depth-first without recursion; each object's depth and expanded size are kept, so
    // shared objects are walked once and an object on the current path is a cycle.
    bool walk(qsizetype top, const PlistLimits& limits)
    {
        struct Frame {
            qsizetype index;
            std::vector<qsizetype> children;
            std::size_t next = 0;
        };
        std::vector<Frame> stack;
        const auto enter = [&](qsizetype index) {
            std::optional<std::vector<qsizetype>> found = children(index);
            if (!found || int(stack.size()) >= limits.deepestNesting) {
                return false;
            }
            m_depth[std::size_t(index)] = onPath;
            stack.push_back({index, std::move(*found)});
            return true;
        };
        if (!enter(top)) {
            return false;
        }
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next < frame.children.size()) {
                const qsizetype child = frame.children[frame.next++];
                const int state = m_depth[std::size_t(child)];
                if (state == onPath) {
                    return false;
                }
                if (state == unvisited && !enter(child)) {
                    return false;
                }
                continue;
            }
            int depth = 1;
            qint64 objects = 1;
            for (const qsizetype child : frame.children) {
                depth = std::max(depth, m_depth[std::size_t(child)] + 1);
                objects += m_objects[std::size_t(child)];
                if (objects > limits.mostObjects) {
                    return false;
                }
            }
            m_depth[std::size_t(frame.index)] = depth;
            m_objects[std::size_t(frame.index)] = objects;
            stack.pop_back();
        }
        return m_depth[std::size_t(top)] <= limits.deepestNesting;
    }

    const QByteArray& m_bytes;
    int m_offsetSize = 0;
    int m_refSize = 0;
    qsizetype m_table = 0;
    qsizetype m_end = 0;
    std::vector<int> m_depth;
    std::vector<qint64> m_objects;
};

} // namespace

bool withinPlistLimits(const QByteArray& bytes, const PlistLimits& limits)
{
    if (bytes.size() > limits.largestFile) {
        return false;
    }
    if (bytes.startsWith("bplist")) {
        return BinaryShape(bytes).withinLimits(limits);
    }
    return xmlWithinLimits(bytes, limits.deepestNesting);
}

} // namespace tallyvox
