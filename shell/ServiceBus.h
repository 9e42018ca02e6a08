#pragma once

#include "support/Desktop.h"

#include <QDBusConnection>
#include <QVariant>
#include <QVariantList>

#include <optional>

namespace tallyvox {

/// ActivateAction's platform data key naming the selection the running instance reads
/// when the request carries no pasteboard: "primary" (the default) or "clipboard".
inline constexpr char selectionDataKey[] = "x-tallyvox-selection";

/// A pasteboard as ActivateAction's one parameter, D-Bus type aa{say}: one dictionary
/// per item, its entries in the item's type order.
QVariant pasteboardToBus(const QList<PasteboardItem>& pasteboard);

/// The pasteboard in ActivateAction's parameter, unwrapped from QDBusVariant if need be;
/// nothing when the parameter holds no aa{say}.
std::optional<QList<PasteboardItem>> pasteboardFromBus(const QVariantList& parameter);

/// Asks the running instance to perform a service: with the pasteboard, or without one
/// so that it reads the named selection itself. True when the call was answered.
bool forwardServiceRequest(QDBusConnection& bus, const QString& name,
                           const std::optional<QList<PasteboardItem>>& pasteboard,
                           SelectionSource source);

} // namespace tallyvox
