#include "shell/PlainFolder.h"

#include <QLatin1StringView>

namespace tallyvox {

namespace {

// Directories that the file manager of the original platform shows as one document.
constexpr QLatin1StringView packageExtensions[] = {
    QLatin1StringView(".rtfd"),      QLatin1StringView(".app"),    QLatin1StringView(".bundle"),
    QLatin1StringView(".pages"),     QLatin1StringView(".key"),    QLatin1StringView(".numbers"),
    QLatin1StringView(".framework"), QLatin1StringView(".plugin"),
};

} // namespace

bool hasPackageExtension(const QString& name)
{
    for (QLatin1StringView extension : packageExtensions) {
        if (name.size() > extension.size() && name.endsWith(extension, Qt::CaseInsensitive)) {
            return true;
        }
    }
    return false;
}

bool IsPlainFolder(const FileRef& file)
{
    return file.isDirectory() && !hasPackageExtension(file.name());
}

} // namespace tallyvox
