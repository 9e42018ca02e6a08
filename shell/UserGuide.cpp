#include "shell/UserGuide.h"

#include <QCoreApplication>
#include <QDir>

namespace tallyvox {

QUrl userGuideUrl(const QString& section)
{
    QUrl url = QUrl::fromLocalFile(QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                                   QStringLiteral("/" TALLYVOX_GUIDE_RELATIVE)));
    if (!section.isEmpty()) {
        url.setFragment(section);
    }
    return url;
}

} // namespace tallyvox
