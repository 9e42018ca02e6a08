#include "words/Lemmatizer.h"

#include "words/WordTable.h"
#include "words/WordTableShaping.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QStringEncoder>

#include <hunspell/hunspell.hxx>

#include <algorithm>
#include <map>
#include <utility>

namespace tallyvox {

namespace {

// Hunspell leaves longer words unknown anyway; its limit is in bytes of the dictionary's
// encoding.
constexpr qsizetype longestStemmedWord = 100;

// A dictionary name is a file name, never a path.
bool isDictionaryName(const QString& name)
{
    return !name.isEmpty() && name.size() <= 64 &&
           std::all_of(name.cbegin(), name.cend(), [](QChar c) {
               return c.isLetterOrNumber() || c == u'_' || c == u'-' || c == u'@';
           });
}

QStringList dictionaryFolders()
{
    QStringList folders =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("hunspell"),
                                  QStandardPaths::LocateDirectory);
    const QString debian = QStringLiteral("/usr/share/hunspell");
    if (!folders.contains(debian)) {
        folders.append(debian);
    }
    return folders;
}

// The word with the capitals of like: all of them, or the first.
QString withCapitalsOf(const QString& word, QStringView like)
{
    const auto upper = [](QChar c) { return c.isUpper(); };
    const auto lower = [](QChar c) { return c.isLower(); };
    if (like.size() > 1 && std::any_of(like.begin(), like.end(), upper) &&
        std::none_of(like.begin(), like.end(), lower)) {
        return word.toUpper();
    }
    if (!like.isEmpty() && like.front().isUpper() && !word.isEmpty()) {
        return word.front().toUpper() + word.mid(1);
    }
    return word;
}

// Most words: folding leaves them as they are, and no copy is made.
bool foldsToItself(QStringView word)
{
    return std::none_of(word.begin(), word.end(),
                        [](QChar c) { return c.unicode() >= 0x80 || (c >= u'A' && c <= u'Z'); });
}

// The words a lemma list needs headwords of: each word of each entry, as compared.
QSet<QString> distinctWords(const std::vector<const WordTable*>& tables, bool fold)
{
    QSet<QString> words;
    for (const WordTable* table : tables) {
        if (!table) {
            continue;
        }
        words.reserve(words.size() + table->size());
        for (qsizetype i = 0; i < table->size(); ++i) {
            for (const QStringView word : table->word(i).split(QLatin1Char(' '))) {
                words.insert(fold ? foldCase(word) : word.toString());
            }
        }
    }
    return words;
}

// Does a table hold n-grams?
bool holdsPhrases(const WordTable* table)
{
    for (qsizetype i = 0; table && i < table->size(); ++i) {
        if (table->word(i).contains(u' ')) {
            return true;
        }
    }
    return false;
}

} // namespace

// The distinct words of a list's tables, as compared. A table of single words as they are
// holds each word once already: its words are looked at where they are. Folded words and
// the words of n-grams are gathered into a set first.
class TextWords {
public:
    TextWords(const std::vector<const WordTable*>& tables, bool fold)
        : m_tables(tables),
          m_inPlace(!fold && std::none_of(tables.begin(), tables.end(), holdsPhrases))
    {
        if (!m_inPlace) {
            m_words = distinctWords(tables, fold);
        }
    }

    bool has(const QString& word) const
    {
        if (!m_inPlace) {
            return m_words.contains(word);
        }
        return std::any_of(m_tables.begin(), m_tables.end(),
                           [&](const WordTable* table) { return table && table->contains(word); });
    }

    /// Calls visit with each word (in place, once a table it is in).
    template <typename Visit>
    void forEach(const Visit& visit) const
    {
        if (!m_inPlace) {
            for (const QString& word : m_words) {
                visit(QStringView(word));
            }
            return;
        }
        for (const WordTable* table : m_tables) {
            for (qsizetype i = 0; table && i < table->size(); ++i) {
                visit(table->word(i));
            }
        }
    }

private:
    const std::vector<const WordTable*>& m_tables;
    bool m_inPlace;
    QSet<QString> m_words;
};

