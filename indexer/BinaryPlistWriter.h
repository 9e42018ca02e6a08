#pragma once

#include "indexer/WordMap.h"

#include <cstdio>

namespace tallyvox::indexer {

/// Writes words as a binary property list ("bplist00") whose root is a dictionary from word
/// (ASCII string when the word is ASCII, else UTF-16BE) to count (integer). Streams the
/// objects out in one pass over the table; equal counts share one integer object.
/// Returns false on a write error.
bool writeBinaryPlist(std::FILE* out, const WordMap& words);

} // namespace tallyvox::indexer
