#pragma once

#include "indexer/TextSink.h"

#include <string>

namespace tallyvox::indexer {

/// The one place that picks a reader for a document and feeds its text into sink.
/// Each executable links its own definition: SearchKitIndexer will know document formats,
/// SearchKitIndexer32 reads everything as plain text.
/// Returns false when the document cannot be read; sink then holds what was read before.
bool readDocument(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer
