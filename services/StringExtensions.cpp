#include "services/StringExtensions.h"

#include <QProcess>
#include <QStringDecoder>

#include <stdexcept>

namespace tallyvox {

std::optional<QString> extractBetweenPattern(const QString& text, const QString& start,
                                             const QString& end)
{
    // An empty marker is never found.
    if (start.isEmpty() || end.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype startAt = text.indexOf(start, 0, Qt::CaseInsensitive);
    if (startAt < 0) {
        return std::nullopt;
    }
    // The end marker is searched from the start marker itself, not after it.
    const qsizetype endAt = text.indexOf(end, startAt, Qt::CaseInsensitive);
    if (endAt < 0) {
        return std::nullopt;
    }
    const qsizetype from = startAt + start.size();
    if (endAt < from) {
        throw std::out_of_range("extractBetweenPattern: end marker inside the start marker");
    }
    return text.mid(from, endAt - from);
}

std::optional<QString> reverseExtractBetweenPattern(const QString& text, const QString& start,
                                                    const QString& end)
{
    if (start.isEmpty() || end.isEmpty()) {
        return std::nullopt;
    }
    const qsizetype endAt = text.indexOf(end, 0, Qt::CaseInsensitive);
    if (endAt < 0) {
        return std::nullopt;
    }
    // The start marker must lie wholly before the end marker.
    const qsizetype lastStart = endAt - start.size();
    if (lastStart < 0) {
        return std::nullopt;
    }
    const qsizetype startAt = text.lastIndexOf(start, lastStart, Qt::CaseInsensitive);
    if (startAt < 0) {
        return std::nullopt;
    }
    const qsizetype from = startAt + start.size();
    return text.mid(from, endAt - from);
}

std::optional<QString> runScript(const QString& script)
{
    QProcess shell;
    shell.setProgram(QStringLiteral("/bin/sh"));
    shell.setArguments({QStringLiteral("-c"), script});
    shell.setStandardInputFile(QProcess::nullDevice());
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start();
    if (!shell.waitForStarted(-1)) {
        return std::nullopt;
    }
    shell.waitForFinished(-1);
    QByteArray output = shell.readAllStandardOutput();
    if (output.isEmpty()) {
        return std::nullopt;
    }
    // A list's items are asked for from index 0, which a list never has.
    if (output.contains('\0')) {
        return std::nullopt;
    }
    while (output.endsWith('\n')) {
        output.chop(1);
    }
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString result = utf8.decode(output);
    if (utf8.hasError()) {
        return std::nullopt;
    }
    return result;
}

QString cleanForFilename(const QString& text)
{
    QString clean = text;
    clean.replace(QLatin1Char('/'), QLatin1Char('-'));
    clean.replace(QLatin1Char(':'), QLatin1Char('-'));
    return clean;
}

} // namespace tallyvox
