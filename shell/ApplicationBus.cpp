#include "shell/ApplicationBus.h"
#include "support/FilePath.h"

#include <QDBusConnectionInterface>
#include <QUrl>

namespace tallyvox {

namespace {

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

ApplicationBusObject::ApplicationBusObject(QObject* parent) : QObject(parent)
{
    new FreedesktopApplicationAdaptor(this);
}

FreedesktopApplicationAdaptor::FreedesktopApplicationAdaptor(ApplicationBusObject* object)
    : QDBusAbstractAdaptor(object), m_object(object)
{}

void FreedesktopApplicationAdaptor::Activate(const QVariantMap&)
{
    if (DocumentHandler* handler = m_object->documentHandler()) {
        handler->activate();
    }
}

void FreedesktopApplicationAdaptor::Open(const QStringList& uris, const QVariantMap&)
{
    DocumentHandler* handler = m_object->documentHandler();
    if (!handler) {
        return;
    }
    QStringList paths;
    for (const QString& uri : uris) {
        paths.append(pathFromUri(uri));
    }
    // Only queued here: the reply goes out before any file is processed.
    handler->openDocuments(paths);
}

void FreedesktopApplicationAdaptor::ActivateAction(const QString& actionName,
                                                   const QVariantList& parameter,
                                                   const QVariantMap& platformData,
                                                   const QDBusMessage& message)
{
    ActionHandler* handler = m_object->actionHandler();
    if (handler && handler->activateAction(actionName, parameter, platformData)) {
        return;
    }
    message.setDelayedReply(true);
    QDBusConnection::sessionBus().send(
        message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.NotSupported"),
                                 QStringLiteral("No action named \"%1\"").arg(actionName)));
}

QVariantMap platformDataOfThisLaunch()
{
    QVariantMap data;
    const QByteArray startupId = qgetenv("DESKTOP_STARTUP_ID");
    if (!startupId.isEmpty()) {
        data.insert(QStringLiteral("desktop-startup-id"), QString::fromUtf8(startupId));
    }
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    if (!token.isEmpty()) {
        data.insert(QStringLiteral("activation-token"), QString::fromUtf8(token));
    }
    return data;
}

QString pathFromUri(const QString& uri)
{
    return pathOfFileUrl(QUrl(uri)).value_or(uri);
}

InstanceClaim claimSingleInstance(QDBusConnection& bus, ApplicationBusObject& object)
{
    if (!bus.isConnected() || !bus.interface()) {
        return InstanceClaim::NoBus;
    }
    // The object first, so a call that follows the name's appearance finds it.
    if (!bus.registerObject(text(busIdentity::objectPath), &object,
                            QDBusConnection::ExportAdaptors)) {
        return InstanceClaim::NoBus;
    }
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        bus.interface()->registerService(text(busIdentity::serviceName),
                                         QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid()) {
        bus.unregisterObject(text(busIdentity::objectPath));
        return InstanceClaim::NoBus;
    }
    if (reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        return InstanceClaim::Primary;
    }
    bus.unregisterObject(text(busIdentity::objectPath));
    return InstanceClaim::OtherInstanceRuns;
}

bool forwardToRunningInstance(QDBusConnection& bus, const QStringList& paths)
{
    QDBusMessage call;
    if (paths.isEmpty()) {
        call = QDBusMessage::createMethodCall(
            text(busIdentity::serviceName), text(busIdentity::objectPath),
            text(busIdentity::interfaceName), QStringLiteral("Activate"));
        call << platformDataOfThisLaunch();
    } else {
        QStringList uris;
        for (const QString& path : paths) {
            uris.append(QString::fromLatin1(fileUrlOfPath(path).toEncoded()));
        }
        call = QDBusMessage::createMethodCall(
            text(busIdentity::serviceName), text(busIdentity::objectPath),
            text(busIdentity::interfaceName), QStringLiteral("Open"));
        call << uris << platformDataOfThisLaunch();
    }
    // The owner is another process, so waiting for its answer here cannot stall it.
    const QDBusMessage reply = bus.call(call, QDBus::Block, 10000);
    return reply.type() == QDBusMessage::ReplyMessage;
}

} // namespace tallyvox
