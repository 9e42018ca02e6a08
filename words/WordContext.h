#pragma once

#include <QString>

#include <chrono>

namespace tallyvox {

class Desktop;
class IndexerProgress;
class IndexerStop;
class PreferenceStore;
class WordListRun;

/// The wall-clock time an indexer run may take before the allowance for the file's size.
inline constexpr std::chrono::milliseconds defaultIndexerTimeBase{30'000};

/// What word extraction needs from its surroundings; the caller owns all of it.
struct WordContext {
    Desktop& desktop;
    const PreferenceStore& preferences;
    /// The folder holding SearchKitIndexer and SearchKitIndexer32.
    QString indexerDirectory;
    /// The private per-user temporary folder; each indexer run gets a folder of its own in it.
    QString temporaryFolder;
    /// Ends the running indexer when the application quits; none where nothing quits.
    IndexerStop* stop = nullptr;
    /// Each run may take this long, plus one second per 10 MiB of input, before it is ended.
    std::chrono::milliseconds indexerTimeBase = defaultIndexerTimeBase;
    /// The batch run in progress, which may combine its files' lists and reports a stop
    /// list that cannot be read once; none for a service request, whose one list is a run
    /// of its own.
    WordListRun* run = nullptr;
    /// Hears how far the running indexer has read; none where nothing shows it.
    IndexerProgress* progress = nullptr;
};

/// libexec/tallyvox beside the running program's bin/ folder, in the build tree as installed.
QString defaultIndexerDirectory();

} // namespace tallyvox
