// The Base64 codec on arbitrary bytes: decoding must stay inside its buffer and report
// exactly the length it promises, and what the encoder makes must decode back unchanged.
#include "services/Base64.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using tallyvox::Base64Decode;
using tallyvox::Base64Encode;

namespace {

bool isAlphabet(unsigned char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '+' ||
           c == '/';
}

// The decoded length the codec promises, counted independently of the decoder: three
// bytes a complete group, one less than the values of a partial last group, and minus
// one more when only skipped bytes follow the last complete group.
std::ptrdiff_t expectedDecodedLength(const unsigned char* data, std::size_t size)
{
    std::size_t values = 0;
    std::size_t lastValueEnd = 0;
    for (std::size_t i = 0; i < size; ++i) {
        if (isAlphabet(data[i])) {
            ++values;
            lastValueEnd = i + 1;
        }
    }
    const auto groups = static_cast<std::ptrdiff_t>(values / 4);
    const auto rest = static_cast<std::ptrdiff_t>(values % 4);
    if (rest > 0) {
        return 3 * groups + rest - 1;
    }
    return 3 * groups - (lastValueEnd < size ? 1 : 0);
}

void check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void checkDecode(const unsigned char* data, std::size_t size)
{
    std::size_t length = 0;
    unsigned char* decoded = Base64Decode(reinterpret_cast<const char*>(data), size, &length);
    check(decoded != nullptr);
    check(static_cast<std::ptrdiff_t>(length) == expectedDecodedLength(data, size));
    check(static_cast<std::ptrdiff_t>(length) <= static_cast<std::ptrdiff_t>((size + 3) / 4 * 3));
    std::free(decoded);
}

void checkRoundTrip(const unsigned char* data, std::size_t size, bool separateLines)
{
    std::size_t textLength = 0;
    char* text = Base64Encode(data, size, separateLines, &textLength);
    check(text != nullptr);
    check(text[textLength] == '\0');
    check(std::strlen(text) == textLength);

    // Only the alphabet, padding at the very end, and CR LF after every 64 characters.
    const std::size_t units = (size + 2) / 3;
    const std::size_t breaks = separateLines && size > 0 ? (size - 1) / 48 : 0;
    check(textLength == units * 4 + breaks * 2);
    std::size_t column = 0;
    for (std::size_t i = 0; i < textLength; ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '\r') {
            check(column == 64 && i + 1 < textLength && text[i + 1] == '\n');
            ++i;
            column = 0;
            continue;
        }
        check(isAlphabet(c) || (c == '=' && i + 2 >= textLength));
        ++column;
    }

    std::size_t decodedLength = 0;
    unsigned char* decoded = Base64Decode(text, textLength, &decodedLength);
    check(decodedLength == size);
    check(size == 0 || std::memcmp(decoded, data, size) == 0);
    std::free(decoded);
    std::free(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    checkDecode(data, size);
    checkRoundTrip(data, size, false);
    checkRoundTrip(data, size, true);
    return 0;
}
