#pragma once

#include "words/WordContext.h"
#include "words/WordTable.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace tallyvox {

class WordTableJob;

/// The words of a word list that Tallyvox wrote as CSV or TSV: a header whose first two
/// fields are "word" and "count", then a row for each word, up to the first empty row (the
/// totals follow it). A row whose word begins with "#" is the totals line of an older TSV
/// list and is passed over. Nothing when bytes is no such list or any row is malformed:
/// a count that is no whole number, a quote left open.
std::optional<WordTable> parseWordList(const QByteArray& bytes);

/// True when bytes begins as a list parseWordList reads does.
bool looksLikeWordList(const QByteArray& bytes);

/// The reference of a keyword list, read once for a run or a service's list: a document
/// and every document in a folder (and its subfolders) through the indexer, as the lists'
/// own files are, one job per document, a few at once; or a word list Tallyvox wrote
/// (".csv" or ".tsv") read on a worker thread without indexing. finished() follows from the
/// event loop. A reference that cannot be read whole (missing, a document the indexer
/// failed on or cut short, no words at all) leaves no table: a keyword list against part
/// of it would look right and be wrong.
class ReferenceCorpus final : public QObject {
    Q_OBJECT
public:
    /// setting: "ReferencePath" as stored; "~/" and relative paths start at home. Documents
    /// are counted in sequences of ngramLength words, as the lists they are compared with.
    ReferenceCorpus(const WordContext& context, QString setting, int ngramLength = 1);
    ~ReferenceCorpus() override;
    ReferenceCorpus(const ReferenceCorpus&) = delete;
    ReferenceCorpus& operator=(const ReferenceCorpus&) = delete;

    void start();
    /// Ends the indexing at once (the application quits); finished() follows.
    void stop();

    const QString& setting() const { return m_setting; }
    bool isFinished() const { return m_finished; }
    /// The reference's words once finished, or none when it could not be read.
    std::shared_ptr<const WordTable> table() const { return m_table; }
    /// True the first time it is asked after a failure: one alert per reference.
    bool takeFailureReport();

signals:
    void finished();

private:
    void readWordList(const QString& path);
    void listDocuments(const QString& folder);
    void indexNext();
    void documentIndexed(WordTableJob* job);
    void end(bool readable);

    WordContext m_context;
    QString m_setting;
    int m_ngramLength;
    QStringList m_documents;
    qsizetype m_nextDocument = 0;
    std::vector<std::unique_ptr<WordTableJob>> m_jobs;
    WordTable m_sum;
    bool m_failed = false;
    bool m_stopped = false;
    bool m_finished = false;
    bool m_reported = false;
    std::shared_ptr<const WordTable> m_table;
};

} // namespace tallyvox
