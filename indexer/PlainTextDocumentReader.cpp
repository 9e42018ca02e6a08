#include "indexer/DocumentReader.h"

#include "indexer/TextReader.h"
#include "indexer/readers/BinarySignature.h"

#include <fstream>

namespace tallyvox::indexer {

// The fallback indexer reads every file as text, so it still yields words when a format
// reader of the main indexer fails on a document. It runs after the main indexer was
// stopped by a limit, too: the bytes of a PDF, a zip or a compound file would then give
// only their tokens and noise, so those give an empty table and say why.
bool handOff(char**)
{
    return true;
}

DocumentRead readDocument(const std::string& path, TextSink& sink)
{
    std::ifstream in(path, std::ios::binary);
    std::string head(1024, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    if (const auto kind = readers::binaryKind(head); kind != readers::BinaryKind::None) {
        return {true, {std::string(readers::binaryKindName(kind)) + " is not read as plain text"}};
    }
    return {readTextFile(path, sink), {}};
}

} // namespace tallyvox::indexer
