#include "indexer/NGramCounter.h"

#include "indexer/IcuWords.h"
#include "indexer/WordScanner.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cmath>
#include <system_error>
#include <thread>

namespace tallyvox::indexer {

namespace {

inline bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// What may follow a sentence's terminator and still belong to its sentence: more
// terminators ("?!", "..."), closing quotes and brackets. The length of the one at p, or 0.
std::size_t closerAt(std::string_view text, std::size_t p)
{
    switch (text[p]) {
    case '.':
    case '!':
    case '?':
    case '"':
    case '\'':
    case ')':
    case ']':
    case '}':
        return 1;
    default:
        break;
    }
    if (static_cast<unsigned char>(text[p]) < 0x80) {
        return 0;
    }
    std::size_t next = p;
    UChar32 c = 0;
    U8_NEXT(text.data(), next, text.size(), c);
    if (c < 0) {
        return 0;
    }
    const auto type = static_cast<UCharCategory>(u_charType(c));
    const bool closes = type == U_END_PUNCTUATION || type == U_FINAL_PUNCTUATION || c == 0x201C ||
                        c == 0x2018 || // closing quotes in German usage
                        u_hasBinaryProperty(c, UCHAR_S_TERM);
    return closes ? next - p : 0;
}

std::size_t pastClosers(std::string_view text, std::size_t p)
{
    while (p < text.size()) {
        const std::size_t n = closerAt(text, p);
        if (n == 0) {
            break;
        }
        p += n;
    }
    return p;
}

// The bytes sentenceEnd has to look at: the ends of sentences, line breaks, and the lead
// bytes of everything beyond ASCII.
constexpr std::array<bool, 256> candidates = [] {
    std::array<bool, 256> table{};
    for (const char c : {'.', '!', '?', '\n', '\r', '\f'}) {
        table[static_cast<unsigned char>(c)] = true;
    }
    for (unsigned c = 0x80; c < 256; ++c) {
        table[c] = true;
    }
    return table;
}();

} // namespace

// The words of a piece of text, found as WordCounter's workers find them, handed to the
// counter one by one in order.
class NGramCounter::Words final : public WordBatch {
public:
    explicit Words(NGramCounter& owner) : m_owner(owner) {}

    void count(const char* begin, const char* end)
    {
        m_icu.forgetNormalised();
        const char* p = begin;
        while (p < end) {
            const char* high = WordScanner::findHigh(p, end);
            if (high == end) {
                WordScanner::scanAscii(p, end, *this);
                break;
            }
            const char* runStart = high;
            while (runStart > p && !isSpace(runStart[-1])) {
                --runStart;
            }
            WordScanner::scanAscii(p, runStart, *this);
            p = skip(high, end, false);
            if (m_scanner.scanRun(runStart, p, *this)) {
                continue;
            }
            const char* from = runStart > begin ? runStart - 1 : runStart;
            m_icu.count(std::string_view(from, static_cast<std::size_t>(p - from)), *this);
        }
        flush();
    }

    IcuWords& icu() { return m_icu; }

private:
    static const char* skip(const char* p, const char* end, bool space)
    {
        while (p < end && isSpace(*p) == space) {
            ++p;
        }
        return p;
    }

    void deliver(const Span* words, std::size_t n) override
    {
        for (std::size_t i = 0; i < n; ++i) {
            m_owner.add(std::string_view(words[i].data, words[i].size));
        }
    }

    NGramCounter& m_owner;
    WordScanner m_scanner;
    IcuWords m_icu;
};

NGramCounter::NGramCounter(unsigned length, std::size_t blockSize)
    : m_length(length < 2 ? 2 : (length > longestNGram ? longestNGram : length)),
      m_blockSize(blockSize < 16 ? 16 : blockSize), m_words(std::make_unique<Words>(*this)),
      m_table(2)
{}

NGramCounter::~NGramCounter() = default;

namespace {

// Each of these looks at the candidate at i: where the sentence or paragraph it ends ends,
// or noEnd, with next set to where the scan goes on.

// ".", "!" or "?": only before white space, so "3.14", "v1.2" and "e.g" keep their points.
std::size_t afterFullStop(std::string_view text, std::size_t i, bool atEnd, std::size_t& next)
{
    const std::size_t end = pastClosers(text, i + 1);
    next = end;
    return (end == text.size() ? atEnd : isSpace(text[end])) ? end : NGramCounter::noEnd;
}

// A blank line, or a page break, ends a paragraph; a single line break does not.
std::size_t afterLineBreak(std::string_view text, std::size_t i, std::size_t& next)
{
    std::size_t lines = 0;
    bool page = false;
    std::size_t j = i;
    for (; j < text.size() && isSpace(text[j]); ++j) {
        page = page || text[j] == '\f';
        const bool crlf = text[j] == '\r' && j + 1 < text.size() && text[j + 1] == '\n';
        lines += (text[j] == '\n' || (text[j] == '\r' && !crlf)) ? 1 : 0;
    }
    next = j;
    return page || lines >= 2 ? j : NGramCounter::noEnd;
}

// Beyond ASCII: the paragraph separator, and every sentence terminator wherever it stands.
std::size_t afterCharacter(std::string_view text, std::size_t i, std::size_t& next)
{
    next = i;
    UChar32 u = 0;
    U8_NEXT(text.data(), next, text.size(), u);
    if (u == 0x2029) { // PARAGRAPH SEPARATOR
        return next;
    }
    if (u > 0 && u_hasBinaryProperty(u, UCHAR_S_TERM)) {
        return pastClosers(text, next);
    }
    return NGramCounter::noEnd;
}

} // namespace

std::size_t NGramCounter::sentenceEnd(std::string_view text, bool atEnd)
{
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (!candidates[static_cast<unsigned char>(c)]) {
            ++i;
            continue;
        }
        std::size_t next = i + 1;
        std::size_t end = noEnd;
        if (c == '.' || c == '!' || c == '?') {
            end = afterFullStop(text, i, atEnd, next);
        } else if (c == '\n' || c == '\r' || c == '\f') {
            end = afterLineBreak(text, i, next);
        } else {
            end = afterCharacter(text, i, next);
        }
        if (end != noEnd) {
            return end;
        }
        i = next > i ? next : i + 1;
    }
    return noEnd;
}

