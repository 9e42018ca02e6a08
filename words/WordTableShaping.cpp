#include "words/WordTableShaping.h"

#include <QHash>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <limits>
#include <vector>

namespace tallyvox {

namespace {

// One entry of a folded table: the form it is written in and the sum of its forms' counts.
struct FoldedEntry {
    QString form;
    qint64 formCount;
    qint64 total;
};

bool isFoldedAscii(QStringView word)
{
    for (const QChar c : word) {
        if (c.unicode() >= 0x80 || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))) {
            return false;
        }
    }
    return true;
}

// The more frequent of two forms of one word; of equal counts, the smaller in code units.
bool isPreferredForm(QStringView word, qint64 count, const FoldedEntry& entry)
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
            folded.insert(key, FoldedEntry{it.key().toString(), it.value(), it.value()});
            continue;
        }
        entry->total = addCounts(entry->total, it.value());
        if (isPreferredForm(it.key(), it.value(), *entry)) {
            entry->form = it.key().toString();
            entry->formCount = it.value();
        }
    }

    WordTable result;
    result.reserve(folded.size(), table.size() * 8);
    for (const FoldedEntry& entry : std::as_const(folded)) {
        result.insert(entry.form, entry.total);
    }
    return result;
}

} // namespace

QString foldCase(QStringView word)
{
    // Most words are ASCII, where folding is lower-casing A to Z.
    if (isFoldedAscii(word)) {
        return word.toString();
    }
    // Full folding makes a code unit at most three (U+0390 gives three); ICU counts in 32 bits.
    constexpr qsizetype growth = 3;
    if (word.size() > std::numeric_limits<int32_t>::max() / growth) {
        return word.toString();
    }
    QString folded(word.size() * growth, Qt::Uninitialized);
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        u_strFoldCase(reinterpret_cast<UChar*>(folded.data()), static_cast<int32_t>(folded.size()),
                      reinterpret_cast<const UChar*>(word.utf16()),
                      static_cast<int32_t>(word.size()), U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) {
        return word.toString();
    }
    folded.truncate(length);
    return folded;
}

void addWordTable(WordTable& sum, const WordTable& table)
{
    sum = WordTable::merged(sum, table);
}

void shapeWordTable(WordTable& table, const WordListOptions& options)
{
    if (options.keepsEveryWord()) {
        return;
    }
    if (options.foldCase) {
        table = foldWordTable(table, options.stopWords);
    } else if (!options.stopWords.isEmpty()) {
        std::vector<bool> stop(std::size_t(table.size()), false);
        for (const QString& word : options.stopWords) {
            if (const qsizetype index = table.indexOf(word); index >= 0) {
                stop[std::size_t(index)] = true;
            }
        }
        table.removeIf([&stop](qsizetype index) { return stop[std::size_t(index)]; });
    }
    if (options.minimumCount > 1) {
        // A count the indexer gave as no integer is below any minimum.
        const qint64 minimum = options.minimumCount;
        table.removeIf([&table, minimum](qsizetype index) { return table.count(index) < minimum; });
    }
}

} // namespace tallyvox
