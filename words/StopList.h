#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>

namespace tallyvox {

/// The largest stop list read: a language's whole vocabulary fits many times over.
inline constexpr qint64 largestStopList = qint64{16} * 1024 * 1024;

/// The words of a stop list's text: UTF-8, one word a line, "#" starts a comment that runs
/// to the end of its line, white space around a word and blank lines do not count, and a
/// byte-order mark at the start is skipped. Bytes that are not UTF-8 become U+FFFD.
QSet<QString> parseStopList(const QByteArray& bytes);

/// The file that a "StopListPath" setting names: "~/" and any other relative path are
/// taken from the home folder, since a working folder is nothing the user chose.
QString stopListFile(const QString& setting);

/// The words of the stop list that setting names; nothing when it is not a regular file
/// that can be read whole, or is larger than largestStopList.
std::optional<QSet<QString>> readStopList(const QString& setting);

} // namespace tallyvox
