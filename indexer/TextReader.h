#pragma once

#include "indexer/TextSink.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tallyvox::indexer {

/// How the bytes of a text file are to be read.
struct TextEncoding {
    std::string name;      // "UTF-8", or an ICU converter name
    std::size_t bomLength; // bytes to skip at the start
};

/// Decides a file's encoding from its first bytes: a byte-order mark; else UTF-8 when the
/// sample is UTF-8 with at most a few malformed bytes; else, unless it holds NUL bytes
/// (binary), what uchardet detects. Anything undecided is read as UTF-8, where malformed
/// bytes act as non-letters.
TextEncoding detectEncoding(std::string_view sample, bool wholeFile);

/// The converter for an encoding as uchardet names it: the name ICU (or, for the few ICU
/// lacks, glibc's iconv) knows it by, Latin-1 and the like read as the Windows code pages
/// that extend them.
std::string decoderName(std::string_view detected);

/// Streams a text file into sink as UTF-8, in chunks of about a megabyte.
/// Returns false when the file cannot be opened or read.
bool readTextFile(const std::string& path, TextSink& sink);

} // namespace tallyvox::indexer
