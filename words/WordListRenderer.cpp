#include "words/WordListRenderer.h"

#include "words/CorpusList.h"
#include "words/CountFormatter.h"
#include "words/DictionaryOrder.h"
#include "words/Lemmatizer.h"
#include "words/ListFormats.h"
#include "words/WordOrdering.h"
#include "words/WordTableShaping.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace tallyvox {

namespace {

// The separator after each line.
QByteArrayView lineSeparatorOf(LineStyle lineStyle)
{
    switch (lineStyle) {
    case LineStyle::LineFeed:
        return "\n";
    case LineStyle::CarriageReturn:
        return "\r";
    case LineStyle::CarriageReturnLineFeed:
        return "\r\n";
    case LineStyle::Space:
        return " ";
    case LineStyle::Comma:
        return ",";
    default:
        return {};
    }
}

// Appends through a pointer into room made ahead, rather than a call into QByteArray for
// every piece of every line: a list of millions of words is millions of pieces.
class ListText {
public:
    explicit ListText(qsizetype expected)
    {
        m_text.resize(expected);
        adviseHugePages(m_text.data(), std::size_t(m_text.size()));
    }

    // Room for n more bytes, which the caller fills and then commits.
    char* room(qsizetype n)
    {
        if (m_text.size() - m_used < n) {
            m_text.resize(std::max(m_used + n, m_text.size() + m_text.size() / 2));
        }
        return m_text.data() + m_used;
    }
    void commit(qsizetype n) { m_used += n; }
    void append(QByteArrayView bytes)
    {
        if (bytes.isEmpty()) {
            return;
        }
        std::memcpy(room(bytes.size()), bytes.data(), std::size_t(bytes.size()));
        commit(bytes.size());
    }
    QByteArray take()
    {
        m_text.resize(m_used);
        return std::move(m_text);
    }

private:
    QByteArray m_text;
    qsizetype m_used = 0;
};

// A word as UTF-8. Most are ASCII, which is narrowed here; the rest are encoded by Qt,
// so that a lone surrogate is written as it always was.
void appendWord(ListText& text, QStringView word)
{
    const char16_t* units = word.utf16();
    const qsizetype length = word.size();
    char16_t high = 0;
    for (qsizetype i = 0; i < length; ++i) {
        high |= units[i];
    }
    if (high >= 0x80) {
        text.append(word.toUtf8());
        return;
    }
    char* out = text.room(length);
    for (qsizetype i = 0; i < length; ++i) {
        out[i] = static_cast<char>(units[i]);
    }
    text.commit(length);
}

// A lemma group's forms after its count: " {went 4, goes 3}"; nothing for another entry.
void appendForms(ListText& text, const LemmaForms& forms, QStringView word)
{
    if (const auto it = forms.constFind(word.toString()); it != forms.cend()) {
        text.append(" {" + describeForms(*it).toUtf8() + '}');
    }
}

// The plain text list: word, count, separator, for every word, straight into UTF-8.
// A lemma group's forms follow its count in braces.
QByteArray renderText(const WordOrder& words, const WordOrder* counts, LineStyle lineStyle,
                      SeparateBy separateBy, const CountFormatter& locale, const LemmaForms* forms)
{
    qsizetype units = 0;
    for (qsizetype i = 0; i < words.size(); ++i) {
        units += words.word(i).size();
    }
    // ASCII words with a short count each: the common case fits without growing.
    ListText result(units + words.size() * (counts ? 10 : 2));
    const QByteArrayView separator = lineSeparatorOf(lineStyle);
    // Counts the locale writes in ASCII digits are written here; others as AppendFrequency
    // writes them.
    const bool plainCounts = counts && locale.writesAsciiDigits() &&
                             (separateBy == SeparateBy::Parentheses ||
                              separateBy == SeparateBy::Tab || separateBy == SeparateBy::Comma);
    const char opening = separateBy == SeparateBy::Tab ? '\t' : ',';
    QByteArray frequency;
    for (qsizetype i = 0; i < words.size(); ++i) {
        appendWord(result, words.word(i));
        if (counts) {
            const std::optional<qint32> value = countToInt32(counts->count(i));
            if (plainCounts && value && *value >= 0) {
                // " (" and ")", or one separator, around at most ten digits.
                char* out = result.room(16);
                char* at = out;
                if (separateBy == SeparateBy::Parentheses) {
                    *at++ = ' ';
                    *at++ = '(';
                } else {
                    *at++ = opening;
                }
                at = std::to_chars(at, out + 15, *value).ptr;
                if (separateBy == SeparateBy::Parentheses) {
                    *at++ = ')';
                }
                result.commit(at - out);
            } else {
                frequency.clear();
                AppendFrequency(frequency, *counts, separateBy, locale, i);
                result.append(frequency);
            }
        }
        if (forms) {
            appendForms(result, *forms, words.word(i));
        }
        result.append(separator);
    }
    return result.take();
}

} // namespace

