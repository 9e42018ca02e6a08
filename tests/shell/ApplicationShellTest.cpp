#include "shell/ApplicationShell.h"
#include "prefs/PreferenceStore.h"
#include "shell/PreferencesWindow.h"
#include "support/IndexerStop.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class ApplicationShellTest : public QObject {
    Q_OBJECT

    using Origin = ApplicationShell::Origin;

    struct World {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore store;
        testing::FakeIndexer indexer;
        IndexerStop indexerStop;
        WordContext words{desktop, store, indexer, env.tempFolder(), &indexerStop};
        ApplicationShell shell{store, words};
        World() { shell.start(QRect(0, 0, 1440, 900)); }
        /// The files indexed, by name, in order.
        qsizetype processed() const { return indexer.calls().size(); }
        Status command(const char* code, Origin origin = Origin::MainWindow)
        {
            return shell.issueCommand(CommandId::fromChars(code), origin);
        }
        QStringList files(int count) const
        {
            QStringList paths;
            for (int i = 0; i < count; ++i) {
                paths.append(env.writeFile(QString(QChar(u'a' + i)), "x"));
            }
            return paths;
        }
        QString status()
        {
            const auto* label =
                shell.mainWindow().findChild<QLabel*>(QLatin1String(mainControls::StatusText));
            return label->text();
        }
    };

private slots:
    void commandsOfTheApplication()
    {
        World w;
        // The help menu ends with the store above the website, each opening its page.
        const QList<QAction*> menu = w.shell.mainWindow().helpMenu()->actions();
        QVERIFY(menu.size() >= 2);
        QCOMPARE(menu.at(menu.size() - 2)->text(), u"View in Software Centre..."_s);
        QCOMPARE(menu.constLast()->text(), u"View in Okaluna Website..."_s);
        menu.at(menu.size() - 2)->trigger();
        menu.constLast()->trigger();
        w.shell.mainWindow().actions().help->trigger();
        // The help menu's items are handled by the help menu only; the rest goes on.
        QCOMPARE(w.command("WEB1"), eventNotHandledErr);
        QCOMPARE(w.command("zzzz"), eventNotHandledErr);
        // No web site yet: the help and the website are the installed guide and its section
        // on the project.
        const QStringList opened = w.desktop.texts(u"openUrl"_s);
        QCOMPARE(opened.size(), 3);
        QCOMPARE(opened.at(0), u"appstream:com.okaluna.Tallyvox"_s);
        QVERIFY2(opened.at(1).startsWith(u"file:///"_s) &&
                     opened.at(1).endsWith(u"/share/help/C/tallyvox/index.html#project"_s),
                 qPrintable(opened.at(1)));
        QCOMPARE(opened.at(2) + u"#project"_s, opened.at(1));
        // With no software centre to take the store's address, the project's page.
        w.desktop.clear();
        w.desktop.refuseScheme(u"appstream"_s);
        menu.at(menu.size() - 2)->trigger();
        QCOMPARE(w.desktop.texts(u"openUrl"_s).size(), 2);
        QCOMPARE(w.desktop.texts(u"openUrl"_s).at(1), opened.at(1));

        // About shows the version and links to the project.
        w.shell.mainWindow().actions().about->trigger();
        QDialog* about = w.shell.mainWindow().aboutWindow();
        QVERIFY(about && about->isVisible());
        QCOMPARE(about->findChild<QLabel*>(u"version"_s)->text(),
                 QStringLiteral("Version " TALLYVOX_VERSION));
        w.desktop.clear();
        emit about->findChild<QLabel*>(u"projectLink"_s)->linkActivated(opened.at(1));
        QCOMPARE(w.desktop.texts(u"openUrl"_s), QStringList{opened.at(1)});
    }

    void openRunsTheChosenFilesAfterTheCommand()
    {
        World w;
        w.desktop.answerOpenPanel(w.files(3));
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.mainWindow().actions().open->trigger();
        QCOMPARE(w.processed(), 0);
        QCOMPARE(w.desktop.texts(u"openPanel"_s),
                 QStringList{u"Select one or more files to extract words from."_s});
        QVERIFY(ended.wait(2000));
        QCOMPARE(w.processed(), 3);

        // A cancelled panel leaves everything as it was.
        QCOMPARE(w.command("open"), noErr);
        QTest::qWait(20);
        QCOMPARE(ended.size(), 1);
    }

    void quitAndOkEndTheLoopButOnlyAfterTheRun()
    {
        World w;
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        QCOMPARE(w.command("ok  "), noErr);
        QCOMPARE(end.size(), 1);

        w.indexer.setDefaultDelay(5s);
        w.indexer.onStart = [&](const QString&) {
            if (w.processed() == 1) {
                // 'quit' is only flagged by the application, and the indexer ended at
                // once; the standard end quits once the run has seen the flag.
                QCOMPARE(w.command("quit"), noErr);
                QVERIFY(w.indexerStop.isStopped());
                QCOMPARE(end.size(), 1);
            }
        };
        QElapsedTimer clock;
        clock.start();
        w.shell.openDocuments(w.files(2));
        QTRY_COMPARE_WITH_TIMEOUT(end.size(), 2, 2000);
        QVERIFY(clock.elapsed() < 2000);
        QCOMPARE(w.processed(), 1);
        QCOMPARE(w.indexer.running(), 0);
    }

    // The stop button lets the file in hand finish and begins no other.
    void stopButtonEndsTheRunAfterTheFileInHand()
    {
        World w;
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        auto* stop =
            w.shell.mainWindow().findChild<QPushButton*>(QLatin1String(mainControls::StopButton));
        w.indexer.onStart = [&](const QString&) {
            if (w.processed() == 1) {
                stop->click();
            }
        };
        w.shell.openDocuments(w.files(3));
        QVERIFY(ended.wait(2000));
        QCOMPARE(w.processed(), 1);
    }

    void preferencesWindowComesFirstInItsChain()
    {
        World w;
        w.shell.mainWindow().showStatus(u"Bye."_s, StatusTarget::StatusText);
        w.shell.mainWindow().actions().preferences->trigger();
        PreferencesWindow* window = w.shell.preferencesWindow();
        QVERIFY(window && window->isVisible());
        QCOMPARE(w.status(), QString::fromUtf16(batchTexts::helpText));

        // An option is applied by the window and then ignored by the application.
        window->findChild<QCheckBox*>(QLatin1String(preferencesControls::QuitWhenDone))->click();
        QCOMPARE(w.store.GetQuitWhenDone(), true);

        // 'not!' and 'ok  ' close this window only: no cancel, no quit.
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        QCOMPARE(w.command("ok  ", Origin::PreferencesWindow), noErr);
        QVERIFY(!w.shell.preferencesWindow());
        QCOMPARE(end.size(), 0);
    }

    void errorWindowsOkQuits()
    {
        World w;
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.openDocuments({w.env.root() + u"/missing"_s});
        QVERIFY(ended.wait(2000));
        ErrorWindow* error = w.shell.mainWindow().errorWindow();
        QVERIFY(error && error->isVisible());
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        error->findChild<QPushButton*>(u"okButton"_s)->click();
        QCOMPARE(end.size(), 1);
    }

    void farewellSaysByeFadesAndEnds()
    {
        World w;
        w.store.writeBool(prefs::QuitWhenDone, true);
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        w.shell.openDocuments(w.files(1));
        QVERIFY(end.wait(3000));
        QCOMPARE(w.status(), u"Bye."_s);
        QVERIFY(!w.shell.mainWindow().isVisible());
    }
};

QTEST_MAIN(ApplicationShellTest)
#include "ApplicationShellTest.moc"
