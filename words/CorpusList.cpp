#include "words/CorpusList.h"

#include "words/CorpusStatistics.h"
#include "words/CountFormatter.h"
#include "words/DictionaryOrder.h"
#include "words/ListFormats.h"
#include "words/WordListRenderer.h"
#include "words/WordOrdering.h"
#include "words/WordSpread.h"
#include "words/WordTableShaping.h"

#include <algorithm>

namespace tallyvox {

namespace {

// One entry of the list, kept small since a keyword list has one for every word of
// either side: where it stands in the files' table (which the dispersion was taken of) and
// in the reference's, -1 where it is not.
struct Row {
    qint32 entry = -1;
    qint32 referenceEntry = -1;
    double g2 = 0;
    bool more = false;
};

// An entry as written: the word, its counts and its figures.
struct Entry {
    QStringView word;
    /// In the files (0 for a word only the reference has), and in the reference.
    qint64 count = 0;
    qint64 referenceCount = 0;
    qsizetype entry = -1;
    double g2 = 0;
    double ratio = 0;
    bool more = false;
};

// The two tables a list's rows point into, and the sizes of the two sides.
struct Sides {
    const WordTable& files;
    const WordTable* reference = nullptr;
    double fileWords = 0;
    double referenceWords = 0;

    Entry entryOf(const Row& row) const;
};

// Which columns a list has, in the order they are written.
struct Columns {
    bool count = false;
    bool range = false;
    bool perMillion = false;
    bool keyness = false;
};

qint64 writtenCount(qint64 count)
{
    return countToInt32(count).value_or(0);
}

Entry Sides::entryOf(const Row& row) const
{
    Entry entry;
    entry.entry = row.entry;
    if (row.entry >= 0) {
        entry.word = files.word(row.entry);
        entry.count = files.count(row.entry);
    }
    if (reference && row.referenceEntry >= 0) {
        entry.word = reference->word(row.referenceEntry);
        entry.referenceCount = reference->count(row.referenceEntry);
    }
    if (reference) {
        entry.g2 = row.g2;
        entry.more = row.more;
        entry.ratio =
            logRatio(double(writtenCount(entry.count)), double(writtenCount(entry.referenceCount)),
                     fileWords, referenceWords);
    }
    return entry;
}

// The rows of an ordinary list: its words in the list's order.
std::vector<Row> ordinaryRows(const WordTable& table, const ListSettings& settings,
                              const DictionaryOrder* dictionary)
{
    std::optional<WordOrder> words;
    std::optional<WordOrder> counts;
    OrderWords(settings.includeFrequency, table, words, counts, settings.alphabetical, dictionary);
    std::vector<Row> rows;
    if (!words) {
        return rows;
    }
    rows.reserve(std::size_t(words->size()));
    for (qsizetype i = 0; i < words->size(); ++i) {
        Row row;
        row.entry = qint32(words->tableIndex(i));
        rows.push_back(row);
    }
    return rows;
}

// The rows of a keyword list: every word of either side (a word the files never use is
// the clearest case of one they use less), kept from the threshold up, those the files use
// more first, each side by falling G2. files holds every word the files kept before the
// minimum, which then leaves out a word the files use too seldom on either side.
std::vector<Row> keywordRows(const Sides& sides, const WordListOptions& options)
{
    const WordTable& files = sides.files;
    const WordTable& reference = *sides.reference;
    std::vector<Row> rows;
    const auto keep = [&](Row row, qint64 count, qint64 referenceCount) {
        const auto a = double(writtenCount(count));
        const auto b = double(writtenCount(referenceCount));
        row.g2 = logLikelihood(a, b, sides.fileWords, sides.referenceWords);
        if (!(row.g2 >= options.keynessThreshold)) {
            return;
        }
        row.more = moreFrequent(a, b, sides.fileWords, sides.referenceWords);
        rows.push_back(row);
    };
    const qint64 minimum = options.minimumCount;
    qsizetype i = 0;
    qsizetype j = 0;
    // Both tables are in code-unit order: one walk pairs them.
    while (i < files.size() || j < reference.size()) {
        const int order = i >= files.size() ? 1
                          : j >= reference.size()
                              ? -1
                              : CompareWordsAlphabetically(files.word(i), reference.word(j));
        Row row;
        if (order > 0) {
            row.referenceEntry = qint32(j++);
            keep(row, 0, reference.count(row.referenceEntry));
            continue;
        }
        row.entry = qint32(i++);
        qint64 referenceCount = 0;
        if (order == 0) {
            row.referenceEntry = qint32(j++);
            referenceCount = reference.count(row.referenceEntry);
        }
        if (files.count(row.entry) >= minimum) {
            keep(row, files.count(row.entry), referenceCount);
        }
    }
    std::stable_sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        if (a.more != b.more) {
            return a.more;
        }
        return a.g2 > b.g2;
    });
    return rows;
}

