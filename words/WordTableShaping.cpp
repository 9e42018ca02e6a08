#include "words/WordTableShaping.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <limits>

namespace tallyvox {

namespace {

// One entry of a folded table: the form it is written in and the sum of its forms' counts.
struct FoldedEntry {
    QString form;
    qint64 formCount;
    qint64 total;
};

bool isFoldedAscii(const QString& word)
{
    for (const QChar c : word) {
        if (c.unicode() >= 0x80 || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))) {
            return false;
        }
    }
    return true;
}

// The more frequent of two forms of one word; of equal counts, the smaller in code units.
bool isPreferredForm(const QString& word, qint64 count, const FoldedEntry& entry)
{
    return count > entry.formCount ||
           (count == entry.formCount && word.compare(entry.form, Qt::CaseSensitive) < 0);
}

WordTable foldWordTable(const WordTable& table, const QSet<QString>& stopWords)
{
    QSet<QString> foldedStopWords;
    foldedStopWords.reserve(stopWords.size());
    for (const QString& word : stopWords) {
        foldedStopWords.insert(foldCase(word));
    }

    QHash<QString, FoldedEntry> folded;
    folded.reserve(table.size());
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        const QString key = foldCase(it.key());
        if (foldedStopWords.contains(key)) {
            continue;
        }
        const auto entry = folded.find(key);
        if (entry == folded.end()) {
            folded.insert(key, FoldedEntry{it.key(), it.value(), it.value()});
            continue;
        }
        entry->total = addCounts(entry->total, it.value());
        if (isPreferredForm(it.key(), it.value(), *entry)) {
            entry->form = it.key();
            entry->formCount = it.value();
        }
    }

    WordTable result;
    result.reserve(folded.size());
    for (const FoldedEntry& entry : std::as_const(folded)) {
        result.insert(entry.form, entry.total);
    }
    return result;
}

} // namespace

QString foldCase(const QString& word)
{
    // Most words are ASCII, where folding is lower-casing A to Z.
    if (isFoldedAscii(word)) {
        return word;
    }
    // Full folding makes a code unit at most three (U+0390 gives three); ICU counts in 32 bits.
    constexpr qsizetype growth = 3;
    if (word.size() > std::numeric_limits<int32_t>::max() / growth) {
        return word;
    }
    QString folded(word.size() * growth, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strFoldCase(reinterpret_cast<UChar*>(folded.data()), static_cast<int32_t>(folded.size()),
                      reinterpret_cast<const UChar*>(word.constData()),
                      static_cast<int32_t>(word.size()), U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) {
        return word;
    }
    folded.truncate(length);
    return folded;
}

qint64 addCounts(qint64 a, qint64 b)
{
    if (a == unreadableCount) {
        return b;
    }
    if (b == unreadableCount) {
        return a;
    }
    qint64 sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        // Never unreadableCount, which is the smallest value.
        return b > 0 ? std::numeric_limits<qint64>::max() : unreadableCount + 1;
    }
    return sum;
}

void addWordTable(WordTable& sum, const WordTable& table)
{
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        const auto entry = sum.find(it.key());
        if (entry == sum.end()) {
            sum.insert(it.key(), it.value());
        } else {
            *entry = addCounts(*entry, it.value());
        }
    }
}

void shapeWordTable(WordTable& table, const WordListOptions& options)
{
    if (options.keepsEveryWord()) {
        return;
    }
    if (options.foldCase) {
        table = foldWordTable(table, options.stopWords);
    } else {
        for (const QString& word : options.stopWords) {
            table.remove(word);
        }
    }
    if (options.minimumCount > 1) {
        // A count the indexer gave as no integer is below any minimum.
        const qint64 minimum = options.minimumCount;
        table.removeIf([minimum](const auto& entry) { return entry.value() < minimum; });
    }
}

} // namespace tallyvox
