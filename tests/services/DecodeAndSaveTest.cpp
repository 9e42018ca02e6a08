#include "services/DecodeAndSave.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

#include <QProcess>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

QByteArray imageBytes(const char* format)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"2\" height=\"2\">"
                       "<rect width=\"2\" height=\"2\"/></svg>\n";

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// A world with its own extension map and a folder for saved files, where the save panel
// answers with answer (a folder called "folder" stands in the way).
struct World {
    World(bool graphic, const QString& text, const QString& answer)
    {
        env.writeFile(QStringLiteral("home/.mime.types"),
                      "image/png png\nimage/jpeg jpg jpeg\nimage/svg+xml svg\n");
        QDir().mkpath(path(QStringLiteral("folder")));
        desktop.answerSavePanel(path(answer));
        graphic ? SaveGraphicData(desktop, text) : DecodeAndSaveBase64(desktop, text);
    }
    QString folder() const { return env.root() + QStringLiteral("/saved"); }
    QString path(const QString& name) const { return folder() + QLatin1Char('/') + name; }
    QStringList saved() const { return QDir(folder()).entryList(QDir::Files, QDir::Name); }

    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
};

} // namespace

class DecodeAndSaveTest : public QObject {
    Q_OBJECT

private slots:
    void saves_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("chosenName");
        QTest::addColumn<QByteArray>("written");
        QTest::addColumn<QString>("finalName");

