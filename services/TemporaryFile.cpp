#include "services/TemporaryFile.h"
#include "support/FilePath.h"

#include <QDir>
#include <QIODevice>
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

namespace {

// A new TallyvoxData.txt of our own in a fresh UUID folder, never one that was there,
// never through a link; -1 when any step fails.
int createDataFile(const QString& temporaryFolder, QString& path)
{
    const std::optional<FileRef> temporary =
        temporaryFolder.isEmpty() ? std::nullopt : FileRef::fromPath(temporaryFolder);
    const std::optional<QString> folder =
        temporary ? uuidFolderPath(*temporary) : std::optional<QString>();
    // Without a folder the original wrote to a relative "(null)/..." path, which fails.
    if (!folder) {
        return -1;
    }
    path = *folder + QLatin1Char('/') + QLatin1String(dataFileName);
    return ::open(encodePath(path).constData(),
                  O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
}

bool writeWhole(int fd, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(fd, bytes.data(), std::size_t(bytes.size()));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        bytes = bytes.sliced(written);
    }
    return true;
}

// Closes fd; the file's reference when everything was written and closed.
bool finishDataFile(int fd, bool written, const QString& path, std::optional<FileRef>& outRef)
{
    if (::close(fd) != 0 || !written) {
        return false;
    }
    outRef = FileRef::fromPath(path);
    return outRef.has_value();
}

} // namespace

bool WriteTextToTemporaryFile(const QString& temporaryFolder, const QString& text,
                              std::optional<FileRef>& outRef)
{
    QString path;
    const int fd = createDataFile(temporaryFolder, path);
    if (fd < 0) {
        return false;
    }
    return finishDataFile(fd, writeWhole(fd, text.toUtf8()), path, outRef);
}

bool writeStreamToTemporaryFile(const QString& temporaryFolder, QByteArrayView head,
                                QIODevice& input, std::optional<FileRef>& outRef)
{
    QString path;
    const int fd = createDataFile(temporaryFolder, path);
    if (fd < 0) {
        return false;
    }
    bool written = writeWhole(fd, head);
    QByteArray block(qsizetype(1) << 20, Qt::Uninitialized);
    while (written) {
        const qint64 n = input.read(block.data(), block.size());
        if (n <= 0) {
            written = n == 0;
            break;
        }
        written = writeWhole(fd, QByteArrayView(block.constData(), n));
    }
    return finishDataFile(fd, written, path, outRef);
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
