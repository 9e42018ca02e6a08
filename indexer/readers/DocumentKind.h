#pragma once

#include <string>

// Telling formats apart needs no document library: the indexer that reads plain text uses
// this to decide whether to hand a file to the one that links them.

namespace tallyvox::indexer::readers {

/// The kinds of document told apart by content.
enum class DocumentKind { PlainText, Pdf, Rtf, RtfPackage, Container, WordBinary, Html, Xml };

/// What the file at path is, from its first kilobyte; the extension only decides between HTML and
/// XML when the content allows both.
DocumentKind documentKind(const std::string& path);

/// Whether a document reader claims the file at path (documentKind is not PlainText).
bool claimsDocument(const std::string& path);

} // namespace tallyvox::indexer::readers
