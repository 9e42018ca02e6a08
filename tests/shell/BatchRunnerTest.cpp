#include "shell/BatchRunner.h"
#include "prefs/PreferenceStore.h"
#include "shell/BatchView.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;

namespace {

/// Records what the run shows, as "kind:value" lines.
class RecordingView final : public BatchView {
public:
    void showStatus(const QString& text, StatusTarget target) override
    {
        lines.append(QStringLiteral("status%1:%2").arg(int(target)).arg(text));
    }
    void setRunning(bool running) override
    {
        lines.append(QStringLiteral("running:%1").arg(running));
    }
    void setProgressMaximum(int maximum) override
    {
        lines.append(QStringLiteral("max:%1").arg(maximum));
    }
    void setProgressMinimum(int minimum) override
    {
        lines.append(QStringLiteral("min:%1").arg(minimum));
    }
    void setProgressValue(int value) override
    {
        lines.append(QStringLiteral("value:%1").arg(value));
    }
    void setProgressVisible(bool visible) override
    {
        lines.append(QStringLiteral("progress:%1").arg(visible));
    }
    void showErrorWindow(const QString& text) override
    {
        lines.append(QStringLiteral("error:") + text);
    }

    QStringList matching(const QString& prefix) const { return lines.filter(prefix); }
    QStringList lines;
};

const QString helpLine = QStringLiteral("status1:") + QString::fromUtf16(batchTexts::helpText);

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
                              if (onFile)
                                  onFile(file);
                          }};

        void runToEnd(const QStringList& paths)
        {
            QSignalSpy ended(&batch, &BatchRunner::runEnded);
            batch.openDocuments(paths);
            QVERIFY(ended.wait(2000));
        }
    };

