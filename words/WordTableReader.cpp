#include "words/WordTableReader.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QtEndian>

#include <algorithm>
#include <cstring>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// Binary property lists, as far as a word table needs them: the trailer, the offset table,
// one dictionary, string keys and integer values. Anything out of bounds makes the whole
// file unreadable rather than partly read.
class BinaryPlist {
public:
    explicit BinaryPlist(QByteArrayView data) : m_data(data) {}

    std::optional<WordTable> read()
    {
        if (!readTrailer()) {
            return std::nullopt;
        }
        quint64 offset = 0;
        if (!objectOffset(m_topObject, offset)) {
            return std::nullopt;
        }
        quint64 position = offset + 1;
        const quint8 marker = byteAt(offset);
        quint64 count = 0;
        if ((marker & 0xF0) != 0xD0 || !length(marker, position, count)) {
            return std::nullopt;
        }
        // Key and value references, count of each.
        if (count > (m_objectsEnd - position) / (2 * quint64{m_refSize})) {
            return std::nullopt;
        }

        WordTable table;
        // Every code unit of a key takes at least a byte of the file; untouched room costs
        // no memory, but it is address space, so a hostile size claims no more than this.
        constexpr quint64 reservedAtMost = quint64(1) << 26;
        table.reserve(qsizetype(std::min(count, reservedAtMost)),
                      qsizetype(std::min(quint64(m_data.size()), reservedAtMost * 16)));
        const quint64 valueRefs = position + count * m_refSize;
        for (quint64 i = 0; i < count; ++i) {
            const quint64 keyRef = number(position + i * m_refSize, m_refSize);
            const quint64 valueRef = number(valueRefs + i * m_refSize, m_refSize);
            qint64 value = unreadableCount;
            // The value first: the key goes straight into the table.
            if (!readValue(valueRef, value) || !readKey(keyRef, table, value)) {
                return std::nullopt;
            }
        }
        return table;
    }

private:
    static constexpr qsizetype trailerSize = 32;

    quint8 byteAt(quint64 at) const { return static_cast<quint8>(m_data[qsizetype(at)]); }

    // A big-endian unsigned number of width bytes; the caller has checked the bounds.
    quint64 number(quint64 at, unsigned width) const
    {
        // Every width a file may give is one of these; each is one load.
        const char* p = m_data.data() + at;
        switch (width) {
        case 1:
            return static_cast<quint8>(*p);
        case 2:
            return qFromBigEndian<quint16>(p);
        case 4:
            return qFromBigEndian<quint32>(p);
        case 8:
            return qFromBigEndian<quint64>(p);
        default:
            break;
        }
        quint64 value = 0;
        for (unsigned i = 0; i < width; ++i) {
            value = (value << 8) | byteAt(at + i);
        }
        return value;
    }

    bool readTrailer()
    {
        if (m_data.size() < 8 + trailerSize || std::memcmp(m_data.data(), "bplist00", 8) != 0) {
            return false;
        }
        const quint64 trailer = quint64(m_data.size() - trailerSize);
        m_offsetSize = byteAt(trailer + 6);
        m_refSize = byteAt(trailer + 7);
        m_objectCount = number(trailer + 8, 8);
        m_topObject = number(trailer + 16, 8);
        m_tableOffset = number(trailer + 24, 8);
        const auto validWidth = [](unsigned w) { return w == 1 || w == 2 || w == 4 || w == 8; };
        if (!validWidth(m_offsetSize) || !validWidth(m_refSize)) {
            return false;
        }
        if (m_tableOffset < 8 || m_tableOffset > trailer || m_objectCount == 0 ||
            m_topObject >= m_objectCount ||
            m_objectCount > (trailer - m_tableOffset) / m_offsetSize) {
            return false;
        }
        m_objectsEnd = m_tableOffset;
        m_keyBudget = quint64(m_data.size());
        return true;
    }

    bool objectOffset(quint64 ref, quint64& offset) const
    {
        if (ref >= m_objectCount) {
            return false;
        }
        offset = number(m_tableOffset + ref * m_offsetSize, m_offsetSize);
        return offset >= 8 && offset < m_objectsEnd;
    }

    // The length in a marker's low nibble, or the integer object after it when that is 0xF.
    bool length(quint8 marker, quint64& position, quint64& value) const
    {
        value = marker & 0x0F;
        if (value != 0x0F) {
            return true;
        }
        if (position >= m_objectsEnd) {
            return false;
        }
        const quint8 intMarker = byteAt(position);
        if ((intMarker & 0xF0) != 0x10 || (intMarker & 0x0F) > 3) {
            return false;
        }
        const unsigned width = 1u << (intMarker & 0x0F);
        if (width > m_objectsEnd - position - 1) {
            return false;
        }
        value = number(position + 1, width);
        position += 1 + width;
        return true;
    }

