#include "indexer/WordCounter.h"

#include "indexer/IcuWords.h"
#include "indexer/WordScanner.h"

#include <algorithm>
#include <barrier>
#include <cmath>
#include <exception>
#include <functional>
#include <system_error>
#include <thread>
#include <vector>

namespace tallyvox::indexer {

namespace {

// A block smaller than this is counted by one thread: starting or waking the other, and
// clearing the tallies that cross between them, costs more than it saves. Only large files
// reach it, so that the many small files of a collection each keep to one core.
constexpr std::size_t splitFromMost = std::size_t{1} << 20;
// The last piece of the text announced is counted where it lies from this size on, rather
// than copied: a small file's only read is such a piece. Other pieces are gathered into
// blocks of the full size, which two threads can share.
constexpr std::size_t lastInPlaceFrom = std::size_t{256} << 10;

inline bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// The words one thread found for the other thread's shard, kept until that thread takes them
// after the block. Short words are tallied here, so that a common word crosses over once per
// block with its count, not once per occurrence; the rest wait in a list.
class Outbox {
public:
    void add(const HashedWord& word, const std::uint64_t head[2])
    {
        if (!m_slots) {
            // Only text split between threads needs it: a small file never pays for
            // clearing the tallies.
            m_slots.reset(new Slot[slotCount]());
        }
        if (word.size <= 16) {
            for (std::size_t i = word.tag >> (32 - bits);; i = (i + 1) & (slotCount - 1)) {
                Slot& slot = m_slots[i];
                if (slot.count == 0) {
                    if (m_used == limit) {
                        break;
                    }
                    slot = {{head[0], head[1]}, word.data, word.size, word.tag, 1};
                    ++m_used;
                    return;
                }
                if (slot.tag == word.tag && slot.size == word.size && slot.head[0] == head[0] &&
                    slot.head[1] == head[1]) {
                    ++slot.count;
                    return;
                }
            }
        }
        m_list.push_back(word);
    }

    /// Adds everything to shard, and empties the outbox.
    void handTo(WordShard& shard)
    {
        // The tallies lie in the order of their tags, as the shard's slots do: walking them
        // walks the shard in order too.
        constexpr std::size_t ahead = 16;
        for (std::size_t i = 0; i < slotCount && m_used > 0; ++i) {
            if (i + ahead < slotCount && m_slots[i + ahead].count != 0) {
                shard.prefetch(m_slots[i + ahead].tag);
            }
            Slot& slot = m_slots[i];
            if (slot.count != 0) {
                shard.add({slot.data, slot.size, slot.tag}, slot.head, slot.count);
                slot.count = 0;
                --m_used;
            }
        }
        shard.addBatch(m_list.data(), m_list.size());
        m_list.clear();
    }

private:
    struct Slot {
        std::uint64_t head[2];
        const char* data;
        std::uint32_t size;
        std::uint32_t tag;
        std::uint64_t count; // 0: empty
    };
    // About the distinct words of one block's share: the common ones, which recur most.
    static constexpr unsigned bits = 14;
    static constexpr std::size_t slotCount = std::size_t{1} << bits;
    static constexpr std::size_t limit = slotCount / 4 * 3;

    std::unique_ptr<Slot[]> m_slots;
    std::size_t m_used = 0;
    std::vector<HashedWord> m_list;
};

} // namespace

// One counting thread's share of the work: its scanner and ICU iterator, and the words it
// found that belong to the other thread's shard, kept until that thread takes them.
class WordCounter::Worker final : public WordBatch {
public:
    Worker(WordMap& words, unsigned index, bool typeRuns)
        : m_words(words), m_index(index), m_typeRuns(typeRuns)
    {}

