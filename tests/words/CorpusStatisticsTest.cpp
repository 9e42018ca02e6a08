#include "words/CorpusStatistics.h"

#include <QTest>

#include <algorithm>
#include <vector>

using namespace tallyvox;

namespace {

// The word's counts and the parts' sizes, part by part.
struct Parts {
    std::vector<double> counts;
    std::vector<double> sizes;
};

DispersionSums sumsOf(const Parts& parts)
{
    double words = 0;
    double total = 0;
    for (std::size_t i = 0; i < parts.sizes.size(); ++i) {
        words += parts.sizes[i];
        total += parts.counts[i];
    }
    DispersionSums sums;
    for (std::size_t i = 0; i < parts.sizes.size(); ++i) {
        sums.add(parts.counts[i], total, parts.sizes[i], words);
    }
    return sums;
}

} // namespace

Q_DECLARE_METATYPE(Parts)

class CorpusStatisticsTest : public QObject {
    Q_OBJECT

private slots:
    // Worked by hand; each was checked with python3 to six places.
    void keynessOfTwoByTwoTables_data()
    {
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<double>("c");
        QTest::addColumn<double>("d");
        QTest::addColumn<double>("g2");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<bool>("more");
        // E1 = 10000 * 40 / 30000 = 13.333, E2 = 26.667;
        // G2 = 2 (30 ln 2.25 + 10 ln 0.375) = 29.0392; LR = log2(0.003 / 0.0005) = log2 6.
        QTest::newRow("more in the files")
            << 30.0 << 10.0 << 10000.0 << 20000.0 << 29.039228 << 2.584963 << true;
        // E2 = 6000 * 12 / 11000 = 6.5455; G2 = 2 * 12 ln(12 / 6.5455) = 14.5473;
        // LR takes the 0 as 0.5: log2((0.5 / 5000) / (12 / 6000)) = log2 0.05.
        QTest::newRow("missing from the files")
            << 0.0 << 12.0 << 5000.0 << 6000.0 << 14.547259 << -4.321928 << false;
        // E1 = E2 = 0.5; G2 = 2 ln 2; LR = log2((1 / 100) / (0.5 / 100)) = 1.
        QTest::newRow("missing from the reference")
            << 1.0 << 0.0 << 100.0 << 100.0 << 1.386294 << 1.0 << true;
        QTest::newRow("equal rates") << 5.0 << 10.0 << 1000.0 << 2000.0 << 0.0 << 0.0 << false;
        // G2 = 2 (100 ln(100 / 50.5) + ln(1 / 50.5)) = 128.7954; LR = log2 100.
        QTest::newRow("a million each")
            << 100.0 << 1.0 << 1e6 << 1e6 << 128.795423 << 6.643856 << true;
        QTest::newRow("an empty reference") << 3.0 << 0.0 << 10.0 << 0.0 << 0.0 << 0.0 << false;
    }
    void keynessOfTwoByTwoTables()
    {
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(double, c);
        QFETCH(double, d);
        QFETCH(double, g2);
        QFETCH(double, ratio);
        QFETCH(bool, more);
        QVERIFY(qAbs(logLikelihood(a, b, c, d) - g2) < 1e-6);
        QVERIFY(qAbs(logRatio(a, b, c, d) - ratio) < 1e-6);
        QCOMPARE(moreFrequent(a, b, c, d), more);
    }

