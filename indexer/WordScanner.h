#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tallyvox::indexer {

/// Words found by a scanner, passed on in batches so that the table can fetch their slots
/// together.
class WordBatch {
public:
    struct Span {
        const char* data;
        std::size_t size;
    };
    static constexpr std::size_t capacity = 64;

    WordBatch() = default;
    virtual ~WordBatch() = default;
    WordBatch(const WordBatch&) = delete;
    WordBatch& operator=(const WordBatch&) = delete;

    void add(const char* data, std::size_t size)
    {
        m_words[m_size++] = {data, size};
        if (m_size == capacity) {
            flush();
        }
    }
    void flush()
    {
        if (m_size > 0) {
            deliver(m_words, m_size);
            m_size = 0;
        }
    }

protected:
    virtual void deliver(const Span* words, std::size_t n) = 0;

private:
    Span m_words[capacity];
    std::size_t m_size = 0;
};

/// ICU's root word rules, reproduced for the characters that need neither a dictionary nor
/// combining marks: letters, digits and the punctuation that joins them, looked up in ICU's
/// own Unicode properties. ICU never joins anything across ASCII whitespace, so text splits
/// into whitespace-delimited runs, and a run either holds only such characters and is
/// scanned here, or goes to ICU whole. One instance per thread (it caches what it learns).
class WordScanner {
public:
    WordScanner();
    ~WordScanner();
    WordScanner(const WordScanner&) = delete;
    WordScanner& operator=(const WordScanner&) = delete;

    /// The words of text that holds only bytes below 0x80 and starts and ends at whitespace
    /// or at the edges of the text. Uses AVX2 where the processor has it.
    static void scanAscii(const char* begin, const char* end, WordBatch& words);
    /// The same with SSE2 only (or none): what processors without AVX2 run.
    static void scanAsciiPortable(const char* begin, const char* end, WordBatch& words);
    /// The words of one whitespace-delimited run holding bytes of 0x80 and more, or false,
    /// having found nothing, when some character of it needs ICU.
    bool scanRun(const char* begin, const char* end, WordBatch& words);
    /// Whether some character of a run needs ICU.
    bool needsIcu(const char* begin, const char* end);

    /// The first byte of 0x80 or more in [p, end), or end.
    static const char* findHigh(const char* p, const char* end);

private:
    struct Decoded {
        unsigned cls;
        const char* next;
    };
    Decoded decode(const char* p, const char* end);
    unsigned char classOf(char32_t c);
    std::unique_ptr<unsigned char[]> m_classes; // per BMP code point; 0 until looked up
};

} // namespace tallyvox::indexer
