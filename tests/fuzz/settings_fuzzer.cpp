// The settings file on arbitrary bytes, read and written by the store itself as the
// application does: every reader, then a write, which reads the file again, changes one
// key and replaces it. Nothing may crash, however deep, shared or self-referencing the
// input is.
#include "prefs/PreferenceKeys.h"
#include "prefs/PreferenceStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tallyvox;
    static const QTemporaryDir folder;
    const QString path = folder.path() + QStringLiteral("/Tallyvox.plist");
    // A file the store set aside as unreadable last time must not stand in for this input.
    QDir(folder.path()).removeRecursively();
    QDir().mkpath(folder.path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size)) < 0) {
        return 0;
    }
    file.close();

    PreferenceStore store(path);
    store.GetQuitWhenDone();
    store.GetIncludeFrequency();
    store.GetSortBy();
    store.GetSeparateBy();
    store.GetLineStyle();
    store.readInteger(prefs::MinimumCount);
    store.readString(prefs::StopListPath);
    store.readWindowBounds();
    store.writeBool(prefs::QuitWhenDone, true);
    return 0;
}
