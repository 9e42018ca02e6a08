#include "words/ListFormats.h"

#include "words/WordOrdering.h"

namespace tallyvox {

namespace {

QByteArray countField(qint64 count)
{
    const std::optional<qint32> value = countToInt32(count);
    return value ? QByteArray::number(*value) : QByteArray();
}

} // namespace

bool startsLikeFormula(QStringView text)
{
    if (text.isEmpty()) {
        return false;
    }
    switch (text.front().unicode()) {
    case '=':
    case '+':
    case '-':
    case '@':
    case '\t':
    case '\r':
        return true;
    default:
        return false;
    }
}

QString csvField(QStringView text)
{
    // A spreadsheet takes a cell that starts like a formula for one ("@SUM(...)", "=1+1"):
    // a leading apostrophe makes it text, as OWASP advises for CSV injection.
    QString guarded =
        startsLikeFormula(text) ? QStringLiteral("'") + text.toString() : text.toString();
    const bool quoted = text.contains(QLatin1Char(',')) || text.contains(QLatin1Char('"')) ||
                        text.contains(QLatin1Char('\r')) || text.contains(QLatin1Char('\n'));
    if (!quoted) {
        return guarded;
    }
    QString field = guarded;
    field.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + field + QLatin1Char('"');
}

QString tsvField(QStringView text)
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

QByteArray renderTabularList(ListFormat format, const WordOrder& words, const WordOrder* counts,
                             const LemmaForms* forms)
{
    const bool csv = format == ListFormat::Csv;
    const char* columnSeparator = csv ? "," : "\t";
    const char* rowEnd = csv ? "\r\n" : "\n";
    QByteArray text = "word";
    if (counts) {
        text += columnSeparator;
        text += "count";
    }
    if (forms) {
        text += columnSeparator;
        text += "forms";
    }
    text += rowEnd;
    for (qsizetype i = 0; i < words.size(); ++i) {
        text += (csv ? csvField(words.word(i)) : tsvField(words.word(i))).toUtf8();
        if (counts) {
            text += columnSeparator;
            if (i < counts->size()) {
                text += countField(counts->count(i));
            }
        }
        if (forms) {
            text += columnSeparator;
            if (const auto it = forms->constFind(words.word(i).toString()); it != forms->cend()) {
                const QString cell = describeForms(*it);
                text += (csv ? csvField(cell) : tsvField(cell)).toUtf8();
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
