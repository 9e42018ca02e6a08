#include "indexer/NGramCounter.h"
#include "indexer/WordCounter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

// Any bytes as text: the scanner, ICU's segmentation (UTF-8, and UTF-16 for the dictionary
// scripts) and the word keys, in small blocks so that runs are cut and carried over. Then the
// same text as bigrams: each is two words joined by one space (no word holds an ASCII
// space).
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyvox::indexer;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t half = size / 2;
    WordCounter counter({256, 1});
    counter.text(text.substr(0, half));
    counter.boundary();
    counter.text(text.substr(half));
    counter.finish();

    NGramCounter bigrams(2, 256);
    bigrams.text(text.substr(0, half));
    bigrams.boundary();
    bigrams.text(text.substr(half));
    bigrams.finish().forEach([](std::string_view bigram, std::uint64_t) {
        if (std::count(bigram.begin(), bigram.end(), ' ') != 1) {
            std::abort();
        }
    });
    return 0;
}
