#include "indexer/readers/ContainerReader.h"

#include "indexer/readers/BufferedSink.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/HtmlReader.h"
#include "indexer/readers/MarkupParser.h"
#include "indexer/readers/NumberFormat.h"
#include "indexer/readers/ReadLimits.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tallyvox::indexer::readers {

namespace {

bool startsWith(std::string_view s, std::string_view prefix)
{
    return s.substr(0, prefix.size()) == prefix;
}

bool endsWith(std::string_view s, std::string_view suffix)
{
    return s.size() >= suffix.size() && s.substr(s.size() - suffix.size()) == suffix;
}

std::string directoryOf(std::string_view path)
{
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string() : std::string(path.substr(0, slash + 1));
}

// Resolves a relative reference inside a package: fragment dropped, %XX decoded,
// "." and ".." applied.
std::string resolve(std::string_view base, std::string_view href)
{
    href = href.substr(0, href.find('#'));
    std::string decoded;
    for (std::size_t i = 0; i < href.size(); ++i) {
        unsigned value = 0;
        if (href[i] == '%' && i + 2 < href.size() &&
            std::from_chars(href.data() + i + 1, href.data() + i + 3, value, 16).ptr ==
                href.data() + i + 3) {
            decoded.push_back(static_cast<char>(value));
            i += 2;
        } else {
            decoded.push_back(href[i]);
        }
    }
    const std::string joined =
        startsWith(decoded, "/") ? decoded.substr(1) : std::string(base) + decoded;
    std::vector<std::string> parts;
    std::size_t from = 0;
    while (from <= joined.size()) {
        const auto to = std::min(joined.find('/', from), joined.size());
        const std::string part = joined.substr(from, to - from);
        if (part == "..") {
            if (!parts.empty()) {
                parts.pop_back();
            }
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        from = to + 1;
    }
    std::string out;
    for (const auto& part : parts) {
        out += out.empty() ? part : "/" + part;
    }
    return out;
}

// The number in a part name such as "ppt/slides/slide12.xml", for ordering.
long partNumber(std::string_view name)
{
    const auto dot = name.rfind('.');
    const std::size_t end = dot == std::string_view::npos ? name.size() : dot;
    std::size_t begin = end;
    while (begin > 0 && name[begin - 1] >= '0' && name[begin - 1] <= '9') {
        --begin;
    }
    long n = 0;
    std::from_chars(name.data() + begin, name.data() + end, n);
    return n;
}

// --- Office Open XML --------------------------------------------------------------------

// WordprocessingML and DrawingML: text sits in <t>, paragraphs and cells end words.
class OoxmlText : public MarkupHandler {
public:
    explicit OoxmlText(TextSink& sink) : m_sink(sink) {}

    void startElement(std::string_view name, const MarkupAttributes&) override
    {
        if (isSkipped(name)) {
            ++m_skip;
        } else if (m_skip > 0) {
            return;
        } else if (name == "t") {
            ++m_inText;
        } else if (name == "p" || name == "tab" || name == "br" || name == "cr" || name == "ptab") {
            m_sink.boundary();
        } else if (name == "noBreakHyphen") {
            m_sink.text("\u2011");
        }
    }

    void endElement(std::string_view name) override
    {
        if (isSkipped(name)) {
            m_skip -= m_skip > 0 ? 1 : 0;
        } else if (m_skip > 0) {
            return;
        } else if (name == "t") {
            m_inText -= m_inText > 0 ? 1 : 0;
        } else if (name == "p" || name == "tc" || name == "txbxContent" || name == "footnote" ||
                   name == "endnote" || name == "comment" || name == "txBody" || name == "si") {
            m_sink.boundary();
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_inText > 0 && m_skip == 0) {
            m_sink.text(utf8);
        }
    }

private:
    // The fallback repeats its choice's content; phonetic runs are reading aids; fields
    // (slide numbers, dates) hold whatever value they had when last saved.
    static bool isSkipped(std::string_view name)
    {
        return name == "Fallback" || name == "rPh" || name == "fld";
    }

    TextSink& m_sink;
    int m_inText = 0;
    int m_skip = 0;
};

class SharedStrings : public MarkupHandler {
public:
    void startElement(std::string_view name, const MarkupAttributes&) override
    {
        if (name == "rPh") {
            ++m_skip;
        } else if (name == "t") {
            ++m_inText;
        }
    }

    void endElement(std::string_view name) override
    {
        if (name == "rPh") {
            m_skip -= m_skip > 0 ? 1 : 0;
        } else if (name == "t") {
            m_inText -= m_inText > 0 ? 1 : 0;
        } else if (name == "si") {
            strings.push_back(std::move(m_current));
            m_current.clear();
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_inText > 0 && m_skip == 0) {
            m_current.append(utf8);
        }
    }

    std::vector<std::string> strings;

private:
    std::string m_current;
    int m_inText = 0;
    int m_skip = 0;
};

// How numbers show: the number format of each cell style (cellXfs, by index), and the
// workbook's date system.
class CellStyles : public MarkupHandler {
public:
    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (name == "numFmt") {
            int id = -1;
            if (parseNumber(attributes.value("numFmtId"), id)) {
                m_customFormats[id] = attributes.value("formatCode");
            }
        } else if (name == "cellXfs") {
            ++m_inCellFormats;
        } else if (name == "xf" && m_inCellFormats > 0) {
            int id = 0;
            parseNumber(attributes.value("numFmtId"), id);
            m_styleFormats.push_back(id);
        } else if (name == "workbookPr") {
            const std::string_view value = attributes.value("date1904");
            date1904 = value == "1" || value == "true";
        }
    }
    void endElement(std::string_view name) override
    {
        if (name == "cellXfs") {
            m_inCellFormats -= m_inCellFormats > 0 ? 1 : 0;
        }
    }
    void characters(std::string_view) override {}

    /// The format code of a cell style; General for an unknown style, empty for a built-in
    /// format not rendered here.
    std::string_view formatCode(std::string_view style) const
    {
        std::size_t index = 0;
        const int id =
            parseNumber(style, index) && index < m_styleFormats.size() ? m_styleFormats[index] : 0;
        const auto custom = m_customFormats.find(id);
        return custom != m_customFormats.end() ? std::string_view(custom->second)
                                               : builtinNumberFormat(id);
    }

    bool date1904 = false;

private:
    template <typename Number>
    static bool parseNumber(std::string_view text, Number& out)
    {
        return std::from_chars(text.data(), text.data() + text.size(), out).ec == std::errc();
    }

    std::map<int, std::string> m_customFormats;
    std::vector<int> m_styleFormats;
    int m_inCellFormats = 0;
};

// Each cell as it shows: shared strings by index, inline strings and formula strings;
// numbers in their cell's number format, else as stored; booleans and errors as shown.
class SheetCells : public MarkupHandler {
public:
    SheetCells(const std::vector<std::string>& shared, std::vector<bool>& sharedUsed,
               const CellStyles& styles, ZipArchive& zip, TextSink& sink)
        : m_shared(shared), m_sharedUsed(sharedUsed), m_styles(styles), m_zip(zip), m_sink(sink)
    {}

    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (name == "c") {
            m_type = attributes.value("t");
            m_style = attributes.value("s");
            m_value.clear();
        } else if (name == "v" || name == "t") {
            ++m_collect;
        } else if (name == "rPh") {
            ++m_skip;
        }
    }

