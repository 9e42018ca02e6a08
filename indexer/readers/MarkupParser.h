#pragma once

#include "indexer/readers/ByteSource.h"

#include <cstddef>
#include <string_view>

namespace tallyvox::indexer::readers {

/// An element's attributes as the parser delivered them.
class MarkupAttributes {
public:
    /// The value of the attribute with this local name (prefix ignored), or empty.
    std::string_view value(std::string_view localName) const;

private:
    friend class MarkupParser;
    const unsigned char** m_namespaced = nullptr; // libxml2 SAX2: 5 pointers per attribute
    int m_count = 0;
    const unsigned char** m_pairs = nullptr; // HTML: name, value, ..., null
};

/// Receives what a markup parser finds, in document order.
class MarkupHandler {
public:
    MarkupHandler() = default;
    virtual ~MarkupHandler() = default;
    MarkupHandler(const MarkupHandler&) = delete;
    MarkupHandler& operator=(const MarkupHandler&) = delete;

    /// name is the local name: without prefix, and lower case in HTML.
    virtual void startElement(std::string_view name, const MarkupAttributes& attributes) = 0;
    virtual void endElement(std::string_view name) = 0;
    /// Character data in UTF-8, references decoded; CDATA sections included.
    virtual void characters(std::string_view utf8) = 0;

    /// Asks the parser to stop as soon as it can.
    void stop() { m_stopped = true; }
    bool stopped() const { return m_stopped; }

private:
    bool m_stopped = false;
};

/// Parses XML with libxml2 in recovery mode. Nothing is ever fetched (no network, no
/// external DTD or entity), and entities declared in the document are not expanded, so
/// entity bombs cost nothing. Returns whether a root element was seen.
bool parseXml(const ByteSource& source, MarkupHandler& handler);

/// Parses HTML with libxml2's HTML parser. The charset comes from a byte-order mark or the
/// document's own declaration; undeclared text is UTF-8 when valid, else Latin-1. Nesting
/// beyond ReadLimits::maxHtmlDepth ends the parse.
void parseHtml(const ByteSource& source, MarkupHandler& handler);

} // namespace tallyvox::indexer::readers
