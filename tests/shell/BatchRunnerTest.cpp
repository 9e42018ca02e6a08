#include "shell/BatchRunner.h"
#include "prefs/PreferenceStore.h"
#include "shell/BatchView.h"
#include "shell/JobQueue.h"
#include "shell/ServiceActions.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Records what the run shows, as "kind:value" lines.
class RecordingView final : public BatchView {
public:
    void showStatus(const QString& text, StatusTarget target) override
    {
        add(u"status%1"_s.arg(int(target)), text);
    }
    void setRunning(bool running) override { add(u"running"_s, int(running)); }
    void setProgressMaximum(int maximum) override { add(u"max"_s, maximum); }
    void setProgressMinimum(int minimum) override { add(u"min"_s, minimum); }
    void setProgressValue(int value) override { add(u"value"_s, value); }
    void setProgressVisible(bool visible) override { add(u"progress"_s, int(visible)); }
    void showErrorWindow(const QString& text) override { add(u"error"_s, text); }

    void add(const QString& kind, const QVariant& value)
    {
        lines.append(kind + u':' + value.toString());
    }
    QStringList matching(const QString& prefix) const { return lines.filter(prefix); }
    QStringList lines;
};

const QString helpLine = u"status1:"_s + QString::fromUtf16(batchTexts::helpText);

struct World {
    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    RecordingView view;
    PreferenceStore store;
    testing::FakeIndexer indexer;
    WordContext context{desktop, store, indexer, env.tempFolder()};
    JobQueue jobs;
    BatchRunner batch{view, context, jobs};

    /// Makes each name below the root: "name/" a folder, "-name" nothing at all; a file
    /// holds its own name as its one word.
    QStringList make(const QString& names) const
    {
        QStringList paths;
        for (const QString& name : names.split(u' ', Qt::SkipEmptyParts)) {
            if (name.endsWith(u'/')) {
                QDir().mkpath(env.root() + u'/' + name);
            } else if (!name.startsWith(u'-')) {
                env.writeFile(name, name.toUtf8());
            }
            paths.append(env.root() + u'/' + (name.endsWith(u'/') ? name.chopped(1) : name));
        }
        return paths;
    }
    QString path(const QString& name) const { return env.root() + u'/' + name; }
    void runToEnd(const QStringList& paths, int timeout = 5000)
    {
        QSignalSpy ended(&batch, &BatchRunner::runEnded);
        batch.openDocuments(paths);
        QVERIFY(ended.wait(timeout));
    }
    /// The names of the files the first indexer was started on, in order.
    QStringList indexed() const
    {
        QStringList names;
        for (const QString& call : indexer.calls()) {
            if (call.startsWith(u"SearchKitIndexer "_s)) {
                names.append(call.section(u'/', -1));
            }
        }
        return names;
    }
    /// The lists handed to the editor, by name, in order.
    QStringList opened() const
    {
        QStringList names;
        for (const QString& path : desktop.texts(u"editor"_s)) {
            names.append(path.section(u'/', -1));
        }
        return names;
    }
    QByteArray list(const QString& name) const
    {
        QFile file(env.dataHome() + u"/Okaluna Software/Tallyvox/"_s + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "<none>"_ba;
    }
    /// The status line's "File: " texts, in order.
    QStringList shownFiles() const
    {
        QStringList names;
        for (const QString& line : view.matching(u"status1:File: "_s)) {
            names.append(line.mid(14));
        }
        return names;
    }
};

} // namespace

