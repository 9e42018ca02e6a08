#include "shell/Translations.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace tallyvox {

namespace {

// The program's translations, built in; a folder beside it is asked first.
constexpr char builtInFolder[] = ":/i18n";
constexpr char installedFolder[] = "/../share/tallyvox/translations";

// Set once at start-up, before any window asks for it.
QString& lastInstalled()
{
    static QString language;
    return language;
}

bool isPlainLocale(const QString& locale)
{
    return locale == u"C" || locale == u"POSIX" || locale.startsWith(u"C.") ||
           locale.startsWith(u"C@");
}

// The messages locale as the C library sees it: the first of these that is set.
QString messagesLocale()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty()) {
            return value;
        }
    }
    return QStringLiteral("C");
}

// "de_DE.UTF-8@euro" is "de_DE".
QString languageName(QString locale)
{
    locale = locale.section(u'@', 0, 0).section(u'.', 0, 0);
    return locale.replace(u'-', u'_');
}

// The file of this base name for the first language that has one, in this folder.
bool loadFor(QTranslator& translator, const QStringList& languages, const QString& base,
             const QString& folder)
{
    for (const QString& language : languages) {
        if (translator.load(base + u'_' + language, folder)) {
            return true;
        }
        const QString bare = language.section(u'_', 0, 0);
        if (bare != language && translator.load(base + u'_' + bare, folder)) {
            return true;
        }
    }
    return false;
}

} // namespace

QStringList messageLanguages()
{
    const QString locale = messagesLocale();
    if (isPlainLocale(locale)) {
        return {};
    }
    QStringList languages;
    const QString wanted = qEnvironmentVariable("LANGUAGE");
    for (const QString& entry : wanted.split(u':', Qt::SkipEmptyParts)) {
        languages.append(languageName(entry));
    }
    languages.append(languageName(locale));
    languages.removeDuplicates();
    return languages;
}

QString installTranslations(QCoreApplication& app, const QStringList& languages)
{
    const QString installed =
        QCoreApplication::applicationDirPath() + QLatin1String(installedFolder);
    lastInstalled().clear();
    auto own = std::make_unique<QTranslator>(&app);
    QString chosen;
    for (const QString& language : languages) {
        if (loadFor(*own, {language}, QStringLiteral("tallyvox"), installed) ||
            loadFor(*own, {language}, QStringLiteral("tallyvox"), QLatin1String(builtInFolder))) {
            chosen = language;
            break;
        }
        // English is the texts' own language: a language after it is not wanted.
        if (language == u"en" || language.startsWith(u"en_")) {
            return {};
        }
    }
    if (chosen.isEmpty()) {
        return {};
    }
    QCoreApplication::installTranslator(own.release());
    lastInstalled() = chosen;
    auto qt = std::make_unique<QTranslator>(&app);
    if (loadFor(*qt, {chosen}, QStringLiteral("qtbase"),
                QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(qt.release());
    }
    return chosen;
}

QString installedLanguage()
{
    return lastInstalled();
}

} // namespace tallyvox
