#include "words/StopList.h"

#include "support/FilePath.h"
#include "support/RegularFile.h"

#include <QDir>

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
    const std::optional<QByteArray> bytes =
        readRegularFile(stopListFile(setting), largestStopList).bytes;
    if (!bytes) {
        return std::nullopt;
    }
    return parseStopList(*bytes);
}

} // namespace tallyvox
