#include "words/WordOrdering.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QTest>

using namespace tallyvox;

class WordOrderingTest : public QObject {
    Q_OBJECT

private slots:
    void alphabeticalIsUtf16CodeUnitOrder()
    {
        testing::TestEnvironment env;
        const PreferenceStore prefs;
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
        std::optional<QStringList> words;
        std::optional<QList<qint64>> counts;
        OrderWords(prefs, table, words, counts, true);
        QCOMPARE(*words, expected);
        QCOMPARE(counts->size(), expected.size());
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
        std::optional<QStringList> words;
        std::optional<QList<qint64>> counts;
        OrderWords(prefs, table, words, counts, prefs.GetSortBy() == SortBy::Alphabetical);
        QCOMPARE(words->mid(0, 3), (QStringList{QStringLiteral("big"), QStringLiteral("five"),
                                                QStringLiteral("three")}));
        QCOMPARE(QSet<QString>(words->begin() + 3, words->end()),
                 (QSet<QString>{QStringLiteral("twoA"), QStringLiteral("twoB")}));
        QCOMPARE(*counts, (QList<qint64>{40000, 5, 3, 2, 2}));
        QCOMPARE(SumCounts(counts), 40012u);
    }

    void countsExistOnlyWithFrequencyOn()
    {
        testing::TestEnvironment env;
        PreferenceStore prefs;
        QVERIFY(prefs.writeBool(prefs::IncludeFrequency, false));
        std::optional<QStringList> words;
        std::optional<QList<qint64>> counts = QList<qint64>{1};
        OrderWords(prefs, WordTable{{QStringLiteral("a"), 2}}, words, counts, true);
        QCOMPARE(*words, QStringList{QStringLiteral("a")});
        QVERIFY(!counts);
        QCOMPARE(SumCounts(counts), 0u);
    }

    void emptyTableLeavesBothOutputsEmpty()
    {
        testing::TestEnvironment env;
        const PreferenceStore prefs;
        std::optional<QStringList> words;
        std::optional<QList<qint64>> counts = QList<qint64>{1};
        OrderWords(prefs, WordTable{}, words, counts, false);
        QVERIFY(!words);
        QVERIFY(!counts);
    }

    void sumWrapsAndSkipsWhatDoesNotFit()
    {
        const std::optional<QList<qint64>> counts =
            QList<qint64>{0x7fffffff, 0x7fffffff, 3, unreadableCount, qint64(1) << 40};
        QCOMPARE(SumCounts(counts), 1u); // 2 * 0x7fffffff + 3 wraps past 2^32
    }
};

QTEST_GUILESS_MAIN(WordOrderingTest)
#include "WordOrderingTest.moc"
