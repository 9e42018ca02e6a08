#pragma once

#include "words/LemmaList.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>
#include <vector>

class Hunspell;

namespace tallyvox {

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
    /// The dictionary of language, or nothing when it is not installed or cannot be read.
    static std::shared_ptr<Lemmatizer> open(const QString& language);

    Lemmatizer(const QString& affix, const QString& words);
    ~Lemmatizer();
    Lemmatizer(const Lemmatizer&) = delete;
    Lemmatizer& operator=(const Lemmatizer&) = delete;

    /// The headword of each distinct word of tables (each word of an n-gram on its own),
    /// as a lemma file would give it, so that the list groups them the same way. Keys are
    /// folded with fold. A word the dictionary does not know, or knows only as itself,
    /// has none. Of several stems, one that takes a prefix off (unhappy: happy) does not
    /// count; a word that is a dictionary word in its own right (number, and "numb" with
    /// -er) keeps itself unless one of its other stems occurs in the text too; of the
    /// rest, a stem found in the text comes first, then the shortest, then code-unit order.
    /// Without fold the headword takes the word's capitals (Cats: Cat, CATS: CAT).
    LemmaList lemmasOf(const std::vector<const WordTable*>& tables, bool fold);

private:
    bool usable() const;
    /// The stems Hunspell gives word, decoded. m_mutex is held.
    const QStringList& stemsOf(const QString& word);

    std::mutex m_mutex;
    std::unique_ptr<Hunspell> m_hunspell;
    /// The dictionary's encoding, when it is not UTF-8 (which most are).
    QByteArray m_encoding;
    QHash<QString, QStringList> m_stems;
};

} // namespace tallyvox
