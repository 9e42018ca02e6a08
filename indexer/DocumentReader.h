#pragma once

#include "indexer/TextSink.h"

#include <string>
#include <vector>

namespace tallyvox::indexer {

/// What reading a document came to.
struct DocumentRead {
    /// False when the document could not be read at all; the sink then holds what was
    /// read before.
    bool readable = true;
    /// Why the text delivered is not all of the document's, for people: each a limit that
    /// cut it short, or a kind of file this reader does not turn into words.
    std::vector<std::string> cuts;
};

/// The one place that picks a reader for a document and feeds its text into sink.
/// Each executable links its own definition: SearchKitIndexer reads plain text and hands
/// documents to SearchKitDocumentIndexer, which knows their formats; SearchKitIndexer32
/// reads everything as plain text.
DocumentRead readDocument(const std::string& path, TextSink& sink);

/// Called first with the command line: an executable that leaves the file at argv[1] to
/// another replaces itself with that one here, same arguments, same process. Returns false
/// only when it should have and could not.
bool handOff(char** argv);

} // namespace tallyvox::indexer
