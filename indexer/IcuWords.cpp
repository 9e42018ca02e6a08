#include "indexer/IcuWords.h"

#include <cstdint>
#include <stdexcept>
#include <utility>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace tallyvox::indexer {

namespace {

// Every default-ignorable and every white-space character beyond ASCII starts with one of
// these bytes; CJK and most other scripts never do, so their words cost no lookup.
bool mayBeInvisible(unsigned char lead)
{
    switch (lead) {
    case 0xC2: // U+0085, U+00A0, U+00AD
    case 0xCD: // U+034F
    case 0xD8: // U+061C
    case 0xE1: // Hangul fillers, U+1680, Khmer vowels, Mongolian selectors
    case 0xE2: // U+2000-U+206F
    case 0xE3: // U+3000, U+3164
    case 0xEF: // variation selectors, U+FEFF, U+FFA0, U+FFF0-U+FFF8
    case 0xF0: // shorthand format controls, musical formatting
    case 0xF3: // tags
        return true;
    default:
        return false;
    }
}

bool isInvisible(UChar32 c)
{
    return u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) != 0;
}

bool isSpace(UChar32 c)
{
    return u_hasBinaryProperty(c, UCHAR_WHITE_SPACE) != 0;
}

// Whether the UTF-8 sequence starting with lead, second may lie in a block of the scripts
// ICU segments with a dictionary of its own: Thai and Lao (U+0E00-U+0EFF), Myanmar
// (U+1000-U+10BF), Khmer (U+1780-U+17FF), Tai Le, New Tai Lue, Tai Tham (U+1940-U+1ABF),
// Myanmar extensions and Tai Viet (U+A9C0-U+AAFF), Ahom (U+11700-).
bool mayBeComplexContext(uint8_t lead, uint8_t second)
{
    switch (lead) {
    case 0xE0:
        return second >= 0xB8 && second <= 0xBB;
    case 0xE1:
        return second <= 0x82 || (second >= 0x9E && second <= 0x9F) ||
               (second >= 0xA5 && second <= 0xAA);
    case 0xEA:
        return second >= 0xA7 && second <= 0xAB;
    case 0xF0:
        return second == 0x91;
    default:
        return false;
    }
}

// Whether text holds a character of line-break class SA, which ICU segments with a
// dictionary. Only the first bytes of those scripts' blocks cost a lookup.
bool hasComplexContext(std::string_view utf8)
{
    const auto* s = reinterpret_cast<const uint8_t*>(utf8.data());
    const auto length = static_cast<int32_t>(utf8.size());
    for (int32_t i = 0; i + 1 < length; ++i) {
        if (!mayBeComplexContext(s[i], s[i + 1])) {
            continue;
        }
        int32_t at = i;
        UChar32 c = 0;
        U8_NEXT(s, at, length, c);
        if (c >= 0 && u_getIntPropertyValue(c, UCHAR_LINE_BREAK) == U_LB_COMPLEX_CONTEXT) {
            return true;
        }
    }
    return false;
}

// Whether the word holds a character the key drops, or white space at an edge.
bool hasInvisible(std::string_view word)
{
    const auto* s = reinterpret_cast<const uint8_t*>(word.data());
    const auto length = static_cast<int32_t>(word.size());
    for (int32_t i = 0; i < length;) {
        if (!mayBeInvisible(s[i])) {
            ++i;
            continue;
        }
        const int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(s, i, length, c);
        if (c >= 0 && (isInvisible(c) || (isSpace(c) && (start == 0 || i == length)))) {
            return true;
        }
    }
    return false;
}

// The word without its default-ignorable characters, then without the white space left at
// either edge.
std::string visiblePart(std::string_view word)
{
    const auto* s = reinterpret_cast<const uint8_t*>(word.data());
    const auto length = static_cast<int32_t>(word.size());
    std::string visible;
    visible.reserve(word.size());
    for (int32_t i = 0; i < length;) {
        const int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(s, i, length, c);
        if (c < 0 || !isInvisible(c)) {
            visible.append(
                word.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(i - start)));
        }
    }
    const auto* v = reinterpret_cast<const uint8_t*>(visible.data());
    auto begin = int32_t{0};
    auto end = static_cast<int32_t>(visible.size());
    for (int32_t next = begin; begin < end; begin = next) {
        UChar32 c = 0;
        U8_NEXT(v, next, end, c);
        if (c < 0 || !isSpace(c)) {
            break;
        }
    }
    for (int32_t previous = end; end > begin; end = previous) {
        UChar32 c = 0;
        U8_PREV(v, begin, previous, c);
        if (c < 0 || !isSpace(c)) {
            break;
        }
    }
    return visible.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin));
}

} // namespace

bool wordKey(std::string_view word, const icu::Normalizer2& nfc, std::string& key)
{
    UErrorCode status = U_ZERO_ERROR;
    std::string visible;
    icu::StringPiece piece(word.data(), static_cast<int32_t>(word.size()));
    if (hasInvisible(word)) {
        // Normalised after the dropping: a dropped U+034F may have kept two marks apart.
        visible = visiblePart(word);
        piece = icu::StringPiece(visible.data(), static_cast<int32_t>(visible.size()));
    } else if (nfc.isNormalizedUTF8(piece, status) || U_FAILURE(status)) {
        return false;
    }
    status = U_ZERO_ERROR;
    icu::StringByteSink<std::string> sink(&key, piece.size());
    nfc.normalizeUTF8(0, piece, sink, nullptr, status);
    if (U_FAILURE(status)) {
        key.assign(piece.data(), static_cast<std::size_t>(piece.size()));
    }
    return true;
}

