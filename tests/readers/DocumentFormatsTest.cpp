#include "indexer/readers/DocumentFormats.h"
#include "WordCountingSink.h"
#include "indexer/ResourceLimits.h"
#include "indexer/readers/CutReport.h"
#include "indexer/readers/PdfReader.h"
#include "indexer/readers/ReadLimits.h"
#include "indexer/readers/WordDocReader.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>

using namespace tallyvox::indexer;
using namespace tallyvox::indexer::readers;

namespace {

std::string dataPath(const QString& name)
{
    return QFile::encodeName(QStringLiteral(TEST_DATA_DIR "/") + name).toStdString();
}

QByteArray dataBytes(const QString& name)
{
    QFile file(QString::fromStdString(dataPath(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Three pages; the second draws form XObject 1, which draws 2 eight times, and so on down to
// 8, which shows a word: 8^8 words on one page, from 3 KB.
QByteArray xobjectBomb()
{
    QList<QByteArray> objects;
    const auto stream = [](const QByteArray& dictionary, const QByteArray& content) {
        return "<< " + dictionary + " /Length " + QByteArray::number(content.size()) +
               " >>\nstream\n" + content + "\nendstream";
    };
    const QByteArray font = "/Font << /F1 4 0 R >>";
    const QByteArray box = "/MediaBox [0 0 612 792]";
    objects << "<< /Type /Catalog /Pages 2 0 R >>"
            << "<< /Type /Pages /Kids [5 0 R 6 0 R 7 0 R] /Count 3 >>"
            << "<< >>" // unused
            << "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"
            << "<< /Type /Page /Parent 2 0 R " + box + " /Resources << " + font +
                   " >> /Contents 8 0 R >>"
            << "<< /Type /Page /Parent 2 0 R " + box + " /Resources << " + font +
                   " /XObject << /X 11 0 R >> >> /Contents 9 0 R >>"
            << "<< /Type /Page /Parent 2 0 R " + box + " /Resources << " + font +
                   " >> /Contents 10 0 R >>"
            << stream("", "BT /F1 12 Tf 72 700 Td (before the bomb) Tj ET") << stream("", "/X Do")
            << stream("", "BT /F1 12 Tf 72 700 Td (after the bomb) Tj ET");
    for (int level = 1; level <= 8; ++level) {
        const QByteArray form = "/Type /XObject /Subtype /Form /BBox [0 0 612 792] /Resources << " +
                                font + " /XObject << /X " + QByteArray::number(11 + level) +
                                " 0 R >> >>";
        objects << stream(form, level < 8 ? QByteArray("/X Do ").repeated(8)
                                          : QByteArray("BT /F1 1 Tf 0 0 Td (w) Tj ET"));
    }
    QByteArray pdf = "%PDF-1.4\n";
    QList<qsizetype> offsets;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        offsets << pdf.size();
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const qsizetype xref = pdf.size();
    pdf += "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (const qsizetype offset : offsets) {
        pdf += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    }
    pdf += "trailer\n<< /Size " + QByteArray::number(objects.size() + 1) +
           " /Root 1 0 R >>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";
    return pdf;
}

// A PDF of the given pages, each showing one line of text in Helvetica.
QByteArray pdfOfPages(const QList<QByteArray>& lines)
{
    QList<QByteArray> objects;
    const auto pages = lines.size();
    QByteArray kids;
    for (qsizetype i = 0; i < pages; ++i) {
        kids += QByteArray::number(4 + 2 * i) + " 0 R ";
    }
    objects << "<< /Type /Catalog /Pages 2 0 R >>"
            << "<< /Type /Pages /Kids [" + kids + "] /Count " + QByteArray::number(pages) + " >>"
            << "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>";
    for (const QByteArray& line : lines) {
        const QByteArray content = "BT /F1 12 Tf 72 700 Td (" + line + ") Tj ET";
        objects << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Resources << /Font "
                   "<< /F1 3 0 R >> >> /Contents " +
                       QByteArray::number(objects.size() + 2) + " 0 R >>"
                << "<< /Length " + QByteArray::number(content.size()) + " >>\nstream\n" + content +
                       "\nendstream";
    }
    QByteArray pdf = "%PDF-1.4\n";
    QList<qsizetype> offsets;
    for (qsizetype i = 0; i < objects.size(); ++i) {
        offsets << pdf.size();
        pdf += QByteArray::number(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const qsizetype xref = pdf.size();
    pdf += "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (const qsizetype offset : offsets) {
        pdf += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    }
    pdf += "trailer\n<< /Size " + QByteArray::number(objects.size() + 1) +
           " /Root 1 0 R >>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";
    return pdf;
}

// Page i says "alpha pgI": every page has a word of its own.
QList<QByteArray> numberedLines(int pages)
{
    QList<QByteArray> lines;
    for (int i = 1; i <= pages; ++i) {
        lines << "alpha pg" + QByteArray::number(i);
    }
    return lines;
}

struct IndexerRun {
    int status = -1;
    QByteArray output;
    QByteArray error;
};

// Runs an indexer on path with TMPDIR at folder and the variables given.
IndexerRun runIndexer(const QString& program, const QString& path, const QString& folder,
                      const QList<std::pair<QString, QString>>& variables = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), folder);
    for (const auto& [name, value] : variables) {
        environment.insert(name, value);
    }
    process.setProcessEnvironment(environment);
    process.start(program, {path});
    IndexerRun run;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit) {
        run.status = process.exitCode();
    }
    run.output = process.readAllStandardOutput();
    run.error = process.readAllStandardError();
    return run;
}

QString writeInput(const QTemporaryDir& dir, const QString& name, const QByteArray& content)
{
    QFile file(dir.filePath(name));
    if (!file.open(QIODevice::WriteOnly)) {
        return {};
    }
    file.write(content);
    return file.fileName();
}

} // namespace

Q_DECLARE_METATYPE(QList<QByteArray>)

class DocumentFormatsTest : public QObject {
    Q_OBJECT

private slots:
    // Each document made from a source text by a real office tool gives the source's
    // words, as a multiset, up to the differences listed, and quickly.
    void matchesSourceWords_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("notDelivered"); // "+word": delivered, not in the source
        const auto row = [](const char* document, const char* source,
                            const QStringList& notDelivered) {
            QTest::newRow(document)
                << QString::fromLatin1(document) << QString::fromLatin1(source) << notDelivered;
        };
        for (const char* name :
             {"source.docx", "source.odt", "source.fodt", "source.rtf", "source.pdf", "source.epub",
              "source.html", "source.doc", "note.rtfd"}) {
            row(name, "source.txt", {});
        }
        row("sheet.xlsx", "sheet.csv", {});
        // Calc's default footer, "Page 1", with the page number left out.
        row("sheet.ods", "sheet.csv", {QStringLiteral("+Page")});
        // The Markdown source's note fences that are not slide text.
        row("slides.pptx", "slides.md", {QStringLiteral("notes")});
        row("slides.odp", "slides.md", {QStringLiteral("notes")});
        row("encrypted.pdf", "", {}); // no text
    }

