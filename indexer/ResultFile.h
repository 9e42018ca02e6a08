#pragma once

#include "indexer/WordMap.h"
#include "support/IndexerContract.h"

#include <string>

namespace tallyvox::indexer {

/// Writes words as the result file in folder, replacing an earlier one atomically: the table
/// goes to a new file beside it, which is then renamed over it. Returns false, leaving
/// nothing behind, when that fails (for instance when a directory has the result's name).
bool writeResultFile(const std::string& folder, const WordMap& words);

/// Writes words into the regular file (a memory file, usually) open as descriptor, from its
/// start, cutting off whatever was there. Returns false when that fails.
bool writeResultDescriptor(int descriptor, const WordMap& words);

} // namespace tallyvox::indexer
