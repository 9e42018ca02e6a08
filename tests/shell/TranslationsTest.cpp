#include "shell/Translations.h"
#include "shell/BatchRunner.h"
#include "shell/MainWindow.h"
#include "tests/common/RecordingDesktop.h"

#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

struct Message {
    QString context;
    QString source;
    QString translation;
    QString type; // "unfinished", "vanished", "obsolete" or empty
};

// The messages of a .ts file as lupdate wrote it.
QList<Message> readMessages(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly); // unread, the reader fails and the list is empty
    QList<Message> messages;
    QXmlStreamReader xml(&file);
    QString context;
    while (!xml.atEnd()) {
        xml.readNext();
        if (!xml.isStartElement()) {
            continue;
        }
        if (xml.name() == u"name") {
            context = xml.readElementText();
        } else if (xml.name() == u"source") {
            messages.append({context, xml.readElementText(), {}, {}});
        } else if (xml.name() == u"translation" && !messages.isEmpty()) {
            messages.last().type = xml.attributes().value(u"type"_s).toString();
            messages.last().translation = xml.readElementText();
        }
    }
    return xml.hasError() ? QList<Message>() : messages;
}

// What a translation must keep of its source: the %1..%9 placeholders (sorted, each as
// often as it occurs), the keyboard accelerator ("&F", not "&&"), a closing "..." or "…"
// and the empty lines between the parts of a text of several lines (the help).
QStringList markers(const QString& text)
{
    static const QRegularExpression marker(u"%[1-9]|&&|&(?=[^\\s&])"_s);
    QStringList found;
    for (const QRegularExpressionMatch& match : marker.globalMatch(text)) {
        if (match.captured() != u"&&"_s) {
            found.append(match.captured());
        }
    }
    found.sort();
    for (const QString& ending : {u"..."_s, u"\u2026"_s}) {
        found.append(text.endsWith(ending) ? ending : QString());
    }
    found.append(QString::number(text.count(u"\n\n"_s)));
    return found;
}

} // namespace

/// The shipped translations are complete and consistent with their sources, and one of them
/// really reaches the windows.
class TranslationsTest : public QObject {
    Q_OBJECT

private slots:
    void complete_data()
    {
        QTest::addColumn<QString>("language");
        for (const char* language : {"de", "fr", "es", "ja", "zh_CN"}) {
            QTest::newRow(language) << QString::fromLatin1(language);
        }
    }
    // Every text has a finished translation that keeps the source's markers, and the
    // translation built into the program says the same.
    void complete()
    {
        QFETCH(QString, language);
        const QList<Message> messages = readMessages(
            QStringLiteral(TALLYVOX_TRANSLATIONS_DIR "/tallyvox_") + language + u".ts"_s);
        QVERIFY(messages.size() > 100);
        QTranslator built;
        QVERIFY(built.load(u":/i18n/tallyvox_"_s + language + u".qm"_s));
        for (const Message& message : messages) {
            const QByteArray where = (message.context + u": "_s + message.source).toUtf8();
            QVERIFY2(message.type.isEmpty(), where + " is " + message.type.toUtf8());
            QVERIFY2(!message.translation.trimmed().isEmpty(), where + " has no translation");
            QVERIFY2(markers(message.translation) == markers(message.source),
                     where + " differs in placeholders, accelerator, ending or empty lines");
            QCOMPARE(built.translate(message.context.toUtf8().constData(),
                                     message.source.toUtf8().constData()),
                     message.translation);
        }
    }

    void install_data()
    {
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("installed");
        QTest::addColumn<QString>("stop");
        // The C locale keeps the program's own texts whatever LANGUAGE says, as gettext does.
        QTest::newRow("C wins over LANGUAGE")
            << u"LC_ALL=C.UTF-8 LANG=de_DE.UTF-8 LANGUAGE=de"_s << QString() << u"Stop"_s;
        QTest::newRow("German of Austria falls back to German")
            << u"LANG=de_AT.UTF-8@euro"_s << u"de_AT"_s << u"Anhalten"_s;
        QTest::newRow("LANGUAGE: an unknown language, then French")
            << u"LANG=de_DE.UTF-8 LANGUAGE=xx:fr"_s << u"fr"_s << u"Arr\u00eater"_s;
        QTest::newRow("LANGUAGE: English before German")
            << u"LANG=de_DE.UTF-8 LANGUAGE=en_GB:de"_s << QString() << u"Stop"_s;
        QTest::newRow("LC_MESSAGES before LANG")
            << u"LC_MESSAGES=zh_CN.UTF-8 LANG=de_DE.UTF-8"_s << u"zh_CN"_s << u"\u505c\u6b62"_s;
        QTest::newRow("nothing set") << QString() << QString() << u"Stop"_s;
    }
    // The language the environment asks for reaches the main window's controls and menus;
    // English and the C locale leave them as they are.
    void install()
    {
        QFETCH(QString, environment);
        QFETCH(QString, installed);
        QFETCH(QString, stop);
        for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) {
            qunsetenv(name);
        }
        for (const QString& setting : environment.split(u' ', Qt::SkipEmptyParts)) {
            qputenv(setting.section(u'=', 0, 0).toLatin1().constData(),
                    setting.section(u'=', 1).toUtf8());
        }
        QCOMPARE(installTranslations(*QCoreApplication::instance(), messageLanguages()), installed);
        testing::RecordingDesktop desktop;
        MainWindow window(desktop);
        window.resize(440, 280);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // The help text fits the window whole, not elided, also where it is longer.
        window.showStatus(translated(batchTexts::context, batchTexts::helpText),
                          StatusTarget::StatusText);
        const auto* status = window.findChild<QLabel*>(QLatin1String(mainControls::StatusText));
        QCOMPARE(status->text(), status->accessibleName());
        const auto* button =
            window.findChild<QPushButton*>(QLatin1String(mainControls::StopButton));
        QVERIFY(button);
        QCOMPARE(button->text(), stop);
        if (installed.startsWith(u"de"_s)) {
            QCOMPARE(window.helpMenu()->title(), u"&Hilfe"_s);
        }
        // Each row starts from the program's own texts.
        for (auto* translator : QCoreApplication::instance()->findChildren<QTranslator*>()) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
    }
};

QTEST_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
