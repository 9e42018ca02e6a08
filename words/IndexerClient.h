#pragma once

#include "support/FileRef.h"
#include "words/WordContext.h"
#include "words/WordTable.h"

#include <optional>

namespace tallyvox {

/// The fixed name of the indexers' result file in the temporary folder.
inline constexpr char resultFileName[] = "index-1964.dat";

/// The words of one file with their counts, from the indexer and then its fallback;
/// empty when neither leaves a readable result. Logs "Indexing <path>".
WordTable BuildWordTable(const WordContext& context, const FileRef& file);

/// Runs one indexer on posixPath, waits for it while events keep flowing, and reads
/// its result file; nothing when the program cannot start or leaves no readable dictionary.
std::optional<WordTable> RunIndexer(const WordContext& context, const QString& posixPath,
                                    const QString& executableName);

} // namespace tallyvox
