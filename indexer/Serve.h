#pragma once

#include <string>
#include <vector>

namespace tallyvox::indexer {

/// Indexes one file: the indexer's own command line, argv[1] the file, its options after it.
/// Returns the exit status.
using IndexOne = int (*)(int argc, char** argv);

/// Indexes every file named on standard input (each path ended by a NUL byte) in a child
/// process of its own, forked from this one, which costs a fraction of starting the program
/// again while a hostile file still takes only its own process down. Each child runs
/// indexOne with program, the path and options as its command line; when it ends, one line
/// "\0finished exit STATUS" or "\0finished signal NUMBER" goes to standard output. Returns
/// 0 at the end of standard input, 1 when a child cannot be made.
int serveFiles(const char* program, const std::vector<std::string>& options, IndexOne indexOne);

} // namespace tallyvox::indexer
