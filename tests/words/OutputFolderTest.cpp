#include "words/OutputFolder.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <functional>
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

// Runs body in a child process without root's power to ignore permissions, and gives
// its exit code. Root becomes nobody there; anyone else stays who they are.
int exitCodeWithoutPrivileges(const std::function<int()>& body)
{
    const pid_t child = ::fork();
    if (child == 0) {
        if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            ::_exit(98);
        ::_exit(body());
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 99;
}

} // namespace

class OutputFolderTest : public QObject {
    Q_OBJECT

private slots:
    void firstRunMakesEachLevel_data()
    {
        QTest::addColumn<bool>("dataHomeExists");
        QTest::newRow("fresh account") << true;
        QTest::newRow("no data folder yet") << false;
    }
    void firstRunMakesEachLevel()
    {
        QFETCH(bool, dataHomeExists);
        testing::TestEnvironment env;
        if (!dataHomeExists)
            QVERIFY(QDir(env.dataHome()).removeRecursively());

        std::optional<FileRef> file;
        QCOMPARE(CreateOutputFile(QStringLiteral("Report.pdf.txt"), file), noErr);
        QVERIFY(file);
        QCOMPARE(file->path(), outputFolder(env) + QStringLiteral("/Report.pdf.txt"));
        QCOMPARE(QFileInfo(file->path()).size(), 0);
        QVERIFY(QFileInfo(outputFolder(env)).isDir());
    }

    void oldListIsReplaced_data()
    {
        QTest::addColumn<QString>("existing"); // "file", "empty folder", "link"
        QTest::newRow("an earlier list") << QStringLiteral("file");
        QTest::newRow("an empty folder of that name") << QStringLiteral("empty folder");
        QTest::newRow("a dangling link") << QStringLiteral("link");
    }
    void oldListIsReplaced()
    {
        QFETCH(QString, existing);
        testing::TestEnvironment env;
        const QString path = outputFolder(env) + QStringLiteral("/notes.txt.txt");
        QVERIFY(QDir().mkpath(outputFolder(env)));
        if (existing == QLatin1String("file"))
            env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt"), "old");
        else if (existing == QLatin1String("empty folder"))
            QVERIFY(QDir().mkdir(path));
        else
            QVERIFY(QFile::link(env.root() + QStringLiteral("/nowhere"), path));

        std::optional<FileRef> file;
        QCOMPARE(CreateOutputFile(QStringLiteral("notes.txt.txt"), file), noErr);
        const QFileInfo info(path);
        QVERIFY(info.isFile() && !info.isSymLink());
        QCOMPARE(info.size(), 0);
        QCOMPARE(QDir(outputFolder(env))
                     .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System),
                 QStringList{QStringLiteral("notes.txt.txt")});
    }

    // A folder with something in it cannot be deleted, by root either.
    void oldItemThatCannotBeDeletedStays()
    {
        testing::TestEnvironment env;
        const QString kept = env.writeFile(
            QStringLiteral("data/Okaluna Software/Tallyvox/notes.txt.txt/inside"), "keep me");
        std::optional<FileRef> file;
        QVERIFY(CreateOutputFile(QStringLiteral("notes.txt.txt"), file) != noErr);
        QVERIFY(!file);
        QCOMPARE(readAll(kept), QByteArray("keep me"));
    }

    void refusedNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("longer than the file system takes") << QString(300, QLatin1Char('n'));
        QTest::newRow("with a slash") << QStringLiteral("../escape.txt");
        QTest::newRow("empty") << QString();
    }
    void refusedNames()
    {
        QFETCH(QString, name);
        testing::TestEnvironment env;
        std::optional<FileRef> file;
        QVERIFY(CreateOutputFile(name, file) != noErr);
        QVERIFY(!file);
        QVERIFY(QDir(outputFolder(env)).isEmpty());
        QVERIFY(!QFile::exists(env.dataHome() + QStringLiteral("/Okaluna Software/escape.txt")));
    }

    void placementFails_data()
    {
        QTest::addColumn<QString>("blocker"); // a file where a folder must be
        QTest::addColumn<bool>("makerFound");
        QTest::addColumn<bool>("outputFound");
        QTest::newRow("data folder cannot be made") << QStringLiteral("data") << false << false;
        QTest::newRow("maker folder is a file")
            << QStringLiteral("data/Okaluna Software") << true << false;
        // The lookup does not ask what kind of item it found; making the file fails.
        QTest::newRow("output folder is a file")
            << QStringLiteral("data/Okaluna Software/Tallyvox") << true << true;
    }
    void placementFails()
    {
        QFETCH(QString, blocker);
        QFETCH(bool, makerFound);
        QFETCH(bool, outputFound);
        testing::TestEnvironment env;
        if (blocker == QLatin1String("data")) {
            QVERIFY(QDir(env.dataHome()).removeRecursively());
            env.writeFile(QStringLiteral("blocker"), "x");
            qputenv("XDG_DATA_HOME", QFile::encodeName(env.root() + QStringLiteral("/blocker/d")));
        } else {
            env.writeFile(blocker, "x");
        }
        std::optional<FileRef> maker;
        QCOMPARE(FindOrCreateMakerFolder(maker), makerFound);
        std::optional<FileRef> folder;
        QCOMPARE(FindOrCreateOutputFolder(folder) == noErr, outputFound);
        std::optional<FileRef> file;
        QVERIFY(CreateOutputFile(QStringLiteral("x.txt"), file) != noErr);
        QVERIFY(!file);
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
        QVERIFY(QDir().mkpath(outputFolder(env)));
        const QString path = outputFolder(env) + QStringLiteral("/x.txt");
        if (oldList)
            env.writeFile(QStringLiteral("data/Okaluna Software/Tallyvox/x.txt"), "old");
        // Reachable for the unprivileged child, writable by nobody.
        for (QString dir = outputFolder(env); dir.startsWith(env.root());
             dir = QFileInfo(dir).path())
            QVERIFY(::chmod(QFile::encodeName(dir).constData(), 0755) == 0);
        QVERIFY(::chmod(QFile::encodeName(env.root()).constData(), 0755) == 0);
        QVERIFY(::chmod(QFile::encodeName(outputFolder(env)).constData(), 0555) == 0);

        const int code = exitCodeWithoutPrivileges([] {
            std::optional<FileRef> file;
            return CreateOutputFile(QStringLiteral("x.txt"), file) != noErr && !file ? 0 : 1;
        });
        ::chmod(QFile::encodeName(outputFolder(env)).constData(), 0755);
        QCOMPARE(code, 0);
        QCOMPARE(QFile::exists(path), oldList);
        if (oldList)
            QCOMPARE(readAll(path), QByteArray("old"));
    }
};

QTEST_GUILESS_MAIN(OutputFolderTest)
#include "OutputFolderTest.moc"
