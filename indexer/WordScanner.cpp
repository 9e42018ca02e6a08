#include "indexer/WordScanner.h"

#include <array>
#include <cstring>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/uscript.h>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif
#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace tallyvox::indexer {

namespace {

// Classes of ICU's root word rules. Letters are ALetter plus '@'; '.' and '\'' join letter to
// letter and digit to digit; MidLetter (less ':') joins letters only; ',' and ';' join
// digits only; '_' and the other ExtendNumLet characters join anything, and a segment that
// is one of them alone is no word. Complex characters (dictionary scripts, combining marks,
// Hebrew, Katakana, anything NFC would change, malformed UTF-8) send their run to ICU.
enum Class : unsigned char {
    Unknown,
    Letter,
    Digit,
    Joiner, // ExtendNumLet
    MidLetter,
    MidNumLet,
    MidNum,
    Other,
    Complex
};

constexpr std::array<unsigned char, 128> makeAsciiClasses()
{
    std::array<unsigned char, 128> classes{};
    for (int c = 0; c < 128; ++c) {
        unsigned char k = Other;
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '@') {
            k = Letter;
        } else if (c >= '0' && c <= '9') {
            k = Digit;
        } else if (c == '_') {
            k = Joiner;
        } else if (c == '.' || c == '\'') {
            k = MidNumLet;
        } else if (c == ',' || c == ';') {
            k = MidNum;
        }
        classes[c] = k;
    }
    return classes;
}

constexpr std::array<unsigned char, 128> asciiClasses = makeAsciiClasses();

inline bool isWordClass(unsigned k)
{
    return k == Letter || k == Digit || k == Joiner;
}

// Whether a mid character of class mid, between last and next, keeps a word together.
inline bool joins(unsigned last, unsigned mid, unsigned next)
{
    switch (mid) {
    case MidLetter:
        return last == Letter && next == Letter;
    case MidNumLet:
        return (last == Letter || last == Digit) && next == last;
    case MidNum:
        return last == Digit && next == Digit;
    default:
        return false;
    }
}

// The class ICU's rules give a BMP character, from ICU's own properties.
unsigned char ruleClass(char32_t c)
{
    const auto cp = static_cast<UChar32>(c);
    UErrorCode status = U_ZERO_ERROR;
    const UScriptCode script = uscript_getScript(cp, &status);
    if (u_getCombiningClass(cp) != 0 ||
        u_getIntPropertyValue(cp, UCHAR_NFC_QUICK_CHECK) != UNORM_YES ||
        u_getIntPropertyValue(cp, UCHAR_LINE_BREAK) == U_LB_COMPLEX_CONTEXT ||
        u_hasBinaryProperty(cp, UCHAR_IDEOGRAPHIC) || script == USCRIPT_HAN ||
        script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA || script == USCRIPT_HANGUL ||
        U_FAILURE(status)) {
        return Complex;
    }
    switch (u_getIntPropertyValue(cp, UCHAR_WORD_BREAK)) {
    case U_WB_ALETTER:
        return Letter;
    case U_WB_NUMERIC:
        return Digit;
    case U_WB_EXTENDNUMLET:
        return Joiner;
    case U_WB_MIDLETTER:
        // The root rules take ':' and its small and full-width forms out of MidLetter.
        return c == 0xFE55 || c == 0xFF1A ? Other : MidLetter;
    case U_WB_MIDNUMLET:
    case U_WB_SINGLE_QUOTE:
        return MidNumLet;
    case U_WB_MIDNUM:
        return MidNum;
    case U_WB_OTHER:
    case U_WB_CR:
    case U_WB_LF:
    case U_WB_NEWLINE:
    case U_WB_WSEGSPACE:
        return Other;
    default: // Extend, Format, ZWJ, Hebrew_Letter, Katakana, Double_Quote, Regional_Indicator...
        return Complex;
    }
}

unsigned char lookUpClass(char32_t c)
{
    // A space that joins words (U+202F before French "!", between digits) or an invisible
    // character must be trimmed or dropped from the word's key, which IcuWords does.
    const unsigned char k = ruleClass(c);
    const auto cp = static_cast<UChar32>(c);
    if (k != Other && k != Complex &&
        (u_hasBinaryProperty(cp, UCHAR_WHITE_SPACE) ||
         u_hasBinaryProperty(cp, UCHAR_DEFAULT_IGNORABLE_CODE_POINT))) {
        return Complex;
    }
    return k;
}

inline bool isContinuation(unsigned char b)
{
    return (b & 0xC0) == 0x80;
}

// ---- ASCII stretches, 64 bytes at a time --------------------------------------------------