    void matchesSourceWords()
    {
        QFETCH(QString, document);
        QFETCH(QString, source);
        QFETCH(QStringList, notDelivered);

        WordCountingSink sink;
        const auto begin = std::chrono::steady_clock::now();
        QVERIFY(readDocument(dataPath(document), sink));
        QVERIFY(std::chrono::steady_clock::now() - begin < std::chrono::seconds(2));
        QMap<QString, int> expected = WordCountingSink::countWords(dataBytes(source).toStdString());
        QVERIFY(source.isEmpty() || expected.size() > 50);
        for (const QString& word : notDelivered) {
            if (word.startsWith(QLatin1Char('+'))) {
                ++expected[word.mid(1)];
            } else {
                expected.remove(word);
            }
        }
        QCOMPARE(sink.words(), expected);

        // Cut short, it is still claimed and gives what could be read, without a crash.
        const QByteArray bytes = dataBytes(document); // nothing for a package folder
        QTemporaryDir dir;
        QFile cut(dir.filePath(document));
        for (const qsizetype keep : {bytes.size() / 2, bytes.size() - 30, qsizetype(600)}) {
            if (bytes.isEmpty()) {
                break;
            }
            QVERIFY(cut.open(QIODevice::WriteOnly | QIODevice::Truncate));
            cut.write(bytes.left(keep));
            cut.close();
            QVERIFY2(readDocument(QFile::encodeName(cut.fileName()).toStdString(), sink),
                     qPrintable(QString::number(keep)));
        }
    }

