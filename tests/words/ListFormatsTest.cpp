#include "words/ListFormats.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordListRenderer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// Words the indexer does make (3,000 and a Hebrew acronym with its quote), and words no
// document should give, which the formats must carry all the same.
const WordTable awkwardWords{
    {u"3,000"_s, 4},       {u"\u05e6\u05d4\"\u05dc"_s, 3},
    {u"say \"hi\""_s, 2},  {u"two\nlines"_s, 1},
    {u"cr\rlf\r\n"_s, 1},  {u"tab\there"_s, 1},
    {u"back\\slash"_s, 1}, {u"plain"_s, 5},
    {u"\u00fcber"_s, 6},   {u"odd"_s, unreadableCount},
    {u"@SUM(1,2)"_s, 1},
};

struct World {
    testing::TestEnvironment env;
    PreferenceStore prefs;
    /// What the last list left for the log.
    QStringList logLines;

    /// The list of table as the store's settings and options make it.
    QString render(const WordTable& table, const WordListOptions& options)
    {
        ListSettings settings = ListSettings::read(prefs);
        settings.options = options;
        RenderedList list = renderWordTable(table, settings, u"\"list\""_s);
        logLines = list.logLines;
        return list.text ? QString::fromUtf8(*list.text) : u"<nothing>"_s;
    }
};

// The rows of a CSV file as Python's csv module reads them.
QJsonArray rowsReadByPython(const QString& path)
{
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s,
                                u"import csv, json, sys\n"
                                u"with open(sys.argv[1], newline='', encoding='utf-8') as f:\n"
                                u"    print(json.dumps(list(csv.reader(f, strict=True))))\n"_s,
                                path});
    if (!python.waitForFinished(10000) || python.exitCode() != 0) {
        return {};
    }
    return QJsonDocument::fromJson(python.readAllStandardOutput()).array();
}

} // namespace

