#include "FuzzSink.h"
#include "indexer/readers/ContainerReader.h"

#include <cstdint>

// Zip containers: Office Open XML, OpenDocument and EPUB, and the XML inside them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzSink sink;
    auto zip = tallyvox::indexer::readers::ZipArchive::fromMemory(
        {reinterpret_cast<const char*>(data), size});
    tallyvox::indexer::readers::readContainer(zip, sink);
    return 0;
}
