#include "words/CountFormatter.h"

#include <unicode/unum.h>

namespace tallyvox {

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
}

CountFormatter::~CountFormatter()
{
    unum_close(m_format);
}

std::optional<QString> CountFormatter::format(qint32 value) const
{
    constexpr qint32 cached = 4096;
    if (value < 0 || value >= cached || !m_format) {
        return formatWithIcu(value);
    }
    if (m_small.isEmpty()) {
        m_small.resize(cached);
    }
    QString& text = m_small[value];
    if (text.isNull()) {
        const std::optional<QString> formatted = formatWithIcu(value);
        if (!formatted) {
            return std::nullopt;
        }
        text = *formatted;
    }
    return text;
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
