// SearchKitIndexer, SearchKitDocumentIndexer and SearchKitIndexer32: count the words of the file
// named by the first argument and leave the table as the result file in the temporary folder;
// "--ngram-length N" after it counts sequences of N words instead, "--sttr" also counts the
// standardised type/token ratio's runs (docs/indexer.md). Exit
// status: 0 the table is complete; 3 the table was written but is partial, and one line on standard
// error says why; 1 no table could be written; 2 a usage error. "--serve" in the file's place
// indexes the files named on standard input instead, each in a child process (indexer/Serve.h).

#include "indexer/DocumentReader.h"
#include "indexer/NGramCounter.h"
#include "indexer/Progress.h"
#include "indexer/ResourceLimits.h"
#include "indexer/ResultFile.h"
#include "indexer/Serve.h"
#include "indexer/Threads.h"
#include "indexer/WordCounter.h"
#include "support/IndexerContract.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace {

// One line naming the file and every reason its table is partial.
void reportCuts(const char* program, const char* path, const std::vector<std::string>& cuts)
{
    std::string line;
    for (const std::string& cut : cuts) {
        line += (line.empty() ? "" : "; ") + cut;
    }
    std::fprintf(stderr, "%s: %s: partial word table: %s\n", program, path, line.c_str());
}

// The options after the file: "--ngram-length N" with N from 1 to the longest, then
// "--sttr", each optional. ngramLength is 0 for anything else.
struct Arguments {
    unsigned ngramLength = 1;
    bool typeRuns = false;
};

Arguments argumentsOf(int argc, char** argv)
{
    Arguments arguments;
    int next = 2;
    if (argc >= 4 && std::strcmp(argv[2], tallyvox::ngramLengthOption) == 0) {
        const char* n = argv[3];
        if (n[0] < '1' || n[0] > '0' + static_cast<int>(tallyvox::indexer::longestNGram) ||
            n[1] != 0) {
            return {0, false};
        }
        arguments.ngramLength = static_cast<unsigned>(n[0] - '0');
        next = 4;
    }
    if (next < argc && std::strcmp(argv[next], tallyvox::typeRunsOption) == 0) {
        arguments.typeRuns = true;
        ++next;
    }
    if (next != argc) {
        return {0, false};
    }
    return arguments;
}

// The table goes where the server asked for it, or as the result file into folder.
bool writeTable(const std::string& folder, const tallyvox::indexer::WordMap& words)
{
    using namespace tallyvox::indexer;
    const char* descriptor = std::getenv(tallyvox::resultDescriptorVariable);
    if (descriptor == nullptr) {
        return writeResultFile(folder, words);
    }
    char* end = nullptr;
    const long number = std::strtol(descriptor, &end, 10);
    return *descriptor != 0 && *end == 0 && number >= 0 && number <= 65535 &&
           writeResultDescriptor(static_cast<int>(number), words);
}

int indexFile(int argc, char** argv)
{
    using namespace tallyvox::indexer;
    const Arguments arguments = argumentsOf(argc, argv);
    const unsigned ngramLength = arguments.ngramLength;
    struct stat input {};
    const bool regular = ::stat(argv[1], &input) == 0 && S_ISREG(input.st_mode);
    const auto size = regular ? static_cast<std::uint64_t>(input.st_size) : 0;
    // A pathological document ends this process, never the application that waits for it.
    applyResourceCaps(capsForInput(size));
    // Progress lines go to standard output; whoever reads them may stop listening, and
    // the table still has to be written.
    std::signal(SIGPIPE, SIG_IGN);
    if (!handOff(argv)) {
        std::fprintf(stderr, "%s: %s: the document indexer could not be started\n", argv[0],
                     argv[1]);
        return 1;
    }
    const std::string folder = tallyvox::temporaryFolder();
    if (folder.empty()) {
        // Run by hand with a shared TMPDIR, it would otherwise end without a word.
        std::fprintf(stderr,
                     "%s: writes its table only into a private folder (the user's own, which "
                     "nobody else may enter); \"%s\" is not one\n",
                     argv[0], tallyvox::temporaryFolderCandidate().c_str());
        return 1;
    }
    progress::setTotal(size);
    try {
        // An unreadable file still gets a fresh result, an empty one, so no earlier
        // result is mistaken for it.
        DocumentRead read;
        WordMap words(2);
        if (ngramLength > 1) {
            NGramCounter counter(ngramLength);
            counter.allowThreads(allowedThreads(2));
            read = readDocument(argv[1], counter);
            words = counter.finish();
        } else {
            WordCounter::Options options;
            options.threads = std::min(options.threads, allowedThreads(options.threads));
            options.typeRuns = arguments.typeRuns;
            WordCounter counter(options);
            read = readDocument(argv[1], counter);
            words = counter.finish();
            if (const TypeRuns* runs = counter.typeRuns()) {
                std::printf("%s%llu %llu\n", tallyvox::typeRunsLine,
                            static_cast<unsigned long long>(runs->typesSum()),
                            static_cast<unsigned long long>(runs->runs()));
                std::fflush(stdout);
            }
        }
        if (!writeTable(folder, words)) {
            return 1;
        }
        if (!read.cuts.empty()) {
            reportCuts(argv[0], argv[1], read.cuts);
            return tallyvox::partialTableStatus;
        }
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv)
{
    using namespace tallyvox::indexer;
    const bool serving = argc > 1 && std::strcmp(argv[1], tallyvox::serveOption) == 0;
    // "--serve" takes the file's place; the options after it are each file's.
    if (argc < 2 || argumentsOf(argc, argv).ngramLength == 0) {
        const char* program = argc > 0 ? argv[0] : "SearchKitIndexer";
        std::fprintf(stderr, "usage: %s FILE [%s 1-%u] [%s]\n       %s %s [%s 1-%u] [%s]\n",
                     program, tallyvox::ngramLengthOption, longestNGram, tallyvox::typeRunsOption,
                     program, tallyvox::serveOption, tallyvox::ngramLengthOption, longestNGram,
                     tallyvox::typeRunsOption);
        return 2;
    }
    if (serving) {
        // A child's progress lines and complaints go to the same reader; one that stopped
        // listening must not end the server.
        std::signal(SIGPIPE, SIG_IGN);
        return serveFiles(argv[0], std::vector<std::string>(argv + 2, argv + argc), indexFile);
    }
    return indexFile(argc, argv);
}