// How a row's cells are written: framed as the text frames the count, or as table fields.
struct Frame {
    const char* before;
    const char* after;
    /// What a cell without a value shows.
    const char* missing;
};

// The cells of a row after the word, in column order, straight into the list's text.
class CellMaker {
public:
    CellMaker(const Columns& columns, const WordSpread* spread, const WordTable& table, bool folded,
              const LemmaList* lemmas, double textWords)
        : m_columns(columns), m_textWords(textWords)
    {
        if (columns.range && spread && spread->files() > 1) {
            m_sums = spread->dispersionOf(table, folded, lemmas);
            m_parts = spread->parts();
        }
    }

    /// appendCount(text, count) appends a count's digits, false when it has none.
    template <typename AppendCount>
    void cells(QByteArray& text, const Entry& row, const Frame& frame,
               const AppendCount& appendCount) const
    {
        const auto cell = [&](const auto& append) {
            text += frame.before;
            if (!append()) {
                text += frame.missing;
            }
            text += frame.after;
        };
        const auto count = [&](qint64 value) { cell([&] { return appendCount(text, value); }); };
        const auto figure = [&](std::optional<double> value) {
            cell([&] {
                if (value) {
                    appendFigure(text, *value);
                }
                return value.has_value();
            });
        };
        const auto literal = [&](const QByteArray& value) {
            cell([&] {
                text += value;
                return true;
            });
        };
        if (m_columns.count) {
            count(row.count);
        }
        if (m_columns.range) {
            const DispersionSums& sums = dispersionOf(row);
            literal(QByteArray::number(sums.range));
            figure(juillandD(sums, m_parts));
            figure(deviationOfProportions(sums, m_parts));
        }
        if (m_columns.perMillion) {
            const std::optional<qint32> written = countToInt32(row.count);
            figure(written ? perMillion(*written, m_textWords) : std::nullopt);
        }
        if (m_columns.keyness) {
            count(row.referenceCount);
            figure(row.g2);
            figure(row.ratio);
            literal(QByteArray(row.more ? "+" : "-"));
        }
    }

private:
    // Of one file, the range is 1 for every word it lists, and one part spreads nothing:
    // m_parts stays 0, which the measures answer with nothing.
    DispersionSums dispersionOf(const Entry& row) const
    {
        if (m_sums.empty()) {
            DispersionSums single;
            single.range = writtenCount(row.count) > 0 ? 1 : 0;
            return single;
        }
        return row.entry >= 0 ? m_sums[std::size_t(row.entry)] : DispersionSums();
    }

    Columns m_columns;
    double m_textWords;
    std::vector<DispersionSums> m_sums;
    qint64 m_parts = 0;
};

QByteArray header(const Columns& columns, const char* separator)
{
    QByteArrayList names{"word"};
    if (columns.count) {
        names << "count";
    }
    if (columns.range) {
        names << "range"
              << "juilland d"
              << "dp";
    }
    if (columns.perMillion) {
        names << "per million";
    }
    if (columns.keyness) {
        names << "reference count"
              << "log-likelihood"
              << "log ratio"
              << "sign";
    }
    return names.join(separator);
}

QByteArray renderTable(const std::vector<Row>& rows, const Sides& sides, const Columns& columns,
                       const CellMaker& cells, ListFormat format)
{
    const bool csv = format == ListFormat::Csv;
    const char* separator = csv ? "," : "\t";
    const char* rowEnd = csv ? "\r\n" : "\n";
    QByteArray text = header(columns, separator) + rowEnd;
    const Frame frame{separator, "", ""};
    const auto appendCount = [](QByteArray& out, qint64 value) {
        const std::optional<qint32> written = countToInt32(value);
        if (written) {
            out += QByteArray::number(*written);
        }
        return written.has_value();
    };
    for (const Row& stored : rows) {
        const Entry entry = sides.entryOf(stored);
        text += (csv ? csvField(entry.word) : tsvField(entry.word)).toUtf8();
        cells.cells(text, entry, frame, appendCount);
        text += rowEnd;
    }
    return text;
}

