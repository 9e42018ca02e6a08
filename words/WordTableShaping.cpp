#include "words/WordTableShaping.h"

#include <QHash>
#include <QStringView>

#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

namespace tallyvox {

namespace {

// Words that differ only in case, found in one pass without a string made per word: each
// folded key is the word itself when folding leaves it as it is (most words), else a folded
// copy in one buffer; groups are found by an open-addressing table of group numbers.
class CaseGroups {
public:
    static constexpr quint32 none = 0xFFFFFFFFu;

    explicit CaseGroups(qsizetype words)
    {
        std::size_t capacity = 16;
        while (capacity < std::size_t(words) * 2 + 16) {
            capacity *= 2;
        }
        m_slots.assign(capacity, none);
    }

    /// The group of key, made when it is new; isNew says which.
    quint32 find(QStringView key, bool& isNew)
    {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t slot = qHash(key) & mask;; slot = (slot + 1) & mask) {
            const quint32 group = m_slots[slot];
            if (group == none) {
                m_slots[slot] = quint32(m_keys.size());
                m_keys.push_back(key);
                isNew = true;
                return m_slots[slot];
            }
            if (m_keys[group] == key) {
                isNew = false;
                return group;
            }
        }
    }

    /// The group of key, or none.
    quint32 lookUp(QStringView key) const
    {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t slot = qHash(key) & mask;; slot = (slot + 1) & mask) {
            const quint32 group = m_slots[slot];
            if (group == none || m_keys[group] == key) {
                return group;
            }
        }
    }

private:
    std::vector<quint32> m_slots;
    std::vector<QStringView> m_keys;
};

// One entry of a folded table: the word it is written as, and the sum of its forms' counts.
struct FoldedEntry {
    quint32 form;
    qint64 formCount;
    qint64 total;
};

bool foldsToItself(QStringView word)
{
    for (const QChar c : word) {
        if (c.unicode() >= 0x80 || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))) {
            return false;
        }
    }
    return true;
}

bool isAscii(QStringView word)
{
    for (const QChar c : word) {
        if (c.unicode() >= 0x80) {
            return false;
        }
    }
    return true;
}

// The folded keys of the table's words: views of the words where folding keeps them, else
// of folded copies, which are all made before any view of them is taken.
std::vector<QStringView> foldedKeys(const WordTable& table, std::vector<QString>& copies)
{
    const qsizetype n = table.size();
    std::vector<qint32> copyOf(static_cast<std::size_t>(n), -1);
    for (qsizetype i = 0; i < n; ++i) {
        const QStringView word = table.word(i);
        if (foldsToItself(word)) {
            continue;
        }
        copyOf[std::size_t(i)] = qint32(copies.size());
        // ASCII folds A to Z and nothing else; the rest is ICU's.
        copies.push_back(isAscii(word) ? word.toString().toLower() : foldCase(word));
    }
    std::vector<QStringView> keys;
    keys.reserve(std::size_t(n));
    for (qsizetype i = 0; i < n; ++i) {
        const qint32 copy = copyOf[std::size_t(i)];
        keys.push_back(copy < 0 ? table.word(i) : QStringView(copies[std::size_t(copy)]));
    }
    return keys;
}

// An n-gram with a stop word at either end: "of the" and "the end of" go with "the" and
// "of" listed, "end of the day" does not.
bool edgeIsStopWord(QStringView ngram, const QSet<QString>& stopWords)
{
    const qsizetype first = ngram.indexOf(QLatin1Char(' '));
    if (first < 0) {
        return stopWords.contains(ngram.toString());
    }
    const qsizetype last = ngram.lastIndexOf(QLatin1Char(' '));
    return stopWords.contains(ngram.left(first).toString()) ||
           stopWords.contains(ngram.mid(last + 1).toString());
}