    // Counts a region whose first byte is whitespace or the start of the text. Alone, no
    // other thread touches the tables meanwhile, so every word goes straight to its shard.
    void count(const char* begin, const char* end, bool alone)
    {
        m_alone = alone;
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
            // ICU takes this run, with the whitespace before it (a combining mark at its start
            // belongs there), and the runs after it that need ICU too: fewer calls.
            for (;;) {
                const char* next = skip(p, end, true);
                const char* nextEnd = skip(next, end, false);
                if (next == nextEnd || !m_scanner.needsIcu(next, nextEnd)) {
                    break;
                }
                p = nextEnd;
            }
            const char* from = runStart > begin ? runStart - 1 : runStart;
            m_icu.count(std::string_view(from, static_cast<std::size_t>(p - from)), *this);
        }
        flush();
    }

    /// Hands the words counted since the last call, in their order, to runs.
    void handHashesTo(TypeRuns& runs)
    {
        for (const std::uint64_t hash : m_hashes) {
            runs.add(hash);
        }
        m_hashes.clear();
    }

    /// Adds the words another worker found for this worker's shard.
    void takeFrom(Worker& other) { other.m_outbox.handTo(m_words.shard(m_index)); }

    IcuWords& icu() { return m_icu; }

private:
    // Past the whitespace (or the non-whitespace) that starts at p.
    static const char* skip(const char* p, const char* end, bool space)
    {
        while (p < end && isSpace(*p) == space) {
            ++p;
        }
        return p;
    }

    void deliver(const Span* words, std::size_t n) override
    {
        // Hash the whole batch and start fetching the slots of this shard's words before
        // touching any, so that their cache misses overlap.
        HashedWord own[capacity];
        std::uint64_t heads[capacity][2];
        std::size_t mine = 0;
        WordShard& shard = m_words.shard(m_index);
        for (std::size_t i = 0; i < n; ++i) {
            const WordKey key = keyOf(std::string_view(words[i].data, words[i].size));
            const HashedWord word{words[i].data, static_cast<std::uint32_t>(words[i].size),
                                  static_cast<std::uint32_t>(key.hash >> 32)};
            if (m_typeRuns) {
                m_hashes.push_back(key.hash);
            }
            if (const unsigned owner = m_words.shardOf(key.hash); owner != m_index) {
                if (m_alone) {
                    m_words.shard(owner).add(word, key.head, 1);
                } else {
                    m_outbox.add(word, key.head);
                }
                continue;
            }
            shard.prefetch(word.tag);
            own[mine] = word;
            heads[mine][0] = key.head[0];
            heads[mine][1] = key.head[1];
            ++mine;
        }
        for (std::size_t i = 0; i < mine; ++i) {
            shard.add(own[i], heads[i], 1);
        }
    }

    WordMap& m_words;
    unsigned m_index;
    WordScanner m_scanner;
    IcuWords m_icu;
    Outbox m_outbox;
    bool m_alone = true;
    // With the type/token runs asked for: every word's hash, in the text's order.
    bool m_typeRuns;
    std::vector<std::uint64_t> m_hashes;
};

// The second thread, started once and kept: each step runs one job here and one there.
class WordCounter::Helper {
public:
    Helper() : m_thread([this] { loop(); }) {}
    ~Helper()
    {
        m_stop = true;
        m_sync.arrive_and_wait();
        m_thread.join();
    }
    Helper(const Helper&) = delete;
    Helper& operator=(const Helper&) = delete;

    /// Runs mine on this thread and theirs on the helper; returns when both are done, with
    /// the first exception either threw.
    void run(const std::function<void()>& mine, const std::function<void()>& theirs)
    {
        m_job = &theirs;
        m_error = nullptr;
        m_sync.arrive_and_wait();
        std::exception_ptr error;
        try {
            mine();
        } catch (...) {
            error = std::current_exception();
        }
        m_sync.arrive_and_wait();
        if (!error) {
            error = m_error;
        }
        if (error) {
            std::rethrow_exception(error);
        }
    }

private:
    void loop()
    {
        for (;;) {
            m_sync.arrive_and_wait();
            if (m_stop) {
                return;
            }
            try {
                (*m_job)();
            } catch (...) {
                m_error = std::current_exception();
            }
            m_sync.arrive_and_wait();
        }
    }