    void endElement(std::string_view name) override
    {
        if (name == "v" || name == "t") {
            m_collect -= m_collect > 0 ? 1 : 0;
        } else if (name == "rPh") {
            m_skip -= m_skip > 0 ? 1 : 0;
        } else if (name == "c") {
            emitCell();
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_collect > 0 && m_skip == 0) {
            m_value.append(utf8);
        }
    }

private:
    void emitCell()
    {
        if (m_type == "s") {
            std::size_t index = 0;
            const auto [ptr, ec] =
                std::from_chars(m_value.data(), m_value.data() + m_value.size(), index);
            // A string's second and later cells are copies: charged, so that a million cells
            // of one large string stop at the budget rather than run for hours.
            if (ec == std::errc() && index < m_shared.size() &&
                (!m_sharedUsed[index] || m_zip.chargeCopy(m_shared[index].size()))) {
                m_sharedUsed[index] = true;
                m_sink.text(m_shared[index]);
            }
        } else if (m_type.empty() || m_type == "n") {
            m_sink.text(shownNumber());
        } else if (m_type == "b") {
            m_sink.text(m_value == "1" ? "TRUE" : m_value == "0" ? "FALSE" : "");
        } else if (m_type == "d") {
            // An ISO 8601 date (strict files): the date and the time apart, not "14T09".
            std::replace(m_value.begin(), m_value.end(), 'T', ' ');
            m_sink.text(m_value);
        } else {
            m_sink.text(m_value); // inlineStr, str, e (the error shown)
        }
        m_sink.boundary();
    }

