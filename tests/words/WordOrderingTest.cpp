#include "words/WordOrdering.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"
#include "words/ListSettings.h"

#include <QTest>

using namespace tallyvox;

class WordOrderingTest : public QObject {
    Q_OBJECT

private slots:
    void alphabeticalIsUtf16CodeUnitOrder()
    {
        // Decomposed before precomposed; a surrogate pair (0xD83D...) sorts before U+FF5E,
        // unlike code-point order.
        const QStringList expected{QStringLiteral("10"),
                                   QStringLiteral("9"),
                                   QStringLiteral("Apple"),
                                   QStringLiteral("Zebra"),
                                   QStringLiteral("apple"),
                                   QStringLiteral("e\u0301te\u0301"),
                                   QStringLiteral("\u00e9t\u00e9"),
                                   QStringLiteral("\U0001F600"),
                                   QStringLiteral("\uFF5E")};
        WordTable table;
        for (const QString& word : expected) {
            table.insert(word, 1);
        }
        std::optional<WordOrder> words;
        std::optional<WordOrder> counts;
        OrderWords(true, table, words, counts, true);
        QCOMPARE(words->toStringList(), expected);
        QCOMPARE(counts->size(), expected.size());
    }

    void wordsOfAnyLengthKeepTheirPlace_data()
    {
        QTest::addColumn<int>("length");
        // The longest length kept beside the offset, and the first kept in the text.
        QTest::newRow("2^24 - 2 units") << (1 << 24) - 2;
        QTest::newRow("2^24 - 1 units") << (1 << 24) - 1;
        QTest::newRow("2^24 + 5 units") << (1 << 24) + 5;
    }

    void wordsOfAnyLengthKeepTheirPlace()
    {
        QFETCH(int, length);
        const QString longWord = QString(length - 1, QLatin1Char('m')) + QLatin1Char('x');
        // Out of order, so that the table sorts them; a second insert keeps the later count.
        WordTable table;
        table.insert(QStringLiteral("z"), 1);
        table.insert(longWord, 2);
        table.insert(QStringLiteral("a"), 3);
        table.insert(longWord, 4);
        QCOMPARE(table.size(), 3);
        QCOMPARE(table.word(0), QStringLiteral("a"));
        QCOMPARE(table.word(1).size(), length);
        QVERIFY(table.word(1) == longWord);
        QCOMPARE(table.count(1), 4);
        QCOMPARE(table.word(2), QStringLiteral("z"));
        QCOMPARE(table.indexOf(longWord), 1);
        QCOMPARE(table.indexOf(longWord.left(length - 1)), -1);
    }

    void frequencyOrderPutsLargerCountsFirst_data()
    {
        QTest::addColumn<int>("sortBy");
        QTest::newRow("0") << 0;
        QTest::newRow("2") << 2;
        QTest::newRow("7") << 7;
    }

    void frequencyOrderPutsLargerCountsFirst()
    {
        QFETCH(int, sortBy);
        testing::TestEnvironment env;
        PreferenceStore prefs;
        QVERIFY(prefs.writeChoice(prefs::SortBy, static_cast<qint16>(sortBy)));
        const WordTable table{{QStringLiteral("three"), 3},
                              {QStringLiteral("five"), 5},
                              {QStringLiteral("twoA"), 2},
                              {QStringLiteral("twoB"), 2},
                              {QStringLiteral("big"), 40000}};
        std::optional<WordOrder> words;
        std::optional<WordOrder> counts;
        const ListSettings settings = ListSettings::read(prefs);
        OrderWords(settings.includeFrequency, table, words, counts, settings.alphabetical);
        const QStringList list = words->toStringList();
        QCOMPARE(list.mid(0, 3), (QStringList{QStringLiteral("big"), QStringLiteral("five"),
                                              QStringLiteral("three")}));
        QCOMPARE(QSet<QString>(list.begin() + 3, list.end()),
                 (QSet<QString>{QStringLiteral("twoA"), QStringLiteral("twoB")}));
        QCOMPARE(counts->toCountList(), (QList<qint64>{40000, 5, 3, 2, 2}));
        QCOMPARE(SumCounts(counts), 40012u);
    }

    void countsExistOnlyWithFrequencyOn()
    {
        const WordTable table{{QStringLiteral("a"), 2}};
        std::optional<WordOrder> words;
        std::optional<WordOrder> counts = WordOrder(table);
        OrderWords(false, table, words, counts, true);
        QCOMPARE(words->toStringList(), QStringList{QStringLiteral("a")});
        QVERIFY(!counts);
        QCOMPARE(SumCounts(counts), 0u);
    }

    // The counts are reset first; the words are left as the caller had them, so a caller
    // that did not clear them sees its own value again.
    void emptyTableResetsCountsAndLeavesWords()
    {
        const WordTable empty;
        const WordTable one{{QStringLiteral("a"), 1}};
        std::optional<WordOrder> words = WordOrder(one);
        std::optional<WordOrder> counts = WordOrder(one);
        OrderWords(true, empty, words, counts, false);
        QVERIFY(!counts);
        QVERIFY(words);
        QCOMPARE(words->toStringList(), QStringList{QStringLiteral("a")});
    }

    void sumWrapsAndSkipsWhatDoesNotFit()
    {
        const WordTable table{{QStringLiteral("a"), 0x7fffffff},
                              {QStringLiteral("b"), 0x7fffffff},
                              {QStringLiteral("c"), 3},
                              {QStringLiteral("d"), unreadableCount},
                              {QStringLiteral("e"), qint64(1) << 40}};
        const std::optional<WordOrder> counts = WordOrder(table);
        QCOMPARE(SumCounts(counts), 1u); // 2 * 0x7fffffff + 3 wraps past 2^32
    }
};

QTEST_GUILESS_MAIN(WordOrderingTest)
#include "WordOrderingTest.moc"
