#pragma once

#include "support/Status.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tallyvox {

/// A reference to an existing file-system object: its absolute path, made only
/// while the object exists. A symbolic link stands for what it names but keeps
/// its own name.
class FileRef {
public:
    /// A reference to the object at path, or nothing when it does not exist.
    static std::optional<FileRef> fromPath(const QString& path);

    const QString& path() const { return m_path; }

    /// The path as UTF-8 bytes for a buffer of bufferSize bytes, which holds at most
    /// bufferSize - 1 of them (the terminating zero takes the last).
    Status makePath(QByteArray& out, int bufferSize) const;

    /// The last path component as the file system stores it.
    QString name() const;

    bool isDirectory() const;

    friend bool operator==(const FileRef&, const FileRef&) = default;

private:
    explicit FileRef(QString path) : m_path(std::move(path)) {}
    QString m_path;
};

/// The file's full name as the file system stores it now, extension kept; nothing when
/// the object can no longer be found. The one check of a name before it is used.
std::optional<QString> CopyFileName(const FileRef& file);

/// The status for a path that does not fit its buffer.
inline constexpr Status pathTooLongStatus = -2110;

} // namespace tallyvox
