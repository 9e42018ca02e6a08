#include "shell/ServiceBus.h"
#include "prefs/PreferenceStore.h"
#include "shell/ServiceRequests.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;

namespace {

const QString serviceName = QString::fromLatin1(busIdentity::serviceName);

Pasteboard textPasteboard(const QByteArray& text)
{
    return {PasteboardItem{{QStringLiteral("text/plain;charset=utf-8"), text}}};
}

} // namespace

class ServiceBusTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
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
};

QTEST_GUILESS_MAIN(ServiceBusTest)
#include "ServiceBusTest.moc"
