#include "services/Base64.h"

#include <array>
#include <cstdlib>
#include <cstring>

namespace tallyvox {

namespace {

constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr unsigned char skip = 65;

constexpr std::array<unsigned char, 256> makeDecoderTable()
{
    std::array<unsigned char, 256> table{};
    table.fill(skip);
    for (unsigned char value = 0; value < 64; ++value) {
        table[static_cast<unsigned char>(alphabet[value])] = value;
    }
    return table;
}

constexpr std::array<unsigned char, 256> decoderTable = makeDecoderTable();

} // namespace

unsigned char* Base64Decode(const char* input, std::size_t length, std::size_t* outLength)
{
    if (length == base64MeasureInput) {
        length = std::strlen(input);
    }
    // At least one byte, so that empty input still gets a buffer rather than null.
    const std::size_t size = ((length + 3) / 4) * 3;
    auto* output = static_cast<unsigned char*>(std::malloc(size == 0 ? 1 : size));
    if (output == nullptr) {
        return nullptr;
    }

    // Signed, because a pass that collects nothing steps back one byte.
    std::ptrdiff_t out = 0;
    std::size_t in = 0;
    unsigned char group[4] = {};
    while (in < length) {
        int collected = 0;
        while (collected < 4 && in < length) {
            const unsigned char value = decoderTable[static_cast<unsigned char>(input[in++])];
            if (value != skip) {
                group[collected++] = value;
            }
        }
        // Slots beyond those collected keep the previous group's values; all three bytes
        // are written every time, and only the advance below decides what counts.
        output[out] = static_cast<unsigned char>((group[0] << 2) | (group[1] >> 4));
        output[out + 1] = static_cast<unsigned char>((group[1] << 4) | (group[2] >> 2));
        output[out + 2] = static_cast<unsigned char>((group[2] << 6) | group[3]);
        out += collected - 1;
    }
    if (outLength != nullptr) {
        *outLength = static_cast<std::size_t>(out);
    }
    return output;
}

char* Base64Encode(const void* input, std::size_t length, bool separateLines,
                   std::size_t* outLength)
{
    const auto* bytes = static_cast<const unsigned char*>(input);
    const std::size_t units = length / 3 + (length % 3 != 0 ? 1 : 0);
    std::size_t size = units * 4;
    if (separateLines) {
        size += ((units * 4) / 64) * 2;
    }
    auto* output = static_cast<char*>(std::malloc(size + 1));
    if (output == nullptr) {
        return nullptr;
    }

    const std::size_t lineLength = separateLines ? 48 : length;
    std::size_t i = 0;
    std::size_t j = 0;
    std::size_t lineEnd = lineLength;
    for (;;) {
        if (lineEnd > length) {
            lineEnd = length;
        }
        for (; i + 2 < lineEnd; i += 3, j += 4) {
            output[j] = alphabet[bytes[i] >> 2];
            output[j + 1] = alphabet[((bytes[i] << 4) & 0x30) | (bytes[i + 1] >> 4)];
            output[j + 2] = alphabet[((bytes[i + 1] << 2) & 0x3C) | (bytes[i + 2] >> 6)];
            output[j + 3] = alphabet[bytes[i + 2] & 0x3F];
        }
        if (lineEnd == length) {
            break;
        }
        output[j++] = '\r';
        output[j++] = '\n';
        lineEnd += lineLength;
    }

    if (i + 1 < length) {
        output[j] = alphabet[bytes[i] >> 2];
        output[j + 1] = alphabet[((bytes[i] << 4) & 0x30) | (bytes[i + 1] >> 4)];
        output[j + 2] = alphabet[(bytes[i + 1] & 0x0F) << 2];
        output[j + 3] = '=';
        j += 4;
    } else if (i < length) {
        output[j] = alphabet[bytes[i] >> 2];
        output[j + 1] = alphabet[(bytes[i] << 4) & 0x30];
        output[j + 2] = '=';
        output[j + 3] = '=';
        j += 4;
    }
    output[j] = '\0';
    if (outLength != nullptr) {
        *outLength = j;
    }
    return output;
}

std::optional<QByteArray> dataFromBase64String(const QString& text)
{
    // Text outside ASCII has no ASCII bytes at all, so nothing is decoded.
    QByteArray ascii;
    bool isAscii = true;
    for (const QChar c : text) {
        if (c.unicode() > 0x7F) {
            isAscii = false;
            break;
        }
    }
    if (isAscii) {
        ascii = text.toLatin1();
    }

    std::size_t decodedLength = 0;
    unsigned char* decoded = Base64Decode(isAscii ? ascii.constData() : nullptr,
                                          static_cast<std::size_t>(ascii.size()), &decodedLength);
    if (decoded == nullptr) {
        return std::nullopt;
    }
    std::optional<QByteArray> result;
    if (decodedLength != static_cast<std::size_t>(-1)) {
        result = QByteArray(reinterpret_cast<const char*>(decoded),
                            static_cast<qsizetype>(decodedLength));
    }
    std::free(decoded);
    return result;
}

std::optional<QString> base64EncodedString(const QByteArray& data)
{
    std::size_t length = 0;
    char* encoded =
        Base64Encode(data.constData(), static_cast<std::size_t>(data.size()), true, &length);
    if (encoded == nullptr) {
        return std::nullopt;
    }
    QString text = QString::fromLatin1(encoded, static_cast<qsizetype>(length));
    std::free(encoded);
    return text;
}

} // namespace tallyvox
