#pragma once

#include "words/WordTable.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace tallyvox {

class DictionaryOrder;

/// The words of a table in the order they are written, with each word's count at the same
/// index. It refers to the table, which must outlive it. The table's own order is already
/// the alphabetical one, so that order holds no positions at all; copies share them.
class WordOrder {
public:
    /// The table's own order, or the entries at these positions of it.
    explicit WordOrder(const WordTable& table, std::vector<quint32> positions = {});

    qsizetype size() const { return m_size; }
    QStringView word(qsizetype index) const { return m_table->word(entry(index)); }
    qint64 count(qsizetype index) const { return m_table->count(entry(index)); }
    /// The table's index of the word written at index.
    qsizetype tableIndex(qsizetype index) const { return entry(index); }

    /// The words as strings, for callers that want a list rather than speed.
    QStringList toStringList() const;
    QList<qint64> toCountList() const;

private:
    qsizetype entry(qsizetype index) const
    {
        return m_positions ? qsizetype((*m_positions)[std::size_t(index)]) : index;
    }

    const WordTable* m_table;
    std::shared_ptr<const std::vector<quint32>> m_positions;
    qsizetype m_size;
};

/// The words of a table in the order they are written: alphabetical, or by falling
/// count. outCounts gets the same order, to read each word's count from, but only when
/// includeFrequency ("IncludeFrequency" as the list was begun) is on. outWords is left
/// untouched unless there is something to order. An empty table leaves both outputs empty. With a
/// dictionary (the "DictionaryOrder" option) the alphabetical order is its collation, and equal
/// counts are ordered by it too; words it finds equal keep code-unit order. Without one, equal
/// counts keep code-unit order.
void OrderWords(bool includeFrequency, const WordTable& table, std::optional<WordOrder>& outWords,
                std::optional<WordOrder>& outCounts, bool alphabetical,
                const DictionaryOrder* dictionary = nullptr);

/// Literal, case-sensitive UTF-16 code-unit order: "Zebra" < "apple", "10" < "9".
int CompareWordsAlphabetically(QStringView a, QStringView b);

/// Larger counts first; a word the table does not hold compares equal to anything.
int CompareWordsByCount(QStringView a, QStringView b, const WordTable& table);

/// The sum of the counts that fit 32 bits, wrapping as an unsigned 32-bit number.
quint32 SumCounts(const std::optional<WordOrder>& counts);

} // namespace tallyvox
