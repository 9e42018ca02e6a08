#include "services/TemporaryFile.h"
#include "support/FilePath.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// The folder's path is converted into a buffer of this many bytes.
constexpr int folderPathBufferSize = 4096;

constexpr char dataFileName[] = "TallyvoxData.txt";

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
    const QByteArray path = encodePath(childPath(parent, name));
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
    const QByteArray path = encodePath(childPath(parent, name));
    if (::mkdir(path.constData(), 0700) != 0) {
        return statusFromErrno(errno);
    }
    outRef = FileRef::fromPath(childPath(parent, name));
    return outRef ? noErr : fnfErr;
}

bool WriteTextToTemporaryFile(const QString& temporaryFolder, const QString& text,
                              std::optional<FileRef>& outRef)
{
    const std::optional<FileRef> temporary =
        temporaryFolder.isEmpty() ? std::nullopt : FileRef::fromPath(temporaryFolder);
    const std::optional<QString> folder =
        temporary ? uuidFolderPath(*temporary) : std::optional<QString>();
    // Without a folder the original wrote to a relative "(null)/..." path, which fails.
    if (!folder) {
        return false;
    }
    // A new file of our own, never one that was there, never through a link.
    const QString path = *folder + QLatin1Char('/') + QLatin1String(dataFileName);
    const int fd = ::open(encodePath(path).constData(),
                          O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0) {
        return false;
    }
    QFile file;
    const QByteArray utf8 = text.toUtf8();
    if (!file.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    if (file.write(utf8) != utf8.size() || !file.flush()) {
        return false;
    }
    file.close();
    outRef = FileRef::fromPath(path);
    return outRef.has_value();
}

int removeOldTemporaryFiles(const QString& temporaryFolder, std::chrono::seconds maxAge)
{
    if (temporaryFolder.isEmpty()) {
        return 0;
    }
    const QDir tallyvox(temporaryFolder + QStringLiteral("/Tallyvox"));
    const std::time_t cutoff = std::time(nullptr) - maxAge.count();
    int removed = 0;
    for (const QString& name :
         tallyvox.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)) {
        // Only folders this code makes: a UUID name, the one copy inside, nothing newer.
        if (QUuid::fromString(name).isNull()) {
            continue;
        }
        const QByteArray folder = encodePath(tallyvox.filePath(name));
        const QByteArray copy = folder + '/' + dataFileName;
        struct stat folderInfo {};
        struct stat copyInfo {};
        if (::lstat(folder.constData(), &folderInfo) != 0 || !S_ISDIR(folderInfo.st_mode) ||
            folderInfo.st_mtime > cutoff) {
            continue;
        }
        const bool hasCopy = ::lstat(copy.constData(), &copyInfo) == 0;
        if (hasCopy && (copyInfo.st_mtime > cutoff || ::unlink(copy.constData()) != 0)) {
            continue;
        }
        if (::rmdir(folder.constData()) == 0) {
            ++removed;
        }
    }
    return removed;
}

} // namespace tallyvox