IcuWords::IcuWords()
{
    UErrorCode status = U_ZERO_ERROR;
    m_breaker.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    m_nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status) || !m_breaker || !m_nfc) {
        throw std::runtime_error("ICU word segmentation is unavailable");
    }
}

IcuWords::~IcuWords()
{
    utext_close(&m_text);
}

void IcuWords::addNormalised(const char* word, std::size_t size, WordBatch& words)
{
    std::string key;
    if (!wordKey(std::string_view(word, size), *m_nfc, key)) {
        words.add(word, size);
    } else if (!key.empty()) {
        const std::string& kept = m_normalised.emplace_back(std::move(key));
        words.add(kept.data(), kept.size());
    }
}

void IcuWords::count(std::string_view utf8, WordBatch& words)
{
    // ICU's dictionaries for Myanmar and Khmer cut some short words differently when they
    // read UTF-8 (a word of three code points alone between spaces comes out in two pieces),
    // so those scripts go to it as UTF-16, as it segments them in its own tests.
    if (hasComplexContext(utf8)) {
        countUtf16(utf8, words);
        return;
    }
    // A new text for every run costs less than moving one iterator over a whole block, whose
    // seeks back up to a safe point and fill its cache of boundaries.
    UErrorCode status = U_ZERO_ERROR;
    utext_openUTF8(&m_text, utf8.data(), static_cast<int64_t>(utf8.size()), &status);
    m_breaker->setText(&m_text, status);
    if (U_FAILURE(status)) {
        return;
    }
    int32_t start = m_breaker->first();
    for (int32_t end = m_breaker->next(); end != icu::BreakIterator::DONE;
         start = end, end = m_breaker->next()) {
        const int32_t rule = m_breaker->getRuleStatus();
        if (rule >= UBRK_WORD_NUMBER && rule < UBRK_WORD_IDEO_LIMIT) {
            addNormalised(utf8.data() + start, static_cast<std::size_t>(end - start), words);
        }
    }
}

void IcuWords::countUtf16(std::string_view utf8, WordBatch& words)
{
    const auto* s = reinterpret_cast<const uint8_t*>(utf8.data());
    const auto length = static_cast<int32_t>(utf8.size());
    m_utf16.clear();
    m_offsets.clear();
    for (int32_t i = 0; i < length;) {
        const int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(s, i, length, c);
        if (c < 0) {
            c = 0xFFFD; // as ICU's UTF-8 text reads a malformed sequence
        }
        m_offsets.push_back(start);
        if (c > 0xFFFF) {
            m_utf16.push_back(static_cast<char16_t>(U16_LEAD(c)));
            m_offsets.push_back(start);
            m_utf16.push_back(static_cast<char16_t>(U16_TRAIL(c)));
        } else {
            m_utf16.push_back(static_cast<char16_t>(c));
        }
    }
    m_offsets.push_back(length);
    UErrorCode status = U_ZERO_ERROR;
    utext_openUChars(&m_text, m_utf16.data(), static_cast<int64_t>(m_utf16.size()), &status);
    m_breaker->setText(&m_text, status);
    if (U_FAILURE(status)) {
        return;
    }
    int32_t start = m_breaker->first();
    for (int32_t end = m_breaker->next(); end != icu::BreakIterator::DONE;
         start = end, end = m_breaker->next()) {
        const int32_t rule = m_breaker->getRuleStatus();
        if (rule >= UBRK_WORD_NUMBER && rule < UBRK_WORD_IDEO_LIMIT) {
            const auto from = static_cast<std::size_t>(m_offsets[static_cast<std::size_t>(start)]);
            const auto to = static_cast<std::size_t>(m_offsets[static_cast<std::size_t>(end)]);
            addNormalised(utf8.data() + from, to - from, words);
        }
    }
}

std::size_t IcuWords::cutNearEnd(std::string_view utf8)
{
    // Look at the last 64 KB only: enough context for ICU's dictionaries, bounded cost.
    constexpr std::size_t window = std::size_t{64} * 1024;
    std::size_t from = utf8.size() > window ? utf8.size() - window : 0;
    while (from > 0 && (static_cast<unsigned char>(utf8[from]) & 0xC0) == 0x80) {
        --from;
    }
    const std::string_view tail = utf8.substr(from);
    UErrorCode status = U_ZERO_ERROR;
    utext_openUTF8(&m_text, tail.data(), static_cast<int64_t>(tail.size()), &status);
    m_breaker->setText(&m_text, status);
    if (U_SUCCESS(status)) {
        const int32_t boundary = m_breaker->preceding(static_cast<int32_t>(tail.size() / 2 + 1));
        if (boundary > 0) {
            return from + static_cast<std::size_t>(boundary);
        }
    }
    // One enormous segment: cut at a character start in its middle.
    std::size_t cut = from > 0 ? from : utf8.size() / 2;
    while (cut > 0 && (static_cast<unsigned char>(utf8[cut]) & 0xC0) == 0x80) {
        --cut;
    }
    return cut > 0 ? cut : utf8.size();
}

} // namespace tallyvox::indexer
