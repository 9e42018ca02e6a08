#pragma once

#include <QString>

#include <functional>

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
    /// Where mode 4 hands a file's text: decode-and-save, which lives above word extraction.
    /// Left empty, mode 4 reads the file and stops; the default keeps four-member initialisers
    /// valid.
    std::function<void(const QString& text)> decodeBase64Text = {};
};

/// libexec/tallyvox beside the running program's bin/ folder, in the build tree as installed.
QString defaultIndexerDirectory();

} // namespace tallyvox
