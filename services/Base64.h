#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <optional>

namespace tallyvox {

/// Passed as length: the input is a NUL-terminated string to be measured.
inline constexpr std::size_t base64MeasureInput = static_cast<std::size_t>(-1);

/// Decodes Base64 text, skipping every byte outside the alphabet ("=", blanks, line
/// breaks, bytes of 0x80 and above). A complete group followed only by skipped bytes
/// loses its last byte, and input with no alphabet character at all (but not empty)
/// gives the length minus one, stored as all bits set. Returns a malloc'd buffer for the
/// caller to free; the decoded length goes to outLength when given.
unsigned char* Base64Decode(const char* input, std::size_t length, std::size_t* outLength);

/// Encodes bytes as Base64 with "=" padding; with separateLines a CR LF follows every 64
/// characters except the last line's. Returns a malloc'd NUL-terminated buffer, or null
/// when it cannot be allocated; the length without the terminator goes to outLength.
char* Base64Encode(const void* input, std::size_t length, bool separateLines,
                   std::size_t* outLength);

/// The bytes of Base64 text. Text outside ASCII decodes to no bytes at all (an empty
/// result, not nothing); nothing only for the minus-one length of text without any
/// alphabet character.
std::optional<QByteArray> dataFromBase64String(const QString& text);

/// The Base64 text of data, in lines of 64 characters.
std::optional<QString> base64EncodedString(const QByteArray& data);

} // namespace tallyvox