struct ChunkMasks {
    std::uint64_t letter;
    std::uint64_t digit;
    std::uint64_t joiner;
    std::uint64_t midNumLet;
    std::uint64_t midNum;
};

#if defined(__SSE2__)
ChunkMasks classify(const char* p)
{
    const __m128i lowerCase = _mm_set1_epi8(0x20);
    // Unsigned range checks with signed compares: bias the range's start to -128.
    const __m128i letterBias = _mm_set1_epi8(static_cast<char>(0x80 - 'a'));
    const __m128i letterLimit = _mm_set1_epi8(static_cast<char>(-128 + 26));
    const __m128i digitBias = _mm_set1_epi8(static_cast<char>(0x80 - '0'));
    const __m128i digitLimit = _mm_set1_epi8(static_cast<char>(-128 + 10));
    ChunkMasks masks{};
    for (unsigned i = 0; i < 4; ++i) {
        const __m128i v =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + std::size_t{16} * i));
        const __m128i letter = _mm_or_si128(
            _mm_cmplt_epi8(_mm_add_epi8(_mm_or_si128(v, lowerCase), letterBias), letterLimit),
            _mm_cmpeq_epi8(v, _mm_set1_epi8('@')));
        const __m128i digit = _mm_cmplt_epi8(_mm_add_epi8(v, digitBias), digitLimit);
        const __m128i joiner = _mm_cmpeq_epi8(v, _mm_set1_epi8('_'));
        const __m128i midNumLet = _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8('.')),
                                               _mm_cmpeq_epi8(v, _mm_set1_epi8('\'')));
        const __m128i midNum = _mm_or_si128(_mm_cmpeq_epi8(v, _mm_set1_epi8(',')),
                                            _mm_cmpeq_epi8(v, _mm_set1_epi8(';')));
        const auto bits = [i](__m128i m) {
            return std::uint64_t{static_cast<std::uint16_t>(_mm_movemask_epi8(m))} << (16 * i);
        };
        masks.letter |= bits(letter);
        masks.digit |= bits(digit);
        masks.joiner |= bits(joiner);
        masks.midNumLet |= bits(midNumLet);
        masks.midNum |= bits(midNum);
    }
    return masks;
}
#else
ChunkMasks classify(const char* p)
{
    ChunkMasks masks{};
    for (unsigned i = 0; i < 64; ++i) {
        const std::uint64_t bit = std::uint64_t{1} << i;
        switch (asciiClasses[static_cast<unsigned char>(p[i]) & 0x7F]) {
        case Letter:
            masks.letter |= bit;
            break;
        case Digit:
            masks.digit |= bit;
            break;
        case Joiner:
            masks.joiner |= bit;
            break;
        case MidNumLet:
            masks.midNumLet |= bit;
            break;
        case MidNum:
            masks.midNum |= bit;
            break;
        default:
            break;
        }
    }
    return masks;
}
#endif

inline void addWord(const char* start, const char* end, WordBatch& words)
{
    // A segment of one '_' is no word; "__" is.
    if (end - start > 1 || *start != '_') {
        words.add(start, static_cast<std::size_t>(end - start));
    }
}

} // namespace

WordScanner::WordScanner() : m_classes(new unsigned char[0x10000]())
{
    for (unsigned c = 0; c < 128; ++c) {
        m_classes[c] = asciiClasses[c];
    }
}

WordScanner::~WordScanner() = default;

