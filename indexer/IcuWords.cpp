#include "indexer/IcuWords.h"

#include <stdexcept>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>

namespace tallyvox::indexer {

IcuWords::IcuWords()
{
    UErrorCode status = U_ZERO_ERROR;
    m_breaker.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    m_nfc = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status) || !m_breaker || !m_nfc) {
        throw std::runtime_error("ICU word segmentation is unavailable");
    }
}

IcuWords::~IcuWords()
{
    utext_close(&m_text);
}

void IcuWords::addNormalised(const char* word, std::size_t size, WordBatch& words)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::StringPiece piece(word, static_cast<int32_t>(size));
    if (m_nfc->isNormalizedUTF8(piece, status) || U_FAILURE(status)) {
        words.add(word, size);
        return;
    }
    std::string& normalised = m_normalised.emplace_back();
    icu::StringByteSink<std::string> sink(&normalised, static_cast<int32_t>(size));
    status = U_ZERO_ERROR;
    m_nfc->normalizeUTF8(0, piece, sink, nullptr, status);
    if (U_SUCCESS(status)) {
        words.add(normalised.data(), normalised.size());
    } else {
        words.add(word, size);
    }
}

void IcuWords::count(std::string_view utf8, WordBatch& words)
{
    // A new text for every run costs less than moving one iterator over a whole block, whose
    // seeks back up to a safe point and fill its cache of boundaries.
    UErrorCode status = U_ZERO_ERROR;
    utext_openUTF8(&m_text, utf8.data(), static_cast<int64_t>(utf8.size()), &status);
    m_breaker->setText(&m_text, status);
    if (U_FAILURE(status)) {
        return;
    }
    int32_t start = m_breaker->first();
    for (int32_t end = m_breaker->next(); end != icu::BreakIterator::DONE;
         start = end, end = m_breaker->next()) {
        const int32_t rule = m_breaker->getRuleStatus();
        if (rule >= UBRK_WORD_NUMBER && rule < UBRK_WORD_IDEO_LIMIT) {
            addNormalised(utf8.data() + start, static_cast<std::size_t>(end - start), words);
        }
    }
}

std::size_t IcuWords::cutNearEnd(std::string_view utf8)
{
    // Look at the last 64 KB only: enough context for ICU's dictionaries, bounded cost.
    constexpr std::size_t window = std::size_t{64} * 1024;
    std::size_t from = utf8.size() > window ? utf8.size() - window : 0;
    while (from > 0 && (static_cast<unsigned char>(utf8[from]) & 0xC0) == 0x80) {
        --from;
    }
    const std::string_view tail = utf8.substr(from);
    UErrorCode status = U_ZERO_ERROR;
    utext_openUTF8(&m_text, tail.data(), static_cast<int64_t>(tail.size()), &status);
    m_breaker->setText(&m_text, status);
    if (U_SUCCESS(status)) {
        const int32_t boundary = m_breaker->preceding(static_cast<int32_t>(tail.size() / 2 + 1));
        if (boundary > 0) {
            return from + static_cast<std::size_t>(boundary);
        }
    }
    // One enormous segment: cut at a character start in its middle.
    std::size_t cut = from > 0 ? from : utf8.size() / 2;
    while (cut > 0 && (static_cast<unsigned char>(utf8[cut]) & 0xC0) == 0x80) {
        --cut;
    }
    return cut > 0 ? cut : utf8.size();
}

} // namespace tallyvox::indexer
