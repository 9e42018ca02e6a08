#include "shell/ServiceBus.h"

#include "shell/ApplicationBus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

namespace tallyvox {

namespace {

// Only for its D-Bus signature a{say}; the entries themselves are written in order.
using ItemMap = QMap<QString, QByteArray>;

constexpr char pasteboardSignature[] = "aa{say}";

void registerTypes()
{
    qDBusRegisterMetaType<ItemMap>();
}

} // namespace

QVariant pasteboardToBus(const QList<PasteboardItem>& pasteboard)
{
    registerTypes();
    QDBusArgument argument;
    argument.beginArray(QMetaType::fromType<ItemMap>());
    for (const PasteboardItem& item : pasteboard) {
        argument.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QByteArray>());
        for (const auto& [type, bytes] : item) {
            argument.beginMapEntry();
            argument << type << bytes;
            argument.endMapEntry();
        }
        argument.endMap();
    }
    argument.endArray();
    return QVariant::fromValue(argument);
}

std::optional<QList<PasteboardItem>> pasteboardFromBus(const QVariantList& parameter)
{
    if (parameter.size() != 1) {
        return std::nullopt;
    }
    QVariant value = parameter.first();
    if (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String(pasteboardSignature)) {
        return std::nullopt;
    }
    QList<PasteboardItem> pasteboard;
    argument.beginArray();
    while (!argument.atEnd()) {
        PasteboardItem item;
        argument.beginMap();
        while (!argument.atEnd()) {
            QString type;
            QByteArray bytes;
            argument.beginMapEntry();
            argument >> type >> bytes;
            argument.endMapEntry();
            item.append({type, bytes});
        }
        argument.endMap();
        pasteboard.append(item);
    }
    argument.endArray();
    return pasteboard;
}

bool forwardServiceRequest(QDBusConnection& bus, const QString& name,
                           const std::optional<QList<PasteboardItem>>& pasteboard,
                           SelectionSource source)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(busIdentity::serviceName), QString::fromLatin1(busIdentity::objectPath),
        QString::fromLatin1(busIdentity::interfaceName), QStringLiteral("ActivateAction"));
    QVariantList parameter;
    if (pasteboard) {
        parameter.append(pasteboardToBus(*pasteboard));
    }
    QVariantMap platformData = platformDataOfThisLaunch();
    platformData.insert(QString::fromLatin1(selectionDataKey), source == SelectionSource::Clipboard
                                                                   ? QStringLiteral("clipboard")
                                                                   : QStringLiteral("primary"));
    call << name << parameter << platformData;
    // The instance only queues the request, so the answer comes before any alert.
    const QDBusMessage reply = bus.call(call, QDBus::Block, 10000);
    return reply.type() == QDBusMessage::ReplyMessage;
}

} // namespace tallyvox
