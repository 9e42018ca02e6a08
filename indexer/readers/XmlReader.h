#pragma once

#include "indexer/TextSink.h"
#include "indexer/readers/ByteSource.h"

#include <string>

namespace tallyvox::indexer::readers {

/// The local name of the document's root element, or empty when the bytes are not XML.
std::string xmlRootName(const ByteSource& source);

/// Delivers every text node; each element starts and ends a word, since nothing says
/// which elements of an unknown vocabulary run inline.
void readXml(const ByteSource& source, TextSink& sink);

/// Delivers the text an SVG picture draws (its text elements, spans joined).
void readSvg(const ByteSource& source, TextSink& sink);

} // namespace tallyvox::indexer::readers
