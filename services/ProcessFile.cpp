#include "services/ProcessFile.h"

#include "services/DecodeAndSave.h"
#include "support/Desktop.h"
#include "support/FileRefPaths.h"
#include "words/IndexerClient.h"
#include "words/WordList.h"

#include <QFile>

#include <uchardet.h>
#include <unicode/ucnv.h>

#include <limits>
#include <memory>

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

} // namespace

void ProcessFile(const WordContext& context, const FileRef& file, ProcessMode mode)
{
    const std::optional<QString> name = CopyFileName(file);
    if (!name) {
        return;
    }

    switch (mode) {
    case ProcessMode::ExtractWords:
        writeWordList(context, file, *name);
        break;
    case ProcessMode::WordCount: {
        // Occurrences, not distinct words; wide enough not to wrap.
        qint64 total = 0;
        for (const qint64 count : BuildWordTable(context, file)) {
            total += countToInt32(count).value_or(0);
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
        context.desktop.alert(QStringLiteral("Content character count: %1").arg(total));
        break;
    }
    case ProcessMode::DecodeBase64:
        DecodeBase64File(context.desktop, file);
        break;
    default:
        break;
    }
}

std::optional<QString> ReadFileAsText(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }

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
    const std::optional<QString> text = ReadFileAsText(*path);
    if (text) {
        DecodeAndSaveBase64(desktop, *text);
    }
}

} // namespace tallyvox
