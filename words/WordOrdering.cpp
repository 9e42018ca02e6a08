#include "words/WordOrdering.h"

#include "words/DictionaryOrder.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace tallyvox {

namespace {

// Counts below this are ordered by counting them; the few above it by comparing.
constexpr qint64 countedBelow = qint64(1) << 20;

// Falling counts, equal counts in the table's code-unit order: a counting sort, so that
// millions of words cost two passes instead of a comparison sort.
std::vector<quint32> byFallingCount(const WordTable& table)
{
    const qsizetype n = table.size();
    qint64 largestCounted = 0;
    std::vector<quint32> large;
    std::vector<quint32> belowOne;
    for (qsizetype i = 0; i < n; ++i) {
        const qint64 count = table.count(i);
        if (count >= countedBelow) {
            large.push_back(quint32(i));
        } else if (count < 1) {
            belowOne.push_back(quint32(i));
        } else {
            largestCounted = std::max(largestCounted, count);
        }
    }
    const auto falling = [&table](quint32 a, quint32 b) { return table.count(a) > table.count(b); };
    std::stable_sort(large.begin(), large.end(), falling);
    std::stable_sort(belowOne.begin(), belowOne.end(), falling);

    // next[c]: where the next word counted c times goes; larger counts come first.
    std::vector<quint32> next(std::size_t(largestCounted) + 1, 0);
    for (qsizetype i = 0; i < n; ++i) {
        const qint64 count = table.count(i);
        if (count >= 1 && count < countedBelow) {
            ++next[std::size_t(count)];
        }
    }
    quint32 position = quint32(large.size());
    for (qint64 count = largestCounted; count >= 1; --count) {
        const quint32 words = next[std::size_t(count)];
        next[std::size_t(count)] = position;
        position += words;
    }

    std::vector<quint32> order(std::size_t(n), 0);
    std::copy(large.begin(), large.end(), order.begin());
    std::copy(belowOne.begin(), belowOne.end(), order.begin() + position);
    for (qsizetype i = 0; i < n; ++i) {
        const qint64 count = table.count(i);
        if (count >= 1 && count < countedBelow) {
            order[next[std::size_t(count)]++] = quint32(i);
        }
    }
    return order;
}

// The dictionary's order, falling counts first when not alphabetical. Each word's sort key
// is made once, before the sort, into one buffer; words the dictionary finds equal keep
// code-unit order.
std::vector<quint32> byDictionary(const WordTable& table, const DictionaryOrder& dictionary,
                                  bool alphabetical)
{
    const std::size_t n = std::size_t(table.size());
    std::vector<char> keys;
    std::vector<std::size_t> keyStart(n + 1, 0);
    for (std::size_t i = 0; i < n; ++i) {
        const QByteArray key = dictionary.sortKey(table.word(qsizetype(i)));
        keys.insert(keys.end(), key.begin(), key.end());
        keyStart[i + 1] = keys.size();
    }
    const auto keyOf = [&keys, &keyStart](quint32 i) {
        return std::string_view(keys.data() + keyStart[i], keyStart[i + 1] - keyStart[i]);
    };
    std::vector<quint32> order(n);
    for (std::size_t i = 0; i < n; ++i) {
        order[i] = quint32(i);
    }
    // Sort keys compare as unsigned bytes.
    const auto byKey = [&keyOf](quint32 x, quint32 y) {
        const std::string_view a = keyOf(x);
        const std::string_view b = keyOf(y);
        const int bytes = std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
        return bytes != 0 ? bytes < 0 : a.size() < b.size();
    };
    if (alphabetical) {
        std::stable_sort(order.begin(), order.end(), byKey);
    } else {
        std::stable_sort(order.begin(), order.end(), [&table, &byKey](quint32 x, quint32 y) {
            const qint64 a = table.count(x);
            const qint64 b = table.count(y);
            return a != b ? a > b : byKey(x, y);
        });
    }
    return order;
}

} // namespace

WordOrder::WordOrder(const WordTable& table, std::vector<quint32> positions)
    : m_table(&table), m_size(table.size())
{
    if (!positions.empty()) {
        m_size = qsizetype(positions.size());
        m_positions = std::make_shared<const std::vector<quint32>>(std::move(positions));
    }
}

QStringList WordOrder::toStringList() const
{
    QStringList words;
    words.reserve(m_size);
    for (qsizetype i = 0; i < m_size; ++i) {
        words.append(word(i).toString());
    }
    return words;
}

QList<qint64> WordOrder::toCountList() const
{
    QList<qint64> counts;
    counts.reserve(m_size);
    for (qsizetype i = 0; i < m_size; ++i) {
        counts.append(count(i));
    }
    return counts;
}

int CompareWordsAlphabetically(QStringView a, QStringView b)
{
    const std::u16string_view x(a.utf16(), std::size_t(a.size()));
    const std::u16string_view y(b.utf16(), std::size_t(b.size()));
    const int order = x.compare(y);
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

int CompareWordsByCount(QStringView a, QStringView b, const WordTable& table)
{
    const qsizetype indexA = table.indexOf(a);
    if (indexA < 0) {
        return 0;
    }
    const qsizetype indexB = table.indexOf(b);
    if (indexB < 0) {
        return 0;
    }
    const qint64 countA = table.count(indexA);
    const qint64 countB = table.count(indexB);
    return countB < countA ? -1 : (countB > countA ? 1 : 0);
}

void OrderWords(bool includeFrequency, const WordTable& table, std::optional<WordOrder>& outWords,
                std::optional<WordOrder>& outCounts, bool alphabetical,
                const DictionaryOrder* dictionary)
{
    outCounts.reset();
    if (table.isEmpty()) {
        return;
    }
    if (dictionary && dictionary->isValid()) {
        outWords.emplace(table, byDictionary(table, *dictionary, alphabetical));
    } else if (alphabetical) {
        // The table keeps its words in code-unit order.
        outWords.emplace(table);
    } else {
        outWords.emplace(table, byFallingCount(table));
    }
    if (includeFrequency) {
        outCounts = outWords;
    }
}

quint32 SumCounts(const std::optional<WordOrder>& counts)
{
    quint32 sum = 0;
    if (!counts) {
        return sum;
    }
    for (qsizetype i = 0; i < counts->size(); ++i) {
        if (const std::optional<qint32> value = countToInt32(counts->count(i))) {
            sum += static_cast<quint32>(*value);
        }
    }
    return sum;
}

} // namespace tallyvox
