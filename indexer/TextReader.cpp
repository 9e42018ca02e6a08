#include "indexer/TextReader.h"

#include "indexer/Progress.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <iconv.h>
#include <sys/stat.h>
#include <uchardet.h>
#include <unicode/ucnv.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

constexpr std::size_t sampleSize = 1u << 20;
constexpr std::size_t detectionSample = std::size_t{64} * 1024;
// UTF-8 is read in pieces as large as the counter's blocks, so that it counts them where
// they lie; converted text goes through smaller pieces.
constexpr std::size_t chunkSize = 4u << 20;
constexpr std::size_t convertChunk = 1u << 20;

// How much of a sample is well-formed UTF-8: multi-byte sequences and malformed bytes.
// A sequence cut short by the end of the sample counts as neither when more text follows.
struct Utf8Survey {
    std::size_t sequences = 0;
    std::size_t errors = 0;
};

// What starts at a byte of 0x80 or more: a well-formed sequence of some length, a malformed
// byte, or the start of a sequence that the end of the text cuts short.
struct Sequence {
    enum Kind { Valid, Malformed, Cut } kind;
    std::size_t length;
};

Sequence sequenceAt(const unsigned char* p, const unsigned char* end)
{
    std::size_t length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
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
    } else {
        return {Sequence::Malformed, 1};
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (p + i == end) {
            return {Sequence::Cut, i};
        }
        const unsigned char from = i == 1 ? low : 0x80;
        const unsigned char to = i == 1 ? high : 0xBF;
        if (p[i] < from || p[i] > to) {
            return {Sequence::Malformed, 1};
        }
    }
    return {Sequence::Valid, length};
}

