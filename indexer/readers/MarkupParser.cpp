#include "indexer/readers/MarkupParser.h"

#include "indexer/readers/CutReport.h"
#include "indexer/readers/MarkupFilter.h"
#include "indexer/readers/ReadLimits.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>
#include <libxml/entities.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <mutex>
#include <string>

namespace tallyvox::indexer::readers {

namespace {

std::string_view view(const xmlChar* s)
{
    return s == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(s));
}

void ignoreStructuredError(void*, xmlErrorPtr) {}
void ignoreGenericError(void*, const char*, ...) {}

xmlParserInputPtr refuseExternalEntity(const char*, const char*, xmlParserCtxtPtr)
{
    return nullptr;
}

// Process-wide libxml2 settings: whatever a parse asks for, nothing is loaded from outside.
void initLibxml()
{
    static std::once_flag once;
    std::call_once(once, [] {
        xmlInitParser();
        xmlSetExternalEntityLoader(refuseExternalEntity);
        xmlSetGenericErrorFunc(nullptr, ignoreGenericError);
        xmlSetStructuredErrorFunc(nullptr, ignoreStructuredError);
    });
}

bool hasByteOrderMark(std::string_view start)
{
    return start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF" ||
           start.substr(0, 3) == "\xEF\xBB\xBF";
}

bool declaresCharset(std::string_view start)
{
    std::string lowered(start.substr(0, 4096));
    for (char& c : lowered) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return lowered.find("charset") != std::string::npos ||
           lowered.find("encoding=") != std::string::npos;
}

// The length of the UTF-8 sequence a lead byte starts, or 0 when it starts none.
std::size_t sequenceLength(unsigned char c)
{
    if (c < 0x80) {
        return 1;
    }
    if ((c >> 5) == 6) {
        return 2;
    }
    if ((c >> 4) == 14) {
        return 3;
    }
    return (c >> 3) == 30 ? 4 : 0;
}

// Whether start is UTF-8, up to a sequence cut by its end.
bool isUtf8(std::string_view start)
{
    for (std::size_t i = 0; i < start.size();) {
        const std::size_t len = sequenceLength(static_cast<unsigned char>(start[i]));
        if (len == 0) {
            return false;
        }
        if (i + len > start.size()) {
            break; // cut by the chunk, not invalid
        }
        for (std::size_t k = 1; k < len; ++k) {
            if ((static_cast<unsigned char>(start[i + k]) & 0xC0) != 0x80) {
                return false;
            }
        }
        i += len;
    }
    return true;
}

// The encoding to impose on HTML that declares none (no byte-order mark, no charset, no
// XML declaration): UTF-8 when the start is valid UTF-8, else Windows-1252 as browsers do.
const char* undeclaredEncoding(std::string_view start)
{
    if (hasByteOrderMark(start) || declaresCharset(start)) {
        return nullptr;
    }
    return isUtf8(start) ? "UTF-8" : "windows-1252";
}

} // namespace

std::string_view MarkupAttributes::value(std::string_view localName) const
{
    for (std::size_t i = 0; i < static_cast<std::size_t>(m_count); ++i) {
        const unsigned char** a = m_namespaced + 5 * i;
        if (view(a[0]) == localName) {
            return {reinterpret_cast<const char*>(a[3]), static_cast<std::size_t>(a[4] - a[3])};
        }
    }
    for (const unsigned char** a = m_pairs; a != nullptr && a[0] != nullptr; a += 2) {
        std::string_view name = view(a[0]);
        if (const auto colon = name.find(':'); colon != std::string_view::npos) {
            name.remove_prefix(colon + 1);
        }
        if (name == localName) {
            return view(a[1]);
        }
    }
    return {};
}

class MarkupParser {
public:
    MarkupParser(MarkupHandler& handler) : m_handler(handler) {}

