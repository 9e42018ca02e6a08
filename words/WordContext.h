#pragma once

#include <QString>

namespace tallyvox {

class Desktop;
class Indexer;
class IndexerStop;
class PreferenceStore;

/// What word extraction needs from its surroundings; the caller owns all of it, and it
/// outlives every job made with it. Small enough to be copied into each job.
struct WordContext {
    Desktop& desktop;
    const PreferenceStore& preferences;
    /// Runs the indexers: their executables, or a stand-in in tests.
    Indexer& indexer;
    /// The private per-user temporary folder (the services' copies of selected text).
    QString temporaryFolder;
    /// Ends the running indexers when the application quits; none where nothing quits.
    IndexerStop* stop = nullptr;
};

} // namespace tallyvox
