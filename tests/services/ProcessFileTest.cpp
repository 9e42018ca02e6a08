#include "services/ProcessFile.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordContext.h"

#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

#include <sys/stat.h>

using namespace tallyvox;

namespace {

using Table = QList<QPair<QString, qint64>>;

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// A world whose indexer hands over a prepared word table, so each test decides exactly
// what the "document" holds.
struct World {
    explicit World(const Table& table = {})
    {
        WordTable words;
        for (const auto& [word, count] : table) {
            words.insert(word, count);
        }
        indexer.setDefaultTable(words);
    }

    QString output(const QString& name = {}) const
    {
        return env.dataHome() + QStringLiteral("/Okaluna Software/Tallyvox") +
               (name.isEmpty() ? QString() : QLatin1Char('/') + name);
    }
    FileRef input(const QString& name, const QByteArray& content = "words") const
    {
        return *FileRef::fromPath(env.writeFile(QStringLiteral("input/") + name, content));
    }
    int indexerRuns() const { return int(indexer.calls().size()); }
    // What the user would notice: everything but log lines.
    QStringList shown() const
    {
        QStringList kinds;
        for (const auto& event : desktop.events()) {
            if (event.kind != QLatin1String("log")) {
                kinds.append(event.kind);
            }
        }
        return kinds;
    }
    // The operation from start to end, as the batch run or a service does it.
    void process(const FileRef& file, int mode) const
    {
        const std::unique_ptr<FileJob> job = ProcessFile(context, file, ProcessMode(mode));
        if (!job) {
            return;
        }
        QSignalSpy ready(job.get(), &FileJob::ready);
        job->start();
        QVERIFY(ready.wait(5000));
        job->commit();
    }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    PreferenceStore preferences;
    testing::FakeIndexer indexer;
    WordContext context{desktop, preferences, indexer, env.tempFolder()};
};

} // namespace

class ProcessFileTest : public QObject {
    Q_OBJECT

private slots:
    void wordListIsWrittenThenOpened()
    {
        World world({{QStringLiteral("bb"), 3}, {QStringLiteral("a"), 2}});
        world.process(world.input(QStringLiteral("Report.pdf")), 1);
        const QString output = world.output(QStringLiteral("Report.pdf.txt"));
        QCOMPARE(readAll(output), QByteArray("a (2)\nbb (3)\n"));
        // The editor gets the file first, then the application takes the front again.
        QStringList kinds;
        for (const auto& [kind, text] : world.desktop.events()) {
            if (kind != QLatin1String("log")) {
                kinds.append(kind + QLatin1Char(' ') + text);
            }
        }
        QCOMPARE(kinds,
                 (QStringList{QStringLiteral("editor ") + output, QStringLiteral("raise ")}));
    }

