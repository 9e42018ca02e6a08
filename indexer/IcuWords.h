#pragma once

#include "indexer/WordScanner.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

#include <unicode/utext.h>
#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class BreakIterator;
class Normalizer2;
U_NAMESPACE_END

namespace tallyvox::indexer {

/// ICU's word segmentation with root-locale rules: a segment is a word when its rule status
/// is number, letter, kana or ideograph. Words are counted in NFC, case kept.
/// One instance per thread: the break iterator is not shareable.
class IcuWords {
public:
    IcuWords();
    ~IcuWords();
    IcuWords(const IcuWords&) = delete;
    IcuWords& operator=(const IcuWords&) = delete;

    /// The text that countRun() finds runs in (UTF-8, invalid bytes acting as non-letters).
    /// It must stay in place, and so must the words handed on, until the next setText().
    void setText(std::string_view utf8);
    /// Hands on the words ICU finds in [begin, end), a part of the text that starts and ends
    /// at boundaries (whitespace, or the text's edges). The rest of the text gives context.
    void countRun(const char* begin, const char* end, WordBatch& words);

    /// A position near the end of text where ICU sees a word boundary, for cutting a run that
    /// has no whitespace at all. Never 0 unless text is empty; always on a character start.
    std::size_t cutNearEnd(std::string_view utf8);

private:
    void addNormalised(const char* word, std::size_t size, WordBatch& words);

    std::unique_ptr<icu::BreakIterator> m_breaker;
    const icu::Normalizer2* m_nfc = nullptr;
    UText m_text = UTEXT_INITIALIZER;
    const char* m_begin = nullptr;
    bool m_textSet = false;
    std::deque<std::string> m_normalised; // words NFC changed, alive until the next text
};

} // namespace tallyvox::indexer
