#include "indexer/readers/RtfReader.h"

#include "indexer/readers/ReadLimits.h"
#include "indexer/readers/Utf8.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tallyvox::indexer::readers {

namespace {

using namespace std::string_view_literals;

// Destinations whose content is not document text.
constexpr std::array skippedDestinations = {
    "aftnsep"sv,   "aftnsepc"sv,  "atnauthor"sv,  "atnid"sv,    "author"sv,
    "buptim"sv,    "colortbl"sv,  "comment"sv,    "creatim"sv,  "doccomm"sv,
    "docvar"sv,    "falt"sv,      "fldinst"sv,    "filetbl"sv,  "ftnsep"sv,
    "ftnsepc"sv,   "generator"sv, "info"sv,       "keywords"sv, "listoverridetable"sv,
    "listtable"sv, "listtext"sv,  "nonshppict"sv, "objdata"sv,  "operator"sv,
    "pict"sv,      "pntext"sv,    "pntxta"sv,     "pntxtb"sv,   "printim"sv,
    "private"sv,   "revtbl"sv,    "revtim"sv,     "rsidtbl"sv,  "shprslt"sv,
    "sn"sv,        "sp"sv,        "stylesheet"sv, "subject"sv,  "sv"sv,
    "tc"sv,        "template"sv,  "title"sv,      "txe"sv,      "userprops"sv,
    "xe"sv,
};

// Destinations that are text of their own, set apart from the text around them.
constexpr std::array separateDestinations = {
    "annotation"sv, "footer"sv,  "footerf"sv, "footerl"sv, "footerr"sv, "footnote"sv,
    "header"sv,     "headerf"sv, "headerl"sv, "headerr"sv, "shptxt"sv,
};

// Destinations whose text is read in place: field results, and a shape's instructions,
// which hold its text box (shptxt).
constexpr std::array keptDestinations = {"fldrslt"sv, "shpinst"sv};

struct NamedCharacter {
    std::string_view name;
    char32_t c;
};

constexpr std::array namedCharacters = {
    NamedCharacter{"emdash", 0x2014},    NamedCharacter{"endash", 0x2013},
    NamedCharacter{"bullet", 0x2022},    NamedCharacter{"lquote", 0x2018},
    NamedCharacter{"rquote", 0x2019},    NamedCharacter{"ldblquote", 0x201C},
    NamedCharacter{"rdblquote", 0x201D}, NamedCharacter{"emspace", ' '},
    NamedCharacter{"enspace", ' '},      NamedCharacter{"qmspace", ' '},
};

struct NamedCodepage {
    std::string_view name;
    int codepage;
};

constexpr std::array documentCodepages = {
    NamedCodepage{"ansi", 1252},
    NamedCodepage{"mac", 10000},
    NamedCodepage{"pc", 437},
    NamedCodepage{"pca", 850},
};

constexpr std::array separators = {
    "cell"sv, "column"sv, "line"sv, "nestcell"sv, "nestrow"sv,
    "page"sv, "par"sv,    "row"sv,  "sect"sv,     "tab"sv,
};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Windows font character sets to code pages.
int codepageForCharset(int charset)
{
    switch (charset) {
    case 77:
        return 10000;
    case 128:
        return 932;
    case 129:
        return 949;
    case 134:
        return 936;
    case 136:
        return 950;
    case 161:
        return 1253;
    case 162:
        return 1254;
    case 163:
        return 1258;
    case 177:
        return 1255;
    case 178:
        return 1256;
    case 186:
        return 1257;
    case 204:
        return 1251;
    case 222:
        return 874;
    case 238:
        return 1250;
    case 255:
        return 437;
    default:
        return 0;
    }
}

struct ConverterCloser {
    void operator()(UConverter* c) const { ucnv_close(c); }
};

class RtfParser {
public:
    RtfParser(const ByteSource& source, TextSink& sink) : m_source(source), m_sink(sink) {}

    void run()
    {
        for (int c = get(); c >= 0; c = get()) {
            switch (c) {
            case '{':
                flushBytes();
                if (m_stack.size() < ReadLimits::maxRtfDepth) {
                    m_stack.push_back(m_state);
                } else {
                    ++m_excessDepth;
                }
                m_skipCount = 0;
                m_ignorableNext = false;
                break;
            case '}':
                endGroup();
                break;
            case '\\':
                controlWord();
                break;
            case '\r':
            case '\n':
                break;
            default:
                textByte(static_cast<unsigned char>(c));
            }
        }
        flushBytes();
        flushText();
    }

private:
    enum class Destination { Text, FontTable, Skip };

    struct State {
        Destination destination = Destination::Text;
        int unicodeSkip = 1;
        int codepage = 0; // 0: the document's
        bool hidden = false;
        bool separate = false;
    };