void NGramCounter::countSentences(const char* begin, const char* end, bool atEnd)
{
    while (begin < end) {
        const std::string_view rest(begin, static_cast<std::size_t>(end - begin));
        const std::size_t n = sentenceEnd(rest, atEnd);
        if (n == noEnd) {
            m_words->count(begin, end);
            return;
        }
        m_words->count(begin, begin + n);
        breakSequence();
        begin += n;
    }
}

void NGramCounter::text(std::string_view utf8)
{
    m_pending.append(utf8);
    if (m_pending.size() >= m_blockSize) {
        process(false);
    }
}

void NGramCounter::expectText(std::uint64_t bytes)
{
    // Fitted to English: 100 MB hold about 1.5 million distinct bigrams and 2.7 million
    // trigrams, growing about as the text to the 0.8. A table sized once is not doubled (and
    // rehashed) again and again on the way.
    const double megabytes = static_cast<double>(bytes) / 1e6;
    const double at100 = 1.5e6 * std::pow(1.8, m_length - 2.0);
    const double ngrams = at100 * std::pow(megabytes / 100.0, 0.8);
    for (unsigned i = 0; i < m_table.shardCount(); ++i) {
        m_table.shard(i).reserve(static_cast<std::size_t>(ngrams / m_table.shardCount()));
    }
}

void NGramCounter::boundary()
{
    process(true);
    breakSequence();
}

void NGramCounter::process(bool everything)
{
    const char* data = m_pending.data();
    std::size_t cut = m_pending.size();
    bool atSpace = true;
    if (!everything) {
        // Keep the last run, and the whitespace before it (a blank line is seen whole).
        std::size_t run = m_pending.size();
        while (run > 0 && !isSpace(data[run - 1])) {
            --run;
        }
        cut = run;
        while (cut > 0 && isSpace(data[cut - 1])) {
            --cut;
        }
        if (cut == 0 || m_pending.size() - run > m_blockSize / 2) {
            // A run too long to hold: cut where ICU sees a word boundary.
            cut = m_words->icu().cutNearEnd(m_pending);
            atSpace = false;
        }
    }
    countSentences(data, data + cut, atSpace);
    m_pending.erase(0, cut);
}

void NGramCounter::add(std::string_view word)
{
    const unsigned ring = m_length - 1;
    if (m_held < ring) {
        m_recent[(m_first + m_held) % ring].assign(word);
        ++m_held;
        return;
    }
    for (unsigned k = 0; k < ring; ++k) {
        m_batch += m_recent[(m_first + k) % ring];
        m_batch += ' ';
    }
    m_batch += word;
    m_ends[m_batched++] = m_batch.size();
    if (m_batched == batchSize) {
        countBatch();
    }
    m_recent[m_first].assign(word);
    m_first = (m_first + 1) % ring;
}

void NGramCounter::countBatch()
{
    HashedWord words[batchSize];
    WordKey keys[batchSize];
    unsigned shards[batchSize];
    std::size_t start = 0;
    for (std::size_t i = 0; i < m_batched; ++i) {
        const std::string_view ngram(m_batch.data() + start, m_ends[i] - start);
        keys[i] = keyOf(ngram);
        words[i] = {ngram.data(), static_cast<std::uint32_t>(ngram.size()),
                    static_cast<std::uint32_t>(keys[i].hash >> 32)};
        shards[i] = m_table.shardOf(keys[i].hash);
        m_table.shard(shards[i]).prefetch(words[i].tag);
        start = m_ends[i];
    }
    for (std::size_t i = 0; i < m_batched; ++i) {
        m_table.shard(shards[i]).add(words[i], keys[i].head, 1);
    }
    m_batch.clear();
    m_batched = 0;
}

WordMap NGramCounter::finish()
{
    process(true);
    countBatch();
    // N-grams share long beginnings ("of the ..."), which makes their sort a large part of
    // the run: the shards are sorted side by side when a second thread is allowed.
    if (m_threads >= 2) {
        try {
            std::thread second([this] { m_table.shard(1).sort(); });
            m_table.shard(0).sort();
            second.join();
            return std::move(m_table);
        } catch (const std::system_error&) {
            // No second thread: one sorts both.
        }
    }
    m_table.sort();
    return std::move(m_table);
}

} // namespace tallyvox::indexer
