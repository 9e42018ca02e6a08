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

/// The indexer's option, after the file (and after "--ngram-length N" when both are given),
/// that also counts the standardised type/token ratio of single words: before the file
/// ends, one line "sttr TYPES RUNS" on standard output gives the distinct words of each
/// full run of 1000 words, in reading order, added up, and how many such runs the text had.
inline constexpr char typeRunsOption[] = "--sttr";

/// What starts the line that gives the type/token runs' counts.
inline constexpr char typeRunsLine[] = "sttr ";

/// The indexer's first argument that makes it index many files, one after another, each in
/// a child process of its own: paths arrive on standard input, each ended by a NUL byte,
/// and after each file one line "\0finished exit STATUS" or "\0finished signal NUMBER"
/// follows the file's progress lines and complaints on standard output. Standard input's
/// end ends it.
inline constexpr char serveOption[] = "--serve";

/// Names the open file descriptor (a number) the indexer writes its table into from its
/// start, instead of the result file; the serving indexer's children share one.
inline constexpr char resultDescriptorVariable[] = "TALLYVOX_RESULT_FD";

/// What starts the line that ends each file of a serving indexer.
inline constexpr char servedFileMarker[] = "\0finished ";

} // namespace tallyvox
