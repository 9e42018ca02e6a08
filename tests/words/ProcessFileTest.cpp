#include "words/ProcessFile.h"
#include "prefs/PreferenceStore.h"
#include "services/DecodeAndSave.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordContext.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTest>

using namespace tallyvox;

namespace {

using Table = QList<QPair<QString, qint64>>;

// A world whose indexer is a script that hands over a prepared word table, so each test
// decides exactly what the "document" holds.
struct World {
    World()
    {
        const QString script = env.writeFile(
            QStringLiteral("indexer/SearchKitIndexer"),
            "#!/bin/sh\necho \"$1\" >> '" + QFile::encodeName(callsPath()) + "'\ncp '" +
                QFile::encodeName(resultPath()) + "' \"$TMPDIR/index-1964.dat\"\n");
        QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString callsPath() const { return env.root() + QStringLiteral("/calls"); }
    QString resultPath() const { return env.root() + QStringLiteral("/result.plist"); }
    QString outputFolder() const
    {
        return env.dataHome() + QStringLiteral("/Okaluna Software/Tallyvox");
    }

    void setTable(const Table& table) const
    {
        QByteArray xml =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>";
        for (const auto& [word, count] : table)
            xml += "<key>" + word.toUtf8() + "</key><integer>" + QByteArray::number(count) +
                   "</integer>";
        env.writeFile(QStringLiteral("result.plist"), xml + "</dict></plist>\n");
    }

    FileRef input(const QString& name, const QByteArray& content = "words") const
    {
        return *FileRef::fromPath(env.writeFile(QStringLiteral("input/") + name, content));
    }

    int indexerRuns() const
    {
        QFile calls(callsPath());
        return calls.open(QIODevice::ReadOnly) ? int(calls.readAll().count('\n')) : 0;
    }

    WordContext context()
    {
        return {desktop, preferences, env.root() + QStringLiteral("/indexer"), env.tempFolder(),
                [this](const QString& text) { handedOver.append(text); }};
    }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    PreferenceStore preferences;
    QStringList handedOver;
};

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

QStringList kinds(const testing::RecordingDesktop& desktop)
{
    QStringList result;
    for (const auto& event : desktop.events())
        result.append(event.kind);
    return result;
}

} // namespace

class ProcessFileTest : public QObject {
    Q_OBJECT

private slots:
    void wordListIsWrittenThenOpened()
    {
        World world;
        world.setTable({{QStringLiteral("bb"), 3}, {QStringLiteral("a"), 2}});
        const FileRef input = world.input(QStringLiteral("Report.pdf"));
        ProcessFile(world.context(), input, ProcessMode::ExtractWords);

        const QString output = world.outputFolder() + QStringLiteral("/Report.pdf.txt");
        QCOMPARE(readAll(output), QByteArray("a (2)\nbb (3)\n"));
        QCOMPARE(world.desktop.texts(QStringLiteral("editor")), QStringList{output});
        // The editor gets the file first, then the application takes the front again.
        const QStringList order = kinds(world.desktop);
        QVERIFY(order.indexOf(QStringLiteral("editor")) < order.indexOf(QStringLiteral("raise")));
        QCOMPARE(order.count(QStringLiteral("raise")), 1);
    }

    void noWordsLeavesTheEmptyListAndOpensNothing()
    {
        World world;
        world.setTable({});
        const QString output = world.outputFolder() + QStringLiteral("/notes.txt.txt");
        // An earlier list is replaced before the indexer runs.
        world.env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt"),
                            "stale list");
        ProcessFile(world.context(), world.input(QStringLiteral("notes.txt")),
                    ProcessMode::ExtractWords);
        QVERIFY(QFileInfo(output).isFile());
        QCOMPARE(QFileInfo(output).size(), 0);
        QCOMPARE(world.indexerRuns(), 1);
        QVERIFY(world.desktop.texts(QStringLiteral("editor")).isEmpty());
        QVERIFY(world.desktop.texts(QStringLiteral("raise")).isEmpty());
    }

    void unplaceableListStopsBeforeIndexing()
    {
        World world;
        world.setTable({{QStringLiteral("a"), 1}});
        world.env.writeFile(QStringLiteral("data/Okaluna Software"), "a file, not a folder");
        ProcessFile(world.context(), world.input(QStringLiteral("x")), ProcessMode::ExtractWords);
        QCOMPARE(world.indexerRuns(), 0);
        QVERIFY(world.desktop.events().isEmpty());
    }

    void counts_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QString>("words");
        QTest::addColumn<QString>("characters");