    int get()
    {
        if (m_pos == m_len) {
            m_len = m_source(m_buf.data(), m_buf.size());
            m_pos = 0;
            if (m_len == 0) {
                return -1;
            }
        }
        return static_cast<unsigned char>(m_buf[m_pos++]);
    }

    // Only ever called right after get() returned a byte, so that byte is still buffered.
    void unget() { --m_pos; }

    bool inText() const
    {
        return m_state.destination == Destination::Text && !m_state.hidden && !m_stack.empty();
    }

    // Bytes that stand in for a \uN character are dropped.
    bool consumeFallback()
    {
        if (m_skipCount > 0) {
            --m_skipCount;
            return true;
        }
        return false;
    }

    void textByte(unsigned char c)
    {
        if (consumeFallback() || !inText()) {
            return;
        }
        if (c == 0) {
            return;
        }
        if (c < 0x80 && m_bytes.empty()) {
            m_text.push_back(static_cast<char>(c));
            if (m_text.size() >= 65536) {
                flushText();
            }
        } else {
            m_bytes.push_back(static_cast<char>(c));
        }
    }

    void character(char32_t c)
    {
        if (!inText()) {
            return;
        }
        flushBytes();
        appendUtf8(m_text, c);
    }

    void boundary()
    {
        if (!inText() && !m_state.separate) {
            return;
        }
        flushBytes();
        flushText();
        m_sink.boundary();
    }

    void endGroup()
    {
        flushBytes();
        m_skipCount = 0;
        m_ignorableNext = false;
        if (m_excessDepth > 0) {
            --m_excessDepth;
            return;
        }
        if (m_stack.empty()) {
            return;
        }
        const bool separate = m_state.separate && !m_stack.back().separate;
        if (separate) {
            flushText();
            m_sink.boundary();
        }
        m_state = m_stack.back();
        m_stack.pop_back();
    }

    void controlWord()
    {
        int c = get();
        if (c < 0) {
            return;
        }
        if (!std::isalpha(c)) {
            controlSymbol(c);
            return;
        }
        std::string name;
        while (c >= 0 && std::isalpha(c)) {
            if (name.size() < 32) {
                name.push_back(static_cast<char>(c));
            }
            c = get();
        }
        bool negative = false;
        bool hasParameter = false;
        long parameter = 0;
        if (c == '-') {
            negative = true;
            c = get();
        }
        int digits = 0;
        while (c >= 0 && std::isdigit(c)) {
            if (++digits <= 10) {
                parameter = parameter * 10 + (c - '0');
            }
            hasParameter = true;
            c = get();
        }
        if (c >= 0 && c != ' ') {
            unget();
        }
        parameter = std::clamp(negative ? -parameter : parameter, -2147483647L, 2147483647L);
        handleWord(name, hasParameter, static_cast<int>(parameter));
    }

    void controlSymbol(int c)
    {
        switch (c) {
        case '\'': {
            const int hi = get();
            const int lo = hi < 0 ? -1 : get();
            if (lo < 0 || !std::isxdigit(hi) || !std::isxdigit(lo)) {
                return;
            }
            const auto hex = [](int d) {
                return std::isdigit(d) ? d - '0' : (std::tolower(d) - 'a' + 10);
            };
            const auto byte = static_cast<unsigned char>(hex(hi) * 16 + hex(lo));
            if (consumeFallback() || !inText()) {
                return;
            }
            m_bytes.push_back(static_cast<char>(byte));
            return;
        }
        case '*':
            m_ignorableNext = true;
            return;
        case '\\':
        case '{':
        case '}':
            textByte(static_cast<unsigned char>(c));
            return;
        case '~':
            if (!consumeFallback()) {
                character(0xA0);
            }
            return;
        case '_':
            if (!consumeFallback()) {
                character(0x2011);
            }
            return;
        case '\r':
        case '\n':
            boundary();
            return;
        default: // \- (optional hyphen), \| and others: nothing to show
            consumeFallback();
        }
    }

    void handleWord(std::string_view name, bool hasParameter, int parameter)
    {
        // \* asks to skip the group unless its destination is known.
        const bool ignorable = std::exchange(m_ignorableNext, false);
        if (m_state.destination == Destination::FontTable) {
            fontTableWord(name, hasParameter, parameter);
            return;
        }
        if (name == "u") {
            if (hasParameter) {
                unicode(parameter);
            }
            return;
        }
        if (consumeFallback() || destinationWord(name)) {
            return;
        }
        if (ignorable) {
            m_state.destination = Destination::Skip;
        } else if (!characterWord(name)) {
            stateWord(name, hasParameter, parameter);
        }
    }

