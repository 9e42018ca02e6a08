#include "services/naming/NameFileByContentType.h"
#include "support/FilePath.h"

#include "services/naming/FileHelpers.h"
#include "services/naming/InternetConfig.h"
#include "support/Desktop.h"

#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QMimeDatabase>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

namespace tallyvox {

namespace {

constexpr quint32 fourCharCode(const char (&code)[5])
{
    return (quint32(quint8(code[0])) << 24) | (quint32(quint8(code[1])) << 16) |
           (quint32(quint8(code[2])) << 8) | quint32(quint8(code[3]));
}

// The creator the extension-map session is opened with.
constexpr quint32 namingCreator = fourCharCode("VnTl");

// A rename whose result is what UTF-16 names of at most 255 bytes allow.
constexpr qsizetype maxRenameUnits = 255 / 2;

std::vector<ExporterRecord>& exporterTable()
{
    static std::vector<ExporterRecord> table;
    return table;
}

void copyField(char (&field)[256], const QByteArray& bytes)
{
    const std::size_t count = std::min<std::size_t>(bytes.size(), sizeof field - 1);
    std::memcpy(field, bytes.constData(), count);
    field[count] = '\0';
}

std::optional<QString> pathExtension(const QString& name)
{
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    if (dot < 0) {
        return std::nullopt;
    }
    return name.mid(dot + 1);
}

// Refuses to replace an existing item: a rename must never destroy another file.
Status renameWithoutReplacing(const QString& from, const QString& to)
{
    const QByteArray source = encodePath(from);
    const QByteArray target = encodePath(to);
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) ==
        0) {
        return noErr;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return statusFromErrno(errno);
    }
    // File systems without RENAME_NOREPLACE: check, then rename.
    struct stat info = {};
    if (::lstat(target.constData(), &info) == 0) {
        return statusFromErrno(EEXIST);
    }
    if (::rename(source.constData(), target.constData()) != 0) {
        return statusFromErrno(errno);
    }
    return noErr;
}

} // namespace

const std::vector<ExporterRecord>& ExporterTable()
{
    return exporterTable();
}

qint16 LoadGraphicExporters(Desktop& desktop)
{
    std::vector<ExporterRecord>& table = exporterTable();
    table.clear();
    const QList<QByteArray> mimeTypes = QImageWriter::supportedMimeTypes();
    const auto count = static_cast<qint16>(mimeTypes.size());
    if (count == 0) {
        return 0;
    }

    // The loading line gets a dot a record, as it did on the console.
    QString loading = QStringLiteral("Vantrel: Loading %1 Quicktime exporters").arg(count);
    const QMimeDatabase database;
    for (const QByteArray& mimeType : mimeTypes) {
        loading += QLatin1Char('.');
        const QByteArray format = QImageWriter::imageFormatsForMimeType(mimeType).value(0);
        const QMimeType type = database.mimeTypeForName(QString::fromLatin1(mimeType));

        ExporterRecord record;
        const QByteArray code = format.toUpper().leftJustified(4, ' ', true);
        for (int i = 0; i < 4; ++i) {
            record.fileTypeText[i] = code[i];
        }
        record.fileType = fourCharCode(record.fileTypeText);
        record.fileTypeString = QString::fromLatin1(record.fileTypeText);
        copyField(record.description, type.comment().toUtf8());
        record.descriptionString = QString::fromUtf8(record.description);
        const QString suffix = type.preferredSuffix();
        copyField(record.extension, suffix.isEmpty() ? format : suffix.toUtf8());
        record.extensionString = QString::fromUtf8(record.extension);
        copyField(record.mimeType, mimeType);
        record.mimeTypeString = QString::fromUtf8(record.mimeType);
        table.push_back(record);
    }
    desktop.log(loading);
    desktop.log(QStringLiteral("Vantrel: Quicktime exporters successfully loaded."));
    return count;
}

StringMap& MimeExtensionCache()
{
    static StringMap cache;
    return cache;
}

QList<QByteArray> ImageMimeTypesOfFile(const QString& path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    QList<QByteArray> result;
    if (format.isEmpty()) {
        return result;
    }
    for (const QByteArray& mimeType : QImageReader::supportedMimeTypes()) {
        if (QImageReader::imageFormatsForMimeType(mimeType).contains(format)) {
            result.append(mimeType);
        }
    }
    return result;
}