    std::barrier<> m_sync{2};
    const std::function<void()>* m_job = nullptr;
    std::exception_ptr m_error;
    bool m_stop = false;
    std::thread m_thread; // last: it starts running at once
};

WordCounter::WordCounter() : WordCounter(Options{}) {}

WordCounter::WordCounter(Options options) : m_options(options), m_words(2)
{
    // Two shards whatever the threads: the result file numbers its count objects shard by
    // shard, and must not change with the threads the indexer was allowed.
    if (m_options.blockSize < 16) {
        m_options.blockSize = 16;
    }
    m_options.threads = m_options.threads >= 2 ? 2 : 1;
    if (m_options.typeRuns) {
        m_typeRuns = std::make_unique<TypeRuns>();
    }
    m_workers[0] = std::make_unique<Worker>(m_words, 0, m_options.typeRuns);
}

bool WordCounter::startHelper()
{
    // Started with the first block worth sharing, with its worker (a scanner's tables and an
    // ICU iterator): most files are small, and what is never needed still costs its setup.
    if (!m_helper && m_options.threads == 2 && !m_helperFailed) {
        try {
            if (!m_workers[1]) {
                m_workers[1] = std::make_unique<Worker>(m_words, 1, m_options.typeRuns);
            }
            m_helper = std::make_unique<Helper>();
        } catch (const std::system_error&) {
            m_helperFailed = true; // one thread counts for both shards
        }
    }
    return m_helper != nullptr;
}

WordCounter::~WordCounter() = default;

void WordCounter::text(std::string_view utf8)
{
    // Large pieces are counted where they lie, a block at a time up to its last whitespace;
    // only what is left over (an unfinished run) and small pieces are copied.
    const std::size_t block = m_options.blockSize;
    const bool last = m_expected > 0 && m_received + utf8.size() >= m_expected;
    m_received += utf8.size();
    const std::size_t large = last ? std::min(block / 2, lastInPlaceFrom) : block / 2;
    while (!utf8.empty()) {
        if (utf8.size() >= large && !m_pending.empty()) {
            // Finish the run held over from before, so that the rest can be counted in place.
            const std::size_t space = utf8.substr(0, large).find_first_of(" \t\n\v\f\r");
            if (space != std::string_view::npos && m_pending.size() + space <= block) {
                m_pending.append(utf8.substr(0, space));
                utf8.remove_prefix(space);
                process(true);
            }
        }
        if (utf8.size() >= large && m_pending.empty()) {
            std::size_t space = std::min(block, utf8.size());
            while (space > 0 && !isSpace(utf8[space - 1])) {
                --space;
            }
            if (space > 1) {
                // The whitespace starts what is left.
                countBlock(utf8.data(), utf8.data() + space - 1);
                utf8.remove_prefix(space - 1);
                continue;
            }
        }
        const std::size_t n = std::min(block - m_pending.size(), utf8.size());
        if (m_pending.capacity() < block) {
            m_pending.reserve(block + (block >> 2));
        }
        m_pending.append(utf8.substr(0, n));
        utf8.remove_prefix(n);
        if (m_pending.size() >= block) {
            process(false);
        }
    }
}

void WordCounter::boundary()
{
    // ICU never joins anything across a line feed, nor attaches a combining mark to one:
    // for word boundaries it is as good as a new text.
    if (!m_pending.empty() && !isSpace(m_pending.back())) {
        m_pending.push_back('\n');
    }
}

