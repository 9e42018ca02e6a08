// The application's reader of the indexer's result file on arbitrary bytes: binary and
// XML property lists of any shape must parse or be refused without reading out of bounds.
#include "words/WordTableReader.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    (void)tallyvox::ParseWordTable(bytes);
    return 0;
}
