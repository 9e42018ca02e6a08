#include "words/WordListRenderer.h"

#include "words/CorpusList.h"
#include "words/CountFormatter.h"
#include "words/DictionaryOrder.h"
#include "words/ListFormats.h"
#include "words/WordOrdering.h"
#include "words/WordTableShaping.h"

namespace tallyvox {

namespace {

// A word as UTF-8. Most are ASCII, which is narrowed here; the rest are encoded by Qt,
// so that a lone surrogate is written as it always was.
void appendWord(QByteArray& text, QStringView word)
{
    const char16_t* units = word.utf16();
    const qsizetype length = word.size();
    char16_t high = 0;
    for (qsizetype i = 0; i < length; ++i) {
        high |= units[i];
    }
    if (high >= 0x80) {
        text += word.toUtf8();
        return;
    }
    const qsizetype at = text.size();
    text.resize(at + length);
    char* out = text.data() + at;
    for (qsizetype i = 0; i < length; ++i) {
        out[i] = static_cast<char>(units[i]);
    }
}

// The design's text: word, count, separator, for every word, straight into UTF-8.
QByteArray renderText(const WordOrder& words, const WordOrder* counts, LineStyle lineStyle,
                      SeparateBy separateBy, const CountFormatter& locale)
{
    QByteArray result;
    qsizetype units = 0;
    for (qsizetype i = 0; i < words.size(); ++i) {
        units += words.word(i).size();
    }
    // ASCII words with a short count each: the common case fits without growing.
    result.reserve(units + words.size() * (counts ? 10 : 2));
    for (qsizetype i = 0; i < words.size(); ++i) {
        appendWord(result, words.word(i));
        if (counts) {
            AppendFrequency(result, *counts, separateBy, locale, i);
        }
        AppendLineSeparator(result, lineStyle);
    }
    return result;
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
    switch (lineStyle) {
    case LineStyle::LineFeed:
        text += '\n';
        break;
    case LineStyle::CarriageReturn:
        text += '\r';
        break;
    case LineStyle::CarriageReturnLineFeed:
        text += "\r\n";
        break;
    case LineStyle::Space:
        text += ' ';
        break;
    case LineStyle::Comma:
        text += ',';
        break;
    default:
        break;
    }
}

RenderedList renderWordTable(WordTable table, const ListSettings& settings, const QString& subject,
                             const ListSources& sources)
{
    const WordListOptions& options = settings.options;
    if (options.includeRange || options.includePerMillion || sources.reference) {
        return renderCorpusList(std::move(table), settings, subject, sources);
    }
    // The text's side of the totals is that of the table before it is shaped.
    std::optional<HonestTotals> totals;
    if (options.includeTotals) {
        totals = textTotalsOf(table, options);
    }
    shapeWordTable(table, options);
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
        totals->files = sources.files;
    }
    const WordOrder* shownCounts = counts ? &*counts : nullptr;
    if (options.listFormat != ListFormat::Text) {
        QByteArray result = renderTabularList(options.listFormat, *words, shownCounts);
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
    QByteArray result =
        renderText(*words, shownCounts, settings.lineStyle, settings.separateBy, locale);
    if (totals) {
        appendTotals(result, *totals, settings.lineStyle);
    }
    list.text = std::move(result);
    return list;
}

} // namespace tallyvox
