#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>

namespace tallyvox {

// File names on Linux are bytes, and not all of them are UTF-8. Qt's own conversions
// (QFile::encodeName, QUrl::toLocalFile, QProcess arguments) turn the rest into U+FFFD,
// and the file can no longer be found. These keep every byte: UTF-8 is read as text, and
// each byte of anything else becomes a lone surrogate U+DC80..U+DCFF, which valid UTF-8
// never holds, so the way back is exact.

/// A path's bytes as a string that encodePath turns back into the same bytes.
QString decodePath(QByteArrayView bytes);

/// The bytes a path string stands for; the inverse of decodePath.
QByteArray encodePath(QStringView path);

/// The local path of a file: URL (host empty or "localhost"), its percent-encoded bytes
/// kept; nothing for any other URL.
std::optional<QString> pathOfFileUrl(const QUrl& url);

/// A file: URL for a path, every byte of it percent-encoded as needed.
QUrl fileUrlOfPath(const QString& path);

} // namespace tallyvox
