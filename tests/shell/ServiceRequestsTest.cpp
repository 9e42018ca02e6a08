#include "shell/ServiceRequests.h"
#include "prefs/PreferenceStore.h"
#include "shell/ServiceBus.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace tallyvox;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString serviceName = QString::fromLatin1(busIdentity::serviceName);

Pasteboard textPasteboard(const QByteArray& text)
{
    return {PasteboardItem{{QStringLiteral("text/plain;charset=utf-8"), text}}};
}

// Runs a program to its end and gives its standard output.
QString run(const QString& command, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(command, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20000))
        return QStringLiteral("<timed out>");
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class ServiceRequestsTest : public QObject {
    Q_OBJECT

private slots:
    void parse_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error");
        QTest::addColumn<QString>("name");
        QTest::addColumn<ServiceSource>("source");
        QTest::addColumn<QString>("text");

        const auto args = [](const char* line) {
            return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        QTest::newRow("text") << args("--service charCount --text -5") << QString()
                              << QStringLiteral("charCount") << ServiceSource::Text
                              << QStringLiteral("-5");
        const QString oneSource = QStringLiteral(
            "--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin");
        QTest::newRow("files after --")
            << args("--console --service=tallyvox -- --a b") << QString()
            << QStringLiteral("tallyvox") << ServiceSource::Files << QString();
        QTest::newRow("two sources") << args("--service x --stdin a") << oneSource << QString()
                                     << ServiceSource::None << QString();
        QTest::newRow("no source")
            << args("--service x") << oneSource << QString() << ServiceSource::None << QString();
        QTest::newRow("source without service")
            << args("--selection")
            << QStringLiteral(
                   "--text, --selection, --clipboard and --stdin work with --service only")
            << QString() << ServiceSource::None << QString();
    }
    void parse()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);
        QFETCH(QString, name);
        QFETCH(ServiceSource, source);
        QFETCH(QString, text);
        const CommandLine line = parseCommandLine(arguments, QStringLiteral("/w"));
        QCOMPARE(line.error, error);
        QCOMPARE(line.serviceName, name);
        QCOMPARE(line.serviceSource, source);
        QCOMPARE(line.serviceText, text);
    }

    // The real selections under Xvfb, read and written from outside with xclip.
    void selectionAndClipboard()
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY") ||
            QStandardPaths::findExecutable(QStringLiteral("xclip")).isEmpty())
            QSKIP("needs a display and xclip: run under xvfb-run");
        testing::TestEnvironment env;
        run(QStringLiteral("xclip"),
            {QStringLiteral("-i"), QStringLiteral("-selection"), QStringLiteral("primary")},
            "h\xc3\xa9llo \xf0\x9f\x98\x80");
        QCOMPARE(run(program, {QStringLiteral("--console"), QStringLiteral("--service"),
                               QStringLiteral("charCount"), QStringLiteral("--selection")}),
                 QStringLiteral("Character count: 8\n"));

        // The spelled-out words stay on the clipboard until xclip has fetched them.
        QProcess spell;
        spell.start(program, {QStringLiteral("--console"), QStringLiteral("--service"),
                              QStringLiteral("spellOutNumber"), QStringLiteral("--text"),
                              QStringLiteral("123")});
        QVERIFY(spell.waitForReadyRead(10000));
        QElapsedTimer held;
        held.start();
        QCOMPARE(run(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                               QStringLiteral("clipboard")}),
                 QStringLiteral("one hundred twenty-three"));
        QVERIFY(spell.waitForFinished(5000));
        QVERIFY2(held.elapsed() < 5000, "the hold should end once the text was fetched");
    }

    // A running instance performs what a second launch hands it, then quits when done.
    void runningInstancePerformsForwardedRequest()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
        testing::TestEnvironment env;
        QVERIFY(PreferenceStore().writeBool(prefs::QuitWhenDone, true));
        QProcess first;
        first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        first.start(program, {});
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 10000);
        QProcess second;
        second.start(program, {QStringLiteral("--service"), QStringLiteral("TALLYVOX"),
                               QStringLiteral("--stdin")});
        second.write("beta alpha beta");
        second.closeWriteChannel();
        QVERIFY(second.waitForFinished(10000));
        QCOMPARE(second.exitCode(), 0);
        QVERIFY(first.waitForFinished(20000));
        QCOMPARE(first.exitCode(), 0);
        QFile list(env.dataHome() +
                   QStringLiteral("/Okaluna Software/Tallyvox/TallyvoxData.txt.txt"));
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), QByteArray("alpha (1)\nbeta (2)\n"));
    }

    // ActivateAction from another connection reaches the dispatcher with the pasteboard
    // it carried, or with the selection when it carried none.
    void activateAction_data()
    {
        QTest::addColumn<QVariantList>("parameter");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<QStringList>("alerts");

        const Pasteboard twoItems{{{QStringLiteral("image/png"), "\x89PNG"}},
                                  {{QStringLiteral("text/plain"), "generic"},
                                   {QStringLiteral("text/plain;charset=utf-8"), "first"}},
                                  textPasteboard("second").first()};
        const QStringList five{QStringLiteral("Character count: 5")};
        QTest::newRow("items in their order")
            << QVariantList{pasteboardToBus(twoItems)} << QString() << five;
        QTest::newRow("wrapped in a variant")
            << QVariantList{QVariant::fromValue(QDBusVariant(pasteboardToBus(twoItems)))}
            << QString() << five;
        QTest::newRow("no parameter: the primary selection")
            << QVariantList() << QString() << QStringList{QStringLiteral("Character count: 7")};
        QTest::newRow("no parameter: the clipboard when named")
            << QVariantList() << QStringLiteral("clipboard")
            << QStringList{QStringLiteral("Character count: 9")};
        QTest::newRow("a parameter that is no pasteboard")
            << QVariantList{QVariant(QStringLiteral("text"))} << QString() << QStringList();
    }
    void activateAction()
    {
        QFETCH(QVariantList, parameter);
        QFETCH(QString, selection);
        QFETCH(QStringList, alerts);
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        desktop.setSelection(SelectionSource::Primary, textPasteboard("primary"));
        desktop.setSelection(SelectionSource::Clipboard, textPasteboard("clipboard"));
        PreferenceStore preferences;
        const WordContext words = serviceWordContext(desktop, preferences, {}, env.tempFolder());
        ServiceActions actions({words, {}});
        ApplicationBusObject object;
        object.setActionHandler(&actions);
        QDBusConnection bus = QDBusConnection::sessionBus();
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);

        QDBusConnection caller =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("caller"));
        QDBusMessage call = QDBusMessage::createMethodCall(
            serviceName, QString::fromLatin1(busIdentity::objectPath),
            QString::fromLatin1(busIdentity::interfaceName), QStringLiteral("ActivateAction"));
        QVariantMap platformData;
        if (!selection.isEmpty())
            platformData.insert(QString::fromLatin1(selectionDataKey), selection);
        call << QStringLiteral("charCount") << parameter << platformData;
        QDBusPendingCallWatcher watcher(caller.asyncCall(call));
        QSignalSpy done(&watcher, &QDBusPendingCallWatcher::finished);
        QVERIFY(done.wait(5000));
        QVERIFY(!watcher.isError());
        // Answered first, performed from the event loop.
        QTRY_VERIFY(!desktop.texts(QStringLiteral("raise")).isEmpty());
        QCOMPARE(desktop.alerts(), alerts);

        QDBusConnection::disconnectFromBus(QStringLiteral("caller"));
        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    void installIntegration()
    {
        testing::TestEnvironment env;
        QCOMPARE(run(program, {QStringLiteral("--install-integration")}).count(u'\n'), 9);
        const QString script =
            env.dataHome() + QStringLiteral("/nautilus/scripts/Tallyvox Word Count");
        for (const QString& path :
             {script,
              env.dataHome() + QStringLiteral("/kio/servicemenus/tallyvox-servicemenu.desktop"),
              env.dataHome() + QStringLiteral("/nemo/actions/tallyvox-decodebase64.nemo_action")})
            QVERIFY2(QFileInfo(path).isExecutable(), qPrintable(path));

        // The script hands the selected files, folders left out, to tallyvox on the PATH.
        env.writeFile(QStringLiteral("bin/tallyvox"), "#!/bin/sh\nprintf '[%s]' \"$@\"\n");
        QFile::setPermissions(env.root() + QStringLiteral("/bin/tallyvox"),
                              QFile::ReadOwner | QFile::ExeOwner);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PATH"),
                           env.root() + QStringLiteral("/bin:/usr/bin:/bin"));
        environment.insert(QStringLiteral("NAUTILUS_SCRIPT_SELECTED_FILE_PATHS"),
                           QStringLiteral("/tmp/a b.txt\n") + env.root() +
                               QStringLiteral("\n/x\n"));
        process.setProcessEnvironment(environment);
        process.start(script, {});
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()),
                 QStringLiteral("[--service][wordCount][--][/tmp/a b.txt][/x]"));
    }
};

QTEST_GUILESS_MAIN(ServiceRequestsTest)
#include "ServiceRequestsTest.moc"