namespace {

std::optional<FixedString> cachedExtension(const FixedString& mime)
{
    if (const StringMap::Node* cached = MimeExtensionCache().find(mime.c_str())) {
        return cached->value;
    }
    return std::nullopt;
}

// The first exporter of the type; its extension is cached.
std::optional<FixedString> exporterExtension(const FixedString& mime)
{
    for (const ExporterRecord& record : ExporterTable()) {
        if (std::strcmp(record.mimeType, mime.c_str()) == 0) {
            FixedString ext;
            ext.assign(".").append(record.extension);
            MimeExtensionCache().getOrInsert(mime.c_str())->value = ext;
            return ext;
        }
    }
    return std::nullopt;
}

// The first entry of the extension map for the type. Not cached: the user may edit the
// map at any time.
std::optional<FixedString> mapExtension(const FixedString& mime)
{
    std::optional<FixedString> ext;
    CInternetConfig session(namingCreator);
    session.Start();
    session.BeginMapping();
    MapEntry entry;
    while (session.NextMapEntry(&entry)) {
        if (std::strcmp(entry.MIMEType.c_str(), mime.c_str()) == 0) {
            ext = entry.extension;
            break;
        }
    }
    session.EndMapping();
    session.Stop();
    return ext;
}

struct TypeMatch {
    FixedString extension;
    FixedString mimeType;
};

// Every type is looked up; the last one that matched wins.
std::optional<TypeMatch> lastMatchingType(const QList<QByteArray>& mimeTypes)
{
    std::optional<TypeMatch> found;
    for (const QByteArray& listed : mimeTypes) {
        FixedString mime;
        mime.assign(listed.left(FixedString::maxLength).constData());
        std::optional<FixedString> ext = cachedExtension(mime);
        if (!ext) {
            ext = exporterExtension(mime);
        }
        if (!ext) {
            ext = mapExtension(mime);
        }
        if (ext) {
            if (std::strcmp(ext->c_str(), ".jfif") == 0) {
                ext->assign(".jpg");
            }
            found = TypeMatch{*ext, mime};
        }
    }
    return found;
}

// The extensions the map gives the type, without their dots.
QStringList mapExtensionsOf(const FixedString& mime)
{
    QStringList extensions;
    CInternetConfig session(namingCreator);
    session.Start();
    session.BeginMapping();
    MapEntry entry;
    while (session.NextMapEntry(&entry)) {
        if (std::strcmp(entry.MIMEType.c_str(), mime.c_str()) == 0) {
            extensions.append(QString::fromUtf8(entry.extension.c_str()).remove(0, 1));
        }
    }
    session.EndMapping();
    session.Stop();
    return extensions;
}

} // namespace

std::optional<FixedString> ExtensionForMimeTypes(const QList<QByteArray>& mimeTypes)
{
    if (const std::optional<TypeMatch> match = lastMatchingType(mimeTypes)) {
        return match->extension;
    }
    return std::nullopt;
}

bool NameFileByContentType(Desktop& desktop, const FileRef& file, std::optional<FileRef>& renamed)
{
    const std::optional<QString> oldExt = pathExtension(file.name());
    const QList<QByteArray> mimeTypes = ImageMimeTypesOfFile(file.path());
    if (mimeTypes.isEmpty()) {
        return false;
    }
    const std::optional<TypeMatch> match = lastMatchingType(mimeTypes);
    if (!match) {
        return false;
    }

    QString name;
    if (GetItemName(file, &name) != noErr) {
        return false;
    }
    QString newName = name;
    const QString extText = QString::fromUtf8(match->extension.c_str());
    const QString bare = extText.startsWith(QLatin1Char('.')) ? extText.mid(1) : extText;
    // The old extension is never removed, only left alone when it is already one of the
    // type's: photo.JPG and photo.jpeg stay as they are, photo.dat becomes photo.dat.jpg.
    QStringList fitting = mapExtensionsOf(match->mimeType);
    fitting.append(bare);
    if (!oldExt || !fitting.contains(*oldExt, Qt::CaseInsensitive)) {
        newName += extText;
    }
    newName.truncate(maxRenameUnits);
    if (!newName.isEmpty() && newName.back().isHighSurrogate()) {
        newName.chop(1);
    }
    if (newName.isEmpty() || newName.contains(QLatin1Char('/')) || newName == QLatin1String(".") ||
        newName == QLatin1String("..")) {
        return false;
    }

    const QString directory = file.path().left(file.path().lastIndexOf(QLatin1Char('/')));
    const QString newPath = directory + QLatin1Char('/') + newName;
    if (newName != name && renameWithoutReplacing(file.path(), newPath) != noErr) {
        return false;
    }
    renamed = FileRef::fromPath(newPath);
    if (!renamed) {
        return false;
    }
    // Extensions are never hidden on Linux, so making them visible has nothing to do.
    FinderUpdateItem(desktop, *renamed);
    return true;
}

} // namespace tallyvox