class BatchRunnerTest : public QObject {
    Q_OBJECT

private slots:
    void runs_data()
    {
        QTest::addColumn<QString>("names"); // as World::make takes them
        QTest::addColumn<int>("atOnce");
        QTest::addColumn<QString>("processed");
        QTest::addColumn<QString>("progress");
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("notAFile");
        // The bar's maximum is count - 1 while the values run from 1 to count.
        QTest::newRow("empty") << u""_s << 2 << u""_s << u"max:-1 min:0"_s << QString() << false;
        QTest::newRow("three") << u"f1 f2 f3"_s << 1 << u"f1 f2 f3"_s
                               << u"max:2 min:0 value:1 value:2 value:3"_s << QString() << false;
        QTest::newRow("three, two at once")
            << u"f1 f2 f3"_s << 2 << u"f1 f2 f3"_s << u"max:2 min:0 value:1 value:2 value:3"_s
            << QString() << false;
        // Packages go through; one alert however many plain folders, after the run. Only a
        // failure on the last item is reported, naming the last file that was read.
        QTest::newRow("missing, folders and a package")
            << u"-gone Plain/ a.txt Plain/ Notes.RTFD/"_s << 2 << u"a.txt Notes.RTFD"_s
            << u"max:4 min:0 value:1 value:2 value:3 value:4 value:5"_s << QString() << true;
        // Before any item was read, the error names the one that failed.
        QTest::newRow("missing only")
            << u"-gone.txt"_s << 2 << u""_s << u"max:0 min:0 value:1"_s
            << u"An error occurred while launching \"-gone.txt\"   (Error code: -43)"_s << false;
        QTest::newRow("missing last")
            << u"kept.txt -gone"_s << 2 << u"kept.txt"_s << u"max:1 min:0 value:1 value:2"_s
            << u"An error occurred while launching \"kept.txt\"   (Error code: -43)"_s << false;
    }
    void runs()
    {
        QFETCH(QString, names);
        QFETCH(int, atOnce);
        QFETCH(QString, processed);
        QFETCH(QString, progress);
        QFETCH(QString, error);
        QFETCH(bool, notAFile);
        World w;
        w.batch.setConcurrency(atOnce);
        w.runToEnd(w.make(names));

        QCOMPARE(w.indexed().join(u' '), processed);
        QCOMPARE(
            (w.view.matching(u"max:"_s) + w.view.matching(u"min:"_s) + w.view.matching(u"value:"_s))
                .join(u' '),
            progress);
        QCOMPARE(w.shownFiles().join(u' '), processed);
        QCOMPARE(w.view.lines.last(), helpLine);
        QCOMPARE(w.view.matching(u"error:"_s).join(QString()),
                 error.isEmpty() ? QString() : u"error:"_s + error);
        const QStringList alert{QString::fromUtf16(batchTexts::notAFileMessage),
                                QString::fromUtf16(batchTexts::notAFileExplanation)};
        QCOMPARE(w.desktop.texts(u"stopAlert"_s) + w.desktop.texts(u"stopAlertExplanation"_s),
                 notAFile ? alert : QStringList());
        // A package is a folder the indexers cannot read: its list is empty, and said to
        // be, after the folder alert.
        const bool package = processed.contains(u"RTFD"_s);
        QCOMPARE(w.desktop.alerts(),
                 package ? QStringList{u"The word list of \"Notes.RTFD\" is empty: the file is "
                                       u"not a document Tallyvox reads."_s}
                         : QStringList());
        if (notAFile) {
            QCOMPARE(w.desktop.events().last().kind,
                     package ? u"alert"_s : u"stopAlertExplanation"_s);
        }
    }

    // Files indexed side by side still reach the user one by one in the order given, each
    // list holding its own file's words, however long each file takes.
    void listsKeepTheirOrderWhateverTheFilesTake_data()
    {
        QTest::addColumn<int>("atOnce");
        QTest::addColumn<QList<int>>("milliseconds");
        QTest::newRow("one at a time") << 1 << QList<int>{120, 0, 60, 0, 30};
        QTest::newRow("two at once, the first slowest") << 2 << QList<int>{250, 0, 10, 120, 0};
        QTest::newRow("three at once, the last quickest") << 3 << QList<int>{80, 60, 40, 20, 0};
        QTest::newRow("more at once than files") << 8 << QList<int>{30, 0, 30, 0, 30};
    }
    void listsKeepTheirOrderWhateverTheFilesTake()
    {
        QFETCH(int, atOnce);
        QFETCH(QList<int>, milliseconds);
        World w;
        w.batch.setConcurrency(atOnce);
        QStringList names;
        for (qsizetype i = 0; i < milliseconds.size(); ++i) {
            const QString name = u"doc%1"_s.arg(i);
            names.append(name);
            const QString path = w.env.writeFile(name, "shared " + name.toUtf8());
            w.indexer.script(path, {testing::countWhiteSpaceWords("shared " + name.toUtf8()),
                                    IndexerEnding::Complete,
                                    std::chrono::milliseconds(milliseconds[i]),
                                    {}});
        }
        QStringList paths;
        for (const QString& name : std::as_const(names)) {
            paths.append(w.path(name));
        }
        w.runToEnd(paths);

        QStringList lists;
        for (const QString& name : std::as_const(names)) {
            lists.append(name + u".txt"_s);
            QCOMPARE(w.list(name + u".txt"_s), name.toUtf8() + " (1)\nshared (1)\n");
        }
        QCOMPARE(w.opened(), lists);
        QCOMPARE(w.shownFiles(), names);
        QCOMPARE(w.indexer.mostAtOnce(), std::min<int>(atOnce, int(names.size())));
        QCOMPARE(w.indexer.concurrentRuns(), std::min<int>(atOnce, int(names.size())));
        // Each list's log line follows its own indexing, in order.
        QStringList counted;
        for (const QString& line : w.desktop.logLines()) {
            if (line.startsWith(u"There are "_s)) {
                counted.append(line.section(u'"', 1, 1));
            }
        }
        QCOMPARE(counted, names);
    }

