// Both indexer executables as the application runs them: one argument, TMPDIR pointing at a
// private folder, the result read back from index-1964.dat.

#include "tests/common/TestEnvironment.h"
#include "words/WordTableReader.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringEncoder>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using tallyvox::ReadWordTableFile;
using tallyvox::WordTable;
using tallyvox::testing::TestEnvironment;

namespace {

const QString resultName = QStringLiteral("index-1964.dat");
const QStringList indexers{QStringLiteral("SearchKitIndexer"),
                           QStringLiteral("SearchKitIndexer32")};

// Runs the indexer on path; returns its exit code (-1 when it crashed or hung).
int runIndexer(const QString& indexer, const QString& path)
{
    QProcess process;
    process.start(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/") + indexer, {path});
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit) {
        return -1;
    }
    return process.exitCode();
}

std::optional<WordTable> indexFile(const TestEnvironment& environment, const QString& indexer,
                                   const QString& path)
{
    if (runIndexer(indexer, path) < 0) {
        return std::nullopt;
    }
    return ReadWordTableFile(environment.tempFolder() + QLatin1Char('/') + resultName);
}

// What the temporary folder holds besides the result: must stay empty.
QStringList leftovers(const TestEnvironment& environment)
{
    QStringList names = QDir(environment.tempFolder())
                            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    names.removeAll(resultName);
    return names;
}

} // namespace

class IndexerTest : public QObject {
    Q_OBJECT

private slots:
    void countsWords_data();
    void countsWords();
    void replacesTheEarlierResult();
    void givesUpQuietlyOnADirectoryInTheWay();
    void saysWhyItRefusesASharedFolder();
    void sameFileWhateverTheThreads_data();
    void sameFileWhateverTheThreads();
    void servesFileAfterFileEachInAChild();
};

void IndexerTest::countsWords_data()
{
    QTest::addColumn<QString>("indexer");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<WordTable>("some"); // words that must have these counts
    QTest::addColumn<int>("size");       // of the table, or -1
    QTest::addColumn<QString>("input");  // what the indexer is given, below the test's folder
    const QString sample = QStringLiteral(
        "Grüße aus Köln! Les élèves étaient très fâchés, car la leçon était déjà terminée. "
        "Où sont les cahiers? Ça coûte cher, n'est-ce pas? Garçon, un café crème. café CAFÉ");
    const WordTable sampleWords{{QStringLiteral("Grüße"), 1},
                                {QStringLiteral("élèves"), 1},
                                {QStringLiteral("café"), 2},
                                {QStringLiteral("CAFÉ"), 1}};
    const auto encode = [&sample](QStringConverter::Encoding encoding) -> QByteArray {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        return encoder.encode(sample);
    };
    const QByteArray latin1 = QStringEncoder(QStringConverter::Latin1).encode(sample);
    QByteArray cp1252 = latin1;
    cp1252.replace("n'est", "n\x92"
                            "est"); // a right single quote, only in Windows-1252
    QByteArray binary("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0", 20);
    for (int i = 0; i < 4096; ++i) {
        binary += char((i * 7919) & 0xFF);
    }
    binary += QByteArray("\0IEND\xae", 6);
    const auto row = [](const char* name, const QByteArray& content, const WordTable& some,
                        int size, const char* input = "in") {
        for (const QString& indexer : indexers) {
            QTest::addRow("%s %s", qPrintable(indexer), name)
                << indexer << content << some << size << QString::fromLatin1(input);
        }
    };
    row("utf-8", sample.toUtf8(), sampleWords, 29);
    row("utf-8 with mark", encode(QStringConverter::Utf8), sampleWords, 29);
    row("utf-16le", encode(QStringConverter::Utf16LE), sampleWords, 29);
    row("utf-16be", encode(QStringConverter::Utf16BE), sampleWords, 29);
    row("utf-32le", encode(QStringConverter::Utf32LE), sampleWords, 29);
    row("utf-32be", encode(QStringConverter::Utf32BE), sampleWords, 29);
    row("latin-1", latin1, sampleWords, 29);
    row("windows-1252", cp1252, sampleWords, 29);
    row("binary", binary, {{QStringLiteral("IHDR"), 1}, {QStringLiteral("IEND"), 1}}, -1);
    // Mostly well-formed UTF-8: the stray bytes just end words.
    row("malformed utf-8",
        "naïve café abc\xff"
        "def \xc3 ghi",
        {{QStringLiteral("naïve"), 1},
         {QStringLiteral("café"), 1},
         {QStringLiteral("abc"), 1},
         {QStringLiteral("def"), 1},
         {QStringLiteral("ghi"), 1}},
        5);
    // No words: an empty table, never an earlier file's.
    row("empty file", {}, {}, 0);
    row("punctuation only", " ... --- !? _ \n\t", {}, 0);
    row("missing file", "words", {}, 0, "missing");
    row("a folder", "words", {}, 0, "folder");
}

