#include "support/FileRef.h"
#include "support/FilePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace tallyvox {

std::optional<FileRef> FileRef::fromPath(const QString& path)
{
    if (path.isEmpty()) {
        return std::nullopt;
    }
    QString absolute = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    struct stat info {};
    if (::stat(encodePath(absolute).constData(), &info) != 0) {
        return std::nullopt;
    }
    return FileRef(std::move(absolute));
}

Status FileRef::makePath(QByteArray& out, int bufferSize) const
{
    QByteArray bytes = encodePath(m_path);
    if (bytes.size() > bufferSize - 1) {
        return pathTooLongStatus;
    }
    out = std::move(bytes);
    return noErr;
}

QString FileRef::name() const
{
    if (m_path == QStringLiteral("/")) {
        return m_path;
    }
    return m_path.section(QLatin1Char('/'), -1);
}

bool FileRef::isDirectory() const
{
    struct stat info {};
    return ::stat(encodePath(m_path).constData(), &info) == 0 && S_ISDIR(info.st_mode);
}

std::optional<QString> CopyFileName(const FileRef& file)
{
    // lstat: a link that stands for its target keeps its own name, and that is all we read.
    struct stat info {};
    if (::lstat(encodePath(file.path()).constData(), &info) != 0) {
        return std::nullopt;
    }
    return file.name();
}

} // namespace tallyvox
