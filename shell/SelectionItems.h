#pragma once

#include "support/Desktop.h"

#include <QClipboard>

class QMimeData;

namespace tallyvox {

/// A selection as pasteboard items: a list of file URLs (text/uri-list, or GNOME's
/// x-special/gnome-copied-files) gives one text/uri-list item per URI; anything else
/// is one item with every MIME type offered, in the order offered.
QList<PasteboardItem> itemsFromMimeData(const QMimeData& data);

/// Plain text as the clipboard gets it: UTF-8, and generic text for older readers.
QMimeData* mimeDataForText(const QString& text);

/// Reads a selection from the application's clipboard; empty when the desktop has no
/// such selection or it holds nothing.
QList<PasteboardItem> readClipboard(QClipboard& clipboard, SelectionSource source);

} // namespace tallyvox
