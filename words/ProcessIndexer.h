#pragma once

#include "words/Indexer.h"

#include <QString>

#include <chrono>
#include <memory>

namespace tallyvox {

class Desktop;

/// How long an indexer may go without reading further before it is taken to be stuck.
inline constexpr std::chrono::milliseconds defaultIndexerStallLimit{60'000};

class RunFolders;
class ServerPool;

/// The indexer executables, run as serving processes ("--serve") that index each file in a
/// child process of their own. A server gets a private folder as TMPDIR, inside the
/// temporary folder, and works on one file at a time; it serves later runs of the same kind
/// when a file left nothing behind, and goes with a run that failed or was stopped. Idle
/// servers and emptied folders go with the indexer.
class ProcessIndexer final : public Indexer {
public:
    struct Setup {
        /// The folder holding SearchKitIndexer and SearchKitIndexer32.
        QString directory;
        /// The private per-user temporary folder the runs' folders are made in.
        QString temporaryFolder;
        /// A run whose reported position has not moved for this long is ended. The
        /// indexer reports at least every few seconds while it reads, so only a stuck
        /// one waits this long.
        std::chrono::milliseconds stallLimit = defaultIndexerStallLimit;
    };

    /// Log lines (the indexer's own complaints, and why a run ended) go to desktop.
    ProcessIndexer(Desktop& desktop, Setup setup);
    ~ProcessIndexer() override;

    /// RunIndexer: the named executable's server indexes posixPath.
    std::unique_ptr<IndexerRun> start(const QString& posixPath, const QString& executableName,
                                      int ngramLength, bool typeRuns) override;

    /// One run alone uses the threads it chooses; several share the processor's cores
    /// between them (TALLYVOX_INDEXER_THREADS in each run's environment).
    void setConcurrentRuns(int runs) override;

private:
    Desktop& m_desktop;
    Setup m_setup;
    std::shared_ptr<RunFolders> m_folders;
    std::shared_ptr<ServerPool> m_servers;
    int m_threadsPerRun = 0;
};

/// libexec/tallyvox beside the running program's bin/ folder, in the build tree as installed.
QString defaultIndexerDirectory();

} // namespace tallyvox