    // The kind, and whether the document is read here or left to the caller as plain text,
    // follow the content, not the name.
    void claimsByContentNotName_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("name");
        QTest::addColumn<DocumentKind>("kind");
        const auto row = [](const char* source, const char* name, DocumentKind kind) {
            QTest::addRow("%s as %s", source, name)
                << QString::fromLatin1(source) << QString::fromLatin1(name) << kind;
        };
        row("source.pdf", "x.txt", DocumentKind::Pdf);
        row("source.docx", "x.pdf", DocumentKind::Container);
        row("source.doc", "x.rtf", DocumentKind::WordBinary);
        row("source.txt", "x.docx", DocumentKind::PlainText);
        row("source.html", "x.txt", DocumentKind::Html);
        row("source.fodt", "x.html", DocumentKind::Xml);
    }

    void claimsByContentNotName()
    {
        QFETCH(QString, source);
        QFETCH(QString, name);
        QFETCH(DocumentKind, kind);
        QTemporaryDir dir;
        const QString copy = dir.filePath(name);
        QVERIFY(QFile::copy(QString::fromStdString(dataPath(source)), copy));
        QCOMPARE(documentKind(QFile::encodeName(copy).toStdString()), kind);
        WordCountingSink sink;
        QCOMPARE(readDocument(QFile::encodeName(copy).toStdString(), sink),
                 kind != DocumentKind::PlainText);
        QCOMPARE(sink.collected().empty(), kind == DocumentKind::PlainText);
    }

    // A .doc whose sector chain loops is damaged: it gives nothing, or the words read before
    // the loop, never the looped sectors again as more text.
    void loopingWordChainsStop_data()
    {
        QTest::addColumn<bool>("mini");     // the mini FAT, else the FAT
        QTest::addColumn<quint32>("index"); // the entry changed
        QTest::addColumn<quint32>("next");  // what it now says follows
        // source.doc: WordDocument is sectors 7 to 16, 1Table mini sectors 3 onwards.
        QTest::newRow("WordDocument back to its start") << false << 9u << 7u;
        QTest::newRow("WordDocument on itself") << false << 7u << 7u;
        QTest::newRow("WordDocument near its end") << false << 15u << 14u;
        QTest::newRow("1Table back to its start") << true << 10u << 3u;
    }
    void loopingWordChainsStop()
    {
        QFETCH(bool, mini);
        QFETCH(quint32, index);
        QFETCH(quint32, next);
        QByteArray doc = dataBytes(QStringLiteral("source.doc"));
        const auto le = [&doc](qsizetype at) {
            return quint32(quint8(doc[at])) | quint32(quint8(doc[at + 1])) << 8 |
                   quint32(quint8(doc[at + 2])) << 16 | quint32(quint8(doc[at + 3])) << 24;
        };
        const qsizetype sectorSize = qsizetype{1} << quint8(doc[0x1E]);
        const qsizetype table = (le(mini ? 0x3C : 0x4C) + 1) * sectorSize;
        for (int i = 0; i < 4; ++i) {
            doc[table + qsizetype{4} * index + i] = char(next >> (8 * i));
        }
        WordCountingSink whole;
        const QByteArray intact = dataBytes(QStringLiteral("source.doc"));
        QVERIFY(readWordDocument({intact.constData(), std::size_t(intact.size())}, whole));
        const QMap<QString, int> original = whole.words();

        const CutReport report;
        WordCountingSink sink;
        readWordDocument({doc.constData(), std::size_t(doc.size())}, sink);
        const QMap<QString, int> words = sink.words();
        for (auto it = words.begin(); it != words.end(); ++it) {
            QVERIFY2(it.value() <= original.value(it.key()), qPrintable(it.key()));
        }
        QCOMPARE(report.reasons(),
                 std::vector<std::string>{"Word: a sector chain loops; the file is damaged"});
    }

    // A PDF starts with its marker, after blanks or binary junk only.
    void pdfMarker_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<DocumentKind>("kind");
        QTest::newRow("at the start") << QByteArray("%PDF-1.7\n") << DocumentKind::Pdf;
        QTest::newRow("after blank lines") << QByteArray("\r\n\n %PDF-1.4\n") << DocumentKind::Pdf;
        QTest::newRow("after a binary header")
            << QByteArray("\0\x05x.pdf", 8) + QByteArray(120, '\0') + "%PDF-1.3\n"
            << DocumentKind::Pdf;
        QTest::newRow("quoted in text")
            << QByteArray("Notes\nA file starts with %PDF-1.4 and so on.\n")
            << DocumentKind::PlainText;
        QTest::newRow("quoted in markdown")
            << QByteArray("# PDF\n\n`%PDF-1.7` is the header.\n") << DocumentKind::PlainText;
        QTest::newRow("quoted in html")
            << QByteArray("<html><body><p>%PDF-1.4</p></body></html>") << DocumentKind::Html;
        QTest::newRow("no version") << QByteArray("%PDF-x\n") << DocumentKind::PlainText;
    }

    void pdfMarker()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(DocumentKind, kind);
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("x")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        QCOMPARE(documentKind(QFile::encodeName(file.fileName()).toStdString()), kind);
    }

    // Form XObjects drawing each other eight ways eight levels deep on page 2: poppler would
    // run for minutes. The page is left out in seconds, the pages around it are read, and
    // the cut is reported.
    void pdfBombPageIsLeftOut()
    {
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("bomb.pdf")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(xobjectBomb());
        file.close();
        const CutReport report;
        WordCountingSink sink;
        const auto begin = std::chrono::steady_clock::now();
        QVERIFY(readDocument(QFile::encodeName(file.fileName()).toStdString(), sink));
        QVERIFY(std::chrono::steady_clock::now() - begin <
                std::chrono::seconds(ReadLimits::maxPdfPageSeconds + 5));
        QCOMPARE(sink.words(), WordCountingSink::countWords("before the bomb after the bomb"));
        QCOMPARE(report.reasons().size(), std::size_t{1});
        QVERIFY(report.reasons()[0].find("page 2 of 3") != std::string::npos);
    }

    // However many page readers share a PDF, its pages arrive whole and in order, and none
    // is dropped or read twice where the runs of pages change hands.
    void pdfPagesInOrderWhateverTheThreads_data()
    {
        QTest::addColumn<int>("readers");        // 0: as the indexer chooses, from the variable
        QTest::addColumn<QByteArray>("threads"); // TALLYVOX_INDEXER_THREADS; empty: unset
        QTest::addColumn<QList<QByteArray>>("lines");
        const QList<QByteArray> many = numberedLines(37); // four runs of eight and a part
        QTest::newRow("one reader") << 1 << QByteArray() << many;
        QTest::newRow("two readers") << 2 << QByteArray() << many;
        QTest::newRow("three readers") << 3 << QByteArray() << many;
        QTest::newRow("more readers than runs") << 8 << QByteArray() << many;
        QTest::newRow("variable: one") << 0 << QByteArray("1") << many;
        QTest::newRow("variable: more than the cores") << 0 << QByteArray("64") << many;
        QTest::newRow("variable unset: the cores") << 0 << QByteArray() << many;
        QTest::newRow("variable not a number: the cores") << 0 << QByteArray("two") << many;
        QTest::newRow("one page, many readers") << 4 << QByteArray() << numberedLines(1);
        QTest::newRow("one run exactly") << 2 << QByteArray() << numberedLines(8);
        QTest::newRow("one page past a run") << 2 << QByteArray() << numberedLines(9);
        QTest::newRow("three readers, one page past two runs")
            << 3 << QByteArray() << numberedLines(17);
    }

    void pdfPagesInOrderWhateverTheThreads()
    {
        QFETCH(int, readers);
        QFETCH(QByteArray, threads);
        QFETCH(QList<QByteArray>, lines);
        QTemporaryDir dir;
        const QString path = writeInput(dir, QStringLiteral("pages.pdf"), pdfOfPages(lines));
        const std::string file = QFile::encodeName(path).toStdString();
        const CutReport report;
        WordCountingSink sink;
        if (readers > 0) {
            readPdf(file, sink, static_cast<unsigned>(readers));
        } else {
            if (threads.isEmpty()) {
                qunsetenv("TALLYVOX_INDEXER_THREADS");
            } else {
                qputenv("TALLYVOX_INDEXER_THREADS", threads);
            }
            const bool claimed = readDocument(file, sink);
            qunsetenv("TALLYVOX_INDEXER_THREADS");
            QVERIFY(claimed);
        }
        QVERIFY(report.reasons().empty());
        QCOMPARE(QByteArray::fromStdString(sink.collected()).simplified(), lines.join(' '));
    }

    // Progress rises as the reading goes on: the application ends an indexer whose progress
    // stands still for a minute. Every PDF page moves it, whichever reader read it.
    void progressRisesWhileReading_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("threads");
        QTest::addColumn<int>("rises"); // at least
        const QByteArray pdf = pdfOfPages(numberedLines(37));
        QTest::newRow("pdf, one reader") << pdf << QByteArray("1") << 37;
        QTest::newRow("pdf, three readers") << pdf << QByteArray("3") << 37;
        QTest::newRow("word 97") << dataBytes(QStringLiteral("source.doc")) << QByteArray("1") << 1;
        QTest::newRow("rtf") << dataBytes(QStringLiteral("source.rtf")) << QByteArray("1") << 1;
        QTest::newRow("text") << QByteArray("some words ").repeated(100000) << QByteArray("2") << 1;
    }

    void progressRisesWhileReading()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, threads);
        QFETCH(int, rises);
        QTemporaryDir dir;
        const QString path = writeInput(dir, QStringLiteral("in"), content);
        const IndexerRun run = runIndexer(
            QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"), path, dir.path(),
            {{QStringLiteral("TALLYVOX_PROGRESS_MS"), QStringLiteral("0")},
             {QStringLiteral("TALLYVOX_INDEXER_THREADS"), QString::fromLatin1(threads)}});
        QCOMPARE(run.status, 0);
        qint64 done = 0;
        int risen = 0;
        for (const QByteArray& line : run.output.split('\n')) {
            if (line.isEmpty()) {
                continue;
            }
            const QList<QByteArray> fields = line.split(' ');
            QCOMPARE(fields.size(), 3);
            QCOMPARE(fields[0], QByteArray("progress"));
            QCOMPARE(fields[2].toLongLong(), content.size());
            QVERIFY2(fields[1].toLongLong() >= done, line.constData());
            risen += fields[1].toLongLong() > done ? 1 : 0;
            done = fields[1].toLongLong();
        }
        QVERIFY2(risen >= rises, run.output.constData());
        QCOMPARE(done, qint64(content.size()));
    }

    // SearchKitIndexer hands every document a reader claims to the indexer beside it; when
    // that one is missing, it says so and fails, and the application falls back. Plain text
    // never needs it.
    void documentsNeedTheDocumentIndexer_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("table");
        QTest::newRow("text") << QByteArray("just words") << 0 << true;
        QTest::newRow("pdf") << dataBytes(QStringLiteral("source.pdf")) << 1 << false;
        QTest::newRow("rtf") << dataBytes(QStringLiteral("source.rtf")) << 1 << false;
        QTest::newRow("html") << QByteArray("<html><p>words</p></html>") << 1 << false;
    }

    void documentsNeedTheDocumentIndexer()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, status);
        QFETCH(bool, table);
        QTemporaryDir dir;
        const QString alone = dir.filePath(QStringLiteral("SearchKitIndexer"));
        QVERIFY(QFile::copy(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"), alone));
        const QString path = writeInput(dir, QStringLiteral("in"), content);
        const IndexerRun run = runIndexer(alone, path, dir.path());
        QCOMPARE(run.status, status);
        QCOMPARE(run.error.contains("could not be started"), status == 1);
        QCOMPARE(QFile::exists(dir.filePath(QStringLiteral("index-1964.dat"))), table);
    }

    // The executables: a table cut by a limit is still written, with status 3 and a line on
    // stderr; the fallback leaves an empty table for the binary formats it cannot read.
    void indexerSaysWhatWasCut_data()
    {
        QTest::addColumn<QString>("indexer");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("reason"); // in the line on stderr
        QTest::addColumn<bool>("empty");
        const QByteArray tag = "<p" + QByteArray(" a").repeated(1000) + ">";
        const QString main = QStringLiteral("SearchKitIndexer");
        const QString fallback = QStringLiteral("SearchKitIndexer32");
        QTest::newRow("complete") << main << QByteArray("<p>all words</p>") << 0 << QByteArray()
                                  << false;
        QTest::newRow("cut") << main << "<html>" + tag + "some words</p>" << 3
                             << QByteArray("attributes past the first 256") << false;
        QTest::newRow("fallback, text")
            << fallback << QByteArray("words") << 0 << QByteArray() << false;
        QTest::newRow("fallback, pdf") << fallback << dataBytes(QStringLiteral("source.pdf")) << 3
                                       << QByteArray("a PDF document") << true;
        QTest::newRow("fallback, docx") << fallback << dataBytes(QStringLiteral("source.docx")) << 3
                                        << QByteArray("a zip container") << true;
        QTest::newRow("fallback, doc") << fallback << dataBytes(QStringLiteral("source.doc")) << 3
                                       << QByteArray("an OLE compound file") << true;
    }

    void indexerSaysWhatWasCut()
    {
        QFETCH(QString, indexer);
        QFETCH(QByteArray, content);
        QFETCH(int, status);
        QFETCH(QByteArray, reason);
        QFETCH(bool, empty);
        QTemporaryDir dir;
        QFile input(dir.filePath(QStringLiteral("in")));
        QVERIFY(input.open(QIODevice::WriteOnly));
        input.write(content);
        input.close();
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TMPDIR"), dir.path());
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/") + indexer, {input.fileName()});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitCode(), status);
        const QByteArray error = process.readAllStandardError();
        QCOMPARE(error.count('\n'), status == 3 ? 1 : 0);
        QVERIFY2(error.contains(reason), error.constData());
        QFile result(dir.filePath(QStringLiteral("index-1964.dat")));
        QVERIFY(result.open(QIODevice::ReadOnly));
        // An empty dictionary is a header, one object and a trailer; keys are stored as such.
        const QByteArray table = result.readAll();
        QCOMPARE(table.size() < 48, empty);
        QCOMPARE(table.contains("words"), !empty);
    }

    // A larger input may use more CPU, so that a real file of any size lists; a small one
    // keeps the base cap, which ends a hostile one quickly.
    void cpuCapGrowsWithTheInput_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<quint64>("seconds");
        constexpr quint64 gib = quint64{1} << 30;
        QTest::newRow("empty") << quint64{0} << quint64{120};
        QTest::newRow("11 bytes") << quint64{11} << quint64{120};
        QTest::newRow("just under a GiB") << gib - 1 << quint64{120};
        QTest::newRow("a GiB") << gib << quint64{180};
        QTest::newRow("4 GB of text") << quint64{4'000'000'000} << quint64{300};
        QTest::newRow("4 GiB") << 4 * gib << quint64{360};
    }

    void cpuCapGrowsWithTheInput()
    {
        QFETCH(quint64, bytes);
        QFETCH(quint64, seconds);
        QCOMPARE(capsForInput(bytes).cpuSeconds, seconds);
        QCOMPARE(capsForInput(bytes).addressSpaceBytes, ResourceCaps{}.addressSpaceBytes);
    }

    // In a child process, so that the caps do not bind the test itself.
    void resourceCapsBindTheProcess()
    {
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            rlimit cpu{};
            rlimit core{};
            const bool applied = applyResourceCaps({30, std::uint64_t{1} << 30}) &&
                                 getrlimit(RLIMIT_CPU, &cpu) == 0 &&
                                 getrlimit(RLIMIT_CORE, &core) == 0;
            // A soft CPU limit below the hard one: a signal to stop comes before the kill.
            if (!applied || cpu.rlim_cur != 30 || cpu.rlim_max <= cpu.rlim_cur || core.rlim_cur) {
                _exit(1);
            }
#ifndef __SANITIZE_ADDRESS__
            _exit(std::malloc(std::size_t{2} << 30) == nullptr ? 0 : 2);
#endif
            _exit(0);
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
    }
};

QTEST_GUILESS_MAIN(DocumentFormatsTest)
#include "DocumentFormatsTest.moc"
