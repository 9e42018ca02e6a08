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

} // namespace

class DocumentFormatsTest : public QObject {
    Q_OBJECT

private slots:
    // Each document made from a source text by a real office tool gives the source's
    // words, as a multiset, up to the differences listed, and quickly.
    void matchesSourceWords_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QStringList>("notDelivered");
        const auto row = [](const char* document, const char* source, QStringList notDelivered) {
            QTest::newRow(document)
                << QString::fromLatin1(document) << QString::fromLatin1(source) << notDelivered;
        };
        for (const char* name :
             {"source.docx", "source.odt", "source.fodt", "source.rtf", "source.pdf", "source.epub",
              "source.html", "source.doc", "note.rtfd"}) {
            row(name, "source.txt", {});
        }
        // Numeric cells are not text in SpreadsheetML: their stored value is not what shows.
        row("sheet.xlsx", "sheet.csv", {QStringLiteral("3.14"), QStringLiteral("2024")});
        row("sheet.ods", "sheet.csv", {});
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
            expected.remove(word);
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
