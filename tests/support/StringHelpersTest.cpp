#include "support/FixedString.h"
#include "support/StringMap.h"

#include <QTest>

#include <cstring>

using namespace tallyvox;

class StringHelpersTest : public QObject {
    Q_OBJECT

private slots:
    void appendStopsAt255_data()
    {
        QTest::addColumn<int>("initial");
        QTest::addColumn<int>("appended");
        QTest::addColumn<int>("expected");

        QTest::newRow("fits") << 10 << 20 << 30;
        QTest::newRow("250 plus 10") << 250 << 10 << 255;
        QTest::newRow("exactly the room left") << 250 << 5 << 255;
        QTest::newRow("one short of the room") << 250 << 4 << 254;
        QTest::newRow("full stays full") << 255 << 1 << 255;
        QTest::newRow("assign 300") << 0 << 300 << 255;
    }
    void appendStopsAt255()
    {
        QFETCH(int, initial);
        QFETCH(int, appended);
        QFETCH(int, expected);
        FixedString text;
        text.assign(QByteArray(initial, 'a').constData());
        text.append(QByteArray(appended, 'b').constData());
        QCOMPARE(int(text.length()), expected);
        // The first characters are kept, the overflow is what is lost.
        QCOMPARE(QByteArray(text.c_str()),
                 (QByteArray(initial, 'a') + QByteArray(appended, 'b')).left(expected));
    }

    void nullSources()
    {
        FixedString text("kept");
        text.append(nullptr);
        QCOMPARE(QByteArray(text.c_str()), QByteArray("kept"));
        text.assign(nullptr);
        QVERIFY(text.isEmpty());
        QVERIFY(FixedString().isEmpty());
    }

    void fromPascal()
    {
        const unsigned char pascal[] = {3, 'a', 'b', 'c', 'd'};
        FixedString text("previous text");
        QCOMPARE(QByteArray(text.fromPascal(pascal).c_str()), QByteArray("abc"));
    }

    void fromStringInMacRoman_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("ascii") << QStringLiteral("image/png") << QByteArray("image/png");
        QTest::newRow("accent") << QStringLiteral("caf\u00e9") << QByteArray("caf\x8e");
        QTest::newRow("euro") << QStringLiteral("\u20ac") << QByteArray("\xdb");
        QTest::newRow("no Mac OS Roman form") << QStringLiteral("\u65e5") << QByteArray();
        QTest::newRow("255 fits") << QString(255, QLatin1Char('x')) << QByteArray(255, 'x');
        QTest::newRow("256 does not") << QString(256, QLatin1Char('x')) << QByteArray();
    }
    void fromStringInMacRoman()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);
        FixedString converted("old");
        QCOMPARE(QByteArray(converted.fromString(text).c_str()), expected);
    }

    void mapKeysDifferByCase()
    {
        StringMap map;
        map.getOrInsert("image/jpeg")->value.assign(".jpg");
        map.getOrInsert("image/JPEG")->value.assign(".JPG");
        QCOMPARE(map.count(), 2);
        QCOMPARE(QByteArray(map.find("image/jpeg")->value.c_str()), QByteArray(".jpg"));
        QCOMPARE(QByteArray(map.find("image/JPEG")->value.c_str()), QByteArray(".JPG"));
        QVERIFY(map.find("IMAGE/JPEG") == nullptr);
    }

    void getOrInsertFindsExisting()
    {
        StringMap map;
        StringMap::Node* first = map.getOrInsert("k", "default");
        QCOMPARE(QByteArray(first->value.c_str()), QByteArray("default"));
        first->value.assign("set");
        StringMap::Node* again = map.getOrInsert("k", "other default");
        QCOMPARE(again, first);
        QCOMPARE(QByteArray(again->value.c_str()), QByteArray("set"));
        QCOMPARE(map.count(), 1);
    }

    void lookupsInAnyInsertionOrder_data()
    {
        QTest::addColumn<bool>("sorted");
        QTest::newRow("sorted: a list-shaped tree") << true;
        QTest::newRow("shuffled") << false;
    }
    void lookupsInAnyInsertionOrder()
    {
        QFETCH(bool, sorted);
        StringMap map;
        QList<QByteArray> keys;
        for (int i = 0; i < 2000; ++i)
            keys.append(QByteArray::number(sorted ? i : (i * 7919) % 2000).rightJustified(5, '0'));
        for (const QByteArray& key : keys)
            map.getOrInsert(key.constData())->value.assign(("v" + key).constData());
        QCOMPARE(map.count(), 2000);
        for (const QByteArray& key : keys) {
            const StringMap::Node* node = map.find(key.constData());
            QVERIFY(node != nullptr);
            QCOMPARE(QByteArray(node->value.c_str()), "v" + key);
        }
        QVERIFY(map.find("missing") == nullptr);

        const std::vector<const StringMap::Node*> order = map.insertionOrder();
        QCOMPARE(int(order.size()), 2000);
        QCOMPARE(QByteArray(order.front()->key.c_str()), keys.first());
        QCOMPARE(QByteArray(order.back()->key.c_str()), keys.last());
    }

    void clearEmptiesTheMap()
    {
        StringMap map;
        map.getOrInsert("a");
        map.getOrInsert("b");
        map.clear();
        QCOMPARE(map.count(), 0);
        QVERIFY(map.find("a") == nullptr);
        QVERIFY(map.insertionOrder().empty());
        map.getOrInsert("a");
        QCOMPARE(map.count(), 1);
    }

    void longKeysAreCut()
    {
        StringMap map;
        const QByteArray longKey(300, 'k');
        map.getOrInsert(longKey.constData(), QByteArray(300, 'v').constData());
        QVERIFY(map.find(longKey.left(255).constData()) != nullptr);
        QCOMPARE(int(map.find(longKey.left(255).constData())->value.length()), 255);
    }
};

QTEST_GUILESS_MAIN(StringHelpersTest)
#include "StringHelpersTest.moc"
