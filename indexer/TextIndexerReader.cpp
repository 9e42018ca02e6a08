#include "indexer/DocumentReader.h"

#include "indexer/TextReader.h"
#include "indexer/readers/DocumentKind.h"

#include <unistd.h>

#include <climits>
#include <string>

namespace tallyvox::indexer {

// SearchKitIndexer links no document library: loading and relocating poppler, libxml2,
// libarchive and their forty-odd dependencies cost more than counting a small text file.
// A file that a document reader claims is handed, in the same process, to
// SearchKitDocumentIndexer beside this executable, which links them all; the application
// sees one process, one exit status.

namespace {

constexpr const char* documentIndexer = "SearchKitDocumentIndexer";

std::string siblingPath(const char* name)
{
    char self[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", self, sizeof self - 1);
    if (n <= 0) {
        return {};
    }
    std::string path(self, static_cast<std::size_t>(n));
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1) + name;
}

} // namespace

bool handOff(char** argv)
{
    if (!readers::claimsDocument(argv[1])) {
        return true;
    }
    const std::string target = siblingPath(documentIndexer);
    if (!target.empty()) {
        ::execv(target.c_str(), argv);
    }
    return false;
}

DocumentRead readDocument(const std::string& path, TextSink& sink)
{
    return {readTextFile(path, sink), {}};
}

} // namespace tallyvox::indexer
