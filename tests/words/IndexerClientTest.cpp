#include "words/IndexerClient.h"
#include "prefs/PreferenceStore.h"
#include "support/IndexerStop.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/ProcessIndexer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray emptyDictionary =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict/></plist>\n";

QByteArray dictionaryOf(const char* word)
{
    return QByteArray("<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict><key>") + word +
           "</key><integer>4</integer></dict></plist>\n";
}

// A private world whose indexers live in the build tree, or in bin when the test writes
// its own there: serving indexers in bash that run a script for each path they are sent,
// as a child with the path as its argument. The script notes its name, argument and TMPDIR
// in calls.log and then does what the test says; a result file it leaves becomes the
// file's table, and its exit status the file's.
struct World {
    World() { QDir().mkpath(bin); }

    void writeIndexer(const QString& name, const QByteArray& body) const
    {
        // A new file each time: a server that is still running reads the old one.
        const QString path = bin + QLatin1Char('/') + name;
        QFile script(path + QStringLiteral(".new"));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/bash\nshift\nwhile IFS= read -r -d '' path; do\n"
                     ": > /proc/self/fd/$TALLYVOX_RESULT_FD\n( set -- \"$path\" \"$@\"\n"
                     "echo \"$(basename \"$0\") $1|$TMPDIR|$(stat -c %a \"$TMPDIR\")\" >> '" +
                     QFile::encodeName(env.root()) + "/calls.log'\n" + body +
                     "\n)\nstatus=$?\nresult=\"$TMPDIR/index-1964.dat\"\n"
                     "if [ -f \"$result\" ]; then cat \"$result\" > "
                     "/proc/self/fd/$TALLYVOX_RESULT_FD; rm \"$result\"; fi\n"
                     "if [ $status -gt 128 ]; then printf '\\0finished signal %d\\n' "
                     "$((status - 128)); else printf '\\0finished exit %d\\n' $status; fi\n"
                     "done\n");
        script.close();
        script.setPermissions(script.permissions() | QFile::ExeOwner);
        QVERIFY(::rename(QFile::encodeName(script.fileName()).constData(),
                         QFile::encodeName(path).constData()) == 0);
    }
    // The fallback is the real plain-text indexer, run by a wrapper that notes the call.
    void writeRealFallback() const
    {
        writeIndexer(QStringLiteral("SearchKitIndexer32"),
                     "exec \"" TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer32\" \"$@\"\n");
    }
    // "name argument" of each call; TMPDIR and its mode separately.
    QList<QStringList> calls() const
    {
        QFile log(env.root() + QStringLiteral("/calls.log"));
        QList<QStringList> result;
        if (log.open(QIODevice::ReadOnly)) {
            for (const QString& line :
                 QString::fromUtf8(log.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
                result.append(line.split(u'|'));
            }
        }
        return result;
    }
    QStringList callNames() const
    {
        QStringList names;
        for (const QStringList& call : calls()) {
            names.append(call.first().section(u' ', 0, 0));
        }
        return names;
    }
    // The indexers of bin, or the real ones of the build tree.
    WordContext context(bool ownIndexers = true)
    {
        indexer = std::make_unique<ProcessIndexer>(
            desktop,
            ProcessIndexer::Setup{ownIndexers ? bin : QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR),
                                  env.tempFolder(), stallLimit});
        return {desktop, prefs, *indexer, env.tempFolder(), &stop};
    }
    // The file's table, once the job says it is done; reports collects its progress
    // reports as "done/total".
    WordTable tableOf(const QString& path, bool ownIndexers = true, QStringList* reports = nullptr,
                      int ngramLength = 1)
    {
        const WordContext words = context(ownIndexers);
        const std::unique_ptr<WordTableJob> job =
            BuildWordTable(words, *FileRef::fromPath(path), ngramLength);
        QSignalSpy finished(job.get(), &WordTableJob::finished);
        if (reports) {
            QObject::connect(job.get(), &WordTableJob::progressed, job.get(),
                             [reports](quint64 done, quint64 total) {
                                 reports->append(QStringLiteral("%1/%2").arg(done).arg(total));
                             });
        }
        if (!finished.wait(30000)) {
            qWarning("the word table job did not finish");
            return {};
        }
        return std::move(job->table());
    }
    WordTable count(const QString& name, const QByteArray& content, bool ownIndexers = true)
    {
        return tableOf(env.writeFile(name, content), ownIndexers);
    }
    // Every report the indexer's run passes on, as "done/total".
    QStringList reportsOf(const QString& name, const QByteArray& content, bool ownIndexers,
                          WordTable* table = nullptr)
    {
        QStringList reports;
        WordTable result = tableOf(env.writeFile(name, content), ownIndexers, &reports);
        if (table) {
            *table = std::move(result);
        }
        return reports;
    }
    bool logged(const QString& part) const { return desktop.logLines().filter(part).size() == 1; }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    const PreferenceStore prefs;
    IndexerStop stop;
    std::chrono::milliseconds stallLimit = 20s;
    std::unique_ptr<ProcessIndexer> indexer;
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
                                            "The cat saw the other cat. the end\n", false);
        QCOMPARE(table.value(QStringLiteral("cat")), 2);
        QCOMPARE(table.value(QStringLiteral("the")), 2);
        QCOMPARE(table.value(QStringLiteral("The")), 1); // case makes distinct words
        QCOMPARE(table.size(), 6);
        QCOMPARE(world.desktop.logLines(),
                 QStringList{QStringLiteral("Indexing ") + world.env.root() +
                             QStringLiteral("/in/Notes and more.txt")});
        // The result is gone; its folder is kept, empty, until the indexer goes.
        const QDir temporary(world.env.tempFolder());
        const QStringList left =
            temporary.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
        QCOMPARE(left.size(), 1);
        QVERIFY(QDir(temporary.filePath(left.first()))
                    .isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden));
        world.indexer.reset();
        QCOMPARE(temporary.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 QStringList());
    }

    // The length goes to the first indexer and to the fallback, after the path.
    void ngramsFromEitherIndexer_data()
    {
        QTest::addColumn<bool>("firstFails");
        QTest::newRow("SearchKitIndexer") << false;
        QTest::newRow("the fallback") << true;
    }
    void ngramsFromEitherIndexer()
    {
        QFETCH(bool, firstFails);
        World world;
        if (firstFails) {
            world.writeIndexer(QStringLiteral("SearchKitIndexer"), "exit 1\n");
            world.writeRealFallback();
        }
        const QString path =
            world.env.writeFile(QStringLiteral("in.txt"), "The cat saw the other cat. the end\n");
        const WordTable table = world.tableOf(path, firstFails, nullptr, 2);
        const WordTable expected{{QStringLiteral("The cat"), 1},   {QStringLiteral("cat saw"), 1},
                                 {QStringLiteral("saw the"), 1},   {QStringLiteral("the other"), 1},
                                 {QStringLiteral("other cat"), 1}, {QStringLiteral("the end"), 1}};
        QCOMPARE(table, expected);
    }

    // The standardised type/token ratio's runs, counted by the real indexer in reading order
    // through the serving indexer, only when asked: each full run of 1000 words gives its
    // distinct words, the last partial run nothing, also across blocks (4 MB each).
    void typeRunsOfTheRealIndexer_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<qint64>("types");
        QTest::addColumn<qint64>("runs");
        // Run k of 1000 words holds k % 7 + 1 distinct words (a0, a1 ...), but run 1 holds 500
        // words twice each; words of about 3 bytes.
        const auto text = [](int words) {
            QByteArray made;
            for (int i = 0; i < words; ++i) {
                const int k = i / 1000;
                made += k == 1 ? "b" + QByteArray::number(i / 2) + '\n'
                               : "a" + QByteArray::number(i % (k % 7 + 1)) + ' ';
            }
            return made;
        };
        QTest::newRow("2500 words") << text(2500) << true << qint64(1 + 500) << qint64(2);
        QTest::newRow("not asked") << text(2500) << false << qint64(-1) << qint64(0);
        QTest::newRow("999 words") << text(999) << true << qint64(0) << qint64(0);
        // 500, and k % 7 + 1 for every other run k below 1500, worked out in python3.
        QTest::newRow("several blocks") << text(1'500'300) << true << qint64(6493) << qint64(1500);
    }
    void typeRunsOfTheRealIndexer()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, asked);
        QFETCH(qint64, types);
        QFETCH(qint64, runs);
        World world;
        const WordContext words = world.context(false);
        const std::unique_ptr<WordTableJob> job = BuildWordTable(
            words, *FileRef::fromPath(world.env.writeFile(u"in/runs.txt"_s, text)), 1, asked);
        QSignalSpy finished(job.get(), &WordTableJob::finished);
        QVERIFY(finished.wait(30000));
        QCOMPARE(job->ending(), IndexerEnding::Complete);
        QCOMPARE(job->typeRuns().value_or(TypeRuns{-1, 0}).types, types);
        QCOMPARE(job->typeRuns().value_or(TypeRuns{-1, 0}).runs, runs);
        QCOMPARE(world.desktop.logLines().size(), 1); // "Indexing ...": the line is no complaint
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
        QCOMPARE(world.count(fits, "word\n", false).size(), 1);
        world.desktop.clear();
        QVERIFY(world.count(tooLong, "word\n", false).isEmpty());
        QVERIFY(world.desktop.logLines().isEmpty());
    }

    // How the first indexer ends decides whether its table is used or the fallback runs.
    // first: its script ("" leaves it out); log: a line the user's log must hold.
    void fallbackRunsWheneverTheFirstDoesNotFinishCleanly_data()
    {
        QTest::addColumn<QByteArray>("first");
        QTest::addColumn<QStringList>("expectedCalls");
        QTest::addColumn<QStringList>("expectedWords");
        QTest::addColumn<QString>("log");

        const QStringList both{QStringLiteral("SearchKitIndexer"),
                               QStringLiteral("SearchKitIndexer32")};
        const QStringList hello{QStringLiteral("hello")};
        const QByteArray writes = "cat > \"$TMPDIR/index-1964.dat\" <<'EOF'\n";
        QTest::newRow("empty dictionary counts as a result")
            << writes + emptyDictionary + "EOF\n"
            << both.mid(0, 1) << QStringList() << QString();
        QTest::newRow("partial table, status 3")
            << writes + dictionaryOf("part") +
                   "EOF\necho 'SearchKitIndexer: x: partial word table: 1 of 9 pages' >&2\nexit 3\n"
            << both.mid(0, 1) << QStringList{QStringLiteral("part")}
            << QStringLiteral("SearchKitIndexer: x: partial word table: 1 of 9 pages");
        QTest::newRow("no result file") << QByteArray("exit 0\n") << both << hello << QString();
        QTest::newRow("unreadable result file")
            << QByteArray("echo garbage > \"$TMPDIR/index-1964.dat\"\n") << both << hello
            << QString();
        QTest::newRow("a table, but exit status 1")
            << writes + dictionaryOf("stale") + "EOF\nexit 1\n"
            << both << hello << QStringLiteral("SearchKitIndexer failed with exit status 1");
        QTest::newRow("status 3 without a table")
            << QByteArray("exit 3\n") << both << hello << QString();
        QTest::newRow("crash after writing a table")
            << writes + dictionaryOf("stale") + "EOF\nkill -SEGV $$\n"
            << both << hello << QStringLiteral("SearchKitIndexer was ended by signal 11");
        QTest::newRow("no progress for its stall limit")
            << QByteArray("echo 'progress 1 10'\nsleep 20\n") << both << hello
            << QStringLiteral("SearchKitIndexer was ended: it read nothing further for 1 s");
        QTest::newRow("missing first indexer")
            << QByteArray() << both.mid(1) << hello
            << QStringLiteral("SearchKitIndexer could not be started");
    }
    void fallbackRunsWheneverTheFirstDoesNotFinishCleanly()
    {
        QFETCH(QByteArray, first);
        QFETCH(QStringList, expectedCalls);
        QFETCH(QStringList, expectedWords);
        QFETCH(QString, log);
        World world;
        world.stallLimit = 300ms;
        if (!first.isEmpty()) {
            world.writeIndexer(QStringLiteral("SearchKitIndexer"), first);
        }
        world.writeRealFallback();
        // A result planted in the temporary folder itself is never anybody's answer.
        world.env.writeFile(QStringLiteral("tmp/index-1964.dat"), dictionaryOf("INJECTED"));

        QElapsedTimer clock;
        clock.start();
        QCOMPARE(world.count(QStringLiteral("one word.txt"), "hello").keys(), expectedWords);
        QVERIFY(clock.elapsed() < 5000);
        QCOMPARE(world.callNames(), expectedCalls);
        for (const QStringList& call : world.calls()) {
            QCOMPARE(call.first().section(u' ', 1),
                     world.env.root() + QStringLiteral("/one word.txt"));
            QCOMPARE(call.at(2), QStringLiteral("700"));
        }
        if (!log.isEmpty()) {
            QVERIFY2(world.logged(log), qPrintable(world.desktop.logLines().join(u'\n')));
        }
        // Only what was planted is left: every run's folder is gone with the indexer.
        world.indexer.reset();
        QCOMPARE(QDir(world.env.tempFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{QStringLiteral("index-1964.dat")});
    }

    // A server whose files end cleanly takes the next file in the same folder; one whose
    // file failed goes, with its folder and whatever the file left there.
    void aServerServesAgainOnlyAfterACleanFile()
    {
        World world;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"),
                           "case \"$1\" in *bad*) echo left > \"$TMPDIR/litter\"; exit 1;; esac\n"
                           "exec \"" TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer\" \"$1\"\n");
        world.writeIndexer(QStringLiteral("SearchKitIndexer32"), "exit 1\n");
        const WordContext words = world.context();
        const auto tableOf = [&](const QString& name, const QByteArray& text) {
            const std::unique_ptr<WordTableJob> job =
                BuildWordTable(words, *FileRef::fromPath(world.env.writeFile(name, text)));
            QSignalSpy finished(job.get(), &WordTableJob::finished);
            return finished.wait(30000) ? std::move(job->table()) : WordTable();
        };
        QCOMPARE(tableOf(QStringLiteral("a.txt"), "alpha").keys(), QStringList{u"alpha"_s});
        QCOMPARE(tableOf(QStringLiteral("b.txt"), "beta").keys(), QStringList{u"beta"_s});
        QVERIFY(tableOf(QStringLiteral("bad.txt"), "gamma").isEmpty());
        QCOMPARE(tableOf(QStringLiteral("d.txt"), "delta").keys(), QStringList{u"delta"_s});
        QStringList folders;
        for (const QStringList& call : world.calls()) {
            folders.append(call.at(1));
        }
        QCOMPARE(world.callNames(),
                 QStringList({u"SearchKitIndexer"_s, u"SearchKitIndexer"_s, u"SearchKitIndexer"_s,
                              u"SearchKitIndexer32"_s, u"SearchKitIndexer"_s}));
        QCOMPARE(folders.at(1), folders.at(0));
        QCOMPARE(folders.at(2), folders.at(0));
        QCOMPARE(QSet<QString>(folders.begin(), folders.end()).size(), 3);
        QVERIFY(!QFile::exists(folders.at(0)));
        // The idle server's folder goes with the indexer.
        world.indexer.reset();
        QCOMPARE(QDir(world.env.tempFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
    }

    void eachRunHasAFolderOfItsOwn()
    {
        World world;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"), "exit 1\n");
        world.writeIndexer(QStringLiteral("SearchKitIndexer32"), "exit 1\n");
        world.count(QStringLiteral("a.txt"), "a");
        world.count(QStringLiteral("b.txt"), "b");
        QSet<QString> folders;
        for (const QStringList& call : world.calls()) {
            QVERIFY(call.at(1).startsWith(world.env.tempFolder() + QLatin1Char('/')));
            folders.insert(call.at(1));
        }
        QCOMPARE(folders.size(), 4);
    }

    // Reading any of these would wait for ever or never end: no indexer is started.
    void specialFilesAreRefused_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("named pipe") << QStringLiteral("a named pipe");
        QTest::newRow("device") << QStringLiteral("a device");
        QTest::newRow("socket") << QStringLiteral("a socket");
    }
    void specialFilesAreRefused()
    {
        QFETCH(QString, kind);
        World world;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"), "exit 1\n");
        world.writeIndexer(QStringLiteral("SearchKitIndexer32"), "exit 1\n");
        QString path = world.env.root() + QStringLiteral("/special");
        const QByteArray encoded = QFile::encodeName(path);
        if (kind == QLatin1String("a named pipe")) {
            QCOMPARE(::mkfifo(encoded.constData(), 0600), 0);
        } else if (kind == QLatin1String("a device")) {
            path = QStringLiteral("/dev/zero");
        } else {
            const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
            sockaddr_un address{};
            address.sun_family = AF_UNIX;
            QVERIFY(std::size_t(encoded.size()) < sizeof(address.sun_path));
            std::copy(encoded.begin(), encoded.end(), address.sun_path);
            QCOMPARE(::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
            ::close(fd);
        }
        QVERIFY(world.tableOf(path).isEmpty());
        QCOMPARE(world.calls(), QList<QStringList>());
        QVERIFY(world.logged(QStringLiteral("\"%1\" is %2, not a document").arg(path, kind)));
    }

    // Progress lines on the indexer's standard output are passed on as they come; anything
    // else there is dropped, and the table is read as before.
    void progressLinesArePassedOn()
    {
        World world;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"),
                           "echo 'progress 10 100'\necho 'not a report'\necho 'progress x 1'\n"
                           "head -c 5000 /dev/zero | tr '\\0' a\necho\necho 'progress 100 100'\n"
                           "cat > \"$TMPDIR/index-1964.dat\" <<'EOF'\n" +
                               dictionaryOf("done") + "EOF\n");
        WordTable table;
        QCOMPARE(world.reportsOf(QStringLiteral("a.txt"), "hello", true, &table),
                 QStringList({QStringLiteral("10/100"), QStringLiteral("100/100")}));
        QCOMPARE(table.keys(), QStringList{QStringLiteral("done")});
    }

    // The real indexer reports its place in the file, up to the file's size; at its own
    // pace a short file says nothing.
    void realIndexerReportsHowFarItHasRead()
    {
        World world;
        QByteArray text;
        for (int i = 0; i < 1'000'000; ++i) {
            text += "word ";
        }
        QVERIFY(world.reportsOf(QStringLiteral("short.txt"), "a few words", false).isEmpty());

        qputenv("TALLYVOX_PROGRESS_MS", "0");
        WordTable table;
        const QStringList reports =
            world.reportsOf(QStringLiteral("long.txt"), text, false, &table);
        qunsetenv("TALLYVOX_PROGRESS_MS");
        QCOMPARE(table.value(QStringLiteral("word")), 1'000'000);
        QVERIFY(reports.size() >= 2);
        quint64 last = 0;
        for (const QString& report : reports) {
            QCOMPARE(report.section(u'/', 1).toULongLong(), quint64(text.size()));
            const quint64 done = report.section(u'/', 0, 0).toULongLong();
            QVERIFY(done >= last);
            last = done;
        }
        QCOMPARE(last, quint64(text.size()));
    }

    // A long run is never cut while it reads on: only a run that stops moving is ended.
    void runThatKeepsReadingOutlivesTheStallLimit()
    {
        World world;
        world.stallLimit = 400ms;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"),
                           "for i in 1 2 3 4 5 6 7 8; do echo \"progress $i 8\"; sleep 0.15; done\n"
                           "cat > \"$TMPDIR/index-1964.dat\" <<'EOF'\n" +
                               dictionaryOf("whole") + "EOF\n");
        world.writeIndexer(QStringLiteral("SearchKitIndexer32"), "exit 1\n");
        QCOMPARE(world.count(QStringLiteral("long.txt"), "x").keys(),
                 QStringList{QStringLiteral("whole")});
        QCOMPARE(world.callNames(), QStringList{QStringLiteral("SearchKitIndexer")});
    }

    void stopEndsTheRunningIndexerAndAnyLater()
    {
        World world;
        world.writeIndexer(QStringLiteral("SearchKitIndexer"), "sleep 20\n");
        world.writeRealFallback();
        QTimer::singleShot(200ms, &world.stop, &IndexerStop::stop);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(world.count(QStringLiteral("a.txt"), "hello").isEmpty());
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(world.count(QStringLiteral("b.txt"), "hello").isEmpty());
        // Neither the fallback nor the next file's indexer was started.
        QCOMPARE(world.callNames(), QStringList{QStringLiteral("SearchKitIndexer")});
    }

    // The application is killed while it waits: its indexer must not live on.
    void indexerDiesWithTheApplication()
    {
        World world;
        const QString pidFile = world.env.root() + QStringLiteral("/pid");
        world.writeIndexer(QStringLiteral("SearchKitIndexer"),
                           "echo $$ > '" + QFile::encodeName(pidFile) + "'\nexec sleep 60\n");
        QProcess application;
        application.start(QStringLiteral(TALLYVOX_TEST_BIN_DIR "/IndexerParent"),
                          {world.bin, world.env.tempFolder(),
                           world.env.writeFile(QStringLiteral("doc.txt"), "words")});
        QVERIFY(application.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(pidFile) && QFile(pidFile).size() > 0, 10000);
        QFile file(pidFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString proc =
            QStringLiteral("/proc/") + QString::fromLatin1(file.readAll().trimmed());
        QVERIFY(QFile::exists(proc));
        application.kill();
        QVERIFY(application.waitForFinished());
        // Gone, or a zombie waiting for whoever adopted it.
        const auto alive = [&] {
            QFile stat(proc + QStringLiteral("/stat"));
            return stat.open(QIODevice::ReadOnly) && !stat.readAll().contains(") Z ");
        };
        QTRY_VERIFY_WITH_TIMEOUT(!alive(), 5000);
    }
};

QTEST_GUILESS_MAIN(IndexerClientTest)
#include "IndexerClientTest.moc"
