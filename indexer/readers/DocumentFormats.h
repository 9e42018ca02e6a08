#pragma once

#include "indexer/TextSink.h"
#include "indexer/readers/DocumentKind.h"

#include <string>
#include <string_view>

namespace tallyvox::indexer::readers {

/// Reads the document at path into sink. Returns false when no document reader claims
/// it, so that the caller reads it as plain text. A document that is damaged, encrypted
/// or cut short is still claimed: it gives what text could be read, perhaps none.
bool readDocument(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer::readers