    // How the indexers end shapes what the user gets: a list, the empty list made before
    // indexing, the fallback, nothing at all when Quit ends the run.
    void jobsThatEndEachWay_data()
    {
        QTest::addColumn<QString>("how");      // the first indexer's ending for f2
        QTest::addColumn<QString>("fallback"); // the fallback's, or "" for none
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QByteArray>("f2List");
        QTest::newRow("quick") << u"complete"_s << QString() << u"f1.txt f2.txt f3.txt"_s
                               << "f2 (1)\n"_ba;
        QTest::newRow("slow") << u"slow"_s << QString() << u"f1.txt f2.txt f3.txt"_s
                              << "f2 (1)\n"_ba;
        QTest::newRow("partial") << u"partial"_s << QString() << u"f1.txt f2.txt f3.txt"_s
                                 << "f2 (1)\n"_ba;
        QTest::newRow("failing, the fallback reads it")
            << u"failed"_s << u"complete"_s << u"f1.txt f2.txt f3.txt"_s << "f2 (1)\n"_ba;
        QTest::newRow("failing, the fallback too")
            << u"failed"_s << u"failed"_s << u"f1.txt f3.txt"_s << ""_ba;
        QTest::newRow("stopped by Quit") << u"quit"_s << QString() << u"f1.txt"_s << ""_ba;
    }
    void jobsThatEndEachWay()
    {
        QFETCH(QString, how);
        QFETCH(QString, fallback);
        QFETCH(QString, opened);
        QFETCH(QByteArray, f2List);
        World w;
        const QStringList paths = w.make(u"f1 f2 f3"_s);
        const auto ending = [](const QString& name) {
            return name == u"failed"_s    ? IndexerEnding::Failed
                   : name == u"partial"_s ? IndexerEnding::Partial
                                          : IndexerEnding::Complete;
        };
        const WordTable f2{{u"f2"_s, 1}};
        w.indexer.script(paths[1], {f2, ending(how), how == u"slow"_s ? 700ms : 0ms, {}});
        if (!fallback.isEmpty()) {
            w.indexer.script(paths[1], {f2, ending(fallback), 0ms, {}}, u"SearchKitIndexer32"_s);
        }
        if (how == u"quit"_s) {
            w.indexer.script(paths[1], {f2, IndexerEnding::Complete, 5s, {}});
            w.indexer.onStart = [&w](const QString& call) {
                if (call.endsWith(u"/f2"_s)) {
                    QTimer::singleShot(50ms, &w.batch, &BatchRunner::requestQuit);
                }
            };
        }
        w.runToEnd(paths);
        QCOMPARE(w.opened().join(u' '), opened);
        QCOMPARE(w.list(u"f2.txt"_s), f2List);
        QCOMPARE(w.indexer.calls().filter(u"SearchKitIndexer32"_s).size(),
                 how == u"failed"_s ? 1 : 0);
        QCOMPARE(w.indexer.running(), 0);
        // Only a file that neither indexer could read counts as not processed; it and a list
        // cut short are said.
        QCOMPARE(w.batch.listFailed(), fallback == u"failed"_s);
        QCOMPARE(w.batch.wordsLost(), fallback == u"failed"_s);
        QStringList alerts;
        if (fallback == u"failed"_s) {
            alerts.append(u"The word list of \"f2\" is empty: the file could not be read."_s);
        } else if (how == u"partial"_s) {
            alerts.append(u"The word list of \"f2\" is incomplete: it was cut at a limit."_s);
        }
        QCOMPARE(w.desktop.alerts(), alerts);
    }

