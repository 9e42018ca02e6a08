#include "FuzzSink.h"
#include "indexer/readers/WordDocReader.h"

#include <cstdint>

// Word 97-2003 files: the compound file's FAT, DIFAT, mini stream and directory, then the
// FIB and the piece table.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzSink sink;
    tallyvox::indexer::readers::readWordDocument({reinterpret_cast<const char*>(data), size}, sink);
    return 0;
}
