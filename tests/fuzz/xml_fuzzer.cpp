#include "FuzzSink.h"
#include "indexer/readers/XmlReader.h"

#include <cstdint>

// XML as the office readers see it, through the markup filter: the root, then the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyvox::indexer::readers;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    FuzzSink sink;
    if (!xmlRootName(memorySource(bytes)).empty()) {
        readXml(memorySource(bytes), sink);
    }
    return 0;
}