    // After the error window and the folder alert, one alert names every list that came out empty
    // or cut short, in the order the files were given, with why; a run without any says nothing.
    void troubledListsAreSaidOnceAfterTheRun_data()
    {
        QTest::addColumn<QString>("files");
        QTest::addColumn<int>("atOnce");
        QTest::addColumn<QStringList>("alerts");
        QTest::addColumn<bool>("wordsLost");
        QTest::newRow("all fine") << u"a b"_s << 2 << QStringList() << false;
        QTest::newRow("one empty file")
            << u"a empty"_s << 1
            << QStringList{u"The word list of \"empty\" is empty: the file is empty."_s} << false;
        QTest::newRow("one without words")
            << u"punct.txt"_s << 1
            << QStringList{u"The word list of \"punct.txt\" is empty: the document holds no "
                           u"words."_s}
            << false;
        QTest::newRow("every kind, two at once, slow ones first")
            << u"cut locked.pdf a image.png empty punct.txt"_s << 2
            << QStringList{u"Some word lists are empty or incomplete: \"cut\" (it was cut at a "
                           u"limit (PDF: page 2 of 3 took longer than 5 s and was left out)); "
                           u"\"locked.pdf\" (the document is password-protected); \"image.png\" "
                           u"(the file is not a document Tallyvox reads); \"empty\" (the file is "
                           u"empty); \"punct.txt\" (the document holds no words)."_s}
            << true;
        QTest::newRow("the folder alert comes first")
            << u"folder/ locked.pdf"_s << 1
            << QStringList{u"The word list of \"locked.pdf\" is empty: the document is "
                           u"password-protected."_s}
            << true;
    }
    void troubledListsAreSaidOnceAfterTheRun()
    {
        QFETCH(QString, files);
        QFETCH(int, atOnce);
        QFETCH(QStringList, alerts);
        QFETCH(bool, wordsLost);
        World w;
        w.env.writeFile(u"empty"_s, "");
        w.env.writeFile(u"punct.txt"_s, "?! ...");
        w.env.writeFile(u"image.png"_s, "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"_ba + QByteArray(64, '\0'));
        w.env.writeFile(u"locked.pdf"_s, "%PDF-1.6\ntrailer << /Encrypt 3 0 R >>\n%%EOF\n");
        w.env.writeFile(u"cut"_s, "cut");
        w.env.writeFile(u"a"_s, "a");
        w.env.writeFile(u"b"_s, "b");
        for (const QString& name : {u"image.png"_s, u"punct.txt"_s}) {
            w.indexer.script(w.path(name), {WordTable{}, IndexerEnding::Complete, 0ms, {}});
        }
        w.indexer.script(w.path(u"cut"_s),
                         {WordTable{{u"cut"_s, 1}}, IndexerEnding::Partial, 300ms, {}});
        w.indexer.scriptCutReasons(w.path(u"cut"_s),
                                   u"PDF: page 2 of 3 took longer than 5 s and was left out"_s);
        w.indexer.script(w.path(u"locked.pdf"_s),
                         {WordTable{}, IndexerEnding::Complete, 200ms, {}});
        w.batch.setConcurrency(atOnce);
        QStringList paths;
        for (const QString& name : files.split(u' ')) {
            if (name.endsWith(u'/')) {
                QDir().mkpath(w.path(name));
            }
            paths.append(w.path(name.endsWith(u'/') ? name.chopped(1) : name));
        }
        w.runToEnd(paths);
        QCOMPARE(w.desktop.alerts(), alerts);
        QCOMPARE(w.desktop.texts(u"stopAlert"_s).size(), files.contains(u'/') ? 1 : 0);
        QCOMPARE(w.batch.wordsLost(), wordsLost);
        QVERIFY(!w.batch.listFailed());
        // The lists of the files that gave no words stay, empty, as they always did.
        QCOMPARE(w.list(u"empty.txt"_s), files.contains(u"empty"_s) ? ""_ba : "<none>"_ba);
    }

