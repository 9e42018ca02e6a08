#pragma once

#include <QString>

namespace tallyvox {

class Desktop;
class PreferenceStore;

/// What word extraction needs from its surroundings; the caller owns all of it.
struct WordContext {
    Desktop& desktop;
    const PreferenceStore& preferences;
    /// The folder holding SearchKitIndexer and SearchKitIndexer32.
    QString indexerDirectory;
    /// The per-user temporary folder where the indexers leave their result.
    QString temporaryFolder;
};

/// libexec/tallyvox beside the running program's bin/ folder, in the build tree as installed.
QString defaultIndexerDirectory();

} // namespace tallyvox
