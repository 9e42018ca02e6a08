#pragma once

class QIODevice;
class QTextStream;

namespace tallyvox {

class Indexer;
struct CommandLine;

/// What console mode reads and writes: the process's own streams, or a test's.
struct ConsoleStreams {
    QTextStream& out;
    QTextStream& err;
    /// Standard input, for --stdin; opened for reading.
    QIODevice& input;
};

/// The exit status of a batch whose lists all came out, one of them empty because its
/// file cannot be read, is password-protected or is not a document.
inline constexpr int wordsLostStatus = 3;

/// Console mode, once the application object exists: the batch run of the command line's
/// files, or its service, with no window, to the exit status that --help gives (0 done;
/// 1 a file could not be processed, a list not written, or a selection that could not be
/// read; wordsLostStatus a list empty because its file could not be read). indexer: the
/// indexer executables when none is given.
int runConsoleMode(const CommandLine& commandLine, const ConsoleStreams& streams,
                   Indexer* indexer = nullptr);

} // namespace tallyvox