namespace {

// The headword of key among its stems, by the rule Lemmatizer::lemmasOf gives; empty for
// none. roots are the folded roots key's suffixes come off, or nothing when any stem counts
// that keeps key's first letter.
template <typename InText>
QString chooseStem(const QString& key, const QStringList& stems, const InText& inText,
                   const QSet<QString>* roots)
{
    const QString folded = foldCase(key);
    bool isItsOwnStem = false;
    QStringList candidates;
    for (const QString& stem : stems) {
        const QString foldedStem = foldCase(stem);
        if (foldedStem == folded) {
            isItsOwnStem = true;
        } else if (roots ? roots->contains(foldedStem)
                         : !foldedStem.isEmpty() && foldedStem.front() == folded.front()) {
            candidates.append(stem);
        }
    }
    if (isItsOwnStem) {
        candidates.removeIf([&](const QString& stem) { return !inText(stem); });
    }
    if (candidates.isEmpty()) {
        return {};
    }
    std::sort(candidates.begin(), candidates.end(), [&](const QString& a, const QString& b) {
        const bool aFound = inText(a);
        const bool bFound = inText(b);
        if (aFound != bFound) {
            return aFound;
        }
        if (a.size() != b.size()) {
            return a.size() < b.size();
        }
        return a < b;
    });
    return candidates.front();
}

// A headword that is itself a form of another (found under found, found under find) gives
// its forms to that one, so that no form is counted under a form; and each headword the text
// holds is a form of itself, as a lemma file's line makes it.
void settleHeadwords(LemmaList& lemmas, const TextWords& words)
{
    for (auto it = lemmas.headwordOf.begin(); it != lemmas.headwordOf.end(); ++it) {
        for (int step = 0; step < 4; ++step) {
            const auto next = lemmas.headwordOf.constFind(*it);
            if (next == lemmas.headwordOf.cend() || *next == *it) {
                break;
            }
            *it = *next;
        }
    }
    QStringList headwords;
    for (const QString& headword : std::as_const(lemmas.headwordOf)) {
        if (!lemmas.headwordOf.contains(headword) && words.has(headword)) {
            headwords.append(headword);
        }
    }
    for (const QString& headword : std::as_const(headwords)) {
        lemmas.headwordOf.insert(headword, headword);
    }
}

} // namespace

QStringList lemmaLanguages()
{
    QStringList names;
    for (const QString& folder : dictionaryFolders()) {
        const QDir dir(folder);
        for (const QFileInfo& file : dir.entryInfoList({QStringLiteral("*.dic")}, QDir::Files)) {
            const QString name = file.completeBaseName();
            if (isDictionaryName(name) && dir.exists(name + QStringLiteral(".aff")) &&
                !names.contains(name)) {
                names.append(name);
            }
        }
    }
    names.sort();
    return names;
}

QString lemmaLanguageOf(const QString& setting)
{
    if (!setting.isEmpty()) {
        return setting;
    }
    const QString locale = QLocale::system().name();
    return locale == u"C" || locale.isEmpty() ? QStringLiteral("en_US") : locale;
}

std::shared_ptr<Lemmatizer> Lemmatizer::open(const QString& language)
{
    if (!isDictionaryName(language)) {
        return nullptr;
    }
    // Kept for the life of the process, as a dictionary is slow to load.
    static std::mutex mutex;
    static std::map<QString, std::shared_ptr<Lemmatizer>> loaded;
    const std::lock_guard lock(mutex);
    if (const auto it = loaded.find(language); it != loaded.end()) {
        return it->second;
    }
    for (const QString& folder : dictionaryFolders()) {
        const QString affix = folder + u'/' + language + QStringLiteral(".aff");
        const QString words = folder + u'/' + language + QStringLiteral(".dic");
        if (!QFileInfo(affix).isReadable() || !QFileInfo(words).isReadable()) {
            continue;
        }
        auto lemmatizer = std::make_shared<Lemmatizer>(affix, words);
        loaded.emplace(language, lemmatizer);
        return lemmatizer;
    }
    return nullptr;
}

Lemmatizer::Lemmatizer(const QString& affix, const QString& words)
    // Loaded beside the indexer's run, which the list waits for anyway.
    : m_loaded(std::async(std::launch::async, [this, affix, words] { load(affix, words); }))
{}

void Lemmatizer::load(const QString& affix, const QString& words)
{
    m_hunspell = std::make_unique<Hunspell>(QFile::encodeName(affix).constData(),
                                            QFile::encodeName(words).constData());
    const QByteArray encoding = QByteArray::fromStdString(m_hunspell->get_dict_encoding());
    if (encoding.compare("UTF-8", Qt::CaseInsensitive) != 0) {
        m_encoding = encoding;
    }
    if (usable()) {
        readSuffixesAndRoots(affix, words);
    } else {
        m_hunspell.reset();
    }
}

QString Lemmatizer::decoded(const QByteArray& bytes) const
{
    if (m_encoding.isEmpty()) {
        return QString::fromUtf8(bytes);
    }
    QStringDecoder decoder(m_encoding.constData());
    return decoder(bytes);
}

void Lemmatizer::readSuffixesAndRoots(const QString& affix, const QString& words)
{
    QFile affixFile(affix);
    QFile wordsFile(words);
    if (!affixFile.open(QIODevice::ReadOnly) || !wordsFile.open(QIODevice::ReadOnly)) {
        return;
    }
    const QString rules = decoded(affixFile.readAll());
    for (const QStringView line : QStringView(rules).split(QLatin1Char('\n'))) {
        const QList<QStringView> fields = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (!fields.isEmpty() && fields[0] == u"IGNORE") {
            return;
        }
        if (fields.size() < 4 || fields[0] != u"SFX") {
            continue;
        }
        // "SFX flag Y count" opens a flag's rules; "SFX flag strip append condition" is one.
        bool isCount = false;
        static_cast<void>(fields[3].trimmed().toInt(&isCount));
        if (fields.size() == 4 && (fields[2] == u"Y" || fields[2] == u"N") && isCount) {
            continue;
        }
        QStringView append = fields[3].trimmed();
        if (const qsizetype flags = append.indexOf(QLatin1Char('/')); flags >= 0) {
            append.truncate(flags);
            m_continued = true;
        }
        const auto text = [](QStringView field) {
            return field == u"0" ? QString() : foldCase(field);
        };
        m_suffixes.push_back({text(fields[2].trimmed()), text(append)});
    }
    const QString roots = decoded(wordsFile.readAll());
    bool first = true;
    for (QStringView line : QStringView(roots).split(QLatin1Char('\n'))) {
        if (std::exchange(first, false)) {
            continue; // the number of words
        }
        // "word/flags", then morphological fields after white space.
        const auto end = std::find_if(line.begin(), line.end(),
                                      [](QChar c) { return c == u'/' || c == u'\t' || c == u' '; });
        line.truncate(end - line.begin());
        line = line.trimmed();
        if (!line.isEmpty()) {
            m_roots.insert(foldCase(line));
        }
    }
    m_filtered = true;
}

