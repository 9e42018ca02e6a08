#include "words/WordOrdering.h"

#include "prefs/PreferenceStore.h"
#include "words/DictionaryOrder.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tallyvox {

namespace {

int compareCountsDescending(qint64 a, qint64 b)
{
    return b < a ? -1 : (b > a ? 1 : 0);
}

// The first four UTF-16 code units, zero-padded, as one number that orders like them.
quint64 prefixKey(const QString& word)
{
    quint64 key = 0;
    const qsizetype n = std::min<qsizetype>(word.size(), 4);
    for (qsizetype i = 0; i < n; ++i) {
        key |= quint64(word[i].unicode()) << (48 - 16 * i);
    }
    return key;
}

// Code-unit order, deciding most comparisons on a prefix kept beside the index instead of
// reaching into every string's own memory: a large table sorts several times faster.
void sortAlphabetically(std::vector<std::pair<QString, qint64>>& entries)
{
    struct Keyed {
        quint64 prefix;
        quint32 index;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(entries.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        keyed.push_back({prefixKey(entries[i].first), static_cast<quint32>(i)});
    }
    std::sort(keyed.begin(), keyed.end(), [&entries](const Keyed& x, const Keyed& y) {
        if (x.prefix != y.prefix) {
            return x.prefix < y.prefix;
        }
        return CompareWordsAlphabetically(entries[x.index].first, entries[y.index].first) < 0;
    });
    std::vector<std::pair<QString, qint64>> sorted;
    sorted.reserve(entries.size());
    for (const Keyed& k : keyed) {
        sorted.push_back(std::move(entries[k.index]));
    }
    entries = std::move(sorted);
}

// The dictionary's order, falling counts first when not alphabetical. Each word's sort key
// is made once, before the sort.
void sortByDictionary(std::vector<std::pair<QString, qint64>>& entries,
                      const DictionaryOrder& dictionary, bool alphabetical)
{
    struct Keyed {
        QByteArray key;
        qint64 count;
        quint32 index;
    };
    std::vector<Keyed> keyed;
    keyed.reserve(entries.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        keyed.push_back(
            {dictionary.sortKey(entries[i].first), entries[i].second, static_cast<quint32>(i)});
    }
    std::sort(keyed.begin(), keyed.end(), [&entries, alphabetical](const Keyed& x, const Keyed& y) {
        if (!alphabetical && x.count != y.count) {
            return x.count > y.count;
        }
        if (x.key != y.key) {
            return x.key < y.key;
        }
        return CompareWordsAlphabetically(entries[x.index].first, entries[y.index].first) < 0;
    });
    std::vector<std::pair<QString, qint64>> sorted;
    sorted.reserve(entries.size());
    for (const Keyed& k : keyed) {
        sorted.push_back(std::move(entries[k.index]));
    }
    entries = std::move(sorted);
}

} // namespace

int CompareWordsAlphabetically(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseSensitive);
}

int CompareWordsByCount(const QString& a, const QString& b, const WordTable& table)
{
    const auto countA = table.constFind(a);
    if (countA == table.cend()) {
        return 0;
    }
    const auto countB = table.constFind(b);
    if (countB == table.cend()) {
        return 0;
    }
    return compareCountsDescending(*countA, *countB);
}

void OrderWords(const PreferenceStore& preferences, const WordTable& table,
                std::optional<QStringList>& outWords, std::optional<QList<qint64>>& outCounts,
                bool alphabetical, const DictionaryOrder* dictionary)
{
    outCounts.reset();
    if (table.isEmpty()) {
        return;
    }

    // Sorting the pairs with their counts beside them gives the order of
    // CompareWordsByCount without two table lookups per comparison.
    std::vector<std::pair<QString, qint64>> entries;
    entries.reserve(static_cast<size_t>(table.size()));
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        entries.emplace_back(it.key(), it.value());
    }

    if (dictionary && dictionary->isValid()) {
        sortByDictionary(entries, *dictionary, alphabetical);
    } else if (alphabetical) {
        sortAlphabetically(entries);
    } else {
        std::sort(entries.begin(), entries.end(), [](const auto& x, const auto& y) {
            return compareCountsDescending(x.second, y.second) < 0;
        });
    }

    QStringList words;
    words.reserve(static_cast<qsizetype>(entries.size()));
    for (const auto& entry : entries) {
        words.append(entry.first);
    }
    outWords = std::move(words);

    if (preferences.GetIncludeFrequency()) {
        QList<qint64> counts;
        counts.reserve(static_cast<qsizetype>(entries.size()));
        for (const auto& entry : entries) {
            counts.append(entry.second);
        }
        outCounts = std::move(counts);
    }
}

quint32 SumCounts(const std::optional<QList<qint64>>& counts)
{
    quint32 sum = 0;
    if (!counts) {
        return sum;
    }
    for (qint64 count : *counts) {
        if (const std::optional<qint32> value = countToInt32(count)) {
            sum += static_cast<quint32>(*value);
        }
    }
    return sum;
}

} // namespace tallyvox
