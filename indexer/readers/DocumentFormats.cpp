#include "indexer/readers/DocumentFormats.h"

#include "indexer/readers/ByteSource.h"
#include "indexer/readers/ContainerReader.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/HtmlReader.h"
#include "indexer/readers/PdfReader.h"
#include "indexer/readers/ReadLimits.h"
#include "indexer/readers/RtfReader.h"
#include "indexer/readers/WordDocReader.h"
#include "indexer/readers/XmlReader.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

namespace tallyvox::indexer::readers {

namespace {

namespace fs = std::filesystem;

struct Mapping {
    void* data = MAP_FAILED;
    std::size_t size = 0;
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    Mapping(int fd, std::size_t bytes) : size(bytes)
    {
        if (bytes > 0) {
            data = ::mmap(nullptr, bytes, PROT_READ, MAP_PRIVATE, fd, 0);
        }
    }
    ~Mapping()
    {
        if (data != MAP_FAILED) {
            ::munmap(data, size);
        }
    }
};

// The compound file is read through a mapping: the reader follows sector chains all
// over it, and only the streams it needs are copied.
void readWordFile(const std::string& path, TextSink& sink)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return;
    }
    struct stat info {};
    if (::fstat(fd, &info) != 0 || info.st_size <= 0) {
        ::close(fd);
        return;
    }
    const auto size = static_cast<std::uint64_t>(info.st_size);
    if (size > ReadLimits::maxWordFileBytes) {
        ::close(fd);
        CutReport::note("Word 97: files over " +
                        std::to_string(ReadLimits::maxWordFileBytes >> 20) + " MiB are not read");
        return;
    }
    const Mapping file(fd, static_cast<std::size_t>(size));
    ::close(fd);
    if (file.data != MAP_FAILED) {
        readWordDocument({static_cast<const char*>(file.data), file.size}, sink);
    }
}

} // namespace

bool readDocument(const std::string& path, TextSink& sink)
{
    switch (documentKind(path)) {
    case DocumentKind::PlainText:
        return false;
    case DocumentKind::Pdf:
        readPdf(path, sink);
        return true;
    case DocumentKind::Rtf:
        readRtf(fileSource(path), sink);
        return true;
    case DocumentKind::RtfPackage:
        readRtf(fileSource((fs::path(path) / "TXT.rtf").string()), sink);
        return true;
    case DocumentKind::Container: {
        // Claimed even when unreadable: a zip read as text would give only noise.
        ZipArchive zip = ZipArchive::fromFile(path);
        readContainer(zip, sink);
        return true;
    }
    case DocumentKind::WordBinary:
        readWordFile(path, sink);
        return true; // other compound files (spreadsheets, slides) are binary: no text
    case DocumentKind::Html:
        readHtml(fileSource(path), sink);
        return true;
    case DocumentKind::Xml: {
        const std::string root = xmlRootName(fileSource(path));
        if (root.empty()) {
            return false;
        }
        if (root == "html") {
            readHtml(fileSource(path), sink);
        } else if (root == "svg") {
            readSvg(fileSource(path), sink);
        } else if (root == "document") {
            readOdfBody(fileSource(path), sink);
        } else {
            readXml(fileSource(path), sink);
        }
        return true;
    }
    }
    return false;
}

} // namespace tallyvox::indexer::readers
