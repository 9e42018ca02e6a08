#pragma once

#include "words/Indexer.h"

#include <QHash>
#include <QStringList>

#include <chrono>
#include <functional>

namespace tallyvox::testing {

/// An indexer in process, for tests of everything above it: each file's table, how long it
/// takes and how it ends are what the test says. A file nobody scripted is read and its
/// white-space separated words counted, as the real indexer would for plain text.
class FakeIndexer final : public Indexer {
public:
    struct Script {
        /// The table left; none makes the run fail unless an ending is given.
        std::optional<WordTable> table;
        IndexerEnding ending = IndexerEnding::Complete;
        std::chrono::milliseconds delay{0};
        /// Reports made while it runs, spread over the delay: done bytes of total.
        QList<std::pair<quint64, quint64>> progress{};
        /// What a run asked for the type/token runs tells with the table; none unless given.
        std::optional<TypeRuns> typeRuns{};
    };

    /// How executableName ends on path ("SearchKitIndexer" unless said).
    void script(const QString& path, Script script,
                const QString& executableName = QStringLiteral("SearchKitIndexer"));
    /// What a Partial ending on path says cut the document.
    void scriptCutReasons(const QString& path, const QString& reasons)
    {
        m_cutReasons.insert(path, reasons);
    }
    /// Every file nobody scripted gives this table instead of its words.
    void setDefaultTable(WordTable table) { m_defaultTable = std::move(table); }
    /// Every run of a file takes this long unless scripted otherwise.
    void setDefaultDelay(std::chrono::milliseconds delay) { m_defaultDelay = delay; }

    std::unique_ptr<IndexerRun> start(const QString& posixPath, const QString& executableName,
                                      int ngramLength, bool typeRuns) override;
    void setConcurrentRuns(int runs) override { m_concurrentRuns = runs; }

    /// Called with "executable path" as each run starts, before it runs; a run of n-grams
    /// adds " --ngram-length N", one asked for the type/token runs " --sttr". Scripts are
    /// found without the latter.
    std::function<void(const QString& call)> onStart;

    /// "executable path" of each run, in the order they were started.
    const QStringList& calls() const { return m_calls; }
    /// The most runs that were going on at one moment.
    int mostAtOnce() const { return m_mostAtOnce; }
    /// What the batch last said of the runs to come.
    int concurrentRuns() const { return m_concurrentRuns; }
    /// Runs going on now.
    int running() const { return m_running; }

private:
    friend class FakeRun;
    QHash<QString, Script> m_scripts;
    QHash<QString, QString> m_cutReasons;
    std::chrono::milliseconds m_defaultDelay{0};
    std::optional<WordTable> m_defaultTable;
    QStringList m_calls;
    int m_running = 0;
    int m_mostAtOnce = 0;
    int m_concurrentRuns = 0;
};

/// The words of text split at white space, with their counts; with ngramLength above 1,
/// the sequences of that many such words, joined by a space.
WordTable countWhiteSpaceWords(const QByteArray& text, int ngramLength = 1);

} // namespace tallyvox::testing
