#include "services/ServiceDispatcher.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <unicode/locid.h>

Q_DECLARE_METATYPE(tallyvox::ServiceRequest)

using namespace tallyvox;

namespace {

// Stands for the path of the test's document, which only exists once the test runs.
const QByteArray filePlaceholder = "@FILE@";

Pasteboard text(const QByteArray& bytes)
{
    return {PasteboardItem{{QStringLiteral("text/plain;charset=utf-8"), bytes}}};
}

const Pasteboard file{PasteboardItem{{QStringLiteral("text/uri-list"), "file://@FILE@"}}};

ServiceRequest request(const char* name, const Pasteboard& pasteboard)
{
    return {QString::fromLatin1(name), pasteboard};
}

// A request performed to its end: begun, and committed once it is ready.
Status performed(const ServiceContext& context, const ServiceRequest& request)
{
    const std::unique_ptr<ServiceJob> job = HandleServicePerform(context, request);
    if (!job->isReady()) {
        QSignalSpy ready(job.get(), &FileJob::ready);
        if (!ready.wait(5000)) {
            return noErr;
        }
    }
    return job->commit();
}

// What a request did, as lines; the word list by its file name alone.
QStringList outcome(const testing::RecordingDesktop& desktop)
{
    QStringList lines;
    for (const auto& [kind, text] : desktop.events()) {
        if (kind == QLatin1String("editor")) {
            lines.append(kind + QLatin1Char(' ') + QFileInfo(text).fileName());
        } else if (kind != QLatin1String("raise") && kind != QLatin1String("log")) {
            lines.append(text.isEmpty() ? kind : kind + QLatin1Char(' ') + text);
        }
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
    }

    void perform_data()
    {
        QTest::addColumn<ServiceRequest>("request");
        QTest::addColumn<bool>("quitWhenDone");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<int>("temporaryFiles");

        const QString spelled = QStringLiteral("one hundred twenty-three");
        const QStringList fileChars{QStringLiteral("alert Content character count: 5")};
        const QStringList fileWords{QStringLiteral("alert Word count: 3")};
        QTest::newRow("tallyvox: word list of a temporary copy")
            << request("tallyvox", text("one two two")) << false
            << QStringList{QStringLiteral("editor TallyvoxData.txt.txt")} << 1;
        QTest::newRow("WORDCOUNT in another case")
            << request("WORDCOUNT", text("one two two")) << false << fileWords << 1;
        QTest::newRow("charCount: the text's UTF-16 units")
            << request("charCount", text("hello world \xf0\x9f\x98\x80")) << false
            << QStringList{QStringLiteral("alert Character count: 14")} << 0;
        QTest::newRow("decodeBase64")
            << request("decodeBase64", text("SGVsbG8=")) << false
            << QStringList{QStringLiteral("savePanel DecodedBase64")} << 0;
        QTest::newRow("spellOutNumber")
            << request("spellOutNumber", text("123")) << false
            << QStringList{QStringLiteral("clipboard ") + spelled, QStringLiteral("sound Ping"),
                           QStringLiteral("alert The following \"spell out\" has been put on the "
                                          "clipboard: ") +
                               spelled}
            << 0;
        QTest::newRow("saveGraphicData") << request("saveGraphicData", text("<svg/>")) << false
                                         << QStringList{QStringLiteral("savePanel Graphic")} << 0;
        QTest::newRow("unknown name: a temporary file, then nothing")
            << request("frobnicate", text("one")) << false << QStringList() << 1;

        QTest::newRow("file URL: the file's word characters")
            << request("charCount", file) << false << fileChars << 0;
        QTest::newRow("file URL in a later item before text")
            << request("charCount", text("x") + file) << false << fileChars << 0;
        QTest::newRow("file URL with spellOutNumber is ignored")
            << request("spellOutNumber", file) << false << QStringList() << 0;
        QTest::newRow("text that is a file URL is the file")
            << request("charCount", text("file://@FILE@")) << false << fileChars << 0;
        QTest::newRow("text that is an absolute path is the file")
            << request("wordCount", text("@FILE@")) << false << fileWords << 0;
        QTest::newRow("a line break makes it text")
            << request("charCount", text("file:///tmp\n")) << false
            << QStringList{QStringLiteral("alert Character count: 12")} << 0;

        const Pasteboard image{{{QStringLiteral("image/png"), "\x89PNG"}}};
        QTest::newRow("file URL of nothing")
            << request("charCount", {{{QStringLiteral("text/uri-list"), "file:///no/such"}}})
            << true << QStringList() << 0;
        QTest::newRow("no text flavor")
            << request("charCount", image) << true << QStringList() << 0;
        QTest::newRow("no message name")
            << ServiceRequest{std::nullopt, text("a")} << true << QStringList() << 0;
        QTest::newRow("no pasteboard") << ServiceRequest{QStringLiteral("charCount"), std::nullopt}
                                       << true << QStringList() << 0;
        QTest::newRow("quit timer after a request that worked")
            << request("charCount", text("a")) << true
            << QStringList{QStringLiteral("alert Character count: 1")} << 0;
    }
    void perform()
    {
        QFETCH(ServiceRequest, request);
        QFETCH(bool, quitWhenDone);
        QFETCH(QStringList, expected);
        QFETCH(int, temporaryFiles);

        testing::TestEnvironment env;
        // 3 words of 5 characters in all.
        const QString document = env.writeFile(QStringLiteral("doc.txt"), "a bb bb\n");
        Pasteboard none;
        for (PasteboardItem& item : request.pasteboard ? *request.pasteboard : none) {
            for (auto& [type, bytes] : item) {
                bytes.replace(filePlaceholder, document.toUtf8());
            }
        }
        testing::RecordingDesktop desktop;
        PreferenceStore preferences;
        QVERIFY(preferences.writeBool(prefs::QuitWhenDone, quitWhenDone));
        testing::FakeIndexer indexer;
        const WordContext words{desktop, preferences, indexer, env.tempFolder()};
        QList<std::chrono::milliseconds> timers;
        const ServiceContext context{words, [&](auto delay) { timers.append(delay); }};

        QCOMPARE(performed(context, request), eventNotHandledErr);
        QCOMPARE(desktop.events().first().kind, QStringLiteral("raise"));
        QCOMPARE(outcome(desktop), expected);
        QCOMPARE(timers, quitWhenDone ? QList{std::chrono::milliseconds(1000)}
                                      : QList<std::chrono::milliseconds>());
        const QStringList folders = QDir(env.tempFolder() + QStringLiteral("/Tallyvox"))
                                        .entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(folders.size(), temporaryFiles);
        for (const QString& folder : folders) {
            QCOMPARE(folder, folder.toUpper());
        }
    }

    // The word list of a service follows the word-list options (a request is a run of its
    // own: one list, so at most one stop-list alert); the two counts do not.
    void wordListOptionsReachTheWordListOnly_data()
    {
        QTest::addColumn<QByteArray>("service");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QByteArray>("list");
        const QString missing =
            QStringLiteral("alert The stop list \"%1\" cannot be read, so the word lists are made "
                           "without it.");
        QTest::newRow("tallyvox") << QByteArray("tallyvox")
                                  << QStringList{missing,
                                                 QStringLiteral("editor TallyvoxData.txt.tsv")}
                                  << QByteArray("word\tcount\nTHE\t3\ncat\t1\n\n"
                                                "# words in the text\t4\n# words listed\t4\n"
                                                "# distinct words in the text\t2\n"
                                                "# distinct words listed\t2\n"
                                                "# type/token ratio\t0.5000\n"
                                                "# mean word length (characters)\t3.0000\n");
        QTest::newRow("wordCount")
            << QByteArray("wordCount") << QStringList{QStringLiteral("alert Word count: 4")}
            << QByteArray();
        QTest::newRow("charCount")
            << QByteArray("charCount") << QStringList{QStringLiteral("alert Character count: 15")}
            << QByteArray();
    }
    void wordListOptionsReachTheWordListOnly()
    {
        QFETCH(QByteArray, service);
        QFETCH(QStringList, expected);
        QFETCH(QByteArray, list);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore preferences;
        const QString stopList = env.root() + QStringLiteral("/no stop list");
        QVERIFY(preferences.writeBool(prefs::FoldCase, true));
        QVERIFY(preferences.writeBool(prefs::CombineFiles, true));
        QVERIFY(preferences.writeBool(prefs::IncludeTotals, true));
        QVERIFY(preferences.writeInteger(prefs::ListFormat, 2));
        QVERIFY(preferences.writeString(prefs::StopListPath, stopList));
        testing::FakeIndexer indexer;
        const ServiceContext context{{desktop, preferences, indexer, env.tempFolder()}, {}};
        performed(context, request(service.constData(), text("The the THE cat")));
        QCOMPARE(outcome(desktop),
                 QStringList(expected).replaceInStrings(QStringLiteral("%1"), stopList));
        QFile written(env.dataHome() +
                      QStringLiteral("/Okaluna Software/Tallyvox/TallyvoxData.txt.tsv"));
        QCOMPARE(written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray(), list);
    }
};

QTEST_GUILESS_MAIN(ServiceDispatcherTest)
#include "ServiceDispatcherTest.moc"
