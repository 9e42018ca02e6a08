#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstring>
#include <initializer_list>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace tallyvox {

/// A count the result file held as something other than an integer: the word stays in the
/// table but its count converts to nothing.
inline constexpr qint64 unreadableCount = std::numeric_limits<qint64>::min();

/// The distinct words of one file with their occurrence counts; exact, case-sensitive keys.
///
/// Flat rather than hashed: the words' UTF-16 code units lie end to end in one buffer and
/// the entries are kept in code-unit order, which is the alphabetical order of the list.
/// The indexer writes its result in that order, so reading it is one pass that only checks
/// each word against the one before; a table filled in any other order is sorted once, the
/// first time it is looked at. A word inserted twice keeps the later count, as a
/// dictionary does.
class WordTable {
public:
    WordTable() = default;
    WordTable(std::initializer_list<std::pair<QString, qint64>> entries);

    qsizetype size() const
    {
        ensureOrdered();
        return qsizetype(m_entries.size());
    }
    bool isEmpty() const { return m_entries.empty(); }
    void clear();

    /// Room for this many words of this many code units in all, so that filling the table
    /// never copies it.
    void reserve(qsizetype words, qsizetype units);

    /// Adds word, or gives it this count when it is there.
    void insert(QStringView word, qint64 count);

    /// Room for a word of length code units at the end; endWord() then adds it with its
    /// count. For readers that make the code units themselves.
    char16_t* beginWord(qsizetype length);
    void endWord(qint64 count);

    /// The word at index (code-unit order) and its count.
    QStringView word(qsizetype index) const
    {
        ensureOrdered();
        return viewOf(m_entries[std::size_t(index)]);
    }
    qint64 count(qsizetype index) const
    {
        ensureOrdered();
        return m_entries[std::size_t(index)].count;
    }

    /// The index of word, or -1.
    qsizetype indexOf(QStringView word) const;
    bool contains(QStringView word) const { return indexOf(word) >= 0; }
    qint64 value(QStringView word, qint64 missing = 0) const;
    /// The words, in code-unit order.
    QStringList keys() const;

    /// Keeps the entries for which drop(index) is false; the order stays.
    template <typename Drop>
    void removeIf(Drop drop);

    /// Iterates the counts in code-unit order of the words, as a dictionary's values;
    /// key() gives the word.
    class const_iterator {
    public:
        const_iterator(const WordTable* table, qsizetype index) : m_table(table), m_index(index) {}
        QStringView key() const { return m_table->word(m_index); }
        qint64 value() const { return m_table->count(m_index); }
        qint64 operator*() const { return value(); }
        const_iterator& operator++()
        {
            ++m_index;
            return *this;
        }
        bool operator==(const const_iterator& other) const { return m_index == other.m_index; }
        bool operator!=(const const_iterator& other) const { return m_index != other.m_index; }

    private:
        const WordTable* m_table;
        qsizetype m_index;
    };
    const_iterator begin() const;
    const_iterator end() const { return {this, size()}; }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }

    friend bool operator==(const WordTable& a, const WordTable& b);
    friend bool operator!=(const WordTable& a, const WordTable& b) { return !(a == b); }

    /// The sum of two tables: each word once, with its counts added as addCounts does.
    static WordTable merged(const WordTable& a, const WordTable& b);

private:
    // 16 bytes, as a table may hold millions: the word's offset in m_text and its length in
    // one number. A length that does not fit its 24 bits is longLength, and the length
    // itself lies in the four code units before the word.
    struct Entry {
        quint64 place; // offset << lengthBits | length
        qint64 count;
    };
    static constexpr unsigned lengthBits = 24;
    static constexpr quint64 longLength = (quint64(1) << lengthBits) - 1;
    static constexpr std::size_t lengthUnits = sizeof(quint64) / sizeof(char16_t);

    QStringView viewOf(const Entry& entry) const
    {
        const quint64 offset = entry.place >> lengthBits;
        quint64 length = entry.place & longLength;
        if (length == longLength) {
            std::memcpy(&length, m_text.data() + offset - lengthUnits, sizeof length);
        }
        return QStringView(m_text.data() + offset, qsizetype(length));
    }
    // Inline, as it runs for every word read: only a table filled out of order has work.
    void ensureOrdered() const
    {
        if (!m_ordered) {
            sortEntries();
        }
    }
    void sortEntries() const;
    void append(QStringView word, qint64 count);

    // Mutable because a table filled out of order is put in order when it is first read.
    mutable std::vector<char16_t> m_text;
    mutable std::vector<Entry> m_entries;
    mutable bool m_ordered = true;
};

template <typename Drop>
void WordTable::removeIf(Drop drop)
{
    ensureOrdered();
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (!drop(qsizetype(i))) {
            m_entries[kept++] = m_entries[i];
        }
    }
    m_entries.resize(kept);
}

/// A count as a 32-bit signed integer, or nothing when it does not fit or was unreadable.
inline std::optional<qint32> countToInt32(qint64 count)
{
    if (count < std::numeric_limits<qint32>::min() || count > std::numeric_limits<qint32>::max()) {
        return std::nullopt;
    }
    return static_cast<qint32>(count);
}

/// Asks for huge pages for the whole 2 MB pages inside a block of memory of one's own: a
/// block of hundreds of megabytes, filled in order, then takes a fault per 2 MB rather than
/// per 4 KB. Nothing else changes: untouched pages still cost nothing.
void adviseHugePages(void* data, std::size_t bytes);

/// Two counts of one word added up. A count the indexer gave as no integer does not add
/// anything; a sum beyond 64 bits stays at the largest count.
qint64 addCounts(qint64 a, qint64 b);

/// What a text's standardised type/token ratio is made of: in reading order, the distinct
/// words of each full run of 1000 words, added up, and how many such runs there were (the
/// last, partial run left out). Several texts' runs add up to those of all of them.
struct TypeRuns {
    qint64 types = 0;
    qint64 runs = 0;

    TypeRuns& operator+=(const TypeRuns& other)
    {
        types += other.types;
        runs += other.runs;
        return *this;
    }
};

} // namespace tallyvox

Q_DECLARE_METATYPE(tallyvox::WordTable)
