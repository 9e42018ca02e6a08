#pragma once

#include "indexer/TextSink.h"

#include <string>

namespace tallyvox::indexer::readers {

/// Delivers the text of every page in reading order, a boundary between pages. A PDF that
/// is broken or needs a password gives no text.
void readPdf(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer::readers
