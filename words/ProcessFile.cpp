#include "words/ProcessFile.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "support/FileRefPaths.h"
#include "words/IndexerClient.h"
#include "words/OutputFolder.h"
#include "words/WordContext.h"
#include "words/WordListRenderer.h"

#include <QFile>

#include <uchardet.h>
#include <unicode/ucnv.h>

#include <limits>
#include <memory>
#include <sys/stat.h>

namespace tallyvox {

namespace {

// The output path buffer of the word list; the conversion fails beyond 4095 bytes.
constexpr int outputPathBufferSize = 4096;

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

void extractWords(const WordContext& context, const FileRef& file, const QString& name)
{
    std::optional<FileRef> output;
    if (CreateOutputFile(name + QStringLiteral(".txt"), output) != noErr || !output) {
        return;
    }

    const PreferenceStore& preferences = context.preferences;
    const qint32 lineStyle = preferences.GetLineStyle();
    const qint32 separateBy = preferences.GetSeparateBy();
    const bool alphabetical = preferences.GetSortBy() == 1;
    const std::optional<QString> text =
        RenderWordList(context, file, lineStyle, separateBy, alphabetical);
    // No words: the empty list stays where it is, and nothing is opened.
    if (!text) {
        return;
    }

    QByteArray pathBytes;
    if (output->makePath(pathBytes, outputPathBufferSize) != noErr) {
        return;
    }
    QFile out(QFile::decodeName(pathBytes));
    const QByteArray utf8 = text->toUtf8();
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(utf8) != utf8.size()) {
        return;
    }
    out.close();
    OpenInTextEditor(context.desktop, *output);
    context.desktop.raiseApplication();
}

} // namespace

std::optional<QString> CopyFileName(const FileRef& file)
{
    struct stat info {};
    if (::lstat(QFile::encodeName(file.path()).constData(), &info) != 0) {
        return std::nullopt;
    }
    return file.name();
}

void ProcessFile(const WordContext& context, const FileRef& file, ProcessMode mode)
{
    const std::optional<QString> name = CopyFileName(file);
    if (!name) {
        return;
    }

    switch (mode) {
    case ProcessMode::ExtractWords:
        extractWords(context, file, *name);
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
        DecodeBase64File(context, file);
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

void DecodeBase64File(const WordContext& context, const FileRef& file)
{
    const std::optional<QString> path = stringWithFSRef(&file);
    if (!path) {
        return;
    }
    const std::optional<QString> text = ReadFileAsText(*path);
    if (!text || !context.decodeBase64Text) {
        return;
    }
    context.decodeBase64Text(*text);
}

} // namespace tallyvox
