#pragma once

#include "indexer/TextSink.h"

#include <string>

namespace tallyvox::indexer::readers {

/// Delivers the text of every page in reading order, a boundary between pages. A PDF that
/// is broken or needs a password gives no text. poppler works in child processes watched
/// by this one, as many as allowedThreads allows but no more than the cores, each reading
/// its share of the pages; the pages are delivered in order. A page whose text takes longer than
/// ReadLimits::maxPdfPageSeconds, or that makes poppler fail, is left out (and noted in the
/// CutReport), and a new child goes on after it. Progress is reported after every page.
void readPdf(const std::string& path, TextSink& sink);

/// The same with at most this many page readers, whatever the cores.
void readPdf(const std::string& path, TextSink& sink, unsigned readers);

} // namespace tallyvox::indexer::readers
