#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QDBusConnection>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <QUrl>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");
const QString ourEntry = QStringLiteral(TALLYVOX_DESKTOP_FILE);

/// Stands in for the file manager on the private bus and keeps what it was asked to show.
class FakeFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    QStringList shown;

public slots:
    void ShowItems(const QStringList& uris, const QString&) { shown.append(uris); }
};

// A desktop entry that claims the types and writes each argument it gets to calls/NAME.
QByteArray recordingEntry(const QString& root, const QString& name, const QString& types)
{
    return u"[Desktop Entry]\nType=Application\nName=%1\nExec=%2/record %1 %F\nMimeType=%3\n"_s
        .arg(name, root, types)
        .toUtf8();
}

} // namespace

/// The real program hands its word list to the application the MIME-apps rules choose,
/// with GIO reading fake desktop entries and mimeapps.list in a private world.
class ApplicationChooserTest : public QObject {
    Q_OBJECT

private slots:
    void listReachesTheTextEditor_data()
    {
        QTest::addColumn<QByteArray>("mimeapps");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("opener");

        const QByteArray plain = "the cat and the hat\n";
        QTest::newRow("the editor is the default")
            << "[Default Applications]\ntext/plain=editor.desktop;\n"_ba
            << QStringList{u"editor"_s, u"sniffer"_s} << plain << u"editor"_s;
        // An entry that lists text/plain may become the default; the list must not come
        // back to Tallyvox, which would make a.txt.txt.txt ... for ever.
        QTest::newRow("Tallyvox is the default")
            << "[Default Applications]\ntext/plain=com.okaluna.Tallyvox.desktop;\n"_ba
            << QStringList{u"editor"_s} << plain << u"editor"_s;
        QTest::newRow("the user's association comes next")
            << "[Default Applications]\ntext/plain=com.okaluna.Tallyvox.desktop;\n"
               "[Added Associations]\ntext/plain=notepad.desktop;\n"_ba
            << QStringList{u"editor"_s, u"notepad"_s} << plain << u"notepad"_s;
        // Chosen by the list's type: words of source code change nothing.
        QTest::newRow("words that look like C")
            << "[Default Applications]\ntext/plain=editor.desktop;\n"
               "text/x-csrc=sniffer.desktop;\ntext/x-c=sniffer.desktop;\n"_ba
            << QStringList{u"editor"_s, u"sniffer"_s}
            << "#include <stdio.h>\nint main(void) { printf(\"%d\", 1); return 0; }\n"_ba
            << u"editor"_s;
        // Another entry may run Tallyvox under another name: known by its Exec line.
        QTest::newRow("an entry of another name runs Tallyvox")
            << "[Default Applications]\ntext/plain=alias.desktop;\n"_ba
            << QStringList{u"alias"_s, u"editor"_s} << plain << u"editor"_s;
        QTest::newRow("an entry runs Tallyvox through env")
            << "[Default Applications]\ntext/plain=wrapped.desktop;\n"
               "[Added Associations]\ntext/plain=wrapped.desktop;notepad.desktop;\n"_ba
            << QStringList{u"wrapped"_s, u"notepad"_s} << plain << u"notepad"_s;
        QTest::newRow("nothing but Tallyvox opens text")
            << "[Default Applications]\ntext/plain=com.okaluna.Tallyvox.desktop;\n"_ba
            << QStringList{u"sniffer"_s} << plain << u"file manager"_s;
    }
    void listReachesTheTextEditor()
    {
        QFETCH(QByteArray, mimeapps);
        QFETCH(QStringList, entries);
        QFETCH(QByteArray, document);
        QFETCH(QString, opener);
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            QSKIP("no session bus: run under dbus-run-session");
        }
        testing::TestEnvironment env;
        QVERIFY(PreferenceStore().writeBool(prefs::QuitWhenDone, true));
        const QString root = env.root();
        env.writeFile(u"record"_s, "#!/bin/sh\nname=$1\nshift\nprintf '%s\\n' \"$@\" >>\"" +
                                       QFile::encodeName(root) + "/calls/$name\"\n");
        QFile::setPermissions(root + u"/record"_s, QFile::ReadOwner | QFile::ExeOwner);
        QDir().mkpath(root + u"/calls"_s);