        QTest::newRow("occurrences, not distinct words")
            << Table{{QStringLiteral("a"), 2}, {QStringLiteral("bb"), 3}}
            << QStringLiteral("Word count: 5") << QStringLiteral("Content character count: 8");
        QTest::newRow("empty table") << Table{} << QStringLiteral("Word count: 0")
                                     << QStringLiteral("Content character count: 0");
        QTest::newRow("UTF-16 units")
            << Table{{QStringLiteral("\u65e5\u672c"), 1}, {QStringLiteral("\U0001F600"), 2}}
            << QStringLiteral("Word count: 3") << QStringLiteral("Content character count: 6");
        QTest::newRow("beyond 32 bits")
            << Table{{QStringLiteral("a"), 2000000000}, {QStringLiteral("b"), 2000000000}}
            << QStringLiteral("Word count: 4000000000")
            << QStringLiteral("Content character count: 4000000000");
    }
    void counts()
    {
        QFETCH(Table, table);
        QFETCH(QString, words);
        QFETCH(QString, characters);
        World world;
        world.setTable(table);
        const FileRef input = world.input(QStringLiteral("doc.txt"));
        ProcessFile(world.context(), input, ProcessMode::WordCount);
        ProcessFile(world.context(), input, ProcessMode::CharCount);
        QCOMPARE(world.desktop.alerts(), (QStringList{words, characters}));
        // Counting writes no list.
        QVERIFY(!QFileInfo::exists(world.outputFolder()));
    }

    void otherModesDoNothing_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode : {0, 5, 6, 7, -1})
            QTest::addRow("mode %d", mode) << mode;
    }
    void otherModesDoNothing()
    {
        QFETCH(int, mode);
        World world;
        world.setTable({{QStringLiteral("a"), 1}});
        ProcessFile(world.context(), world.input(QStringLiteral("x")), ProcessMode(mode));
        QVERIFY(world.desktop.events().isEmpty());
        QCOMPARE(world.indexerRuns(), 0);
        QVERIFY(world.handedOver.isEmpty());
        QVERIFY(!QFileInfo::exists(world.outputFolder()));
    }

    void vanishedFileDoesNothing_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 1; mode <= 4; ++mode)
            QTest::addRow("mode %d", mode) << mode;
    }
    void vanishedFileDoesNothing()
    {
        QFETCH(int, mode);
        World world;
        world.setTable({{QStringLiteral("a"), 1}});
        const FileRef input = world.input(QStringLiteral("gone"), "SGVsbG8=");
        QVERIFY(QFile::remove(input.path()));
        ProcessFile(world.context(), input, ProcessMode(mode));
        QVERIFY(world.desktop.events().isEmpty());
        QVERIFY(world.handedOver.isEmpty());
        QCOMPARE(world.indexerRuns(), 0);
    }

    void readingAsText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");

        QTest::newRow("ASCII Base64") << QByteArray("SGVsbG8=\n") << QStringLiteral("SGVsbG8=\n");
        QTest::newRow("UTF-8") << QByteArray("caf\xc3\xa9 na\xc3\xafve r\xc3\xa9sum\xc3\xa9")
                               << QStringLiteral("caf\u00e9 na\u00efve r\u00e9sum\u00e9");
        QTest::newRow("not UTF-8: read as single bytes")
            << QByteArray("caf\xe9 cr\xe8me br\xfbl\xe9")
            << QStringLiteral("caf\u00e9 cr\u00e8me br\u00fbl\u00e9");
        QTest::newRow("UTF-16 with a byte-order mark")
            << QByteArray("\xff\xfeQ\0U\0J\0D\0", 10) << QStringLiteral("QUJD");
        QTest::newRow("empty file") << QByteArray() << QString();
    }
    void readingAsText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        World world;
        const FileRef input = world.input(QStringLiteral("encoded"), bytes);
        QCOMPARE(ReadFileAsText(input.path()), std::optional<QString>(expected));

        ProcessFile(world.context(), input, ProcessMode::DecodeBase64);
        QCOMPARE(world.handedOver, QStringList{expected});
        QVERIFY(world.desktop.events().isEmpty());
    }

    void unreadableFileIsNotHandedOn()
    {
        World world;
        const auto folder = FileRef::fromPath(world.env.home());
        QVERIFY(!ReadFileAsText(folder->path()));
        ProcessFile(world.context(), *folder, ProcessMode::DecodeBase64);
        QVERIFY(world.handedOver.isEmpty());
    }

    // The whole way: a file of Base64 text becomes a named, opened PNG.
    void base64FileBecomesAPicture()
    {
        World world;
        world.env.writeFile(QStringLiteral("home/.mime.types"), "image/png png\n");
        QImage image(6, 6, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        QVERIFY(image.save(&buffer, "PNG"));

        const QString chosen = world.env.root() + QStringLiteral("/DecodedBase64");
        world.desktop.answerSavePanel(chosen);
        WordContext context = world.context();
        context.decodeBase64Text = [&world](const QString& text) {
            DecodeAndSaveBase64(world.desktop, text);
        };
        ProcessFile(context, world.input(QStringLiteral("mail.b64"), png.toBase64()),
                    ProcessMode::DecodeBase64);

        QCOMPARE(readAll(chosen + QStringLiteral(".png")), png);
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")),
                 QStringList{chosen + QStringLiteral(".png")});
    }
};

QTEST_GUILESS_MAIN(ProcessFileTest)
#include "ProcessFileTest.moc"
