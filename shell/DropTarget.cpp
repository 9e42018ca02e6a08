#include "shell/DropTarget.h"
#include "support/FilePath.h"

#include "support/FileRef.h"

#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace tallyvox {

namespace {

QString existingLocalPath(const QUrl& url)
{
    const std::optional<QString> path = pathOfFileUrl(url);
    return path && FileRef::fromPath(*path) ? *path : QString();
}

} // namespace

bool DragHasFiles(const QMimeData& data)
{
    // Check the URL list itself: QMimeData::text() would turn it into text and back.
    if (!data.hasUrls()) {
        return false;
    }
    const QList<QUrl> urls = data.urls();
    return std::any_of(urls.begin(), urls.end(),
                       [](const QUrl& url) { return !existingLocalPath(url).isEmpty(); });
}

QStringList droppedEntries(const QMimeData& data)
{
    QStringList entries;
    for (const QUrl& url : data.urls()) {
        entries.append(existingLocalPath(url));
    }
    return entries;
}

bool lastEntryUsable(const QStringList& entries)
{
    return !entries.isEmpty() && !entries.constLast().isEmpty();
}

} // namespace tallyvox
