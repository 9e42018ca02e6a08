#pragma once

#include "indexer/TextSink.h"

#include <string>
#include <string_view>

namespace tallyvox::indexer::readers {

/// The kinds of document told apart by content.
enum class DocumentKind { PlainText, Pdf, Rtf, RtfPackage, Container, WordBinary, Html, Xml };

/// What the file at path is, from its first bytes (and, for a zip, its entries); the
/// extension only decides between HTML and XML when the content allows both.
DocumentKind documentKind(const std::string& path);

/// Whether a document reader claims the file at path (documentKind is not PlainText).
bool claimsDocument(const std::string& path);

/// Reads the document at path into sink. Returns false when no document reader claims
/// it, so that the caller reads it as plain text. A document that is damaged, encrypted
/// or cut short is still claimed: it gives what text could be read, perhaps none.
bool readDocument(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer::readers