void WordCounter::expectText(std::uint64_t bytes)
{
    // Heaps' law, fitted to English: 100 MB hold about 450,000 distinct words, and ten times
    // the text about four times the words. Too small a guess costs a doubling or two, too
    // large a one touches memory that no word needs.
    m_expected = bytes;
    const double megabytes = static_cast<double>(bytes) / 1e6;
    const double words = 450000.0 * std::pow(megabytes / 100.0, 0.6);
    for (unsigned i = 0; i < m_words.shardCount(); ++i) {
        m_words.shard(i).reserve(static_cast<std::size_t>(words / m_words.shardCount()));
    }
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
        while (space > limit && !isSpace(data[space - 1])) {
            --space;
        }
        cut = space > limit && space > 1 ? space - 1 : m_workers[0]->icu().cutNearEnd(m_pending);
    }
    countBlock(data, data + cut);
    m_pending.erase(0, cut);
}

void WordCounter::countBlock(const char* begin, const char* end)
{
    Worker& first = *m_workers[0];
    const char* middle = end;
    const std::size_t splitFrom = std::min(m_options.blockSize / 4, splitFromMost);
    if (static_cast<std::size_t>(end - begin) >= splitFrom && startHelper()) {
        middle = begin + (end - begin) / 2;
        while (middle < end && !isSpace(*middle)) {
            ++middle;
        }
    }
    if (middle == end) {
        first.count(begin, end, true);
        if (m_typeRuns) {
            first.handHashesTo(*m_typeRuns);
        }
        return;
    }
    Worker& second = *m_workers[1];
    m_helper->run([&] { first.count(begin, middle, false); },
                  [&] { second.count(middle, end, false); });
    // The runs go on from the first half into the second, in the text's order.
    m_helper->run(
        [&] {
            first.takeFrom(second);
            if (m_typeRuns) {
                first.handHashesTo(*m_typeRuns);
                second.handHashesTo(*m_typeRuns);
            }
        },
        [&] { second.takeFrom(first); });
    m_counted += static_cast<std::uint64_t>(end - begin);
    planGrowth();
}

void WordCounter::planGrowth()
{
    // Text far richer in words than the first guess (a word list, a dictionary) would double
    // the tables again and again, each time in fresh memory. Each time the text counted has
    // doubled, fit the growth of its vocabulary (words ~ bytes^b) and grow once to what that
    // projects for the whole text, but at most four times what it holds: a fit over a short
    // stretch of text overshoots. Past half the text, growing when full costs no more.
    if (m_expected == 0 || m_counted * 2 > m_expected || m_counted * 32 < m_expected) {
        return; // too early to tell, or too late to save a doubling
    }
    const std::size_t words = m_words.size();
    if (m_sampleBytes == 0 || words <= m_sampleWords) {
        m_sampleBytes = m_counted;
        m_sampleWords = words;
        return;
    }
    if (m_counted < 2 * m_sampleBytes) {
        return;
    }
    const double exponent = std::clamp(
        std::log(static_cast<double>(words) / static_cast<double>(m_sampleWords)) /
            std::log(static_cast<double>(m_counted) / static_cast<double>(m_sampleBytes)),
        0.3, 1.0);
    const double growth =
        std::pow(static_cast<double>(m_expected) / static_cast<double>(m_counted), exponent);
    m_sampleBytes = m_counted;
    m_sampleWords = words;
    bool needed = false;
    std::size_t projected[2] = {};
    for (unsigned i = 0; i < m_words.shardCount(); ++i) {
        projected[i] = static_cast<std::size_t>(static_cast<double>(m_words.shard(i).size()) *
                                                std::min(growth, 4.0));
        needed = needed || projected[i] > m_words.shard(i).capacity();
    }
    if (needed) {
        m_helper->run([&] { m_words.shard(0).reserve(projected[0]); },
                      [&] { m_words.shard(1).reserve(projected[1]); });
    }
}

WordMap WordCounter::finish()
{
    process(true);
    if (m_helper) {
        m_helper->run([this] { m_words.shard(0).sort(); }, [this] { m_words.shard(1).sort(); });
    } else {
        m_words.sort();
    }
    return std::move(m_words);
}

} // namespace tallyvox::indexer
