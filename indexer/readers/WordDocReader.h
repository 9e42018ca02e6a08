#pragma once

#include "indexer/TextSink.h"

#include <string_view>

namespace tallyvox::indexer::readers {

/// Delivers the text of a Word 97-2003 (.doc) or Word 6/95 document held in an OLE
/// compound file: every story of the piece table, field codes left out. Returns false when
/// the bytes are not a compound file with a Word document stream. Encrypted documents give
/// no text.
bool readWordDocument(std::string_view file, TextSink& sink);

} // namespace tallyvox::indexer::readers