const char* WordScanner::findHigh(const char* p, const char* end)
{
#if defined(__SSE2__)
    for (; end - p >= 16; p += 16) {
        const auto bits = static_cast<unsigned>(
            _mm_movemask_epi8(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
        if (bits != 0) {
            return p + __builtin_ctz(bits);
        }
    }
#endif
    while (p < end && static_cast<unsigned char>(*p) < 0x80) {
        ++p;
    }
    return p;
}

namespace {

// The words of an ASCII stretch, with Classify giving the class masks of 64 bytes.
template <ChunkMasks (*Classify)(const char*)>
[[gnu::always_inline]] inline void scanAsciiWith(const char* begin, const char* end,
                                                 WordBatch& words)
{
    // Every byte gets a bit in a 64-bit mask per class. A joining mark belongs to the word
    // when its neighbours (the bits beside it) are letters or digits as the rules ask; the
    // words are then the runs of set bits, found by their edges.
    const char* wordStart = begin;
    std::uint64_t inWord = 0; // the byte before the chunk belongs to a word
    std::uint64_t prevLetter = 0;
    std::uint64_t prevDigit = 0;
    for (const char* p = begin; p < end; p += 64) {
        const auto n = static_cast<std::size_t>(end - p < 64 ? end - p : 64);
        ChunkMasks m;
        std::uint64_t nextLetter = 0;
        std::uint64_t nextDigit = 0;
        if (n == 64) {
            m = Classify(p);
            if (end - p > 64) {
                const unsigned k = asciiClasses[static_cast<unsigned char>(p[64]) & 0x7F];
                nextLetter = k == Letter;
                nextDigit = k == Digit;
            }
        } else {
            char tail[64];
            std::memset(tail, ' ', sizeof tail);
            std::memcpy(tail, p, n);
            m = Classify(tail);
        }
        const std::uint64_t letterBefore = (m.letter << 1) | prevLetter;
        const std::uint64_t letterAfter = (m.letter >> 1) | (nextLetter << 63);
        const std::uint64_t digitBefore = (m.digit << 1) | prevDigit;
        const std::uint64_t digitAfter = (m.digit >> 1) | (nextDigit << 63);
        const std::uint64_t joined =
            (m.midNumLet & ((letterBefore & letterAfter) | (digitBefore & digitAfter))) |
            (m.midNum & digitBefore & digitAfter);
        const std::uint64_t word = m.letter | m.digit | m.joiner | joined;
        for (std::uint64_t edges = word ^ ((word << 1) | inWord); edges != 0; edges &= edges - 1) {
            const auto i = static_cast<unsigned>(__builtin_ctzll(edges));
            if ((word >> i) & 1) {
                wordStart = p + i;
            } else {
                addWord(wordStart, p + i, words);
            }
        }
        inWord = word >> 63;
        prevLetter = m.letter >> 63;
        prevDigit = m.digit >> 63;
    }
    if (inWord) {
        addWord(wordStart, end, words);
    }
}

#if defined(__x86_64__)
// With AVX2, a byte's classes come from two table lookups, by its low and by its high nibble,
// ANDed: each class bit stands for a set of (high nibble) x (low nibble) pairs.
struct NibbleSet {
    unsigned char bit;
    unsigned highs; // bit h set: high nibble h
    unsigned lows;  // bit l set: low nibble l
};
constexpr unsigned range(unsigned from, unsigned to)
{
    return ((2u << to) - 1) & ~((1u << from) - 1);
}
constexpr NibbleSet nibbleSets[] = {
    {1, 1u << 4, range(0, 15)},               // '@', 'A'-'O'
    {2, (1u << 5) | (1u << 7), range(0, 10)}, // 'P'-'Z', 'p'-'z'
    {4, 1u << 6, range(1, 15)},               // 'a'-'o'
    {8, 1u << 3, range(0, 9)},                // digits
    {16, 1u << 5, 1u << 15},                  // '_'
    {32, 1u << 2, (1u << 7) | (1u << 14)},    // '\'', '.'
    {64, 1u << 2, 1u << 12},                  // ','
    {128, 1u << 3, 1u << 11},                 // ';'
};
constexpr unsigned char letterBits = 1 | 2 | 4;

constexpr std::array<unsigned char, 32> nibbleTable(bool high)
{
    std::array<unsigned char, 32> table{};
    for (unsigned n = 0; n < 16; ++n) {
        for (const NibbleSet& set : nibbleSets) {
            if (((high ? set.highs : set.lows) >> n) & 1) {
                table[n] = table[n + 16] = static_cast<unsigned char>(table[n] | set.bit);
            }
        }
    }
    return table;
}
constexpr std::array<unsigned char, 32> lowNibbles = nibbleTable(false);
constexpr std::array<unsigned char, 32> highNibbles = nibbleTable(true);

// The bits of the 32 bytes whose classes include one of set's.
[[gnu::target("avx2")]] inline std::uint32_t having(__m256i classes, unsigned char set)
{
    const __m256i none =
        _mm256_cmpeq_epi8(_mm256_and_si256(classes, _mm256_set1_epi8(static_cast<char>(set))),
                          _mm256_setzero_si256());
    return ~static_cast<std::uint32_t>(_mm256_movemask_epi8(none));
}

[[gnu::target("avx2")]] inline ChunkMasks classifyAvx2(const char* p)
{
    const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(lowNibbles.data()));
    const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(highNibbles.data()));
    const __m256i nibble = _mm256_set1_epi8(0x0F);
    ChunkMasks masks{};
    for (unsigned i = 0; i < 2; ++i) {
        const __m256i v =
            _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + std::size_t{32} * i));
        const __m256i classes = _mm256_and_si256(
            _mm256_shuffle_epi8(low, _mm256_and_si256(v, nibble)),
            _mm256_shuffle_epi8(high, _mm256_and_si256(_mm256_srli_epi16(v, 4), nibble)));
        const unsigned shift = 32 * i;
        masks.letter |= std::uint64_t{having(classes, letterBits)} << shift;
        masks.digit |= std::uint64_t{having(classes, 8)} << shift;
        masks.joiner |= std::uint64_t{having(classes, 16)} << shift;
        masks.midNumLet |= std::uint64_t{having(classes, 32)} << shift;
        masks.midNum |= std::uint64_t{having(classes, 64 | 128)} << shift;
    }
    return masks;
}

