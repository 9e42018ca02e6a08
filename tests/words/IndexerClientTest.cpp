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

// A private world whose indexers live in the build tree, or in bin when the test writes
// its own there.
struct World {
    QStringList calls() const
    {
        QFile log(env.tempFolder() + QStringLiteral("/calls.log"));
        if (!log.open(QIODevice::ReadOnly)) {
            return {};
        }
        return QString::fromUtf8(log.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    WordTable count(const QString& name, const QByteArray& content, bool ownIndexers = false)
    {
        const WordContext context{desktop, prefs,
                                  ownIndexers ? bin : QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR),
                                  env.tempFolder()};
        return BuildWordTable(context, *FileRef::fromPath(env.writeFile(name, content)));
    }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    const PreferenceStore prefs;
    const QString bin = env.root() + QStringLiteral("/indexers");
};

} // namespace

class IndexerClientTest : public QObject {
    Q_OBJECT

private slots:
    void realIndexerCountsTheWordsOfAFile()
    {
        World world;
        const WordTable table = world.count(QStringLiteral("in/Notes and more.txt"),
                                            "The cat saw the other cat. the end\n");
        QCOMPARE(table.value(QStringLiteral("cat")), 2);
        QCOMPARE(table.value(QStringLiteral("the")), 2);
        QCOMPARE(table.value(QStringLiteral("The")), 1); // case makes distinct words
        QCOMPARE(table.size(), 6);
        QCOMPARE(world.desktop.logLines(),
                 QStringList{QStringLiteral("Indexing ") + world.env.root() +
                             QStringLiteral("/in/Notes and more.txt")});
    }

    void pathLimitIs254Bytes()
    {
        World world;
        // Pad the name so the whole path is exactly 254, then 255, bytes long.
        const int room = 254 - int(QFile::encodeName(world.env.root()).size()) - 4;
        QVERIFY(room > 10);
        const QString fits =
            QStringLiteral("in/") + QString(room - 4, QLatin1Char('a')) + QStringLiteral(".txt");
        const QString tooLong =
            QStringLiteral("in/") + QString(room - 3, QLatin1Char('b')) + QStringLiteral(".txt");
        QCOMPARE(world.count(fits, "word\n").size(), 1);
        world.desktop.clear();
        QVERIFY(world.count(tooLong, "word\n").isEmpty());
        QVERIFY(world.desktop.logLines().isEmpty());
    }

    // first: the first indexer's script ("" leaves it out); leftover: a result file already
    // there before the run.
    void fallbackRunsOnlyWhenTheFirstLeavesNoDictionary_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QByteArray>("leftover");
        QTest::addColumn<QStringList>("expectedCalls");
        QTest::addColumn<QStringList>("expectedWords");

        const QStringList both{QStringLiteral("SearchKitIndexer"),
                               QStringLiteral("SearchKitIndexer32")};
        const QStringList hello{QStringLiteral("hello")};
        QTest::newRow("empty dictionary counts as a result")
            << "cat > \"$TMPDIR/index-1964.dat\" <<'EOF'\n" + emptyDictionary + "EOF\n"
            << QByteArray() << both.mid(0, 1) << QStringList();
        QTest::newRow("no result file") << QByteArray("exit 0\n") << QByteArray() << both << hello;
        QTest::newRow("unreadable result file")
            << QByteArray("echo garbage > \"$TMPDIR/index-1964.dat\"\n") << QByteArray() << both
            << hello;
        QTest::newRow("crash without result")
            << QByteArray("kill -SEGV $$\n") << QByteArray() << both << hello;
        QTest::newRow("missing first indexer")
            << QByteArray() << QByteArray() << both.mid(1) << hello;
        QTest::newRow("a leftover result is read when not replaced")
            << QByteArray("exit 1\n")
            << QByteArray("<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>stale</key>"
                          "<integer>4</integer></dict></plist>\n")
            << both.mid(0, 1) << QStringList{QStringLiteral("stale")};
    }
    void fallbackRunsOnlyWhenTheFirstLeavesNoDictionary()
    {
        QFETCH(QByteArray, first);
        QFETCH(QByteArray, leftover);
        QFETCH(QStringList, expectedCalls);
        QFETCH(QStringList, expectedWords);
        World world;
        QDir().mkpath(world.bin);
        if (!first.isEmpty()) {
            writeScriptIndexer(world.bin, QStringLiteral("SearchKitIndexer"), first);
        }
        // The fallback is the real plain-text indexer, run by a wrapper that logs the call.
        writeScriptIndexer(world.bin, QStringLiteral("SearchKitIndexer32"),
                           "exec \"" TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer32\" \"$1\"\n");
        if (!leftover.isEmpty()) {
            world.env.writeFile(QStringLiteral("tmp/index-1964.dat"), leftover);
        }

        QCOMPARE(world.count(QStringLiteral("one word.txt"), "hello", true).keys(), expectedWords);
        QStringList expected;
        for (const QString& name : expectedCalls) {
            expected.append(name + QLatin1Char(' ') + world.env.root() +
                            QStringLiteral("/one word.txt"));
        }
        QCOMPARE(world.calls(), expected);
    }

    void directoryInPlaceOfTheResultGivesAnEmptyTable()
    {
        World world;
        QVERIFY(QDir().mkpath(world.env.tempFolder() + QStringLiteral("/index-1964.dat")));
        QVERIFY(world.count(QStringLiteral("x.txt"), "some words here").isEmpty());
    }
};

QTEST_GUILESS_MAIN(IndexerClientTest)
#include "IndexerClientTest.moc"
