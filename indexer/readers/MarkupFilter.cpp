#include "indexer/readers/MarkupFilter.h"

#include "indexer/readers/CutReport.h"
#include "indexer/readers/ReadLimits.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace tallyvox::indexer::readers {

namespace {

using namespace std::string_view_literals;

constexpr std::array inlineElements = {
    "a"sv,    "abbr"sv,  "acronym"sv, "b"sv,     "bdi"sv,  "bdo"sv,    "big"sv,    "cite"sv,
    "code"sv, "data"sv,  "del"sv,     "dfn"sv,   "em"sv,   "font"sv,   "i"sv,      "ins"sv,
    "kbd"sv,  "label"sv, "mark"sv,    "nobr"sv,  "q"sv,    "rb"sv,     "rp"sv,     "rt"sv,
    "ruby"sv, "s"sv,     "samp"sv,    "small"sv, "span"sv, "strike"sv, "strong"sv, "sub"sv,
    "sup"sv,  "time"sv,  "tt"sv,      "u"sv,     "var"sv,  "wbr"sv,
};

// Elements without content or end tag: they do not nest.
constexpr std::array voidElements = {
    "area"sv,  "base"sv, "br"sv,   "col"sv,   "embed"sv,  "hr"sv,    "img"sv,
    "input"sv, "link"sv, "meta"sv, "param"sv, "source"sv, "track"sv, "wbr"sv,
};

// Elements whose content is not markup: a '<' inside them starts no tag.
constexpr std::array rawTextElements = {
    "iframe"sv, "noembed"sv,  "noframes"sv, "plaintext"sv, "script"sv,
    "style"sv,  "textarea"sv, "title"sv,    "xmp"sv,
};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

// Keeps the last n bytes of s.
void keepTail(std::string& s, char c, std::size_t n)
{
    s.push_back(c);
    if (s.size() > n) {
        s.erase(0, s.size() - n);
    }
}

} // namespace

bool isInlineHtmlElement(std::string_view name)
{
    return contains(inlineElements, name);
}

std::size_t MarkupFilter::read(char* buf, std::size_t cap)
{
    std::array<char, 65536> in{};
    while (m_outPos == m_out.size()) {
        m_out.clear();
        m_outPos = 0;
        const std::size_t n = m_ended ? 0 : m_source(in.data(), in.size());
        if (n == 0) {
            if (m_ended) {
                return 0;
            }
            m_ended = true;
            flushPending();
            continue;
        }
        scan(std::string_view(in.data(), n));
    }
    const std::size_t n = std::min(cap, m_out.size() - m_outPos);
    std::memcpy(buf, m_out.data() + m_outPos, n);
    m_outPos += n;
    return n;
}

void MarkupFilter::scan(std::string_view chunk)
{
    for (std::size_t i = 0; i < chunk.size(); ++i) {
        // Text and quoted values, the bulk of any document, go on in runs.
        if (m_state == State::Text && m_rawEnd.empty()) {
            const std::size_t end = std::min(chunk.find('<', i), chunk.size());
            emit(chunk.substr(i, end - i));
            i = end;
            if (i == chunk.size()) {
                break;
            }
        } else if (m_state == State::InTag && m_quote != 0) {
            const std::size_t end = std::min(chunk.find(m_quote, i), chunk.size());
            if (!m_dropping) {
                emit(chunk.substr(i, end - i));
            }
            i = end;
            if (i == chunk.size()) {
                break;
            }
        }
        put(chunk[i]);
    }
}

// What was held back when the input ends inside a tag's name.
void MarkupFilter::flushPending()
{
    if (m_state == State::Open || (m_state == State::StartName && !m_flattened)) {
        emit("<");
        emit(m_name);
    } else if (m_state == State::EndName) {
        emit("</");
        emit(m_name);
    }
    m_state = State::Text;
}

void MarkupFilter::put(char c)
{
    switch (m_state) {
    case State::Text:
        if (!m_rawEnd.empty() && rawText(c)) {
            return;
        }
        if (c == '<') {
            m_state = State::Open;
        } else {
            m_out.push_back(c);
        }
        return;
    case State::Open:
        openTag(c);
        return;
    case State::StartName:
    case State::EndName:
        nameChar(c);
        return;
    case State::InTag:
        inTag(c);
        return;
    case State::Declaration:
        if (!m_flattened) {
            m_out.push_back(c);
        }
        if (declaration(c)) {
            m_state = State::Text;
        }
        return;
    }
}

// A tag's name is held back until it ends; a name this long is no element anyone nests.
void MarkupFilter::nameChar(char c)
{
    const bool ends =
        isSpace(c) || c == '>' || m_name.size() >= 64 || (m_state == State::StartName && c == '/');
    if (!ends) {
        m_name.push_back(m_html ? lower(c) : c);
    } else if (m_state == State::StartName) {
        startNameEnds(c);
    } else {
        endNameEnds(c);
    }
}