        const QByteArray png = imageBytes("PNG");
        QTest::newRow("PNG gets its extension")
            << false << QString::fromLatin1(png.toBase64()) << QStringLiteral("DecodedBase64")
            << png << QStringLiteral("DecodedBase64.png");
        QTest::newRow("PNG named .PNG keeps its name")
            << false << QString::fromLatin1(png.toBase64()) << QStringLiteral("shot.PNG") << png
            << QStringLiteral("shot.PNG");
        // Base64 as mail carries it: in lines, the last one ending in a line break after a
        // complete group, which loses the final byte of the JPEG.
        const QByteArray jpeg = imageBytes("JPEG");
        const qsizetype whole = jpeg.size() - jpeg.size() % 3;
        QString mailed;
        const QByteArray base64 = jpeg.left(whole).toBase64();
        for (qsizetype i = 0; i < base64.size(); i += 76) {
            mailed += QString::fromLatin1(base64.mid(i, 76)) + QStringLiteral("\r\n");
        }
        QTest::newRow("JPEG in mail lines") << false << mailed << QStringLiteral("photo")
                                            << jpeg.left(whole - 1) << QStringLiteral("photo.jpg");
        QTest::newRow("outside ASCII saves an empty file")
            << false << QStringLiteral("SGVsbG8=\u00e9") << QStringLiteral("empty") << QByteArray()
            << QStringLiteral("empty");
        // A graphic is opened by the path as chosen, deliberately even after a rename.
        QTest::newRow("SVG graphic renamed")
            << true << QString::fromLatin1(svg) << QStringLiteral("Graphic") << svg
            << QStringLiteral("Graphic.svg");
        QTest::newRow("graphic text saved as UTF-8")
            << true << QStringLiteral("caf\u00e9 \U0001F600") << QStringLiteral("note")
            << QByteArray("caf\xc3\xa9 \xf0\x9f\x98\x80") << QStringLiteral("note");
    }
    void saves()
    {
        QFETCH(bool, graphic);
        QFETCH(QString, text);
        QFETCH(QString, chosenName);
        QFETCH(QByteArray, written);
        QFETCH(QString, finalName);
        World world(graphic, text, chosenName);
        QCOMPARE(
            world.desktop.texts(QStringLiteral("savePanel")),
            QStringList{graphic ? QStringLiteral("Graphic") : QStringLiteral("DecodedBase64")});
        QCOMPARE(world.saved(), QStringList{finalName});
        QCOMPARE(readAll(world.path(finalName)), written);
        QCOMPARE(world.desktop.texts(QStringLiteral("openFile")),
                 QStringList{world.path(graphic ? chosenName : finalName)});
        QVERIFY(world.desktop.alerts().isEmpty());
    }

    void nothingWritten_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("events");

        QTest::newRow("not Base64")
            << false << QStringLiteral(" -!\n") << QStringLiteral("x")
            << QStringList{QStringLiteral("alert The text could not be base64 decoded")};
        QTest::newRow("no UTF-8 form")
            << true << QStringLiteral("a") + QChar(0xd800) << QStringLiteral("x")
            << QStringList{QStringLiteral("alert The text could not be decoded as UTF8")};
    }
    void nothingWritten()
    {
        QFETCH(bool, graphic);
        QFETCH(QString, text);
        QFETCH(QString, answer);
        QFETCH(QStringList, events);
        World world(graphic, text, answer);
        QStringList seen;
        for (const auto& event : world.desktop.events()) {
            seen.append(event.kind == QLatin1String("alert")
                            ? event.kind + QLatin1Char(' ') + event.text
                            : event.kind);
        }
        QCOMPARE(seen, events);
        QCOMPARE(world.saved(), QStringList());
    }

    // What stands at the chosen path is never written through: each save is refused with a
    // failure alert, nothing is opened, and whatever was there is as it was. In a shared
    // folder another user may have put it there: in one that is open to all but not sticky
    // the kernel's protected_symlinks and protected_fifos do not stop a link from being
    // followed or a pipe from being opened, so only the refusal protects the user.
    void refusesWhatIsNoFile_data()
    {
        QTest::addColumn<bool>("graphic");
        QTest::addColumn<QString>("answer"); // in the folder
        QTest::addColumn<QString>("reason");
        QTest::addColumn<int>("shared"); // 0, or the mode of a shared folder another user
                                         // planted the link and the pipe in
        const QString link =
            QStringLiteral("it is a symbolic link, which Tallyvox does not write through");
        const QString special = QStringLiteral("it is no regular file");
        for (const bool graphic : {false, true}) {
            const char* service = graphic ? "graphic" : "decode";
            QTest::addRow("%s onto a link", service) << graphic << u"link"_s << link << 0;
            QTest::addRow("%s onto a dangling link", service)
                << graphic << u"dangling"_s << link << 0;
            QTest::addRow("%s onto a named pipe", service) << graphic << u"pipe"_s << special << 0;
            QTest::addRow("%s onto a folder", service)
                << graphic << u"folder"_s << u"a folder of that name is in the way"_s << 0;
            QTest::addRow("%s into a missing folder", service)
                << graphic << u"missing/x"_s << u"the folder \"%1/missing\" does not exist"_s << 0;
        }
        for (const bool graphic : {false, true}) {
            const char* service = graphic ? "graphic" : "decode";
            QTest::addRow("%s onto another user's link, sticky folder", service)
                << graphic << u"link"_s << link << 01777;
            QTest::addRow("%s onto another user's link, folder open to all", service)
                << graphic << u"link"_s << link << 0777;
        }
        QTest::newRow("graphic onto another user's pipe, folder open to all")
            << true << u"pipe"_s << special << 0777;
    }
    void refusesWhatIsNoFile()
    {
        QFETCH(bool, graphic);
        QFETCH(QString, answer);
        QFETCH(QString, reason);
        QFETCH(int, shared);
        const bool planted = shared != 0;
        testing::TestEnvironment env;
        const QString victim = env.writeFile(u"victim.txt"_s, "keep me");
        QString folder = env.root() + u"/saved"_s;
        QStringList plant; // the command that makes the link and the pipe, run as whom
        if (planted) {
            if (::geteuid() != 0) {
                QSKIP("acting as a second user needs root");
            }
            if (::getpwnam("nobody") == nullptr) {
                QCOMPARE(QProcess::execute(u"useradd"_s, {u"--system"_s, u"nobody"_s}), 0);
            }
            QByteArray sharedFolder("/tmp/tallyvox-shared-XXXXXX");
            QVERIFY(::mkdtemp(sharedFolder.data()) != nullptr &&
                    ::chmod(sharedFolder.constData(), mode_t(shared)) == 0);
            folder = QString::fromLocal8Bit(sharedFolder);
            plant = QStringList{u"runuser"_s, u"-u"_s, u"nobody"_s, u"--"_s};
        }
        const auto run = [&plant](QStringList command) {
            command = plant + command;
            return QProcess::execute(command.takeFirst(), command);
        };
        QVERIFY(QDir().mkpath(folder + u"/folder"_s));
        QCOMPARE(run({u"ln"_s, u"-s"_s, victim, folder + u"/link"_s}), 0);
        QCOMPARE(run({u"ln"_s, u"-s"_s, env.root() + u"/nowhere"_s, folder + u"/dangling"_s}), 0);
        QCOMPARE(run({u"mkfifo"_s, folder + u"/pipe"_s}), 0);
        struct stat before {};
        QCOMPARE(::lstat(QFile::encodeName(folder + u"/"_s + answer).constData(), &before),
                 answer.contains(u'/') ? -1 : 0);

        testing::RecordingDesktop desktop;
        const QString path = folder + QLatin1Char('/') + answer;
        desktop.answerSavePanel(path);
        graphic ? SaveGraphicData(desktop, QString::fromLatin1(svg))
                : DecodeAndSaveBase64(desktop, u"SGVsbG8="_s);

        const QString message = u"The file \"%1\" was not saved: %2."_s.arg(
            path, reason.contains(u'%') ? reason.arg(folder) : reason);
        QCOMPARE(desktop.texts(u"failureAlert"_s), QStringList{message});
        // The graphic service opens the chosen path whatever became of it, always; the
        // decoder opens nothing after a failed save.
        QCOMPARE(desktop.texts(u"openFile"_s), graphic ? QStringList{path} : QStringList());
        QCOMPARE(readAll(victim), QByteArray("keep me"));
        QVERIFY(!QFile::exists(env.root() + u"/nowhere"_s));
        const QStringList left = QDir(folder).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        if (planted) {
            QDir(folder).removeRecursively();
        }
        QCOMPARE(left, (QStringList{u"dangling"_s, u"folder"_s, u"link"_s, u"pipe"_s}));
    }

    // A file that is there already is replaced whole, keeping its permissions.
    void replacesAFile()
    {
        testing::TestEnvironment env;
        const QString path = env.writeFile(QStringLiteral("saved/old"), "old old old old");
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner));
        const QFile::Permissions before = QFile::permissions(path);
        testing::RecordingDesktop desktop;
        desktop.answerSavePanel(path);
        DecodeAndSaveBase64(desktop, QStringLiteral("SGVsbG8="));
        QCOMPARE(readAll(path), QByteArray("Hello"));
        QCOMPARE(QFile::permissions(path), before);
        QCOMPARE(desktop.texts(QStringLiteral("failureAlert")), QStringList());
        QCOMPARE(QDir(env.root() + QStringLiteral("/saved"))
                     .entryList(QDir::Files | QDir::Hidden, QDir::Name),
                 QStringList{QStringLiteral("old")});
    }
};

QTEST_GUILESS_MAIN(DecodeAndSaveTest)
#include "DecodeAndSaveTest.moc"