    std::string shownNumber() const
    {
        double value = 0;
        const char* end = m_value.data() + m_value.size();
        const auto [ptr, ec] = std::from_chars(m_value.data(), end, value);
        if (ec != std::errc() || ptr != end) {
            return m_value;
        }
        return formatNumber(value, m_styles.formatCode(m_style), m_styles.date1904)
            .value_or(m_value);
    }

    const std::vector<std::string>& m_shared;
    std::vector<bool>& m_sharedUsed;
    const CellStyles& m_styles;
    ZipArchive& m_zip;
    TextSink& m_sink;
    std::string m_type;
    std::string m_style;
    std::string m_value;
    int m_collect = 0;
    int m_skip = 0;
};

class RelationshipTarget : public MarkupHandler {
public:
    explicit RelationshipTarget(std::string_view typeSuffix) : m_typeSuffix(typeSuffix) {}

    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (name == "Relationship" && target.empty() &&
            endsWith(attributes.value("Type"), m_typeSuffix)) {
            target = attributes.value("Target");
        }
    }
    void endElement(std::string_view) override {}
    void characters(std::string_view) override {}

    std::string target;

private:
    std::string_view m_typeSuffix;
};

void streamPart(const ByteSource& data, MarkupHandler& handler, TextSink& sink)
{
    parseXml(data, handler);
    sink.boundary();
}

void readWordprocessing(ZipArchive& zip, const std::string& main, TextSink& sink)
{
    const std::string dir = directoryOf(main);
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        const std::string_view base =
            startsWith(name, dir) ? std::string_view(name).substr(dir.size()) : std::string_view();
        const bool extra =
            base.find('/') == std::string_view::npos && endsWith(base, ".xml") &&
            (startsWith(base, "header") || startsWith(base, "footer") || base == "footnotes.xml" ||
             base == "endnotes.xml" || base == "comments.xml");
        if (name == main || extra) {
            OoxmlText handler(sink);
            streamPart(data, handler, sink);
        }
    });
}

void readSpreadsheet(ZipArchive& zip, const std::string& main, TextSink& sink)
{
    const std::string dir = directoryOf(main);
    SharedStrings shared;
    CellStyles styles;
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        if (name == dir + "sharedStrings.xml") {
            parseXml(data, shared);
        } else if (name == dir + "styles.xml" || name == main) {
            parseXml(data, styles);
        }
    });
    std::vector<bool> used(shared.strings.size());
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        if (startsWith(name, dir + "worksheets/") && endsWith(name, ".xml") &&
            name.find("/_rels/") == std::string::npos) {
            SheetCells handler(shared.strings, used, styles, zip, sink);
            streamPart(data, handler, sink);
        }
    });
}

void readPresentation(ZipArchive& zip, const std::string& main, TextSink& sink)
{
    const std::string dir = directoryOf(main);
    // Slides, then notes, each by number; the archive may store them in any order.
    std::map<std::pair<int, long>, BufferedSink> parts;
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        int kind = -1;
        if (startsWith(name, dir + "slides/slide") && endsWith(name, ".xml")) {
            kind = 0;
        } else if (startsWith(name, dir + "notesSlides/notesSlide") && endsWith(name, ".xml")) {
            kind = 1;
        }
        if (kind >= 0) {
            BufferedSink& part = parts[{kind, partNumber(name)}];
            OoxmlText handler(part);
            streamPart(data, handler, part);
        }
    });
    for (const auto& [key, part] : parts) {
        part.replay(sink);
    }
}

void readOoxml(ZipArchive& zip, TextSink& sink)
{
    std::string main;
    if (const auto rels = zip.read("_rels/.rels", ReadLimits::maxSmallPart)) {
        RelationshipTarget handler("/officeDocument");
        parseXml(memorySource(*rels), handler);
        main = resolve("", handler.target);
    }
    const auto names = zip.names();
    const auto has = [&names](std::string_view n) {
        return std::find(names.begin(), names.end(), n) != names.end();
    };
    if (main.empty() || !has(main)) {
        for (const char* candidate :
             {"word/document.xml", "xl/workbook.xml", "ppt/presentation.xml"}) {
            if (has(candidate)) {
                main = candidate;
            }
        }
    }
    if (startsWith(main, "xl/") || endsWith(main, "workbook.xml")) {
        readSpreadsheet(zip, main, sink);
    } else if (startsWith(main, "ppt/") || endsWith(main, "presentation.xml")) {
        readPresentation(zip, main, sink);
    } else if (!main.empty()) {
        readWordprocessing(zip, main, sink);
    }
}