private slots:
    void runShowsProgressAndStatus_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<QStringList>("progress");
        // The bar's maximum is count - 1 while the values run from 1 to count.
        QTest::newRow("empty") << 0
                               << QStringList{QStringLiteral("max:-1"), QStringLiteral("min:0")};
        QTest::newRow("one") << 1
                             << QStringList{QStringLiteral("max:0"), QStringLiteral("min:0"),
                                            QStringLiteral("value:1")};
        QTest::newRow("three") << 3
                               << QStringList{QStringLiteral("max:2"), QStringLiteral("min:0"),
                                              QStringLiteral("value:1"), QStringLiteral("value:2"),
                                              QStringLiteral("value:3")};
    }
    void runShowsProgressAndStatus()
    {
        QFETCH(int, files);
        QFETCH(QStringList, progress);
        World w;
        QStringList paths;
        for (int i = 1; i <= files; ++i)
            paths.append(w.env.writeFile(QStringLiteral("f%1.txt").arg(i), "x"));
        w.runToEnd(paths);

        QCOMPARE(w.processed.size(), files);
        QStringList shown = w.view.matching(QStringLiteral("max:")) +
                            w.view.matching(QStringLiteral("min:")) +
                            w.view.matching(QStringLiteral("value:"));
        QCOMPARE(shown, progress);
        if (files > 0)
            QCOMPARE(w.view.matching(QStringLiteral("status1:File: ")).first(),
                     QStringLiteral("status1:File: f1.txt"));
        QCOMPARE(w.view.lines.first(), QStringLiteral("running:1"));
        QCOMPARE(w.view.lines.last(), helpLine);
        QVERIFY(w.view.matching(QStringLiteral("error:")).isEmpty());
        QCOMPARE(w.desktop.texts(QStringLiteral("raise")).size(), 1);
    }

    void foldersAreRefusedPackagesAndFilesGoThrough()
    {
        World w;
        const QString folder = w.env.root() + QStringLiteral("/Plain");
        const QString package = w.env.root() + QStringLiteral("/Notes.RTFD");
        QDir().mkpath(folder);
        QDir().mkpath(package);
        const QString file = w.env.writeFile(QStringLiteral("a.txt"), "x");
        w.runToEnd({folder, file, folder, package});

        QCOMPARE(w.processed, (QStringList{QStringLiteral("a.txt"), QStringLiteral("Notes.RTFD")}));
        // One alert however many folders, after the run has hidden its progress.
        QCOMPARE(w.desktop.texts(QStringLiteral("stopAlert")),
                 QStringList{QString::fromUtf16(batchTexts::notAFileMessage)});
        QCOMPARE(w.desktop.texts(QStringLiteral("stopAlertExplanation")),
                 QStringList{QString::fromUtf16(batchTexts::notAFileExplanation)});
        QCOMPARE(w.desktop.events().last().kind, QStringLiteral("stopAlertExplanation"));
    }

    void onlyAFailureOnTheLastItemIsReported_data()
    {
        QTest::addColumn<bool>("missingLast");
        QTest::newRow("missing first") << false;
        QTest::newRow("missing last") << true;
    }
    void onlyAFailureOnTheLastItemIsReported()
    {
        QFETCH(bool, missingLast);
        World w;
        const QString file = w.env.writeFile(QStringLiteral("kept.txt"), "x");
        const QString missing = w.env.root() + QStringLiteral("/gone.txt");
        w.runToEnd(missingLast ? QStringList{file, missing} : QStringList{missing, file});

        QCOMPARE(w.processed, QStringList{QStringLiteral("kept.txt")});
        const QStringList errors = w.view.matching(QStringLiteral("error:"));
        if (missingLast) {
            // The report names the last file that could be read.
            QCOMPARE(errors, QStringList{QStringLiteral("error:An error occurred while launching "
                                                        "\"kept.txt\"   (Error code: -43)")});
        } else {
            QVERIFY(errors.isEmpty());
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
        QStringList paths;
        for (int i = 1; i <= 5; ++i)
            paths.append(w.env.writeFile(QStringLiteral("f%1").arg(i), "x"));
        w.onFile = [&w, quit](const FileRef& file) {
            if (file.name() == QStringLiteral("f2"))
                quit ? w.batch.requestQuit() : w.batch.requestCancel();
        };
        QSignalSpy farewell(&w.batch, &BatchRunner::farewellDue);
        QElapsedTimer clock;
        clock.start();
        w.runToEnd(paths);

        QCOMPARE(w.processed, (QStringList{QStringLiteral("f1"), QStringLiteral("f2")}));
        QCOMPARE(w.view.lines.contains(QStringLiteral("running:0")), true);
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

    void filesArrivingDuringARunAreHeldUntilItEnds()
    {
        World w;
        const QString a = w.env.writeFile(QStringLiteral("a"), "x");
        const QString b = w.env.writeFile(QStringLiteral("b"), "x");
        const QString c = w.env.writeFile(QStringLiteral("c"), "x");
        const QString d = w.env.writeFile(QStringLiteral("d"), "x");
        w.onFile = [&](const FileRef& file) {
            if (file.name() == QStringLiteral("a")) {
                w.batch.openDocuments({c});
                w.batch.queueDocuments({d});
                QCOMPARE(w.batch.pendingDocuments(), (QStringList{a, b}));
            }
        };
        QSignalSpy ended(&w.batch, &BatchRunner::runEnded);
        w.batch.openDocuments({a, b});
        QTRY_COMPARE_WITH_TIMEOUT(ended.size(), 2, 2000);
        QCOMPARE(w.processed, (QStringList{QStringLiteral("a"), QStringLiteral("b"),
                                           QStringLiteral("c"), QStringLiteral("d")}));
    }

    void arrivalsBeforeTheTimerFiresGiveOneRunOfTheLastList()
    {
        World w;
        const QString a = w.env.writeFile(QStringLiteral("a"), "x");
        const QString b = w.env.writeFile(QStringLiteral("b"), "x");
        QSignalSpy ended(&w.batch, &BatchRunner::runEnded);
        w.batch.openDocuments({a});
        w.batch.openDocuments({b});
        QVERIFY(w.processed.isEmpty()); // nothing runs inside the handler
        QVERIFY(ended.wait(2000));
        QTest::qWait(20);
        QCOMPARE(ended.size(), 1);
        QCOMPARE(w.processed, QStringList{QStringLiteral("b")});
    }
};

QTEST_GUILESS_MAIN(BatchRunnerTest)
#include "BatchRunnerTest.moc"
