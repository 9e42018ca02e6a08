#pragma once

#include <QString>

#include <cstddef>

namespace tallyvox {

/// A 256-byte buffer holding a NUL-terminated text of at most 255 bytes. Text is bytes;
/// no encoding is implied. Every operation returns the buffer itself.
class FixedString {
public:
    static constexpr std::size_t bufferSize = 256;
    static constexpr std::size_t maxLength = bufferSize - 1;

    FixedString() = default;
    explicit FixedString(const char* text) { assign(text); }

    FixedString& clear();
    /// Clears, then appends at most 255 bytes of text; a null text leaves the buffer empty.
    FixedString& assign(const char* text);
    /// Appends as much of text as still fits; a null text changes nothing.
    FixedString& append(const char* text);
    /// Copies a length-prefixed (Pascal) string, bounded only by its length byte.
    FixedString& fromPascal(const unsigned char* pascal);
    /// The text in Mac OS Roman. Left empty when a character has no Mac OS Roman form
    /// or the result needs more than 255 bytes, as a 256-byte conversion would fail.
    FixedString& fromString(const QString& text);

    const char* c_str() const { return m_text; }
    std::size_t length() const;
    bool isEmpty() const { return m_text[0] == '\0'; }

    friend bool operator==(const FixedString& a, const FixedString& b);

private:
    char m_text[bufferSize] = {};
};

} // namespace tallyvox
