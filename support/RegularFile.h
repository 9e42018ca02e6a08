#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tallyvox {

/// What reading a file that must be a regular one of bounded size gave.
struct RegularFileRead {
    /// The whole file; nothing when it is missing, is no regular file (a named pipe, a
    /// device, a folder), is larger than the limit, or cannot be read.
    std::optional<QByteArray> bytes;
    /// Nothing was there to read at all (ENOENT).
    bool missing = false;
};

/// Reads path whole when it is a regular file of at most limit bytes. It is opened
/// without waiting and looked at before it is read, so a named pipe put in its place
/// cannot hold the application, and a file that grows meanwhile is refused.
RegularFileRead readRegularFile(const QString& path, qint64 limit);

} // namespace tallyvox
