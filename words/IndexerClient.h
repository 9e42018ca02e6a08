#pragma once

#include "support/FileRef.h"
#include "words/WordContext.h"
#include "words/WordTable.h"

#include <optional>

namespace tallyvox {

/// The fixed name of the indexers' result file, inside the folder each run is given.
inline constexpr char resultFileName[] = "index-1964.dat";

/// The words of one file with their counts, from the indexer and then its fallback;
/// empty when neither finishes cleanly with a readable result, and without any run for a
/// named pipe, device or socket. Logs "Indexing <path>".
WordTable BuildWordTable(const WordContext& context, const FileRef& file);

/// Runs one indexer on posixPath with a fresh private folder of its own as TMPDIR, waits
/// for it while events keep flowing (at most the context's time limit), and reads the
/// result it left there. Nothing unless it exited with status 0 (complete) or 3 (a limit
/// cut the document) and left a readable dictionary. The folder is removed afterwards.
std::optional<WordTable> RunIndexer(const WordContext& context, const QString& posixPath,
                                    const QString& executableName);

} // namespace tallyvox
