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

namespace {

const QRect screen(0, 0, 1440, 900);

QString statusText(MainWindow& window)
{
    return window.findChild<QLabel*>(QLatin1String(mainControls::StatusText))->text();
}

} // namespace

class ApplicationShellTest : public QObject {
    Q_OBJECT

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
        World() { shell.start(screen); }
        Status command(const char* code,
                       ApplicationShell::Origin origin = ApplicationShell::Origin::MainWindow)
        {
            return shell.issueCommand(CommandId::fromChars(code), origin);
        }
    };

private slots:
    void commandsOfTheApplication_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<int>("origin");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("urls");
        const int main = int(ApplicationShell::Origin::MainWindow);
        const int help = int(ApplicationShell::Origin::HelpMenu);
        QTest::newRow("HELP") << QByteArray("HELP") << main << int(noErr)
                              << QStringList{
                                     QStringLiteral("https://okaluna.example/tallyvox/help")};
        QTest::newRow("WEB1") << QByteArray("WEB1") << help << int(noErr)
                              << QStringList{QStringLiteral("https://okaluna.example/tallyvox")};
        QTest::newRow("MAS1") << QByteArray("MAS1") << help << int(noErr)
                              << QStringList{QStringLiteral("appstream:com.okaluna.Tallyvox")};
        // The help menu's handler knows its two items only; the rest goes on.
        QTest::newRow("HELP from help menu")
            << QByteArray("HELP") << help << int(noErr)
            << QStringList{QStringLiteral("https://okaluna.example/tallyvox/help")};
        QTest::newRow("WEB1 outside help menu")
            << QByteArray("WEB1") << main << int(eventNotHandledErr) << QStringList{};
        QTest::newRow("unknown") << QByteArray("zzzz") << main << int(eventNotHandledErr)
                                 << QStringList{};
        QTest::newRow("option command")
            << QByteArray("SORT") << main << int(eventNotHandledErr) << QStringList{};
    }
    void commandsOfTheApplication()
    {
        QFETCH(QByteArray, code);
        QFETCH(int, origin);
        QFETCH(int, status);
        QFETCH(QStringList, urls);
        World w;
        QCOMPARE(int(w.command(code.constData(), ApplicationShell::Origin(origin))), status);
        QCOMPARE(w.desktop.texts(QStringLiteral("openUrl")), urls);
    }

    void helpMenuHasTheStoreAboveTheWebsite()
    {
        World w;
        const QList<QAction*> actions = w.shell.mainWindow().helpMenu()->actions();
        QStringList texts;
        for (QAction* action : actions)
            texts.append(action->text());
        QCOMPARE(texts.mid(texts.size() - 2),
                 (QStringList{QStringLiteral("View in Mac App Store..."),
                              QStringLiteral("View in Okaluna Website...")}));
        actions.constLast()->trigger();
        QCOMPARE(w.desktop.texts(QStringLiteral("openUrl")),
                 QStringList{QStringLiteral("https://okaluna.example/tallyvox")});
    }

    void openRunsTheChosenFilesAfterTheCommand()
    {
        World w;
        const QStringList files{w.env.writeFile(QStringLiteral("a"), "x"),
                                w.env.writeFile(QStringLiteral("b"), "x"),
                                w.env.writeFile(QStringLiteral("c"), "x")};
        w.desktop.answerOpenPanel(files);
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        QCOMPARE(w.command("open"), noErr);
        QVERIFY(w.processed.isEmpty());
        QCOMPARE(w.desktop.texts(QStringLiteral("openPanel")),
                 QStringList{QStringLiteral("Select one or more files to extract words from.")});
        QVERIFY(ended.wait(2000));
        QCOMPARE(ended.size(), 1);
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

        const QStringList files{w.env.writeFile(QStringLiteral("a"), "x"),
                                w.env.writeFile(QStringLiteral("b"), "x")};
        w.onFile = [&] {
            if (w.processed.size() == 1) {
                // 'quit' is only flagged by the application; the standard end quits.
                QCOMPARE(w.command("quit"), noErr);
                QCOMPARE(end.size(), 1);
            }
        };
        w.shell.openDocuments(files);
        QTRY_COMPARE_WITH_TIMEOUT(end.size(), 2, 2000);
        QCOMPARE(w.processed, QStringList{QStringLiteral("a")});
    }

    void stopButtonCancelsTheRun()
    {
        World w;
        auto* stop =
            w.shell.mainWindow().findChild<QPushButton*>(QLatin1String(mainControls::StopButton));
        QStringList files;
        for (const char* name : {"a", "b", "c"})
            files.append(w.env.writeFile(QString::fromLatin1(name), "x"));
        w.onFile = [&] {
            QVERIFY(stop->isVisible() && stop->isEnabled());
            stop->click();
        };
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.openDocuments(files);
        QVERIFY(ended.wait(2000));
        QCOMPARE(w.processed.size(), 1);
        QVERIFY(!stop->isVisible());
    }

    void preferencesWindowComesFirstInItsChain()
    {
        World w;
        w.shell.mainWindow().showStatus(QStringLiteral("Bye."), StatusTarget::StatusText);
        QCOMPARE(w.command("pref"), noErr);
        PreferencesWindow* window = w.shell.preferencesWindow();
        QVERIFY(window && window->isVisible());
        QCOMPARE(statusText(w.shell.mainWindow()), QString::fromUtf16(batchTexts::helpText));

        // An option is applied by the window and then ignored by the application.
        auto* quitWhenDone =
            window->findChild<QCheckBox*>(QLatin1String(preferencesControls::QuitWhenDone));
        quitWhenDone->click();
        QCOMPARE(w.store.GetQuitWhenDone(), true);

        // 'not!' and 'ok  ' close this window only: no cancel, no quit.
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        QCOMPARE(w.command("ok  ", ApplicationShell::Origin::PreferencesWindow), noErr);
        QVERIFY(!w.shell.preferencesWindow());
        QCOMPARE(end.size(), 0);

        // The next 'pref' makes a new window with what is stored now.
        w.store.writeNumber(prefs::LineStyle, 4);
        QCOMPARE(w.command("pref"), noErr);
        QVERIFY(w.shell.preferencesWindow() && w.shell.preferencesWindow() != window);
        QCOMPARE(w.shell.preferencesWindow()
                     ->findChild<QComboBox*>(QLatin1String(preferencesControls::LineStyle))
                     ->currentIndex(),
                 3);
        w.shell.preferencesWindow()->close();
        QVERIFY(!w.shell.preferencesWindow());
    }

    void errorWindowsOkQuits()
    {
        World w;
        QSignalSpy ended(&w.shell.batch(), &BatchRunner::runEnded);
        w.shell.openDocuments({w.env.root() + QStringLiteral("/missing")});
        QVERIFY(ended.wait(2000));
        ErrorWindow* error = w.shell.mainWindow().errorWindow();
        QVERIFY(error && error->isVisible());
        QCOMPARE(error->text(),
                 QStringLiteral("An error occurred while launching \"\"   (Error code: -43)"));
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        error->findChild<QPushButton*>(QStringLiteral("okButton"))->click();
        QCOMPARE(end.size(), 1);
    }

    void farewellSaysByeFadesAndEnds()
    {
        World w;
        w.store.writeBool(prefs::QuitWhenDone, true);
        QSignalSpy end(&w.shell, &ApplicationShell::eventLoopEndRequested);
        w.shell.openDocuments({w.env.writeFile(QStringLiteral("a"), "x")});
        QVERIFY(end.wait(3000));
        QCOMPARE(statusText(w.shell.mainWindow()), QStringLiteral("Bye."));
        QVERIFY(!w.shell.mainWindow().isVisible());
    }
};

QTEST_MAIN(ApplicationShellTest)
#include "ApplicationShellTest.moc"