        // Our own entry as installed, but recording instead of starting Tallyvox.
        QFile installed(ourEntry);
        QVERIFY(installed.open(QIODevice::ReadOnly));
        QByteArray own;
        for (const QByteArray& line : installed.readAll().split('\n')) {
            if (line.startsWith("TryExec=") || line.startsWith("DBusActivatable=")) {
                continue;
            }
            own += line.startsWith("Exec=tallyvox ")
                       ? "Exec=" + QFile::encodeName(root) + "/record tallyvox %F"
                       : line;
            own += '\n';
        }
        const QString applications = u"data/applications/"_s;
        env.writeFile(applications + u"com.okaluna.Tallyvox.desktop"_s, own);
        const QMap<QString, QString> types{{u"editor"_s, u"text/plain;"_s},
                                           {u"notepad"_s, u"text/x-log;"_s},
                                           {u"sniffer"_s, u"text/x-csrc;text/x-c;"_s}};
        const QMap<QString, QString> tallyvoxUnderAnotherName{
            {u"alias"_s, program + u" %F"_s}, {u"wrapped"_s, u"env LC_ALL=C.UTF-8 tallyvox %F"_s}};
        for (const QString& name : entries) {
            const QString exec = tallyvoxUnderAnotherName.value(name);
            env.writeFile(applications + name + u".desktop"_s,
                          exec.isEmpty() ? recordingEntry(root, name, types.value(name))
                                         : u"[Desktop Entry]\nType=Application\nName=%1\nExec=%2\n"
                                           "MimeType=text/plain;\n"_s.arg(name, exec)
                                               .toUtf8());
        }
        // Which entry claims which type, GIO reads from the cache that installing builds.
        QCOMPARE(QProcess::execute(u"update-desktop-database"_s, {root + u"/"_s + applications}),
                 0);
        env.writeFile(u"config/mimeapps.list"_s, mimeapps);
        const QString input = env.writeFile(u"a.txt"_s, document);

        FakeFileManager fileManager;
        QVERIFY(bus.registerObject(u"/org/freedesktop/FileManager1"_s, &fileManager,
                                   QDBusConnection::ExportAllSlots));
        QVERIFY(bus.registerService(u"org.freedesktop.FileManager1"_s));

        // Only the private world's applications and rules count, not the machine's.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_DIRS"_s, root + u"/system-data"_s);
        environment.insert(u"XDG_CONFIG_DIRS"_s, root + u"/system-config"_s);
        environment.remove(u"XDG_CURRENT_DESKTOP"_s);
        QProcess tallyvox;
        tallyvox.setProcessEnvironment(environment);
        tallyvox.setProcessChannelMode(QProcess::ForwardedChannels);
        tallyvox.start(program, {input});
        QTRY_VERIFY_WITH_TIMEOUT(tallyvox.state() == QProcess::NotRunning, 20000);
        QCOMPARE(tallyvox.exitCode(), 0);

        const QString list = env.dataHome() + u"/Okaluna Software/Tallyvox/a.txt.txt"_s;
        if (opener == u"file manager"_s) {
            QTRY_COMPARE(fileManager.shown,
                         QStringList{QString::fromLatin1(QUrl::fromLocalFile(list).toEncoded())});
        } else {
            QFile calls(root + u"/calls/"_s + opener);
            QTRY_VERIFY(calls.size() > 0);
            QVERIFY(calls.open(QIODevice::ReadOnly));
            QCOMPARE(calls.readAll(), QFile::encodeName(list) + '\n');
            QVERIFY(fileManager.shown.isEmpty());
        }
        // Nobody else was started, least of all Tallyvox.
        QCOMPARE(QDir(root + u"/calls"_s).entryList(QDir::Files),
                 opener == u"file manager"_s ? QStringList() : QStringList{opener});

        bus.unregisterService(u"org.freedesktop.FileManager1"_s);
        bus.unregisterObject(u"/org/freedesktop/FileManager1"_s);
    }
};

QTEST_GUILESS_MAIN(ApplicationChooserTest)
#include "ApplicationChooserTest.moc"
