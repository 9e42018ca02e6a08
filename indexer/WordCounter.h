#pragma once

#include "indexer/TextSink.h"
#include "indexer/TypeRuns.h"
#include "indexer/WordMap.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tallyvox::indexer {

/// Counts the words of the text pushed into it, as ICU's root word rules would, scanning
/// whatever it can itself (see WordScanner) and handing ICU only the runs that need it.
/// Text is counted in blocks, each split at whitespace between two threads; a word found by
/// one thread is counted in the table of the thread its hash assigns it to, so the tables
/// hold disjoint words and are never merged.
class WordCounter final : public TextSink {
public:
    struct Options {
        std::size_t blockSize = 4u << 20;
        unsigned threads = 2; // 1 or 2
        /// Also counts the standardised type/token ratio's runs: each thread keeps its
        /// words' hashes in order, and the runs take them half after half.
        bool typeRuns = false;
    };

    WordCounter();
    explicit WordCounter(Options options);
    ~WordCounter() override;
    WordCounter(const WordCounter&) = delete;
    WordCounter& operator=(const WordCounter&) = delete;

    void text(std::string_view utf8) override;
    void boundary() override;
    void expectText(std::uint64_t bytes) override;

    /// Counts whatever is still buffered and returns the table, sorted (WordMap::sort); the
    /// counter is spent after.
    WordMap finish();

    /// The runs counted, when Options::typeRuns asked for them; complete after finish().
    const TypeRuns* typeRuns() const { return m_typeRuns.get(); }

private:
    class Worker;
    class Helper;
    void process(bool everything);
    void countBlock(const char* begin, const char* end);
    void planGrowth();
    bool startHelper();

    Options m_options;
    std::string m_pending;
    std::uint64_t m_expected = 0;    // bytes of text announced
    std::uint64_t m_received = 0;    // bytes of text handed in
    std::uint64_t m_counted = 0;     // bytes counted so far
    std::uint64_t m_sampleBytes = 0; // the last look at the vocabulary's growth: bytes counted
    std::size_t m_sampleWords = 0;   // and distinct words then
    WordMap m_words;
    std::unique_ptr<Worker> m_workers[2];
    std::unique_ptr<Helper> m_helper; // the second thread, once a block is worth sharing
    bool m_helperFailed = false;
    std::unique_ptr<TypeRuns> m_typeRuns;
};

} // namespace tallyvox::indexer
