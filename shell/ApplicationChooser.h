#pragma once

#include <QString>
#include <QUrl>

namespace tallyvox {

/// Opens files with the application the desktop's MIME-apps rules (mimeapps.list, the
/// desktop entries' MimeType lines) pick for a type, through GIO. The type is the caller's,
/// never sniffed from the content, and Tallyvox is never chosen: where the desktop entry
/// that lists our types (or another entry whose Exec line runs Tallyvox) has become the
/// default, every list would come back, and make a list of itself, until the path limit.
class ApplicationChooser {
public:
    /// ownDesktopId: our desktop entry's file name, "com.okaluna.Tallyvox.desktop".
    explicit ApplicationChooser(QString ownDesktopId);

    /// The desktop id of the default application for the type, or, when that is ours, of
    /// the first recommended one that is not; empty when there is none.
    QString applicationFor(const QString& mimeType) const;
    /// Starts that application with the URL (a file: URL for a file), without waiting for
    /// it; false when there is none or it could not be started.
    bool open(const QUrl& url, const QString& mimeType) const;

private:
    QString m_ownDesktopId;
};

/// Asks the file manager (org.freedesktop.FileManager1.ShowItems on the session bus) to
/// show the file in its folder; false when no file manager could be asked.
bool showInFileManager(const QString& path);

} // namespace tallyvox
