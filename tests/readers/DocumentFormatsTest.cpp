#include "indexer/readers/DocumentFormats.h"
#include "WordCountingSink.h"
#include "indexer/ResourceLimits.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <new>
#include <vector>

using namespace tallyvox::indexer;
using namespace tallyvox::indexer::readers;

namespace {

std::string dataPath(const QString& name)
{
    return QFile::encodeName(QStringLiteral(TEST_DATA_DIR "/") + name).toStdString();
}

QMap<QString, int> wordsOfFile(const QString& name)
{
    QFile file(QString::fromStdString(dataPath(name)));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return WordCountingSink::countWords(file.readAll().toStdString());
}

QByteArray readBytes(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class DocumentFormatsTest : public QObject {
    Q_OBJECT

private slots:
    // Each document made from a source text by a real office tool gives the source's
    // words, as a multiset, up to the differences listed.
    void matchesSourceWords_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("notDelivered");

        const QStringList none;
        const QString text = QStringLiteral("source.txt");
        for (const char* ext : {"docx", "odt", "fodt", "rtf", "pdf", "epub", "html", "doc"}) {
            QTest::newRow(ext) << QStringLiteral("source.") + QLatin1String(ext) << text << none;
        }
        QTest::newRow("note.rtfd") << QStringLiteral("note.rtfd") << text << none;
        // Numeric cells are not text in SpreadsheetML: their stored value is not what shows.
        QTest::newRow("xlsx") << QStringLiteral("sheet.xlsx") << QStringLiteral("sheet.csv")
                              << QStringList{QStringLiteral("3.14"), QStringLiteral("2024")};
        QTest::newRow("ods") << QStringLiteral("sheet.ods") << QStringLiteral("sheet.csv") << none;
        // The Markdown source's note fences that are not slide text.
        const QStringList markdown{QStringLiteral("notes")};
        QTest::newRow("pptx") << QStringLiteral("slides.pptx") << QStringLiteral("slides.md")
                              << markdown;
        QTest::newRow("odp") << QStringLiteral("slides.odp") << QStringLiteral("slides.md")
                             << markdown;
    }

    void matchesSourceWords()
    {
        QFETCH(QString, document);
        QFETCH(QString, source);
        QFETCH(QStringList, notDelivered);

        WordCountingSink sink;
        QVERIFY(readDocument(dataPath(document), sink));
        QMap<QString, int> expected = wordsOfFile(source);
        QVERIFY(expected.size() > 50);
        for (const QString& word : notDelivered) {
            expected.remove(word);
        }
        QCOMPARE(sink.words(), expected);
    }

    void claimsByContentNotName_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("kind");

        QTest::newRow("pdf named .txt")
            << QStringLiteral("source.pdf") << QStringLiteral("x.txt") << int(DocumentKind::Pdf);
        QTest::newRow("docx named .pdf") << QStringLiteral("source.docx") << QStringLiteral("x.pdf")
                                         << int(DocumentKind::Container);
        QTest::newRow("rtf named .doc")
            << QStringLiteral("source.rtf") << QStringLiteral("x.doc") << int(DocumentKind::Rtf);
        QTest::newRow("doc named .rtf") << QStringLiteral("source.doc") << QStringLiteral("x.rtf")
                                        << int(DocumentKind::WordBinary);
        QTest::newRow("text named .docx")
            << QStringLiteral("source.txt") << QStringLiteral("x.docx")
            << int(DocumentKind::PlainText);
        QTest::newRow("html named .txt")
            << QStringLiteral("source.html") << QStringLiteral("x.txt") << int(DocumentKind::Html);
        QTest::newRow("xml named .html")
            << QStringLiteral("source.fodt") << QStringLiteral("x.html") << int(DocumentKind::Xml);
        QTest::newRow("markdown") << QStringLiteral("slides.md") << QStringLiteral("x.md")
                                  << int(DocumentKind::PlainText);
    }

    void claimsByContentNotName()
    {
        QFETCH(QString, source);
        QFETCH(QString, name);
        QFETCH(int, kind);
        QTemporaryDir dir;
        const QString copy = dir.filePath(name);
        QVERIFY(QFile::copy(QString::fromStdString(dataPath(source)), copy));
        QCOMPARE(int(documentKind(QFile::encodeName(copy).toStdString())), kind);
    }

    void plainTextIsLeftToTheCaller()
    {
        WordCountingSink sink;
        QVERIFY(!readDocument(dataPath(QStringLiteral("source.txt")), sink));
        QVERIFY(!readDocument(dataPath(QStringLiteral("slides.md")), sink));
        QVERIFY(sink.collected().empty());
    }

    // A file cut short is still claimed and gives what could be read, without a crash.
    void truncatedDocumentsAreClaimed_data()
    {
        QTest::addColumn<QString>("document");
        for (const char* name : {"source.docx", "source.odt", "source.epub", "source.pdf",
                                 "source.rtf", "source.doc", "sheet.xlsx", "slides.pptx"}) {
            QTest::newRow(name) << QString::fromLatin1(name);
        }
    }

    void truncatedDocumentsAreClaimed()
    {
        QFETCH(QString, document);
        const QByteArray bytes = readBytes(dataPath(document));
        QTemporaryDir dir;
        for (const qsizetype keep : {bytes.size() / 2, bytes.size() - 30, qsizetype(600)}) {
            QFile cut(dir.filePath(QStringLiteral("cut-") + document));
            QVERIFY(cut.open(QIODevice::WriteOnly | QIODevice::Truncate));
            cut.write(bytes.left(keep));
            cut.close();
            WordCountingSink sink;
            QVERIFY(readDocument(QFile::encodeName(cut.fileName()).toStdString(), sink));
        }
    }

    void encryptedPdfGivesNoTextQuickly()
    {
        WordCountingSink sink;
        const auto start = std::chrono::steady_clock::now();
        QVERIFY(readDocument(dataPath(QStringLiteral("encrypted.pdf")), sink));
        QVERIFY(sink.words().isEmpty());
        QVERIFY(std::chrono::steady_clock::now() - start < std::chrono::seconds(2));
    }

    // In a child process, so that the caps do not bind the test itself.
    void resourceCapsBindTheProcess()
    {
        const pid_t child = fork();
        QVERIFY(child >= 0);
        if (child == 0) {
            ResourceCaps caps;
            caps.cpuSeconds = 30;
            caps.addressSpaceBytes = std::uint64_t{1} << 30;
            if (!applyResourceCaps(caps)) {
                _exit(1);
            }
            rlimit cpu{};
            rlimit core{};
            getrlimit(RLIMIT_CPU, &cpu);
            getrlimit(RLIMIT_CORE, &core);
            if (cpu.rlim_cur != 30 || cpu.rlim_max != 40 || core.rlim_cur != 0) {
                _exit(2);
            }
#ifndef __SANITIZE_ADDRESS__
            void* huge = std::malloc(std::size_t{2} << 30);
            _exit(huge == nullptr ? 0 : 3);
#else
            _exit(0);
#endif
        }
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
    }
};

QTEST_GUILESS_MAIN(DocumentFormatsTest)
#include "DocumentFormatsTest.moc"
