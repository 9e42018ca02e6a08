#pragma once

#include "indexer/WordScanner.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <unicode/utext.h>
#include <unicode/uversion.h>

U_NAMESPACE_BEGIN
class BreakIterator;
class Normalizer2;
U_NAMESPACE_END

namespace tallyvox::indexer {

/// A word as it is counted: default-ignorable characters (soft hyphen, word joiner,
/// zero-width joiners, variation selectors, ...) left out, white space at its edges
/// trimmed (the narrow no-break space French puts before "!" joins words to ICU), then NFC.
/// Empty when nothing is left. Returns false, touching nothing, when word is already its own
/// key.
bool wordKey(std::string_view word, const icu::Normalizer2& nfc, std::string& key);

/// ICU's word segmentation with root-locale rules: a segment is a word when its rule status
/// is number, letter, kana or ideograph. Words are counted in NFC, case kept, without the
/// characters nobody sees (wordKey).
/// One instance per thread: the break iterator is not shareable.
class IcuWords {
public:
    IcuWords();
    ~IcuWords();
    IcuWords(const IcuWords&) = delete;
    IcuWords& operator=(const IcuWords&) = delete;

    /// Hands on the words of a piece of UTF-8 text (invalid bytes act as non-letters). The
    /// words point into the text, or into this object for words that NFC changed; both must
    /// stay valid until they have been counted.
    void count(std::string_view utf8, WordBatch& words);
    /// Forgets the words NFC changed: the batches that pointed to them have been counted.
    void forgetNormalised() { m_normalised.clear(); }

    /// A position near the end of text where ICU sees a word boundary, for cutting a run that
    /// has no whitespace at all. Never 0 unless text is empty; always on a character start.
    std::size_t cutNearEnd(std::string_view utf8);

private:
    void addNormalised(const char* word, std::size_t size, WordBatch& words);
    void countUtf16(std::string_view utf8, WordBatch& words);

    std::unique_ptr<icu::BreakIterator> m_breaker;
    const icu::Normalizer2* m_nfc = nullptr;
    UText m_text = UTEXT_INITIALIZER;
    std::deque<std::string> m_normalised; // words NFC changed; a deque never moves them
    std::u16string m_utf16;               // a run that is segmented as UTF-16
    std::vector<std::int32_t> m_offsets;  // and where each of its code units starts in UTF-8
};

} // namespace tallyvox::indexer
