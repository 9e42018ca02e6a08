#include "words/OutputFolder.h"
#include "support/FilePath.h"

#include "support/Desktop.h"
#include "support/FileRefPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// Any status that is not noErr does; callers only test for success.
constexpr Status noFolderStatus = fnfErr;

QString childPath(const FileRef& folder, const QString& name)
{
    return folder.path() == QLatin1String("/") ? QLatin1Char('/') + name
                                               : folder.path() + QLatin1Char('/') + name;
}

// The file system, not this code, decides which names it takes; only a name that would
// reach into another folder is refused.
bool isSingleName(const QString& name)
{
    return !name.isEmpty() && !name.contains(QLatin1Char('/')) && name != QLatin1String(".") &&
           name != QLatin1String("..");
}

Status lookUp(const QString& path)
{
    struct stat info = {};
    if (::lstat(encodePath(path).constData(), &info) != 0) {
        return statusFromErrno(errno);
    }
    return noErr;
}

Status makeDirectory(const QString& path)
{
    if (::mkdir(encodePath(path).constData(), 0777) != 0) {
        return statusFromErrno(errno);
    }
    return noErr;
}

bool writeAll(int fd, const QByteArray& bytes)
{
    const char* data = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t written = ::write(fd, data, static_cast<size_t>(left));
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written <= 0) {
            return false;
        }
        data += written;
        left -= written;
    }
    return true;
}

// A new, empty file of that name in folder, replacing (by deleting) any item of that name.
Status createFileIn(const FileRef& folder, const QString& fileName, std::optional<FileRef>& outFile)
{
    if (!isSingleName(fileName)) {
        return paramErr;
    }

    const QString path = childPath(folder, fileName);
    const QByteArray encoded = encodePath(path);
    Status status = lookUp(path);
    // An old list is replaced, never appended to: delete it first.
    if (status == noErr) {
        status = std::remove(encoded.constData()) == 0 ? noErr : statusFromErrno(errno);
    }
    if (status == noErr || status == fnfErr) {
        const int fd = ::open(encoded.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0) {
            status = statusFromErrno(errno);
        } else {
            ::close(fd);
            outFile = FileRef::fromPath(path);
            status = outFile ? noErr : fnfErr;
        }
    }
    return status;
}

} // namespace

bool FindOrCreateMakerFolder(std::optional<FileRef>& outFolder)
{
    const QString dataHome = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (dataHome.isEmpty() || !QDir().mkpath(dataHome)) {
        return false;
    }
    const std::optional<FileRef> base = FileRef::fromPath(dataHome);
    if (!base) {
        return false;
    }

    const QString path = childPath(*base, QStringLiteral("Okaluna Software"));
    const Status lookup = lookUp(path);
    if (lookup != fnfErr) {
        outFolder = FileRef::fromPath(path);
        return true;
    }
    if (makeDirectory(path) != noErr) {
        return false;
    }
    outFolder = FileRef::fromPath(path);
    return true;
}

Status FindOrCreateOutputFolder(std::optional<FileRef>& outFolder)
{
    std::optional<FileRef> maker;
    if (!FindOrCreateMakerFolder(maker)) {
        return noFolderStatus;
    }
    // The maker folder was there but could not be looked at.
    if (!maker) {
        return paramErr;
    }

    const QString path = childPath(*maker, QStringLiteral("Tallyvox"));
    Status status = lookUp(path);
    if (status == fnfErr) {
        status = makeDirectory(path);
    }
    if (status == noErr) {
        outFolder = FileRef::fromPath(path);
        if (!outFolder) {
            status = fnfErr;
        }
    }
    return status;
}

Status CreateOutputFile(const QString& fileName, std::optional<FileRef>& outFile)
{
    std::optional<FileRef> folder;
    const Status status = FindOrCreateOutputFolder(folder);
    if (status != noErr) {
        return status;
    }
    return createFileIn(*folder, fileName, outFile);
}

Status createCombinedListFile(const QString& fileName, std::optional<FileRef>& outFile)
{
    std::optional<FileRef> output;
    Status status = FindOrCreateOutputFolder(output);
    if (status != noErr) {
        return status;
    }
    const QString path = childPath(*output, QLatin1String(combinedListFolder));
    status = lookUp(path);
    if (status == fnfErr) {
        status = makeDirectory(path);
    }
    if (status != noErr) {
        return status;
    }
    const std::optional<FileRef> folder = FileRef::fromPath(path);
    if (!folder) {
        return fnfErr;
    }
    return createFileIn(*folder, fileName, outFile);
}

Status replaceFileContents(const FileRef& file, const QByteArray& bytes)
{
    // Written where it is: a new file beside it renamed over it cost another file made and
    // one deleted for every list, a fifth of a batch of small files' time on ext4.
    const int fd = ::open(encodePath(file.path()).constData(),
                          O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (fd < 0) {
        return statusFromErrno(errno);
    }
    struct stat info = {};
    bool ok = ::fstat(fd, &info) == 0;
    int error = ok ? 0 : errno;
    if (ok && !S_ISREG(info.st_mode)) {
        ok = false;
        error = EINVAL;
    }
    // fsync, because some file systems report a full disk only when the data is flushed.
    if (ok && !(::ftruncate(fd, 0) == 0 && writeAll(fd, bytes) && ::fsync(fd) == 0)) {
        ok = false;
        error = errno;
        // Nothing rather than a part; should even that fail, the error above is the news.
        if (::ftruncate(fd, 0) != 0) {
            error = error != 0 ? error : errno;
        }
    }
    if (::close(fd) != 0 && ok) {
        ok = false;
        error = errno;
    }
    return ok ? noErr : statusFromErrno(error);
}

void OpenInTextEditor(Desktop& desktop, const FileRef& file)
{
    if (const std::optional<QString> path = stringWithFSRef(&file)) {
        desktop.openInTextEditor(*path);
    }
}

} // namespace tallyvox
