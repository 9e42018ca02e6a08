#pragma once

#include "words/LemmaList.h"

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <future>
#include <memory>
#include <mutex>
#include <vector>

class Hunspell;

namespace tallyvox {

class TextWords;
class WordTable;

/// The Hunspell dictionaries installed where Debian's hunspell-* packages put them (the
/// "hunspell" folders of the XDG data folders, /usr/share/hunspell among them): their
/// names ("en_US"), sorted.
QStringList lemmaLanguages();

/// The dictionary a "LemmaLanguage" setting names: itself, or when empty the locale's
/// ("en_US"; en_US where the locale names no language, as C and POSIX do).
QString lemmaLanguageOf(const QString& setting);

/// Word forms grouped by a Hunspell dictionary's stems. One per dictionary is shared by
/// every list of the process: loading one takes a fifth of a second, and the stems of a
/// word are looked up once. Its functions may be called from any thread.
class Lemmatizer {
public:
    /// The dictionary of language, or nothing when it is not installed. It is loaded in the
    /// background from then on; one in an encoding Qt cannot convert groups nothing.
    static std::shared_ptr<Lemmatizer> open(const QString& language);

    Lemmatizer(const QString& affix, const QString& words);
    ~Lemmatizer();
    Lemmatizer(const Lemmatizer&) = delete;
    Lemmatizer& operator=(const Lemmatizer&) = delete;

    /// The headword of each distinct word of tables (each word of an n-gram on its own),
    /// as a lemma file would give it, so that the list groups them the same way. Keys are
    /// folded with fold. A word the dictionary does not know, or knows only as itself,
    /// has none. Only stems that the dictionary's suffix rules make the word of count
    /// (unhappy is not grouped under happy); a word that is a dictionary word in its own
    /// right (number, and "numb" with -er) keeps itself unless one of its other stems
    /// occurs in the text too; of the rest, a stem found in the text comes first, then the
    /// shortest, then code-unit order.
    /// Without fold the headword takes the word's capitals (Cats: Cat, CATS: CAT).
    LemmaList lemmasOf(const std::vector<const WordTable*>& tables, bool fold);

private:
    /// A suffix rule of the dictionary: the ending a root loses, and the one it takes on.
    struct SuffixRule {
        QString strip;
        QString append;
    };

    /// Hunspell's dictionary, and the suffix rules and roots; done once, on a thread of
    /// its own.
    void load(const QString& affix, const QString& words);
    bool usable() const;
    QString decoded(const QByteArray& bytes) const;
    /// Reads the suffix rules and the roots, for suffixRootsOf.
    void readSuffixesAndRoots(const QString& affix, const QString& words);
    /// The dictionary's roots that one or two of its suffix rules make folded from (the
    /// rules' conditions aside). Hunspell is asked only about a word with such a root,
    /// as it is slow with the many words it does not know.
    QSet<QString> suffixRootsOf(QStringView folded) const;
    /// The words of words to ask Hunspell about, with their suffix roots.
    QHash<QString, QSet<QString>> askedWords(const TextWords& words, bool fold) const;
    /// The stems Hunspell gives word, decoded. m_mutex is held.
    const QStringList& stemsOf(const QString& word);

    std::mutex m_mutex;
    /// Set by load, which every other function waits for.
    std::unique_ptr<Hunspell> m_hunspell;
    /// The dictionary's encoding, when it is not UTF-8 (which most are).
    QByteArray m_encoding;
    QHash<QString, QStringList> m_stems;
    std::vector<SuffixRule> m_suffixes;
    /// Roots of the dictionary, folded.
    QSet<QString> m_roots;
    /// A rule's ending takes further rules ("/flags" after it).
    bool m_continued = false;
    /// Off for a dictionary whose words cannot be taken apart as simply (IGNORE): every
    /// word is then Hunspell's to stem.
    bool m_filtered = false;
    /// The load; last, so that it starts when the rest is made.
    std::shared_future<void> m_loaded;
};

} // namespace tallyvox
