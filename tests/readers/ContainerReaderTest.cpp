#include "indexer/readers/ContainerReader.h"
#include "WordCountingSink.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/NumberFormat.h"
#include "indexer/readers/ReadLimits.h"

#include <QTest>

#include <archive.h>
#include <archive_entry.h>

using namespace tallyvox::indexer::readers;

namespace {

struct Entry {
    QByteArray name;
    QByteArray data;
    std::uint64_t repeats = 1; // the data, so many times over
    QByteArray head = {};      // before the data
    QByteArray tail = {};      // after it
};

QByteArray makeZip(const QList<Entry>& entries)
{
    QByteArray out;
    archive* a = archive_write_new();
    archive_write_set_format_zip(a);
    archive_write_set_options(a, "zip:compression-level=1");
    archive_write_open(
        a, &out, nullptr,
        [](archive*, void* buffer, const void* data, size_t size) -> la_ssize_t {
            static_cast<QByteArray*>(buffer)->append(static_cast<const char*>(data),
                                                     qsizetype(size));
            return la_ssize_t(size);
        },
        nullptr);
    for (const Entry& entry : entries) {
        archive_entry* e = archive_entry_new();
        archive_entry_set_pathname(e, entry.name.constData());
        archive_entry_set_filetype(e, AE_IFREG);
        archive_entry_set_size(e, la_int64_t(std::uint64_t(entry.data.size()) * entry.repeats +
                                             std::uint64_t(entry.head.size()) +
                                             std::uint64_t(entry.tail.size())));
        archive_write_header(a, e);
        archive_write_data(a, entry.head.constData(), size_t(entry.head.size()));
        for (std::uint64_t i = 0; i < entry.repeats; ++i) {
            archive_write_data(a, entry.data.constData(), size_t(entry.data.size()));
        }
        archive_write_data(a, entry.tail.constData(), size_t(entry.tail.size()));
        archive_entry_free(e);
    }
    archive_write_close(a);
    archive_write_free(a);
    return out;
}

const QByteArray wordNs =
    "xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
    "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"";

class ByteCountingSink : public tallyvox::indexer::TextSink {
public:
    void text(std::string_view utf8) override { bytes += utf8.size(); }
    void boundary() override {}
    std::uint64_t bytes = 0;
};

} // namespace

