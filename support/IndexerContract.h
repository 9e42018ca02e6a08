#pragma once

// What the application and the indexer executables agree on. Plain C++: both sides include it.

namespace tallyvox {

/// The fixed name of the indexers' result file, inside the folder each run is given.
inline constexpr char resultFileName[] = "index-1964.dat";

/// The indexer's exit status when it wrote a table but a limit cut the document; one line
/// on standard error says why.
inline constexpr int partialTableStatus = 3;

/// The indexer's option, after the file, that counts sequences of that many words instead
/// of single words: "--ngram-length 2".
inline constexpr char ngramLengthOption[] = "--ngram-length";

} // namespace tallyvox
