#pragma once

#include "services/naming/FixedString.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace tallyvox {

class Desktop;

/// One row of the extension map: the extension with its leading "." and its MIME type.
struct MapEntry {
    FixedString extension;
    FixedString MIMEType;
};

/// The status for a map or preference that is not there.
inline constexpr qint32 icPrefNotFoundErr = -666;

/// A session on the user's extension/MIME map: ~/.mime.types, then /etc/mime.types, walked
/// as entries in file order. Operations that need a session answer -1 (or false) until
/// Start has succeeded.
class CInternetConfig {
public:
    /// The map files in the order they are read: the user's ~/.mime.types (HOME respected),
    /// then the system's /etc/mime.types.
    static QStringList defaultMapFiles();

    explicit CInternetConfig(quint32 creator, QStringList mapFiles = defaultMapFiles());
    virtual ~CInternetConfig();
    CInternetConfig(const CInternetConfig&) = delete;
    CInternetConfig& operator=(const CInternetConfig&) = delete;

    qint32 Start();
    qint32 Stop();

    /// Reads the map afresh; icPrefNotFoundErr when none of the map files can be read.
    qint32 BeginMapping();
    /// The next entry of an open walk; false when the walk is not open or has ended.
    bool NextMapEntry(MapEntry* entry);
    qint32 EndMapping();

    /// Asks the desktop to open url.
    qint32 LaunchURL(Desktop& desktop, const FixedString& url);
    /// The first map entry whose extension ends name (compared without regard to case).
    qint32 MapFilename(const FixedString& name, MapEntry* entry);
    /// MapFilename for a C string, of which at most 255 bytes are used.
    qint32 MapFilenameC(const char* name, MapEntry* entry);
    /// There are no other Internet preferences to read on Linux: icPrefNotFoundErr.
    qint32 GetPref(const FixedString& key, FixedString* value);
    /// Opens the user's map file in the text editor, if there is one.
    qint32 EditPreferences(Desktop& desktop, const FixedString& key);

    bool available() const { return m_available; }
    bool started() const { return m_started; }
    quint32 creator() const { return m_creator; }

private:
    std::optional<std::vector<MapEntry>> readMap() const;

    QStringList m_mapFiles;
    bool m_available = false;
    bool m_started = false;
    std::optional<std::vector<MapEntry>> m_mapEntries;
    qint32 m_entryCount = 0;
    qint32 m_nextIndex = 1;
    quint32 m_creator = 0;
};

} // namespace tallyvox
