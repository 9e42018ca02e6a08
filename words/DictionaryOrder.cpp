#include "words/DictionaryOrder.h"

#include <limits>

namespace tallyvox {

QByteArray collationLocale(const QByteArray& lcAll, const QByteArray& lcCollate,
                           const QByteArray& lang)
{
    QByteArray locale = !lcAll.isEmpty() ? lcAll : !lcCollate.isEmpty() ? lcCollate : lang;
    for (const char end : {'.', '@'}) {
        const qsizetype at = locale.indexOf(end);
        if (at >= 0) {
            locale.truncate(at);
        }
    }
    if (locale == "C" || locale == "POSIX") {
        return {};
    }
    return locale;
}

QByteArray collationLocaleOfEnvironment()
{
    return collationLocale(qgetenv("LC_ALL"), qgetenv("LC_COLLATE"), qgetenv("LANG"));
}

DictionaryOrder::DictionaryOrder(const QByteArray& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    m_collator = ucol_open(locale.constData(), &status);
    if (U_FAILURE(status)) {
        ucol_close(m_collator);
        m_collator = nullptr;
    }
}

DictionaryOrder::~DictionaryOrder()
{
    ucol_close(m_collator);
}

QByteArray DictionaryOrder::sortKey(QStringView word) const
{
    // The first guess below is four bytes a code unit; ICU counts in 32 bits.
    if (!m_collator || word.size() > (std::numeric_limits<int32_t>::max() - 16) / 4) {
        return {};
    }
    const auto* text = reinterpret_cast<const UChar*>(word.utf16());
    const auto length = static_cast<int32_t>(word.size());
    // A first guess that fits most words; ICU says how much it needs when it does not.
    QByteArray key(static_cast<qsizetype>(length) * 4 + 16, Qt::Uninitialized);
    int32_t needed =
        ucol_getSortKey(m_collator, text, length, reinterpret_cast<uint8_t*>(key.data()),
                        static_cast<int32_t>(key.size()));
    if (needed > key.size()) {
        key.resize(needed);
        needed = ucol_getSortKey(m_collator, text, length, reinterpret_cast<uint8_t*>(key.data()),
                                 static_cast<int32_t>(key.size()));
    }
    // The key ends with a zero byte, which need not be compared.
    key.truncate(needed > 0 ? needed - 1 : 0);
    return key;
}

} // namespace tallyvox
