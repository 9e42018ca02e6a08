#include "prefs/PreferenceStore.h"
#include "shell/ApplicationBus.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDir>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString serviceName = QString::fromLatin1(busIdentity::serviceName);

class RecordingHandlers final : public DocumentHandler, public ActionHandler {
public:
    void openDocuments(const QStringList& paths) override { opened.append(paths); }
    void activate() override { ++activations; }
    bool activateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap&) override
    {
        actions.append({name, parameter});
        return name == QStringLiteral("wordCount");
    }

    QList<QStringList> opened;
    int activations = 0;
    QList<std::pair<QString, QVariantList>> actions;
};

// Runs the real program to its end while this process keeps answering the bus.
int launch(const QStringList& arguments, const QString& directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QSignalSpy finished(&process, &QProcess::finished);
    process.start(program, arguments);
    if (!finished.wait(20000))
        return -1;
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

class SingleInstanceTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
    }

    void secondLaunchHandsItsFilesToTheFirst()
    {
        testing::TestEnvironment env;
        QDBusConnection bus = QDBusConnection::sessionBus();
        ApplicationBusObject object;
        RecordingHandlers handlers;
        object.setDocumentHandler(&handlers);
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);

        QCOMPARE(launch({QStringLiteral("a b.txt"), QStringLiteral("/tmp/c.pdf")}, env.root()), 0);
        const QStringList expected{env.root() + QStringLiteral("/a b.txt"),
                                   QStringLiteral("/tmp/c.pdf")};
        QCOMPARE(handlers.opened, QList<QStringList>{expected});
        // Without files the first instance only comes forward.
        QCOMPARE(launch({}, env.root()), 0);
        QCOMPARE(handlers.activations, 1);
        QCOMPARE(handlers.opened.size(), 1);

        // Console mode never forwards.
        QCOMPARE(launch({QStringLiteral("--console")}, env.root()), 0);
        QCOMPARE(handlers.activations, 1);

        QDBusConnection other =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("second"));
        ApplicationBusObject second;
        QCOMPARE(claimSingleInstance(other, second), InstanceClaim::OtherInstanceRuns);
        QDBusConnection::disconnectFromBus(QStringLiteral("second"));
        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    void activateActionGoesToTheServicesHandler_data()
    {
        QTest::addColumn<bool>("withHandler");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("error");
        QTest::newRow("no handler yet")
            << false << QStringLiteral("wordCount")
            << QStringLiteral("org.freedesktop.DBus.Error.NotSupported");
        QTest::newRow("known action") << true << QStringLiteral("wordCount") << QString();
        QTest::newRow("unknown action")
            << true << QStringLiteral("frobnicate")
            << QStringLiteral("org.freedesktop.DBus.Error.NotSupported");
    }
    void activateActionGoesToTheServicesHandler()
    {
        QFETCH(bool, withHandler);
        QFETCH(QString, action);
        QFETCH(QString, error);
        QDBusConnection bus = QDBusConnection::sessionBus();
        ApplicationBusObject object;
        RecordingHandlers handlers;
        if (withHandler)
            object.setActionHandler(&handlers);
        QCOMPARE(claimSingleInstance(bus, object), InstanceClaim::Primary);

        // From a second connection, asynchronously: a blocking call to ourselves would stall.
        QDBusConnection caller =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("caller"));
        QDBusMessage call = QDBusMessage::createMethodCall(
            serviceName, QString::fromLatin1(busIdentity::objectPath),
            QString::fromLatin1(busIdentity::interfaceName), QStringLiteral("ActivateAction"));
        call << action << QVariantList{QVariant::fromValue(QDBusVariant(QStringLiteral("text")))}
             << QVariantMap();
        QDBusPendingCallWatcher watcher(caller.asyncCall(call));
        QSignalSpy done(&watcher, &QDBusPendingCallWatcher::finished);
        QVERIFY(done.wait(5000));
        QCOMPARE(watcher.error().name(), error);
        QCOMPARE(handlers.actions.size(), withHandler ? 1 : 0);
        if (withHandler)
            QCOMPARE(handlers.actions.first().first, action);

        QDBusConnection::disconnectFromBus(QStringLiteral("caller"));
        bus.unregisterService(serviceName);
        bus.unregisterObject(QString::fromLatin1(busIdentity::objectPath));
    }

    void realInstancesEndToEnd()
    {
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer")))
            QSKIP("the indexers are not built");
        testing::TestEnvironment env;
        PreferenceStore(PreferenceStore::defaultPath()).writeBool(prefs::QuitWhenDone, true);
        env.writeFile(QStringLiteral("notes.txt"), "one two two\n");
        QProcess first;
        first.setProcessChannelMode(QProcess::ForwardedChannels);
        first.start(program, {});
        QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
        QTRY_VERIFY_WITH_TIMEOUT(bus->isServiceRegistered(serviceName), 10000);

        QCOMPARE(launch({QStringLiteral("notes.txt")}, env.root()), 0);
        // The first instance runs the file, then says goodbye because of QuitWhenDone.
        QVERIFY(first.waitForFinished(20000));
        QCOMPARE(first.exitCode(), 0);
        QVERIFY(QFile::exists(env.dataHome() +
                              QStringLiteral("/Okaluna Software/Tallyvox/notes.txt.txt")));
        QVERIFY(PreferenceStore().readWindowBounds().has_value());
    }
};

QTEST_GUILESS_MAIN(SingleInstanceTest)
#include "SingleInstanceTest.moc"