    void noWordsLeavesTheEmptyListAndOpensNothing()
    {
        World world;
        // An earlier list is replaced before the indexer runs.
        world.env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt"),
                            "stale");
        world.process(world.input(QStringLiteral("notes.txt")), 1);
        QCOMPARE(readAll(world.output(QStringLiteral("notes.txt.txt"))), QByteArray());
        QCOMPARE(world.indexerRuns(), 1);
        QCOMPARE(world.desktop.texts(QStringLiteral("editor")) +
                     world.desktop.texts(QStringLiteral("raise")),
                 QStringList());
    }

    void counts_data()
    {
        QTest::addColumn<Table>("table");
        QTest::addColumn<QStringList>("alerts");
        const auto alerts = [](const char* words, const char* characters) {
            return QStringList{QStringLiteral("Word count: ") + QLatin1String(words),
                               QStringLiteral("Content character count: ") +
                                   QLatin1String(characters)};
        };
        QTest::newRow("occurrences, not distinct words")
            << Table{{QStringLiteral("a"), 2}, {QStringLiteral("bb"), 3}} << alerts("5", "8");
        QTest::newRow("empty table") << Table{} << alerts("0", "0");
        QTest::newRow("UTF-16 units")
            << Table{{QStringLiteral("\u65e5\u672c"), 1}, {QStringLiteral("\U0001F600"), 2}}
            << alerts("3", "6");
        QTest::newRow("beyond 32 bits")
            << Table{{QStringLiteral("a"), 2000000000}, {QStringLiteral("b"), 2000000000}}
            << alerts("4000000000", "4000000000");
    }
    void counts()
    {
        QFETCH(Table, table);
        QFETCH(QStringList, alerts);
        World world(table);
        const FileRef input = world.input(QStringLiteral("doc.txt"));
        world.process(input, 2);
        world.process(input, 3);
        QCOMPARE(world.desktop.alerts(), alerts);
        QVERIFY(!QFileInfo::exists(world.output())); // counting writes no list
    }

    // Modes outside 1 to 4, a file gone before it is processed, a folder given as the file
    // to decode, and a list that cannot be placed: nothing at all happens.
    void nothingHappens_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("input"); // "file", "gone", "folder", "unplaceable"
        for (int mode : {0, 5, 6, 7, -1}) {
            QTest::addRow("mode %d", mode) << mode << QStringLiteral("file");
        }
        for (int mode = 1; mode <= 4; ++mode) {
            QTest::addRow("vanished file, mode %d", mode) << mode << QStringLiteral("gone");
        }
        QTest::newRow("folder to decode") << 4 << QStringLiteral("folder");
        // Opening it must not wait for a writer.
        QTest::newRow("named pipe to decode") << 4 << QStringLiteral("fifo");
        QTest::newRow("maker folder is a file") << 1 << QStringLiteral("unplaceable");
    }
    void nothingHappens()
    {
        QFETCH(int, mode);
        QFETCH(QString, input);
        World world({{QStringLiteral("a"), 1}});
        const FileRef file = input == QLatin1String("folder")
                                 ? *FileRef::fromPath(world.env.home())
                                 : world.input(QStringLiteral("x"), "SGVsbG8=");
        if (input == QLatin1String("gone") || input == QLatin1String("fifo")) {
            QVERIFY(QFile::remove(file.path()));
        }
        if (input == QLatin1String("fifo")) {
            QCOMPARE(::mkfifo(QFile::encodeName(file.path()).constData(), 0600), 0);
        }
        if (input == QLatin1String("unplaceable")) {
            world.env.writeFile(QStringLiteral("data/Okaluna Software"), "a file, not a folder");
        }
        world.process(file, mode);
        QCOMPARE(world.shown(), QStringList());
        QCOMPARE(world.indexerRuns(), 0);
        QVERIFY(!QFileInfo::exists(world.output()));
    }

    // Read whole, its text would take several times its size: refused with a word why.
    void fileTooLargeToDecodeGetsAnAlert()
    {
        World world;
        const FileRef file = world.input(QStringLiteral("big.b64"));
        QVERIFY(QFile::resize(file.path(), largestFileReadAsText + 1));
        world.process(file, 4);
        QCOMPARE(
            world.desktop.alerts(),
            QStringList{QString::fromUtf16(fileTooLargeMessage).arg(QStringLiteral("big.b64"))});
        QVERIFY(!ReadFileAsText(file.path()));
        QVERIFY(QFile::resize(file.path(), largestFileReadAsText));
        QVERIFY(ReadFileAsText(file.path()));
    }

    void readingAsText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        // Text outside ASCII decodes to no bytes at all, so an empty file is saved.
        QTest::addColumn<QByteArray>("decoded");
        QTest::newRow("UTF-8") << QByteArray("caf\xc3\xa9 na\xc3\xafve r\xc3\xa9sum\xc3\xa9")
                               << QStringLiteral("caf\u00e9 na\u00efve r\u00e9sum\u00e9")
                               << QByteArray();
        QTest::newRow("not UTF-8: read as single bytes")
            << QByteArray("caf\xe9 cr\xe8me br\xfbl\xe9")
            << QStringLiteral("caf\u00e9 cr\u00e8me br\u00fbl\u00e9") << QByteArray();
        QTest::newRow("UTF-16 with a byte-order mark")
            << QByteArray("\xff\xfeQ\0U\0J\0D\0", 10) << QStringLiteral("QUJD")
            << QByteArray("ABC");
        QTest::newRow("empty file") << QByteArray() << QString() << QByteArray();
    }
    void readingAsText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QFETCH(QByteArray, decoded);
        World world;
        const FileRef input = world.input(QStringLiteral("encoded"), bytes);
        QCOMPARE(ReadFileAsText(input.path()), std::optional<QString>(expected));
        // Mode 4 hands the text to decode-and-save.
        const QString saved = world.env.root() + QStringLiteral("/saved");
        world.desktop.answerSavePanel(saved);
        world.process(input, 4);
        QCOMPARE(world.desktop.texts(QStringLiteral("savePanel")),
                 QStringList{QStringLiteral("DecodedBase64")});
        QCOMPARE(readAll(saved), decoded);
    }
};

QTEST_GUILESS_MAIN(ProcessFileTest)
#include "ProcessFileTest.moc"
