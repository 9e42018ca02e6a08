#include "FuzzSink.h"
#include "indexer/readers/RtfReader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzSink sink;
    tallyvox::indexer::readers::readRtf(
        tallyvox::indexer::readers::memorySource({reinterpret_cast<const char*>(data), size}),
        sink);
    return 0;
}
