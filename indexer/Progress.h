#pragma once

#include <cstdint>

namespace tallyvox::indexer::progress {

// How far the indexer has read its input, for the application's progress text. It goes to
// standard output as lines "progress DONE TOTAL" (bytes of the input; TOTAL 0 when the
// size is not known), the first a quarter of a second after the start and then at most
// four a second, so a short file prints nothing. TALLYVOX_PROGRESS_MS changes the pace.

/// The input's size in bytes; 0 when it is not known.
void setTotal(std::uint64_t bytes);

/// This much of the input is read now, for readers that know their place otherwise (a
/// page of so many, a position in an archive).
void setRead(std::uint64_t bytes);

/// Starts the clock again for a new input, which reports no earlier than the first
/// interval from now.
void restart();

/// part of whole of the input is read (pages, say), as a share of its size.
void setShare(std::uint64_t part, std::uint64_t whole);

} // namespace tallyvox::indexer::progress
