#include "support/InternetConfig.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QTest>

using namespace tallyvox;

namespace {

constexpr quint32 creator = 0x566e546c; // 'VnTl'

QList<QPair<QByteArray, QByteArray>> walk(CInternetConfig& session)
{
    QList<QPair<QByteArray, QByteArray>> entries;
    MapEntry entry;
    while (session.NextMapEntry(&entry))
        entries.append(
            qMakePair(QByteArray(entry.extension.c_str()), QByteArray(entry.MIMEType.c_str())));
    return entries;
}

} // namespace

class InternetConfigTest : public QObject {
    Q_OBJECT

private slots:
    void userMapComesBeforeSystemMap()
    {
        testing::TestEnvironment env;
        const QString user = env.writeFile(QStringLiteral("home/.mime.types"),
                                           "# mine\nimage/jpeg\tjpg jfif  # trailing\n");
        const QString system =
            env.writeFile(QStringLiteral("etc/mime.types"), "image/jpeg jpeg\n\ntext/plain txt\n");
        QCOMPARE(CInternetConfig::defaultMapFiles().first(), user);

        CInternetConfig session(creator, {user, system});
        QVERIFY(session.available());
        QCOMPARE(session.Start(), 0);
        QCOMPARE(session.BeginMapping(), 0);
        const QList<QPair<QByteArray, QByteArray>> expected = {
            {".jpg", "image/jpeg"},
            {".jfif", "image/jpeg"},
            {".jpeg", "image/jpeg"},
            {".txt", "text/plain"},
        };
        QCOMPARE(walk(session), expected);
        QCOMPARE(session.EndMapping(), 0);
        QCOMPARE(session.EndMapping(), -1);
        QCOMPARE(session.Stop(), 0);
    }

    void linesThatAreNotEntries()
    {
        testing::TestEnvironment env;
        const QString map = env.writeFile(
            QStringLiteral("map"), "no-slash ext\nimage/x-alone\n   \n#image/gif gif\nimage/a a\n");
        CInternetConfig session(creator, {map});
        session.Start();
        QCOMPARE(session.BeginMapping(), 0);
        const QList<QPair<QByteArray, QByteArray>> expected = {{".a", "image/a"}};
        QCOMPARE(walk(session), expected);
    }

    void walksThatYieldNothing_data()
    {
        QTest::addColumn<bool>("start");
        QTest::addColumn<bool>("mapExists");
        QTest::addColumn<int>("beginStatus");

        QTest::newRow("not started") << false << true << -1;
        QTest::newRow("no map file: begin fails") << true << false << int(icPrefNotFoundErr);
        QTest::newRow("empty map") << true << true << 0;
    }
    void walksThatYieldNothing()
    {
        QFETCH(bool, start);
        QFETCH(bool, mapExists);
        QFETCH(int, beginStatus);
        testing::TestEnvironment env;
        const QString map = mapExists ? env.writeFile(QStringLiteral("map"), "# nothing\n")
                                      : env.root() + QStringLiteral("/missing");
        CInternetConfig session(creator, {map});
        QCOMPARE(session.available(), mapExists);
        if (start)
            session.Start();
        QCOMPARE(session.BeginMapping(), beginStatus);
        MapEntry entry;
        QVERIFY(!session.NextMapEntry(&entry));
        QCOMPARE(session.EndMapping(), beginStatus == 0 ? 0 : -1);
    }

    void stopIsSafeAndHappensOnce()
    {
        CInternetConfig session(creator, {});
        QCOMPARE(session.Stop(), 0);
        session.Start();
        QVERIFY(session.started());
        QCOMPARE(session.Stop(), 0);
        QVERIFY(!session.started());
        QCOMPARE(session.Stop(), 0);
    }

    void sessionlessOperationsRefuse()
    {
        testing::RecordingDesktop desktop;
        CInternetConfig session(creator, {});
        MapEntry entry;
        FixedString value;
        QCOMPARE(session.MapFilenameC("a.png", &entry), -1);
        QCOMPARE(session.LaunchURL(desktop, FixedString("https://example.org/")), -1);
        QCOMPARE(session.GetPref(FixedString("Mapping"), &value), -1);
        QCOMPARE(session.EditPreferences(desktop, FixedString("Mapping")), -1);
        QVERIFY(desktop.events().isEmpty());
    }

    void mapFilename_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("mime");

        QTest::newRow("match") << QByteArray("photo.jpg") << 0 << QByteArray("image/jpeg");
        QTest::newRow("case ignored") << QByteArray("PHOTO.PNG") << 0 << QByteArray("image/png");
        QTest::newRow("no match") << QByteArray("notes.txt") << int(icPrefNotFoundErr)
                                  << QByteArray();
        QTest::newRow("only 255 bytes are used")
            << QByteArray(255, 'a') + ".png" << int(icPrefNotFoundErr) << QByteArray();
    }
    void mapFilename()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, status);
        QFETCH(QByteArray, mime);
        testing::TestEnvironment env;
        const QString map = env.writeFile(QStringLiteral("map"), "image/jpeg jpg\nimage/png png\n");
        CInternetConfig session(creator, {map});
        session.Start();
        MapEntry entry;
        QCOMPARE(session.MapFilenameC(name.constData(), &entry), status);
        if (status == 0)
            QCOMPARE(QByteArray(entry.MIMEType.c_str()), mime);
    }

    void launchAndEditGoThroughTheDesktop()
    {
        testing::TestEnvironment env;
        const QString map = env.writeFile(QStringLiteral("home/.mime.types"), "image/a a\n");
        testing::RecordingDesktop desktop;
        CInternetConfig session(creator, {map});
        session.Start();
        QCOMPARE(session.LaunchURL(desktop, FixedString("https://example.org/a%20b")), 0);
        QCOMPARE(session.EditPreferences(desktop, FixedString("Mapping")), 0);
        QCOMPARE(desktop.texts(QStringLiteral("openUrl")),
                 QStringList{QStringLiteral("https://example.org/a%20b")});
        QCOMPARE(desktop.texts(QStringLiteral("editor")), QStringList{map});
    }
};

QTEST_GUILESS_MAIN(InternetConfigTest)
#include "InternetConfigTest.moc"
