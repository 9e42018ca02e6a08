#pragma once

#include "indexer/WordMap.h"

#include <cstddef>
#include <memory>
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

    /// Counts the words of a piece of UTF-8 text (invalid bytes act as non-letters).
    void count(std::string_view utf8, WordMap& words);

    /// A position near the end of text where ICU sees a word boundary, for cutting a run that
    /// has no whitespace at all. Never 0 unless text is empty; always on a character start.
    std::size_t cutNearEnd(std::string_view utf8);

private:
    void addNormalised(std::string_view word, WordMap& words);

    std::unique_ptr<icu::BreakIterator> m_breaker;
    const icu::Normalizer2* m_nfc = nullptr;
    UText m_text = UTEXT_INITIALIZER;
};

} // namespace tallyvox::indexer
