#include "words/WordListRenderer.h"
#include "words/CountFormatter.h"
#include "words/WordOrdering.h"
#include "words/WordTable.h"

#include <QTest>

using namespace tallyvox;

class WordListRendererTest : public QObject {
    Q_OBJECT

private slots:
    void rendersEveryStyleExactly_data()
    {
        QTest::addColumn<bool>("alphabetical");
        QTest::addColumn<bool>("frequency");
        QTest::addColumn<int>("separateBy");
        QTest::addColumn<int>("lineStyle");
        QTest::addColumn<QString>("expected");

        QTest::newRow("defaults") << true << true << 1 << 1
                                  << QStringLiteral("cat (2)\ndog (1)\nthe (3)\n");
        QTest::newRow("tab, CR LF, by count")
            << false << true << 2 << 3 << QStringLiteral("the\t3\r\ncat\t2\r\ndog\t1\r\n");
        QTest::newRow("commas both sides")
            << true << true << 3 << 5 << QStringLiteral("cat,2,dog,1,the,3,");
        QTest::newRow("count dropped, blanks")
            << true << true << 0 << 4 << QStringLiteral("cat dog the ");
        QTest::newRow("count dropped, CR")
            << true << true << 4 << 2 << QStringLiteral("cat\rdog\rthe\r");
        QTest::newRow("no separator")
            << false << true << 1 << 0 << QStringLiteral("the (3)cat (2)dog (1)");
        QTest::newRow("frequency off, style 6")
            << true << false << 1 << 6 << QStringLiteral("catdogthe");
        QTest::newRow("frequency off")
            << true << false << 2 << 1 << QStringLiteral("cat\ndog\nthe\n");
    }

    void rendersEveryStyleExactly()
    {
        QFETCH(bool, alphabetical);
        QFETCH(bool, frequency);
        QFETCH(int, separateBy);
        QFETCH(int, lineStyle);
        QFETCH(QString, expected);

        ListSettings settings;
        settings.alphabetical = alphabetical;
        settings.includeFrequency = frequency;
        settings.separateBy = static_cast<SeparateBy>(separateBy);
        settings.lineStyle = static_cast<LineStyle>(lineStyle);
        const WordTable table{
            {QStringLiteral("the"), 3}, {QStringLiteral("cat"), 2}, {QStringLiteral("dog"), 1}};
        const RenderedList list =
            renderWordTable(table, settings, QStringLiteral("\"Report.pdf\""));
        QVERIFY(list.text);
        QCOMPARE(QString::fromUtf8(*list.text), expected);
        QCOMPARE(
            list.logLines,
            QStringList{
                QStringLiteral("There are %1 words in \"Report.pdf\"").arg(frequency ? 6 : 0)});
    }

    void countsOutsideTheCommonRangeAsBefore_data()
    {
        QTest::addColumn<int>("separateBy");
        QTest::addColumn<QString>("expected");
        // Past 32 bits and unreadable: no count; a negative one and a word outside ASCII
        // as the locale and UTF-8 write them.
        QTest::newRow("parentheses")
            << 1 << QStringLiteral("huge\nminus (-5)\nodd\nzero (0)\n\u00e9t\u00e9 (2147483647)\n");
        QTest::newRow("tab") << 2
                             << QStringLiteral(
                                    "huge\nminus\t-5\nodd\nzero\t0\n\u00e9t\u00e9\t2147483647\n");
        QTest::newRow("comma") << 3
                               << QStringLiteral(
                                      "huge\nminus,-5\nodd\nzero,0\n\u00e9t\u00e9,2147483647\n");
    }

    void countsOutsideTheCommonRangeAsBefore()
    {
        QFETCH(int, separateBy);
        QFETCH(QString, expected);
        ListSettings settings;
        settings.separateBy = static_cast<SeparateBy>(separateBy);
        settings.lineStyle = LineStyle::LineFeed;
        const WordTable table{{QStringLiteral("minus"), -5},
                              {QStringLiteral("huge"), qint64(1) << 40},
                              {QStringLiteral("odd"), unreadableCount},
                              {QStringLiteral("zero"), 0},
                              {QStringLiteral("\u00e9t\u00e9"), 2147483647}};
        const RenderedList list = renderWordTable(table, settings, QString());
        QVERIFY(list.text);
        QCOMPARE(QString::fromUtf8(*list.text), expected);
    }

    void longListsGrowPastTheirEstimate_data()
    {
        QTest::addColumn<QString>("stem");
        QTest::addColumn<qint64>("firstCount");
        // The room made ahead is a code unit and ten bytes a line: three-byte characters
        // and ten-digit counts outgrow it many times over; short ones never do.
        QTest::newRow("CJK, ten digits")
            << QStringLiteral("\u65e5\u672c\u8a9e") << qint64(2000000000);
        QTest::newRow("ASCII, one digit") << QStringLiteral("w") << qint64(1);
    }

    void longListsGrowPastTheirEstimate()
    {
        QFETCH(QString, stem);
        QFETCH(qint64, firstCount);
        WordTable table;
        QByteArray expected;
        for (int i = 0; i < 20000; ++i) {
            // Zero-padded, so that the table's order is the order made here.
            const QString word = stem + QStringLiteral("%1").arg(i, 5, 10, QLatin1Char('0'));
            const qint64 count = firstCount + (i % 7);
            table.insert(word, count);
            expected += word.toUtf8() + " (" + QByteArray::number(count) + ")\n";
        }
        const RenderedList list = renderWordTable(table, ListSettings(), QString());
        QVERIFY(list.text);
        QCOMPARE(list.text->size(), expected.size());
        QVERIFY(*list.text == expected);
    }

    void tableWithoutWordsRendersNothing()
    {
        const RenderedList list =
            renderWordTable(WordTable(), ListSettings(), QStringLiteral("\"empty.txt\""));
        QVERIFY(!list.text);
        QCOMPARE(list.logLines, QStringList{QStringLiteral("There are 0 words in \"empty.txt\"")});
        // Without a subject nothing is said.
        QVERIFY(renderWordTable(WordTable(), ListSettings(), QString()).logLines.isEmpty());
    }

    void countsUseTheLocaleDigitsWithoutGrouping_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("expected");
        QTest::newRow("en_US") << QByteArray("en_US") << QStringLiteral("1234567");
        QTest::newRow("de_DE") << QByteArray("de_DE") << QStringLiteral("1234567");
        QTest::newRow("Devanagari digits")
            << QByteArray("hi_IN@numbers=deva")
            << QStringLiteral("\u0967\u0968\u0969\u096a\u096b\u096c\u096d");
    }

    void countsUseTheLocaleDigitsWithoutGrouping()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, expected);
        const CountFormatter formatter(locale.constData());
        QCOMPARE(FormatCount(1234567, formatter), expected);

        QByteArray text;
        const WordTable table{{QStringLiteral("a"), 1234567},
                              {QStringLiteral("b"), unreadableCount}};
        const WordOrder counts(table);
        AppendFrequency(text, counts, SeparateBy::Tab, formatter, 0);
        AppendFrequency(text, counts, SeparateBy::Tab, formatter, 1);
        QCOMPARE(QString::fromUtf8(text), QLatin1Char('\t') + expected);
    }
};

QTEST_GUILESS_MAIN(WordListRendererTest)
#include "WordListRendererTest.moc"
