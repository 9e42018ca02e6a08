#include "services/ServiceDispatcher.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <unicode/locid.h>

Q_DECLARE_METATYPE(tallyvox::ServiceRequest)

using namespace tallyvox;
using namespace std::chrono_literals;

namespace {

// Stands for the path of the test's document, which only exists once the test runs.
const QString filePlaceholder = QStringLiteral("@FILE@");

PasteboardItem textItem(const QString& text)
{
    return {{QStringLiteral("text/plain;charset=utf-8"), text.toUtf8()}};
}

PasteboardItem uriItem(const QByteArray& uri)
{
    return {{QStringLiteral("text/uri-list"), uri}};
}

// What a request did, as lines to compare; files by their names alone.
QStringList outcome(const testing::RecordingDesktop& desktop)
{
    QStringList lines;
    for (const auto& [kind, text] : desktop.events()) {
        if (kind == QLatin1String("editor"))
            lines.append(kind + QLatin1Char(' ') + QFileInfo(text).fileName());
        else if (kind != QLatin1String("raise") && kind != QLatin1String("log"))
            lines.append(text.isEmpty() ? kind : kind + QLatin1Char(' ') + text);
    }
    return lines;
}

} // namespace

class ServiceDispatcherTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale::getEnglish(), status);
        QVERIFY(U_SUCCESS(status));
    }

    void request_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Pasteboard>("pasteboard");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("temporaryFiles");

        const auto text = [](const QString& t) { return Pasteboard{textItem(t)}; };
        const Pasteboard file{uriItem("file://" + filePlaceholder.toUtf8())};
        const QString wordChars = QStringLiteral("alert Content character count: 5");

        QTest::newRow("tallyvox on text: word list of a temporary copy")
            << QStringLiteral("tallyvox") << text(QStringLiteral("one two two"))
            << QStringList{QStringLiteral("editor TallyvoxData.txt.txt")} << 1;
        QTest::newRow("WORDCOUNT in another case")
            << QStringLiteral("WORDCOUNT") << text(QStringLiteral("one two two"))
            << QStringList{QStringLiteral("alert Word count: 3")} << 1;
        QTest::newRow("charCount counts the text's UTF-16 units")
            << QStringLiteral("charCount") << text(QStringLiteral("hello world \U0001F600"))
            << QStringList{QStringLiteral("alert Character count: 14")} << 0;
        QTest::newRow("decodeBase64 on text")
            << QStringLiteral("decodeBase64") << text(QStringLiteral("SGVsbG8="))
            << QStringList{QStringLiteral("savePanel DecodedBase64")} << 0;
        QTest::newRow("spellOutNumber on text")
            << QStringLiteral("spellOutNumber") << text(QStringLiteral("123"))
            << QStringList{QStringLiteral("clipboard one hundred twenty-three"),
                           QStringLiteral("sound Ping"),
                           QStringLiteral("alert The following \"spell out\" has been put on "
                                          "the clipboard: one hundred twenty-three")}
            << 0;
        QTest::newRow("saveGraphicData on text")
            << QStringLiteral("saveGraphicData") << text(QStringLiteral("<svg/>"))
            << QStringList{QStringLiteral("savePanel Graphic")} << 0;
        QTest::newRow("unknown name: temporary file, then nothing")
            << QStringLiteral("frobnicate") << text(QStringLiteral("one")) << QStringList() << 1;

        QTest::newRow("file URL: the file's word characters")
            << QStringLiteral("charCount") << file << QStringList{wordChars} << 0;
        QTest::newRow("file URL before text in a later item")
            << QStringLiteral("charCount")
            << Pasteboard{textItem(QStringLiteral("x")), file.first()} << QStringList{wordChars}
            << 0;
        QTest::newRow("file URL with spellOutNumber is ignored")
            << QStringLiteral("spellOutNumber") << file << QStringList() << 0;
        QTest::newRow("text that is a file URL is the file")
            << QStringLiteral("charCount") << text(QStringLiteral("file://") + filePlaceholder)
            << QStringList{wordChars} << 0;
        QTest::newRow("text that is an absolute path is the file")
            << QStringLiteral("wordCount") << text(filePlaceholder)
            << QStringList{QStringLiteral("alert Word count: 3")} << 0;
        QTest::newRow("text naming a file with saveGraphicData does nothing")
            << QStringLiteral("saveGraphicData")
            << text(QStringLiteral("file://") + filePlaceholder) << QStringList() << 0;
        QTest::newRow("a line break makes it text again")
            << QStringLiteral("charCount") << text(QStringLiteral("file:///tmp\n"))
            << QStringList{QStringLiteral("alert Character count: 12")} << 0;
        QTest::newRow("relative names are text")
            << QStringLiteral("charCount") << text(QStringLiteral("doc.txt"))
            << QStringList{QStringLiteral("alert Character count: 7")} << 0;

        QTest::newRow("file URL of nothing, no text")
            << QStringLiteral("charCount") << Pasteboard{uriItem("file:///no/such/file")}
            << QStringList() << 0;
        QTest::newRow("image only")
            << QStringLiteral("charCount") << Pasteboard{{{QStringLiteral("image/png"), "\x89PNG"}}}
            << QStringList() << 0;
        QTest::newRow("empty pasteboard")
            << QStringLiteral("tallyvox") << Pasteboard() << QStringList() << 0;
    }
    void request()
    {
        QFETCH(QString, name);
        QFETCH(Pasteboard, pasteboard);
        QFETCH(QStringList, expected);
        QFETCH(int, temporaryFiles);

        testing::TestEnvironment env;
        const QString document = env.writeFile(QStringLiteral("doc.txt"), "a bb bb\n");
        for (PasteboardItem& item : pasteboard) {
            for (auto& [type, bytes] : item)
                bytes.replace(filePlaceholder.toUtf8(), document.toUtf8());
        }
        testing::RecordingDesktop desktop;
        PreferenceStore preferences;
        const WordContext words = serviceWordContext(
            desktop, preferences, QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR), env.tempFolder());
        QList<std::chrono::milliseconds> timers;
        const ServiceContext context{words, [&](auto delay) { timers.append(delay); }};

        QCOMPARE(HandleServicePerform(context, {name, pasteboard}), eventNotHandledErr);
        QCOMPARE(outcome(desktop), expected);
        QCOMPARE(desktop.events().first().kind, QStringLiteral("raise"));
        const QStringList folders = QDir(env.tempFolder() + QStringLiteral("/Tallyvox"))
                                        .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders.size(), temporaryFiles);
        for (const QString& folder : folders)
            QCOMPARE(folder, folder.toUpper());
        QVERIFY(timers.isEmpty());
    }

    void missingParametersStillArmTheQuitTimer_data()
    {
        QTest::addColumn<ServiceRequest>("request");
        const Pasteboard text{textItem(QStringLiteral("a"))};
        QTest::newRow("no message name") << ServiceRequest{std::nullopt, text};
        QTest::newRow("no pasteboard") << ServiceRequest{QStringLiteral("charCount"), std::nullopt};
        QTest::newRow("a request that works") << ServiceRequest{QStringLiteral("charCount"), text};
    }
    void missingParametersStillArmTheQuitTimer()
    {
        QFETCH(ServiceRequest, request);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore preferences;
        QVERIFY(preferences.writeBool(prefs::QuitWhenDone, true));
        const WordContext words = serviceWordContext(desktop, preferences, {}, env.tempFolder());
        QList<std::chrono::milliseconds> timers;
        const ServiceContext context{words, [&](auto delay) { timers.append(delay); }};
        QCOMPARE(HandleServicePerform(context, request), eventNotHandledErr);
        QCOMPARE(timers, QList<std::chrono::milliseconds>{1000ms});
        QCOMPARE(desktop.alerts().size(), request.messageName && request.pasteboard ? 1 : 0);
    }
};

QTEST_GUILESS_MAIN(ServiceDispatcherTest)
#include "ServiceDispatcherTest.moc"
