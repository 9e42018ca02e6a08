#include "indexer/WordCounter.h"

#include <cstdint>
#include <string_view>

// Any bytes as text: the scanner, ICU's segmentation (UTF-8, and UTF-16 for the dictionary
// scripts) and the word keys, in small blocks so that runs are cut and carried over.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tallyvox::indexer::WordCounter counter({256, 1});
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t half = size / 2;
    counter.text(text.substr(0, half));
    counter.boundary();
    counter.text(text.substr(half));
    counter.finish();
    return 0;
}
