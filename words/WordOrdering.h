#pragma once

#include "words/WordTable.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace tallyvox {

class DictionaryOrder;
class PreferenceStore;

/// The words of a table in the order they are written: alphabetical, or by falling
/// count. outCounts gets each word's count at the same index, but only while
/// "IncludeFrequency" is on. An empty table leaves both outputs empty. With a dictionary
/// (the "DictionaryOrder" option) the alphabetical order is its collation, and equal counts
/// are ordered by it too; words it finds equal keep code-unit order.
void OrderWords(const PreferenceStore& preferences, const WordTable& table,
                std::optional<QStringList>& outWords, std::optional<QList<qint64>>& outCounts,
                bool alphabetical, const DictionaryOrder* dictionary = nullptr);

/// Literal, case-sensitive UTF-16 code-unit order: "Zebra" < "apple", "10" < "9".
int CompareWordsAlphabetically(const QString& a, const QString& b);

/// Larger counts first; a word the table does not hold compares equal to anything.
int CompareWordsByCount(const QString& a, const QString& b, const WordTable& table);

/// The sum of the counts that fit 32 bits, wrapping as an unsigned 32-bit number.
quint32 SumCounts(const std::optional<QList<qint64>>& counts);

} // namespace tallyvox
