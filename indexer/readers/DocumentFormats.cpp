#include "indexer/readers/DocumentFormats.h"

#include "indexer/readers/BinarySignature.h"
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

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

namespace tallyvox::indexer::readers {

namespace {

namespace fs = std::filesystem;

std::string head(const std::string& path, std::size_t n)
{
    std::ifstream in(path, std::ios::binary);
    std::string bytes(n, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(n));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(in.gcount(), 0)));
    return bytes;
}

std::string lower(std::string_view s)
{
    std::string out(s);
    std::transform(out.begin(), out.end(), out.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return out;
}

std::string extensionOf(const std::string& path)
{
    return lower(fs::path(path).extension().string());
}

// Markup starts with '<' once a byte-order mark and white space are passed. UTF-16 with
// a mark is let through for libxml2 to decode.
bool looksLikeMarkup(std::string_view bytes, std::string& lowered)
{
    if (bytes.substr(0, 2) == "\xFF\xFE" || bytes.substr(0, 2) == "\xFE\xFF") {
        std::string narrow;
        for (std::size_t i = bytes[0] == '\xFF' ? 2 : 3; i < bytes.size(); i += 2) {
            narrow.push_back(bytes[i]);
        }
        return looksLikeMarkup(narrow, lowered);
    }
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        bytes.remove_prefix(3);
    }
    const auto start = bytes.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos || bytes[start] != '<') {
        return false;
    }
    lowered = lower(bytes.substr(start));
    return true;
}

bool looksLikeHtml(const std::string& lowered)
{
    for (const char* tag : {"<!doctype html", "<html", "<head", "<body", "<meta", "<title", "<p>",
                            "<div", "<table", "<br", "<h1", "<!--"}) {
        if (lowered.find(tag) != std::string::npos) {
            return true;
        }
    }
    return false;
}

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

DocumentKind documentKind(const std::string& path)
{
    std::error_code ec;
    if (fs::is_directory(path, ec)) {
        return extensionOf(path) == ".rtfd" && fs::is_regular_file(fs::path(path) / "TXT.rtf", ec)
                   ? DocumentKind::RtfPackage
                   : DocumentKind::PlainText;
    }
    const std::string bytes = head(path, 1024);
    switch (binaryKind(bytes)) {
    case BinaryKind::Pdf:
        return DocumentKind::Pdf;
    case BinaryKind::Zip:
        return DocumentKind::Container;
    case BinaryKind::Compound:
        return DocumentKind::WordBinary;
    case BinaryKind::None:
        break;
    }
    if (bytes.substr(0, 5) == "{\\rtf") {
        return DocumentKind::Rtf;
    }
    std::string lowered;
    if (!looksLikeMarkup(bytes, lowered)) {
        return DocumentKind::PlainText;
    }
    const std::string ext = extensionOf(path);
    if (lowered.starts_with("<?xml") || lowered.starts_with("<svg") || ext == ".xml" ||
        ext == ".svg" || ext == ".fodt" || ext == ".fods" || ext == ".fodp" || ext == ".xhtml") {
        return DocumentKind::Xml;
    }
    if (looksLikeHtml(lowered) || ext == ".html" || ext == ".htm") {
        return DocumentKind::Html;
    }
    return DocumentKind::PlainText;
}

bool claimsDocument(const std::string& path)
{
    return documentKind(path) != DocumentKind::PlainText;
}

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
