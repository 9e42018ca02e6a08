#pragma once

// Header only: the fallback indexer, which links no document reader, uses it too.

#include <algorithm>
#include <string_view>

namespace tallyvox::indexer::readers {

/// Binary document formats told by their first bytes.
enum class BinaryKind { None, Pdf, Zip, Compound };

/// Whether "%PDF-" and a version start the document. Junk before it is allowed as readers
/// allow it (anywhere in the first 1024 bytes), but only junk that is not text: blanks, a
/// byte-order mark, or binary bytes such as a MacBinary header. A text, HTML or Markdown
/// file that quotes the marker is no PDF.
inline bool isPdfStart(std::string_view head)
{
    const auto at = head.substr(0, 1024).find("%PDF-");
    if (at == std::string_view::npos || at + 5 >= head.size() || head[at + 5] < '0' ||
        head[at + 5] > '9') {
        return false;
    }
    std::string_view junk = head.substr(0, at);
    if (junk.substr(0, 3) == "\xEF\xBB\xBF") {
        junk.remove_prefix(3);
    }
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
    const auto binary = [](char c) {
        const auto u = static_cast<unsigned char>(c);
        return u < 0x20 && u != '\t' && u != '\r' && u != '\n' && u != '\f';
    };
    return std::all_of(junk.begin(), junk.end(), blank) ||
           std::any_of(junk.begin(), junk.end(), binary);
}

inline BinaryKind binaryKind(std::string_view head)
{
    if (isPdfStart(head)) {
        return BinaryKind::Pdf;
    }
    if (head.substr(0, 4) == "PK\x03\x04" || head.substr(0, 4) == "PK\x05\x06") {
        return BinaryKind::Zip;
    }
    if (head.substr(0, 8) == "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") {
        return BinaryKind::Compound;
    }
    return BinaryKind::None;
}

/// The kind's name for people.
inline const char* binaryKindName(BinaryKind kind)
{
    switch (kind) {
    case BinaryKind::Pdf:
        return "a PDF document";
    case BinaryKind::Zip:
        return "a zip container";
    case BinaryKind::Compound:
        return "an OLE compound file";
    case BinaryKind::None:
        break;
    }
    return "text";
}

} // namespace tallyvox::indexer::readers
