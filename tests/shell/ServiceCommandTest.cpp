#include "prefs/PreferenceStore.h"
#include "shell/CommandLine.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

using namespace tallyvox;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");

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

class ServiceCommandTest : public QObject {
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
        QTest::newRow("= forms") << args("--service=wordCount --text=a=b") << QString()
                                 << QStringLiteral("wordCount") << ServiceSource::Text
                                 << QStringLiteral("a=b");
        QTest::newRow("files") << args("--console --service tallyvox -- a b") << QString()
                               << QStringLiteral("tallyvox") << ServiceSource::Files << QString();
        QTest::newRow("clipboard") << args("--clipboard --service x") << QString()
                                   << QStringLiteral("x") << ServiceSource::Clipboard << QString();
        const QString oneSource = QStringLiteral(
            "--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin");
        QTest::newRow("no source")
            << args("--service x") << oneSource << QString() << ServiceSource::None << QString();
        QTest::newRow("two sources") << args("--service x --stdin a") << oneSource << QString()
                                     << ServiceSource::None << QString();
        QTest::newRow("source without service")
            << args("--selection")
            << QStringLiteral(
                   "--text, --selection, --clipboard and --stdin work with --service only")
            << QString() << ServiceSource::None << QString();
        QTest::newRow("no name") << args("--service")
                                 << QStringLiteral("--service needs a service name") << QString()
                                 << ServiceSource::None << QString();
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
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(QStringLiteral("com.okaluna.Tallyvox")),
                                 10000);
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

QTEST_GUILESS_MAIN(ServiceCommandTest)
#include "ServiceCommandTest.moc"
