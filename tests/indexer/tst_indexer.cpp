// Both indexer executables as the application runs them: one argument, TMPDIR pointing at a
// private folder, the result read back from index-1964.dat.

#include "tests/common/TestEnvironment.h"
#include "words/WordTableReader.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringEncoder>
#include <QTest>

using tallyvox::ReadWordTableFile;
using tallyvox::WordTable;
using tallyvox::testing::TestEnvironment;

namespace {

const QString resultName = QStringLiteral("index-1964.dat");

QString indexerPath(const QString& name)
{
    return QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR) + QLatin1Char('/') + name;
}

// Runs the indexer on path; returns its exit code (-1 when it crashed or hung).
int runIndexer(const QString& indexer, const QString& path)
{
    QProcess process;
    process.start(indexerPath(indexer), {path});
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit)
        return -1;
    return process.exitCode();
}

std::optional<WordTable> indexFile(const TestEnvironment& environment, const QString& indexer,
                                   const QString& path)
{
    if (runIndexer(indexer, path) < 0)
        return std::nullopt;
    return ReadWordTableFile(environment.tempFolder() + QLatin1Char('/') + resultName);
}

QByteArray encode(const QString& text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
    return encoder.encode(text);
}

// What the temporary folder holds besides the result: must stay empty.
QStringList leftovers(const TestEnvironment& environment)
{
    QStringList names = QDir(environment.tempFolder())
                            .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    names.removeAll(resultName);
    return names;
}

const QString sample = QStringLiteral(
    "Grüße aus Köln! Les élèves étaient très fâchés, car la leçon était déjà terminée. "
    "Où sont les cahiers? Ça coûte cher, n'est-ce pas? Garçon, un café crème. café CAFÉ");

} // namespace

class IndexerTest : public QObject {
    Q_OBJECT

private slots:
    void readsEncodings_data();
    void readsEncodings();
    void writesAnEmptyTableWhenThereAreNoWords_data();
    void writesAnEmptyTableWhenThereAreNoWords();
    void survivesBinaryAndMalformedText_data();
    void survivesBinaryAndMalformedText();
    void replacesTheEarlierResult();
    void givesUpQuietlyOnADirectoryInTheWay();
};

void IndexerTest::readsEncodings_data()
{
    QTest::addColumn<QString>("indexer");
    QTest::addColumn<QByteArray>("content");
    const QByteArray latin1 = QStringEncoder(QStringConverter::Latin1).encode(sample);
    QByteArray cp1252 = latin1;
    cp1252.replace("n'est", "n\x92"
                            "est"); // a right single quote, only in Windows-1252
    const struct {
        const char* name;
        QByteArray content;
    } files[] = {
        {"utf-8", sample.toUtf8()},
        {"utf-8 with mark", encode(sample, QStringConverter::Utf8)},
        {"utf-16le", encode(sample, QStringConverter::Utf16LE)},
        {"utf-16be", encode(sample, QStringConverter::Utf16BE)},
        {"utf-32le", encode(sample, QStringConverter::Utf32LE)},
        {"utf-32be", encode(sample, QStringConverter::Utf32BE)},
        {"latin-1", latin1},
        {"windows-1252", cp1252},
    };
    for (const char* indexer : {"SearchKitIndexer", "SearchKitIndexer32"}) {
        for (const auto& file : files) {
            QTest::addRow("%s %s", indexer, file.name)
                << QString::fromLatin1(indexer) << file.content;
        }
    }
}

void IndexerTest::readsEncodings()
{
    QFETCH(QString, indexer);
    QFETCH(QByteArray, content);
    TestEnvironment environment;
    const std::optional<WordTable> table =
        indexFile(environment, indexer, environment.writeFile(QStringLiteral("in.txt"), content));
    QVERIFY(table);
    QCOMPARE(table->value(QStringLiteral("Grüße")), 1);
    QCOMPARE(table->value(QStringLiteral("élèves")), 1);
    QCOMPARE(table->value(QStringLiteral("café")), 2);
    QCOMPARE(table->value(QStringLiteral("CAFÉ")), 1);
    QCOMPARE(table->value(QStringLiteral("les")), 1);
    QCOMPARE(table->value(QStringLiteral("Les")), 1);
    QCOMPARE(table->size(), 29);
    QVERIFY(leftovers(environment).isEmpty());
}

