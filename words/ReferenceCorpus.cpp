#include "words/ReferenceCorpus.h"

#include "support/FilePath.h"
#include "words/IndexerClient.h"
#include "words/ListFormats.h"
#include "words/StopList.h"
#include "words/WordTableShaping.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QStringDecoder>
#include <QtConcurrent/QtConcurrentRun>

#include <sys/stat.h>

#include <algorithm>

namespace tallyvox {

namespace {

// Documents indexed at once: the lists' own files are indexed beside them.
constexpr std::size_t documentsAtOnce = 2;

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";

using Fields = QList<QByteArray>;

// One CSV row (RFC 4180) from at, which moves past its end; nothing for a quote left open.
std::optional<Fields> nextCsvRow(const QByteArray& bytes, qsizetype& at)
{
    Fields fields;
    QByteArray field;
    bool inQuotes = false;
    bool wasQuoted = false;
    while (at < bytes.size()) {
        const char c = bytes[at++];
        if (inQuotes) {
            if (c != '"') {
                field += c;
            } else if (at < bytes.size() && bytes[at] == '"') {
                field += '"';
                ++at;
            } else {
                inQuotes = false;
            }
        } else if (c == '"' && field.isEmpty() && !wasQuoted) {
            inQuotes = true;
            wasQuoted = true;
        } else if (c == ',') {
            fields.append(std::exchange(field, {}));
            wasQuoted = false;
        } else if (c == '\n' || (c == '\r' && at < bytes.size() && bytes[at] == '\n')) {
            at += c == '\r' ? 1 : 0;
            break;
        } else {
            field += c;
        }
    }
    if (inQuotes) {
        return std::nullopt;
    }
    fields.append(field);
    return fields;
}

// One TSV row from at, with the escapes \\, \t, \r and \n undone.
Fields nextTsvRow(const QByteArray& bytes, qsizetype& at)
{
    qsizetype end = bytes.indexOf('\n', at);
    if (end < 0) {
        end = bytes.size();
    }
    QByteArray line = bytes.mid(at, end - at);
    at = end + 1;
    if (line.endsWith('\r')) {
        line.chop(1);
    }
    Fields fields;
    for (const QByteArray& raw : line.split('\t')) {
        QByteArray field;
        for (qsizetype i = 0; i < raw.size(); ++i) {
            if (raw[i] != '\\' || i + 1 == raw.size()) {
                field += raw[i];
                continue;
            }
            const char escaped = raw[++i];
            field += escaped == 't'   ? '\t'
                     : escaped == 'r' ? '\r'
                     : escaped == 'n' ? '\n'
                                      : escaped;
        }
        fields.append(field);
    }
    return fields;
}

std::optional<qint64> countOf(const QByteArray& field)
{
    if (field.isEmpty() ||
        !std::all_of(field.begin(), field.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    bool ok = false;
    const qint64 count = field.toLongLong(&ok);
    return ok ? std::optional(count) : std::nullopt;
}

QByteArray withoutByteOrderMark(const QByteArray& bytes)
{
    return bytes.startsWith(byteOrderMark) ? bytes.mid(3) : bytes;
}

bool isRegularFile(const QString& path)
{
    struct stat info {};
    return ::stat(encodePath(path).constData(), &info) == 0 && S_ISREG(info.st_mode);
}

// The first bytes of a file, enough for a header.
QByteArray headOf(const QString& path)
{
    QFile file(path);
    if (!isRegularFile(path) || !file.open(QIODevice::ReadOnly)) {
        return {};
    }
    constexpr qint64 headerBytes = 64;
    return file.read(headerBytes);
}

} // namespace

bool looksLikeWordList(const QByteArray& bytes)
{
    const QByteArray head = withoutByteOrderMark(bytes);
    for (const char* separator : {",", "\t"}) {
        const QByteArray start = QByteArray("word") + separator + "count";
        if (head.startsWith(start) &&
            (head.size() == start.size() || QByteArray(",\t\r\n").contains(head[start.size()]))) {
            return true;
        }
    }
    return false;
}

std::optional<WordTable> parseWordList(const QByteArray& bytes)
{
    if (!looksLikeWordList(bytes)) {
        return std::nullopt;
    }
    const QByteArray text = withoutByteOrderMark(bytes);
    const bool csv = text.startsWith("word,");
    qsizetype at = 0;
    WordTable table;
    bool header = true;
    while (at < text.size()) {
        std::optional<Fields> row = csv ? nextCsvRow(text, at) : nextTsvRow(text, at);
        if (!row) {
            return std::nullopt;
        }
        if (std::exchange(header, false)) {
            continue;
        }
        if (row->size() == 1 && row->first().isEmpty()) {
            break;
        }
        QByteArray word = row->first();
        if (word.startsWith('#')) {
            continue;
        }
        // csvField writes a word that a spreadsheet would take for a formula after a quote.
        if (csv && word.startsWith('\'') &&
            startsLikeFormula(QString::fromUtf8(QByteArrayView(word).sliced(1)))) {
            word.remove(0, 1);
        }
        const std::optional<qint64> count = row->size() > 1 ? countOf(row->at(1)) : std::nullopt;
        // Decoded as written: fromUtf8 would drop a word's leading byte-order mark, so a
        // word of marks alone would come out empty and "\uFEFF\uFEFFx" as another word.
        QStringDecoder decode(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
        const QString key = decode(word);
        if (key.isEmpty() || !count) {
            return std::nullopt;
        }
        table.insert(key, addCounts(table.value(key, 0), *count));
    }
    return table;
}

ReferenceCorpus::ReferenceCorpus(const WordContext& context, QString setting, int ngramLength)
    : m_context(context), m_setting(std::move(setting)), m_ngramLength(ngramLength)
{}

ReferenceCorpus::~ReferenceCorpus() = default;

void ReferenceCorpus::start()
{
    const QString path = stopListFile(m_setting);
    const QFileInfo info(path);
    if (info.isDir()) {
        listDocuments(path);
        return;
    }
    const QString suffix = info.suffix().toLower();
    if ((suffix == u"csv" || suffix == u"tsv") && looksLikeWordList(headOf(path))) {
        readWordList(path);
        return;
    }
    if (!info.exists()) {
        end(false);
        return;
    }
    m_documents = {path};
    indexNext();
}

void ReferenceCorpus::stop()
{
    m_stopped = true;
    for (const auto& job : m_jobs) {
        job->stop();
    }
}

bool ReferenceCorpus::takeFailureReport()
{
    if (!m_finished || m_table || m_stopped || m_reported) {
        return false;
    }
    m_reported = true;
    return true;
}

void ReferenceCorpus::readWordList(const QString& path)
{
    auto* watcher = new QFutureWatcher<std::optional<WordTable>>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        std::optional<WordTable> table = watcher->result();
        watcher->deleteLater();
        if (table) {
            m_sum = std::move(*table);
        }
        end(table.has_value());
    });
    watcher->setFuture(QtConcurrent::run([path]() -> std::optional<WordTable> {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            return std::nullopt;
        }
        return parseWordList(file.readAll());
    }));
}

// A large folder takes a while to walk: the walk is on a worker thread too.
void ReferenceCorpus::listDocuments(const QString& folder)
{
    auto* watcher = new QFutureWatcher<QStringList>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        m_documents = watcher->result();
        watcher->deleteLater();
        if (m_documents.isEmpty()) {
            end(false);
            return;
        }
        indexNext();
    });
    watcher->setFuture(QtConcurrent::run([folder] {
        QStringList documents;
        QDirIterator it(folder, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            documents.append(it.next());
        }
        // The same sum in any order, but the same order makes the same log.
        documents.sort();
        return documents;
    }));
}

