#include "words/WordSpread.h"

#include "words/WordTableShaping.h"

#include <QHash>

#include <algorithm>
#include <limits>
#include <numeric>
#include <string_view>

namespace tallyvox {

namespace {

constexpr quint32 none = std::numeric_limits<quint32>::max();

std::u16string_view unitsOf(QStringView word)
{
    return {word.utf16(), std::size_t(word.size())};
}

} // namespace

void WordSpread::reserveSlots(std::size_t words)
{
    if (m_slots.size() >= words * 2 + 16) {
        return;
    }
    std::size_t size = std::max<std::size_t>(64, m_slots.size());
    while (size < words * 2 + 16) {
        size *= 2;
    }
    std::vector<Slot> grown(size, Slot{none, 0});
    const std::size_t mask = grown.size() - 1;
    for (quint32 id = 0; id < m_totals.size(); ++id) {
        std::size_t slot = m_hashes[id] & mask;
        while (grown[slot].word != none) {
            slot = (slot + 1) & mask;
        }
        grown[slot] = {id, quint32(m_hashes[id] >> 32)};
    }
    m_slots = std::move(grown);
}

quint32 WordSpread::idOf(QStringView word, quint64 hash)
{
    const std::size_t mask = m_slots.size() - 1;
    const auto tag = quint32(hash >> 32);
    std::size_t slot = hash & mask;
    // The tag spares reading the words of most slots that do not match.
    for (; m_slots[slot].word != none; slot = (slot + 1) & mask) {
        if (m_slots[slot].tag == tag && unitsOf(wordOf(m_slots[slot].word)) == unitsOf(word)) {
            return m_slots[slot].word;
        }
    }
    const auto id = quint32(m_totals.size());
    m_slots[slot] = {id, tag};
    m_hashes.push_back(hash);
    m_text.insert(m_text.end(), word.utf16(), word.utf16() + word.size());
    m_offsets.push_back(m_text.size());
    m_totals.push_back(0);
    return id;
}

void WordSpread::add(const WordTable& table)
{
    m_fileStarts.push_back(m_postings.size());
    // Room for every word of the file first, so that no slot moves while the look-ups run
    // ahead of themselves: the slots are far apart in memory, and fetching the next few
    // while one is compared hides most of the wait.
    reserveSlots(m_totals.size() + std::size_t(table.size()));
    const std::size_t mask = m_slots.size() - 1;
    constexpr qsizetype ahead = 8;
    std::vector<quint64>& hashes = m_fileHashes;
    hashes.resize(std::size_t(table.size()));
    for (qsizetype i = 0; i < table.size(); ++i) {
        hashes[std::size_t(i)] = quint64(qHash(table.word(i)));
    }
    qint64 words = 0;
    for (qsizetype i = 0; i < table.size(); ++i) {
        if (i + ahead < table.size()) {
            __builtin_prefetch(&m_slots[hashes[std::size_t(i + ahead)] & mask]);
        }
        const qint64 count = table.count(i);
        const std::size_t before = m_totals.size();
        const quint32 id = idOf(table.word(i), hashes[std::size_t(i)]);
        // The first count stands as it is, so that a sum matches addWordTable's.
        m_totals[id] = m_totals.size() > before ? count : addCounts(m_totals[id], count);
        // A count that is no integer or beyond 32 bits is not one the list writes either.
        const std::optional<qint32> written = countToInt32(count);
        const quint32 kept = written && *written > 0 ? quint32(*written) : 0;
        m_postings.push_back({id, kept});
        words += kept;
    }
    m_fileWords.push_back(double(words));
}

qint64 WordSpread::parts() const
{
    return std::count_if(m_fileWords.begin(), m_fileWords.end(),
                         [](double words) { return words > 0; });
}

WordTable WordSpread::sum() const
{
    // Sorted by the first four code units as one number, the whole words only where those
    // are equal: most comparisons then touch no text.
    struct Key {
        quint64 prefix;
        quint32 word;
    };
    std::vector<Key> keys(m_totals.size());
    for (quint32 id = 0; id < keys.size(); ++id) {
        const QStringView word = wordOf(id);
        quint64 prefix = 0;
        for (qsizetype i = 0; i < 4; ++i) {
            prefix = (prefix << 16) | (i < word.size() ? word.utf16()[i] : 0U);
        }
        keys[id] = {prefix, id};
    }
    std::sort(keys.begin(), keys.end(), [this](const Key& a, const Key& b) {
        if (a.prefix != b.prefix) {
            return a.prefix < b.prefix;
        }
        return unitsOf(wordOf(a.word)) < unitsOf(wordOf(b.word));
    });
    std::vector<quint32> order(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        order[i] = keys[i].word;
    }
    WordTable table;
    table.reserve(qsizetype(order.size()), qsizetype(m_text.size()));
    for (const quint32 id : order) {
        table.insert(wordOf(id), m_totals[id]);
    }
    m_order = std::move(order);
    return table;
}

// The entry of shaped each word went into, or -1.
std::vector<qint32> WordSpread::entriesOfWords(const WordTable& shaped, bool folded,
                                               const LemmaList* lemmas) const
{
    std::vector<qint32> entries(m_totals.size(), -1);
    if (lemmas) {
        // A form counts for its headword's entry; keys compared as the shaping compared them.
        const auto keyOf = [folded](QStringView word) {
            return folded ? foldCase(word) : word.toString();
        };
        QHash<QString, qint32> byKey;
        byKey.reserve(shaped.size());
        for (qsizetype i = 0; i < shaped.size(); ++i) {
            byKey.insert(keyOf(shaped.word(i)), qint32(i));
        }
        for (std::size_t id = 0; id < entries.size(); ++id) {
            QString key = keyOf(wordOf(quint32(id)));
            if (const std::optional<QString> headword = lemmas->headwordFor(key)) {
                key = keyOf(*headword);
            }
            entries[id] = byKey.value(key, -1);
        }
        return entries;
    }
    if (!folded && m_order.size() == entries.size()) {
        // Without folding the shaped table is the sum less some words, in the same order.
        qsizetype next = 0;
        for (const quint32 id : m_order) {
            if (next < shaped.size() && shaped.word(next) == wordOf(id)) {
                entries[id] = qint32(next++);
            }
        }
        return entries;
    }
    if (!folded) {
        for (std::size_t id = 0; id < entries.size(); ++id) {
            entries[id] = qint32(shaped.indexOf(wordOf(quint32(id))));
        }
        return entries;
    }
    QHash<QString, qint32> byKey;
    byKey.reserve(shaped.size());
    for (qsizetype i = 0; i < shaped.size(); ++i) {
        byKey.insert(foldCase(shaped.word(i)), qint32(i));
    }
    for (std::size_t id = 0; id < entries.size(); ++id) {
        entries[id] = byKey.value(foldCase(wordOf(quint32(id))), -1);
    }
    return entries;
}

std::vector<DispersionSums> WordSpread::dispersionOf(const WordTable& shaped, bool folded,
                                                     const LemmaList* lemmas) const
{
    const std::vector<qint32> entries = entriesOfWords(shaped, folded, lemmas);
    const double corpusWords = std::accumulate(m_fileWords.begin(), m_fileWords.end(), 0.0);
    // One entry's state in one place: the pass below visits the entries in no order.
    struct Accumulator {
        DispersionSums sums;
        double total = 0;
        double pending = 0;
        std::size_t lastFile = std::numeric_limits<std::size_t>::max();
    };
    std::vector<Accumulator> accumulators(std::size_t(shaped.size()));
    for (std::size_t e = 0; e < accumulators.size(); ++e) {
        accumulators[e].total = double(countToInt32(shaped.count(qsizetype(e))).value_or(0));
    }
    // Words folded into one entry are counted together within a file before the file's
    // share is taken: the measures are not additive over forms. Unfolded, each entry
    // occurs once in a file and goes in at once.
    const auto flush = [&](Accumulator& entry) {
        entry.sums.add(entry.pending, entry.total, m_fileWords[entry.lastFile], corpusWords);
        entry.pending = 0;
    };
    for (std::size_t file = 0; file < m_fileStarts.size(); ++file) {
        const std::size_t end =
            file + 1 < m_fileStarts.size() ? m_fileStarts[file + 1] : m_postings.size();
        for (std::size_t i = m_fileStarts[file]; i < end; ++i) {
            const qint32 entry = entries[m_postings[i].word];
            if (entry < 0) {
                continue;
            }
            Accumulator& accumulator = accumulators[std::size_t(entry)];
            if (!folded) {
                accumulator.sums.add(m_postings[i].count, accumulator.total, m_fileWords[file],
                                     corpusWords);
                continue;
            }
            if (accumulator.lastFile != file) {
                if (accumulator.lastFile != std::numeric_limits<std::size_t>::max()) {
                    flush(accumulator);
                }
                accumulator.lastFile = file;
            }
            accumulator.pending += m_postings[i].count;
        }
    }
    std::vector<DispersionSums> sums;
    sums.reserve(accumulators.size());
    for (Accumulator& accumulator : accumulators) {
        if (accumulator.lastFile != std::numeric_limits<std::size_t>::max()) {
            flush(accumulator);
        }
        sums.push_back(accumulator.sums);
    }
    return sums;
}

} // namespace tallyvox
