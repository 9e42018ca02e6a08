#pragma once

#include "indexer/TextSink.h"
#include "indexer/WordMap.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tallyvox::indexer {

/// The longest sequence of words a list counts as one entry.
inline constexpr unsigned longestNGram = 5;

/// Counts sequences of n consecutive words (n from 2 to longestNGram), each the words as
/// WordCounter finds them joined by one space. A sequence never spans a sentence end, a
/// blank line or a reader's boundary (see docs/indexer.md, "N-grams"). One thread: the
/// words of a sentence are needed in order.
class NGramCounter final : public TextSink {
public:
    explicit NGramCounter(unsigned length, std::size_t blockSize = std::size_t{4} << 20);
    ~NGramCounter() override;
    NGramCounter(const NGramCounter&) = delete;
    NGramCounter& operator=(const NGramCounter&) = delete;

    void text(std::string_view utf8) override;
    void boundary() override;
    void expectText(std::uint64_t bytes) override;

    /// With 2, finish() sorts the table's two shards side by side. 1 by default.
    void allowThreads(unsigned threads) { m_threads = threads; }

    /// Counts whatever is still buffered and returns the table, sorted; the counter is spent.
    WordMap finish();

    static constexpr std::size_t noEnd = std::string_view::npos;
    /// Where the first sentence or paragraph of text ends: the position just past its
    /// terminator (with any closing quotes or brackets) or blank line, or noEnd when it goes
    /// on. atEnd says whether the end of text is followed by whitespace or nothing.
    static std::size_t sentenceEnd(std::string_view text, bool atEnd);

private:
    class Words;
    void process(bool everything);
    void countSentences(const char* begin, const char* end, bool atEnd);
    void add(std::string_view word);
    void countBatch();
    void breakSequence() { m_held = 0; }

    unsigned m_length;
    unsigned m_threads = 1;
    std::size_t m_blockSize;
    std::string m_pending;
    std::unique_ptr<Words> m_words;
    // The last m_length - 1 words seen in this sentence, oldest at m_first.
    std::array<std::string, longestNGram> m_recent;
    unsigned m_first = 0;
    unsigned m_held = 0;
    // N-grams waiting to be counted together, end to end; each one's end. The table's slots
    // of a whole batch are fetched before any is touched, so that their cache misses overlap.
    static constexpr std::size_t batchSize = 64;
    std::string m_batch;
    std::array<std::size_t, batchSize> m_ends{};
    std::size_t m_batched = 0;
    WordMap m_table;
};

} // namespace tallyvox::indexer