QSet<QString> Lemmatizer::suffixRootsOf(QStringView folded) const
{
    QSet<QString> roots;
    const auto strip = [&](QStringView word, int level, const auto& self) -> void {
        for (const SuffixRule& rule : m_suffixes) {
            if (word.size() <= rule.append.size() || !word.endsWith(rule.append)) {
                continue;
            }
            const QString root = word.chopped(rule.append.size()).toString() + rule.strip;
            if (m_roots.contains(root)) {
                roots.insert(root);
            }
            if (level == 0 && m_continued) {
                self(root, 1, self);
            }
        }
    };
    strip(folded, 0, strip);
    return roots;
}

Lemmatizer::~Lemmatizer()
{
    std::shared_future<void>(m_loaded).wait(); // a copy a thread, as shared_future asks
}

bool Lemmatizer::usable() const
{
    return m_encoding.isEmpty() || QStringEncoder(m_encoding.constData()).isValid();
}

const QStringList& Lemmatizer::stemsOf(const QString& word)
{
    const auto cached = m_stems.constFind(word);
    if (cached != m_stems.cend()) {
        return *cached;
    }
    QStringList stems;
    QByteArray bytes;
    bool encoded = word.size() <= longestStemmedWord;
    if (encoded && m_encoding.isEmpty()) {
        bytes = word.toUtf8();
    } else if (encoded) {
        QStringEncoder encoder(m_encoding.constData());
        bytes = encoder(word);
        encoded = !encoder.hasError();
    }
    if (encoded) {
        for (const std::string& stem : m_hunspell->stem(bytes.toStdString())) {
            const QByteArray raw = QByteArray::fromStdString(stem);
            if (m_encoding.isEmpty()) {
                stems.append(QString::fromUtf8(raw));
            } else {
                QStringDecoder decoder(m_encoding.constData());
                stems.append(decoder(raw));
            }
        }
    }
    return *m_stems.insert(word, stems);
}

LemmaList Lemmatizer::lemmasOf(const std::vector<const WordTable*>& tables, bool fold)
{
    std::shared_future<void>(m_loaded).wait(); // a copy a thread, as shared_future asks
    if (!m_hunspell) {
        return {}; // an encoding Qt cannot convert
    }
    const TextWords words(tables, fold);
    // A stem is in the text when a word of it is, in any of the cases a word is written in
    // (go, Go, GO); folded, as the words then are.
    const auto inText = [&](const QString& stem) {
        if (fold) {
            return words.has(foldCase(stem));
        }
        return words.has(stem) || words.has(withCapitalsOf(stem, u"Aa")) ||
               words.has(withCapitalsOf(stem, u"AA"));
    };
    const QHash<QString, QSet<QString>> asked = askedWords(words, fold);

    LemmaList lemmas;
    {
        const std::lock_guard lock(m_mutex);
        for (auto it = asked.cbegin(); it != asked.cend(); ++it) {
            const QString& word = it.key();
            const QString stem =
                chooseStem(word, stemsOf(word), inText, m_filtered ? &it.value() : nullptr);
            if (!stem.isEmpty()) {
                lemmas.headwordOf.insert(word, fold ? stem : withCapitalsOf(stem, word));
            }
        }
    }
    settleHeadwords(lemmas, words);
    return lemmas;
}

QHash<QString, QSet<QString>> Lemmatizer::askedWords(const TextWords& words, bool fold) const
{
    // Most distinct words of a long text are no suffixed form of a root (names, numbers,
    // words of other languages), and Hunspell is slowest on exactly those.
    QHash<QString, QSet<QString>> asked;
    words.forEach([&](QStringView word) {
        if (!m_filtered) {
            asked.insert(word.toString(), {});
            return;
        }
        QString copy;
        QStringView folded = word;
        if (!fold && !foldsToItself(word)) {
            copy = foldCase(word);
            folded = copy;
        }
        if (folded.contains(QChar(0x2019))) {
            copy = folded.toString().replace(QChar(0x2019), QLatin1Char('\''));
            folded = copy;
        }
        if (const QSet<QString> roots = suffixRootsOf(folded); !roots.isEmpty()) {
            asked.insert(word.toString(), roots);
        }
    });
    return asked;
}

} // namespace tallyvox
