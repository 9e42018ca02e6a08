#include "shell/SelectionItems.h"

#include <QMimeData>

namespace tallyvox {

namespace {

const QString uriListType = QStringLiteral("text/uri-list");
const QString gnomeFilesType = QStringLiteral("x-special/gnome-copied-files");

QList<PasteboardItem> uriItems(const QByteArray& lines, bool skipOperation)
{
    QList<PasteboardItem> items;
    bool first = true;
    for (QByteArray line : lines.split('\n')) {
        line = line.trimmed();
        // GNOME's list starts with "copy" or "cut"; a uri-list may carry comments.
        if (std::exchange(first, false) && skipOperation) {
            continue;
        }
        if (line.isEmpty() || line.startsWith('#')) {
            continue;
        }
        items.append(PasteboardItem{{uriListType, line}});
    }
    return items;
}

} // namespace

QList<PasteboardItem> itemsFromMimeData(const QMimeData& data)
{
    const QStringList formats = data.formats();
    if (formats.contains(uriListType)) {
        QList<PasteboardItem> items = uriItems(data.data(uriListType), false);
        if (!items.isEmpty()) {
            return items;
        }
    }
    if (formats.contains(gnomeFilesType)) {
        QList<PasteboardItem> items = uriItems(data.data(gnomeFilesType), true);
        if (!items.isEmpty()) {
            return items;
        }
    }
    PasteboardItem item;
    for (const QString& format : formats) {
        item.append({format, data.data(format)});
    }
    if (item.isEmpty()) {
        return {};
    }
    return {item};
}

QMimeData* mimeDataForText(const QString& text)
{
    auto* data = new QMimeData;
    const QByteArray utf8 = text.toUtf8();
    data->setData(QStringLiteral("text/plain;charset=utf-8"), utf8);
    data->setData(QStringLiteral("text/plain"), utf8);
    return data;
}

QList<PasteboardItem> readClipboard(QClipboard& clipboard, SelectionSource source)
{
    const QClipboard::Mode mode =
        source == SelectionSource::Primary ? QClipboard::Selection : QClipboard::Clipboard;
    if (mode == QClipboard::Selection && !clipboard.supportsSelection()) {
        return {};
    }
    const QMimeData* data = clipboard.mimeData(mode);
    return data ? itemsFromMimeData(*data) : QList<PasteboardItem>();
}

} // namespace tallyvox
