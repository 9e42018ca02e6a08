#include "services/naming/FixedString.h"
#include "services/naming/InternetConfig.h"
#include "services/naming/StringMap.h"
#include "tests/common/TestEnvironment.h"

#include <QTest>

using namespace tallyvox;

class StringHelpersTest : public QObject {
    Q_OBJECT

private slots:
    void fixedStringKeeps255_data()
    {
        QTest::addColumn<int>("initial");
        QTest::addColumn<int>("appended");
        QTest::newRow("250 plus 10") << 250 << 10;
        QTest::newRow("exactly full") << 250 << 5;
        QTest::newRow("full stays full") << 255 << 1;
        QTest::newRow("assign 300") << 0 << 300;
    }
    void fixedStringKeeps255()
    {
        QFETCH(int, initial);
        QFETCH(int, appended);
        FixedString text(QByteArray(initial, 'a').constData());
        text.append(QByteArray(appended, 'b').constData()).append(nullptr);
        QCOMPARE(QByteArray(text.c_str()),
                 (QByteArray(initial, 'a') + QByteArray(appended, 'b')).left(255));
    }

    void macRoman_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("accent") << QStringLiteral("caf\u00e9") << QByteArray("caf\x8e");
        QTest::newRow("euro") << QStringLiteral("\u20ac") << QByteArray("\xdb");
        QTest::newRow("no Mac OS Roman form") << QStringLiteral("\u65e5") << QByteArray();
        QTest::newRow("too long for 256 bytes") << QString(256, QLatin1Char('x')) << QByteArray();
    }
    void macRoman()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);
        QCOMPARE(QByteArray(FixedString("old").fromString(text).c_str()), expected);
    }

    void mapLookups_data()
    {
        QTest::addColumn<bool>("sorted");
        QTest::newRow("sorted keys: a list-shaped tree") << true;
        QTest::newRow("shuffled keys") << false;
    }
    void mapLookups()
    {
        QFETCH(bool, sorted);
        StringMap map;
        for (int i = 0; i < 2000; ++i) {
            const QByteArray key = QByteArray::number(sorted ? i : (i * 7919) % 2000);
            map.getOrInsert(key.constData())->value.assign(("v" + key).constData());
        }
        map.getOrInsert("image/JPEG", "upper");
        QCOMPARE(QByteArray(map.getOrInsert("image/JPEG", "ignored")->value.c_str()), "upper");
        QCOMPARE(map.count(), 2001);
        for (int i = 0; i < 2000; ++i) {
            QCOMPARE(QByteArray(map.find(QByteArray::number(i).constData())->value.c_str()),
                     "v" + QByteArray::number(i));
        }
        QVERIFY(map.find("image/jpeg") == nullptr); // keys differ by case
        QCOMPARE(QByteArray(map.insertionOrder().back()->key.c_str()), "image/JPEG");
        map.clear();
        QVERIFY(map.count() == 0 && map.find("1") == nullptr);
    }

    void extensionMap_data()
    {
        QTest::addColumn<bool>("start");
        QTest::addColumn<bool>("userMap");
        QTest::addColumn<int>("beginStatus");
        QTest::addColumn<QByteArrayList>("entries");
        QTest::newRow("user's map first")
            << true << true << 0
            << QByteArrayList{".jpg image/jpeg", ".jfif image/jpeg", ".jpeg image/jpeg"};
        QTest::newRow("not started") << false << true << -1 << QByteArrayList{};
        QTest::newRow("no map file") << true << false << int(icPrefNotFoundErr) << QByteArrayList{};
    }
    void extensionMap()
    {
        QFETCH(bool, start);
        QFETCH(bool, userMap);
        QFETCH(int, beginStatus);
        QFETCH(QByteArrayList, entries);
        testing::TestEnvironment env;
        if (userMap) {
            env.writeFile(QStringLiteral("home/.mime.types"),
                          "# comment\nimage/jpeg\tjpg jfif # trailing\nno-slash x\nimage/alone\n");
        }
        const QString system = userMap ? env.writeFile(QStringLiteral("etc"), "image/jpeg jpeg\n")
                                       : env.root() + QStringLiteral("/missing");
        CInternetConfig session(0x566e546c, {CInternetConfig::defaultMapFiles().first(), system});
        if (start) {
            session.Start();
        }
        QCOMPARE(session.BeginMapping(), beginStatus);
        QByteArrayList walked;
        MapEntry entry;
        while (session.NextMapEntry(&entry)) {
            walked.append(QByteArray(entry.extension.c_str()) + ' ' + entry.MIMEType.c_str());
        }
        QCOMPARE(walked, entries);
        QCOMPARE(session.EndMapping(), beginStatus == 0 ? 0 : -1);
        QCOMPARE(session.Stop(), 0);
        QCOMPARE(session.Stop(), 0);
    }
};

QTEST_GUILESS_MAIN(StringHelpersTest)
#include "StringHelpersTest.moc"
