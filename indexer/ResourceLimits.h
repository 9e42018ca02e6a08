#pragma once

#include <cstdint>

namespace tallyvox::indexer {

/// Caps on the indexer process, chosen far above what a real document needs (about 3 s of
/// CPU and 150 MB for 100 MB of text) and far below what hurts the machine.
struct ResourceCaps {
    /// CPU seconds; at the soft limit the kernel sends SIGXCPU, which ends the process.
    std::uint64_t cpuSeconds = 120;
    /// Virtual address space in bytes, which bounds every allocation.
    std::uint64_t addressSpaceBytes = std::uint64_t{2} << 30;
};

/// The caps for an input of this many bytes: the CPU cap grows by a minute per whole GiB,
/// about six times what counting a GiB of English costs, so that no real file, however
/// large, meets it, while one under a GiB, hostile or not, keeps the base two minutes.
ResourceCaps capsForInput(std::uint64_t bytes);

/// Lowers this process's CPU time and address space limits to caps (never raising a
/// limit already lower) and turns off core dumps, so a crash writes no file. Skipped for
/// address space under AddressSanitizer, which reserves terabytes. Returns false when a
/// limit could not be set.
bool applyResourceCaps(const ResourceCaps& caps = {});

} // namespace tallyvox::indexer