void IndexerTest::writesAnEmptyTableWhenThereAreNoWords_data()
{
    QTest::addColumn<QString>("indexer");
    QTest::addColumn<QString>("input");
    for (const char* indexer : {"SearchKitIndexer", "SearchKitIndexer32"}) {
        const QString name = QString::fromLatin1(indexer);
        QTest::addRow("%s empty file", indexer) << name << QStringLiteral("empty.txt");
        QTest::addRow("%s punctuation only", indexer) << name << QStringLiteral("punct.txt");
        QTest::addRow("%s missing file", indexer) << name << QStringLiteral("missing.txt");
        QTest::addRow("%s a folder", indexer) << name << QStringLiteral("folder");
    }
}

void IndexerTest::writesAnEmptyTableWhenThereAreNoWords()
{
    QFETCH(QString, indexer);
    QFETCH(QString, input);
    TestEnvironment environment;
    environment.writeFile(QStringLiteral("empty.txt"), {});
    environment.writeFile(QStringLiteral("punct.txt"), " ... --- !? _ \n\t");
    environment.writeFile(QStringLiteral("folder/inside.txt"), "words");
    // A stale result must not survive as this file's result.
    environment.writeFile(QStringLiteral("tmp/") + resultName,
                          "<plist><dict><key>stale</key><integer>1</integer></dict></plist>");
    const std::optional<WordTable> table =
        indexFile(environment, indexer, environment.root() + QLatin1Char('/') + input);
    QVERIFY(table);
    QVERIFY(table->isEmpty());
}

void IndexerTest::survivesBinaryAndMalformedText_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    QByteArray binary("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\x01\0", 20);
    for (int i = 0; i < 4096; ++i)
        binary += char((i * 7919) & 0xFF);
    binary += QByteArray("\0IEND\xae", 6);
    QTest::newRow("binary") << binary
                            << QStringList{QStringLiteral("IHDR"), QStringLiteral("IEND")};
    // Mostly well-formed UTF-8: the stray bytes just end words.
    QTest::newRow("malformed utf-8")
        << QByteArray("naïve café über straße abc\xff"
                      "def \xc3 ghi")
        << QStringList{QStringLiteral("naïve"), QStringLiteral("café"), QStringLiteral("abc"),
                       QStringLiteral("def"), QStringLiteral("ghi")};
}

void IndexerTest::survivesBinaryAndMalformedText()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);
    TestEnvironment environment;
    const std::optional<WordTable> table =
        indexFile(environment, QStringLiteral("SearchKitIndexer"),
                  environment.writeFile(QStringLiteral("in.bin"), content));
    QVERIFY(table);
    for (const QString& word : expected)
        QVERIFY2(table->value(word) >= 1, qPrintable(word));
}

void IndexerTest::replacesTheEarlierResult()
{
    TestEnvironment environment;
    const QString result = environment.tempFolder() + QLatin1Char('/') + resultName;
    const QString first = environment.writeFile(QStringLiteral("a.txt"), "alpha beta alpha");
    const QString second = environment.writeFile(QStringLiteral("b.txt"), "gamma");
    QCOMPARE(indexFile(environment, QStringLiteral("SearchKitIndexer"), first),
             (WordTable{{QStringLiteral("alpha"), 2}, {QStringLiteral("beta"), 1}}));
    // Whoever still has the old file open keeps reading the old table: it was replaced by a
    // rename, not rewritten in place.
    QFile old(result);
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(indexFile(environment, QStringLiteral("SearchKitIndexer32"), second),
             (WordTable{{QStringLiteral("gamma"), 1}}));
    QVERIFY(old.readAll().startsWith("bplist00"));
    QCOMPARE(tallyvox::ParseWordTable((old.seek(0), old.readAll()))->size(), 2);
    QVERIFY(leftovers(environment).isEmpty());
}

void IndexerTest::givesUpQuietlyOnADirectoryInTheWay()
{
    TestEnvironment environment;
    const QString result = environment.tempFolder() + QLatin1Char('/') + resultName;
    QVERIFY(QDir().mkpath(result + QStringLiteral("/inside")));
    const QString input = environment.writeFile(QStringLiteral("a.txt"), "some words");
    for (const QString& indexer :
         {QStringLiteral("SearchKitIndexer"), QStringLiteral("SearchKitIndexer32")}) {
        const int status = runIndexer(indexer, input);
        QVERIFY(status > 0);
        QVERIFY(QFileInfo(result + QStringLiteral("/inside")).isDir());
        QVERIFY(!ReadWordTableFile(result));
        QVERIFY(leftovers(environment).isEmpty());
    }
}

QTEST_GUILESS_MAIN(IndexerTest)
#include "tst_indexer.moc"
