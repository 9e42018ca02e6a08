#pragma once

#include "words/WordTable.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace tallyvox {

/// How one indexer run ended.
enum class IndexerEnding {
    /// The whole document's table.
    Complete,
    /// A table, but a limit cut the document; the run's log line says which.
    Partial,
    /// No table: the indexer failed, crashed, stalled, or left nothing readable.
    Failed,
    /// Ended from outside (the application quits) before it finished.
    Stopped,
};

/// One run of an indexer on one file. It reports how far it has read; finished() follows
/// exactly once, always from the event loop, never from within the call that started it.
class IndexerRun : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Ends the run at once; finished() follows with Stopped unless it had already ended.
    virtual void stop() = 0;

    bool isFinished() const { return m_finished; }
    IndexerEnding ending() const { return m_ending; }
    /// The table the run left: there for Complete and Partial only. Taken by the caller.
    std::optional<WordTable>& table() { return m_table; }
    /// For Partial: the limits that cut the document, as the indexer named them.
    const QString& cutReasons() const { return m_cutReasons; }
    /// The standardised type/token ratio's runs, when the run was asked to count them and
    /// the indexer told them.
    const std::optional<TypeRuns>& typeRuns() const { return m_typeRuns; }

signals:
    /// done bytes of total read; total is 0 when the size cannot be known.
    void progressed(quint64 done, quint64 total);
    void finished();

protected:
    /// Records the ending and emits finished() from the event loop; later calls are ignored.
    void finish(IndexerEnding ending, std::optional<WordTable> table = std::nullopt);
    void setCutReasons(QString reasons) { m_cutReasons = std::move(reasons); }
    void setTypeRuns(TypeRuns runs) { m_typeRuns = runs; }

private:
    bool m_finished = false;
    QString m_cutReasons;
    IndexerEnding m_ending = IndexerEnding::Failed;
    std::optional<WordTable> m_table;
    std::optional<TypeRuns> m_typeRuns;
};

/// What starts indexer runs: the indexer executables as processes, or a stand-in that
/// returns tables in process (tests). One run per call; runs may overlap.
class Indexer {
public:
    Indexer() = default;
    virtual ~Indexer() = default;
    Indexer(const Indexer&) = delete;
    Indexer& operator=(const Indexer&) = delete;

    /// Starts the named executable ("SearchKitIndexer" or "SearchKitIndexer32") on posixPath,
    /// counting single words (ngramLength 1) or sequences of ngramLength words; typeRuns
    /// also counts the standardised type/token ratio's runs of single words.
    virtual std::unique_ptr<IndexerRun> start(const QString& posixPath,
                                              const QString& executableName, int ngramLength,
                                              bool typeRuns) = 0;
    /// How many runs share the processor from now on, so that each may take fewer
    /// threads of its own.
    virtual void setConcurrentRuns(int /*runs*/) {}
};

} // namespace tallyvox
