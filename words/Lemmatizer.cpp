#include "words/Lemmatizer.h"

#include "words/WordTable.h"
#include "words/WordTableShaping.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSet>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QStringEncoder>

#include <hunspell/hunspell.hxx>

#include <algorithm>
#include <map>

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

// The headword of key among its stems, by the rule Lemmatizer::lemmasOf gives; empty for none.
QString chooseStem(const QString& key, const QStringList& stems, const QSet<QString>& foldedText)
{
    const QString folded = foldCase(key);
    bool isItsOwnStem = false;
    QStringList candidates;
    for (const QString& stem : stems) {
        const QString foldedStem = foldCase(stem);
        if (foldedStem == folded) {
            isItsOwnStem = true;
        } else if (!foldedStem.isEmpty() && foldedStem.front() == folded.front()) {
            candidates.append(stem);
        }
    }
    if (isItsOwnStem) {
        candidates.removeIf(
            [&](const QString& stem) { return !foldedText.contains(foldCase(stem)); });
    }
    if (candidates.isEmpty()) {
        return {};
    }
    std::sort(candidates.begin(), candidates.end(), [&](const QString& a, const QString& b) {
        const bool aFound = foldedText.contains(foldCase(a));
        const bool bFound = foldedText.contains(foldCase(b));
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
        if (!lemmatizer->usable()) {
            return nullptr;
        }
        loaded.emplace(language, lemmatizer);
        return lemmatizer;
    }
    return nullptr;
}

Lemmatizer::Lemmatizer(const QString& affix, const QString& words)
    : m_hunspell(std::make_unique<Hunspell>(QFile::encodeName(affix).constData(),
                                            QFile::encodeName(words).constData()))
{
    const QByteArray encoding = QByteArray::fromStdString(m_hunspell->get_dict_encoding());
    if (encoding.compare("UTF-8", Qt::CaseInsensitive) != 0) {
        m_encoding = encoding;
    }
}

Lemmatizer::~Lemmatizer() = default;

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
    const QSet<QString> words = distinctWords(tables, fold);
    QSet<QString> foldedText;
    if (!fold) {
        foldedText.reserve(words.size());
        for (const QString& word : words) {
            foldedText.insert(foldCase(word));
        }
    }
    const QSet<QString>& textFolded = fold ? words : foldedText;

    LemmaList lemmas;
    {
        const std::lock_guard lock(m_mutex);
        for (const QString& word : words) {
            const QString stem = chooseStem(word, stemsOf(word), textFolded);
            if (!stem.isEmpty()) {
                lemmas.headwordOf.insert(word, fold ? stem : withCapitalsOf(stem, word));
            }
        }
    }
    // A headword that is itself a form of another (found under found, found under find)
    // gives its forms to that one, so that no form is counted under a form.
    for (auto it = lemmas.headwordOf.begin(); it != lemmas.headwordOf.end(); ++it) {
        for (int step = 0; step < 4; ++step) {
            const auto next = lemmas.headwordOf.constFind(*it);
            if (next == lemmas.headwordOf.cend() || *next == *it) {
                break;
            }
            *it = *next;
        }
    }
    // Each headword the text holds is a form of itself, as a lemma file's line makes it.
    QStringList headwords;
    for (const QString& headword : std::as_const(lemmas.headwordOf)) {
        if (words.contains(headword) && !lemmas.headwordOf.contains(headword)) {
            headwords.append(headword);
        }
    }
    for (const QString& headword : std::as_const(headwords)) {
        lemmas.headwordOf.insert(headword, headword);
    }
    return lemmas;
}

} // namespace tallyvox
