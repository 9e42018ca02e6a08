// The lemma file's lines, and the headword each entry is counted under.

#include "words/LemmaList.h"

#include "tests/common/LemmaPairs.h"

#include <QTest>

using namespace tallyvox;
using testing::describe;
using namespace Qt::StringLiterals;

class LemmaListTest : public QObject {
    Q_OBJECT

private slots:
    void readsTheLines_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("fold");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a headword is a form of itself")
            << "go -> goes, went\n"_ba << false << u"go=go goes=go went=go"_s;
        QTest::newRow("comments, blank lines, CR LF, a BOM")
            << "\xef\xbb\xbf# verbs\r\n\r\n  be ->am,  is # more later\r\n"_ba << false
            << u"am=be be=be is=be"_s;
        QTest::newRow("lines that say nothing")
            << "no arrow here\n -> orphan\n->\nx ->\n"_ba << false << u"x=x"_s;
        QTest::newRow("the first headword keeps a form")
            << "see -> saw\nsaw -> sawing\n"_ba << false << u"saw=see sawing=saw see=see"_s;
        QTest::newRow("empty forms are skipped") << "a -> ,, b ,\n"_ba << false << u"a=a b=a"_s;
        // Folded keys, headwords as written.
        QTest::newRow("folded") << "Straße -> STRASSEN, Go\n"_ba << true
                                << u"go=Straße strasse=Straße strassen=Straße"_s;
        QTest::newRow("exact") << "Be -> IS\n"_ba << false << u"Be=Be IS=Be"_s;
        QTest::newRow("not UTF-8") << "a -> b\xff\n"_ba << false << u"a=a b\ufffd=a"_s;
        QTest::newRow("empty") << QByteArray() << false << QString();
    }
    void readsTheLines()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, fold);
        QFETCH(QString, expected);
        QCOMPARE(describe(parseLemmaList(file, fold)), expected);
    }

    void headwordOfAnEntry_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("headword"); // "-" for none
        QTest::newRow("a form") << u"went"_s << u"go"_s;
        QTest::newRow("the headword") << u"go"_s << u"go"_s;
        QTest::newRow("no form") << u"home"_s << u"-"_s;
        QTest::newRow("exact only") << u"Went"_s << u"-"_s;
        QTest::newRow("each word of an n-gram") << u"went home"_s << u"go home"_s;
        QTest::newRow("both words") << u"children went"_s << u"child go"_s;
        QTest::newRow("n-gram of no form") << u"at home"_s << u"-"_s;
        QTest::newRow("a form of several words") << u"a lot"_s << u"lot"_s;
    }
    void headwordOfAnEntry()
    {
        QFETCH(QString, entry);
        QFETCH(QString, headword);
        const LemmaList lemmas =
            parseLemmaList("go -> went\nchild -> children\nlot -> a lot, lots\n", false);
        QCOMPARE(lemmas.headwordFor(entry).value_or(u"-"_s), headword);
    }
};

QTEST_APPLESS_MAIN(LemmaListTest)
#include "LemmaListTest.moc"