// --- OpenDocument ---------------------------------------------------------------------

// Text inside office:body, and in the master pages' headers and footers (styles.xml, or
// the same document when flat). Repeated cells and rows count once per repetition, up to
// ReadLimits::maxRepeatedText bytes in all.
class OdfText : public MarkupHandler {
public:
    explicit OdfText(TextSink& sink) : m_sink(sink) {}

    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (isRegion(name)) {
            ++m_inRegion;
            // A header or footer switched off is not printed.
            m_skip += attributes.value("display") == "false" ? 1 : 0;
        } else if (m_inRegion == 0) {
            return;
        } else if (isSkipped(name)) {
            ++m_skip;
        } else if (name == "table-row" || name == "table-cell" || name == "covered-table-cell") {
            startRepeat(attributes.value(name == "table-row" ? "number-rows-repeated"
                                                             : "number-columns-repeated"));
        } else if (name == "annotation") {
            // Its author and date sit outside its paragraphs.
            m_annotationParagraphs.push_back(m_inParagraph);
            m_inParagraph = 0;
            sink().boundary();
        } else if (name == "p" || name == "h") {
            sink().boundary();
            ++m_inParagraph;
        } else if (name == "s") {
            sink().text(" ");
        } else if (name == "tab" || name == "line-break") {
            sink().boundary();
        }
    }

    void endElement(std::string_view name) override
    {
        if (isRegion(name)) {
            m_inRegion -= m_inRegion > 0 ? 1 : 0;
            m_skip = m_inRegion == 0 ? 0 : m_skip;
        } else if (m_inRegion == 0) {
            return;
        } else if (isSkipped(name)) {
            m_skip -= m_skip > 0 ? 1 : 0;
        } else if (name == "table-row" || name == "table-cell" || name == "covered-table-cell") {
            sink().boundary();
            endRepeat();
        } else if (name == "annotation" && !m_annotationParagraphs.empty()) {
            sink().boundary();
            m_inParagraph = m_annotationParagraphs.back();
            m_annotationParagraphs.pop_back();
        } else if (name == "p" || name == "h") {
            sink().boundary();
            m_inParagraph -= m_inParagraph > 0 ? 1 : 0;
        } else if (name == "list-item" || name == "note-body" || name == "frame") {
            sink().boundary();
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_inRegion > 0 && m_inParagraph > 0 && m_skip == 0) {
            sink().text(utf8);
        }
    }

private:
    struct Repeat {
        explicit Repeat(std::uint64_t n) : times(n) {}
        std::uint64_t times;
        BufferedSink text;
    };

    TextSink& sink() { return m_repeats.empty() ? m_sink : m_repeats.back().text; }

    // Where the innermost repeat's copies go.
    TextSink& outerSink()
    {
        return m_repeats.size() < 2 ? m_sink : m_repeats[m_repeats.size() - 2].text;
    }

    void startRepeat(std::string_view count)
    {
        std::uint64_t times = 1;
        std::from_chars(count.data(), count.data() + count.size(), times);
        m_repeats.emplace_back(std::max<std::uint64_t>(times, 1));
    }

    void endRepeat()
    {
        if (m_repeats.empty()) {
            return;
        }
        const Repeat& repeat = m_repeats.back();
        TextSink& out = outerSink();
        repeat.text.replay(out);
        // Empty cells repeated to the sheet's edge are the common case: nothing to copy.
        for (std::uint64_t n = 1; n < repeat.times && !repeat.text.empty(); ++n) {
            if (m_repeatedBytes + repeat.text.size() > ReadLimits::maxRepeatedText) {
                CutReport::note("OpenDocument: repeated cells beyond " +
                                std::to_string(ReadLimits::maxRepeatedText >> 20) +
                                " MiB of text were counted once");
                break;
            }
            m_repeatedBytes += repeat.text.size();
            repeat.text.replay(out);
        }
        m_repeats.pop_back();
    }

    static bool isRegion(std::string_view name)
    {
        return name == "body" || name == "header" || name == "footer" || name == "header-left" ||
               name == "footer-left" || name == "header-first" || name == "footer-first";
    }

    // Note numbers are generated, deleted text is history, and page numbers and sheet
    // names differ per page (only a placeholder is stored).
    static bool isSkipped(std::string_view name)
    {
        return name == "note-citation" || name == "tracked-changes" || name == "page-number" ||
               name == "page-count" || name == "sheet-name";
    }

    TextSink& m_sink;
    std::deque<Repeat> m_repeats;
    std::vector<int> m_annotationParagraphs;
    std::uint64_t m_repeatedBytes = 0;
    int m_inRegion = 0;
    int m_inParagraph = 0;
    int m_skip = 0;
};

