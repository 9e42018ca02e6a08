#include "shell/BatchRunner.h"
#include "prefs/PreferenceStore.h"
#include "shell/BatchView.h"
#include "support/IndexerProgress.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

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

} // namespace

class BatchRunnerTest : public QObject {
    Q_OBJECT

    struct World {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        RecordingView view;
        PreferenceStore store;
        QStringList processed;
        std::function<void(const FileRef&)> onFile;
        BatchRunner batch{view, desktop, store, [this](const FileRef& file) {
                              processed.append(file.name());
                              if (onFile) {
                                  onFile(file);
                              }
                          }};

        /// Makes each name below the root: "name/" a folder, "-name" nothing at all.
        QStringList make(const QString& names) const
        {
            QStringList paths;
            for (const QString& name : names.split(u' ', Qt::SkipEmptyParts)) {
                if (name.endsWith(u'/')) {
                    QDir().mkpath(env.root() + u'/' + name);
                } else if (!name.startsWith(u'-')) {
                    env.writeFile(name, "x");
                }
                paths.append(env.root() + u'/' + (name.endsWith(u'/') ? name.chopped(1) : name));
            }
            return paths;
        }
        void runToEnd(const QStringList& paths)
        {
            QSignalSpy ended(&batch, &BatchRunner::runEnded);
            batch.openDocuments(paths);
            QVERIFY(ended.wait(2000));
        }
    };

private slots:
    void runs_data()
    {
        QTest::addColumn<QString>("names"); // as World::make takes them
        QTest::addColumn<QString>("processed");
        QTest::addColumn<QString>("progress");
        QTest::addColumn<QString>("error");
        QTest::addColumn<bool>("notAFile");
        // The bar's maximum is count - 1 while the values run from 1 to count.
        QTest::newRow("empty") << u""_s << u""_s << u"max:-1 min:0"_s << QString() << false;
        QTest::newRow("three") << u"f1 f2 f3"_s << u"f1 f2 f3"_s
                               << u"max:2 min:0 value:1 value:2 value:3"_s << QString() << false;
        // Packages go through; one alert however many plain folders, after the run. Only a
        // failure on the last item is reported, naming the last file that was read.
        QTest::newRow("missing, folders and a package")
            << u"-gone Plain/ a.txt Plain/ Notes.RTFD/"_s << u"a.txt Notes.RTFD"_s
            << u"max:4 min:0 value:1 value:2 value:3 value:4 value:5"_s << QString() << true;
        QTest::newRow("missing last")
            << u"kept.txt -gone"_s << u"kept.txt"_s << u"max:1 min:0 value:1 value:2"_s
            << u"An error occurred while launching \"kept.txt\"   (Error code: -43)"_s << false;
    }
    void runs()
    {
        QFETCH(QString, names);
        QFETCH(QString, processed);
        QFETCH(QString, progress);
        QFETCH(QString, error);
        QFETCH(bool, notAFile);
        World w;
        w.runToEnd(w.make(names));

        QCOMPARE(w.processed.join(u' '), processed);
        QCOMPARE(
            (w.view.matching(u"max:"_s) + w.view.matching(u"min:"_s) + w.view.matching(u"value:"_s))
                .join(u' '),
            progress);
        if (!processed.isEmpty()) {
            QCOMPARE(w.view.matching(u"status1:File: "_s).first(),
                     u"status1:File: "_s + processed.section(u' ', 0, 0));
        }
        QCOMPARE(w.view.lines.last(), helpLine);
        QCOMPARE(w.view.matching(u"error:"_s).join(QString()),
                 error.isEmpty() ? QString() : u"error:"_s + error);
        QCOMPARE(w.desktop.texts(u"raise"_s).size(), 1);
        const QStringList alert{QString::fromUtf16(batchTexts::notAFileMessage),
                                QString::fromUtf16(batchTexts::notAFileExplanation)};
        QCOMPARE(w.desktop.texts(u"stopAlert"_s) + w.desktop.texts(u"stopAlertExplanation"_s),
                 notAFile ? alert : QStringList());
        if (notAFile) {
            QCOMPARE(w.desktop.events().last().kind, u"stopAlertExplanation"_s);
        }
    }

