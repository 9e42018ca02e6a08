#include "tests/common/TestEnvironment.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString busName = u"com.okaluna.Tallyvox"_s;

// Runs a program to its end and gives its standard output.
QString run(const QString& command, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    // wl-copy leaves a server behind, which must not hold our pipes.
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(command, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(20000)) {
        process.kill();
        return u"<timed out>"_s;
    }
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString clipboard()
{
    return run(u"wl-paste"_s, {u"--no-newline"_s});
}

} // namespace

/// The services in a Wayland session, where a process without a focused window gets no
/// selection from Qt: the real program under a headless sway, with selections set and
/// read back by wl-clipboard.
class WaylandSessionTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsSet("TALLYVOX_NO_WAYLAND")) {
            QSKIP(qPrintable(u"no Wayland compositor: "_s +
                             qEnvironmentVariable("TALLYVOX_NO_WAYLAND")));
        }
        if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
            QSKIP("no Wayland session: run under tests/with-sway.sh");
        }
        for (const char* tool : {"wl-copy", "wl-paste"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
                QSKIP("wl-clipboard is needed");
            }
        }
        // Only the private world's applications, so no real editor is started.
        qputenv("XDG_DATA_DIRS", "/nonexistent");
        qputenv("XDG_CONFIG_DIRS", "/nonexistent");
    }

    void consoleServices_data()
    {
        QTest::addColumn<QStringList>("setSelection");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("clipboardAfter");

        QTest::newRow("primary selection")
            << QStringList{u"--primary"_s} << "h\xc3\xa9llo \xf0\x9f\x98\x80"_ba
            << u"charCount --selection"_s << u"Character count: 8"_s << QString();
        QTest::newRow("clipboard") << QStringList() << "one two three"_ba
                                   << u"wordCount --clipboard"_s << u"Word count: 3"_s << QString();
        // The notes' words: the (2), cat, and, hat.
        QTest::newRow("copied file")
            << QStringList{u"--type"_s, u"text/uri-list"_s} << "@NOTES@"_ba
            << u"charCount --clipboard"_s << u"Content character count: 15"_s << QString();
        QTest::newRow("spelled out onto the clipboard")
            << QStringList() << "unchanged"_ba << u"spellOutNumber --text 123"_s
            << u"The following \"spell out\" has been put on the clipboard: one hundred "
               u"twenty-three"_s
            << u"one hundred twenty-three"_s;
    }
    void consoleServices()
    {
        QFETCH(QStringList, setSelection);
        QFETCH(QByteArray, content);
        QFETCH(QString, arguments);
        QFETCH(QString, output);
        QFETCH(QString, clipboardAfter);
        testing::TestEnvironment env;
        const QString notes = env.writeFile(u"notes.txt"_s, "the cat and the hat\n");
        content.replace("@NOTES@", QUrl::fromLocalFile(notes).toEncoded());
        run(u"wl-copy"_s, setSelection, content);

        QElapsedTimer clock;
        clock.start();
        const QString printed =
            run(program, u"--console --service "_s.append(arguments).split(u' '));
        QCOMPARE(printed, output + u'\n');
        if (!clipboardAfter.isEmpty()) {
            QCOMPARE(clipboard(), clipboardAfter);
            // wl-copy keeps the text: no waiting for somebody to fetch it.
            QVERIFY(clock.elapsed() < 5000);
        }
    }

    // A running instance with no focused window reads the selection for a request that
    // carries none (a desktop action over the bus) and writes the clipboard; a launcher
    // started from a shortcut reads the selection itself.
    void runningInstance()
    {
        testing::TestEnvironment env;
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
        QProcess instance;
        instance.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        instance.start(program, {});
        QTRY_VERIFY_WITH_TIMEOUT(bus.interface()->isServiceRegistered(busName), 10000);

        run(u"wl-copy"_s, {u"--primary"_s}, "beta alpha beta");
        QProcess launcher;
        launcher.start(program, {u"--service"_s, u"tallyvox"_s, u"--selection"_s});
        QVERIFY(launcher.waitForFinished(10000));
        QCOMPARE(launcher.exitCode(), 0);
        QFile list(env.dataHome() + u"/Okaluna Software/Tallyvox/TallyvoxData.txt.txt"_s);
        QTRY_VERIFY_WITH_TIMEOUT(list.size() > 0, 10000);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "alpha (1)\nbeta (2)\n"_ba);

        run(u"wl-copy"_s, {u"--primary"_s}, "42");
        QDBusMessage action =
            QDBusMessage::createMethodCall(busName, u"/com/okaluna/Tallyvox"_s,
                                           u"org.freedesktop.Application"_s, u"ActivateAction"_s);
        action << u"spellOutNumber"_s << QVariantList() << QVariantMap();
        QCOMPARE(bus.call(action, QDBus::Block, 10000).type(), QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(clipboard(), u"forty-two"_s, 10000);

        // Its alert stays open; nothing more to ask of it.
        instance.kill();
        instance.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(WaylandSessionTest)
#include "WaylandSessionTest.moc"
