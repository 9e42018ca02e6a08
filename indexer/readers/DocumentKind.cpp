#include "indexer/readers/DocumentKind.h"

#include "indexer/readers/BinarySignature.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <filesystem>

namespace tallyvox::indexer::readers {

namespace {

namespace fs = std::filesystem;

std::string head(const std::string& path, std::size_t n)
{
    std::string bytes;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return bytes;
    }
    bytes.resize(n);
    std::size_t done = 0;
    while (done < n) {
        const ssize_t got = ::read(fd, bytes.data() + done, n - done);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    ::close(fd);
    bytes.resize(done);
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

} // namespace tallyvox::indexer::readers
