#pragma once

#include <QList>
#include <QString>

#include <unicode/unum.h>

#include <optional>

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

private:
    std::optional<QString> formatWithIcu(qint32 value) const;

    UNumberFormat* m_format = nullptr;
    // Most counts are small and repeat thousands of times in one list.
    mutable QList<QString> m_small;
};

} // namespace tallyvox