WordTable foldWordTable(const WordTable& table, const QSet<QString>& stopWords, bool ngrams)
{
    std::vector<QString> copies;
    const std::vector<QStringView> keys = foldedKeys(table, copies);
    const qsizetype n = table.size();

    CaseGroups groups(n);
    std::vector<quint32> groupOf(static_cast<std::size_t>(n));
    std::vector<FoldedEntry> entries;
    // The table is in code-unit order, so of equal counts the first form met is the
    // smallest, and a later one takes over only with a larger count.
    for (qsizetype i = 0; i < n; ++i) {
        bool isNew = false;
        const quint32 group = groups.find(keys[std::size_t(i)], isNew);
        groupOf[std::size_t(i)] = group;
        const qint64 count = table.count(i);
        if (isNew) {
            entries.push_back({quint32(i), count, count});
            continue;
        }
        FoldedEntry& entry = entries[group];
        entry.total = addCounts(entry.total, count);
        if (count > entry.formCount) {
            entry.form = quint32(i);
            entry.formCount = count;
        }
    }

    std::vector<bool> stopped(entries.size(), false);
    if (ngrams && !stopWords.isEmpty()) {
        QSet<QString> folded;
        for (const QString& word : stopWords) {
            folded.insert(foldCase(word));
        }
        for (qsizetype i = 0; i < n; ++i) {
            if (edgeIsStopWord(keys[std::size_t(i)], folded)) {
                stopped[groupOf[std::size_t(i)]] = true;
            }
        }
    }
    for (const QString& word : ngrams ? QSet<QString>() : stopWords) {
        if (const quint32 group = groups.lookUp(foldCase(word)); group != CaseGroups::none) {
            stopped[group] = true;
        }
    }

    // Each entry where its form stands, so the result keeps code-unit order.
    WordTable result;
    result.reserve(qsizetype(entries.size()), 0);
    for (qsizetype i = 0; i < n; ++i) {
        const quint32 group = groupOf[std::size_t(i)];
        if (!stopped[group] && entries[group].form == quint32(i)) {
            result.insert(table.word(i), entries[group].total);
        }
    }
    return result;
}

// The forms of each headword of the file as one entry, written as the headword, with their
// counts added up; every other entry as it was. Entries stay in code-unit order until the
// groups are added, so the result is sorted once.
void groupLemmas(WordTable& table, const LemmaList& lemmas, bool folded, LemmaForms* forms)
{
    const qsizetype n = table.size();
    std::vector<std::optional<QString>> headwords(static_cast<std::size_t>(n));
    QHash<QString, qint64> totals;
    LemmaForms found;
    for (qsizetype i = 0; i < n; ++i) {
        const QStringView word = table.word(i);
        std::optional<QString>& headword = headwords[std::size_t(i)];
        headword = lemmas.headwordFor(folded ? foldCase(word) : word.toString());
        if (!headword) {
            continue;
        }
        const auto total = totals.find(*headword);
        if (total == totals.end()) {
            totals.insert(*headword, table.count(i));
        } else {
            *total = addCounts(*total, table.count(i));
        }
        found[*headword].append({word.toString(), table.count(i)});
    }
    WordTable result;
    result.reserve(n, 0);
    for (qsizetype i = 0; i < n; ++i) {
        if (headwords[std::size_t(i)]) {
            continue;
        }
        result.insert(table.word(i), table.count(i));
    }
    // The groups are few: sorted on their own and merged in, the entries are not sorted
    // again. No entry left out of the groups is written as a headword (every headword is
    // a form of its own file line), and the merge would add its count if one were.
    WordTable groups;
    for (auto it = totals.cbegin(); it != totals.cend(); ++it) {
        groups.insert(it.key(), it.value());
    }
    result = WordTable::merged(result, groups);
    if (forms) {
        for (auto& list : found) {
            std::stable_sort(list.begin(), list.end(),
                             [](const auto& a, const auto& b) { return a.second > b.second; });
        }
        *forms = std::move(found);
    }
    table = std::move(result);
}

// The stop words after the lemma groups are made: compared folded when the list folds, and
// at either edge of an n-gram.
void removeStopWords(WordTable& table, const QSet<QString>& stopWords, bool folded)
{
    if (stopWords.isEmpty()) {
        return;
    }
    QSet<QString> stops;
    for (const QString& word : stopWords) {
        stops.insert(folded ? foldCase(word) : word);
    }
    table.removeIf([&](qsizetype index) {
        const QStringView word = table.word(index);
        return edgeIsStopWord(folded ? foldCase(word) : word.toString(), stops);
    });
}

} // namespace

QString foldCase(QStringView word)
{
    // Most words are ASCII, where folding is lower-casing A to Z.
    if (foldsToItself(word)) {
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

void shapeWordTable(WordTable& table, const WordListOptions& options, LemmaForms* forms)
{
    if (options.keepsEveryWord()) {
        return;
    }
    const bool ngrams = options.ngramLength > 1;
    if (options.lemmas) {
        if (options.foldCase) {
            table = foldWordTable(table, {}, ngrams);
        }
        groupLemmas(table, *options.lemmas, options.foldCase, forms);
        removeStopWords(table, options.stopWords, options.foldCase);
    } else if (options.foldCase) {
        table = foldWordTable(table, options.stopWords, ngrams);
    } else if (ngrams && !options.stopWords.isEmpty()) {
        table.removeIf(
            [&](qsizetype index) { return edgeIsStopWord(table.word(index), options.stopWords); });
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