    void stopOrQuitDuringTheSecondOfFiveFiles_data()
    {
        QTest::addColumn<bool>("quit");
        QTest::addColumn<bool>("quitWhenDone");
        QTest::newRow("stop") << false << false;
        QTest::newRow("stop, quit when done") << false << true;
        QTest::newRow("quit") << true << false;
    }
    void stopOrQuitDuringTheSecondOfFiveFiles()
    {
        QFETCH(bool, quit);
        QFETCH(bool, quitWhenDone);
        World w;
        w.store.writeBool(prefs::QuitWhenDone, quitWhenDone);
        const QStringList paths = w.make(u"f1 f2 f3 f4 f5"_s);
        w.onFile = [&w, quit](const FileRef& file) {
            if (file.name() == u"f2"_s) {
                quit ? w.batch.requestQuit() : w.batch.requestCancel();
            }
        };
        QSignalSpy farewell(&w.batch, &BatchRunner::farewellDue);
        QElapsedTimer clock;
        clock.start();
        w.runToEnd(paths);

        QCOMPARE(w.processed, (QStringList{u"f1"_s, u"f2"_s}));
        QVERIFY(w.view.lines.contains(u"running:0"_s));
        QCOMPARE(w.view.lines.last() == helpLine, !quitWhenDone);
        if (quitWhenDone) {
            // "Bye." comes a second after the run, instead of the help text.
            QVERIFY(farewell.wait(1500));
            QVERIFY(clock.elapsed() >= 990);
        }
        // Stop holds for one run only; quit for the rest of the process.
        w.processed.clear();
        w.onFile = {};
        w.runToEnd({paths.first()});
        QCOMPARE(w.processed.size(), quit ? 0 : 1);
    }

