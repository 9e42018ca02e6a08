#include "support/RegularFile.h"

#include "support/FilePath.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

RegularFileRead readRegularFile(const QString& path, qint64 limit)
{
    RegularFileRead result;
    const int fd = ::open(encodePath(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        result.missing = errno == ENOENT;
        return result;
    }
    QFile file;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > limit ||
        !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return result;
    }
    // One byte more than allowed tells a file that grew since it was looked at.
    QByteArray bytes = file.read(limit + 1);
    if (file.error() == QFileDevice::NoError && bytes.size() <= limit) {
        result.bytes = std::move(bytes);
    }
    return result;
}

} // namespace tallyvox