void IndexerTest::countsWords()
{
    QFETCH(QString, indexer);
    QFETCH(QByteArray, content);
    QFETCH(WordTable, some);
    QFETCH(int, size);
    QFETCH(QString, input);
    TestEnvironment environment;
    environment.writeFile(QStringLiteral("in"), content);
    environment.writeFile(QStringLiteral("folder/in"), content);
    environment.writeFile(QStringLiteral("tmp/") + resultName,
                          "<plist><dict><key>stale</key><integer>1</integer></dict></plist>");
    const std::optional<WordTable> table =
        indexFile(environment, indexer, environment.root() + QLatin1Char('/') + input);
    QVERIFY(table);
    for (auto it = some.begin(); it != some.end(); ++it) {
        QCOMPARE(table->value(it.key()), it.value());
    }
    if (size >= 0) {
        QCOMPARE(table->size(), size);
    }
    QVERIFY(leftovers(environment).isEmpty());
}

void IndexerTest::replacesTheEarlierResult()
{
    TestEnvironment environment;
    const QString first = environment.writeFile(QStringLiteral("a.txt"), "alpha beta alpha");
    const QString second = environment.writeFile(QStringLiteral("b.txt"), "gamma");
    QCOMPARE(indexFile(environment, indexers[0], first),
             (WordTable{{QStringLiteral("alpha"), 2}, {QStringLiteral("beta"), 1}}));
    // Whoever still has the old file open keeps reading the old table: it was replaced by a
    // rename, not rewritten in place.
    QFile old(environment.tempFolder() + QLatin1Char('/') + resultName);
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(indexFile(environment, indexers[1], second),
             (WordTable{{QStringLiteral("gamma"), 1}}));
    QCOMPARE(tallyvox::ParseWordTable(old.readAll())->size(), 2);
    QVERIFY(leftovers(environment).isEmpty());
}

void IndexerTest::givesUpQuietlyOnADirectoryInTheWay()
{
    TestEnvironment environment;
    const QString result = environment.tempFolder() + QLatin1Char('/') + resultName;
    QVERIFY(QDir().mkpath(result + QStringLiteral("/inside")));
    const QString input = environment.writeFile(QStringLiteral("a.txt"), "some words");
    for (const QString& indexer : indexers) {
        QVERIFY(runIndexer(indexer, input) > 0);
        QVERIFY(QFileInfo(result + QStringLiteral("/inside")).isDir());
        QVERIFY(leftovers(environment).isEmpty());
    }
}

