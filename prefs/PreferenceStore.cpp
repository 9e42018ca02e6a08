#include "prefs/PreferenceStore.h"

#include "prefs/PlistLimits.h"
#include "support/RegularFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <plist/plist.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>

#include <sys/stat.h>

namespace tallyvox {

namespace {

struct PlistDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistPtr = std::unique_ptr<std::remove_pointer_t<plist_t>, PlistDeleter>;

// The stored dictionary; missing when there is no file, unreadable when there is one
// that is not a dictionary within the limits.
struct Stored {
    PlistPtr dict;
    bool unreadable = false;
};

Stored readStored(const QString& path)
{
    // A named pipe put in the settings file's place must not hold every read.
    const PlistLimits limits;
    const RegularFileRead read = readRegularFile(path, limits.largestFile);
    if (!read.bytes) {
        return {nullptr, !read.missing};
    }
    const QByteArray& bytes = *read.bytes;
    if (bytes.isEmpty() || !withinPlistLimits(bytes, limits)) {
        return {nullptr, true};
    }
    plist_t root = nullptr;
    plist_from_memory(bytes.constData(), static_cast<uint32_t>(bytes.size()), &root);
    PlistPtr dict(root);
    if (!dict || plist_get_node_type(dict.get()) != PLIST_DICT) {
        return {nullptr, true};
    }
    return {std::move(dict), false};
}

// The whole stored dictionary, or nothing when the file is missing or is not one.
PlistPtr readDictionary(const QString& path)
{
    return readStored(path).dict;
}

// Read-modify-write of one key; the file is replaced only once the new one is complete.
// A file that cannot be read is moved aside first, so writing loses nothing.
bool writeItem(const QString& path, const char* key, plist_t item)
{
    PlistPtr itemOwner(item);
    Stored stored = readStored(path);
    if (stored.unreadable) {
        const QString aside = path + QStringLiteral(".bad");
        QFile::remove(aside);
        if (!QFile::rename(path, aside)) {
            return false;
        }
    }
    PlistPtr dict = std::move(stored.dict);
    if (!dict) {
        dict.reset(plist_new_dict());
    }
    plist_dict_set_item(dict.get(), key, itemOwner.release());

    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(dict.get(), &xml, &length);
    if (!xml) {
        return false;
    }
    const QByteArray bytes(xml, static_cast<qsizetype>(length));
    plist_to_xml_free(xml);

    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return false;
    }
    return file.commit();
}

} // namespace

std::optional<QString> PreferenceStore::refusal() const
{
    struct stat info {};
    if (::stat(QFile::encodeName(m_path).constData(), &info) != 0 || S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    return QCoreApplication::translate(
               "tallyvox::PreferenceStore",
               "The settings file \"%1\" is no regular file; Tallyvox uses its "
               "default settings and sets it aside at the first change.")
        .arg(m_path);
}

namespace {

bool isNumber(plist_t node)
{
    return node &&
           (plist_get_node_type(node) == PLIST_UINT || plist_get_node_type(node) == PLIST_REAL);
}

// A number node's value when it is a whole number from low to high.
std::optional<qint64> wholeNumberWithin(plist_t node, qint64 low, qint64 high)
{
    if (plist_get_node_type(node) == PLIST_UINT) {
        uint64_t raw = 0;
        plist_get_uint_val(node, &raw);
        // Negative values are stored as the two's complement that the format uses.
        const auto value = static_cast<qint64>(raw);
        if (value < low || value > high) {
            return std::nullopt;
        }
        return value;
    }
    double value = 0;
    plist_get_real_val(node, &value);
    if (!(value >= static_cast<double>(low) && value <= static_cast<double>(high)) ||
        std::trunc(value) != value) {
        return std::nullopt;
    }
    return static_cast<qint64>(value);
}

} // namespace

QString PreferenceStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Okaluna Software/Tallyvox.plist");
}

PreferenceStore::PreferenceStore(QString path) : m_path(std::move(path)) {}

PreferenceStore PreferenceStore::snapshot() const
{
    PreferenceStore frozen(m_path);
    PlistPtr dict = readDictionary(m_path);
    // An empty dictionary stands for a missing or unreadable file: every key its default.
    frozen.m_frozen = std::shared_ptr<void>(dict ? dict.release() : plist_new_dict(), plist_free);
    return frozen;
}

void* PreferenceStore::item(const char* key, std::shared_ptr<void>& owner) const
{
    owner = m_frozen;
    if (!owner) {
        if (PlistPtr dict = readDictionary(m_path)) {
            owner = std::shared_ptr<void>(dict.release(), plist_free);
        }
    }
    return owner ? plist_dict_get_item(owner.get(), key) : nullptr;
}

bool PreferenceStore::readBool(const prefs::BoolKey& key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key.name, owner);
    if (!node || plist_get_node_type(node) != PLIST_BOOLEAN) {
        return key.fallback;
    }
    uint8_t value = 0;
    plist_get_bool_val(node, &value);
    return value != 0;
}

