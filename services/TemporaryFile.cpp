#include "services/TemporaryFile.h"

#include "support/TemporaryFolder.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <cerrno>
#include <sys/stat.h>

namespace tallyvox {

namespace {

// The folder's path is converted into a buffer of this many bytes.
constexpr int folderPathBufferSize = 4096;

QString childPath(const FileRef& parent, const QString& name)
{
    return parent.path() + QLatin1Char('/') + name;
}

std::optional<QString> uuidFolderPath(const FileRef& temporary)
{
    std::optional<FileRef> tallyvox;
    const QString folderName = QStringLiteral("Tallyvox");
    if (!MakeChildRef(temporary, folderName, tallyvox) &&
        CreateChildFolder(temporary, folderName, tallyvox) != noErr) {
        return std::nullopt;
    }
    if (!tallyvox) {
        return std::nullopt;
    }
    // Upper case, as the canonical UUID string of the original platform.
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    std::optional<FileRef> folder;
    if (CreateChildFolder(*tallyvox, uuid, folder) != noErr || !folder) {
        return std::nullopt;
    }
    QByteArray path;
    if (folder->makePath(path, folderPathBufferSize) != noErr) {
        return std::nullopt;
    }
    return QString::fromUtf8(path);
}

} // namespace

bool MakeChildRef(const FileRef& parent, const QString& name, std::optional<FileRef>& outRef)
{
    struct stat info {};
    const QByteArray path = QFile::encodeName(childPath(parent, name));
    if (::lstat(path.constData(), &info) != 0) {
        outRef.reset();
        return statusFromErrno(errno) != fnfErr;
    }
    outRef = FileRef::fromPath(childPath(parent, name));
    return true;
}

Status CreateChildFolder(const FileRef& parent, const QString& name, std::optional<FileRef>& outRef)
{
    if (MakeChildRef(parent, name, outRef)) {
        return noErr;
    }
    const QByteArray path = QFile::encodeName(childPath(parent, name));
    if (::mkdir(path.constData(), 0700) != 0) {
        return statusFromErrno(errno);
    }
    outRef = FileRef::fromPath(childPath(parent, name));
    return outRef ? noErr : fnfErr;
}

bool WriteTextToTemporaryFile(const QString& text, std::optional<FileRef>& outRef)
{
    const std::optional<FileRef> temporary =
        FileRef::fromPath(QFile::decodeName(temporaryFolder().c_str()));
    const std::optional<QString> folder =
        temporary ? uuidFolderPath(*temporary) : std::optional<QString>();
    // Without a folder the original wrote to a relative "(null)/..." path, which fails.
    if (!folder) {
        return false;
    }
    QFile file(*folder + QStringLiteral("/TallyvoxData.txt"));
    const QByteArray utf8 = text.toUtf8();
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(utf8) != utf8.size()) {
        return false;
    }
    file.close();
    outRef = FileRef::fromPath(file.fileName());
    return outRef.has_value();
}

} // namespace tallyvox
