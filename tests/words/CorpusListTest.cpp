#include "words/CorpusList.h"
#include "words/WordListRenderer.h"
#include "words/WordSpread.h"
#include "words/WordTableShaping.h"

#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

const WordTable threeWords{{u"the"_s, 3}, {u"cat"_s, 2}, {u"dog"_s, 1}};

// Worked in python3 from the two tables (docs/word-list-options.md has the formulas):
// 1039 words in the files, 2065 in the reference.
const WordTable keywordFiles{{u"filler"_s, 1000}, {u"kw"_s, 30}, {u"low"_s, 1}, {u"new"_s, 8}};
const WordTable keywordReference{
    {u"filler"_s, 2000}, {u"kw"_s, 10}, {u"low"_s, 40}, {u"gone"_s, 15}};

QString rendered(const WordTable& table, const ListSettings& settings,
                 const ListSources& sources = {})
{
    const RenderedList list = renderWordTable(table, settings, u"\"list\""_s, sources);
    return list.text ? QString::fromUtf8(*list.text) : u"<nothing>"_s;
}

} // namespace

class CorpusListTest : public QObject {
    Q_OBJECT

private slots:
    // One file: range 1, and no dispersion, written as such rather than as a number.
    void figuresOfOneFile_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<int>("separateBy");
        QTest::addColumn<bool>("frequency");
        QTest::addColumn<bool>("range");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text, parentheses")
            << 0 << 1 << true << true
            << u"cat (2) (1) (-) (-) (333333.3333)\ndog (1) (1) (-) (-) (166666.6667)\n"
               u"the (3) (1) (-) (-) (500000)\n"_s;
        QTest::newRow("text, tab")
            << 0 << 2 << true << true
            << u"cat\t2\t1\t-\t-\t333333.3333\ndog\t1\t1\t-\t-\t166666.6667\n"
               u"the\t3\t1\t-\t-\t500000\n"_s;
        QTest::newRow("text, comma, rate only")
            << 0 << 3 << true << false << u"cat,2,333333.3333\ndog,1,166666.6667\nthe,3,500000\n"_s;
        // A count style that leaves the count out leaves its company out too.
        QTest::newRow("text, no count style") << 0 << 0 << true << true << u"cat\ndog\nthe\n"_s;
        QTest::newRow("text, without counts")
            << 0 << 1 << false << false
            << u"cat (333333.3333)\ndog (166666.6667)\nthe (500000)\n"_s;
        QTest::newRow("CSV")
            << 1 << 1 << true << true
            << u"word,count,range,juilland d,dp,per million\r\ncat,2,1,,,333333.3333\r\n"
               u"dog,1,1,,,166666.6667\r\nthe,3,1,,,500000\r\n"_s;
        QTest::newRow("TSV without counts")
            << 2 << 1 << false << true
            << u"word\trange\tjuilland d\tdp\tper million\ncat\t1\t\t\t333333.3333\n"
               u"dog\t1\t\t\t166666.6667\nthe\t1\t\t\t500000\n"_s;
    }
    void figuresOfOneFile()
    {
        QFETCH(int, format);
        QFETCH(int, separateBy);
        QFETCH(bool, frequency);
        QFETCH(bool, range);
        QFETCH(QString, expected);
        ListSettings settings;
        settings.separateBy = static_cast<SeparateBy>(separateBy);
        settings.includeFrequency = frequency;
        settings.options.listFormat = static_cast<ListFormat>(format);
        settings.options.includeRange = range;
        settings.options.includePerMillion = true;
        QCOMPARE(rendered(threeWords, settings), expected);
    }

    // Five files of ten words each, "a" counted 1 to 5 times (the example of Gries 2008),
    // "b" 8, 8, 7, 6, 5 times, "c" once in the first: figures worked in python3.
    void figuresOverFiles_data()
    {
        QTest::addColumn<QList<WordTable>>("files");
        QTest::addColumn<bool>("fold");
        QTest::addColumn<QString>("expected");
        QList<WordTable> gries;
        for (qint64 i = 0; i < 5; ++i) {
            const qint64 b = i < 2 ? 8 : 10 - i - 1;
            WordTable file{{u"a"_s, i + 1}, {u"b"_s, b}};
            if (i == 0) {
                file.insert(u"c"_s, 1);
            }
            gries.append(file);
        }
        QTest::newRow("Gries 2008")
            << gries << false
            << u"word,count,range,juilland d,dp\r\na,15,5,0.7643,0.2\r\nb,34,5,0.9143,0.0765\r\n"
               u"c,1,1,0,0.8\r\n"_s;
        // Folded forms in one file count as one before the file's share is taken: "a" is
        // then even over the two files, not in three parts.
        const QList<WordTable> cased{WordTable{{u"A"_s, 1}, {u"a"_s, 1}, {u"b"_s, 8}},
                                     WordTable{{u"a"_s, 2}, {u"b"_s, 8}}};
        QTest::newRow("folded forms") << cased << true
                                      << u"word,count,range,juilland d,dp\r\na,4,2,1,0\r\n"
                                         u"b,16,2,1,0\r\n"_s;
        QTest::newRow("unfolded forms")
            << cased << false
            << u"word,count,range,juilland d,dp\r\nA,1,1,0,0.5\r\na,3,2,0.6667,0.1667\r\n"
               u"b,16,2,1,0\r\n"_s;
    }
    void figuresOverFiles()
    {
        QFETCH(QList<WordTable>, files);
        QFETCH(bool, fold);
        QFETCH(QString, expected);
        WordSpread spread;
        for (const WordTable& file : files) {
            spread.add(file);
        }
        ListSettings settings;
        settings.options.listFormat = ListFormat::Csv;
        settings.options.includeRange = true;
        settings.options.foldCase = fold;
        ListSources sources;
        sources.spread = &spread;
        QCOMPARE(rendered(spread.sum(), settings, sources), expected);
    }

    void keywordList_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<double>("threshold");
        QTest::addColumn<int>("minimum");
        QTest::addColumn<QString>("stopWord");
        QTest::addColumn<QString>("expected");
        const QString header = u"word,count,reference count,log-likelihood,log ratio,sign\r\n"_s;
        const QString kw = u"kw,30,10,28.8304,2.5759,+\r\n"_s;
        const QString fresh = u"new,8,0,17.5109,4.9909,+\r\n"_s;
        const QString low = u"low,1,40,25.3912,-4.331,-\r\n"_s;
        const QString gone = u"gone,0,15,12.2268,-3.9159,-\r\n"_s;
        // More frequent in the files first, each side by falling G2.
        QTest::newRow("p < 0.01") << 1 << 6.63 << 1 << QString()
                                  << header + kw + fresh + low + gone;
        QTest::newRow("higher threshold") << 1 << 20.0 << 1 << QString() << header + kw + low;
        QTest::newRow("every word")
            << 1 << 0.0 << 1 << QString()
            << header + kw + fresh + low + gone + u"filler,1000,2000,0.0263,-0.0091,-\r\n"_s;
        // A word the files use too seldom does not come back from the reference.
        QTest::newRow("minimum 2") << 1 << 6.63 << 2 << QString() << header + kw + fresh + gone;
        QTest::newRow("stop word") << 1 << 6.63 << 1 << u"kw"_s << header + fresh + low + gone;
        QTest::newRow("text")
            << 0 << 6.63 << 1 << QString()
            << u"kw\t30\t10\t28.8304\t2.5759\t+\nnew\t8\t0\t17.5109\t4.9909\t+\n"
               u"low\t1\t40\t25.3912\t-4.331\t-\ngone\t0\t15\t12.2268\t-3.9159\t-\n"_s;
    }
    void keywordList()
    {
        QFETCH(int, format);
        QFETCH(double, threshold);
        QFETCH(int, minimum);
        QFETCH(QString, stopWord);
        QFETCH(QString, expected);
        ListSettings settings;
        // The keyword list keeps its count and its own order whatever these say.
        settings.includeFrequency = false;
        settings.alphabetical = true;
        settings.separateBy = SeparateBy::Tab;
        settings.options.listFormat = static_cast<ListFormat>(format);
        settings.options.keynessThreshold = threshold;
        settings.options.minimumCount = minimum;
        if (!stopWord.isEmpty()) {
            settings.options.stopWords.insert(stopWord);
        }
        ListSources sources;
        sources.reference = std::make_shared<const WordTable>(keywordReference);
        QCOMPARE(rendered(keywordFiles, settings, sources), expected);
    }

    // The totals tell the words of the text from those the list shows.
    void honestTotals_data()
    {
        QTest::addColumn<WordTable>("table");
        QTest::addColumn<bool>("fold");
        QTest::addColumn<bool>("keywords");
        QTest::addColumn<QString>("expected");
        const WordTable shaped{
            {u"the"_s, 10}, {u"cat"_s, 5}, {u"dog"_s, 2}, {u"a"_s, 8}, {u"fish"_s, 3}};
        QTest::newRow("stop words and a minimum")
            << shaped << false << false
            << u"# 28 words in the text, 8 listed; 5 distinct words, 2 listed; "
               u"type/token ratio 0.1786; mean word length 2.5357 characters"_s;
        QTest::newRow("folded") << WordTable{{u"The"_s, 4}, {u"the"_s, 6}, {u"cat"_s, 5}} << true
                                << false
                                << u"# 15 words in the text, 5 listed; 2 distinct words, 1 listed; "
                                   u"type/token ratio 0.1333; mean word length 3.0000 "
                                   u"characters"_s;
        QTest::newRow("keywords")
            << keywordFiles << false << true
            << u"# 1039 words in the text, 39 listed; 4 distinct words, 4 listed; "
               u"type/token ratio 0.0038; mean word length 5.8585 characters; 2065 words in the "
               u"reference"_s;
    }
    void honestTotals()
    {
        QFETCH(WordTable, table);
        QFETCH(bool, fold);
        QFETCH(bool, keywords);
        QFETCH(QString, expected);
        ListSettings settings;
        settings.options.includeTotals = true;
        settings.options.foldCase = fold;
        ListSources sources;
        if (keywords) {
            sources.reference = std::make_shared<const WordTable>(keywordReference);
        } else {
            settings.options.stopWords = {u"the"_s, u"a"_s};
            settings.options.minimumCount = 3;
        }
        const QStringList lines = rendered(table, settings, sources).split(u'\n');
        QCOMPARE(lines.size() >= 2 ? lines.at(lines.size() - 2) : QString(), expected);
    }

    // However many files, the run's words kept file by file give the sum of its tables as
    // addWordTable makes it, a count that is no integer included.
    void sumsOfManyFiles_data()
    {
        QTest::addColumn<int>("files");
        for (const int files : {1, 2, 3, 5, 8, 13}) {
            QTest::addRow("%d files", files) << files;
        }
    }
    void sumsOfManyFiles()
    {
        QFETCH(int, files);
        WordTable expected;
        WordSpread spread;
        for (int i = 0; i < files; ++i) {
            WordTable table{{u"all"_s, 1}, {u"w%1"_s.arg(i % 4), i + 1}};
            if (i == 2) {
                table.insert(u"odd"_s, unreadableCount);
            }
            addWordTable(expected, table);
            spread.add(table);
        }
        QCOMPARE(spread.sum(), expected);
        QCOMPARE(spread.files(), qint64(files));
    }

    void totalsOfACombinedList()
    {
        WordSpread spread;
        spread.add(WordTable{{u"a"_s, 2}});
        spread.add(WordTable{{u"a"_s, 1}, {u"b"_s, 3}});
        spread.add(WordTable());
        ListSettings settings;
        settings.options.includeTotals = true;
        settings.options.listFormat = ListFormat::Tsv;
        ListSources sources;
        sources.spread = &spread;
        sources.files = spread.files();
        QCOMPARE(rendered(spread.sum(), settings, sources),
                 u"word\tcount\na\t3\nb\t3\n\n# words in the text\t6\n# words listed\t6\n"
                 u"# distinct words in the text\t2\n# distinct words listed\t2\n"
                 u"# type/token ratio\t0.3333\n# mean word length (characters)\t1.0000\n"
                 u"# files\t3\n"_s);
    }

    // The text's standardised type/token ratio, from the runs the indexer counted (said to
    // be missing where no run was full, never a number), and its words' mean length in code
    // points, in the text line and the TSV rows; a list of word sequences states neither.
    void figuresOfTheText_data()
    {
        QTest::addColumn<WordTable>("table");
        QTest::addColumn<int>("types");
        QTest::addColumn<int>("runs");
        QTest::addColumn<int>("files");
        QTest::addColumn<int>("ngramLength");
        QTest::addColumn<QString>("expected"); // the list's end; TSV where it has a tab
        // 5 + 2 + 2 code points over 4 words; in bytes 5.75, in UTF-16 units 3.75.
        const WordTable nonAscii{
            {u"na\u00efve"_s, 2}, {u"\u65e5\u672c"_s, 1}, {u"\U0001D4B3y"_s, 1}};
        QTest::newRow("two runs") << threeWords << 1234 << 2 << 0 << 1
                                  << u"0.5000; standardised type/token ratio 0.6170 (runs of 1000 "
                                     u"words); mean word length 3.0000 characters\n"_s;
        QTest::newRow("no full run") << threeWords << 0 << 0 << 0 << 1
                                     << u"0.5000; no standardised type/token ratio (fewer than "
                                        u"1000 words); mean word length 3.0000 characters\n"_s;
        QTest::newRow("no file with a full run")
            << threeWords << 0 << 0 << 2 << 1
            << u"0.5000; no standardised type/token ratio (no file has 1000 words); mean word "
               u"length 3.0000 characters; 2 files\n"_s;
        QTest::newRow("word sequences") << threeWords << 1234 << 2 << 0 << 2 << u"0.5000\n"_s;
        QTest::newRow("TSV, no full run")
            << nonAscii << 0 << 0 << 0 << 1
            << u"0.7500\n# standardised type/token ratio (runs of 1000 words)\tnone (fewer than "
               u"1000 words)\n# mean word length (characters)\t3.5000\n"_s;
    }
    void figuresOfTheText()
    {
        QFETCH(WordTable, table);
        QFETCH(int, types);
        QFETCH(int, runs);
        QFETCH(int, files);
        QFETCH(int, ngramLength);
        QFETCH(QString, expected);
        ListSettings settings;
        settings.options.includeTotals = true;
        settings.options.ngramLength = ngramLength;
        const bool tsv = expected.contains(u'\t');
        settings.options.listFormat = tsv ? ListFormat::Tsv : ListFormat::Text;
        ListSources sources;
        sources.typeRuns = TypeRuns{types, runs};
        sources.files = files;
        const QString text = rendered(table, settings, sources);
        QVERIFY2(text.endsWith(u"type/token ratio"_s + (tsv ? u'\t' : u' ') + expected),
                 qPrintable(text));
    }
};

QTEST_GUILESS_MAIN(CorpusListTest)
#include "CorpusListTest.moc"
