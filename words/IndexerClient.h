#pragma once

#include "support/FileRef.h"
#include "words/Indexer.h"
#include "words/WordContext.h"
#include "words/WordTable.h"

#include <QObject>

#include <memory>

namespace tallyvox {

/// The indexer takes the path as it is handed over; the deliberately small buffer
/// keeps the longest path it ever sees at 254 bytes.
inline constexpr int indexerPathBufferSize = 255;

/// The words of one file with their counts, from the indexer and then its fallback. The
/// table is empty when neither finishes cleanly with a readable result, when the path is
/// longer than the indexer takes (254 bytes), and without any run for a named pipe, device
/// or socket. Logs "Indexing <path>" when an indexer is asked.
class WordTableJob final : public QObject {
    Q_OBJECT
public:
    /// ngramLength above 1: the table counts sequences of that many words. typeRuns: the
    /// indexer also counts the standardised type/token ratio's runs.
    WordTableJob(const WordContext& context, FileRef file, int ngramLength = 1,
                 bool typeRuns = false);
    ~WordTableJob() override;
    WordTableJob(const WordTableJob&) = delete;
    WordTableJob& operator=(const WordTableJob&) = delete;

    /// Starts the first indexer; finished() follows from the event loop.
    void start();
    /// Ends the indexer in hand and tries no other; finished() follows.
    void stop();

    bool isFinished() const { return m_finished; }
    /// The table, once finished; the caller may take it.
    WordTable& table() { return m_table; }
    /// How the last indexer asked ended: Failed also when none could be asked.
    IndexerEnding ending() const { return m_ending; }
    /// For Partial: the limits that cut the document, as the indexer named them.
    QString cutReasons() const { return m_run ? m_run->cutReasons() : QString(); }
    /// The type/token runs the indexer told with the table, when they were asked for.
    std::optional<TypeRuns> typeRuns() const { return m_run ? m_run->typeRuns() : std::nullopt; }

signals:
    void progressed(quint64 done, quint64 total);
    void finished();

private:
    void runIndexer(const QString& executableName);
    void runEnded();
    void end(IndexerEnding ending);

    WordContext m_context;
    FileRef m_file;
    QString m_path;
    int m_ngramLength;
    bool m_typeRuns;
    std::unique_ptr<IndexerRun> m_run;
    bool m_fallbackTried = false;
    bool m_finished = false;
    IndexerEnding m_ending = IndexerEnding::Failed;
    WordTable m_table;
};

/// BuildWordTable: a started job for the file's table (of n-grams with ngramLength above 1;
/// with typeRuns, the standardised type/token ratio's runs too).
std::unique_ptr<WordTableJob> BuildWordTable(const WordContext& context, const FileRef& file,
                                             int ngramLength = 1, bool typeRuns = false);

} // namespace tallyvox
