#include "words/IndexerClient.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tallyvox;

namespace {

const QByteArray emptyDictionary =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict/></plist>\n";

// A stand-in indexer: a shell script that notes its argument in calls.log and then
// does what the test says with the result file.
void writeScriptIndexer(const QString& folder, const QString& name, const QByteArray& body)
{
    QFile script(folder + QLatin1Char('/') + name);
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("#!/bin/sh\necho \"$(basename \"$0\") $1\" >> \"$TMPDIR/calls.log\"\n" + body);
    script.close();
    script.setPermissions(script.permissions() | QFile::ExeOwner);
}

QStringList calls(const testing::TestEnvironment& env)
{
    QFile log(env.tempFolder() + QStringLiteral("/calls.log"));
    if (!log.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(log.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class IndexerClientTest : public QObject {
    Q_OBJECT

private slots:
    void realIndexerCountsTheWordsOfAFile()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const PreferenceStore prefs;
        const WordContext context{desktop, prefs, QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR),
                                  env.tempFolder()};
        const QString path = env.writeFile(QStringLiteral("in/Notes and more.txt"),
                                           "The cat saw the other cat. the end\n");
        const WordTable table = BuildWordTable(context, *FileRef::fromPath(path));
        QCOMPARE(table.value(QStringLiteral("cat")), 2);
        QCOMPARE(table.value(QStringLiteral("the")), 2);
        QCOMPARE(table.value(QStringLiteral("The")), 1); // case makes distinct words
        QCOMPARE(table.size(), 6);
        QCOMPARE(desktop.logLines(), QStringList{QStringLiteral("Indexing ") + path});
    }

    void pathLimitIs254Bytes()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const PreferenceStore prefs;
        const WordContext context{desktop, prefs, QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR),
                                  env.tempFolder()};
        // Pad the name so the whole path is exactly 254, then 255, bytes long.
        const QString folder = env.root() + QStringLiteral("/in");
        QDir().mkpath(folder);
        const int room = 254 - int(QFile::encodeName(folder).size()) - 1;
        QVERIFY(room > 10);
        const QString fits = folder + QLatin1Char('/') + QString(room - 4, QLatin1Char('a')) +
                             QStringLiteral(".txt");
        const QString tooLong = folder + QLatin1Char('/') + QString(room - 3, QLatin1Char('b')) +
                                QStringLiteral(".txt");
        for (const QString& path : {fits, tooLong}) {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("word\n");
        }
        QCOMPARE(BuildWordTable(context, *FileRef::fromPath(fits)).size(), 1);
        desktop.clear();
        QVERIFY(BuildWordTable(context, *FileRef::fromPath(tooLong)).isEmpty());
        QVERIFY(desktop.logLines().isEmpty());
    }

    void fallbackRunsOnlyWhenTheFirstLeavesNoDictionary_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QStringList>("expectedCalls");
        QTest::addColumn<int>("expectedWords");

        const QByteArray writeEmpty =
            "cat > \"$TMPDIR/index-1964.dat\" <<'EOF'\n" + emptyDictionary + "EOF\n";
        QTest::newRow("empty dictionary counts as a result")
            << writeEmpty << QStringList{QStringLiteral("SearchKitIndexer")} << 0;
        QTest::newRow("no result file")
            << QByteArray("exit 0\n")
            << QStringList{QStringLiteral("SearchKitIndexer"), QStringLiteral("SearchKitIndexer32")}
            << 1;
        QTest::newRow("unreadable result file")
            << QByteArray("echo garbage > \"$TMPDIR/index-1964.dat\"\n")
            << QStringList{QStringLiteral("SearchKitIndexer"), QStringLiteral("SearchKitIndexer32")}
            << 1;
        QTest::newRow("crash without result")
            << QByteArray("kill -SEGV $$\n")
            << QStringList{QStringLiteral("SearchKitIndexer"), QStringLiteral("SearchKitIndexer32")}
            << 1;
        QTest::newRow("missing first indexer")
            << QByteArray() << QStringList{QStringLiteral("SearchKitIndexer32")} << 1;
    }

    void fallbackRunsOnlyWhenTheFirstLeavesNoDictionary()
    {
        QFETCH(QByteArray, first);
        QFETCH(QStringList, expectedCalls);
        QFETCH(int, expectedWords);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const PreferenceStore prefs;
        const QString bin = env.root() + QStringLiteral("/indexers");
        QDir().mkpath(bin);
        if (!first.isEmpty())
            writeScriptIndexer(bin, QStringLiteral("SearchKitIndexer"), first);
        // The fallback is the real plain-text indexer, run by a wrapper that logs the call.
        writeScriptIndexer(bin, QStringLiteral("SearchKitIndexer32"),
                           "exec \"" TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer32\" \"$1\"\n");
        const WordContext context{desktop, prefs, bin, env.tempFolder()};
        const QString input = env.writeFile(QStringLiteral("one word.txt"), "hello");

        const WordTable table = BuildWordTable(context, *FileRef::fromPath(input));
        QCOMPARE(table.size(), expectedWords);
        QStringList expected;
        for (const QString& name : expectedCalls)
            expected.append(name + QLatin1Char(' ') + input);
        QCOMPARE(calls(env), expected);
    }

    void leftoverResultIsReadWhenNotReplaced()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const PreferenceStore prefs;
        const QString bin = env.root() + QStringLiteral("/indexers");
        QDir().mkpath(bin);
        writeScriptIndexer(bin, QStringLiteral("SearchKitIndexer"), "exit 1\n");
        env.writeFile(QStringLiteral("tmp/index-1964.dat"),
                      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                      "<key>stale</key><integer>4</integer></dict></plist>\n");
        const WordContext context{desktop, prefs, bin, env.tempFolder()};
        const QString input = env.writeFile(QStringLiteral("x.txt"), "fresh");
        const WordTable table = BuildWordTable(context, *FileRef::fromPath(input));
        QCOMPARE(table, (WordTable{{QStringLiteral("stale"), 4}}));
    }

    void directoryInPlaceOfTheResultGivesAnEmptyTable()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const PreferenceStore prefs;
        QVERIFY(QDir().mkpath(env.tempFolder() + QStringLiteral("/index-1964.dat")));
        const WordContext context{desktop, prefs, QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR),
                                  env.tempFolder()};
        const QString input = env.writeFile(QStringLiteral("x.txt"), "some words here");
        QVERIFY(BuildWordTable(context, *FileRef::fromPath(input)).isEmpty());
    }
};

QTEST_GUILESS_MAIN(IndexerClientTest)
#include "IndexerClientTest.moc"
