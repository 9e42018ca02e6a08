#pragma once

#include <QByteArray>
#include <QString>

#include <unicode/unum.h>

#include <optional>
#include <vector>

namespace tallyvox {

/// Formats counts as plain integers in a locale: the locale's digits, no grouping.
/// One is made per rendering, not per word.
class CountFormatter {
public:
    /// The formatter for an ICU locale id; the default locale when empty.
    explicit CountFormatter(const char* locale = nullptr);
    ~CountFormatter();
    CountFormatter(const CountFormatter&) = delete;
    CountFormatter& operator=(const CountFormatter&) = delete;

    bool isValid() const { return m_format != nullptr; }
    std::optional<QString> format(qint32 value) const;

    /// The same text as UTF-8 at the end of out; false, leaving out as it was, when the
    /// count cannot be formatted.
    bool appendUtf8(QByteArray& out, qint32 value) const;
    /// True when every count that is not negative is written as its ASCII decimal digits,
    /// as std::to_chars writes it.
    bool writesAsciiDigits() const { return m_asciiDigits; }

private:
    std::optional<QString> formatWithIcu(qint32 value) const;

    UNumberFormat* m_format = nullptr;
    // True when the locale writes a count as the ASCII digits of its decimal value, as most
    // do: those are then written without asking ICU.
    bool m_asciiDigits = false;
    // Otherwise the small counts, which repeat thousands of times in one list, are kept.
    mutable std::vector<QByteArray> m_small;
};

} // namespace tallyvox
