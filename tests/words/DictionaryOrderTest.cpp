#include "words/DictionaryOrder.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordOrdering.h"

#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// The table's words ordered, with a dictionary of locale ("-": none, code units).
QString ordered(const WordTable& table, const QByteArray& locale, bool alphabetical)
{
    const DictionaryOrder dictionary(locale);
    std::optional<WordOrder> words;
    std::optional<WordOrder> counts;
    OrderWords(true, table, words, counts, alphabetical, locale == "-" ? nullptr : &dictionary);
    QStringList entries;
    for (qsizetype i = 0; i < words->size(); ++i) {
        entries.append(words->word(i).toString() + u':' + QString::number(counts->count(i)));
    }
    return entries.join(u' ');
}

WordTable onceEach(const QString& words)
{
    WordTable table;
    for (const QString& word : words.split(u' ')) {
        table.insert(word, 1);
    }
    return table;
}

} // namespace

class DictionaryOrderTest : public QObject {
    Q_OBJECT

private slots:
    void localeOfTheEnvironment_data()
    {
        QTest::addColumn<QByteArray>("lcAll");
        QTest::addColumn<QByteArray>("lcCollate");
        QTest::addColumn<QByteArray>("lang");
        QTest::addColumn<QByteArray>("locale");
        QTest::newRow("LC_ALL first") << "fr_FR.UTF-8"_ba
                                      << "sv_SE.UTF-8"_ba
                                      << "de_DE"_ba
                                      << "fr_FR"_ba;
        QTest::newRow("then LC_COLLATE") << ""_ba
                                         << "sv_SE.UTF-8"_ba
                                         << "de_DE"_ba
                                         << "sv_SE"_ba;
        QTest::newRow("then LANG") << ""_ba
                                   << ""_ba
                                   << "de_DE.ISO-8859-15@euro"_ba
                                   << "de_DE"_ba;
        QTest::newRow("C is the root order") << "C.UTF-8"_ba
                                             << ""_ba
                                             << "sv_SE"_ba
                                             << ""_ba;
        QTest::newRow("POSIX") << ""_ba
                               << "POSIX"_ba
                               << ""_ba
                               << ""_ba;
        QTest::newRow("nothing") << ""_ba
                                 << ""_ba
                                 << ""_ba
                                 << ""_ba;
    }
    void localeOfTheEnvironment()
    {
        QFETCH(QByteArray, lcAll);
        QFETCH(QByteArray, lcCollate);
        QFETCH(QByteArray, lang);
        QFETCH(QByteArray, locale);
        QCOMPARE(collationLocale(lcAll, lcCollate, lang), locale);
    }

    void alphabeticalOrder_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("expected");
        const QString accents = u"f \u00e9 e z \u00e4 a b"_s;
        // The plain order: UTF-16 code units, accented letters after z.
        QTest::newRow("code units")
            << "-"_ba << accents << u"a:1 b:1 e:1 f:1 z:1 \u00e4:1 \u00e9:1"_s;
        // A French dictionary puts each accented letter beside its base letter; a Swedish one
        // does that with é but puts ä after z, as a letter of its own.
        QTest::newRow("fr") << "fr"_ba << accents << u"a:1 \u00e4:1 b:1 e:1 \u00e9:1 f:1 z:1"_s;
        QTest::newRow("sv") << "sv_SE"_ba << accents << u"a:1 b:1 e:1 \u00e9:1 f:1 z:1 \u00e4:1"_s;
        QTest::newRow("root") << ""_ba << accents << u"a:1 \u00e4:1 b:1 e:1 \u00e9:1 f:1 z:1"_s;
        // Small letters first, and numbers by value only digit by digit, as dictionaries do.
        QTest::newRow("case and digits")
            << "fr"_ba << u"Zebra apple Apple 9 10"_s << u"10:1 9:1 apple:1 Apple:1 Zebra:1"_s;
        // Precomposed and decomposed é collate equal; code units decide between them.
        QTest::newRow("canonical equivalents")
            << "fr"_ba << u"\u00e9 e\u0301 f"_s << u"e\u0301:1 \u00e9:1 f:1"_s;
    }
    void alphabeticalOrder()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, words);
        QFETCH(QString, expected);
        QCOMPARE(ordered(onceEach(words), locale, true), expected);
    }

    void equalCountsFollowTheDictionary_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("expected");
        QTest::newRow("sv") << "sv"_ba << u"z:5 a:2 e:2 \u00e9:2 f:2 \u00e4:2 b:1"_s;
        QTest::newRow("fr") << "fr"_ba << u"z:5 a:2 \u00e4:2 e:2 \u00e9:2 f:2 b:1"_s;
    }
    void equalCountsFollowTheDictionary()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, expected);
        const WordTable table{{u"f"_s, 2},      {u"\u00e9"_s, 2}, {u"e"_s, 2}, {u"z"_s, 5},
                              {u"\u00e4"_s, 2}, {u"a"_s, 2},      {u"b"_s, 1}};
        QCOMPARE(ordered(table, locale, false), expected);
    }
};

QTEST_GUILESS_MAIN(DictionaryOrderTest)
#include "DictionaryOrderTest.moc"
