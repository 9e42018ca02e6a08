#include "shell/ApplicationShell.h"
#include "prefs/PreferenceStore.h"
#include "prefs/PreferencesWindow.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

class ApplicationShellTest : public QObject {
    Q_OBJECT

    using Origin = ApplicationShell::Origin;

    struct World {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore store;
        QStringList processed;
        std::function<void()> onFile;
        ApplicationShell shell{desktop, store, [this](const FileRef& file) {
                                   processed.append(file.name());
                                   if (onFile)
                                       onFile();
                               }};
        World() { shell.start(QRect(0, 0, 1440, 900)); }
        Status command(const char* code, Origin origin = Origin::MainWindow)
        {
            return shell.issueCommand(CommandId::fromChars(code), origin);
        }
        QStringList files(int count) const
        {
            QStringList paths;
            for (int i = 0; i < count; ++i)
                paths.append(env.writeFile(QString(QChar(u'a' + i)), "x"));
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
    void commandsOfTheApplication_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<Origin>("origin");
        QTest::addColumn<Status>("status");
        QTest::addColumn<QString>("url");
        const auto row = [](const char* name, const char* code, Origin origin, Status status,
                            const char* url) {
            QTest::newRow(name) << QByteArray(code) << origin << status << QString::fromLatin1(url);
        };
        row("HELP", "HELP", Origin::MainWindow, noErr, "https://okaluna.example/tallyvox/help");
        row("WEB1", "WEB1", Origin::HelpMenu, noErr, "https://okaluna.example/tallyvox");
        row("MAS1", "MAS1", Origin::HelpMenu, noErr, "appstream:com.okaluna.Tallyvox");
        // The help menu's handler knows its two items only; the rest goes on.
        row("HELP from help menu", "HELP", Origin::HelpMenu, noErr,
            "https://okaluna.example/tallyvox/help");
        row("WEB1 outside help menu", "WEB1", Origin::MainWindow, eventNotHandledErr, "");
        row("unknown", "zzzz", Origin::MainWindow, eventNotHandledErr, "");
    }
    void commandsOfTheApplication()
    {
        QFETCH(QByteArray, code);
        QFETCH(Origin, origin);
        QFETCH(Status, status);
        QFETCH(QString, url);
        World w;
        QCOMPARE(w.command(code.constData(), origin), status);
        QCOMPARE(w.desktop.texts(u"openUrl"_s), url.isEmpty() ? QStringList() : QStringList{url});
    }

    void helpMenuHasTheStoreAboveTheWebsite()
    {
        World w;
        const QList<QAction*> actions = w.shell.mainWindow().helpMenu()->actions();
        QVERIFY(actions.size() >= 2);
        QCOMPARE(actions.at(actions.size() - 2)->text(), u"View in Mac App Store..."_s);
        QCOMPARE(actions.constLast()->text(), u"View in Okaluna Website..."_s);
        actions.constLast()->trigger();
        QCOMPARE(w.desktop.texts(u"openUrl"_s), QStringList{u"https://okaluna.example/tallyvox"_s});
    }

    void openRunsTheChosenFilesAfterTheCommand()
    {
        World w;
        w.desktop.answerOpenPanel(w.files(3));
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        QCOMPARE(w.command("open"), noErr);
        QVERIFY(w.processed.isEmpty());
        QCOMPARE(w.desktop.texts(u"openPanel"_s),
                 QStringList{u"Select one or more files to extract words from."_s});
        QVERIFY(ended.wait(2000));
        QCOMPARE(w.processed.size(), 3);

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

        w.onFile = [&] {
            if (w.processed.size() == 1) {
                // 'quit' is only flagged by the application; the standard end quits.
                QCOMPARE(w.command("quit"), noErr);
                QCOMPARE(end.size(), 1);
            }
        };
        w.shell.openDocuments(w.files(2));
        QTRY_COMPARE_WITH_TIMEOUT(end.size(), 2, 2000);
        QCOMPARE(w.processed, QStringList{u"a"_s});
    }

    void stopButtonCancelsTheRun()
    {
        World w;
        auto* stop =
            w.shell.mainWindow().findChild<QPushButton*>(QLatin1String(mainControls::StopButton));
        w.onFile = [&] {
            QVERIFY(stop->isVisible() && stop->isEnabled());
            stop->click();
        };
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.openDocuments(w.files(3));
        QVERIFY(ended.wait(2000));
        QCOMPARE(w.processed.size(), 1);
        QVERIFY(!stop->isVisible());
    }

    void preferencesWindowComesFirstInItsChain()
    {
        World w;
        w.shell.mainWindow().showStatus(u"Bye."_s, StatusTarget::StatusText);
        QCOMPARE(w.command("pref"), noErr);
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

        // The next 'pref' makes a new window with what is stored now.
        w.store.writeNumber(prefs::LineStyle, 4);
        QCOMPARE(w.command("pref"), noErr);
        window = w.shell.preferencesWindow();
        QVERIFY(window);
        QCOMPARE(window->findChild<QComboBox*>(QLatin1String(preferencesControls::LineStyle))
                     ->currentIndex(),
                 3);
        window->close();
        QVERIFY(!w.shell.preferencesWindow());
    }

    void errorWindowsOkQuits()
    {
        World w;
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.openDocuments({w.env.root() + u"/missing"_s});
        QVERIFY(ended.wait(2000));
        ErrorWindow* error = w.shell.mainWindow().errorWindow();
        QVERIFY(error && error->isVisible());
        // No file was read, so the message names none.
        QCOMPARE(error->text(), u"An error occurred while launching \"\"   (Error code: -43)"_s);
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
