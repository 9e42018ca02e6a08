#include "services/ProcessFile.h"
#include "support/FilePath.h"

#include "services/DecodeAndSave.h"
#include "support/Desktop.h"
#include "support/FileRefPaths.h"
#include "support/IndexerStop.h"
#include "words/IndexerClient.h"
#include "words/WordList.h"

#include <QFile>

#include <uchardet.h>
#include <unicode/ucnv.h>

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// The whole of bytes in the named ICU encoding, or nothing when a byte sequence is not
// valid there (no substitution characters).
std::optional<QString> decodeStrictly(const QByteArray& bytes, const char* encoding)
{
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(encoding, &error),
                                                                 &ucnv_close);
    if (U_FAILURE(error)) {
        return std::nullopt;
    }
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &error);
    // ICU counts in 32 bits; a byte never yields more than two UTF-16 units.
    if (bytes.size() > std::numeric_limits<int32_t>::max() / 2 - 2) {
        return std::nullopt;
    }
    const auto size = static_cast<int32_t>(bytes.size());
    QString text(2 * bytes.size() + 2, Qt::Uninitialized);
    const int32_t length =
        ucnv_toUChars(converter.get(), reinterpret_cast<UChar*>(text.data()),
                      static_cast<int32_t>(text.size()), bytes.constData(), size, &error);
    if (U_FAILURE(error)) {
        return std::nullopt;
    }
    text.truncate(length);
    return text;
}

std::optional<QString> decodeDetected(const QByteArray& bytes)
{
    std::unique_ptr<std::remove_pointer_t<uchardet_t>, decltype(&uchardet_delete)> detector(
        uchardet_new(), &uchardet_delete);
    if (!detector || uchardet_handle_data(detector.get(), bytes.constData(),
                                          static_cast<size_t>(bytes.size())) != 0) {
        return std::nullopt;
    }
    uchardet_data_end(detector.get());
    const QByteArray charset = uchardet_get_charset(detector.get());
    if (charset.isEmpty()) {
        return std::nullopt;
    }
    return decodeStrictly(bytes, charset.constData());
}

// The indexer was ended by Quit: its empty table is no count to show.
bool quitting(const WordContext& context)
{
    return context.stop && context.stop->isStopped();
}

// A regular file's bytes, read whole when it is not larger than limit. Opened without
// waiting, so a named pipe without a writer cannot hold the application.
std::optional<QByteArray> readRegularFile(const QString& path, qint64 limit)
{
    const int fd = ::open(encodePath(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        return std::nullopt;
    }
    QFile file;
    struct stat info {};
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > limit ||
        !file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return std::nullopt;
    }
    // One byte more than allowed tells a file that grew since it was looked at.
    QByteArray bytes = file.read(limit + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > limit) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace

Status ProcessFile(const WordContext& context, const FileRef& file, ProcessMode mode)
{
    const std::optional<QString> name = CopyFileName(file);
    if (!name) {
        return noErr;
    }

    switch (mode) {
    case ProcessMode::ExtractWords:
        return writeWordList(context, file, *name);
    case ProcessMode::WordCount: {
        // Occurrences, not distinct words; wide enough not to wrap.
        qint64 total = 0;
        for (const qint64 count : BuildWordTable(context, file)) {
            total += countToInt32(count).value_or(0);
        }
        if (quitting(context)) {
            break;
        }
        context.desktop.alert(QStringLiteral("Word count: %1").arg(total));
        break;
    }
    case ProcessMode::CharCount: {
        // Only the words' own characters, in UTF-16 units: separators are not counted.
        qint64 total = 0;
        const WordTable table = BuildWordTable(context, file);
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            total += it.key().size() * qint64{countToInt32(it.value()).value_or(0)};
        }
        if (quitting(context)) {
            break;
        }
        context.desktop.alert(QStringLiteral("Content character count: %1").arg(total));
        break;
    }
    case ProcessMode::DecodeBase64:
        DecodeBase64File(context.desktop, file);
        break;
    default:
        break;
    }
    return noErr;
}

std::optional<QString> ReadFileAsText(const QString& path)
{
    const std::optional<QByteArray> read = readRegularFile(path, largestFileReadAsText);
    if (!read) {
        return std::nullopt;
    }
    const QByteArray& bytes = *read;

    if (std::optional<QString> text = decodeDetected(bytes)) {
        return text;
    }
    if (std::optional<QString> text = decodeStrictly(bytes, "UTF-8")) {
        return text;
    }
    if (std::optional<QString> text = decodeStrictly(bytes, "ISO-8859-1")) {
        return text;
    }
    return decodeStrictly(bytes, "macintosh");
}

void DecodeBase64File(Desktop& desktop, const FileRef& file)
{
    const std::optional<QString> path = stringWithFSRef(&file);
    if (!path) {
        return;
    }
    struct stat info {};
    if (::stat(encodePath(*path).constData(), &info) == 0 && S_ISREG(info.st_mode) &&
        info.st_size > largestFileReadAsText) {
        desktop.alert(QString::fromUtf16(fileTooLargeMessage).arg(file.name()));
        return;
    }
    const std::optional<QString> text = ReadFileAsText(*path);
    if (text) {
        DecodeAndSaveBase64(desktop, *text);
    }
}

} // namespace tallyvox
