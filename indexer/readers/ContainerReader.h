#pragma once

#include "indexer/TextSink.h"
#include "indexer/readers/ByteSource.h"
#include "indexer/readers/ZipArchive.h"

namespace tallyvox::indexer::readers {

/// Reads a zip container by what it holds: Office Open XML (word processing, spreadsheet,
/// presentation), OpenDocument, or EPUB. Returns false when the bytes are not a zip
/// container; a zip of something else is claimed and gives no text.
bool readContainer(ZipArchive& zip, TextSink& sink);

/// Reads an OpenDocument body: a package's content.xml, or a flat (single XML) document.
void readOdfBody(const ByteSource& source, TextSink& sink);

} // namespace tallyvox::indexer::readers