    // A file that takes longer than half a second shows in the progress text how far the
    // indexer has read it; the stop button is acknowledged there at once. Each step of a
    // file: "wait" 600 ms, "R/T" a report, "stop" the stop button. shown: the progress
    // texts, "|" after each.
    void progressWithinAFile_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("shown");
        QTest::newRow("quick file: nothing") << u"1/4"_s << QString();
        QTest::newRow("slow file")
            << u"wait 1/4 3/4"_s << u"f1: reading\u2026|f1: 25% read|f1: 75% read||"_s;
        QTest::newRow("size unknown")
            << u"wait 10/0"_s << u"f1: reading\u2026|f1: reading\u2026||"_s;
        QTest::newRow("more than the size")
            << u"wait 9/4"_s << u"f1: reading\u2026|f1: 100% read||"_s;
        QTest::newRow("stop on a quick file") << u"stop"_s << u"Stopping after this file\u2026||"_s;
        QTest::newRow("stop on a slow file")
            << u"wait 3/4 stop"_s
            << u"f1: reading\u2026|f1: 75% read|"
               u"f1: 75% read \u2014 stopping after this file\u2026||"_s;
    }
    void progressWithinAFile()
    {
        QFETCH(QString, steps);
        QFETCH(QString, shown);
        World w;
        IndexerProgress progress;
        w.batch.showIndexerProgress(progress);
        w.onFile = [&](const FileRef& file) {
            if (file.name() != u"f1"_s) {
                return;
            }
            for (const QString& step : steps.split(u' ')) {
                if (step == u"wait"_s) {
                    QTest::qWait(600);
                } else if (step == u"stop"_s) {
                    w.batch.requestCancel();
                } else {
                    progress.report(step.section(u'/', 0, 0).toULongLong(),
                                    step.section(u'/', 1).toULongLong());
                }
            }
        };
        w.runToEnd(w.make(u"f1 f2"_s));
        QString texts;
        for (const QString& line : w.view.matching(u"status2:"_s)) {
            texts += line.mid(8) + u'|';
        }
        QCOMPARE(texts, shown);
        QCOMPARE(w.processed.size(), steps.contains(u"stop"_s) ? 1 : 2);
        // Reports outside a file are not shown.
        progress.report(1, 2);
        QCOMPARE(w.view.matching(u"status2:"_s).size(), shown.count(u'|'));
    }

    // The run tells the application where its files begin and end, so that it can write one
    // list of them all: "CombineFiles" as read when the run starts, and whether Quit ended
    // it, before the reports.
    void runsAreBracketedForTheirWordLists_data()
    {
        QTest::addColumn<QString>("names");
        QTest::addColumn<bool>("combine");
        QTest::addColumn<QString>("interrupt"); // "stop" or "quit" during f2
        QTest::addColumn<QString>("expected");
        QTest::newRow("three files, combined")
            << u"f1 f2 f3"_s << true << QString()
            << u"started:true|File: f1|File: f2|File: f3|done:false|progress:0"_s;
        QTest::newRow("a file and a folder") << u"f1 D/"_s << false << QString()
                                             << u"started:false|File: f1|done:false|progress:0"_s;
        QTest::newRow("nothing") << QString() << true << QString()
                                 << u"started:true|done:false|progress:0"_s;
        QTest::newRow("stopped") << u"f1 f2 f3"_s << true << u"stop"_s
                                 << u"started:true|File: f1|File: f2|done:false|progress:0"_s;
        QTest::newRow("quit") << u"f1 f2 f3"_s << true << u"quit"_s
                              << u"started:true|File: f1|File: f2|done:true|progress:0"_s;
        QTest::newRow("last item missing")
            << u"f1 -gone"_s << true << QString()
            << u"started:true|File: f1|done:false|progress:0|error"_s;
    }
    void runsAreBracketedForTheirWordLists()
    {
        QFETCH(QString, names);
        QFETCH(bool, combine);
        QFETCH(QString, interrupt);
        QFETCH(QString, expected);
        World w;
        w.store.writeBool(prefs::CombineFiles, combine);
        connect(&w.batch, &BatchRunner::runStarted, this,
                [&w](bool combineFiles) { w.view.add(u"started"_s, combineFiles); });
        connect(&w.batch, &BatchRunner::filesDone, this,
                [&w](bool quitting) { w.view.add(u"done"_s, quitting); });
        w.onFile = [&w, interrupt](const FileRef& file) {
            if (file.name() == u"f2"_s && !interrupt.isEmpty()) {
                interrupt == u"quit"_s ? w.batch.requestQuit() : w.batch.requestCancel();
            }
        };
        w.runToEnd(w.make(names));
        QStringList sequence;
        for (const QString& line : std::as_const(w.view.lines)) {
            for (const QString& kind : {u"started:"_s, u"done:"_s, u"progress:0"_s, u"error:"_s}) {
                if (line.startsWith(kind)) {
                    sequence.append(kind == u"error:"_s ? u"error"_s : line);
                }
            }
            if (line.startsWith(u"status1:File: "_s)) {
                sequence.append(line.mid(8));
            }
        }
        QCOMPARE(sequence.join(u'|'), expected);
    }

    // Lists arriving before the run starts replace each other; those arriving during it
    // are held until it ends.
    void arrivals()
    {
        World w;
        const QStringList paths = w.make(u"a b c d"_s);
        w.onFile = [&](const FileRef& file) {
            if (file.name() == u"a"_s) {
                w.batch.openDocuments({paths[2]});
                w.batch.queueDocuments({paths[3]});
                QCOMPARE(w.batch.pendingDocuments(), paths.mid(0, 2));
            }
        };
        QSignalSpy ended(&w.batch, &BatchRunner::runEnded);
        w.batch.openDocuments({paths[3]});
        w.batch.openDocuments(paths.mid(0, 2));
        QVERIFY(w.processed.isEmpty()); // nothing runs inside the handler
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 2, 2000);
        QCOMPARE(w.processed, (QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    }
};

QTEST_GUILESS_MAIN(BatchRunnerTest)
#include "BatchRunnerTest.moc"
