#include "words/WordListRenderer.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/CountFormatter.h"
#include "words/IndexerClient.h"
#include "words/WordOrdering.h"

namespace tallyvox {

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
                                      LineStyle lineStyle, SeparateBy separateBy, bool alphabetical)
{
    const WordTable table = BuildWordTable(context, file);
    std::optional<QStringList> words;
    std::optional<QList<qint64>> counts;
    OrderWords(context.preferences, table, words, counts, alphabetical);

    // The logged number is the total of the counts, so 0 when frequencies are off.
    if (const std::optional<QString> name = CopyFileName(file)) {
        context.desktop.log(QStringLiteral("There are %1 words in \"%2\"")
                                .arg(static_cast<qint32>(SumCounts(counts)))
                                .arg(*name));
    }
    if (!words) {
        return std::nullopt;
    }

    QString result;
    const CountFormatter locale;
    if (!locale.isValid()) {
        return result;
    }

    const bool showCounts = context.preferences.GetIncludeFrequency() && counts.has_value();
    for (qsizetype i = 0; i < words->size(); ++i) {
        result += words->at(i);
        if (showCounts) {
            AppendFrequency(result, *counts, separateBy, locale, i);
        }
        AppendLineSeparator(result, lineStyle);
    }
    return result;
}

} // namespace tallyvox
