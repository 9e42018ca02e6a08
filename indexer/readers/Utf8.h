#pragma once

#include <string>

namespace tallyvox::indexer::readers {

/// Appends the code point c to out as UTF-8.
void appendUtf8(std::string& out, char32_t c);

/// Joins UTF-16 code units into code points: a high surrogate waits for the low one that
/// follows it; a lone low surrogate becomes U+FFFD, a lone high one is dropped.
class SurrogateJoiner {
public:
    /// The code point completed by unit, or 0 when unit is a high surrogate kept waiting.
    char32_t join(char32_t unit)
    {
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            m_high = unit;
            return 0;
        }
        if (unit >= 0xDC00 && unit <= 0xDFFF) {
            unit = m_high != 0 ? 0x10000 + ((m_high - 0xD800) << 10) + (unit - 0xDC00) : 0xFFFD;
        }
        m_high = 0;
        return unit;
    }

private:
    char32_t m_high = 0;
};

} // namespace tallyvox::indexer::readers
