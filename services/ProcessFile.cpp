#include "services/ProcessFile.h"
#include "support/FilePath.h"

#include "services/DecodeAndSave.h"
#include "support/Desktop.h"
#include "support/FileRefPaths.h"
#include "support/RegularFile.h"
#include "support/Translation.h"
#include "words/IndexerClient.h"
#include "words/WordList.h"

#include <QCoreApplication>
#include <uchardet.h>
#include <unicode/ucnv.h>

#include <limits>
#include <memory>
#include <sys/stat.h>

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

// The word or character count of a file: the indexer's table, summed as the table comes
// in, and shown when the job commits. Nothing is shown when Quit ended the indexer.
class CountJob final : public FileJob {
public:
    CountJob(const WordContext& context, FileRef file, ProcessMode mode)
        : m_context(context), m_file(std::move(file)), m_mode(mode)
    {}

    void start() override
    {
        m_words = BuildWordTable(m_context, m_file);
        connect(m_words.get(), &WordTableJob::progressed, this, &FileJob::progressed);
        connect(m_words.get(), &WordTableJob::finished, this, [this] {
            m_total = m_mode == ProcessMode::WordCount ? wordCount(m_words->table())
                                                       : characterCount(m_words->table());
            m_stopped = m_words->ending() == IndexerEnding::Stopped;
            m_failed = m_words->ending() == IndexerEnding::Failed;
            becomeReady();
        });
    }
    void stop() override { m_words->stop(); }
    bool failed() const override { return m_failed; }
    Status commit() override
    {
        if (!m_stopped) {
            m_context.desktop.alert(
                (m_mode == ProcessMode::WordCount
                     ? QCoreApplication::translate("tallyvox::ProcessFile", "Word count: %1")
                     : QCoreApplication::translate("tallyvox::ProcessFile",
                                                   "Content character count: %1"))
                    .arg(m_total));
        }
        return noErr;
    }

private:
    // Occurrences, not distinct words; wide enough not to wrap.
    static qint64 wordCount(const WordTable& table)
    {
        qint64 total = 0;
        for (const qint64 count : table) {
            total += countToInt32(count).value_or(0);
        }
        return total;
    }
    // Only the words' own characters, in UTF-16 units: separators are not counted.
    static qint64 characterCount(const WordTable& table)
    {
        qint64 total = 0;
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            total += it.key().size() * qint64{countToInt32(it.value()).value_or(0)};
        }
        return total;
    }

    WordContext m_context;
    FileRef m_file;
    ProcessMode m_mode;
    std::unique_ptr<WordTableJob> m_words;
    qint64 m_total = 0;
    bool m_stopped = false;
    bool m_failed = false;
};

// Decoding needs no indexer: it is all done when the job commits.
class DecodeJob final : public FileJob {
public:
    DecodeJob(Desktop& desktop, FileRef file) : m_desktop(desktop), m_file(std::move(file)) {}
    void start() override { becomeReady(); }
    void stop() override {}
    Status commit() override
    {
        DecodeBase64File(m_desktop, m_file);
        return noErr;
    }

private:
    Desktop& m_desktop;
    FileRef m_file;
};

} // namespace

std::unique_ptr<FileJob> ProcessFile(const WordContext& context, const FileRef& file,
                                     ProcessMode mode, WordListRun* run)
{
    const std::optional<QString> name = CopyFileName(file);
    if (!name) {
        return nullptr;
    }
    switch (mode) {
    case ProcessMode::ExtractWords:
        return std::make_unique<WordListJob>(context, file, *name, run);
    case ProcessMode::WordCount:
    case ProcessMode::CharCount:
        return std::make_unique<CountJob>(context, file, mode);
    case ProcessMode::DecodeBase64:
        return std::make_unique<DecodeJob>(context.desktop, file);
    default:
        break;
    }
    return nullptr;
}

std::optional<QString> ReadFileAsText(const QString& path)
{
    const std::optional<QByteArray> read = readRegularFile(path, largestFileReadAsText).bytes;
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
        desktop.alert(translated("tallyvox::ProcessFile", fileTooLargeMessage).arg(file.name()));
        return;
    }
    const std::optional<QString> text = ReadFileAsText(*path);
    if (text) {
        DecodeAndSaveBase64(desktop, *text);
    }
}

} // namespace tallyvox
