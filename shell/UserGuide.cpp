#include "shell/UserGuide.h"

#include "shell/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tallyvox {

QUrl userGuideUrl(const QString& section)
{
    const QString guide = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                          QStringLiteral("/" TALLYVOX_GUIDE_RELATIVE));
    // The guide is English; in another language its title page, which links into it.
    const QString language = installedLanguage();
    for (const QString& name : {language, language.section(u'_', 0, 0)}) {
        const QString titlePage = QString(guide).replace(QStringLiteral("/help/C/"),
                                                         QStringLiteral("/help/") + name + u'/');
        if (section.isEmpty() && !name.isEmpty() && QFileInfo::exists(titlePage)) {
            return QUrl::fromLocalFile(titlePage);
        }
    }
    QUrl url = QUrl::fromLocalFile(guide);
    if (!section.isEmpty()) {
        url.setFragment(section);
    }
    return url;
}

} // namespace tallyvox
