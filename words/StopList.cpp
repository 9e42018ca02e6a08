#include "words/StopList.h"

#include "support/FilePath.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

QSet<QString> parseStopList(const QByteArray& bytes)
{
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar(0xFEFF))) {
        text.remove(0, 1);
    }
    QSet<QString> words;
    for (QStringView line : QStringView(text).split(QLatin1Char('\n'))) {
        const qsizetype comment = line.indexOf(QLatin1Char('#'));
        if (comment >= 0) {
            line.truncate(comment);
        }
        // trimmed() also takes the CR of a CR LF line end.
        line = line.trimmed();
        if (!line.isEmpty()) {
            words.insert(line.toString());
        }
    }
    return words;
}

QString stopListFile(const QString& setting)
{
    if (setting.startsWith(QLatin1Char('/'))) {
        return setting;
    }
    const QString relative = setting.startsWith(QLatin1String("~/")) ? setting.mid(2) : setting;
    return QDir::homePath() + QLatin1Char('/') + relative;
}

std::optional<QSet<QString>> readStopList(const QString& setting)
{
    if (setting.isEmpty()) {
        return std::nullopt;
    }
    // Without waiting, so that a named pipe cannot hold the application.
    const int fd =
        ::open(encodePath(stopListFile(setting)).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return std::nullopt;
    }
    QFile file;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > largestStopList ||
        !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return std::nullopt;
    }
    const QByteArray bytes = file.read(largestStopList + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > largestStopList) {
        return std::nullopt;
    }
    return parseStopList(bytes);
}

} // namespace tallyvox
