#include "WordCountingSink.h"
#include "indexer/readers/HtmlReader.h"
#include "indexer/readers/XmlReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>

using namespace tallyvox::indexer::readers;

namespace {

QByteArray boundariesAsBars(const std::string& text)
{
    QByteArray out = QByteArray::fromStdString(text);
    out.replace('\n', '|');
    while (out.contains("||")) {
        out.replace("||", "|");
    }
    if (out.startsWith('|')) {
        out.remove(0, 1);
    }
    if (out.endsWith('|')) {
        out.chop(1);
    }
    return out;
}

std::string html(const QByteArray& bytes)
{
    WordCountingSink sink;
    readHtml(memorySource({bytes.constData(), std::size_t(bytes.size())}), sink);
    return sink.collected();
}

std::string xml(const QByteArray& bytes, bool svg = false)
{
    WordCountingSink sink;
    const auto source = memorySource({bytes.constData(), std::size_t(bytes.size())});
    svg ? readSvg(source, sink) : readXml(source, sink);
    return sink.collected();
}

} // namespace

class MarkupReaderTest : public QObject {
    Q_OBJECT

private slots:
    void htmlVisibleText_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("inline tags join")
            << QByteArray("<p>exam<b>ple</b> <i>x</i>y</p>") << QByteArray("example xy");
        QTest::newRow("blocks separate")
            << QByteArray("<ul><li>one</li><li>two</li></ul><table><tr><td>a</td><td>b</td></tr>"
                          "</table><p>c<br>d</p><h1>e</h1>f")
            << QByteArray("one|two|a|b|c|d|e|f");
        QTest::newRow("no head, script or style")
            << QByteArray("<html><head><title>T</title><style>p{}</style></head><body>"
                          "<script>var s = 'x';</script>seen<template>t</template></body></html>")
            << QByteArray("seen");
        QTest::newRow("no attributes or comments")
            << QByteArray("<p title=\"tip\"><img alt=\"pic\">a<!-- note -->b</p>")
            << QByteArray("ab");
        QTest::newRow("references decoded")
            << QByteArray("<p>caf&eacute; &amp; na&#239;ve &#x65E5;&#26412;</p>")
            << QByteArray("café & naïve 日本");
        QTest::newRow("declared charset")
            << QByteArray("<html><head><meta charset=\"windows-1251\"></head><body>\xcf\xf0\xe8"
                          "</body></html>")
            << QByteArray("При");
        QTest::newRow("http-equiv charset")
            << QByteArray("<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; "
                          "charset=iso-8859-7\"></head><body>\xe1\xe2</body></html>")
            << QByteArray("αβ");
        QTest::newRow("undeclared UTF-8") << QByteArray("<p>Straße</p>") << QByteArray("Straße");
        QTest::newRow("XHTML") << QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
                                             "<html xmlns=\"http://www.w3.org/1999/xhtml\"><body>"
                                             "<p>a<span/>b</p><p>c</p></body></html>")
                               << QByteArray("ab|c");
    }

    void htmlVisibleText()
    {
        QFETCH(QByteArray, document);
        QFETCH(QByteArray, expected);
        QCOMPARE(boundariesAsBars(html(document)), expected);
    }

    void xmlText_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<bool>("svg");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("elements separate")
            << QByteArray("<r><name>John</name><age>42</age><![CDATA[raw <x>]]>&amp;</r>") << false
            << QByteArray("John|42|raw <x>&");
        QTest::newRow("svg draws its text")
            << QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\"><title>icon</title><style>"
                          "t{}</style><text>Hel<tspan>lo</tspan></text><text>world</text></svg>")
            << true << QByteArray("Hello|world");
    }

    void xmlText()
    {
        QFETCH(QByteArray, document);
        QFETCH(bool, svg);
        QFETCH(QByteArray, expected);
        QCOMPARE(boundariesAsBars(xml(document, svg)), expected);
    }

    void entitiesAreNeverExpanded()
    {
        QTemporaryDir dir;
        QFile secret(dir.filePath(QStringLiteral("secret.txt")));
        QVERIFY(secret.open(QIODevice::WriteOnly));
        secret.write("leakedword");
        secret.close();
        const QByteArray external = "<!DOCTYPE r [<!ENTITY x SYSTEM \"file://" +
                                    QFile::encodeName(secret.fileName()) +
                                    "\"><!ENTITY % p SYSTEM \"http://127.0.0.1:9/x\"> %p;]>"
                                    "<r>a &x; b</r>";
        QVERIFY(xml(external).find("leakedword") == std::string::npos);

        QByteArray laughs = "<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY lol \"lol\">";
        for (int i = 1; i < 10; ++i) {
            const QByteArray prev = i == 1 ? "lol" : "lol" + QByteArray::number(i - 1);
            laughs += "<!ENTITY lol" + QByteArray::number(i) + " \"" +
                      QByteArray("&" + prev + ";").repeated(10) + "\">";
        }
        laughs += "]><lolz>start &lol9; end</lolz>";
        const auto begin = std::chrono::steady_clock::now();
        QCOMPARE(boundariesAsBars(xml(laughs)), QByteArray("start  end"));
        QVERIFY(std::chrono::steady_clock::now() - begin < std::chrono::seconds(1));
    }

    void deepNestingIsCheap_data()
    {
        QTest::addColumn<bool>("isHtml");
        QTest::newRow("xml") << false;
        QTest::newRow("html") << true;
    }

    void deepNestingIsCheap()
    {
        QFETCH(bool, isHtml);
        const int depth = 200000;
        const QByteArray doc = "<d>top" + QByteArray("<div>").repeated(depth) + "deep" +
                               QByteArray("</span>").repeated(depth) +
                               QByteArray("</div>").repeated(depth) + "</d>";
        const auto begin = std::chrono::steady_clock::now();
        const std::string text = isHtml ? html(doc) : xml(doc);
        QVERIFY(std::chrono::steady_clock::now() - begin < std::chrono::seconds(3));
        QVERIFY(QByteArray::fromStdString(text).contains("top"));
    }
};

QTEST_GUILESS_MAIN(MarkupReaderTest)
#include "MarkupReaderTest.moc"
