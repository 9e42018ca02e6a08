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
/// Each executable links its own definition: SearchKitIndexer knows document formats,
/// SearchKitIndexer32 reads plain text only.
DocumentRead readDocument(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer
