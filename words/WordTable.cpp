#include "words/WordTable.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include <sys/mman.h>

namespace tallyvox {

namespace {

// Code-unit order: char16_t compares as an unsigned 16-bit number.
int compareUnits(QStringView a, QStringView b)
{
    const std::u16string_view x(a.utf16(), std::size_t(a.size()));
    const std::u16string_view y(b.utf16(), std::size_t(b.size()));
    return x.compare(y);
}

} // namespace

WordTable::WordTable(std::initializer_list<std::pair<QString, qint64>> entries)
{
    for (const auto& [word, count] : entries) {
        insert(word, count);
    }
}

void WordTable::clear()
{
    m_text.clear();
    m_entries.clear();
    m_ordered = true;
}

void WordTable::reserve(qsizetype words, qsizetype units)
{
    m_entries.reserve(std::size_t(std::max<qsizetype>(words, 0)));
    m_text.reserve(std::size_t(std::max<qsizetype>(units, 0)));
    adviseHugePages(m_entries.data(), m_entries.capacity() * sizeof(Entry));
    adviseHugePages(m_text.data(), m_text.capacity() * sizeof(char16_t));
}

void adviseHugePages(void* data, std::size_t bytes)
{
    // Only the whole huge pages inside the block: the advice applies to whole pages, and
    // the block's neighbours are not ours to advise.
    constexpr std::size_t hugePage = std::size_t(2) << 20;
    if (data == nullptr) {
        return;
    }
    const std::size_t skip =
        (hugePage - reinterpret_cast<std::uintptr_t>(data) % hugePage) % hugePage;
    if (bytes <= skip) {
        return;
    }
    if (const std::size_t whole = (bytes - skip) / hugePage * hugePage; whole > 0) {
        ::madvise(static_cast<char*>(data) + skip, whole, MADV_HUGEPAGE);
    }
}

void WordTable::insert(QStringView word, qint64 count)
{
    append(word, count);
}

void WordTable::append(QStringView word, qint64 count)
{
    std::copy(word.utf16(), word.utf16() + word.size(), beginWord(word.size()));
    endWord(count);
}

char16_t* WordTable::beginWord(qsizetype length)
{
    std::size_t offset = m_text.size();
    const auto units = quint64(length);
    if (units < longLength) {
        m_text.resize(offset + std::size_t(units));
        m_entries.push_back({quint64(offset) << lengthBits | units, 0});
    } else {
        m_text.resize(offset + lengthUnits + std::size_t(units));
        std::memcpy(m_text.data() + offset, &units, sizeof units);
        offset += lengthUnits;
        m_entries.push_back({quint64(offset) << lengthBits | longLength, 0});
    }
    return m_text.data() + offset;
}

void WordTable::endWord(qint64 count)
{
    Entry& entry = m_entries.back();
    entry.count = count;
    // A word that does not come after the one before leaves the table to be sorted; the
    // indexer's results never do.
    if (m_ordered && m_entries.size() > 1 &&
        compareUnits(viewOf(m_entries[m_entries.size() - 2]), viewOf(entry)) >= 0) {
        m_ordered = false;
    }
}

void WordTable::sortEntries() const
{
    // Stable, so that of a word inserted twice the later entry comes last and stays.
    std::stable_sort(m_entries.begin(), m_entries.end(), [this](const Entry& a, const Entry& b) {
        return compareUnits(viewOf(a), viewOf(b)) < 0;
    });
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (i + 1 < m_entries.size() && viewOf(m_entries[i]) == viewOf(m_entries[i + 1])) {
            continue;
        }
        m_entries[kept++] = m_entries[i];
    }
    m_entries.resize(kept);
    m_ordered = true;
}

qsizetype WordTable::indexOf(QStringView word) const
{
    ensureOrdered();
    const auto it = std::lower_bound(
        m_entries.begin(), m_entries.end(), word,
        [this](const Entry& entry, QStringView w) { return compareUnits(viewOf(entry), w) < 0; });
    if (it == m_entries.end() || viewOf(*it) != word) {
        return -1;
    }
    return qsizetype(it - m_entries.begin());
}

qint64 WordTable::value(QStringView word, qint64 missing) const
{
    const qsizetype index = indexOf(word);
    return index < 0 ? missing : count(index);
}

QStringList WordTable::keys() const
{
    QStringList words;
    words.reserve(size());
    for (qsizetype i = 0; i < size(); ++i) {
        words.append(word(i).toString());
    }
    return words;
}

WordTable::const_iterator WordTable::begin() const
{
    ensureOrdered();
    return {this, 0};
}

bool operator==(const WordTable& a, const WordTable& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a.count(i) != b.count(i) || a.word(i) != b.word(i)) {
            return false;
        }
    }
    return true;
}

WordTable WordTable::merged(const WordTable& a, const WordTable& b)
{
    a.ensureOrdered();
    b.ensureOrdered();
    WordTable sum;
    sum.reserve(a.size() + b.size(), qsizetype(a.m_text.size()) + qsizetype(b.m_text.size()));
    qsizetype i = 0;
    qsizetype j = 0;
    while (i < a.size() || j < b.size()) {
        const int order = i == a.size()   ? 1
                          : j == b.size() ? -1
                                          : compareUnits(a.word(i), b.word(j));
        if (order < 0) {
            sum.append(a.word(i), a.count(i));
            ++i;
        } else if (order > 0) {
            sum.append(b.word(j), b.count(j));
            ++j;
        } else {
            sum.append(a.word(i), addCounts(a.count(i), b.count(j)));
            ++i;
            ++j;
        }
    }
    return sum;
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

} // namespace tallyvox
