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

        const auto row = [](const char* name, const QByteArray& rtf, const QByteArray& expected) {
            QTest::newRow(name) << rtf << expected;
        };
        row("groups do not split words", "{\\rtf1 exam{\\b ple} one}", "example one");
        row("separators", "{\\rtf1 a\\par b\\line c\\tab d\\cell e\\row f}", "a|b|c|d|e|f");
        row("escaped specials", "{\\rtf1 \\{x\\} a\\\\b}", "{x} a\\b");
        row("ignorable and table destinations",
            "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\colortbl;\\red0;}{\\stylesheet{\\s0 "
            "Normal;}}{\\info{\\title T}}{\\*\\generator G;}{\\pict 0a0b}body}",
            "body");
        row("unicode with fallback", "{\\rtf1 caf\\u233?s na\\u239 ive}", "cafés naïve");
        row("uc0 has no fallback", "{\\rtf1\\uc0 caf\\u233 s}", "cafés");
        row("uc2 skips an escaped pair", "{\\rtf1\\uc2 \\u26085\\'93\\'fa\\u26412\\'96\\'7b!}",
            "日本!");
        row("fallback ends with its group", "{\\rtf1\\uc3 {a\\u233}bc}", "aébc");
        row("surrogate pair", "{\\rtf1 x\\u-10179?\\u-8701?y}", "x\U0001F603y");
        row("ansi code page", "{\\rtf1\\ansi\\ansicpg1251 \\'cf\\'f0\\'e8}", "При");
        row("font charset beats document code page",
            "{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset161 G;}}\\f0 caf\\'e9 {\\f1 "
            "\\'e1\\'e2}}",
            "café αβ");
        row("double-byte code page", "{\\rtf1\\ansi\\ansicpg932 \\'93\\'fa\\'96\\'7b}", "日本");
        row("field code dropped, result kept",
            "{\\rtf1 see {\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt here}}.}", "see here.");
        row("hidden text", "{\\rtf1 shown{\\v hidden} \\v no\\v0 yes}", "shown yes");
        row("footnote apart", "{\\rtf1 word{\\footnote note}end}", "word|note|end");
        // Destinations marked ignorable (\\*) are read when this reader knows them as text.
        row("pandoc footnote",
            "{\\rtf1 word{\\super\\chftn}{\\*\\footnote\\chftn\\~\\plain\\pard note text}end}",
            "word|\u00a0note text|end");
        row("annotation",
            "{\\rtf1 text{\\*\\atnid J}{\\*\\atnauthor John}\\chatn{\\*\\annotation{\\*\\atndate 1}"
            "\\pard remark}more}",
            "text|remark|more");
        row("headers and footers", "{\\rtf1{\\headerl left}{\\footer foot}body}", "left|foot|body");
        row("text box, not its copy for old readers",
            "{\\rtf1 a{\\shp{\\*\\shpinst{\\sp{\\sn fillColor}{\\sv 1}}{\\shptxt boxed}}"
            "{\\shprslt{\\*\\do\\dptxbxtext old}}}b}",
            "a|boxed|b");
        row("unknown ignorable skipped", "{\\rtf1 a{\\*\\bkmkstart x}b{\\*\\unknown{y}}c}", "abc");
        row("binary data skipped", "{\\rtf1 a{\\pict\\bin4 }}}}}b}", "ab");
        row("specials", "{\\rtf1 don\\rquote t\\emdash ok\\~x}", "don’t—ok\u00a0x");
        row("optional hyphen joins", "{\\rtf1 hy\\-phen}", "hyphen");
        // Deep or unbalanced nesting stays cheap and never reads past the input.
        row("hostile nesting",
            "{\\rtf1 " + QByteArray(200000, '{') + "deep" + QByteArray(200000, '}') + " after" +
                QByteArray(1000, '}') + "{\\u",
            "deep after");
    }

    void text()
    {
        QFETCH(QByteArray, rtf);
        QFETCH(QByteArray, expected);
        WordCountingSink sink;
        readRtf(memorySource({rtf.constData(), std::size_t(rtf.size())}), sink);
        QCOMPARE(sink.bars(), expected);
    }
};

QTEST_GUILESS_MAIN(RtfReaderTest)
#include "RtfReaderTest.moc"