    // The corpus of Gries (2008), "Dispersions and adjusted frequencies in corpora": five
    // parts of ten words each, in which "a" occurs 1, 2, 3, 4 and 5 times (15 of 50).
    void dispersionOverParts_data()
    {
        QTest::addColumn<Parts>("parts");
        QTest::addColumn<double>("d");
        QTest::addColumn<double>("dp");
        const std::vector<double> tens(5, 10.0);
        // s = 0.2 each, v = 1/15 ... 5/15: DP = 0.5 (2 + 1 + 0 + 1 + 2) / 15 = 0.2.
        // Relative frequencies 0.1 ... 0.5: mean 0.3, population sd sqrt(0.02) = 0.1414,
        // V = 0.4714, D = 1 - 0.4714 / 2 = 0.7643.
        QTest::newRow("Gries 2008, a") << Parts{{1, 2, 3, 4, 5}, tens} << 0.764298 << 0.2;
        // The correction to Gries (2008) by Lijffijt and Gries (2012) works DP for three
        // equal parts, one with 2/3 of the occurrences, one with 1/3: DP = 0.5 (1/3 + 0 +
        // 1/3) = 1/3. Relative 0.2, 0.1, 0: V = 0.8165, D = 1 - V / sqrt 2 = 0.4226.
        QTest::newRow("Lijffijt and Gries 2012, 2/3 and 1/3 of three parts")
            << Parts{{2, 1, 0}, {10, 10, 10}} << 0.422650 << 0.333333;
        // Carroll (1970) works Juilland's D for 0, 4, 3, 2, 1 in five equal parts: 0.6464.
        // DP = 0.5 (0.2 + 0.2 + 0.1 + 0 + 0.1) = 0.3.
        QTest::newRow("Carroll 1970, D") << Parts{{0, 4, 3, 2, 1}, tens} << 0.646447 << 0.3;
        // All in one part: DP = 0.5 (0.8 + 4 * 0.2) = 0.8, V = sqrt(n - 1), D = 0.
        QTest::newRow("all in one part") << Parts{{1, 0, 0, 0, 0}, tens} << 0.0 << 0.8;
        QTest::newRow("even") << Parts{{2, 2, 2, 2, 2}, tens} << 1.0 << 0.0;
        // Parts of 10, 20, 30 words (s = 1/6, 1/3, 1/2), counts 3, 0, 1 (v = 3/4, 0, 1/4):
        // DP = 0.5 (7/12 + 1/3 + 1/4) = 0.5833. Relative 0.3, 0, 1/30: mean 1/9,
        // sd 0.1370, V = 1.2329, D = 1 - V / sqrt 2 = 0.1456.
        QTest::newRow("parts of unequal size")
            << Parts{{3, 0, 1}, {10, 20, 30}} << 0.145600 << 0.583333;
        // s = 0.1, 0.2, 0.3, 0.4; v = 0, 2/3, 1/3, 0: DP = 0.5 (0.1 + 0.4667 + 0.0333 + 0.4).
        QTest::newRow("missing from the largest part")
            << Parts{{0, 4, 2, 0}, {5, 10, 15, 20}} << 0.292893 << 0.5;
    }
    void dispersionOverParts()
    {
        QFETCH(Parts, parts);
        QFETCH(double, d);
        QFETCH(double, dp);
        const DispersionSums sums = sumsOf(parts);
        const auto n = static_cast<qint64>(parts.sizes.size());
        QVERIFY(juillandD(sums, n));
        QVERIFY(deviationOfProportions(sums, n));
        QVERIFY(qAbs(*juillandD(sums, n) - d) < 1e-6);
        QVERIFY(qAbs(*deviationOfProportions(sums, n) - dp) < 1e-6);
        // The range is the parts that hold the word.
        QCOMPARE(sums.range, std::count_if(parts.counts.begin(), parts.counts.end(),
                                           [](double count) { return count > 0; }));
    }

    // One part, or no occurrence, has no dispersion rather than a made-up one.
    void noDispersionWithoutParts_data()
    {
        QTest::addColumn<Parts>("parts");
        QTest::newRow("one part") << Parts{{4}, {10}};
        QTest::newRow("no occurrence") << Parts{{0, 0}, {10, 10}};
    }
    void noDispersionWithoutParts()
    {
        QFETCH(Parts, parts);
        const DispersionSums sums = sumsOf(parts);
        const auto n = static_cast<qint64>(parts.sizes.size());
        QVERIFY(!juillandD(sums, n));
        QVERIFY(!deviationOfProportions(sums, n));
    }

    void figuresAsListsWriteThem_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("whole") << 12.0 << QByteArray("12");
        QTest::newRow("trailing zeros") << 0.2 << QByteArray("0.2");
        QTest::newRow("rounded to four") << 0.764298 << QByteArray("0.7643");
        QTest::newRow("negative") << -4.321928 << QByteArray("-4.3219");
        QTest::newRow("tiny negative") << -0.00001 << QByteArray("0");
        QTest::newRow("large") << 1234567.891 << QByteArray("1234567.891");
        QTest::newRow("zeros after the point") << 0.0765 << QByteArray("0.0765");
        QTest::newRow("negative half") << -0.5 << QByteArray("-0.5");
        QTest::newRow("beyond ten thousandths in 64 bits") << 1.5e12 << QByteArray("1500000000000");
    }
    void figuresAsListsWriteThem()
    {
        QFETCH(double, value);
        QFETCH(QByteArray, text);
        QCOMPARE(figureText(value), text);
    }

    void perMillionOfTheText()
    {
        QCOMPARE(perMillion(3, 28), 3e6 / 28);
        QVERIFY(!perMillion(3, 0));
    }
};

QTEST_GUILESS_MAIN(CorpusStatisticsTest)
#include "CorpusStatisticsTest.moc"
