// The real program in console mode, set up as a hostile local user or a careless one
// would leave things: what does the user get?

#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray helloList = "hello (2)\nworld (1)\n";
// What another user plants; it must never show up in a list.
const QByteArray plantedResult =
    "<?xml version=\"1.0\"?>\n<plist version=\"1.0\"><dict>"
    "<key>INJECTEDBYNOBODY</key><integer>42</integer></dict></plist>\n";
constexpr uid_t otherUser = 65534;

// A tmpfs too small for the list, unmounted when the test ends.
struct SmallDisk {
    explicit SmallDisk(const QString& path) : m_path(QFile::encodeName(path))
    {
        QDir().mkpath(path);
        mounted = ::mount("tmpfs", m_path.constData(), "tmpfs", 0, "size=64k") == 0;
    }
    ~SmallDisk()
    {
        if (mounted) {
            ::umount(m_path.constData());
        }
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    bool mounted = false;

private:
    QByteArray m_path;
};

} // namespace

class HostileSetupTest : public QObject {
    Q_OBJECT

private slots:
    void hostileSetups_data()
    {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("list");
        QTest::addColumn<QString>("said"); // a part of what the program printed
        QTest::newRow("a result planted in a shared sticky TMPDIR of another user")
            << u"shared"_s << 0 << helloList << QString();
        QTest::newRow("the usual temporary folder belongs to another user")
            << u"squatted"_s << 0 << helloList << u"belongs to another user"_s;
        // Refused unread: the file could not be processed, so the status says so.
        QTest::newRow("a named pipe as the document")
            << u"fifo"_s << 1 << QByteArray() << u"is a named pipe, not a document"_s;
        QTest::newRow("/dev/zero as the document")
            << u"device"_s << 1 << QByteArray() << u"is a device, not a document"_s;
        QTest::newRow("garbage settings") << u"garbage"_s << 0 << helloList << QString();
        QTest::newRow("settings 65,000 levels deep") << u"deep"_s << 0 << helloList << QString();
        QTest::newRow("a full disk") << u"full"_s << 1 << QByteArray() << u"could not be written"_s;
    }
    void hostileSetups()
    {
        QFETCH(QString, setup);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, list);
        QFETCH(QString, said);
        tallyvox::testing::TestEnvironment env;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        QString input = env.writeFile(u"in/hello.txt"_s, "hello world hello");
        const QString shared = env.root() + u"/shared"_s;
        const QByteArray config = "config/Okaluna Software/Tallyvox.plist";
        std::unique_ptr<SmallDisk> disk;

        if (setup == u"shared") {
            env.writeFile(u"shared/index-1964.dat"_s, plantedResult);
            if (::chown(QFile::encodeName(shared).constData(), otherUser, otherUser) != 0) {
                qInfo("not root: the shared folder stays this user's, sticky and open to all");
            }
            QCOMPARE(::chmod(QFile::encodeName(shared).constData(), 01777), 0);
            environment.insert(u"TMPDIR"_s, shared);
        } else if (setup == u"squatted") {
            const QString runtime = env.root() + u"/run"_s;
            QDir().mkpath(runtime + u"/tallyvox"_s);
            env.writeFile(u"run/tallyvox/index-1964.dat"_s, plantedResult);
            if (::chown(QFile::encodeName(runtime + u"/tallyvox"_s).constData(), otherUser,
                        otherUser) != 0) {
                QSKIP("chown needs root");
            }
            environment.remove(u"TMPDIR"_s);
            environment.insert(u"XDG_RUNTIME_DIR"_s, runtime);
        } else if (setup == u"fifo") {
            input = env.root() + u"/in/pipe"_s;
            QCOMPARE(::mkfifo(QFile::encodeName(input).constData(), 0600), 0);
        } else if (setup == u"device") {
            input = u"/dev/zero"_s;
        } else if (setup == u"garbage") {
            env.writeFile(QString::fromLatin1(config), "\x00\xff garbage");
        } else if (setup == u"deep") {
            env.writeFile(QString::fromLatin1(config), "<plist><dict><key>SortBy</key>" +
                                                           QByteArray("<array>").repeated(65'000) +
                                                           QByteArray("</array>").repeated(65'000) +
                                                           "</dict></plist>");
        } else if (setup == u"full") {
            disk = std::make_unique<SmallDisk>(env.dataHome());
            if (!disk->mounted) {
                QSKIP("no full-disk case: mounting a tmpfs needs root (CAP_SYS_ADMIN)");
            }
            QByteArray words;
            for (int i = 0; i < 20'000; ++i) {
                words += "word" + QByteArray::number(i) + ' ';
            }
            input = env.writeFile(u"in/hello.txt"_s, words);
        }

        QProcess tallyvox;
        tallyvox.setProcessEnvironment(environment);
        tallyvox.start(QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox"), {u"--console"_s, input});
        QVERIFY(tallyvox.waitForFinished(30'000));
        const QString printed =
            QString::fromUtf8(tallyvox.readAllStandardOutput() + tallyvox.readAllStandardError());
        QVERIFY2(printed.contains(said), qPrintable(printed));
        QVERIFY2(!printed.contains(u"INJECTED"_s), qPrintable(printed));
        QCOMPARE(tallyvox.exitStatus(), QProcess::NormalExit);
        QCOMPARE(tallyvox.exitCode(), exitCode);

        QFile written(env.dataHome() + u"/Okaluna Software/Tallyvox/"_s +
                      QFileInfo(input).fileName() + u".txt"_s);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), list);
        if (setup == u"shared") {
            // The folder made for the run is gone with it (Qt may leave a runtime-<user>).
            QCOMPARE(QDir(shared).entryList({u"*tallyvox*"_s, u"index-*"_s},
                                            QDir::AllEntries | QDir::NoDotAndDotDot),
                     QStringList{u"index-1964.dat"_s});
        }
    }
};

QTEST_GUILESS_MAIN(HostileSetupTest)
#include "HostileSetupTest.moc"
