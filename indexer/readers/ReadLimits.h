#pragma once

#include <cstddef>
#include <cstdint>

namespace tallyvox::indexer::readers {

/// Bounds every reader keeps, so that a hostile file costs little time and memory.
struct ReadLimits {
    /// Entries looked at in one container; more are ignored.
    static constexpr std::size_t maxContainerEntries = 10'000;
    /// Bytes inflated from one container over all passes; reading stops there.
    static constexpr std::uint64_t maxInflatedBytes = 256ull << 20;
    /// Small parts read whole into memory (manifests, package documents, a .doc's tables).
    static constexpr std::size_t maxSmallPart = 8u << 20;
    /// Nesting kept for HTML; libxml2's own limit of 256 applies to XML.
    static constexpr std::size_t maxHtmlDepth = 1024;
    /// RTF groups tracked; deeper groups still balance but keep the outer state.
    static constexpr std::size_t maxRtfDepth = 1024;
    /// Legacy Word files are read into memory, so they have a size limit.
    static constexpr std::uint64_t maxWordFileBytes = 128ull << 20;
};

} // namespace tallyvox::indexer::readers