    // A key that is not a string is no error: the entry is just left out.
    bool readKey(quint64 ref, WordTable& table, qint64 value)
    {
        quint64 offset = 0;
        if (!objectOffset(ref, offset)) {
            return false;
        }
        const quint8 marker = byteAt(offset);
        const quint8 type = marker & 0xF0;
        if (type != 0x50 && type != 0x60) {
            return true;
        }
        quint64 position = offset + 1;
        quint64 count = 0;
        if (!length(marker, position, count)) {
            return false;
        }
        const quint64 unit = type == 0x50 ? 1 : 2;
        if (count > (m_objectsEnd - position) / unit) {
            return false;
        }
        // Objects of a well-formed file never overlap, so their bytes add up to less than the
        // file; keys that reuse the same bytes over and over would make the work quadratic.
        if (count * unit > m_keyBudget) {
            return false;
        }
        m_keyBudget -= count * unit;
        const char* bytes = m_data.data() + position;
        char16_t* units = table.beginWord(qsizetype(count));
        if (type == 0x50) {
            for (quint64 i = 0; i < count; ++i) {
                units[i] = static_cast<unsigned char>(bytes[i]);
            }
        } else {
            for (quint64 i = 0; i < count; ++i) {
                units[i] = qFromBigEndian<quint16>(bytes + 2 * i);
            }
        }
        table.endWord(value);
        return true;
    }

    bool readValue(quint64 ref, qint64& value) const
    {
        quint64 offset = 0;
        if (!objectOffset(ref, offset)) {
            return false;
        }
        const quint8 marker = byteAt(offset);
        if ((marker & 0xF0) != 0x10) {
            return true; // a value of another type: unreadableCount
        }
        const unsigned power = marker & 0x0F;
        if (power > 4) {
            return true;
        }
        const unsigned width = 1u << power;
        if (width > m_objectsEnd - offset - 1) {
            return false;
        }
        if (width <= 8) {
            // 1, 2 and 4 bytes are unsigned; 8 bytes are signed.
            value = static_cast<qint64>(number(offset + 1, width));
            return true;
        }
        // 16 bytes: a value only when the high half is the sign of the low one.
        const quint64 high = number(offset + 1, 8);
        const quint64 low = number(offset + 9, 8);
        if ((high == 0 && qint64(low) >= 0) || (high == ~quint64(0) && qint64(low) < 0)) {
            value = static_cast<qint64>(low);
        }
        return true;
    }

    QByteArrayView m_data;
    unsigned m_offsetSize = 0;
    unsigned m_refSize = 0;
    quint64 m_objectCount = 0;
    quint64 m_topObject = 0;
    quint64 m_tableOffset = 0;
    quint64 m_objectsEnd = 0;
    quint64 m_keyBudget = 0;
};

// XML property lists: <plist> (optional) around one <dict> of <key> and value elements.
std::optional<WordTable> readXmlPlist(QByteArrayView data)
{
    QXmlStreamReader xml(QByteArray::fromRawData(data.data(), data.size()));
    if (!xml.readNextStartElement()) {
        return std::nullopt;
    }
    if (xml.name() == QLatin1String("plist") && !xml.readNextStartElement()) {
        return std::nullopt;
    }
    if (xml.name() != QLatin1String("dict")) {
        return std::nullopt;
    }

    WordTable table;
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("key")) {
            return std::nullopt;
        }
        const QString key = xml.readElementText();
        if (!xml.readNextStartElement()) {
            return std::nullopt;
        }
        qint64 value = unreadableCount;
        if (xml.name() == QLatin1String("integer")) {
            bool ok = false;
            const qint64 number = xml.readElementText().trimmed().toLongLong(&ok);
            if (ok) {
                value = number;
            }
        } else {
            xml.skipCurrentElement();
        }
        table.insert(key, value);
    }
    if (xml.hasError()) {
        return std::nullopt;
    }
    return table;
}

} // namespace

std::optional<WordTable> ParseWordTable(QByteArrayView data)
{
    if (data.startsWith("bplist")) {
        return BinaryPlist(data).read();
    }
    return readXmlPlist(data);
}

std::optional<WordTable> ReadWordTableDescriptor(int descriptor)
{
    struct stat info {};
    if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size <= 0) {
        return std::nullopt;
    }
    // Mapped rather than read: no copy of what may be hundreds of megabytes. All of it is
    // read in order, so its pages are mapped at once rather than one fault at a time.
    const auto size = static_cast<std::size_t>(info.st_size);
    void* mapped = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descriptor, 0);
    if (mapped == MAP_FAILED) {
        // By position: the descriptor's offset may be shared with the writer.
        QByteArray bytes(qsizetype(size), Qt::Uninitialized);
        std::size_t done = 0;
        while (done < size) {
            const ssize_t n = ::pread(descriptor, bytes.data() + done, size - done, off_t(done));
            if (n <= 0) {
                return std::nullopt;
            }
            done += std::size_t(n);
        }
        return ParseWordTable(bytes);
    }
    std::optional<WordTable> table =
        ParseWordTable(QByteArrayView(static_cast<const char*>(mapped), qsizetype(size)));
    ::munmap(mapped, size);
    return table;
}

std::optional<WordTable> ReadWordTableFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists() || info.isDir()) {
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    if (file.size() > 0) {
        return ReadWordTableDescriptor(file.handle());
    }
    return ParseWordTable(file.readAll());
}

} // namespace tallyvox
