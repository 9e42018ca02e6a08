#include "indexer/readers/ZipArchive.h"

#include "indexer/Progress.h"

#include "indexer/readers/CutReport.h"
#include "indexer/readers/ReadLimits.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>

namespace tallyvox::indexer::readers {

namespace {

struct ArchiveCloser {
    void operator()(archive* a) const { archive_read_free(a); }
};
using ArchivePtr = std::unique_ptr<archive, ArchiveCloser>;

} // namespace

std::uint64_t ZipArchive::budgetFor(std::uint64_t compressedBytes)
{
    const std::uint64_t ratio =
        compressedBytes > ReadLimits::maxInflatedBytes / ReadLimits::maxInflationRatio
            ? ReadLimits::maxInflatedBytes
            : compressedBytes * ReadLimits::maxInflationRatio;
    return std::clamp(ratio, ReadLimits::minInflatedBytes, ReadLimits::maxInflatedBytes);
}

bool ZipArchive::chargeCopy(std::uint64_t bytes)
{
    if (bytes > m_budget - std::min(m_budget, m_inflated)) {
        CutReport::note("zip: repeated text stopped at " + std::to_string(m_budget >> 20) +
                        " MiB, " + std::to_string(ReadLimits::maxInflationRatio) +
                        " times the file's size");
        return false;
    }
    m_inflated += bytes;
    return true;
}

ZipArchive ZipArchive::fromFile(std::string path)
{
    std::error_code ec;
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    ZipArchive zip(std::move(path), {});
    zip.m_budget = budgetFor(ec ? 0 : size);
    return zip;
}

ZipArchive ZipArchive::fromMemory(std::string_view bytes)
{
    ZipArchive zip({}, bytes);
    zip.m_budget = budgetFor(bytes.size());
    return zip;
}

void ZipArchive::forEach(
    const std::function<void(const std::string& name, const ByteSource& data)>& visit)
{
    ArchivePtr a(archive_read_new());
    // The seekable zip reader (chosen for files and memory) trusts the central directory,
    // which is what office suites and e-book readers do too.
    archive_read_support_format_zip(a.get());
    const int opened = m_path.empty()
                           ? archive_read_open_memory(a.get(), m_bytes.data(), m_bytes.size())
                           : archive_read_open_filename(a.get(), m_path.c_str(), 65536);
    if (opened != ARCHIVE_OK) {
        return;
    }
    archive_entry* entry = nullptr;
    for (std::size_t seen = 0; !budgetSpent(); ++seen) {
        const int status = archive_read_next_header(a.get(), &entry);
        if (status == ARCHIVE_EOF || status == ARCHIVE_FATAL) {
            break;
        }
        if (seen == ReadLimits::maxContainerEntries) {
            CutReport::note("zip: entries beyond the first " +
                            std::to_string(ReadLimits::maxContainerEntries) + " were not read");
            break;
        }
        const char* name = archive_entry_pathname(entry);
        if (name == nullptr || archive_entry_filetype(entry) == AE_IFDIR) {
            continue;
        }
        const ByteSource data = [this, raw = a.get()](char* buf, std::size_t cap) -> std::size_t {
            const std::uint64_t left = m_budget - std::min(m_budget, m_inflated);
            const auto want = static_cast<std::size_t>(std::min<std::uint64_t>(cap, left));
            if (want == 0) {
                CutReport::note("zip: inflating stopped at " + std::to_string(m_budget >> 20) +
                                " MiB, " + std::to_string(ReadLimits::maxInflationRatio) +
                                " times the file's size");
                return 0;
            }
            const la_ssize_t n = archive_read_data(raw, buf, want);
            if (n <= 0) {
                return 0;
            }
            m_inflated += static_cast<std::uint64_t>(n);
            // How much of the archive file is behind us, for the progress report.
            if (!m_path.empty()) {
                progress::setRead(static_cast<std::uint64_t>(archive_filter_bytes(raw, -1)));
            }
            return static_cast<std::size_t>(n);
        };
        visit(std::string(name), data);
    }
}

bool ZipArchive::isValid()
{
    bool any = false;
    forEach([&any](const std::string&, const ByteSource&) { any = true; });
    return any;
}

std::vector<std::string> ZipArchive::names()
{
    std::vector<std::string> out;
    forEach([&out](const std::string& name, const ByteSource&) { out.push_back(name); });
    return out;
}

std::optional<std::string> ZipArchive::read(std::string_view name, std::size_t limit)
{
    std::optional<std::string> out;
    forEach([&](const std::string& entryName, const ByteSource& data) {
        if (!out && entryName == name) {
            bool truncated = false;
            std::string bytes = readAll(data, limit, &truncated);
            if (!truncated) {
                out = std::move(bytes);
            }
        }
    });
    return out;
}

} // namespace tallyvox::indexer::readers
