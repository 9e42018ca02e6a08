#pragma once

#include "indexer/readers/ByteSource.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyvox::indexer::readers {

/// Read-only access to a zip container, within ReadLimits: at most maxContainerEntries
/// entries are seen per pass, and all passes together inflate at most budgetFor(the
/// container's size) bytes. Entries are streamed, never inflated whole. Reaching either
/// limit is noted in the CutReport.
class ZipArchive {
public:
    /// The container at path.
    static ZipArchive fromFile(std::string path);
    /// The container in bytes, which must outlive the object.
    static ZipArchive fromMemory(std::string_view bytes);

    /// Whether the bytes open as a zip container with at least one entry.
    bool isValid();
    /// Entry names in archive order.
    std::vector<std::string> names();
    /// Calls visit for each entry in archive order; data yields the entry's bytes on demand.
    /// Stops early once the inflation budget is spent.
    void forEach(const std::function<void(const std::string& name, const ByteSource& data)>& visit);
    /// The whole entry called name, when present and not larger than limit.
    std::optional<std::string> read(std::string_view name, std::size_t limit);
    /// Charges text that a document delivers again (a part its spine names twice, a shared
    /// string in another cell) to the inflation budget, as if it had been inflated anew: a
    /// small file that names one large part a million times costs what its copies would.
    /// False, noting the cut, once the budget cannot pay for it.
    bool chargeCopy(std::uint64_t bytes);
    /// Whether some reading stopped at the inflation budget.
    bool budgetSpent() const { return m_inflated >= m_budget; }

    /// The inflation budget of a container of compressedBytes.
    static std::uint64_t budgetFor(std::uint64_t compressedBytes);

private:
    ZipArchive(std::string path, std::string_view bytes) : m_path(std::move(path)), m_bytes(bytes)
    {}

    std::string m_path;
    std::string_view m_bytes;
    std::uint64_t m_inflated = 0;
    std::uint64_t m_budget = 0;
};

} // namespace tallyvox::indexer::readers
