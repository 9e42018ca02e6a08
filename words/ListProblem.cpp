#include "words/ListProblem.h"

#include "support/FilePath.h"
#include "words/IndexerClient.h"

#include <QByteArray>
#include <QMimeDatabase>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// Enough of each end of a file for its type and for the marks of encryption: a PDF names
// its encryption in the trailer, an encrypted Office document is a compound file whose
// directory holds "EncryptedPackage", near either end.
constexpr qsizetype headSize = qsizetype{64} * 1024;
constexpr qsizetype tailSize = qsizetype{64} * 1024;

QByteArray readAt(int fd, off_t offset, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qsizetype got = 0;
    while (got < size) {
        const ssize_t n = ::pread(fd, bytes.data() + got, static_cast<size_t>(size - got),
                                  offset + static_cast<off_t>(got));
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            break;
        }
        got += n;
    }
    bytes.truncate(got);
    return bytes;
}

bool asksForPassword(const QByteArray& head, const QByteArray& tail)
{
    if (head.startsWith("%PDF-")) {
        return head.contains("/Encrypt") || tail.contains("/Encrypt");
    }
    static constexpr std::array<char, 8> compoundFile{'\xD0', '\xCF', '\x11', '\xE0',
                                                      '\xA1', '\xB1', '\x1A', '\xE1'};
    if (head.startsWith(QByteArrayView(compoundFile.data(), compoundFile.size()))) {
        // The stream's name in the directory, UTF-16LE.
        const QByteArray name =
            QByteArray::fromRawData("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32);
        return head.contains(name) || tail.contains(name);
    }
    return false;
}

// The kinds of document the indexers read; any of them may simply hold no words.
bool isReadableKind(const QMimeType& type)
{
    static constexpr std::array readable{
        "text/plain",
        "application/pdf",
        "application/zip",
        "application/rtf",
        "text/rtf",
        "application/xml",
        "text/html",
        "application/msword",
        "application/x-ole-storage",
        "application/epub+zip",
    };
    for (const char* name : readable) {
        if (type.inherits(QLatin1String(name))) {
            return true;
        }
    }
    const QString name = type.name();
    return name.startsWith(u"application/vnd.openxmlformats-officedocument.") ||
           name.startsWith(u"application/vnd.oasis.opendocument.") ||
           name.startsWith(u"application/vnd.ms-");
}

} // namespace

ListProblem::Kind whyNoWords(const QString& path)
{
    const int fd = ::open(encodePath(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        return errno == EACCES || errno == EPERM ? ListProblem::Kind::NoPermission
                                                 : ListProblem::Kind::NotRead;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0) {
        ::close(fd);
        return ListProblem::Kind::NotRead;
    }
    if (!S_ISREG(info.st_mode)) {
        // A package (a folder such as .rtfd) is taken as a file, but no indexer reads one.
        ::close(fd);
        return S_ISDIR(info.st_mode) ? ListProblem::Kind::NotADocument : ListProblem::Kind::NotRead;
    }
    if (info.st_size == 0) {
        ::close(fd);
        return ListProblem::Kind::Empty;
    }
    const QByteArray head = readAt(fd, 0, headSize);
    const QByteArray tail =
        info.st_size > headSize
            ? readAt(fd, std::max<off_t>(headSize, info.st_size - tailSize), tailSize)
            : QByteArray();
    ::close(fd);
    if (asksForPassword(head, tail)) {
        return ListProblem::Kind::PasswordProtected;
    }
    const QMimeType type = QMimeDatabase().mimeTypeForFileNameAndData(path, head);
    return isReadableKind(type) ? ListProblem::Kind::NoWords : ListProblem::Kind::NotADocument;
}

ListProblem listProblemOf(const QString& path, IndexerEnding ending, bool gaveWords,
                          const QString& cutReasons)
{
    if (ending == IndexerEnding::Stopped) {
        return {};
    }
    if (ending == IndexerEnding::Failed) {
        if (encodePath(path).size() >= indexerPathBufferSize) {
            return {ListProblem::Kind::PathTooLong, {}};
        }
        const ListProblem::Kind why = whyNoWords(path);
        // A file that gave nothing cleanly would not have failed: whatever the look at the
        // file says, the indexers could not read it.
        return {why == ListProblem::Kind::NoWords ? ListProblem::Kind::NotRead : why, {}};
    }
    if (!gaveWords) {
        const ListProblem::Kind why = whyNoWords(path);
        if (why == ListProblem::Kind::NoWords && ending == IndexerEnding::Partial) {
            return {ListProblem::Kind::Cut, cutReasons};
        }
        return {why, {}};
    }
    if (ending == IndexerEnding::Partial) {
        return {ListProblem::Kind::Cut, cutReasons};
    }
    return {};
}

} // namespace tallyvox
