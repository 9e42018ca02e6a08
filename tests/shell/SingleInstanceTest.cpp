#include "prefs/PreferenceStore.h"
#include "shell/ApplicationBus.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnectionInterface>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString serviceName = QString::fromLatin1(busIdentity::serviceName);

class RecordingHandler final : public DocumentHandler {
public:
    void openDocuments(const QStringList& paths) override { opened.append(paths); }
    void activate() override { ++activations; }

    QList<QStringList> opened;
    int activations = 0;
};

// Runs the real program to its end while this process keeps answering the bus.
int launch(const QStringList& arguments, const QString& directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(program, arguments);
    if (!finished.wait(20000)) {
        return -1;
    }
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QDBusConnection::sessionBus().isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
    }

    void secondLaunchHandsItsFilesToTheFirst()
    {
        testing::TestEnvironment env;
        QDBusConnection bus = QDBusConnection::sessionBus();
        ApplicationBusObject object;
        RecordingHandler handlers;
        object.setDocumentHandler(&handlers);
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);

        QCOMPARE(launch({u"a b.txt"_s, u"/tmp/c.pdf"_s}, env.root()), 0);
        QCOMPARE(handlers.opened,
                 (QList<QStringList>{QStringList{env.root() + u"/a b.txt"_s, u"/tmp/c.pdf"_s}}));
        // Without files the first instance only comes forward.
        QCOMPARE(launch({}, env.root()), 0);
        QCOMPARE(handlers.activations, 1);
        QCOMPARE(handlers.opened.size(), 1);

        // Console mode never forwards.
        QCOMPARE(launch({u"--console"_s}, env.root()), 0);
        QCOMPARE(handlers.activations, 1);

        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    void realInstancesEndToEnd()
    {
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"))) {
            QSKIP("the indexers are not built");
        }
        testing::TestEnvironment env;
        PreferenceStore(PreferenceStore::defaultPath()).writeBool(prefs::QuitWhenDone, true);
        env.writeFile(u"notes.txt"_s, "one two two\n");
        QProcess first;
        first.setProcessChannelMode(QProcess::ForwardedChannels);
        first.start(program, {});
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 10000);

        QCOMPARE(launch({u"notes.txt"_s}, env.root()), 0);
        // The first instance runs the file, then says goodbye because of QuitWhenDone.
        QVERIFY(first.waitForFinished(20000));
        QCOMPARE(first.exitCode(), 0);
        QVERIFY(QFile::exists(env.dataHome() + u"/Okaluna Software/Tallyvox/notes.txt.txt"_s));
        QVERIFY(PreferenceStore().readWindowBounds().has_value());
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
