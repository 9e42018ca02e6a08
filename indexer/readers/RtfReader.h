#pragma once

#include "indexer/TextSink.h"
#include "indexer/readers/ByteSource.h"

namespace tallyvox::indexer::readers {

/// Delivers an RTF document's text: body, headers, footers, footnotes and field results,
/// without tables, pictures, hidden text or field codes. \'hh bytes are read in the code
/// page of the document or of the current font; \uN with its fallback skipped (\ucN).
void readRtf(const ByteSource& source, TextSink& sink);

} // namespace tallyvox::indexer::readers
