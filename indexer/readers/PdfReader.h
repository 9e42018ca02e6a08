#pragma once

#include "indexer/TextSink.h"

#include <string>

namespace tallyvox::indexer::readers {

/// Delivers the text of every page in reading order, a boundary between pages. A PDF that
/// is broken or needs a password gives no text. poppler works in a child process watched
/// by this one: a page whose text takes longer than ReadLimits::maxPdfPageSeconds, or that
/// makes poppler fail, is left out (and noted in the CutReport), and the pages after it are
/// read by a new child; the whole document stops after ReadLimits::minPdfSeconds plus one
/// second per ReadLimits::pdfBytesPerSecond of file.
void readPdf(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer::readers
