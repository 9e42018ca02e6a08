#include "indexer/readers/ContainerReader.h"
#include "WordCountingSink.h"
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
                                             std::uint64_t(entry.head.size())));
        archive_write_header(a, e);
        archive_write_data(a, entry.head.constData(), size_t(entry.head.size()));
        for (std::uint64_t i = 0; i < entry.repeats; ++i) {
            archive_write_data(a, entry.data.constData(), size_t(entry.data.size()));
        }
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
            << QByteArray("rich|plain|rich|inline");
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

    // A small file that inflates past the budget stops there, with the text read so far.
    void zipBombStopsAtTheBudget()
    {
        // Text-heavy, so that parsing what the budget allows stays quick.
        const QByteArray paragraph =
            "<w:p><w:r><w:t>" + QByteArray("bomb ").repeated(20000) + "</w:t></w:r></w:p>";
        const std::uint64_t total = ReadLimits::maxInflatedBytes + (std::uint64_t{32} << 20);
        const QByteArray bomb =
            makeZip({{"[Content_Types].xml", "<Types/>"},
                     {"word/document.xml", paragraph, total / std::uint64_t(paragraph.size()),
                      "<w:document><w:body>"}});
        QVERIFY(bomb.size() < 2 * 1024 * 1024);
        ByteCountingSink sink;
        auto zip = ZipArchive::fromMemory({bomb.constData(), std::size_t(bomb.size())});
        QVERIFY(readContainer(zip, sink));
        QVERIFY(zip.budgetSpent());
        QVERIFY(sink.bytes > ReadLimits::maxInflatedBytes / 2);
        QVERIFY(sink.bytes < ReadLimits::maxInflatedBytes);
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
