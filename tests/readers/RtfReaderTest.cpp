#include "indexer/readers/RtfReader.h"
#include "WordCountingSink.h"

#include <QTest>

using namespace tallyvox::indexer::readers;

class RtfReaderTest : public QObject {
    Q_OBJECT

private slots:
    void text_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QByteArray>("expected"); // boundaries as '|'

        QTest::newRow("groups do not split words")
            << QByteArray("{\\rtf1 exam{\\b ple} one}") << QByteArray("example one");
        QTest::newRow("separators") << QByteArray("{\\rtf1 a\\par b\\line c\\tab d\\cell e\\row f}")
                                    << QByteArray("a|b|c|d|e|f");
        QTest::newRow("escaped specials")
            << QByteArray("{\\rtf1 \\{x\\} a\\\\b}") << QByteArray("{x} a\\b");
        QTest::newRow("ignorable and table destinations")
            << QByteArray("{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red0;}{\\stylesheet{\\s0 "
                          "Normal;}}{\\info{\\title T}}{\\*\\generator G;}{\\pict 0a0b}body}")
            << QByteArray("body");
        QTest::newRow("unicode with fallback")
            << QByteArray("{\\rtf1 caf\\u233?s na\\u239 ive}") << QByteArray("cafés naïve");
        QTest::newRow("uc0 has no fallback")
            << QByteArray("{\\rtf1\\uc0 caf\\u233 s}") << QByteArray("cafés");
        QTest::newRow("uc2 skips an escaped pair")
            << QByteArray("{\\rtf1\\uc2 \\u26085\\'93\\'fa\\u26412\\'96\\'7b!}")
            << QByteArray("日本!");
        QTest::newRow("fallback ends with its group")
            << QByteArray("{\\rtf1\\uc3 {a\\u233}bc}") << QByteArray("aébc");
        QTest::newRow("surrogate pair")
            << QByteArray("{\\rtf1 x\\u-10179?\\u-8701?y}") << QByteArray("x\U0001F603y");
        QTest::newRow("ansi code page")
            << QByteArray("{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8}") << QByteArray("При");
        QTest::newRow("font charset beats document code page")
            << QByteArray("{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset161 G;}}"
                          "\\f0 caf\\'e9 {\\f1 \\'e1\\'e2}}")
            << QByteArray("café αβ");
        QTest::newRow("double-byte code page")
            << QByteArray("{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\'96\\'7b}") << QByteArray("日本");
        QTest::newRow("field code dropped, result kept")
            << QByteArray("{\\rtf1 see {\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt here}}.}")
            << QByteArray("see here.");
        QTest::newRow("hidden text")
            << QByteArray("{\\rtf1 shown{\\v hidden} \\v no\\v0 yes}") << QByteArray("shown yes");
        QTest::newRow("footnote apart")
            << QByteArray("{\\rtf1 word{\\footnote note}end}") << QByteArray("word|note|end");
        QTest::newRow("binary data skipped")
            << QByteArray("{\\rtf1 a{\\pict\\bin4 }}}}}b}") << QByteArray("ab");
        QTest::newRow("specials") << QByteArray("{\\rtf1 don\\rquote t\\emdash ok\\~x}")
                                  << QByteArray("don’t—ok\u00a0x");
        QTest::newRow("optional hyphen joins")
            << QByteArray("{\\rtf1 hy\\-phen}") << QByteArray("hyphen");
    }

    void text()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QByteArray, expected);
        WordCountingSink sink;
        readRtf(memorySource({rtf.constData(), std::size_t(rtf.size())}), sink);
        QByteArray got = QByteArray::fromStdString(sink.collected());
        got.replace('\n', '|');
        while (got.contains("||")) {
            got.replace("||", "|");
        }
        QCOMPARE(got, expected);
    }

    // Deep or unbalanced nesting stays cheap and never reads past the input.
    void hostileNesting()
    {
        QByteArray rtf("{\\rtf1 ");
        rtf += QByteArray(200000, '{') + "deep" + QByteArray(200000, '}') + " after";
        rtf += QByteArray(1000, '}') + "{\\u";
        WordCountingSink sink;
        readRtf(memorySource({rtf.constData(), std::size_t(rtf.size())}), sink);
        QCOMPARE(QString::fromStdString(sink.collected()), QStringLiteral("deep after"));
    }
};

QTEST_GUILESS_MAIN(RtfReaderTest)
#include "RtfReaderTest.moc"
