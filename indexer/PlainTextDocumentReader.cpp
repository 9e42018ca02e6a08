#include "indexer/DocumentReader.h"

#include "indexer/TextReader.h"

namespace tallyvox::indexer {

// The fallback indexer reads every file as text, so it still yields words when a format
// reader of the main indexer fails on a document.
bool readDocument(const std::string& path, TextSink& sink)
{
    return readTextFile(path, sink);
}

} // namespace tallyvox::indexer