QByteArray renderText(const std::vector<Row>& rows, const Sides& sides, const CellMaker& cells,
                      const ListSettings& settings, const CountFormatter& locale)
{
    // The text's counts keep the locale's digits, as they do without the figures.
    const auto appendCount = [&locale](QByteArray& out, qint64 value) {
        const std::optional<qint32> written = countToInt32(value);
        return written && locale.appendUtf8(out, *written);
    };
    std::optional<Frame> frame;
    switch (settings.separateBy) {
    case SeparateBy::Parentheses:
        frame = Frame{" (", ")", "-"};
        break;
    case SeparateBy::Tab:
        frame = Frame{"\t", "", "-"};
        break;
    case SeparateBy::Comma:
        frame = Frame{",", "", "-"};
        break;
    default:
        // A count style that leaves the count out leaves the figures out with it.
        break;
    }
    QByteArray text;
    for (const Row& stored : rows) {
        const Entry entry = sides.entryOf(stored);
        text += entry.word.toUtf8();
        if (frame) {
            cells.cells(text, entry, *frame, appendCount);
        }
        AppendLineSeparator(text, settings.lineStyle);
    }
    return text;
}

// The words in each of the runs the standardised type/token ratio averages over.
constexpr int typeRunLength = 1000;

// The runs' type/token ratios averaged, four decimals with a point; there is at least one.
QByteArray standardisedRatio(const TypeRuns& runs)
{
    return QByteArray::number(double(runs.types) / double(runs.runs * typeRunLength), 'f', 4);
}

// Why a text has no standardised type/token ratio.
const char* noRunsReason(const HonestTotals& totals)
{
    return totals.files > 1 ? "no file has 1000 words" : "fewer than 1000 words";
}

bool endsLines(LineStyle lineStyle)
{
    return lineStyle == LineStyle::LineFeed || lineStyle == LineStyle::CarriageReturn ||
           lineStyle == LineStyle::CarriageReturnLineFeed;
}

} // namespace

HonestTotals textTotalsOf(const WordTable& table, const WordListOptions& options,
                          const ListSources& sources)
{
    HonestTotals totals;
    totals.textWords = totalsOf(table).words;
    totals.textDistinct = table.size();
    totals.files = sources.files;
    if (options.ngramLength <= 1) {
        totals.typeRuns = sources.typeRuns;
        double characters = 0;
        for (qsizetype i = 0; i < table.size(); ++i) {
            const QStringView word = table.word(i);
            // Code points: a surrogate pair is one character.
            qsizetype length = word.size();
            for (qsizetype at = 1; at < word.size(); ++at) {
                if (word[at].isLowSurrogate() && word[at - 1].isHighSurrogate()) {
                    --length;
                }
            }
            characters += double(length) * double(writtenCount(table.count(i)));
        }
        if (totals.textWords > 0) {
            totals.meanWordLength = characters / double(totals.textWords);
        }
    }
    if (options.foldCase) {
        WordTable folded = table;
        WordListOptions foldingOnly;
        foldingOnly.foldCase = true;
        shapeWordTable(folded, foldingOnly);
        totals.textDistinct = folded.size();
    }
    return totals;
}

QString describeHonestTotals(const HonestTotals& totals)
{
    const double ratio =
        totals.textWords > 0 ? double(totals.textDistinct) / double(totals.textWords) : 0.0;
    QString text = QStringLiteral("%1 words in the text, %2 listed; %3 distinct words, %4 "
                                  "listed; type/token ratio %5")
                       .arg(totals.textWords)
                       .arg(totals.listedWords)
                       .arg(totals.textDistinct)
                       .arg(totals.listedDistinct)
                       .arg(QString::number(ratio, 'f', 4));
    if (totals.typeRuns) {
        if (totals.typeRuns->runs > 0) {
            text += QStringLiteral("; standardised type/token ratio %1 (runs of %2 words)")
                        .arg(QString::fromLatin1(standardisedRatio(*totals.typeRuns)))
                        .arg(typeRunLength);
        } else {
            text += QStringLiteral("; no standardised type/token ratio (%1)")
                        .arg(QLatin1String(noRunsReason(totals)));
        }
    }
    if (totals.meanWordLength) {
        text += QStringLiteral("; mean word length %1 characters")
                    .arg(QString::number(*totals.meanWordLength, 'f', 4));
    }
    if (totals.files > 1) {
        text += QStringLiteral("; %1 files").arg(totals.files);
    }
    if (totals.referenceWords) {
        text += QStringLiteral("; %1 words in the reference").arg(*totals.referenceWords);
    }
    return text;
}

