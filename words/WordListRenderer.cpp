#include "words/WordListRenderer.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/CountFormatter.h"
#include "words/DictionaryOrder.h"
#include "words/IndexerClient.h"
#include "words/ListFormats.h"
#include "words/WordOrdering.h"
#include "words/WordTableShaping.h"

namespace tallyvox {

namespace {

bool endsLines(LineStyle lineStyle)
{
    return lineStyle == LineStyle::LineFeed || lineStyle == LineStyle::CarriageReturn ||
           lineStyle == LineStyle::CarriageReturnLineFeed;
}

// The totals go on a line of their own, ended as the list's lines are; a list whose words
// are not on lines gets line feeds around it.
void appendTotalsLine(QString& text, const ListTotals& totals, LineStyle lineStyle)
{
    if (endsLines(lineStyle)) {
        text += totalsLine(totals);
        AppendLineSeparator(text, lineStyle);
    } else {
        text += QLatin1Char('\n') + totalsLine(totals) + QLatin1Char('\n');
    }
}

// The design's text: word, count, separator, for every word.
QString renderText(const QStringList& words, const QList<qint64>* counts, LineStyle lineStyle,
                   SeparateBy separateBy, const CountFormatter& locale)
{
    QString result;
    for (qsizetype i = 0; i < words.size(); ++i) {
        result += words.at(i);
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

void AppendFrequency(QString& text, const QList<qint64>& counts, SeparateBy separateBy,
                     const CountFormatter& locale, qsizetype index)
{
    if (index < 0 || index >= counts.size()) {
        return;
    }
    const std::optional<qint32> value = countToInt32(counts[index]);
    if (!value) {
        return;
    }
    const std::optional<QString> formatted = FormatCount(*value, locale);
    if (!formatted) {
        return;
    }
    switch (separateBy) {
    case SeparateBy::Parentheses:
        text += QLatin1String(" (") + *formatted + QLatin1Char(')');
        break;
    case SeparateBy::Tab:
        text += QLatin1Char('\t') + *formatted;
        break;
    case SeparateBy::Comma:
        text += QLatin1Char(',') + *formatted;
        break;
    default:
        break;
    }
}

void AppendLineSeparator(QString& text, LineStyle lineStyle)
{
    switch (lineStyle) {
    case LineStyle::LineFeed:
        text += QLatin1Char('\n');
        break;
    case LineStyle::CarriageReturn:
        text += QLatin1Char('\r');
        break;
    case LineStyle::CarriageReturnLineFeed:
        text += QLatin1String("\r\n");
        break;
    case LineStyle::Space:
        text += QLatin1Char(' ');
        break;
    case LineStyle::Comma:
        text += QLatin1Char(',');
        break;
    default:
        break;
    }
}

std::optional<QString> RenderWordList(const WordContext& context, const FileRef& file,
                                      LineStyle lineStyle, SeparateBy separateBy, bool alphabetical,
                                      const WordListOptions& options)
{
    WordTable table = BuildWordTable(context, file);
    const std::optional<QString> name = CopyFileName(file);
    const QString subject = name ? QLatin1Char('"') + *name + QLatin1Char('"') : QString();
    return renderWordTable(context, std::move(table), subject, lineStyle, separateBy, alphabetical,
                           options);
}

std::optional<QString> renderWordTable(const WordContext& context, WordTable table,
                                       const QString& subject, LineStyle lineStyle,
                                       SeparateBy separateBy, bool alphabetical,
                                       const WordListOptions& options)
{
    shapeWordTable(table, options);
    std::optional<DictionaryOrder> dictionary;
    if (options.dictionaryOrder) {
        dictionary.emplace(collationLocaleOfEnvironment());
    }
    std::optional<QStringList> words;
    std::optional<QList<qint64>> counts;
    OrderWords(context.preferences, table, words, counts, alphabetical,
               dictionary ? &*dictionary : nullptr);

    // The logged number is the total of the counts, so 0 when frequencies are off.
    if (!subject.isEmpty()) {
        context.desktop.log(QStringLiteral("There are %1 words in %2")
                                .arg(static_cast<qint32>(SumCounts(counts)))
                                .arg(subject));
    }
    if (!words) {
        return std::nullopt;
    }

    const bool showCounts = context.preferences.GetIncludeFrequency() && counts.has_value();
    const QList<qint64>* shownCounts = showCounts ? &*counts : nullptr;
    if (options.listFormat != ListFormat::Text) {
        QString result = renderTabularList(options.listFormat, *words, shownCounts);
        if (options.includeTotals && options.listFormat == ListFormat::Tsv) {
            result += totalsLine(totalsOf(table)) + QLatin1Char('\n');
        } else if (options.includeTotals && !subject.isEmpty()) {
            // A CSV row of totals would be read as a word.
            context.desktop.log(
                QStringLiteral("Totals of %1: %2").arg(subject, describeTotals(totalsOf(table))));
        }
        return result;
    }

    const CountFormatter locale;
    if (!locale.isValid()) {
        return QString();
    }
    QString result = renderText(*words, shownCounts, lineStyle, separateBy, locale);
    if (options.includeTotals) {
        appendTotalsLine(result, totalsOf(table), lineStyle);
    }
    return result;
}

} // namespace tallyvox