class ContainerReaderTest : public QObject {
    Q_OBJECT

private slots:
    void documentText_data()
    {
        QTest::addColumn<QByteArray>("zip");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("docx runs, cells, fallbacks")
            << makeZip(
                   {{"[Content_Types].xml", "<Types/>"},
                    {"word/document.xml",
                     "<w:document " + wordNs +
                         "><w:body><w:p><w:r><w:t>exam</w:t></w:r><w:r><w:rPr/><w:t>ple"
                         "</w:t></w:r><w:r><w:tab/><w:t>next</w:t></w:r></w:p><w:p><w:r>"
                         "<w:instrText>PAGE</w:instrText><w:delText>gone</w:delText><w:t>"
                         "para</w:t></w:r></w:p><w:tbl><w:tr><w:tc><w:p><w:r><w:t>a</w:t>"
                         "</w:r></w:p></w:tc><w:tc><w:p><w:r><w:t>b</w:t></w:r></w:p>"
                         "</w:tc></w:tr></w:tbl><mc:AlternateContent><mc:Choice><w:t>box"
                         "</w:t></mc:Choice><mc:Fallback><w:t>box</w:t></mc:Fallback>"
                         "</mc:AlternateContent></w:body></w:document>"},
                    {"word/footnotes.xml", "<w:footnotes " + wordNs +
                                               "><w:footnote><w:p><w:r><w:t>foot</w:t>"
                                               "</w:r></w:p></w:footnote></w:footnotes>"},
                    {"word/styles.xml", "<w:styles " + wordNs + "><w:t>style</w:t></w:styles>"}})
            << QByteArray("example|next|para|a|b|box|foot");
        QTest::newRow("docx headers, notes, comments, text boxes")
            << makeZip({{"[Content_Types].xml", "<Types/>"},
                        {"word/document.xml",
                         "<w:document " + wordNs +
                             "><w:body><w:p><w:r><w:t>main</w:t></w:r><w:r><mc:AlternateContent>"
                             "<mc:Choice><w:drawing><w:txbxContent><w:p><w:r><w:t>boxed</w:t>"
                             "</w:r></w:p></w:txbxContent></w:drawing></mc:Choice><mc:Fallback>"
                             "<w:pict><w:txbxContent><w:p><w:r><w:t>boxed</w:t></w:r></w:p>"
                             "</w:txbxContent></w:pict></mc:Fallback></mc:AlternateContent></w:r>"
                             "<w:fldSimple><w:r><w:t>7</w:t></w:r></w:fldSimple></w:p></w:body>"
                             "</w:document>"},
                        {"word/header1.xml", "<w:hdr " + wordNs +
                                                 "><w:p><w:r><w:t>head</w:t>"
                                                 "</w:r></w:p></w:hdr>"},
                        {"word/footer2.xml", "<w:ftr " + wordNs +
                                                 "><w:p><w:r><w:t>foot</w:t>"
                                                 "</w:r></w:p></w:ftr>"},
                        {"word/endnotes.xml", "<w:endnotes " + wordNs +
                                                  "><w:endnote><w:p><w:r><w:t>end</w:t></w:r>"
                                                  "</w:p></w:endnote></w:endnotes>"},
                        {"word/comments.xml", "<w:comments " + wordNs +
                                                  "><w:comment><w:p><w:r><w:t>remark</w:t>"
                                                  "</w:r></w:p></w:comment></w:comments>"}})
            << QByteArray("main|boxed|7|head|foot|end|remark");
        QTest::newRow("xlsx numbers as their cells show them")
            << makeZip(
                   {{"[Content_Types].xml", "<Types/>"},
                    {"xl/workbook.xml", "<workbook><workbookPr date1904=\"0\"/></workbook>"},
                    {"xl/styles.xml",
                     "<styleSheet><numFmts><numFmt numFmtId=\"164\" formatCode=\"0.0%\"/>"
                     "<numFmt numFmtId=\"165\" formatCode=\"[&lt;1]0;0\"/></numFmts>"
                     "<cellStyleXfs><xf numFmtId=\"4\"/></cellStyleXfs><cellXfs><xf/>"
                     "<xf numFmtId=\"14\"/><xf numFmtId=\"4\"/><xf numFmtId=\"164\"/>"
                     "<xf numFmtId=\"12\"/><xf numFmtId=\"165\"/></cellXfs></styleSheet>"},
                    {"xl/worksheets/sheet1.xml",
                     "<worksheet><sheetData><row><c><v>3.1415926535897931</v></c>"
                     "<c s=\"1\"><v>45365</v></c><c s=\"2\"><v>1234.5</v></c><c s=\"3\">"
                     "<v>0.256</v></c><c s=\"4\"><v>0.5</v></c><c s=\"5\"><v>0.25</v></c>"
                     "<c s=\"9\" t=\"n\"><v>12</v></c><c t=\"b\"><v>1</v></c><c t=\"e\">"
                     "<v>#N/A</v></c><c><f>A1*2</f><v>6</v></c><c t=\"d\"><v>2024-03-14T09:30:00"
                     "</v></c></row></sheetData>"
                     "</worksheet>"}})
            << QByteArray("3.141592654|3/14/2024|1,234.50|25.6%|0.5|0.25|12|TRUE|#N/A|6|"
                          "2024-03-14 09:30:00");
        QTest::newRow("ods repeats, annotations, headers")
            << makeZip(
                   {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                    {"content.xml",
                     "<office:document-content><office:body><office:spreadsheet><table:table>"
                     "<table:table-row table:number-rows-repeated=\"2\"><table:table-cell "
                     "table:number-columns-repeated=\"3\"><text:p>rep</text:p></table:table-cell>"
                     "<table:table-cell table:number-columns-repeated=\"16000\"/></table:table-row>"
                     "<table:table-row table:number-rows-repeated=\"1048000\"><table:table-cell "
                     "table:number-columns-repeated=\"1024\"/></table:table-row><table:table-row>"
                     "<table:table-cell><text:p>cell<office:annotation><dc:creator>Ann</dc:creator>"
                     "<dc:date>2024-01-01</dc:date><text:p>noted</text:p></office:annotation>"
                     "</text:p></table:table-cell></table:table-row></table:table>"
                     "</office:spreadsheet></office:body></office:document-content>"},
                    {"styles.xml",
                     "<office:document-styles><office:master-styles><style:master-page>"
                     "<style:header><text:p><text:sheet-name>?\?\?</text:sheet-name> top"
                     "</text:p></style:header><style:header-left style:display=\"false\">"
                     "<text:p>hidden</text:p></style:header-left><style:footer><text:p>Page "
                     "<text:page-number>1</text:page-number></text:p></style:footer>"
                     "</style:master-page></office:master-styles></office:document-styles>"}})
            << QByteArray("rep|rep|rep|rep|rep|rep|cell|noted| top|Page ");
        QTest::newRow("xlsx shared, rich and inline strings")
            << makeZip({{"[Content_Types].xml", "<Types/>"},
                        {"xl/workbook.xml", "<workbook/>"},
                        {"xl/worksheets/sheet1.xml",
                         "<worksheet><sheetData><row><c t=\"s\"><v>1</v></c><c t=\"s\"><v>0</v>"
                         "</c><c t=\"s\"><v>1</v></c><c><v>42</v></c><c t=\"inlineStr\"><is><t>"
                         "inline</t></is></c><c t=\"s\"><v>99</v></c></row></sheetData>"
                         "</worksheet>"},
                        {"xl/sharedStrings.xml",
                         "<sst><si><t>plain</t></si><si><r><t>ri</t></r><r><t>ch</t></r><rPh>"
                         "<t>ruby</t></rPh></si></sst>"}})
            << QByteArray("rich|plain|rich|42|inline");
        QTest::newRow("odt spans, spaces, notes")
            << makeZip({{"mimetype", "application/vnd.oasis.opendocument.text"},
                        {"content.xml",
                         "<office:document-content xmlns:office=\"o\" xmlns:text=\"t\">"
                         "<office:body><office:text><text:p>exa<text:span>mple</text:span>"
                         "<text:s/>two<text:tab/>three<text:note><text:note-citation>1"
                         "</text:note-citation><text:note-body><text:p>noted</text:p>"
                         "</text:note-body></text:note>four</text:p><text:h>head</text:h>"
                         "</office:text></office:body></office:document-content>"}})
            << QByteArray("example two|three|noted|four|head");
        QTest::newRow("epub in spine order")
            << makeZip(
                   {{"mimetype", "application/epub+zip"},
                    {"b%20c.xhtml", "<html><body><p>never</p></body></html>"},
                    {"b c.xhtml", "<html><body><p>second</p></body></html>"},
                    {"a.xhtml", "<html><head><title>t</title></head><body>first</body></html>"},
                    {"extra.xhtml", "<html><body><p>unlisted</p></body></html>"},
                    {"META-INF/container.xml", "<container><rootfiles><rootfile "
                                               "full-path=\"pkg.opf\"/></rootfiles></container>"},
                    {"pkg.opf", "<package><manifest><item id=\"x\" href=\"a.xhtml\"/><item "
                                "id=\"y\" href=\"b%20c.xhtml\"/></manifest><spine><itemref "
                                "idref=\"x\"/><itemref idref=\"y\"/></spine></package>"}})
            << QByteArray("first|second");
    }