void readOdf(ZipArchive& zip, TextSink& sink)
{
    // One handler for both parts, so that the budget for repeated text is the document's.
    OdfText handler(sink);
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        if (name == "content.xml" || name == "styles.xml") {
            parseXml(data, handler);
            sink.boundary();
        }
    });
}

// --- EPUB -------------------------------------------------------------------------------

class RootfilePath : public MarkupHandler {
public:
    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (name == "rootfile" && path.empty()) {
            path = attributes.value("full-path");
        }
    }
    void endElement(std::string_view) override {}
    void characters(std::string_view) override {}

    std::string path;
};

class PackageSpine : public MarkupHandler {
public:
    void startElement(std::string_view name, const MarkupAttributes& attributes) override
    {
        if (name == "item") {
            manifest.emplace(attributes.value("id"), attributes.value("href"));
        } else if (name == "itemref") {
            spine.emplace_back(attributes.value("idref"));
        }
    }
    void endElement(std::string_view) override {}
    void characters(std::string_view) override {}

    std::map<std::string, std::string> manifest;
    std::vector<std::string> spine;
};

void readEpub(ZipArchive& zip, TextSink& sink)
{
    std::vector<std::string> order;
    if (const auto container = zip.read("META-INF/container.xml", ReadLimits::maxSmallPart)) {
        RootfilePath rootfile;
        parseXml(memorySource(*container), rootfile);
        const std::string opfPath = resolve("", rootfile.path);
        if (const auto opf = zip.read(opfPath, ReadLimits::maxSmallPart)) {
            PackageSpine package;
            parseXml(memorySource(*opf), package);
            for (const auto& idref : package.spine) {
                if (const auto item = package.manifest.find(idref);
                    item != package.manifest.end()) {
                    order.push_back(resolve(directoryOf(opfPath), item->second));
                }
            }
        }
    }
    const bool guess = order.empty();
    std::map<std::string, BufferedSink> documents;
    const std::set<std::string> wanted(order.begin(), order.end());
    zip.forEach([&](const std::string& name, const ByteSource& data) {
        const bool markup =
            endsWith(name, ".xhtml") || endsWith(name, ".html") || endsWith(name, ".htm");
        if (guess ? markup : wanted.count(name) > 0) {
            BufferedSink& part = documents[name];
            readHtml(data, part);
            part.boundary();
            if (guess) {
                order.push_back(name);
            }
        }
    });
    // A spine may name one document many times; each copy after the first is charged.
    std::set<std::string> delivered;
    for (const auto& name : order) {
        const auto part = documents.find(name);
        if (part == documents.end()) {
            continue;
        }
        if (!delivered.insert(name).second && !zip.chargeCopy(part->second.size())) {
            break;
        }
        part->second.replay(sink);
    }
}

std::string trimmed(std::string s)
{
    while (!s.empty() && (s.back() == '\n' || s.back() == '\r' || s.back() == ' ')) {
        s.pop_back();
    }
    return s;
}

} // namespace

void readOdfBody(const ByteSource& source, TextSink& sink)
{
    OdfText handler(sink);
    parseXml(source, handler);
}

bool readContainer(ZipArchive& zip, TextSink& sink)
{
    const auto names = zip.names();
    if (names.empty()) {
        return false;
    }
    const auto has = [&names](std::string_view n) {
        return std::find(names.begin(), names.end(), n) != names.end();
    };
    const std::string mimetype = trimmed(zip.read("mimetype", 256).value_or(std::string()));
    if (mimetype == "application/epub+zip" ||
        (mimetype.empty() && has("META-INF/container.xml") && !has("content.xml"))) {
        readEpub(zip, sink);
    } else if (startsWith(mimetype, "application/vnd.oasis.opendocument") || has("content.xml")) {
        readOdf(zip, sink);
    } else if (has("[Content_Types].xml")) {
        readOoxml(zip, sink);
    }
    return true;
}

} // namespace tallyvox::indexer::readers
