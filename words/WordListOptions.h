#pragma once

#include "prefs/PreferenceKeys.h"

#include <QSet>
#include <QString>

#include <memory>

namespace tallyvox {

class Lemmatizer;
class PreferenceStore;
struct LemmaList;

/// The word-list options of one list (all but "CombineFiles", which is the batch run's), read from
/// the store at the moment the list is made, so that the whole pipeline takes its choices from one
/// place. Default-constructed, every option is off and the list is exactly what the five
/// first settings make.
struct WordListOptions {
    /// Words that differ only in case are one entry (ICU full case folding).
    bool foldCase = false;
    /// Alphabetical order, and ties of the frequency order, by the locale's collation.
    bool dictionaryOrder = false;
    /// Words counted fewer times are left out; 1 or less leaves every word in.
    qint32 minimumCount = 1;
    /// The stop list's file as the user gave it; empty for none.
    QString stopListPath;
    /// The words of that file (folded when foldCase is on), filled in by whoever reads it;
    /// empty when there is none or it could not be read.
    QSet<QString> stopWords;
    ListFormat listFormat = ListFormat::Text;
    /// The list ends with its totals: a line in the text, rows in CSV and TSV.
    bool includeTotals = false;
    /// Each entry gets its range, and over a combined list's files Juilland's D and DP.
    bool includeRange = false;
    /// Each entry gets its frequency per million words of the text.
    bool includePerMillion = false;
    /// The reference of a keyword list as the user gave it; empty for an ordinary list.
    QString referencePath;
    /// The least G2 an entry of a keyword list has.
    double keynessThreshold = prefs::KeynessThreshold.fallback;
    /// Each entry is a sequence of this many words (1 to longestNGram), joined by a space.
    int ngramLength = 1;
    /// The lemma file as the user gave it; empty for none.
    QString lemmaListPath;
    /// Its forms and headwords (keys folded when foldCase is on), filled in by whoever
    /// reads it; none when there is no file or it could not be read.
    std::shared_ptr<const LemmaList> lemmas;
    /// With no lemma file, forms are grouped by a Hunspell dictionary ("Lemmatize").
    bool lemmatize = false;
    /// That dictionary's name as the user gave it; empty for the locale's.
    QString lemmaLanguage;
    /// Its stems, filled in by whoever opens it; none when lemmatize is off, a lemma file
    /// is given, or the dictionary is not installed. The list's lemmas are made from it.
    std::shared_ptr<Lemmatizer> lemmatizer;

    /// The options as stored now; stopWords is left empty.
    static WordListOptions read(const PreferenceStore& store);

    /// True when nothing about the words themselves changes: no folding, no stop words,
    /// no minimum above 1, no lemma groups.
    bool keepsEveryWord() const
    {
        return !foldCase && stopWords.isEmpty() && minimumCount <= 1 && !lemmas && !lemmatizer;
    }
};

/// The longest sequence of words an entry may be.
inline constexpr int longestNGram = 5;

/// The n-gram length a stored "NGramLength" means: 1 to longestNGram as it is, anything
/// else 1 (single words).
constexpr int ngramLengthOf(qint32 stored)
{
    return stored >= 1 && stored <= longestNGram ? stored : 1;
}

/// The ending of a list's file name: ".txt", ".csv" or ".tsv".
QString listExtension(ListFormat format);

} // namespace tallyvox