class ListFormatsTest : public QObject {
    Q_OBJECT

private slots:
    // Every option at its default, however it got there, leaves the plain list.
    void defaultOptionsGiveThePlainListExactly_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QVariant>("stored");
        QTest::newRow("nothing stored") << QByteArray() << QVariant();
        QTest::newRow("FoldCase off") << "FoldCase"_ba << QVariant(false);
        QTest::newRow("DictionaryOrder off") << "DictionaryOrder"_ba << QVariant(false);
        QTest::newRow("MinimumCount 1") << "MinimumCount"_ba << QVariant(1);
        QTest::newRow("MinimumCount 0") << "MinimumCount"_ba << QVariant(0);
        QTest::newRow("no stop list") << "StopListPath"_ba << QVariant(QString());
        QTest::newRow("ListFormat 0") << "ListFormat"_ba << QVariant(0);
        QTest::newRow("ListFormat naming no format") << "ListFormat"_ba << QVariant(7);
        QTest::newRow("IncludeTotals off") << "IncludeTotals"_ba << QVariant(false);
        QTest::newRow("IncludeRange off") << "IncludeRange"_ba << QVariant(false);
        QTest::newRow("IncludePerMillion off") << "IncludePerMillion"_ba << QVariant(false);
        QTest::newRow("no reference") << "ReferencePath"_ba << QVariant(QString());
        // Without a reference the threshold has nothing to choose from.
        QTest::newRow("a threshold alone") << "KeynessThreshold"_ba << QVariant(3.84);
        QTest::newRow("NGramLength 1") << "NGramLength"_ba << QVariant(1);
        QTest::newRow("NGramLength naming no length") << "NGramLength"_ba << QVariant(6);
        QTest::newRow("no lemma list") << "LemmaListPath"_ba << QVariant(QString());
    }
    void defaultOptionsGiveThePlainListExactly()
    {
        QFETCH(QByteArray, key);
        QFETCH(QVariant, stored);
        World w;
        if (stored.typeId() == QMetaType::Bool) {
            QVERIFY(w.prefs.writeBool({key.constData(), false}, stored.toBool()));
        } else if (stored.typeId() == QMetaType::Int) {
            QVERIFY(w.prefs.writeInteger({key.constData(), 0}, stored.toInt()));
        } else if (stored.typeId() == QMetaType::QString) {
            QVERIFY(w.prefs.writeString({key.constData(), ""}, stored.toString()));
        } else if (stored.typeId() == QMetaType::Double) {
            QVERIFY(w.prefs.writeReal({key.constData(), 0.0}, stored.toDouble()));
        }
        const WordTable tricky{
            {u"Zebra"_s, 1}, {u"apple"_s, 3},  {u"Apple"_s, 2},  {u"10"_s, 1},
            {u"9"_s, 1},     {u"THE"_s, 1},    {u"The"_s, 4},    {u"the"_s, 1234567},
            {u"SS"_s, 1},    {u"\u00df"_s, 1}, {u"\u00e9"_s, 2}, {u"e\u0301"_s, 1},
            {u"3,000"_s, 2}, {u"x\"y"_s, 1},   {u"nil"_s, 0},    {u"odd"_s, unreadableCount},
        };
        QCOMPARE(w.render(tricky, WordListOptions::read(w.prefs)),
                 u"10 (1)\n3,000 (2)\n9 (1)\nApple (2)\nSS (1)\nTHE (1)\nThe (4)\nZebra (1)\n"
                 u"apple (3)\ne\u0301 (1)\nnil (0)\nodd\nthe (1234567)\nx\"y (1)\n\u00df (1)\n"
                 u"\u00e9 (2)\n"_s);
        QCOMPARE(w.logLines, QStringList{u"There are 1234588 words in \"list\""_s});
    }

    void csvIsReadBackByPython_data()
    {
        QTest::addColumn<bool>("frequency");
        QTest::addColumn<int>("separateBy"); // does not touch CSV
        QTest::newRow("with counts") << true << 1;
        QTest::newRow("without counts") << false << 3;
    }
    void csvIsReadBackByPython()
    {
        QFETCH(bool, frequency);
        QFETCH(int, separateBy);
        if (QStandardPaths::findExecutable(u"python3"_s).isEmpty()) {
            QSKIP("python3 is needed");
        }
        World w;
        w.prefs.writeBool(prefs::IncludeFrequency, frequency);
        w.prefs.writeChoice(prefs::SeparateBy, static_cast<qint16>(separateBy));
        w.prefs.writeChoice(prefs::LineStyle, LineStyle::Space);
        WordListOptions options;
        options.listFormat = ListFormat::Csv;
        options.includeTotals = true; // rows after an empty row, and the log
        const QByteArray bytes = w.render(awkwardWords, options).toUtf8();
        QVERIFY(bytes.startsWith(frequency ? "word,count\r\n" : "word\r\n"));
        QVERIFY(bytes.endsWith("\r\n"));

        QJsonArray expected{frequency ? QJsonArray{u"word"_s, u"count"_s} : QJsonArray{u"word"_s}};
        const QStringList words = awkwardWords.keys();
        for (const QString& word : words) {
            const qint64 count = awkwardWords.value(word);
            const QString field = count == unreadableCount ? QString() : QString::number(count);
            // A spreadsheet shows "'@SUM(1,2)" as the text @SUM(1,2).
            const QString cell = word.startsWith(u'@') ? u"'"_s + word : word;
            expected.append(frequency ? QJsonArray{cell, field} : QJsonArray{cell});
        }
        expected.append(QJsonArray{});
        for (const auto& [name, value] :
             {std::pair{u"words in the text"_s, u"25"_s}, std::pair{u"words listed"_s, u"25"_s},
              std::pair{u"distinct words in the text"_s, u"11"_s},
              std::pair{u"distinct words listed"_s, u"11"_s},
              std::pair{u"type/token ratio"_s, u"0.4400"_s},
              std::pair{u"mean word length (characters)"_s, u"5.6000"_s}}) {
            expected.append(QJsonArray{u"# "_s + name, value});
        }
        QCOMPARE(rowsReadByPython(w.env.writeFile(u"list.csv"_s, bytes)), expected);
        QCOMPARE(w.logLines.last(), u"Totals of \"list\": 25 words in the text, 25 listed; 11 "
                                    u"distinct words, 11 listed; type/token ratio 0.4400; mean "
                                    u"word length 5.6000 characters"_s);
    }

    void fieldsOfEachFormat_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QString>("tsv");
        QTest::newRow("plain") << u"word"_s << u"word"_s << u"word"_s;
        QTest::newRow("comma") << u"3,000"_s << u"\"3,000\""_s << u"3,000"_s;
        QTest::newRow("quote") << u"a\"b"_s << u"\"a\"\"b\""_s << u"a\"b"_s;
        QTest::newRow("line break") << u"a\r\nb"_s << u"\"a\r\nb\""_s << u"a\\r\\nb"_s;
        QTest::newRow("tab and backslash") << u"a\t\\b"_s << u"a\t\\b"_s << u"a\\t\\\\b"_s;
        QTest::newRow("blanks kept") << u" a "_s << u" a "_s << u" a "_s;
        // What a spreadsheet would run as a formula is made text; TSV is no spreadsheet's.
        QTest::newRow("at sign") << u"@SUM(A1)"_s << u"'@SUM(A1)"_s << u"@SUM(A1)"_s;
        QTest::newRow("equals") << u"=1+1"_s << u"'=1+1"_s << u"=1+1"_s;
        QTest::newRow("plus") << u"+1"_s << u"'+1"_s << u"+1"_s;
        QTest::newRow("minus, quoted") << u"-1,2"_s << u"\"'-1,2\""_s << u"-1,2"_s;
        QTest::newRow("tab first") << u"\tx"_s << u"'\tx"_s << u"\\tx"_s;
        QTest::newRow("cr first") << u"\rx"_s << u"\"'\rx\""_s << u"\\rx"_s;
        QTest::newRow("at sign inside") << u"me@x.org"_s << u"me@x.org"_s << u"me@x.org"_s;
    }
    void fieldsOfEachFormat()
    {
        QFETCH(QString, word);
        QFETCH(QString, csv);
        QFETCH(QString, tsv);
        QCOMPARE(csvField(word), csv);
        QCOMPARE(tsvField(word), tsv);
    }

    // The totals line stands on a line of its own at the end, also where the words are
    // not on lines; the text's counts follow the locale, the totals are plain ASCII. CSV and
    // TSV have them as rows after an empty row.
    void totalsEndTheList_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("lineStyle");
        QTest::addColumn<bool>("frequency");
        QTest::addColumn<QString>("expected");
        const QString totals = u"# 6 words in the text, 6 listed; 3 distinct words, 3 listed; "
                               u"type/token ratio 0.5000; mean word length 3.0000 characters"_s;
        const auto rows = [](const char* separator, const char* end) {
            QString text = QString::fromLatin1(end);
            for (const char* row :
                 {"# words in the text|6", "# words listed|6", "# distinct words in the text|3",
                  "# distinct words listed|3", "# type/token ratio|0.5000",
                  "# mean word length (characters)|3.0000"}) {
                text += QString::fromLatin1(row).replace(u'|', QLatin1String(separator)) +
                        QLatin1String(end);
            }
            return text;
        };
        QTest::newRow("text, LF") << 0 << 1 << true
                                  << u"cat (2)\ndog (1)\nthe (3)\n"_s + totals + u"\n"_s;
        QTest::newRow("text, CR LF")
            << 0 << 3 << true << u"cat (2)\r\ndog (1)\r\nthe (3)\r\n"_s + totals + u"\r\n"_s;
        QTest::newRow("text, spaces")
            << 0 << 4 << true << u"cat (2) dog (1) the (3) \n"_s + totals + u"\n"_s;
        QTest::newRow("text, nothing between")
            << 0 << 0 << false << u"catdogthe\n"_s + totals + u"\n"_s;
        QTest::newRow("TSV") << 2 << 3 << true
                             << u"word\tcount\ncat\t2\ndog\t1\nthe\t3\n"_s + rows("\t", "\n");
        QTest::newRow("TSV without counts")
            << 2 << 1 << false << u"word\ncat\ndog\nthe\n"_s + rows("\t", "\n");
        QTest::newRow("CSV") << 1 << 1 << true
                             << u"word,count\r\ncat,2\r\ndog,1\r\nthe,3\r\n"_s + rows(",", "\r\n");
    }
    void totalsEndTheList()
    {
        QFETCH(int, format);
        QFETCH(int, lineStyle);
        QFETCH(bool, frequency);
        QFETCH(QString, expected);
        World w;
        w.prefs.writeChoice(prefs::LineStyle, static_cast<qint16>(lineStyle));
        w.prefs.writeBool(prefs::IncludeFrequency, frequency);
        WordListOptions options;
        options.listFormat = static_cast<ListFormat>(format);
        options.includeTotals = true;
        const WordTable table{{u"the"_s, 3}, {u"cat"_s, 2}, {u"dog"_s, 1}};
        QCOMPARE(w.render(table, options), expected);
    }

    void totalsOfAnyList_data()
    {
        QTest::addColumn<QString>("words"); // counts, one a word; "u": no integer
        QTest::addColumn<QString>("expected");
        QTest::newRow("one word") << u"7"_s
                                  << u"7 words, 1 distinct words, type/token ratio 0.1429"_s;
        QTest::newRow("counts beyond 32 bits are not written, nor added")
            << u"3 u 8589934592"_s << u"3 words, 3 distinct words, type/token ratio 1.0000"_s;
        QTest::newRow("nothing to divide by")
            << u"0"_s << u"0 words, 1 distinct words, type/token ratio 0.0000"_s;
    }
    void totalsOfAnyList()
    {
        QFETCH(QString, words);
        QFETCH(QString, expected);
        WordTable table;
        for (const QString& count : words.split(u' ')) {
            table.insert(u"w"_s + QString::number(table.size()),
                         count == u"u"_s ? unreadableCount : count.toLongLong());
        }
        QCOMPARE(describeTotals(totalsOf(table)), expected);
    }
};

QTEST_GUILESS_MAIN(ListFormatsTest)
#include "ListFormatsTest.moc"
