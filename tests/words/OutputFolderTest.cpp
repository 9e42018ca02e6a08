#include "words/OutputFolder.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tallyvox;

namespace {

QString outputFolder(const testing::TestEnvironment& env)
{
    return env.dataHome() + QStringLiteral("/Okaluna Software/Tallyvox");
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// Whether CreateOutputFile(name) fails and gives no file.
bool refused(const QString& name)
{
    std::optional<FileRef> file;
    return CreateOutputFile(name, file) != noErr && !file;
}

} // namespace

class OutputFolderTest : public QObject {
    Q_OBJECT

private slots:
    // The list is made on a first run and replaces any old item of its name: deleted, then
    // made afresh and empty.
    void listIsMadeEmpty_data()
    {
        QTest::addColumn<QString>("existing");
        QTest::newRow("no data folder yet") << QStringLiteral("no data folder");
        QTest::newRow("fresh account") << QString();
        QTest::newRow("an earlier list") << QStringLiteral("file");
        QTest::newRow("an empty folder of that name") << QStringLiteral("folder");
        QTest::newRow("a dangling link") << QStringLiteral("link");
    }
    void listIsMadeEmpty()
    {
        QFETCH(QString, existing);
        testing::TestEnvironment env;
        const QString path = outputFolder(env) + QStringLiteral("/notes.txt.txt");
        if (existing == QLatin1String("no data folder")) {
            QVERIFY(QDir(env.dataHome()).removeRecursively());
        } else if (!existing.isEmpty()) {
            QVERIFY(QDir().mkpath(outputFolder(env)));
        }
        if (existing == QLatin1String("file")) {
            env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt"), "old");
        } else if (existing == QLatin1String("folder")) {
            QVERIFY(QDir().mkdir(path));
        } else if (existing == QLatin1String("link")) {
            QVERIFY(QFile::link(env.root() + QStringLiteral("/nowhere"), path));
        }

        std::optional<FileRef> file;
        QCOMPARE(CreateOutputFile(QStringLiteral("notes.txt.txt"), file), noErr);
        QVERIFY(file);
        QCOMPARE(file->path(), path);
        const QFileInfo info(path);
        QVERIFY(info.isFile() && !info.isSymLink());
        QCOMPARE(info.size(), 0);
        QCOMPARE(QDir(outputFolder(env))
                     .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System),
                 QStringList{QStringLiteral("notes.txt.txt")});
    }

    // blocker: a file written where a folder must be ("blocker": the data folder's parent).
    // Only "not found" makes a folder; any other lookup result counts as found.
    void placementFails_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("blocker");
        QTest::addColumn<bool>("makerFound");
        QTest::addColumn<bool>("outputFound");
        const QString x = QStringLiteral("x.txt");
        const QString notes = QStringLiteral("notes.txt.txt");
        QTest::newRow("name longer than the file system takes")
            << QString(300, QLatin1Char('n')) << QString() << true << true;
        QTest::newRow("name with a slash")
            << QStringLiteral("../escape.txt") << QString() << true << true;
        QTest::newRow("empty name") << QString() << QString() << true << true;
        // A folder with something in it cannot be deleted, by root either: nothing is lost.
        QTest::newRow("full folder of that name")
            << notes << QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt/inside")
            << true << true;
        QTest::newRow("data folder cannot be made")
            << x << QStringLiteral("blocker") << false << false;
        QTest::newRow("maker folder is a file")
            << x << QStringLiteral("data/Okaluna Software") << true << false;
        QTest::newRow("output folder is a file")
            << x << QStringLiteral("data/Okaluna Software/Tallyvox") << true << true;
    }
    void placementFails()
    {
        QFETCH(QString, name);
        QFETCH(QString, blocker);
        QFETCH(bool, makerFound);
        QFETCH(bool, outputFound);
        testing::TestEnvironment env;
        const QString kept = blocker.isEmpty() ? QString() : env.writeFile(blocker, "kept");
        if (blocker == QLatin1String("blocker")) {
            qputenv("XDG_DATA_HOME", QFile::encodeName(kept + QStringLiteral("/d")));
        }
        std::optional<FileRef> folder;
        QCOMPARE(FindOrCreateMakerFolder(folder), makerFound);
        QCOMPARE(FindOrCreateOutputFolder(folder) == noErr, outputFound);
        QVERIFY(refused(name));
        if (!kept.isEmpty()) {
            QCOMPARE(readAll(kept), QByteArray("kept"));
        }
        QVERIFY(!QFile::exists(env.dataHome() + QStringLiteral("/Okaluna Software/escape.txt")));
        if (blocker.isEmpty()) {
            QVERIFY(QDir(outputFolder(env)).isEmpty());
        }
    }

    void readOnlyOutputFolder_data()
    {
        QTest::addColumn<bool>("oldList");
        QTest::newRow("new list cannot be made") << false;
        QTest::newRow("old list cannot be deleted") << true;
    }
    void readOnlyOutputFolder()
    {
        QFETCH(bool, oldList);
        testing::TestEnvironment env;
        const QString path =
            env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/x.txt"), "old");
        if (!oldList) {
            QVERIFY(QFile::remove(path));
        }
        // Reachable for an unprivileged child, writable by nobody.
        for (QString dir = outputFolder(env); dir.size() >= env.root().size();
             dir = QFileInfo(dir).path()) {
            QVERIFY(::chmod(QFile::encodeName(dir).constData(), 0755) == 0);
        }
        QVERIFY(::chmod(QFile::encodeName(outputFolder(env)).constData(), 0555) == 0);

        // The child gives up root's power to ignore permissions: root becomes nobody.
        const pid_t child = ::fork();
        if (child == 0) {
            if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
                ::_exit(98);
            }
            ::_exit(refused(QStringLiteral("x.txt")) ? 0 : 1);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        ::chmod(QFile::encodeName(outputFolder(env)).constData(), 0755);
        QVERIFY(WIFEXITED(status));
        QCOMPARE(WEXITSTATUS(status), 0);
        QCOMPARE(readAll(path), oldList ? QByteArray("old") : QByteArray("<unreadable>"));
    }
};

QTEST_GUILESS_MAIN(OutputFolderTest)
#include "OutputFolderTest.moc"