    void documentText()
    {
        QFETCH(QByteArray, zip);
        QFETCH(QByteArray, expected);
        WordCountingSink sink;
        auto archive = ZipArchive::fromMemory({zip.constData(), std::size_t(zip.size())});
        QVERIFY(readContainer(archive, sink));
        QCOMPARE(sink.bars(), expected);
    }

    void truncatedZipIsNotClaimed()
    {
        WordCountingSink sink;
        auto zip = ZipArchive::fromMemory("PK\x03\x04 but nothing after");
        QVERIFY(!readContainer(zip, sink));
    }

    // Number formats as a spreadsheet shows them; nothing where the caller keeps the stored
    // value (conditions, fractions, dates out of range).
    void numberFormats_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* code, double value, const char* shown) {
            QTest::addRow("%s %g", code, value)
                << value << QString::fromUtf8(code) << QString::fromUtf8(shown);
        };
        row("General", 3.14159265358979, "3.141592654");
        row("General", 1.5e12, "1.5E+12");
        row("General", -42, "-42");
        row("0", 2.5, "3");
        row("0.00", 3.14159, "3.14");
        row("0.00", 1.005, "1.01");
        row("#,##0", 1234567.4, "1,234,567");
        row("#,##0.00", -1234.5, "-1,234.50");
        row("0%", 0.256, "26%");
        row("0.00E+00", 123456, "1.23E+05");
        row("#.00", 0.5, ".50");
        row("#,##0,\"K\"", 1234567, "1,235K");
        row("#,##0 ;(#,##0)", -1234.5, "(1,235)");
        row("0.0;-0.0;\"none\"", 0, "none");
        row("[$€-407] #,##0.00", 100, "€ 100.00");
        row("m/d/yyyy", 45365, "3/14/2024");
        row("d-mmm-yy", 45365.75, "14-Mar-24");
        row("h:mm AM/PM", 45365.75, "6:00 PM");
        row("m/d/yyyy h:mm", 45365.5, "3/14/2024 12:00");
        row("dddd, mmmm d, yyyy", 1, "Monday, January 1, 1900");
        row("yyyy-mm-dd", 60, "1900-02-29"); // the leap day the 1900 system counts
        row("yyyy-mm-dd", 61, "1900-03-01");
        row("[h]:mm:ss", 1.25, "30:00:00");
        row("mm:ss", 0.0034722222, "05:00");
        row("[$-409]mmmm d, yyyy;@", 45365, "March 14, 2024");
        row("[<10]0", 5, "");
        row("# ?/?", 0.333, "");
        row("yyyy", -1, "");
    }

    void numberFormats()
    {
        QFETCH(double, value);
        QFETCH(QString, code);
        QFETCH(QString, shown);
        const auto result = formatNumber(value, code.toStdString(), false);
        QCOMPARE(QString::fromStdString(result.value_or("")), shown);
        QCOMPARE(formatNumber(0, "yyyy-mm-dd", true).value_or(""), "1904-01-01");
    }

    // A small file that inflates past the budget stops there, with the text read so far, and
    // says so; so does a spreadsheet whose repeated cells would copy text without end.
    void bombsStopAtTheirLimits()
    {
        // Text-heavy, so that parsing what the budget allows stays quick.
        const QByteArray paragraph =
            "<w:p><w:r><w:t>" + QByteArray("bomb ").repeated(20000) + "</w:t></w:r></w:p>";
        const std::uint64_t total = ReadLimits::minInflatedBytes + (std::uint64_t{32} << 20);
        const QByteArray bomb =
            makeZip({{"[Content_Types].xml", "<Types/>"},
                     {"word/document.xml", paragraph, total / std::uint64_t(paragraph.size()),
                      "<w:document><w:body>"}});
        QVERIFY(bomb.size() < qsizetype{2} << 20);
        QCOMPARE(ZipArchive::budgetFor(std::uint64_t(bomb.size())), ReadLimits::minInflatedBytes);
        QCOMPARE(ZipArchive::budgetFor(std::uint64_t{1} << 40), ReadLimits::maxInflatedBytes);
        {
            const CutReport report;
            ByteCountingSink sink;
            auto zip = ZipArchive::fromMemory({bomb.constData(), std::size_t(bomb.size())});
            QVERIFY(readContainer(zip, sink));
            QVERIFY(zip.budgetSpent());
            QVERIFY(sink.bytes > ReadLimits::minInflatedBytes / 2);
            QVERIFY(sink.bytes < ReadLimits::minInflatedBytes);
            QCOMPARE(report.reasons().size(), std::size_t{1});
        }
        const QByteArray repeats =
            makeZip({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                     {"content.xml",
                      "<document-content><body><table><table-row number-rows-repeated="
                      "\"1000000000\"><table-cell number-columns-repeated=\"16384\"><p>"
                      "many</p></table-cell></table-row></table></body></document-content>"}});
        const CutReport report;
        ByteCountingSink sink;
        auto zip = ZipArchive::fromMemory({repeats.constData(), std::size_t(repeats.size())});
        QVERIFY(readContainer(zip, sink));
        QVERIFY(sink.bytes >= ReadLimits::maxRepeatedText);
        QVERIFY(sink.bytes < 2 * ReadLimits::maxRepeatedText);
        QCOMPARE(report.reasons().size(), std::size_t{1});
    }

    // A reference that multiplies work: every copy after the first is charged to the
    // inflation budget, so the reading stops there (and says so) instead of running for
    // hours; a few copies within the budget are all delivered.
    void repeatedReferencesAreCharged_data()
    {
        QTest::addColumn<QByteArray>("zip");
        QTest::addColumn<quint64>("part"); // bytes of text of the repeated part
        QTest::addColumn<quint64>("copies");
        QTest::addColumn<bool>("cut");
        const auto epub = [](const QByteArray& item, int times) {
            const QByteArray spine = QByteArray("<itemref idref=\"c\"/>").repeated(times);
            return makeZip({{"mimetype", "application/epub+zip"},
                            {"META-INF/container.xml",
                             "<container><rootfiles><rootfile full-path=\"book.opf\"/>"
                             "</rootfiles></container>"},
                            {"book.opf", "<package><manifest><item id=\"c\" href=\"c.xhtml\"/>"
                                         "</manifest><spine>" +
                                             spine + "</spine></package>"},
                            {"c.xhtml", item, std::uint64_t(10) << 20 >> 4, "<html><body><p>",
                             "</p></body></html>"}});
        };
        const QByteArray word16 = "word word words ";
        QTest::newRow("EPUB, one 10 MB item 100,000 times")
            << epub(word16, 100000) << (quint64(10) << 20) << quint64(100000) << true;
        QTest::newRow("EPUB, one item 3 times")
            << epub(word16, 3) << (quint64(10) << 20) << quint64(3) << false;
        const auto xlsx = [](int cells) {
            return makeZip(
                {{"[Content_Types].xml", "<Types/>"},
                 {"xl/workbook.xml", "<workbook/>"},
                 {"xl/sharedStrings.xml", "cell text ", std::uint64_t(1) << 16, "<sst><si><t>",
                  "</t></si></sst>"},
                 {"xl/worksheets/sheet1.xml", "<c t=\"s\"><v>0</v></c>", std::uint64_t(cells),
                  "<worksheet><sheetData><row>", "</row></sheetData></worksheet>"}});
        };
        QTest::newRow("XLSX, a 640 KB string in 1,000,000 cells")
            << xlsx(1000000) << quint64(640) * 1024 << quint64(1000000) << true;
        QTest::newRow("XLSX, the string in 5 cells")
            << xlsx(5) << quint64(640) * 1024 << quint64(5) << false;
    }
    void repeatedReferencesAreCharged()
    {
        QFETCH(QByteArray, zip);
        QFETCH(quint64, part);
        QFETCH(quint64, copies);
        QFETCH(bool, cut);
        QVERIFY(zip.size() < qsizetype{4} << 20);
        const CutReport report;
        ByteCountingSink sink;
        auto archive = ZipArchive::fromMemory({zip.constData(), std::size_t(zip.size())});
        QVERIFY(readContainer(archive, sink));
        if (!cut) {
            QCOMPARE(sink.bytes, part * copies);
            QVERIFY(report.reasons().empty());
            return;
        }
        // Whole copies only, as many as the budget pays for beyond what was inflated.
        QCOMPARE(sink.bytes % part, quint64(0));
        QVERIFY(sink.bytes > ReadLimits::minInflatedBytes / 2);
        QVERIFY(sink.bytes <= ReadLimits::minInflatedBytes);
        // The sheet's own inflating may then stop at the spent budget too.
        QVERIFY(report.reasons().size() <= 2);
        QVERIFY(report.reasons().front().starts_with("zip: repeated text stopped at 256 MiB"));
    }

    void entriesAreCapped()
    {
        QList<Entry> entries;
        for (std::size_t i = 0; i < ReadLimits::maxContainerEntries + 500; ++i) {
            entries.append({"f" + QByteArray::number(qulonglong(i)), "x"});
        }
        const QByteArray bytes = makeZip(entries);
        auto zip = ZipArchive::fromMemory({bytes.constData(), std::size_t(bytes.size())});
        QCOMPARE(zip.names().size(), ReadLimits::maxContainerEntries);
    }
};

QTEST_GUILESS_MAIN(ContainerReaderTest)
#include "ContainerReaderTest.moc"