Utf8Survey surveyUtf8(std::string_view text, bool complete)
{
    Utf8Survey survey;
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        // Eight ASCII bytes at a time: most text is mostly ASCII, and this survey reads the
        // first megabyte of every file.
        if (end - p >= 8) {
            std::uint64_t eight = 0;
            std::memcpy(&eight, p, sizeof eight);
            if ((eight & 0x8080808080808080U) == 0) {
                p += 8;
                continue;
            }
        }
        if (*p < 0x80) {
            ++p;
            continue;
        }
        const Sequence sequence = sequenceAt(p, end);
        if (sequence.kind == Sequence::Cut && !complete) {
            break;
        }
        if (sequence.kind == Sequence::Valid) {
            ++survey.sequences;
            p += sequence.length;
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
    // Where in the file, rather than bytes added up: a file may be read more than once.
    if (const off_t position = ::lseek(fd, 0, SEEK_CUR); position >= 0) {
        progress::setRead(static_cast<std::uint64_t>(position));
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

// Hands the file on as it is, from chunk (already read) to its end.
bool passThrough(int fd, char* buffer, std::string_view chunk, TextSink& sink)
{
    while (!chunk.empty()) {
        sink.text(chunk);
        const ssize_t n = readFully(fd, buffer, chunkSize);
        if (n < 0) {
            return false;
        }
        chunk = std::string_view(buffer, static_cast<std::size_t>(n));
    }
    return true;
}

// Converts the file to UTF-8 from chunk (already read) to its end, streaming through ICU's
// pivot buffer; the converters' state carries across chunks.
bool convert(int fd, char* buffer, std::string_view chunk, UConverter* source, UConverter* target,
             TextSink& sink)
{
    std::vector<char> output(convertChunk * 2);
    std::vector<UChar> pivot(std::size_t{64} * 1024);
    UChar* pivotSource = pivot.data();
    UChar* pivotTarget = pivot.data();
    bool reset = true;
    for (;;) {
        const bool last = chunk.empty();
        const char* from = chunk.data();
        const char* fromEnd = from + chunk.size();
        UErrorCode status = U_ZERO_ERROR;
        do {
            status = U_ZERO_ERROR;
            char* to = output.data();
            ucnv_convertEx(target, source, &to, output.data() + output.size(), &from, fromEnd,
                           pivot.data(), &pivotSource, &pivotTarget, pivot.data() + pivot.size(),
                           reset, last, &status);
            reset = false;
            if (to != output.data()) {
                sink.text(
                    std::string_view(output.data(), static_cast<std::size_t>(to - output.data())));
            }
        } while (status == U_BUFFER_OVERFLOW_ERROR);
        if (U_FAILURE(status) || last) {
            return U_SUCCESS(status);
        }
        const ssize_t n = readFully(fd, buffer, convertChunk);
        if (n < 0) {
            return false;
        }
        chunk = std::string_view(buffer, static_cast<std::size_t>(n));
    }
}

struct IconvCloser {
    iconv_t handle;
    ~IconvCloser() { iconv_close(handle); }
};

// The same through glibc's iconv, for the few encodings uchardet names that ICU has no
// converter for. Bytes it cannot convert become U+FFFD, one each, as ICU's would.
bool convertWithIconv(int fd, char* buffer, std::string_view chunk, iconv_t decoder, TextSink& sink)
{
    std::vector<char> output(convertChunk * 4);
    std::string carried; // an incomplete sequence at the end of the last chunk
    for (;;) {
        const bool last = chunk.empty();
        std::string input = std::move(carried);
        input.append(chunk);
        carried.clear();
        char* from = input.data();
        std::size_t left = input.size();
        while (left > 0) {
            char* to = output.data();
            std::size_t room = output.size();
            const std::size_t result = iconv(decoder, &from, &left, &to, &room);
            const int error = result == static_cast<std::size_t>(-1) ? errno : 0;
            if (to != output.data()) {
                sink.text(
                    std::string_view(output.data(), static_cast<std::size_t>(to - output.data())));
            }
            if (error == EINVAL && !last) {
                carried.assign(from, left);
                break;
            }
            if (error == EILSEQ || error == EINVAL) {
                sink.text("\xEF\xBF\xBD");
                ++from;
                --left;
            }
        }
        if (last) {
            return true;
        }
        const ssize_t n = readFully(fd, buffer, convertChunk);
        if (n < 0) {
            return false;
        }
        chunk = std::string_view(buffer, static_cast<std::size_t>(n));
    }
}

bool equalNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

} // namespace

std::string decoderName(std::string_view detected)
{
    // Browsers read these labels as the Windows code pages that extend them: text labelled
    // or detected as Latin-1 is nearly always Windows-1252, whose 0x80-0x9F are quotes and
    // dashes rather than control characters. uchardet's detector looks at the start of a
    // file only, so a curly quote further on must still read as one. EUC-KR likewise
    // stands for its superset CP949, which uchardet calls UHC and ICU windows-949.
    static constexpr std::pair<std::string_view, std::string_view> names[] = {
        {"ISO-8859-1", "windows-1252"},
        {"ISO-8859-9", "windows-1254"},
        {"ISO-8859-11", "windows-874"},
        {"TIS-620", "windows-874"},
        {"EUC-KR", "windows-949"},
        {"UHC", "windows-949"},
        {"HZ-GB-2312", "HZ"},
        {"MAC-CENTRALEUROPE", "x-mac-centraleurroman"},
        {"MAC-CYRILLIC", "x-mac-cyrillic"},
    };
    for (const auto& [from, to] : names) {
        if (equalNoCase(detected, from)) {
            return std::string(to);
        }
    }
    return std::string(detected);
}
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
    return {decoderName(name), 0};
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
    if (S_ISREG(info.st_mode)) {
        sink.expectText(static_cast<std::uint64_t>(info.st_size));
    }

    // Not zeroed first: the reads fill it.
    const std::unique_ptr<char[]> buffer(new char[chunkSize]);
    const ssize_t n = readFully(fd, buffer.get(), chunkSize);
    if (n < 0) {
        return false;
    }
    std::string_view chunk(buffer.get(), static_cast<std::size_t>(n));
    const TextEncoding encoding =
        detectEncoding(chunk.substr(0, sampleSize), static_cast<std::size_t>(n) < sampleSize);
    chunk.remove_prefix(std::min(encoding.bomLength, chunk.size()));

    if (encoding.name != "UTF-8") {
        UErrorCode status = U_ZERO_ERROR;
        const Converter source(ucnv_open(encoding.name.c_str(), &status));
        const Converter target(ucnv_open("UTF-8", &status));
        if (U_SUCCESS(status)) {
            return convert(fd, buffer.get(), chunk, source.get(), target.get(), sink);
        }
        // ISO-8859-16 and VISCII: glibc has them, ICU does not.
        if (const iconv_t decoder = iconv_open("UTF-8", encoding.name.c_str());
            // NOLINTNEXTLINE(performance-no-int-to-ptr): iconv_open's documented failure value
            decoder != reinterpret_cast<iconv_t>(-1)) {
            const IconvCloser closeDecoder{decoder};
            return convertWithIconv(fd, buffer.get(), chunk, decoder, sink);
        }
    }
    return passThrough(fd, buffer.get(), chunk, sink);
}

} // namespace tallyvox::indexer
