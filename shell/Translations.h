#pragma once

#include <QString>
#include <QStringList>

class QCoreApplication;

namespace tallyvox {

/// The languages to show texts in, most wanted first, as gettext chooses them: none in
/// the C or POSIX locale of LC_ALL, LC_MESSAGES or LANG (whatever LANGUAGE says), else
/// LANGUAGE's list or the messages locale. Names as "de_DE", "de".
QStringList messageLanguages();

/// Installs into the application Tallyvox's translation for the first of these languages
/// that has one, and Qt's own (standard dialogs and buttons) for the same language. Looks
/// in share/tallyvox/translations beside the program (which may add a language) before
/// the ones built in. English, before any language that has a translation, leaves every
/// text as it is. Gives the language installed, empty when none.
QString installTranslations(QCoreApplication& app, const QStringList& languages);

/// The language installTranslations() last installed, empty for none (English).
QString installedLanguage();

} // namespace tallyvox
