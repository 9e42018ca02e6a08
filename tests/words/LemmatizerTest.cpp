// The headwords a Hunspell dictionary gives a list's words: the real en_US one, and a
// dictionary of the test's own found where the packages' are looked for.

#include "words/Lemmatizer.h"
#include "tests/common/LemmaPairs.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordTable.h"

#include <QTest>

using namespace tallyvox;
using testing::describe;
using namespace Qt::StringLiterals;

namespace {

WordTable tableOf(const QString& words)
{
    WordTable table;
    for (const QString& word : words.split(u'|')) {
        table.insert(word, 1);
    }
    return table;
}

} // namespace

class LemmatizerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_english = Lemmatizer::open(u"en_US"_s);
        QVERIFY2(m_english, "the en_US dictionary (hunspell-en-us) is installed by "
                            "scripts/install-deps.sh");
    }

    void headwordsOfEnglishWords_data()
    {
        QTest::addColumn<QString>("words"); // entries of the table, | between them
        QTest::addColumn<bool>("fold");
        QTest::addColumn<QString>("expected");
        QTest::newRow("inflections, the stem in the text is a form of itself")
            << u"cats|cat|studies|studying"_s << false
            << u"cat=cat cats=cat studies=study studying=study"_s;
        QTest::newRow("unknown and own words stay")
            << u"xyzzyq|went|children|the"_s << false << QString();
        QTest::newRow("a prefix taken off is no stem") << u"unhappy|happy"_s << false << QString();
        QTest::newRow("a word of its own keeps itself when the other stem is not in the text")
            << u"number|going|putting"_s << false << QString();
        QTest::newRow("and joins it when it is")
            << u"number|numb|going|go"_s << false << u"go=go going=go numb=numb number=numb"_s;
        QTest::newRow("capitals carried over, case alone is no stem")
            << u"Cats|CATS|The"_s << false << u"CATS=CAT Cats=Cat"_s;
        QTest::newRow("folded keys and the dictionary's headwords")
            << u"Cats|CATS|The|Studies"_s << true << u"cats=cat studies=study"_s;
        QTest::newRow("each word of an n-gram")
            << u"the cats|cats went|went home"_s << false << u"cats=cat"_s;
    }
    void headwordsOfEnglishWords()
    {
        QFETCH(QString, words);
        QFETCH(bool, fold);
        QFETCH(QString, expected);
        const WordTable table = tableOf(words);
        QCOMPARE(describe(m_english->lemmasOf({&table}, fold)), expected);
    }

    // A keyword list's reference brings its words: its forms group with the files' ones.
    void wordsOfEveryTableCount()
    {
        const WordTable files = tableOf(u"going"_s);
        const WordTable reference = tableOf(u"go|dogs"_s);
        QCOMPARE(describe(m_english->lemmasOf({&files, nullptr, &reference}, false)),
                 u"dogs=dog go=go going=go"_s);
    }

    // A dictionary is found in the data home's "hunspell" folder as in the system's; a
    // name is a file name, never a path.
    void findsTheDictionariesInstalled()
    {
        testing::TestEnvironment env;
        env.writeFile(u"data/hunspell/xx_TEST.aff"_s, "SET UTF-8\nSFX S Y 1\nSFX S 0 s .\n");
        env.writeFile(u"data/hunspell/xx_TEST.dic"_s, "1\nbook/S\n");
        env.writeFile(u"data/hunspell/yy_NOAFF.dic"_s, "1\nbook\n");
        const QStringList languages = lemmaLanguages();
        QVERIFY2(languages.contains(u"xx_TEST"_s) && languages.contains(u"en_US"_s),
                 qPrintable(languages.join(u' ')));
        QVERIFY(!languages.contains(u"yy_NOAFF"_s));

        const std::shared_ptr<Lemmatizer> own = Lemmatizer::open(u"xx_TEST"_s);
        QVERIFY(own);
        const WordTable table = tableOf(u"books"_s);
        QCOMPARE(describe(own->lemmasOf({&table}, false)), u"books=book"_s);
        QCOMPARE(Lemmatizer::open(u"xx_TEST"_s), own); // loaded once
        for (const QString& name :
             {u"yy_NOAFF"_s, u"zz_NONE"_s, u"../hunspell/en_US"_s, QString()}) {
            QVERIFY2(!Lemmatizer::open(name), qPrintable(name));
        }
    }

private:
    std::shared_ptr<Lemmatizer> m_english;
};

QTEST_GUILESS_MAIN(LemmatizerTest)
#include "LemmatizerTest.moc"