    // A destination this reader knows; false for every other word.
    bool destinationWord(std::string_view name)
    {
        if (name == "fonttbl") {
            m_state.destination = Destination::FontTable;
        } else if (contains(skippedDestinations, name)) {
            m_state.destination = Destination::Skip;
        } else if (contains(separateDestinations, name)) {
            boundary();
            m_state.separate = true;
        } else {
            return contains(keptDestinations, name);
        }
        return true;
    }

    // A word that stands for a character or a break.
    bool characterWord(std::string_view name)
    {
        if (contains(separators, name)) {
            boundary();
            return true;
        }
        for (const NamedCharacter& named : namedCharacters) {
            if (named.name == name) {
                character(named.c);
                return true;
            }
        }
        return false;
    }

    // Words that change how the text that follows is read.
    void stateWord(std::string_view name, bool hasParameter, int parameter)
    {
        if (name == "uc") {
            m_state.unicodeSkip = std::clamp(parameter, 0, 16);
        } else if (name == "bin") {
            for (long n = std::max(parameter, 0); n > 0 && get() >= 0; --n) {
            }
        } else if (name == "v") {
            flushBytes();
            m_state.hidden = !hasParameter || parameter != 0;
        } else if (name == "f") {
            flushBytes();
            const auto font = m_fontCodepage.find(parameter);
            m_state.codepage = font == m_fontCodepage.end() ? 0 : font->second;
        } else if (name == "ansicpg" && parameter > 0) {
            m_documentCodepage = parameter;
        } else {
            for (const NamedCodepage& named : documentCodepages) {
                if (named.name == name) {
                    m_documentCodepage = named.codepage;
                }
            }
        }
    }

    void fontTableWord(std::string_view name, bool hasParameter, int parameter)
    {
        if (!hasParameter) {
            return;
        }
        if (name == "f") {
            m_fontBeingDefined = parameter;
        } else if (name == "fcharset") {
            if (const int cp = codepageForCharset(parameter); cp != 0) {
                m_fontCodepage[m_fontBeingDefined] = cp;
            }
        } else if (name == "cpg" && parameter > 0) {
            m_fontCodepage[m_fontBeingDefined] = parameter;
        }
    }

    void unicode(int parameter)
    {
        const char32_t c = m_surrogates.join(
            static_cast<char32_t>(parameter < 0 ? parameter + 65536 : parameter) & 0xFFFF);
        if (c != 0) {
            character(c);
        }
        m_skipCount = m_state.unicodeSkip;
    }

    UConverter* converter(int codepage)
    {
        auto& slot = m_converters[codepage];
        if (!slot) {
            std::string name;
            switch (codepage) {
            case 10000:
                name = "macintosh";
                break;
            case 437:
                name = "ibm-437";
                break;
            case 850:
                name = "ibm-850";
                break;
            default:
                name = "windows-" + std::to_string(codepage);
            }
            UErrorCode status = U_ZERO_ERROR;
            slot.reset(ucnv_open(name.c_str(), &status));
            if (U_FAILURE(status) || !slot) {
                status = U_ZERO_ERROR;
                slot.reset(ucnv_open("windows-1252", &status));
            }
        }
        return slot.get();
    }

    void flushBytes()
    {
        if (m_bytes.empty()) {
            return;
        }
        const int codepage = m_state.codepage != 0 ? m_state.codepage : m_documentCodepage;
        UConverter* conv = converter(codepage);
        if (conv != nullptr) {
            std::string out(m_bytes.size() * 3 + 4, '\0');
            UErrorCode status = U_ZERO_ERROR;
            const int32_t n =
                ucnv_toAlgorithmic(UCNV_UTF8, conv, out.data(), static_cast<int32_t>(out.size()),
                                   m_bytes.data(), static_cast<int32_t>(m_bytes.size()), &status);
            if (U_SUCCESS(status)) {
                m_text.append(out.data(), static_cast<std::size_t>(n));
            }
        }
        m_bytes.clear();
    }

    void flushText()
    {
        if (!m_text.empty()) {
            m_sink.text(m_text);
            m_text.clear();
        }
    }

    const ByteSource& m_source;
    TextSink& m_sink;
    std::array<char, 65536> m_buf{};
    std::size_t m_pos = 0;
    std::size_t m_len = 0;

    State m_state;
    std::vector<State> m_stack;
    std::size_t m_excessDepth = 0;
    int m_skipCount = 0;
    SurrogateJoiner m_surrogates;
    bool m_ignorableNext = false;

    int m_documentCodepage = 1252;
    int m_fontBeingDefined = 0;
    std::map<int, int> m_fontCodepage;
    std::map<int, std::unique_ptr<UConverter, ConverterCloser>> m_converters;

    std::string m_text;  // UTF-8 ready for the sink
    std::string m_bytes; // code-page bytes still to convert
};

} // namespace

void readRtf(const ByteSource& source, TextSink& sink)
{
    RtfParser parser(source, sink);
    parser.run();
}

} // namespace tallyvox::indexer::readers