std::optional<QString> FormatCount(qint32 value, const CountFormatter& locale)
{
    return locale.format(value);
}

void AppendFrequency(QByteArray& text, const WordOrder& counts, SeparateBy separateBy,
                     const CountFormatter& locale, qsizetype index)
{
    if (index < 0 || index >= counts.size()) {
        return;
    }
    const std::optional<qint32> value = countToInt32(counts.count(index));
    if (!value) {
        return;
    }
    const qsizetype before = text.size();
    switch (separateBy) {
    case SeparateBy::Parentheses:
        text += " (";
        break;
    case SeparateBy::Tab:
        text += '\t';
        break;
    case SeparateBy::Comma:
        text += ',';
        break;
    default:
        return;
    }
    if (!locale.appendUtf8(text, *value)) {
        text.truncate(before);
        return;
    }
    if (separateBy == SeparateBy::Parentheses) {
        text += ')';
    }
}

void AppendLineSeparator(QByteArray& text, LineStyle lineStyle)
{
    text.append(lineSeparatorOf(lineStyle));
}

RenderedList renderWordTable(WordTable table, const ListSettings& given, const QString& subject,
                             const ListSources& sources)
{
    // A dictionary's groups are made from this list's words (and its reference's), and
    // from then on are a lemma file's.
    std::optional<ListSettings> lemmatized;
    if (given.options.lemmatizer && !given.options.lemmas) {
        lemmatized = given;
        lemmatized->options.lemmas =
            std::make_shared<const LemmaList>(given.options.lemmatizer->lemmasOf(
                {&table, sources.reference.get()}, given.options.foldCase));
    }
    const ListSettings& settings = lemmatized ? *lemmatized : given;
    const WordListOptions& options = settings.options;
    if (options.includeRange || options.includePerMillion || sources.reference) {
        return renderCorpusList(std::move(table), settings, subject, sources);
    }
    // The text's side of the totals is that of the table before it is shaped.
    std::optional<HonestTotals> totals;
    if (options.includeTotals) {
        totals = textTotalsOf(table, options, sources);
    }
    LemmaForms forms;
    shapeWordTable(table, options, &forms);
    const LemmaForms* shownForms = options.lemmas ? &forms : nullptr;
    std::optional<DictionaryOrder> dictionary;
    if (options.dictionaryOrder) {
        dictionary.emplace(collationLocaleOfEnvironment());
    }
    std::optional<WordOrder> words;
    std::optional<WordOrder> counts;
    OrderWords(settings.includeFrequency, table, words, counts, settings.alphabetical,
               dictionary ? &*dictionary : nullptr);

    RenderedList list;
    // The logged number is the total of the counts, so 0 when frequencies are off.
    if (!subject.isEmpty()) {
        list.logLines.append(QStringLiteral("There are %1 words in %2")
                                 .arg(static_cast<qint32>(SumCounts(counts)))
                                 .arg(subject));
    }
    if (!words) {
        return list;
    }

    if (totals) {
        const ListTotals listed = totalsOf(table);
        totals->listedWords = listed.words;
        totals->listedDistinct = listed.distinctWords;
    }
    const WordOrder* shownCounts = counts ? &*counts : nullptr;
    if (options.listFormat != ListFormat::Text) {
        QByteArray result = renderTabularList(options.listFormat, *words, shownCounts, shownForms);
        if (totals) {
            result += totalsRows(*totals, options.listFormat);
            if (options.listFormat == ListFormat::Csv && !subject.isEmpty()) {
                list.logLines.append(
                    QStringLiteral("Totals of %1: %2").arg(subject, describeHonestTotals(*totals)));
            }
        }
        list.text = std::move(result);
        return list;
    }

    const CountFormatter locale;
    if (!locale.isValid()) {
        list.text = QByteArray();
        return list;
    }
    QByteArray result = renderText(*words, shownCounts, settings.lineStyle, settings.separateBy,
                                   locale, shownForms);
    if (totals) {
        appendTotals(result, *totals, settings.lineStyle);
    }
    list.text = std::move(result);
    return list;
}

} // namespace tallyvox
