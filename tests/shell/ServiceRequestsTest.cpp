#include "prefs/PreferenceStore.h"
#include "shell/ApplicationShell.h"
#include "shell/JobQueue.h"
#include "shell/QtDesktop.h"
#include "shell/ServiceActions.h"
#include "shell/ServiceBus.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/ProcessIndexer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>

using namespace tallyvox;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString serviceName = QString::fromLatin1(busIdentity::serviceName);

Pasteboard textPasteboard(const QByteArray& text)
{
    return {PasteboardItem{{u"text/plain;charset=utf-8"_s, text}}};
}

// Runs a program to its end and gives its standard output.
QString run(const QString& command, const QString& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(command, arguments.split(u' ', Qt::SkipEmptyParts));
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20000)) {
        return u"<timed out>"_s;
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class ServiceRequestsTest : public QObject {
    Q_OBJECT

private slots:
    // The real selections under Xvfb, read and written from outside with xclip.
    void selectionAndClipboard()
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY") ||
            QStandardPaths::findExecutable(u"xclip"_s).isEmpty()) {
            QSKIP("needs a display and xclip: run under tests/with-xvfb.sh");
        }
        testing::TestEnvironment env;
        run(u"xclip"_s, u"-i -selection primary"_s, "h\xc3\xa9llo \xf0\x9f\x98\x80");
        QCOMPARE(run(program, u"--console --service charCount --selection"_s),
                 u"Character count: 8\n"_s);

        // The spelled-out words stay on the clipboard until xclip has fetched them.
        QProcess spell;
        spell.start(program,
                    {u"--console"_s, u"--service"_s, u"spellOutNumber"_s, u"--text"_s, u"123"_s});
        QVERIFY(spell.waitForReadyRead(10000));
        QCOMPARE(run(u"xclip"_s, u"-o -selection clipboard"_s), u"one hundred twenty-three"_s);
        QVERIFY2(spell.waitForFinished(5000), "the hold should end once the text was fetched");
    }

    // A running instance performs what a second launch hands it, then quits when done.
    void runningInstancePerformsForwardedRequest()
    {
        if (!QDBusConnection::sessionBus().isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
        testing::TestEnvironment env;
        QVERIFY(PreferenceStore().writeBool(prefs::QuitWhenDone, true));
        QProcess first;
        first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        first.start(program, {});
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 10000);
        QProcess second;
        second.start(program, {u"--service"_s, u"TALLYVOX"_s, u"--stdin"_s});
        second.write("beta alpha beta");
        second.closeWriteChannel();
        QVERIFY(second.waitForFinished(10000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(first.waitForFinished(20000));
        QCOMPARE(first.exitCode(), 0);
        QFile list(env.dataHome() + u"/Okaluna Software/Tallyvox/TallyvoxData.txt.txt"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "alpha (1)\nbeta (2)\n"_ba);
    }

    // ActivateAction from another connection reaches the dispatcher with the pasteboard
    // it carried, or with the selection when it carried none; it is answered first and
    // performed from the event loop.
    void activateAction()
    {
        if (!QDBusConnection::sessionBus().isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        desktop.setSelection(SelectionSource::Primary, textPasteboard("primary"));
        desktop.setSelection(SelectionSource::Clipboard, textPasteboard("clipboard"));
        PreferenceStore preferences;
        testing::FakeIndexer indexer;
        const WordContext words{desktop, preferences, indexer, env.tempFolder()};
        JobQueue jobs;
        ServiceActions actions({words, {}}, jobs);
        ApplicationBusObject object;
        QDBusConnection bus = QDBusConnection::sessionBus();
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);
        QDBusConnection caller =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"caller"_s);
        const auto call = [&](const QVariantList& parameter, const QString& selection) {
            QDBusMessage message = QDBusMessage::createMethodCall(
                serviceName, QString::fromLatin1(busIdentity::objectPath),
                QString::fromLatin1(busIdentity::interfaceName), u"ActivateAction"_s);
            QVariantMap platformData;
            if (!selection.isEmpty()) {
                platformData.insert(QString::fromLatin1(selectionDataKey), selection);
            }
            message << u"charCount"_s << parameter << platformData;
            desktop.clear();
            // Asynchronously: a blocking call to ourselves would stall.
            QDBusPendingCallWatcher watcher(caller.asyncCall(message));
            QSignalSpy done(&watcher, &QDBusPendingCallWatcher::finished);
            return done.wait(5000) ? watcher.error().name() : u"<timed out>"_s;
        };
        // Before the handler is attached the call is refused, not left unanswered.
        QCOMPARE(call({}, {}), u"org.freedesktop.DBus.Error.NotSupported"_s);
        object.setActionHandler(&actions);

        const Pasteboard twoItems{
            {{u"image/png"_s, "\x89PNG"}},
            {{u"text/plain"_s, "generic"}, {u"text/plain;charset=utf-8"_s, "first"}},
            textPasteboard("second").first()};
        QCOMPARE(call({pasteboardToBus(twoItems)}, {}), QString());
        QTRY_COMPARE(desktop.alerts(), QStringList{u"Character count: 5"_s});
        QCOMPARE(call({}, {}), QString());
        QTRY_COMPARE(desktop.alerts(), QStringList{u"Character count: 7"_s});
        QCOMPARE(call({}, u"clipboard"_s), QString());
        QTRY_COMPARE(desktop.alerts(), QStringList{u"Character count: 9"_s});

        QDBusConnection::disconnectFromBus(u"caller"_s);
        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    // Fifty requests sent at once to a running window, idle or in the middle of a batch,
    // give fifty results, each once, whatever order the bus delivers them in (it need not
    // be the order sent); the batch is done too. The window's own desktop shows each result as its
    // modal alert, which the test reads and dismisses as the user would.
    void fiftyRequestsGiveFiftyResults_data()
    {
        QTest::addColumn<bool>("midBatch");
        QTest::addColumn<bool>("realIndexer");
        QTest::newRow("idle") << false << false;
        QTest::newRow("mid-batch") << true << false;
        QTest::newRow("idle, the indexer executables") << false << true;
        QTest::newRow("mid-batch, the indexer executables") << true << true;
    }
    void fiftyRequestsGiveFiftyResults()
    {
        QFETCH(bool, midBatch);
        QFETCH(bool, realIndexer);
        if (!QDBusConnection::sessionBus().isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
        testing::TestEnvironment env;
        QVERIFY(QDir().mkpath(env.tempFolder()));
        // No application of this machine is handed the batch's lists.
        const QByteArray dataDirs = qgetenv("XDG_DATA_DIRS");
        qputenv("XDG_DATA_DIRS", env.root().toUtf8());
        const auto restore = qScopeGuard([&dataDirs] { qputenv("XDG_DATA_DIRS", dataDirs); });
        QtDesktop desktop;
        PreferenceStore preferences;
        testing::FakeIndexer fake;
        ProcessIndexer executables(desktop,
                                   {QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR), env.tempFolder()});
        Indexer& indexer = realIndexer ? static_cast<Indexer&>(executables) : fake;
        const WordContext words{desktop, preferences, indexer, env.tempFolder()};
        ApplicationShell shell(preferences, words);
        desktop.setWindow(&shell.mainWindow());
        shell.start(QRect(0, 0, 1280, 800));
        ServiceActions actions({words, {}}, shell.jobs());
        ApplicationBusObject object;
        object.setActionHandler(&actions);
        QDBusConnection bus = QDBusConnection::sessionBus();
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);
        QDBusConnection caller =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"caller"_s);

        // The user: reads each alert that shows and presses its OK.
        QStringList shown;
        QTimer user;
        connect(&user, &QTimer::timeout, &user, [&shown] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box && box->isVisible()) {
                shown.append(box->text());
                box->buttons().constFirst()->click();
            }
        });
        user.start(5);

        QStringList files;
        if (midBatch) {
            for (const QString& name : {u"f1"_s, u"f2"_s, u"f3"_s}) {
                // Large enough that the executables take a while over each.
                files.append(env.writeFile(name, QByteArray("word ").repeated(400000)));
                fake.script(files.constLast(),
                            {WordTable{{name, 1}}, IndexerEnding::Complete, 150ms, {}});
            }
            shell.batch().openDocuments(files);
            QTRY_VERIFY(shell.batch().isRunning());
        }
        constexpr int requests = 50;
        QList<QDBusPendingCall> calls;
        QStringList expected;
        for (int i = 1; i <= requests; ++i) {
            QDBusMessage message = QDBusMessage::createMethodCall(
                serviceName, QString::fromLatin1(busIdentity::objectPath),
                QString::fromLatin1(busIdentity::interfaceName), u"ActivateAction"_s);
            const QByteArray text = QByteArray("w ").repeated(i);
            message << u"wordCount"_s << QVariantList{pasteboardToBus(textPasteboard(text))}
                    << QVariantMap();
            calls.append(caller.asyncCall(message));
            expected.append(u"Word count: %1"_s.arg(i));
        }
        // Answered from the event loop, so never waited for here.
        QTRY_VERIFY_WITH_TIMEOUT(
            std::all_of(calls.cbegin(), calls.cend(),
                        [](const QDBusPendingCall& c) { return c.isFinished(); }),
            10000);
        for (const QDBusPendingCall& call : std::as_const(calls)) {
            QVERIFY2(!call.isError(), qPrintable(call.error().message()));
        }
        QTRY_COMPARE_WITH_TIMEOUT(shown.size(), requests, 30000);
        const auto byCount = [](const QString& a, const QString& b) {
            return a.section(u' ', -1).toInt() < b.section(u' ', -1).toInt();
        };
        std::sort(shown.begin(), shown.end(), byCount);
        QCOMPARE(shown.join(u", "_s), expected.join(u", "_s));
        QTRY_VERIFY(!shell.jobs().isBusy());
        QVERIFY(!shell.batch().isRunning());
        for (const QString& file : std::as_const(files)) {
            const QString list = env.dataHome() + u"/Okaluna Software/Tallyvox/"_s +
                                 file.section(u'/', -1) + u".txt"_s;
            QVERIFY2(QFileInfo(list).size() > 0, qPrintable(list));
        }

        QDBusConnection::disconnectFromBus(u"caller"_s);
        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    void installIntegration()
    {
        testing::TestEnvironment env;
        QCOMPARE(run(program, u"--install-integration"_s).count(u'\n'), 9);
        const QString script = env.dataHome() + u"/nautilus/scripts/Tallyvox Word Count"_s;
        for (const QString& path :
             {script, env.dataHome() + u"/kio/servicemenus/tallyvox-servicemenu.desktop"_s,
              env.dataHome() + u"/nemo/actions/tallyvox-decodebase64.nemo_action"_s}) {
            QVERIFY2(QFileInfo(path).isExecutable(), qPrintable(path));
        }

        // The script hands the selected files, folders left out, to tallyvox on the PATH.
        env.writeFile(u"bin/tallyvox"_s, "#!/bin/sh\nprintf '[%s]' \"$@\"\n");
        QFile::setPermissions(env.root() + u"/bin/tallyvox"_s, QFile::ReadOwner | QFile::ExeOwner);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, env.root() + u"/bin:/usr/bin:/bin"_s);
        environment.insert(u"NAUTILUS_SCRIPT_SELECTED_FILE_PATHS"_s,
                           u"/tmp/a b.txt\n"_s + env.root() + u"\n/x\n"_s);
        process.setProcessEnvironment(environment);
        process.start(script, {});
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()),
                 u"[--service][wordCount][--][/tmp/a b.txt][/x]"_s);
    }
};

QTEST_MAIN(ServiceRequestsTest)
#include "ServiceRequestsTest.moc"
