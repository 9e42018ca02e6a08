#include "WordCountingSink.h"

#include <unicode/brkiter.h>
#include <unicode/unistr.h>

#include <memory>

QMap<QString, int> WordCountingSink::countWords(const std::string& utf8)
{
    icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
    text.findAndReplace(icu::UnicodeString(static_cast<UChar>(0x2019)),
                        icu::UnicodeString(static_cast<UChar>('\'')));
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> words(
        icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    QMap<QString, int> counts;
    if (U_FAILURE(status)) {
        return counts;
    }
    words->setText(text);
    for (int32_t start = words->first(), end = words->next(); end != icu::BreakIterator::DONE;
         start = end, end = words->next()) {
        if (words->getRuleStatus() != UBRK_WORD_NONE) {
            const icu::UnicodeString word = text.tempSubStringBetween(start, end);
            ++counts[QString(reinterpret_cast<const QChar*>(word.getBuffer()), word.length())];
        }
    }
    return counts;
}

QByteArray WordCountingSink::bars() const
{
    QByteArray out = QByteArray::fromStdString(m_text);
    out.replace('\n', '|');
    while (out.contains("||")) {
        out.replace("||", "|");
    }
    if (out.startsWith('|')) {
        out.remove(0, 1);
    }
    if (out.endsWith('|')) {
        out.chop(1);
    }
    return out;
}
