#include "WordCountingSink.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/HtmlReader.h"
#include "indexer/readers/XmlReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>

using namespace tallyvox::indexer::readers;

namespace {

enum class Reader { Html, Xml, Svg };

// What the reader delivers, boundaries as '|'; fails the test when it takes long.
QByteArray read(Reader reader, const QByteArray& bytes)
{
    using Read = void (*)(const ByteSource&, tallyvox::indexer::TextSink&);
    const Read readers[] = {readHtml, readXml, readSvg};
    WordCountingSink sink;
    const auto begin = std::chrono::steady_clock::now();
    readers[int(reader)](memorySource({bytes.constData(), std::size_t(bytes.size())}), sink);
    if (std::chrono::steady_clock::now() - begin > std::chrono::seconds(3)) {
        return "too slow";
    }
    return sink.bars();
}

} // namespace

class MarkupReaderTest : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

private slots:
    void visibleText_data()
    {
        QTest::addColumn<Reader>("reader");
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QByteArray>("expected");
        const auto row = [](const char* name, Reader reader, const QByteArray& document,
                            const QByteArray& expected) {
            QTest::newRow(name) << reader << document << expected;
        };

        row("inline tags join", Reader::Html, "<p>exam<b>ple</b> <i>x</i>y</p>", "example xy");
        row("blocks separate", Reader::Html,
            "<ul><li>one</li><li>two</li></ul><table><tr><td>a</td><td>b</td></tr></table>"
            "<p>c<br>d</p><h1>e</h1>f",
            "one|two|a|b|c|d|e|f");
        row("no head, script or style", Reader::Html,
            "<html><head><title>T</title><style>p{}</style></head><body>"
            "<script>var s = 'x';</script>seen<template>t</template></body></html>",
            "seen");
        row("no attributes or comments", Reader::Html,
            "<p title=\"tip\"><img alt=\"pic\">a<!-- note -->b</p>", "ab");
        row("references decoded", Reader::Html,
            "<p>caf&eacute; &amp; na&#239;ve &#x65E5;&#26412;</p>", "café & naïve 日本");
        row("declared charset", Reader::Html,
            "<html><head><meta charset=\"windows-1251\"></head><body>\xcf\xf0\xe8</body></html>",
            "При");
        row("http-equiv charset", Reader::Html,
            "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; "
            "charset=iso-8859-7\"></head><body>\xe1\xe2</body></html>",
            "αβ");
        row("undeclared UTF-8", Reader::Html, "<p>Straße</p>", "Straße");
        row("XHTML", Reader::Html,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><html "
            "xmlns=\"http://www.w3.org/1999/xhtml\"><body><p>a<span/>b</p><p>c</p></body></html>",
            "ab|c");
        row("xml elements separate", Reader::Xml,
            "<r><name>John</name><age>42</age><![CDATA[raw <x>]]>&amp;</r>", "John|42|raw <x>&");
        row("svg draws its text", Reader::Svg,
            "<svg xmlns=\"http://www.w3.org/2000/svg\"><title>icon</title><style>t{}</style>"
            "<text>Hel<tspan>lo</tspan></text><text>world</text></svg>",
            "Hello|world");

        // Entities are never expanded: neither files nor the network are read, and a
        // billion laughs costs nothing.
        QFile secret(m_dir.filePath(QStringLiteral("secret.txt")));
        QVERIFY(secret.open(QIODevice::WriteOnly));
        secret.write("leakedword");
        secret.close();
        row("external entities", Reader::Xml,
            "<!DOCTYPE r [<!ENTITY x SYSTEM \"file://" + QFile::encodeName(secret.fileName()) +
                "\"><!ENTITY % p SYSTEM \"http://127.0.0.1:9/x\"> %p;]><r>a &x; b</r>",
            "a  b");
        QByteArray laughs = "<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY lol0 \"lol\">";
        for (int i = 1; i < 10; ++i) {
            laughs += "<!ENTITY lol" + QByteArray::number(i) + " \"" +
                      ("&lol" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
        }
        row("billion laughs", Reader::Xml, laughs + "]><lolz>start &lol9; end</lolz>",
            "start  end");
    }

    void visibleText()
    {
        QFETCH(Reader, reader);
        QFETCH(QByteArray, document);
        QFETCH(QByteArray, expected);
        QCOMPARE(read(reader, document), expected);
    }

    // Hostile markup stays cheap (read() fails past 3 s) and keeps the text: attributes past
    // the cap are dropped, HTML deeper than the cap is flattened. XML past libxml2's depth
    // limit ends the part, and the cut is reported.
    void hostileMarkup_data()
    {
        QTest::addColumn<Reader>("reader");
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QByteArray>("expected");
        QTest::addColumn<bool>("cut");
        const int depth = 50000;
        const QByteArray deep = "<d>top" + QByteArray("<div>").repeated(depth) + "deep" +
                                QByteArray("</span>").repeated(depth) + "<b>x</b>y" +
                                QByteArray("</div>").repeated(depth) + "after</d>";
        QTest::newRow("deep html")
            << Reader::Html << deep << QByteArray("top|deepxy|after") << true;
        QTest::newRow("deep xml") << Reader::Xml << deep << QByteArray("top|deep|x|y") << true;
        QByteArray attributes;
        for (int i = 0; i < 100000; ++i) {
            attributes += " a" + QByteArray::number(i) + "=\"v>\"";
        }
        QTest::newRow("many attributes, html")
            << Reader::Html << "<p" + attributes + ">one</p><p" + attributes + "/>two"
            << QByteArray("one|two") << true;
        QTest::newRow("many attributes, xml")
            << Reader::Xml << "<r><p" + attributes + ">one</p><q" + attributes + "/>two</r>"
            << QByteArray("one|two") << true;
        QTest::newRow("many bare attributes")
            << Reader::Html << "<p" + QByteArray(" a").repeated(500000) + ">one</p>"
            << QByteArray("one") << true;
        // The filter knows comments, CDATA and raw text: what looks like a tag there is not.
        QTest::newRow("comments and scripts")
            << Reader::Html
            << "<!-- <p " + QByteArray(" a").repeated(300) + " --><p>a<!---->b</p><script>if (a<b" +
                   QByteArray(" c").repeated(300) + ") {}</script><p>c</p>"
            << QByteArray("ab|c") << false;
    }

    void hostileMarkup()
    {
        QFETCH(Reader, reader);
        QFETCH(QByteArray, document);
        QFETCH(QByteArray, expected);
        QFETCH(bool, cut);
        const CutReport report;
        QCOMPARE(read(reader, document), expected);
        QCOMPARE(!report.reasons().empty(), cut);
    }
};

QTEST_GUILESS_MAIN(MarkupReaderTest)
#include "MarkupReaderTest.moc"
