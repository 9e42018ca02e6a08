// SearchKitIndexer and SearchKitIndexer32: count the words of the file named by the one
// argument and leave the table as the result file in the temporary folder. The exit status
// is for people; the application only looks at the result file.

#include "indexer/DocumentReader.h"
#include "indexer/ResourceLimits.h"
#include "indexer/ResultFile.h"
#include "indexer/WordCounter.h"
#include "support/TemporaryFolder.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    using namespace tallyvox::indexer;
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argc > 0 ? argv[0] : "SearchKitIndexer");
        return 2;
    }
    // A pathological document ends this process, never the application that waits for it.
    applyResourceCaps();
    const std::string folder = tallyvox::temporaryFolder();
    if (folder.empty()) {
        return 1;
    }
    try {
        WordCounter counter;
        // An unreadable file still gets a fresh result, an empty one, so no earlier
        // result is mistaken for it.
        readDocument(argv[1], counter);
        const WordMap words = counter.finish();
        return writeResultFile(folder, words) ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
