#pragma once

#include "indexer/IcuWords.h"
#include "indexer/TextSink.h"
#include "indexer/WordMap.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tallyvox::indexer {

/// Counts the words of the text pushed into it, as ICU's root word rules would, but scanning
/// runs of plain ASCII itself: ICU then only sees the whitespace-delimited runs that hold a
/// byte of 0x80 or more. Text is buffered in blocks; each block is split at whitespace
/// between two threads, whose tables are merged at the end.
class WordCounter final : public TextSink {
public:
    struct Options {
        std::size_t blockSize = 4u << 20;
        unsigned threads = 2; // 1 or 2
    };

    WordCounter();
    explicit WordCounter(Options options);
    ~WordCounter() override;

    void text(std::string_view utf8) override;
    void boundary() override;

    /// Counts whatever is still buffered and returns the table; the counter is spent after.
    WordMap finish();

private:
    struct Worker;
    void process(bool everything);

    Options m_options;
    std::string m_pending;
    std::unique_ptr<Worker> m_workers[2];
};

/// The words of the given text counted by ICU alone, the reference the fast path must match.
WordMap countWithIcu(std::string_view utf8);

} // namespace tallyvox::indexer
