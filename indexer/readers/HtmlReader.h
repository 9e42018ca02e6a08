#pragma once

#include "indexer/TextSink.h"
#include "indexer/readers/ByteSource.h"

namespace tallyvox::indexer::readers {

/// Delivers the text a browser would show: no head, script or style, no markup or
/// attributes. Block elements end words; inline ones (b, span, a, ...) do not.
void readHtml(const ByteSource& source, TextSink& sink);

} // namespace tallyvox::indexer::readers