QByteArray totalsRows(const HonestTotals& totals, ListFormat format)
{
    const bool csv = format == ListFormat::Csv;
    const QByteArray separator = csv ? "," : "\t";
    const QByteArray rowEnd = csv ? "\r\n" : "\n";
    const double ratio =
        totals.textWords > 0 ? double(totals.textDistinct) / double(totals.textWords) : 0.0;
    QByteArray text = rowEnd;
    const auto row = [&](const char* name, const QByteArray& value) {
        text += "# " + QByteArray(name) + separator + value + rowEnd;
    };
    row("words in the text", QByteArray::number(totals.textWords));
    row("words listed", QByteArray::number(totals.listedWords));
    row("distinct words in the text", QByteArray::number(totals.textDistinct));
    row("distinct words listed", QByteArray::number(totals.listedDistinct));
    row("type/token ratio", QByteArray::number(ratio, 'f', 4));
    if (totals.typeRuns) {
        const QByteArray name = "standardised type/token ratio (runs of " +
                                QByteArray::number(typeRunLength) + " words)";
        row(name.constData(), totals.typeRuns->runs > 0
                                  ? standardisedRatio(*totals.typeRuns)
                                  : "none (" + QByteArray(noRunsReason(totals)) + ')');
    }
    if (totals.meanWordLength) {
        row("mean word length (characters)", QByteArray::number(*totals.meanWordLength, 'f', 4));
    }
    if (totals.files > 1) {
        row("files", QByteArray::number(totals.files));
    }
    if (totals.referenceWords) {
        row("words in the reference", QByteArray::number(*totals.referenceWords));
    }
    return text;
}

RenderedList renderCorpusList(WordTable table, const ListSettings& settings, const QString& subject,
                              const ListSources& sources)
{
    const WordListOptions& options = settings.options;
    HonestTotals totals = textTotalsOf(table, options, sources);
    const bool keywords = sources.reference != nullptr;
    Columns columns;
    columns.count = settings.includeFrequency || keywords;
    columns.range = options.includeRange;
    columns.perMillion = options.includePerMillion;
    columns.keyness = keywords;

    // The rows point into both tables, which stay until the rows are written.
    WordTable shapedReference;
    Sides sides{table};
    sides.fileWords = double(totals.textWords);
    std::vector<Row> rows;
    if (keywords) {
        // The minimum is the walk's to apply, so that a word it leaves out of the files
        // does not come back from the reference with a count of 0.
        WordListOptions shaping = options;
        shaping.minimumCount = 1;
        shapeWordTable(table, shaping);
        totals.referenceWords = totalsOf(*sources.reference).words;
        sides.reference = sources.reference.get();
        // A reference as large as the files is not copied unless something changes it.
        if (!shaping.keepsEveryWord()) {
            shapedReference = *sources.reference;
            shapeWordTable(shapedReference, shaping);
            sides.reference = &shapedReference;
        }
        sides.referenceWords = double(*totals.referenceWords);
        rows = keywordRows(sides, options);
    } else {
        shapeWordTable(table, options);
        std::optional<DictionaryOrder> dictionary;
        if (options.dictionaryOrder) {
            dictionary.emplace(collationLocaleOfEnvironment());
        }
        rows = ordinaryRows(table, settings, dictionary ? &*dictionary : nullptr);
    }
    totals.listedDistinct = qint64(rows.size());
    for (const Row& row : rows) {
        totals.listedWords += row.entry >= 0 ? writtenCount(table.count(row.entry)) : 0;
    }

    RenderedList list;
    if (!subject.isEmpty()) {
        list.logLines.append(QStringLiteral("There are %1 words in %2")
                                 .arg(columns.count ? totals.listedWords : 0)
                                 .arg(subject));
    }
    if (rows.empty()) {
        return list;
    }
    const CellMaker cells(columns, sources.spread, table, options.foldCase, options.lemmas.get(),
                          double(totals.textWords));
    if (options.listFormat != ListFormat::Text) {
        QByteArray text = renderTable(rows, sides, columns, cells, options.listFormat);
        if (options.includeTotals) {
            text += totalsRows(totals, options.listFormat);
            if (options.listFormat == ListFormat::Csv && !subject.isEmpty()) {
                list.logLines.append(
                    QStringLiteral("Totals of %1: %2").arg(subject, describeHonestTotals(totals)));
            }
        }
        list.text = std::move(text);
        return list;
    }
    const CountFormatter locale;
    if (!locale.isValid()) {
        list.text = QByteArray();
        return list;
    }
    QByteArray text = renderText(rows, sides, cells, settings, locale);
    if (options.includeTotals) {
        appendTotals(text, totals, settings.lineStyle);
    }
    list.text = std::move(text);
    return list;
}

void appendTotals(QByteArray& text, const HonestTotals& totals, LineStyle lineStyle)
{
    const QByteArray line = "# " + describeHonestTotals(totals).toUtf8();
    if (endsLines(lineStyle)) {
        text += line;
        AppendLineSeparator(text, lineStyle);
    } else {
        text += '\n' + line + '\n';
    }
}

} // namespace tallyvox
