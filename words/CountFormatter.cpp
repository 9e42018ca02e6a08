#include "words/CountFormatter.h"

#include <unicode/unum.h>

#include <charconv>

namespace tallyvox {

namespace {

constexpr qint32 keptBelow = 4096;

} // namespace

CountFormatter::CountFormatter(const char* locale)
{
    UErrorCode status = U_ZERO_ERROR;
    m_format = unum_open(UNUM_DECIMAL, nullptr, 0, locale, nullptr, &status);
    if (U_FAILURE(status)) {
        unum_close(m_format);
        m_format = nullptr;
        return;
    }
    unum_setAttribute(m_format, UNUM_GROUPING_USED, 0);
    unum_setAttribute(m_format, UNUM_MAX_FRACTION_DIGITS, 0);
    // Every digit once, and zero alone: a locale that writes these as ASCII writes every
    // count that is not negative so.
    m_asciiDigits = formatWithIcu(1234567890) == QLatin1String("1234567890") &&
                    formatWithIcu(0) == QLatin1String("0");
}

CountFormatter::~CountFormatter()
{
    unum_close(m_format);
}

std::optional<QString> CountFormatter::format(qint32 value) const
{
    return formatWithIcu(value);
}

bool CountFormatter::appendUtf8(QByteArray& out, qint32 value) const
{
    if (m_asciiDigits && value >= 0) {
        char digits[16];
        const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
        out.append(digits, end.ptr - digits);
        return true;
    }
    if (value < 0 || value >= keptBelow || !m_format) {
        const std::optional<QString> text = formatWithIcu(value);
        if (!text) {
            return false;
        }
        out += text->toUtf8();
        return true;
    }
    if (m_small.empty()) {
        m_small.resize(keptBelow);
    }
    QByteArray& text = m_small[std::size_t(value)];
    if (text.isNull()) {
        const std::optional<QString> formatted = formatWithIcu(value);
        if (!formatted) {
            return false;
        }
        text = formatted->toUtf8();
    }
    out += text;
    return true;
}

std::optional<QString> CountFormatter::formatWithIcu(qint32 value) const
{
    if (!m_format) {
        return std::nullopt;
    }
    UChar buffer[64];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = unum_format(m_format, value, buffer, 64, nullptr, &status);
    if (U_FAILURE(status) || length > 64) {
        return std::nullopt;
    }
    return QString(reinterpret_cast<const QChar*>(buffer), length);
}

} // namespace tallyvox