// Raw text passes until its end tag, which is then read as a tag.
bool MarkupFilter::rawText(char c)
{
    keepTail(m_tail, lower(c), m_rawEnd.size());
    if (m_tail != m_rawEnd) {
        m_out.push_back(c);
        return true;
    }
    // The '<' and name of the end tag went out already: stream the rest of it.
    m_out.push_back(c);
    m_rawEnd.clear();
    m_tail.clear();
    m_flattened = false;
    m_depth -= m_depth > 0 ? 1 : 0;
    m_state = State::Declaration;
    m_declaration = "/";
    return true;
}

void MarkupFilter::openTag(char c)
{
    const auto u = static_cast<unsigned char>(c);
    m_name.clear();
    if (std::isalpha(u) != 0 || c == '_' || c == ':' || u >= 0x80) {
        m_state = State::StartName;
        put(c);
    } else if (c == '/') {
        m_state = State::EndName;
    } else if (c == '!' || c == '?') {
        emit("<");
        m_out.push_back(c);
        m_declaration.assign(1, c);
        m_tail.clear();
        m_flattened = false;
        m_state = State::Declaration;
    } else {
        emit("<"); // a lone '<' in text
        m_state = State::Text;
        put(c);
    }
}

void MarkupFilter::startNameEnds(char c)
{
    m_openName = m_name;
    m_attributes = 0;
    m_quote = 0;
    m_expectValue = false;
    m_inWord = false;
    m_dropping = false;
    m_last = 0;
    m_flattened =
        m_html && m_depth >= ReadLimits::maxHtmlDepth && !contains(rawTextElements, m_openName);
    if (m_flattened) {
        m_dropping = true;
        CutReport::note("HTML: tags nested deeper than " +
                        std::to_string(ReadLimits::maxHtmlDepth) +
                        " levels were flattened (their text is kept)");
    } else {
        emit("<");
        emit(m_name);
    }
    m_state = State::InTag;
    inTag(c);
}

void MarkupFilter::endNameEnds(char c)
{
    const bool drop = m_dropped > 0 && !contains(rawTextElements, m_name);
    m_depth -= m_depth > 0 ? 1 : 0;
    if (drop) {
        --m_dropped;
        emit(isInlineHtmlElement(m_name) ? "" : "\n");
    } else {
        emit("</");
        emit(m_name);
    }
    m_flattened = drop;
    m_declaration = "/";
    m_state = State::Declaration;
    put(c);
}

void MarkupFilter::inTag(char c)
{
    if (m_quote != 0) {
        if (!m_dropping) {
            m_out.push_back(c);
        }
        m_quote = c == m_quote ? 0 : m_quote;
        return;
    }
    if (c == '>' || (c == '<' && m_dropping)) {
        endTag(m_last == '/');
        if (c == '<') {
            m_state = State::Open;
        }
        return;
    }
    if (isSpace(c)) {
        m_inWord = false;
    } else if (c == '=') {
        m_expectValue = true;
        m_inWord = false;
    } else if ((c == '"' || c == '\'') && (m_expectValue || !m_html)) {
        m_quote = c;
        m_expectValue = false;
    } else if (c != '/' && !m_inWord) {
        m_inWord = true;
        if (!m_expectValue && ++m_attributes > ReadLimits::maxAttributes && !m_dropping) {
            m_dropping = true;
            CutReport::note("markup: attributes past the first " +
                            std::to_string(ReadLimits::maxAttributes) + " of a tag were dropped");
        }
        m_expectValue = false;
    }
    if (!isSpace(c)) {
        m_last = c;
    }
    if (!m_dropping) {
        m_out.push_back(c);
    }
}

void MarkupFilter::endTag(bool selfClosing)
{
    m_state = State::Text;
    if (m_flattened) {
        emit(isInlineHtmlElement(m_openName) ? "" : "\n");
    } else if (m_dropping) {
        emit(selfClosing ? "/>" : ">");
    } else {
        emit(">");
    }
    if (!m_html || selfClosing || contains(voidElements, m_openName)) {
        return;
    }
    ++m_depth;
    m_dropped += m_flattened ? 1 : 0;
    if (!m_flattened && contains(rawTextElements, m_openName)) {
        m_rawEnd = "</" + m_openName;
        m_tail.clear();
    }
}

// Whether c ends the declaration, comment, CDATA section or end tag being passed on.
bool MarkupFilter::declaration(char c)
{
    constexpr std::string_view comment = "!--";
    constexpr std::string_view cdata = "![CDATA[";
    const auto opening = [&] {
        return m_declaration != comment && m_declaration != cdata &&
               (comment.starts_with(m_declaration) || cdata.starts_with(m_declaration));
    };
    if (opening()) {
        m_declaration.push_back(c);
        m_tail.clear();
        // Still telling a comment or CDATA section from a declaration such as <!DOCTYPE>.
        return !opening() && m_declaration != comment && m_declaration != cdata && c == '>';
    }
    keepTail(m_tail, c, 3);
    if (m_declaration == comment) {
        return m_tail == "-->";
    }
    if (m_declaration == cdata) {
        return m_tail == "]]>";
    }
    return c == '>';
}

} // namespace tallyvox::indexer::readers
