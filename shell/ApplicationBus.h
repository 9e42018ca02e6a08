#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

namespace tallyvox {

/// The application's identity on the session bus.
namespace busIdentity {
inline constexpr char serviceName[] = "com.okaluna.Tallyvox";
inline constexpr char objectPath[] = "/com/okaluna/Tallyvox";
inline constexpr char interfaceName[] = "org.freedesktop.Application";
} // namespace busIdentity

/// Where Open and Activate from the bus go: the running application.
class DocumentHandler {
public:
    DocumentHandler() = default;
    virtual ~DocumentHandler() = default;
    DocumentHandler(const DocumentHandler&) = delete;
    DocumentHandler& operator=(const DocumentHandler&) = delete;

    virtual void openDocuments(const QStringList& paths) = 0;
    virtual void activate() = 0;
};

/// Where ActivateAction goes: performs the service whose message name is the action
/// name, with the pasteboard the caller sent as the parameter. Provided by the
/// services layer; without one, ActivateAction is answered with NotSupported.
class ActionHandler {
public:
    ActionHandler() = default;
    virtual ~ActionHandler() = default;
    ActionHandler(const ActionHandler&) = delete;
    ActionHandler& operator=(const ActionHandler&) = delete;

    /// False when there is no action of that name.
    virtual bool activateAction(const QString& name, const QVariantList& parameter,
                                const QVariantMap& platformData) = 0;
};

/// The object at /com/okaluna/Tallyvox. It exists before the application's windows
/// so the bus name can be claimed first; the handlers are attached once there are any.
/// Calls arriving before that are not lost: nothing is dispatched until the loop runs.
class ApplicationBusObject : public QObject {
    Q_OBJECT
public:
    explicit ApplicationBusObject(QObject* parent = nullptr);

    void setDocumentHandler(DocumentHandler* handler) { m_documents = handler; }
    void setActionHandler(ActionHandler* handler) { m_actions = handler; }
    DocumentHandler* documentHandler() const { return m_documents; }
    ActionHandler* actionHandler() const { return m_actions; }

private:
    DocumentHandler* m_documents = nullptr;
    ActionHandler* m_actions = nullptr;
};

/// org.freedesktop.Application on that object.
class FreedesktopApplicationAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    explicit FreedesktopApplicationAdaptor(ApplicationBusObject* object);

public slots:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& actionName, const QVariantList& parameter,
                        const QVariantMap& platformData, const QDBusMessage& message);

private:
    ApplicationBusObject* m_object;
};

/// A file URI as the path it names; any other URI is kept as it came (it fails as a
/// file reference later, like any file that cannot be found).
QString pathFromUri(const QString& uri);

/// The launch's desktop-startup-id and activation-token, so the running instance may
/// take the focus on behalf of this launch.
QVariantMap platformDataOfThisLaunch();

/// Claiming the bus name.
enum class InstanceClaim { Primary, OtherInstanceRuns, NoBus };

/// Registers the object and then the name, without queueing for it.
InstanceClaim claimSingleInstance(QDBusConnection& bus, ApplicationBusObject& object);

/// Hands the files to the instance that owns the name (Open), or asks it to come
/// forward when there are none (Activate). True when the call was answered.
bool forwardToRunningInstance(QDBusConnection& bus, const QStringList& paths);

} // namespace tallyvox