    void stopOrQuitDuringTheSecondOfFiveFiles_data()
    {
        QTest::addColumn<bool>("quit");
        QTest::addColumn<bool>("quitWhenDone");
        QTest::addColumn<int>("atOnce");
        QTest::addColumn<QString>("opened");
        QTest::newRow("stop") << false << false << 1 << u"f1.txt f2.txt"_s;
        QTest::newRow("stop, two at once") << false << false << 2 << u"f1.txt f2.txt"_s;
        QTest::newRow("stop, quit when done") << false << true << 1 << u"f1.txt f2.txt"_s;
        // Quit ends the file in hand: its list is not written.
        QTest::newRow("quit") << true << false << 1 << u"f1.txt"_s;
    }
    void stopOrQuitDuringTheSecondOfFiveFiles()
    {
        QFETCH(bool, quit);
        QFETCH(bool, quitWhenDone);
        QFETCH(int, atOnce);
        QFETCH(QString, opened);
        World w;
        w.batch.setConcurrency(atOnce);
        w.store.writeBool(prefs::QuitWhenDone, quitWhenDone);
        const QStringList paths = w.make(u"f1 f2 f3 f4 f5"_s);
        w.indexer.setDefaultDelay(50ms);
        w.indexer.onStart = [&w, quit](const QString& call) {
            if (call.endsWith(u"/f2"_s)) {
                quit ? w.batch.requestQuit() : w.batch.requestCancel();
            }
        };
        QSignalSpy farewell(&w.batch, &BatchRunner::farewellDue);
        QElapsedTimer clock;
        clock.start();
        w.runToEnd(paths);

        QCOMPARE(w.indexed(), (QStringList{u"f1"_s, u"f2"_s}));
        QCOMPARE(w.opened().join(u' '), opened);
        QVERIFY(w.view.lines.contains(u"running:0"_s));
        QCOMPARE(w.view.lines.last() == helpLine, !quitWhenDone);
        if (quitWhenDone) {
            // "Bye." comes a second after the run, instead of the help text.
            QVERIFY(farewell.wait(1500));
            QVERIFY(clock.elapsed() >= 990);
        }
        // Stop holds for one run only; quit for the rest of the process.
        w.indexer.onStart = {};
        w.runToEnd({paths.last()});
        QCOMPARE(w.indexed().size(), quit ? 2 : 3);
    }

    // A file that takes longer than half a second shows in the progress text how far the
    // indexer has read it; the stop button is acknowledged there at once. The first file
    // takes "ms" milliseconds and reports the "reports" evenly over that time; stopAt:
    // when the stop button is pressed, if at all. shown: the progress texts, "|" after each.
    void progressWithinAFile_data()
    {
        QTest::addColumn<int>("ms");
        QTest::addColumn<QString>("reports");
        QTest::addColumn<int>("stopAt");
        QTest::addColumn<QString>("shown");
        QTest::newRow("quick file: nothing") << 0 << u"1/4"_s << -1 << QString();
        QTest::newRow("slow file")
            << 2000 << u"1/4 3/4"_s << -1 << u"f1: reading\u2026|f1: 25% read|f1: 75% read||"_s;
        QTest::newRow("size unknown")
            << 1500 << u"10/0"_s << -1 << u"f1: reading\u2026|f1: reading\u2026||"_s;
        QTest::newRow("more than the size")
            << 1500 << u"9/4"_s << -1 << u"f1: reading\u2026|f1: 100% read||"_s;
        QTest::newRow("stop on a quick file")
            << 200 << QString() << 0 << u"Stopping after this file\u2026||"_s;
        QTest::newRow("stop on a slow file")
            << 2000 << u"1/4 3/4"_s << 1000
            << u"f1: reading\u2026|f1: 25% read|f1: 25% read \u2014 stopping after this file\u2026|"
               u"f1: 75% read \u2014 stopping after this file\u2026||"_s;
    }
    void progressWithinAFile()
    {
        QFETCH(int, ms);
        QFETCH(QString, reports);
        QFETCH(int, stopAt);
        QFETCH(QString, shown);
        World w;
        const QStringList paths = w.make(u"f1 f2"_s);
        testing::FakeIndexer::Script script{
            WordTable{{u"f1"_s, 1}}, IndexerEnding::Complete, std::chrono::milliseconds(ms), {}};
        for (const QString& report : reports.split(u' ', Qt::SkipEmptyParts)) {
            script.progress.append(
                {report.section(u'/', 0, 0).toULongLong(), report.section(u'/', 1).toULongLong()});
        }
        w.indexer.script(paths[0], script);
        if (stopAt >= 0) {
            w.indexer.onStart = [&w, stopAt](const QString& call) {
                if (call.endsWith(u"/f1"_s)) {
                    QTimer::singleShot(stopAt, &w.batch, &BatchRunner::requestCancel);
                }
            };
        }
        w.runToEnd(paths);
        QString texts;
        for (const QString& line : w.view.matching(u"status2:"_s)) {
            texts += line.mid(8) + u'|';
        }
        QCOMPARE(texts, shown);
        QCOMPARE(w.indexed().size(), stopAt >= 0 ? 1 : 2);
    }

