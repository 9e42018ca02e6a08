#pragma once

#include "words/CorpusStatistics.h"
#include "words/LemmaList.h"
#include "words/WordTable.h"

#include <vector>

namespace tallyvox {

/// The words of a run's files kept file by file, for a combined list's range and
/// dispersion. Each distinct word is stored once; each file adds, for each word it holds,
/// one pair of the word's number and its count (8 bytes), so the files' tables themselves
/// are not kept.
class WordSpread {
public:
    /// Adds one file's table; files are numbered in the order they are added.
    void add(const WordTable& table);

    qint64 files() const { return qint64(m_fileStarts.size()); }
    /// The files that hold any word: the parts of the dispersion.
    qint64 parts() const;
    /// The words of all files, each word's counts added as addWordTable adds them.
    WordTable sum() const;

    /// The sums for the dispersion of each entry of shaped, a table made from sum() by
    /// shapeWordTable: with folded (its options folded case), an entry gathers the counts
    /// of every word that folds as it does, and with lemmas a headword's entry those of its
    /// forms. Words the shaping left out add nothing.
    std::vector<DispersionSums> dispersionOf(const WordTable& shaped, bool folded,
                                             const LemmaList* lemmas = nullptr) const;

private:
    struct Posting {
        quint32 word;
        quint32 count;
    };

    /// Room in the slots for this many words in all.
    void reserveSlots(std::size_t words);
    quint32 idOf(QStringView word, quint64 hash);
    QStringView wordOf(quint32 id) const
    {
        return {m_text.data() + m_offsets[id], qsizetype(m_offsets[id + 1] - m_offsets[id])};
    }
    std::vector<qint32> entriesOfWords(const WordTable& shaped, bool folded,
                                       const LemmaList* lemmas) const;

    // The words end to end; word i is from m_offsets[i] to m_offsets[i + 1].
    std::vector<char16_t> m_text;
    std::vector<quint64> m_offsets{0};
    std::vector<qint64> m_totals;
    // Open addressing over word numbers, each with the high half of its word's hash.
    struct Slot {
        quint32 word;
        quint32 tag;
    };
    std::vector<Slot> m_slots;
    std::vector<quint64> m_hashes;
    /// The hashes of the words of the file being added, kept to spare an allocation a file.
    std::vector<quint64> m_fileHashes;
    /// The word numbers in code-unit order of their words, as sum() last put them.
    mutable std::vector<quint32> m_order;
    std::vector<Posting> m_postings;
    std::vector<std::size_t> m_fileStarts;
    /// The words of each file, its share of the corpus.
    std::vector<double> m_fileWords;
};

} // namespace tallyvox
