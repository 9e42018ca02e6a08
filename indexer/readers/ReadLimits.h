#pragma once

#include <cstddef>
#include <cstdint>

namespace tallyvox::indexer::readers {

/// Bounds every reader keeps, so that a hostile file costs little time and memory. A bound
/// that cuts a document's text is noted in the CutReport, so the indexer can say so.
struct ReadLimits {
    /// Entries looked at in one container; more are ignored.
    static constexpr std::size_t maxContainerEntries = 10'000;
    /// Bytes inflated from one container over all passes, as a multiple of its compressed
    /// size: office XML deflates 4-20 times, a zip bomb about a thousand.
    static constexpr std::uint64_t maxInflationRatio = 100;
    /// ... but never less than this, so that small, very regular documents read whole,
    static constexpr std::uint64_t minInflatedBytes = 256ull << 20;
    /// ... and never more than this, far beyond any real document's text.
    static constexpr std::uint64_t maxInflatedBytes = 32ull << 30;
    /// Small parts read whole into memory (manifests, package documents, a .doc's tables).
    static constexpr std::size_t maxSmallPart = 8u << 20;
    /// Attributes kept per markup tag: libxml2 compares each new attribute with all earlier
    /// ones, so a tag with very many would cost quadratic time.
    static constexpr std::size_t maxAttributes = 256;
    /// Nesting kept for HTML; deeper tags are flattened (their text is kept). libxml2's
    /// own limit of 256 applies to XML.
    static constexpr std::size_t maxHtmlDepth = 1024;
    /// RTF groups tracked; deeper groups still balance but keep the outer state.
    static constexpr std::size_t maxRtfDepth = 1024;
    /// Text of repeated spreadsheet cells and rows copied per document, beyond the first
    /// copy of each.
    static constexpr std::uint64_t maxRepeatedText = 64ull << 20;
    /// Legacy Word files are mapped into memory whole, so they have a size limit.
    static constexpr std::uint64_t maxWordFileBytes = 1ull << 30;
    /// Wall-clock seconds for the text of one PDF page (twice that for a page reader's
    /// first, which includes loading the document). Nothing bounds the whole document: a
    /// real one of any length reads whole, and progress rises with every page.
    static constexpr int maxPdfPageSeconds = 5;
    /// Failed or slow PDF pages tolerated before the rest of the document is given up.
    static constexpr int maxPdfPageFailures = 16;
    /// CPU seconds after which a PDF page reader hands its pages on to a fresh one, well
    /// before the CPU cap it inherits (ResourceLimits) would end it in mid-page.
    static constexpr int pdfReaderCpuSeconds = 60;
};

} // namespace tallyvox::indexer::readers