    // libxml2's own SAX2 callbacks (kept for the document and its internal subset) need
    // the parser context as user data, so the parser object rides in its _private.
    static MarkupParser* self_(void* ctx)
    {
        return static_cast<MarkupParser*>(static_cast<xmlParserCtxtPtr>(ctx)->_private);
    }

    static void startNs(void* self, const xmlChar* localname, const xmlChar*, const xmlChar*, int,
                        const xmlChar**, int nbAttributes, int, const xmlChar** attributes)
    {
        auto* p = self_(self);
        p->m_maxDepth = std::max(p->m_maxDepth, ++p->m_depth);
        MarkupAttributes attrs;
        attrs.m_namespaced = attributes;
        attrs.m_count = nbAttributes;
        p->m_sawRoot = true;
        p->m_handler.startElement(view(localname), attrs);
        p->checkStop();
    }

    static void endNs(void* self, const xmlChar* localname, const xmlChar*, const xmlChar*)
    {
        auto* p = self_(self);
        p->m_depth -= p->m_depth > 0 ? 1 : 0;
        p->m_handler.endElement(view(localname));
        p->checkStop();
    }

    static void startHtml(void* self, const xmlChar* name, const xmlChar** attributes)
    {
        auto* p = self_(self);
        MarkupAttributes attrs;
        attrs.m_pairs = attributes;
        p->m_handler.startElement(view(name), attrs);
        p->checkStop();
    }

    static void endHtml(void* self, const xmlChar* name)
    {
        auto* p = self_(self);
        p->m_handler.endElement(view(name));
        p->checkStop();
    }

    static void characters(void* self, const xmlChar* text, int len)
    {
        auto* p = self_(self);
        p->m_handler.characters(
            {reinterpret_cast<const char*>(text), static_cast<std::size_t>(len)});
        p->checkStop();
    }

    static void ignoreEntityDecl(void*, const xmlChar*, int, const xmlChar*, const xmlChar*,
                                 xmlChar*)
    {}

    static xmlEntityPtr predefinedEntity(void*, const xmlChar* name)
    {
        return xmlGetPredefinedEntity(name);
    }

    static xmlParserInputPtr noInput(void*, const xmlChar*, const xmlChar*) { return nullptr; }

    void checkStop()
    {
        if (m_handler.stopped() && m_ctxt != nullptr) {
            xmlStopParser(m_ctxt);
        }
    }

    template <typename ParseChunk>
    void feed(const ByteSource& source, ParseChunk parseChunk)
    {
        std::array<char, 65536> storage{};
        char* buf = storage.data();
        for (;;) {
            const std::size_t n = source(buf, storage.size());
            if (m_handler.stopped()) {
                break;
            }
            if (n == 0) {
                parseChunk(buf, 0, 1);
                break;
            }
            parseChunk(buf, static_cast<int>(n), 0);
            if (m_ctxt->disableSAX != 0 && m_ctxt->recovery == 0) {
                break;
            }
        }
        if (m_ctxt->myDoc != nullptr) {
            xmlFreeDoc(m_ctxt->myDoc);
            m_ctxt->myDoc = nullptr;
        }
    }

    MarkupHandler& m_handler;
    xmlParserCtxtPtr m_ctxt = nullptr;
    std::size_t m_depth = 0;
    std::size_t m_maxDepth = 0;
    bool m_sawRoot = false;
};

namespace {

// What both parsers share: text in every form goes to the handler, comments and
// processing instructions are dropped, nothing is loaded from outside, and errors stay
// quiet (a damaged document yields what could be read).
void keepTextOnly(xmlSAXHandler& sax)
{
    sax.characters = MarkupParser::characters;
    sax.cdataBlock = MarkupParser::characters;
    sax.ignorableWhitespace = MarkupParser::characters;
    sax.comment = nullptr;
    sax.processingInstruction = nullptr;
    sax.reference = nullptr;
    sax.resolveEntity = MarkupParser::noInput;
    sax.warning = ignoreGenericError;
    sax.error = ignoreGenericError;
    sax.fatalError = ignoreGenericError;
    sax.serror = ignoreStructuredError;
}

} // namespace

