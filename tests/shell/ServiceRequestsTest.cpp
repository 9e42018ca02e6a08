#include "prefs/PreferenceStore.h"
#include "shell/JobQueue.h"
#include "shell/ServiceActions.h"
#include "shell/ServiceBus.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

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

QTEST_GUILESS_MAIN(ServiceRequestsTest)
#include "ServiceRequestsTest.moc"
