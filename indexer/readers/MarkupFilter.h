#pragma once

#include "indexer/readers/ByteSource.h"

#include <string>
#include <string_view>

namespace tallyvox::indexer::readers {

/// Whether an HTML element flows inside a line, so that text on both sides may join.
bool isInlineHtmlElement(std::string_view name);

/// Streams markup on to libxml2 with what would make it slow taken out, text kept:
/// attributes past ReadLimits::maxAttributes in one tag are dropped, and in HTML, tags
/// nested deeper than ReadLimits::maxHtmlDepth are dropped with their end tags (a block
/// element leaves a line break, so that words stay apart). It knows just enough markup for
/// that: quoted values, comments, CDATA sections and HTML's raw-text elements.
class MarkupFilter {
public:
    MarkupFilter(const ByteSource& source, bool html) : m_source(source), m_html(html) {}

    /// Fills buf like a ByteSource.
    std::size_t read(char* buf, std::size_t cap);

private:
    enum class State {
        Text,
        Open,       // after '<'
        StartName,  // a start tag's name, held back until it is complete
        EndName,    // an end tag's name, held back until it is complete
        InTag,      // a kept start tag's attributes
        Declaration // <!...>, <?...?>, a kept end tag: passed on to its '>'
    };

    void scan(std::string_view chunk);
    void flushPending();
    void put(char c);
    void openTag(char c);
    void nameChar(char c);
    void startNameEnds(char c);
    void endNameEnds(char c);
    void inTag(char c);
    void endTag(bool selfClosing);
    bool declaration(char c);
    bool rawText(char c);
    void emit(std::string_view s) { m_out.append(s); }

    const ByteSource& m_source;
    bool m_html;
    std::string m_out;
    std::size_t m_outPos = 0;
    bool m_ended = false;

    State m_state = State::Text;
    std::string m_name;       // the tag name being read, lower case in HTML
    std::string m_openName;   // the start tag being streamed
    bool m_dropping = false;  // the rest of this tag is dropped
    bool m_flattened = false; // this whole tag is dropped (too deep)
    char m_quote = 0;         // inside a quoted value
    bool m_expectValue = false;
    bool m_inWord = false; // inside an attribute's name or unquoted value
    char m_last = 0;       // the tag's last byte outside values, for "/>"
    std::size_t m_attributes = 0;
    std::size_t m_depth = 0;
    std::size_t m_dropped = 0; // open tags dropped for depth
    std::string m_declaration; // how a comment or CDATA section began
    std::string m_tail;        // the last bytes of a comment, CDATA or raw text
    std::string m_rawEnd;      // "</script" while inside a raw-text element
};

} // namespace tallyvox::indexer::readers
