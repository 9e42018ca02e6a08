#include "words/ListFormats.h"

namespace tallyvox {

namespace {

QString countField(qint64 count)
{
    const std::optional<qint32> value = countToInt32(count);
    return value ? QString::number(*value) : QString();
}

} // namespace

QString csvField(const QString& text)
{
    const bool quoted = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) ||
                        text.contains(QLatin1Char('\r')) || text.contains(QLatin1Char('\n'));
    if (!quoted) {
        return text;
    }
    QString field = text;
    field.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + field + QLatin1Char('"');
}

QString tsvField(const QString& text)
{
    QString field;
    field.reserve(text.size());
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '\\':
            field += QLatin1String("\\\\");
            break;
        case '\t':
            field += QLatin1String("\\t");
            break;
        case '\r':
            field += QLatin1String("\\r");
            break;
        case '\n':
            field += QLatin1String("\\n");
            break;
        default:
            field += c;
            break;
        }
    }
    return field;
}

QString renderTabularList(ListFormat format, const QStringList& words, const QList<qint64>* counts)
{
    const bool csv = format == ListFormat::Csv;
    const QLatin1String columnSeparator(csv ? "," : "\t");
    const QLatin1String rowEnd(csv ? "\r\n" : "\n");
    QString text = QLatin1String("word");
    if (counts) {
        text += columnSeparator + QLatin1String("count");
    }
    text += rowEnd;
    for (qsizetype i = 0; i < words.size(); ++i) {
        text += csv ? csvField(words[i]) : tsvField(words[i]);
        if (counts) {
            text += columnSeparator;
            if (i < counts->size()) {
                text += countField(counts->at(i));
            }
        }
        text += rowEnd;
    }
    return text;
}

ListTotals totalsOf(const WordTable& table)
{
    ListTotals totals;
    totals.distinctWords = table.size();
    for (const qint64 count : table) {
        totals.words += countToInt32(count).value_or(0);
    }
    return totals;
}

QString describeTotals(const ListTotals& totals)
{
    const double ratio = totals.words > 0 ? static_cast<double>(totals.distinctWords) /
                                                static_cast<double>(totals.words)
                                          : 0.0;
    return QStringLiteral("%1 words, %2 distinct words, type/token ratio %3")
        .arg(totals.words)
        .arg(totals.distinctWords)
        .arg(QString::number(ratio, 'f', 4));
}

QString totalsLine(const ListTotals& totals)
{
    return QLatin1String("# ") + describeTotals(totals);
}

} // namespace tallyvox