[[gnu::target("avx2")]] void scanAsciiAvx2(const char* begin, const char* end, WordBatch& words)
{
    scanAsciiWith<classifyAvx2>(begin, end, words);
}
#endif

} // namespace

void WordScanner::scanAscii(const char* begin, const char* end, WordBatch& words)
{
#if defined(__x86_64__)
    static const bool avx2 = __builtin_cpu_supports("avx2");
    if (avx2) {
        scanAsciiAvx2(begin, end, words);
        return;
    }
#endif
    scanAsciiPortable(begin, end, words);
}

void WordScanner::scanAsciiPortable(const char* begin, const char* end, WordBatch& words)
{
    scanAsciiWith<classify>(begin, end, words);
}

unsigned char WordScanner::classOf(char32_t c)
{
    unsigned char& k = m_classes[c];
    if (k == Unknown) {
        k = lookUpClass(c);
    }
    return k;
}

// The character at p (p < end): its class, and the byte after it. Characters beyond the
// BMP (emoji, historic scripts, rare ideographs) go to ICU.
WordScanner::Decoded WordScanner::decode(const char* p, const char* end)
{
    const auto b0 = static_cast<unsigned char>(p[0]);
    if (b0 < 0x80) {
        return {asciiClasses[b0], p + 1};
    }
    if (b0 >= 0xC2 && b0 <= 0xDF && end - p >= 2 && isContinuation(p[1])) {
        const char32_t c = ((b0 & 0x1Fu) << 6) | (static_cast<unsigned char>(p[1]) & 0x3Fu);
        return {classOf(c), p + 2};
    }
    if (b0 >= 0xE0 && b0 <= 0xEF && end - p >= 3) {
        const auto b1 = static_cast<unsigned char>(p[1]);
        const auto b2 = static_cast<unsigned char>(p[2]);
        const unsigned char low = b0 == 0xE0 ? 0xA0 : 0x80;
        const unsigned char high = b0 == 0xED ? 0x9F : 0xBF;
        if (b1 >= low && b1 <= high && isContinuation(b2)) {
            const char32_t c = ((b0 & 0x0Fu) << 12) | ((b1 & 0x3Fu) << 6) | (b2 & 0x3Fu);
            return {classOf(c), p + 3};
        }
    }
    if (b0 >= 0xF0 && b0 <= 0xF4 && end - p >= 4) {
        const auto b1 = static_cast<unsigned char>(p[1]);
        const unsigned char low = b0 == 0xF0 ? 0x90 : 0x80;
        const unsigned char high = b0 == 0xF4 ? 0x8F : 0xBF;
        if (b1 >= low && b1 <= high && isContinuation(p[2]) && isContinuation(p[3])) {
            return {Complex, p + 4};
        }
    }
    // ICU reads a malformed byte as U+FFFD, which joins nothing.
    return {Other, p + 1};
}

bool WordScanner::needsIcu(const char* begin, const char* end)
{
    for (const char* p = begin; p < end;) {
        const Decoded d = decode(p, end);
        if (d.cls == Complex) {
            return true;
        }
        p = d.next;
    }
    return false;
}

bool WordScanner::scanRun(const char* begin, const char* end, WordBatch& words)
{
    if (needsIcu(begin, end)) {
        return false;
    }
    const char* wordStart = nullptr;
    unsigned last = Other;
    bool lone = false; // the word so far is one Joiner
    for (const char* p = begin; p < end;) {
        const Decoded d = decode(p, end);
        if (isWordClass(d.cls)) {
            if (wordStart == nullptr) {
                wordStart = p;
                lone = d.cls == Joiner;
            } else {
                lone = false;
            }
            last = d.cls;
            p = d.next;
            continue;
        }
        if (wordStart != nullptr && d.next < end) {
            const Decoded after = decode(d.next, end);
            if (joins(last, d.cls, after.cls)) {
                last = after.cls;
                lone = false;
                p = after.next;
                continue;
            }
        }
        if (wordStart != nullptr && !lone) {
            words.add(wordStart, static_cast<std::size_t>(p - wordStart));
        }
        wordStart = nullptr;
        p = d.next;
    }
    if (wordStart != nullptr && !lone) {
        words.add(wordStart, static_cast<std::size_t>(end - wordStart));
    }
    return true;
}

} // namespace tallyvox::indexer