qint32 PreferenceStore::readNumber(const prefs::NumberKey& key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key.name, owner);
    if (!isNumber(node)) {
        return key.fallback;
    }
    // A number that does not convert to 16 bits without loss reads as 1, whatever
    // the key's own default: that is what the conversion failure gives.
    constexpr qint32 conversionFailure = 1;
    return static_cast<qint32>(wholeNumberWithin(node, std::numeric_limits<qint16>::min(),
                                                 std::numeric_limits<qint16>::max())
                                   .value_or(conversionFailure));
}

qint32 PreferenceStore::readInteger(const prefs::IntegerKey& key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key.name, owner);
    if (!isNumber(node)) {
        return key.fallback;
    }
    return static_cast<qint32>(wholeNumberWithin(node, std::numeric_limits<qint32>::min(),
                                                 std::numeric_limits<qint32>::max())
                                   .value_or(key.fallback));
}

double PreferenceStore::readReal(const prefs::RealKey& key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key.name, owner);
    if (!isNumber(node)) {
        return key.fallback;
    }
    if (plist_get_node_type(node) == PLIST_UINT) {
        uint64_t raw = 0;
        plist_get_uint_val(node, &raw);
        // Negative values are stored as the two's complement that the format uses.
        return static_cast<double>(static_cast<qint64>(raw));
    }
    double value = 0;
    plist_get_real_val(node, &value);
    return std::isfinite(value) ? value : key.fallback;
}

QString PreferenceStore::readString(const prefs::StringKey& key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key.name, owner);
    if (!node || plist_get_node_type(node) != PLIST_STRING) {
        return QString::fromUtf8(key.fallback);
    }
    char* text = nullptr;
    plist_get_string_val(node, &text);
    QString result = QString::fromUtf8(text);
    std::free(text);
    return result;
}

std::optional<QByteArray> PreferenceStore::readData(const char* key) const
{
    std::shared_ptr<void> owner;
    plist_t node = item(key, owner);
    if (!node || plist_get_node_type(node) != PLIST_DATA) {
        return std::nullopt;
    }
    char* bytes = nullptr;
    uint64_t length = 0;
    plist_get_data_val(node, &bytes, &length);
    QByteArray result(bytes, static_cast<qsizetype>(length));
    std::free(bytes);
    return result;
}

bool PreferenceStore::writeBool(const prefs::BoolKey& key, bool value)
{
    return writeItem(m_path, key.name, plist_new_bool(value ? 1 : 0));
}

bool PreferenceStore::writeNumber(const prefs::NumberKey& key, qint16 value)
{
    // Negative values are stored as the two's complement that the format uses.
    return writeItem(m_path, key.name,
                     plist_new_uint(static_cast<uint64_t>(static_cast<qint64>(value))));
}

bool PreferenceStore::writeInteger(const prefs::IntegerKey& key, qint32 value)
{
    return writeItem(m_path, key.name,
                     plist_new_uint(static_cast<uint64_t>(static_cast<qint64>(value))));
}

bool PreferenceStore::writeReal(const prefs::RealKey& key, double value)
{
    return writeItem(m_path, key.name, plist_new_real(value));
}

bool PreferenceStore::writeString(const prefs::StringKey& key, const QString& value)
{
    return writeItem(m_path, key.name, plist_new_string(value.toUtf8().constData()));
}

bool PreferenceStore::writeData(const char* key, const QByteArray& value)
{
    return writeItem(m_path, key,
                     plist_new_data(value.constData(), static_cast<uint64_t>(value.size())));
}

std::optional<QRect> PreferenceStore::readWindowBounds() const
{
    const std::optional<QByteArray> bytes = readData(prefs::WindowBounds);
    return bytes ? decodeWindowBounds(*bytes) : std::nullopt;
}

bool PreferenceStore::writeWindowBounds(const QRect& bounds)
{
    return writeData(prefs::WindowBounds, encodeWindowBounds(bounds));
}

QByteArray encodeWindowBounds(const QRect& bounds)
{
    const qint16 values[4] = {
        static_cast<qint16>(bounds.top()),
        static_cast<qint16>(bounds.left()),
        static_cast<qint16>(bounds.top() + bounds.height()),
        static_cast<qint16>(bounds.left() + bounds.width()),
    };
    QByteArray bytes;
    for (qint16 value : values) {
        const auto bits = static_cast<quint16>(value);
        bytes.append(static_cast<char>(bits >> 8));
        bytes.append(static_cast<char>(bits & 0xFF));
    }
    return bytes;
}

std::optional<QRect> decodeWindowBounds(const QByteArray& bytes)
{
    if (bytes.size() != 8) {
        return std::nullopt;
    }
    qint16 values[4];
    for (int i = 0; i < 4; ++i) {
        const auto high = static_cast<quint8>(bytes[qsizetype{2} * i]);
        const auto low = static_cast<quint8>(bytes[qsizetype{2} * i + 1]);
        values[i] = static_cast<qint16>(static_cast<quint16>((high << 8) | low));
    }
    const int top = values[0], left = values[1], bottom = values[2], right = values[3];
    return QRect(left, top, right - left, bottom - top);
}

} // namespace tallyvox
