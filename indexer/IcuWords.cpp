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

// Whether text holds a character ICU segments with a dictionary of its own (Thai, Lao,
// Myanmar, Khmer, Tai scripts). Only the first bytes of their blocks need a lookup.
bool hasComplexContext(std::string_view utf8)
{
    const auto* s = reinterpret_cast<const uint8_t*>(utf8.data());
    const auto length = static_cast<int32_t>(utf8.size());
    for (int32_t i = 0; i < length; ++i) {
        const uint8_t b = s[i];
        if (b != 0xE0 && b != 0xE1 && b != 0xEA && b != 0xF0) {
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

} // namespace

bool wordKey(std::string_view word, const icu::Normalizer2& nfc, std::string& key)
{
    const auto* s = reinterpret_cast<const uint8_t*>(word.data());
    const auto length = static_cast<int32_t>(word.size());
    bool clean = true;
    for (int32_t i = 0; i < length && clean;) {
        if (!mayBeInvisible(s[i])) {
            ++i;
            continue;
        }
        const int32_t start = i;
        UChar32 c = 0;
        U8_NEXT(s, i, length, c);
        clean = c < 0 || !(isInvisible(c) || (isSpace(c) && (start == 0 || i == length)));
    }
    UErrorCode status = U_ZERO_ERROR;
    if (clean) {
        const icu::StringPiece piece(word.data(), length);
        if (nfc.isNormalizedUTF8(piece, status) || U_FAILURE(status)) {
            return false;
        }
        icu::StringByteSink<std::string> sink(&key, length);
        nfc.normalizeUTF8(0, piece, sink, nullptr, status);
        if (U_FAILURE(status)) {
            key.assign(word);
        }
        return true;
    }
    // Drop what is invisible, then the spaces left at either edge, then normalise: a
    // dropped character may have kept two combining marks apart.
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
    while (begin < end) {
        int32_t next = begin;
        UChar32 c = 0;
        U8_NEXT(v, next, end, c);
        if (c < 0 || !isSpace(c)) {
            break;
        }
        begin = next;
    }
    while (end > begin) {
        int32_t previous = end;
        UChar32 c = 0;
        U8_PREV(v, begin, previous, c);
        if (c < 0 || !isSpace(c)) {
            break;
        }
        end = previous;
    }
    const icu::StringPiece piece(visible.data() + begin, end - begin);
    icu::StringByteSink<std::string> sink(&key, end - begin);
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
