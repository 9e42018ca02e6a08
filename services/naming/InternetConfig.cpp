#include "services/naming/InternetConfig.h"

#include "support/Desktop.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QUrl>

namespace tallyvox {

namespace {

// mime.types: "type/subtype ext ext ...", one type a line, "#" starts a comment. A line
// lists its extensions in no particular order ("image/jpeg jpeg jpg jpe jfif"), while
// the first entry of a type is the one a lookup takes; so the extension the shared MIME
// database prefers for the type goes first when the line has it, the rest follow in
// their order.
void parseMapFile(const QByteArray& content, std::vector<MapEntry>& entries)
{
    const QMimeDatabase database;
    for (QByteArray line : content.split('\n')) {
        const qsizetype hash = line.indexOf('#');
        if (hash >= 0) {
            line.truncate(hash);
        }
        QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 2 || !fields.first().contains('/')) {
            continue;
        }
        const QByteArray type = fields.takeFirst();
        const QByteArray preferred =
            database.mimeTypeForName(QString::fromLatin1(type)).preferredSuffix().toLatin1();
        if (const qsizetype at = fields.indexOf(preferred); at > 0) {
            fields.move(at, 0);
        }
        for (const QByteArray& extension : fields) {
            MapEntry entry;
            entry.extension.assign(".").append(extension.constData());
            entry.MIMEType.assign(type.constData());
            entries.push_back(entry);
        }
    }
}

} // namespace

QStringList CInternetConfig::defaultMapFiles()
{
    return {QDir::homePath() + QStringLiteral("/.mime.types"), QStringLiteral("/etc/mime.types")};
}

CInternetConfig::CInternetConfig(quint32 creator, QStringList mapFiles)
    : m_mapFiles(std::move(mapFiles)), m_creator(creator)
{
    for (const QString& file : m_mapFiles) {
        if (QFileInfo(file).isReadable()) {
            m_available = true;
        }
    }
}

CInternetConfig::~CInternetConfig()
{
    if (m_started) {
        Stop();
    }
}

qint32 CInternetConfig::Start()
{
    m_started = true;
    return 0;
}

qint32 CInternetConfig::Stop()
{
    if (!m_started) {
        return 0;
    }
    m_started = false;
    m_mapEntries.reset();
    return 0;
}

std::optional<std::vector<MapEntry>> CInternetConfig::readMap() const
{
    std::optional<std::vector<MapEntry>> entries;
    for (const QString& path : m_mapFiles) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        if (!entries) {
            entries.emplace();
        }
        parseMapFile(file.readAll(), *entries);
    }
    return entries;
}

qint32 CInternetConfig::BeginMapping()
{
    m_nextIndex = 1;
    if (!m_started) {
        return -1;
    }
    m_mapEntries = readMap();
    if (!m_mapEntries) {
        return icPrefNotFoundErr;
    }
    m_entryCount = static_cast<qint32>(m_mapEntries->size());
    return 0;
}

bool CInternetConfig::NextMapEntry(MapEntry* entry)
{
    if (!m_started || !m_mapEntries || m_nextIndex > m_entryCount) {
        return false;
    }
    *entry = (*m_mapEntries)[static_cast<std::size_t>(m_nextIndex - 1)];
    ++m_nextIndex;
    return true;
}

qint32 CInternetConfig::EndMapping()
{
    if (!m_started || !m_mapEntries) {
        return -1;
    }
    m_mapEntries.reset();
    return 0;
}

qint32 CInternetConfig::LaunchURL(Desktop& desktop, const FixedString& url)
{
    if (!m_started) {
        return -1;
    }
    return desktop.openUrl(QUrl::fromEncoded(QByteArray(url.c_str()))) ? 0 : icPrefNotFoundErr;
}

qint32 CInternetConfig::MapFilename(const FixedString& name, MapEntry* entry)
{
    if (!m_started) {
        return -1;
    }
    const std::optional<std::vector<MapEntry>> entries = readMap();
    if (!entries) {
        return icPrefNotFoundErr;
    }
    const QByteArray lowerName = QByteArray(name.c_str()).toLower();
    for (const MapEntry& candidate : *entries) {
        if (lowerName.endsWith(QByteArray(candidate.extension.c_str()).toLower())) {
            *entry = candidate;
            return 0;
        }
    }
    return icPrefNotFoundErr;
}

qint32 CInternetConfig::MapFilenameC(const char* name, MapEntry* entry)
{
    FixedString copy;
    copy.assign(name);
    if (!m_started) {
        return -1;
    }
    return MapFilename(copy, entry);
}

qint32 CInternetConfig::GetPref(const FixedString& /*key*/, FixedString* /*value*/)
{
    if (!m_started) {
        return -1;
    }
    return icPrefNotFoundErr;
}

qint32 CInternetConfig::EditPreferences(Desktop& desktop, const FixedString& /*key*/)
{
    if (!m_started) {
        return -1;
    }
    if (m_mapFiles.isEmpty() || !QFileInfo::exists(m_mapFiles.first())) {
        return icPrefNotFoundErr;
    }
    desktop.openInTextEditor(m_mapFiles.first());
    return 0;
}

} // namespace tallyvox
