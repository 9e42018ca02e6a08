#include "services/naming/FixedString.h"

#include <unicode/ucnv.h>

#include <cstring>

namespace tallyvox {

FixedString& FixedString::clear()
{
    m_text[0] = '\0';
    return *this;
}

FixedString& FixedString::assign(const char* text)
{
    clear();
    return append(text);
}

FixedString& FixedString::append(const char* text)
{
    if (text == nullptr) {
        return *this;
    }
    const std::size_t used = length();
    const std::size_t room = maxLength - used;
    const std::size_t wanted = std::strlen(text);
    const std::size_t taken = wanted >= room ? room : wanted;
    std::memcpy(m_text + used, text, taken);
    m_text[used + taken] = '\0';
    return *this;
}

FixedString& FixedString::fromPascal(const unsigned char* pascal)
{
    // A length byte can say at most 255, so the copy always fits.
    const std::size_t count = pascal[0];
    std::memcpy(m_text, pascal + 1, count);
    m_text[count] = '\0';
    return *this;
}

FixedString& FixedString::fromString(const QString& text)
{
    clear();
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open("macintosh", &error);
    if (U_FAILURE(error)) {
        return *this;
    }
    // Stop at the first character without a Mac OS Roman form instead of substituting.
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    char converted[bufferSize];
    const int32_t length = ucnv_fromUChars(
        converter, converted, static_cast<int32_t>(sizeof converted),
        reinterpret_cast<const UChar*>(text.utf16()), static_cast<int32_t>(text.size()), &error);
    ucnv_close(converter);
    if (U_SUCCESS(error) && error != U_STRING_NOT_TERMINATED_WARNING && length >= 0 &&
        static_cast<std::size_t>(length) <= maxLength) {
        std::memcpy(m_text, converted, static_cast<std::size_t>(length));
        m_text[length] = '\0';
    }
    return *this;
}

std::size_t FixedString::length() const
{
    return std::strlen(m_text);
}

bool operator==(const FixedString& a, const FixedString& b)
{
    return std::strcmp(a.m_text, b.m_text) == 0;
}

} // namespace tallyvox