// A folder others can enter is refused, and the indexer says which and why.
void IndexerTest::saysWhyItRefusesASharedFolder()
{
    TestEnvironment environment;
    const QString input = environment.writeFile(QStringLiteral("a.txt"), "some words");
    const QString shared = environment.root() + QStringLiteral("/shared");
    QVERIFY(QDir().mkpath(shared));
    QVERIFY(QFile::setPermissions(shared, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                              QFileDevice::ExeOwner | QFileDevice::ReadOther |
                                              QFileDevice::ExeOther));
    for (const QString& indexer : indexers) {
        QProcess process;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.insert(QStringLiteral("TMPDIR"), shared);
        process.setProcessEnvironment(variables);
        process.start(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/") + indexer, {input});
        QVERIFY(process.waitForFinished(30000));
        QCOMPARE(process.exitCode(), 1);
        const QString said = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(said.contains(QStringLiteral("private folder")) &&
                     said.contains(QLatin1Char('"') + shared + QLatin1Char('"')),
                 qPrintable(said));
        QVERIFY(!QFile::exists(shared + QLatin1Char('/') + resultName));
    }
}

void IndexerTest::sameFileWhateverTheThreads_data()
{
    QTest::addColumn<QString>("indexer");
    QTest::addColumn<QByteArray>("threads");
    QTest::addColumn<QByteArray>("content");
    // Over a megabyte, so that two threads share it, with words enough for both shards.
    QByteArray large;
    for (qint64 i = 0; large.size() < (3 << 20); ++i) {
        large += "w" + QByteArray::number(i * 7919 % 100003) + (i % 13 == 0 ? ".\n" : " ");
    }
    for (const QString& indexer : indexers) {
        for (const char* threads : {"1", "3"}) {
            QTest::addRow("%s, %s, large", qPrintable(indexer), threads)
                << indexer << QByteArray(threads) << large;
            QTest::addRow("%s, %s, small", qPrintable(indexer), threads)
                << indexer << QByteArray(threads) << QByteArray("one two two three three three");
        }
    }
}

// The result file is the same byte for byte whatever threads the indexer may use: the
// application compares and caches tables, and the bench checks them against references.
void IndexerTest::sameFileWhateverTheThreads()
{
    QFETCH(QString, indexer);
    QFETCH(QByteArray, threads);
    QFETCH(QByteArray, content);
    TestEnvironment environment;
    const QString input = environment.writeFile(QStringLiteral("in.txt"), content);
    const QString result = environment.tempFolder() + QLatin1Char('/') + resultName;
    const auto tableWith = [&](const QByteArray& value) {
        qputenv("TALLYVOX_INDEXER_THREADS", value);
        const int status = runIndexer(indexer, input);
        qunsetenv("TALLYVOX_INDEXER_THREADS");
        QFile file(result);
        return status == 0 && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray usual = tableWith("2");
    QVERIFY(!usual.isEmpty());
    QCOMPARE(tableWith(threads), usual);
}

// One serving indexer takes text, a document it hands on, a missing file and a file whose
// child dies, in turn; each file's table is its own, never the one before.
void IndexerTest::servesFileAfterFileEachInAChild()
{
    TestEnvironment environment;
    const int table = ::memfd_create("table", MFD_CLOEXEC);
    QVERIFY(table >= 0);
    QProcess server;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("TALLYVOX_RESULT_FD"), QString::number(table));
    server.setProcessEnvironment(variables);
    server.setProcessChannelMode(QProcess::MergedChannels);
    server.setChildProcessModifier([table] { ::fcntl(table, F_SETFD, 0); });
    server.start(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"),
                 {QStringLiteral("--serve")});
    QByteArray output;
    // How the file ended, as the server said, and the table it left.
    const auto serve = [&](const QString& path, const std::function<void()>& meanwhile = {}) {
        server.write(QFile::encodeName(path) + '\0');
        if (meanwhile) {
            meanwhile();
        }
        while (!output.contains('\n') && server.waitForReadyRead(30000)) {
            output += server.readAll();
        }
        const qsizetype end = output.indexOf('\n');
        const QByteArray said = output.left(end);
        output.remove(0, end + 1);
        return std::pair(said, tallyvox::ReadWordTableDescriptor(table));
    };
    const QByteArray finished("\0finished ", 10);
    const auto text = [&](const char* name, const QByteArray& content) {
        return environment.writeFile(QString::fromLatin1(name), content);
    };

    const auto first = serve(text("a.txt", "alpha beta alpha"));
    QCOMPARE(first.first, finished + "exit 0");
    QCOMPARE(first.second, (WordTable{{QStringLiteral("alpha"), 2}, {QStringLiteral("beta"), 1}}));

    const auto document = serve(text("b.html", "<html><body><p>gamma</p></body></html>"));
    QCOMPARE(document.first, finished + "exit 0");
    QCOMPARE(document.second, (WordTable{{QStringLiteral("gamma"), 1}}));

    const auto missing = serve(environment.root() + QStringLiteral("/missing.txt"));
    QCOMPARE(missing.first, finished + "exit 0");
    QCOMPARE(missing.second, WordTable());

    // A named pipe nobody writes keeps the child waiting until it is killed.
    const QString pipe = environment.root() + QStringLiteral("/pipe");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto killed = serve(pipe, [&] {
        const QString children =
            QStringLiteral("/proc/%1/task/%1/children").arg(server.processId());
        QByteArray child;
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                QFile file(children);
                child = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
                return !child.isEmpty();
            }(),
            10000);
        QCOMPARE(::kill(child.toInt(), SIGKILL), 0);
    });
    QCOMPARE(killed.first, finished + "signal 9");
    QVERIFY(!killed.second);

    const auto last = serve(text("c.txt", "delta"));
    QCOMPARE(last.first, finished + "exit 0");
    QCOMPARE(last.second, (WordTable{{QStringLiteral("delta"), 1}}));

    server.closeWriteChannel();
    QVERIFY(server.waitForFinished(10000));
    QCOMPARE(server.exitCode(), 0);
    ::close(table);
}

QTEST_GUILESS_MAIN(IndexerTest)
#include "IndexerTest.moc"
