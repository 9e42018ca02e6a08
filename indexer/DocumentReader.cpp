#include "indexer/DocumentReader.h"

#include "indexer/TextReader.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/DocumentFormats.h"

namespace tallyvox::indexer {

namespace {

// A document format: whether it claims a file (by its path), and how its text is read.
struct Reader {
    bool (*accepts)(const std::string& path);
    bool (*read)(const std::string& path, TextSink& sink);
};

bool anyFile(const std::string&)
{
    return true;
}

// Tried in order; the first that accepts the file reads it. Format readers go before the
// plain-text reader, which takes everything.
constexpr Reader documentReaders[] = {
    {readers::claimsDocument, readers::readDocument},
    {anyFile, readTextFile},
};

} // namespace

bool handOff(char**)
{
    return true; // this one reads every format itself
}

DocumentRead readDocument(const std::string& path, TextSink& sink)
{
    const readers::CutReport report;
    DocumentRead result;
    for (const Reader& reader : documentReaders) {
        if (reader.accepts(path)) {
            result.readable = reader.read(path, sink);
            break;
        }
    }
    result.cuts = report.reasons();
    return result;
}

} // namespace tallyvox::indexer