bool parseXml(const ByteSource& source, MarkupHandler& handler)
{
    initLibxml();
    xmlSAXHandler sax;
    std::memset(&sax, 0, sizeof sax);
    xmlSAXVersion(&sax, 2);
    sax.startElementNs = MarkupParser::startNs;
    sax.endElementNs = MarkupParser::endNs;
    sax.startElement = nullptr;
    sax.endElement = nullptr;
    keepTextOnly(sax);
    // Declared entities are dropped and only the five predefined ones resolve: no
    // billion laughs, no external entities, whatever the document declares.
    sax.entityDecl = MarkupParser::ignoreEntityDecl;
    sax.getEntity = MarkupParser::predefinedEntity;
    sax.getParameterEntity = MarkupParser::predefinedEntity;
    sax.externalSubset = nullptr;

    MarkupParser parser(handler);
    parser.m_ctxt = xmlCreatePushParserCtxt(&sax, nullptr, nullptr, 0, nullptr);
    if (parser.m_ctxt == nullptr) {
        return false;
    }
    parser.m_ctxt->_private = &parser;
    xmlCtxtUseOptions(parser.m_ctxt, XML_PARSE_NONET | XML_PARSE_RECOVER | XML_PARSE_NOERROR |
                                         XML_PARSE_NOWARNING);
    MarkupFilter filter(source, false);
    const ByteSource filtered = [&filter](char* buf, std::size_t cap) {
        return filter.read(buf, cap);
    };
    parser.feed(filtered, [&parser](const char* data, int size, int terminate) {
        xmlParseChunk(parser.m_ctxt, data, size, terminate);
    });
    // libxml2 stops for good past its depth limit.
    if (parser.m_maxDepth >= xmlParserMaxDepth && !handler.stopped()) {
        CutReport::note("XML: elements nested deeper than " + std::to_string(xmlParserMaxDepth) +
                        " levels ended the part");
    }
    xmlFreeParserCtxt(parser.m_ctxt);
    return parser.m_sawRoot;
}

void parseHtml(const ByteSource& source, MarkupHandler& handler)
{
    initLibxml();
    xmlSAXHandler sax;
    std::memset(&sax, 0, sizeof sax);
    xmlSAX2InitHtmlDefaultSAXHandler(&sax);
    sax.startElement = MarkupParser::startHtml;
    sax.endElement = MarkupParser::endHtml;
    keepTextOnly(sax);

    // libxml2 would take undeclared text for Latin-1; look at the start first.
    MarkupFilter filter(source, true);
    std::string first(65536, '\0');
    first.resize(filter.read(first.data(), first.size()));
    const char* fallback = undeclaredEncoding(first);
    const ByteSource again = memorySource(first);
    const ByteSource rest = [&again, &filter](char* buf, std::size_t cap) {
        const std::size_t n = again(buf, cap);
        return n > 0 ? n : filter.read(buf, cap);
    };

    MarkupParser parser(handler);
    parser.m_ctxt =
        htmlCreatePushParserCtxt(&sax, nullptr, nullptr, 0, nullptr, XML_CHAR_ENCODING_NONE);
    if (parser.m_ctxt != nullptr && fallback != nullptr) {
        xmlSwitchToEncoding(parser.m_ctxt, xmlFindCharEncodingHandler(fallback));
    }
    if (parser.m_ctxt == nullptr) {
        return;
    }
    parser.m_ctxt->_private = &parser;
    htmlCtxtUseOptions(parser.m_ctxt, HTML_PARSE_NONET | HTML_PARSE_RECOVER | HTML_PARSE_NOERROR |
                                          HTML_PARSE_NOWARNING);
    parser.feed(rest, [&parser](const char* data, int size, int terminate) {
        htmlParseChunk(parser.m_ctxt, data, size, terminate);
    });
    htmlFreeParserCtxt(parser.m_ctxt);
}

} // namespace tallyvox::indexer::readers
