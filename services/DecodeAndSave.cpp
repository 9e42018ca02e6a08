#include "services/DecodeAndSave.h"

#include "services/Base64.h"
#include "services/StringExtensions.h"
#include "services/naming/NameFileByContentType.h"
#include "support/Desktop.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

struct Descriptor {
    int fd = -1;
    ~Descriptor()
    {
        if (fd >= 0) {
            ::close(fd);
        }
    }
};

QString saveFailure(const QString& path, const QString& reason)
{
    return QCoreApplication::translate("tallyvox::DecodeAndSave",
                                       "The file \"%1\" was not saved: %2.")
        .arg(path, reason);
}

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

bool writeAll(int fd, const QByteArray& data)
{
    const char* p = data.constData();
    auto left = static_cast<std::size_t>(data.size());
    while (left > 0) {
        const ssize_t n = ::write(fd, p, left);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return false;
        }
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return true;
}

// Writes data to a new file beside path and renames it over path. A link, a named pipe or a
// folder standing at path is refused: a link would be followed to a file the user did not
// choose, and opening a pipe would wait for a writer for ever. rename never follows a link,
// so one put in place after the check is replaced, not written through. Returns what went
// wrong, or an empty text.
QString writeData(const QString& path, const QByteArray& data)
{
    const QByteArray target = QFile::encodeName(path);
    struct stat info {};
    int mode = 0666;
    if (::lstat(target.constData(), &info) == 0) {
        if (S_ISLNK(info.st_mode)) {
            return saveFailure(path, QStringLiteral("it is a symbolic link, which Tallyvox does "
                                                    "not write through"));
        }
        if (S_ISDIR(info.st_mode)) {
            return saveFailure(path, QStringLiteral("a folder of that name is in the way"));
        }
        if (!S_ISREG(info.st_mode)) {
            return saveFailure(path, QStringLiteral("it is no regular file"));
        }
        mode = static_cast<int>(info.st_mode & 07777);
    } else if (errno != ENOENT) {
        return saveFailure(path, errorText(errno));
    }
    const QFileInfo where(path);
    const QString folder = where.absolutePath();
    struct stat folderInfo {};
    if (::stat(QFile::encodeName(folder).constData(), &folderInfo) != 0 ||
        !S_ISDIR(folderInfo.st_mode)) {
        return saveFailure(path, QStringLiteral("the folder \"%1\" does not exist").arg(folder));
    }
    QByteArray temporary = QFile::encodeName(folder + QStringLiteral("/.") + where.fileName() +
                                             QStringLiteral(".XXXXXX"));
    Descriptor file{::mkostemp(temporary.data(), O_CLOEXEC)}; // O_CREAT | O_EXCL
    if (file.fd < 0) {
        return saveFailure(path, errorText(errno));
    }
    // A new file gets what the user's umask leaves; an existing one keeps its permissions.
    if (mode == 0666) {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        mode &= ~static_cast<int>(mask);
    }
    int error = 0;
    if (::fchmod(file.fd, static_cast<mode_t>(mode)) != 0 || !writeAll(file.fd, data) ||
        ::fsync(file.fd) != 0) {
        error = errno != 0 ? errno : EIO;
    } else if (::rename(temporary.constData(), target.constData()) != 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(temporary.constData());
        return saveFailure(path, errorText(error));
    }
    return {};
}

// A string with an unpaired surrogate has no UTF-8 form.
std::optional<QByteArray> utf8Data(const QString& text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    QByteArray data = encoder.encode(text);
    if (encoder.hasError()) {
        return std::nullopt;
    }
    return data;
}

} // namespace

void DecodeAndSaveBase64(Desktop& desktop, const QString& text)
{
    const std::optional<QByteArray> data = dataFromBase64String(text);
    if (!data) {
        desktop.alert(QCoreApplication::translate("tallyvox::DecodeAndSave",
                                                  "The text could not be base64 decoded"));
        return;
    }
    const QString path = desktop.chooseSavePath(QStringLiteral("DecodedBase64"));
    if (path.isEmpty()) {
        return;
    }
    if (const QString failure = writeData(path, *data); !failure.isEmpty()) {
        desktop.failureAlert(failure);
        return;
    }
    const std::optional<FileRef> ref = getFSRef(path);
    if (!ref) {
        return;
    }
    std::optional<FileRef> renamed;
    if (NameFileByContentType(desktop, *ref, renamed)) {
        if (const std::optional<QString> newPath = stringWithFSRef(&*renamed)) {
            desktop.openFile(*newPath);
        }
    } else {
        desktop.openFile(path);
    }
}

void SaveGraphicData(Desktop& desktop, const QString& text)
{
    const std::optional<QByteArray> data = utf8Data(text);
    if (!data) {
        desktop.alert(QCoreApplication::translate("tallyvox::DecodeAndSave",
                                                  "The text could not be decoded as UTF8"));
        return;
    }
    const QString path = desktop.chooseSavePath(QStringLiteral("Graphic"));
    if (path.isEmpty()) {
        return;
    }
    if (const QString failure = writeData(path, *data); !failure.isEmpty()) {
        // Nothing was written: the chosen path may be a link, a pipe or a folder, none of
        // which is the user's graphic. Said, and then opened all the same: the graphic
        // service always hands the chosen path on.
        desktop.failureAlert(failure);
    } else if (const std::optional<FileRef> ref = getFSRef(path)) {
        std::optional<FileRef> renamed;
        NameFileByContentType(desktop, *ref, renamed);
    }
    // Deliberately the path as chosen, even after a rename or a failed write.
    desktop.openFile(path);
}

} // namespace tallyvox
