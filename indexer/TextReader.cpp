#include "indexer/TextReader.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <uchardet.h>
#include <unicode/ucnv.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

constexpr std::size_t chunkSize = 1u << 20;
constexpr std::size_t detectionSample = 64 * 1024;

// How much of a sample is well-formed UTF-8: multi-byte sequences and malformed bytes.
// A sequence cut short by the end of the sample counts as neither when more text follows.
struct Utf8Survey {
    std::size_t sequences = 0;
    std::size_t errors = 0;
};

Utf8Survey surveyUtf8(std::string_view text, bool complete)
{
    Utf8Survey survey;
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        if (*p < 0x80) {
            ++p;
            continue;
        }
        std::size_t length = 0;
        unsigned char low = 0x80, high = 0xBF;
        if (*p >= 0xC2 && *p <= 0xDF) {
            length = 2;
        } else if (*p >= 0xE0 && *p <= 0xEF) {
            length = 3;
            low = *p == 0xE0 ? 0xA0 : 0x80;
            high = *p == 0xED ? 0x9F : 0xBF;
        } else if (*p >= 0xF0 && *p <= 0xF4) {
            length = 4;
            low = *p == 0xF0 ? 0x90 : 0x80;
            high = *p == 0xF4 ? 0x8F : 0xBF;
        }
        std::size_t i = 1;
        for (; length > 0 && i < length && p + i < end; ++i) {
            if (p[i] < (i == 1 ? low : 0x80) || p[i] > (i == 1 ? high : 0xBF)) {
                break;
            }
        }
        if (length > 0 && i == length) {
            ++survey.sequences;
            p += length;
        } else if (length > 0 && p + i == end && !complete) {
            break;
        } else {
            ++survey.errors;
            ++p;
        }
    }
    return survey;
}

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

// Reads until the buffer is full or the file ends; returns the bytes read, -1 on error.
ssize_t readFully(int fd, char* buffer, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        const ssize_t n = ::read(fd, buffer + done, size - done);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n < 0) {
            return done > 0 ? static_cast<ssize_t>(done) : -1;
        }
        if (n == 0) {
            break;
        }
        done += static_cast<std::size_t>(n);
    }
    return static_cast<ssize_t>(done);
}

struct FileCloser {
    int fd;
    ~FileCloser() { ::close(fd); }
};

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

} // namespace

TextEncoding detectEncoding(std::string_view sample, bool wholeFile)
{
    using namespace std::string_view_literals;
    if (startsWith(sample, "\xEF\xBB\xBF"sv)) {
        return {"UTF-8", 3};
    }
    if (startsWith(sample, "\xFF\xFE\0\0"sv)) {
        return {"UTF-32LE", 4};
    }
    if (startsWith(sample, "\0\0\xFE\xFF"sv)) {
        return {"UTF-32BE", 4};
    }
    if (startsWith(sample, "\xFF\xFE"sv)) {
        return {"UTF-16LE", 2};
    }
    if (startsWith(sample, "\xFE\xFF"sv)) {
        return {"UTF-16BE", 2};
    }
    // UTF-8 with a few damaged bytes is still UTF-8; legacy 8-bit text almost never holds a
    // well-formed multi-byte sequence. NUL bytes mean binary data: only its ASCII words count.
    const Utf8Survey survey = surveyUtf8(sample, wholeFile);
    if (survey.errors == 0 || survey.sequences > survey.errors) {
        return {"UTF-8", 0};
    }
    if (sample.find('\0') != std::string_view::npos) {
        return {"UTF-8", 0};
    }

    std::string name;
    if (uchardet_t detector = uchardet_new()) {
        const std::string_view head = sample.substr(0, detectionSample);
        if (uchardet_handle_data(detector, head.data(), head.size()) == 0) {
            uchardet_data_end(detector);
            name = uchardet_get_charset(detector);
        }
        uchardet_delete(detector);
    }
    if (name.empty() || name == "ASCII") {
        name = "UTF-8";
    }
    return {name, 0};
}

bool readTextFile(const std::string& path, TextSink& sink)
{
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    FileCloser closer{fd};
    struct stat info {};
    if (::fstat(fd, &info) != 0 || S_ISDIR(info.st_mode)) {
        return false;
    }

    std::vector<char> input(chunkSize);
    ssize_t n = readFully(fd, input.data(), input.size());
    if (n < 0) {
        return false;
    }
    std::string_view chunk(input.data(), static_cast<std::size_t>(n));
    const TextEncoding encoding = detectEncoding(chunk, static_cast<std::size_t>(n) < chunkSize);
    chunk.remove_prefix(std::min(encoding.bomLength, chunk.size()));

    Converter source;
    Converter target;
    if (encoding.name != "UTF-8") {
        UErrorCode status = U_ZERO_ERROR;
        source.reset(ucnv_open(encoding.name.c_str(), &status));
        target.reset(ucnv_open("UTF-8", &status));
        if (U_FAILURE(status)) {
            source.reset();
        }
    }
    if (!source) {
        while (!chunk.empty()) {
            sink.text(chunk);
            n = readFully(fd, input.data(), input.size());
            if (n < 0) {
                return false;
            }
            chunk = std::string_view(input.data(), static_cast<std::size_t>(n));
        }
        return true;
    }

    // Streaming conversion through ICU's pivot buffer; state carries across chunks.
    std::vector<char> output(chunkSize * 2);
    std::vector<UChar> pivot(64 * 1024);
    UChar* pivotSource = pivot.data();
    UChar* pivotTarget = pivot.data();
    bool reset = true;
    for (;;) {
        const bool last = chunk.empty();
        const char* from = chunk.data();
        const char* fromEnd = from + chunk.size();
        UErrorCode status;
        do {
            status = U_ZERO_ERROR;
            char* to = output.data();
            ucnv_convertEx(target.get(), source.get(), &to, output.data() + output.size(), &from,
                           fromEnd, pivot.data(), &pivotSource, &pivotTarget,
                           pivot.data() + pivot.size(), reset, last, &status);
            reset = false;
            if (to != output.data()) {
                sink.text(
                    std::string_view(output.data(), static_cast<std::size_t>(to - output.data())));
            }
        } while (status == U_BUFFER_OVERFLOW_ERROR);
        if (U_FAILURE(status) || last) {
            return U_SUCCESS(status);
        }
        n = readFully(fd, input.data(), input.size());
        if (n < 0) {
            return false;
        }
        chunk = std::string_view(input.data(), static_cast<std::size_t>(n));
    }
}

} // namespace tallyvox::indexer