    // "CombineFiles" as read when the run starts: one list of every file's words, written
    // after the files; none when Quit ended the run.
    void combinedRuns_data()
    {
        QTest::addColumn<int>("atOnce");
        QTest::addColumn<bool>("quit");
        QTest::addColumn<QString>("opened");
        QTest::newRow("one at a time") << 1 << false << u"Combined word list.txt"_s;
        QTest::newRow("three at once") << 3 << false << u"Combined word list.txt"_s;
        QTest::newRow("ended by Quit") << 2 << true << QString();
    }
    void combinedRuns()
    {
        QFETCH(int, atOnce);
        QFETCH(bool, quit);
        QFETCH(QString, opened);
        World w;
        w.batch.setConcurrency(atOnce);
        w.store.writeBool(prefs::CombineFiles, true);
        QStringList paths;
        for (int i = 0; i < 4; ++i) {
            paths.append(w.env.writeFile(u"d%1"_s.arg(i), "all " + QByteArray(i + 1, 'x')));
        }
        w.indexer.setDefaultDelay(20ms);
        if (quit) {
            w.indexer.onStart = [&w](const QString& call) {
                if (call.endsWith(u"/d2"_s)) {
                    w.batch.requestQuit();
                }
            };
        }
        w.runToEnd(paths);
        QCOMPARE(w.opened().join(u' '), opened);
        if (!quit) {
            QCOMPARE(w.list(u"Combined/Combined word list.txt"_s),
                     "all (4)\nx (1)\nxx (1)\nxxx (1)\nxxxx (1)\n"_ba);
            QVERIFY(w.desktop.logLines().contains(u"There are 8 words in 4 files"_s));
        }
        // No file's own list is made in a combined run.
        QCOMPARE(w.list(u"d0.txt"_s), "<none>"_ba);
    }

    // Lists arriving before the run starts replace each other; those arriving during it
    // make the next run; a service request made during a run is served after it.
    void arrivalsDuringARun()
    {
        World w;
        ServiceActions services({w.context, {}}, w.jobs);
        const QStringList paths = w.make(u"a b c d"_s);
        w.indexer.setDefaultDelay(30ms);
        w.indexer.onStart = [&](const QString& call) {
            if (call.endsWith(u"SearchKitIndexer "_s + paths[0]) && w.batch.isRunning()) {
                w.batch.openDocuments({paths[2]});
                w.batch.queueDocuments({paths[3]});
            } else if (call.endsWith(u"/b"_s)) {
                services.queueRequest(u"wordCount"_s, pasteboardWithFile(paths[0]),
                                      SelectionSource::Primary);
            }
        };
        QSignalSpy ended(&w.batch, &BatchRunner::runEnded);
        w.batch.openDocuments({paths[3]});
        w.batch.openDocuments(paths.mid(0, 2));
        QVERIFY(w.indexed().isEmpty()); // nothing runs inside the handler
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 2, 5000);
        QTRY_COMPARE_WITH_TIMEOUT(w.desktop.alerts().size(), 1, 5000);
        // The run queued during the first comes before the service queued after it.
        QCOMPARE(w.indexed(), (QStringList{u"a"_s, u"b"_s, u"d"_s, u"a"_s}));
        QCOMPARE(w.desktop.alerts(), QStringList{u"Word count: 1"_s});
        // The service's alert comes after every list of the runs queued before it.
        QStringList order;
        for (const auto& event : w.desktop.events()) {
            if (event.kind == u"editor"_s || event.kind == u"alert"_s) {
                order.append(event.text.section(u'/', -1));
            }
        }
        QCOMPARE(order, (QStringList{u"a.txt"_s, u"b.txt"_s, u"d.txt"_s, u"Word count: 1"_s}));
    }
};

QTEST_GUILESS_MAIN(BatchRunnerTest)
#include "BatchRunnerTest.moc"
