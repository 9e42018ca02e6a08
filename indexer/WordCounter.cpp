#include "indexer/WordCounter.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <thread>

namespace tallyvox::indexer {

namespace {

// Byte classes of ICU's root word rules for ASCII (checked against ICU on varied text):
// '@' counts as a letter; '.' and '\'' join letter-letter and digit-digit; ',' and ';' join
// digit-digit; '_' joins anything, and a segment is a word unless it is a single '_'
// (ICU gives "__" the letter status); any other byte breaks.
enum Class : unsigned char { Other, Space, Letter, Digit, Underscore, MidLetterNum, MidNum, High };

constexpr std::array<unsigned char, 256> makeClasses()
{
    std::array<unsigned char, 256> classes{};
    for (int c = 0; c < 256; ++c) {
        unsigned char k = Other;
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '@') {
            k = Letter;
        } else if (c >= '0' && c <= '9') {
            k = Digit;
        } else if (c == '_') {
            k = Underscore;
        } else if (c == '.' || c == '\'') {
            k = MidLetterNum;
        } else if (c == ',' || c == ';') {
            k = MidNum;
        } else if (c == ' ' || (c >= '\t' && c <= '\r')) {
            k = Space;
        } else if (c >= 0x80) {
            k = High;
        }
        classes[c] = k;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> classes = makeClasses();

inline unsigned char classOf(char c)
{
    return classes[static_cast<unsigned char>(c)];
}

// Words found by the scanner wait here, so that the table can fetch their slots together.
class Batch {
public:
    explicit Batch(WordMap& words) : m_words(words) {}
    ~Batch() { flush(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    void add(const char* start, const char* end)
    {
        m_pending[m_size++] = std::string_view(start, static_cast<std::size_t>(end - start));
        if (m_size == capacity) {
            flush();
        }
    }
    void flush()
    {
        m_words.addBatch(m_pending, m_size);
        m_size = 0;
    }

private:
    static constexpr std::size_t capacity = 64;
    WordMap& m_words;
    std::string_view m_pending[capacity];
    std::size_t m_size = 0;
};

// Past the ASCII letters and digits at p, eight bytes at a time: most of a word is letters,
// and one step finding where they end beats a mispredicted branch per byte.
const char* skipAlphanumeric(const char* p, const char* end)
{
    constexpr std::uint64_t ones = 0x0101010101010101ull;
    constexpr std::uint64_t high = 0x8080808080808080ull;
    for (; end - p >= 8; p += 8) {
        std::uint64_t v;
        std::memcpy(&v, p, 8);
        // Every byte is below 0x80 here, so adding to a byte never carries into the next.
        const std::uint64_t lower = v | (0x20 * ones);
        const std::uint64_t letter =
            (lower + (0x80 - 'a') * ones) & ~(lower + (0x80 - 'z' - 1) * ones);
        const std::uint64_t digit = (v + (0x80 - '0') * ones) & ~(v + (0x80 - '9' - 1) * ones);
        const std::uint64_t found = (letter | digit) & high;
        if (found != high) {
            return p + __builtin_ctzll(~found & high) / 8;
        }
    }
    while (p < end && (classOf(*p) == Letter || classOf(*p) == Digit)) {
        ++p;
    }
    return p;
}

// Words of a run of ASCII text.
void scanAscii(const char* p, const char* end, Batch& words)
{
    while (p < end) {
        unsigned char k = classOf(*p);
        if (k != Letter && k != Digit && k != Underscore) {
            ++p;
            continue;
        }
        const char* start = p;
        unsigned char last = k;
        for (++p; p < end;) {
            if (const char* q = skipAlphanumeric(p, end); q != p) {
                last = classOf(q[-1]);
                p = q;
                if (p == end) {
                    break;
                }
            }
            k = classOf(*p);
            if (k == Letter || k == Digit || k == Underscore) {
                last = k;
                ++p;
            } else if ((k == MidLetterNum && p + 1 < end && (last == Letter || last == Digit) &&
                        classOf(p[1]) == last) ||
                       (k == MidNum && p + 1 < end && last == Digit && classOf(p[1]) == Digit)) {
                p += 2;
                last = classOf(p[-1]);
            } else {
                break;
            }
        }
        if (p - start > 1 || *start != '_') {
            words.add(start, p);
        }
    }
}

} // namespace

struct WordCounter::Worker {
    WordMap words;
    IcuWords icu;

    // Counts a region whose first byte is whitespace or the start of the text. ASCII text is
    // scanned here; a whitespace-delimited run holding a byte of 0x80 or more goes to ICU
    // whole, with the whitespace byte before it: that byte keeps a leading combining mark
    // attached to it, as in the full text. ICU never joins anything across ASCII whitespace.
    void count(const char* begin, const char* end)
    {
        Batch batch(words);
        const char* p = begin;
        while (p < end) {
            const char* high = findHigh(p, end);
            if (high == end) {
                scanAscii(p, end, batch);
                return;
            }
            const char* runStart = high;
            while (runStart > p && classOf(runStart[-1]) != Space) {
                --runStart;
            }
            scanAscii(p, runStart, batch);
            const char* runEnd = skip(high, end, false);
            // Neighbouring non-ASCII runs go to ICU together: fewer calls into it.
            for (;;) {
                const char* next = skip(runEnd, end, true);
                const char* nextEnd = skip(next, end, false);
                if (findHigh(next, nextEnd) == nextEnd) {
                    break;
                }
                runEnd = nextEnd;
            }
            const char* icuStart = runStart > begin ? runStart - 1 : runStart;
            icu.count(std::string_view(icuStart, static_cast<std::size_t>(runEnd - icuStart)),
                      words);
            p = runEnd;
        }
    }

    // The first byte of 0x80 or more, eight bytes at a time.
    static const char* findHigh(const char* p, const char* end)
    {
        constexpr std::uint64_t highBits = 0x8080808080808080ull;
        for (; end - p >= 8; p += 8) {
            std::uint64_t v;
            std::memcpy(&v, p, 8);
            if (v & highBits) {
                return p + __builtin_ctzll(v & highBits) / 8;
            }
        }
        while (p < end && static_cast<unsigned char>(*p) < 0x80) {
            ++p;
        }
        return p;
    }

    // Past the whitespace (or the non-whitespace) that starts at p.
    static const char* skip(const char* p, const char* end, bool space)
    {
        while (p < end && (classOf(*p) == Space) == space) {
            ++p;
        }
        return p;
    }
};

WordCounter::WordCounter() : WordCounter(Options{}) {}

WordCounter::WordCounter(Options options) : m_options(options)
{
    if (m_options.blockSize < 16) {
        m_options.blockSize = 16;
    }
    m_options.threads = m_options.threads >= 2 ? 2 : 1;
    for (unsigned i = 0; i < m_options.threads; ++i) {
        m_workers[i] = std::make_unique<Worker>();
    }
    m_pending.reserve(m_options.blockSize + (1u << 20));
}

WordCounter::~WordCounter() = default;

void WordCounter::text(std::string_view utf8)
{
    while (!utf8.empty()) {
        const std::size_t room = m_pending.size() < m_options.blockSize
                                     ? m_options.blockSize - m_pending.size()
                                     : m_options.blockSize;
        const std::size_t n = std::min(room, utf8.size());
        m_pending.append(utf8.substr(0, n));
        utf8.remove_prefix(n);
        if (m_pending.size() >= m_options.blockSize) {
            process(false);
        }
    }
}

void WordCounter::boundary()
{
    process(true);
}

void WordCounter::process(bool everything)
{
    const char* data = m_pending.data();
    std::size_t cut = m_pending.size();
    if (!everything) {
        // Keep the last, possibly unfinished run for the next block; it starts at whitespace.
        // A run longer than a block is cut where ICU sees a boundary, to bound memory.
        const std::size_t limit =
            m_pending.size() > m_options.blockSize ? m_pending.size() - m_options.blockSize : 0;
        std::size_t space = m_pending.size();
        while (space > limit && classOf(data[space - 1]) != Space) {
            --space;
        }
        cut = space > limit && space > 1 ? space - 1 : m_workers[0]->icu.cutNearEnd(m_pending);
    }
    std::size_t middle = cut;
    if (m_workers[1] && cut >= 64 * 1024) {
        middle = cut / 2;
        while (middle < cut && classOf(data[middle]) != Space) {
            ++middle;
        }
    }
    if (middle < cut) {
        std::thread second([&] { m_workers[1]->count(data + middle, data + cut); });
        m_workers[0]->count(data, data + middle);
        second.join();
    } else {
        m_workers[0]->count(data, data + cut);
    }
    m_pending.erase(0, cut);
}

WordMap WordCounter::finish()
{
    process(true);
    WordMap words = std::move(m_workers[0]->words);
    if (m_workers[1]) {
        if (m_workers[1]->words.size() > words.size()) {
            std::swap(words, m_workers[1]->words);
        }
        words.merge(std::move(m_workers[1]->words));
    }
    m_workers[0]->words = WordMap();
    return words;
}

WordMap countWithIcu(std::string_view utf8)
{
    WordMap words;
    IcuWords icu;
    icu.count(utf8, words);
    return words;
}

} // namespace tallyvox::indexer