void ReferenceCorpus::indexNext()
{
    while (!m_failed && !m_stopped && m_jobs.size() < documentsAtOnce &&
           m_nextDocument < m_documents.size()) {
        const std::optional<FileRef> file = FileRef::fromPath(m_documents.at(m_nextDocument++));
        if (!file) {
            m_failed = true;
            break;
        }
        m_jobs.push_back(BuildWordTable(m_context, *file, m_ngramLength));
        WordTableJob* job = m_jobs.back().get();
        connect(job, &WordTableJob::finished, this, [this, job] { documentIndexed(job); });
    }
    if (m_jobs.empty()) {
        end(!m_failed && !m_stopped);
    }
}

void ReferenceCorpus::documentIndexed(WordTableJob* job)
{
    const auto it = std::find_if(m_jobs.begin(), m_jobs.end(),
                                 [job](const auto& held) { return held.get() == job; });
    if (it == m_jobs.end()) {
        return;
    }
    std::unique_ptr<WordTableJob> done = std::move(*it);
    m_jobs.erase(it);
    switch (done->ending()) {
    case IndexerEnding::Complete:
        addWordTable(m_sum, done->table());
        break;
    case IndexerEnding::Stopped:
        // A document stopped because another failed leaves the failure to be reported.
        m_stopped = m_stopped || !m_failed;
        break;
    case IndexerEnding::Partial:
    case IndexerEnding::Failed:
        m_failed = true;
        break;
    }
    // Its finished() may be the signal being delivered now.
    done.release()->deleteLater();
    if (m_failed || m_stopped) {
        for (const auto& other : m_jobs) {
            other->stop();
        }
    }
    indexNext();
}

void ReferenceCorpus::end(bool readable)
{
    if (m_finished) {
        return;
    }
    m_finished = true;
    // A reference without a word gives every figure a division by zero.
    if (readable && !m_sum.isEmpty()) {
        m_table = std::make_shared<const WordTable>(std::move(m_sum));
    }
    QMetaObject::invokeMethod(this, &ReferenceCorpus::finished, Qt::QueuedConnection);
}

} // namespace tallyvox
