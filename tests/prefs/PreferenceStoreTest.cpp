#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QFile>
#include <QTest>

using namespace tallyvox;

namespace {

// A property list as another program would leave it, with one key of the given XML value.
QByteArray plistWith(const char* key, const char* xmlValue)
{
    return QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<plist version=\"1.0\"><dict><key>") +
           key + "</key>" + xmlValue + "</dict></plist>\n";
}

} // namespace

class PreferenceStoreTest : public QObject {
    Q_OBJECT

private slots:
    void freshUserGetsDefaults()
    {
        testing::TestEnvironment env;
        const PreferenceStore store;
        QCOMPARE(store.path(),
                 env.configHome() + QStringLiteral("/Okaluna Software/Tallyvox.plist"));
        QCOMPARE(store.GetQuitWhenDone(), false);
        QCOMPARE(store.GetIncludeFrequency(), true);
        QCOMPARE(store.GetSortBy(), 1);
        QCOMPARE(store.GetSeparateBy(), 1);
        QCOMPARE(store.GetLineStyle(), 1);
        QVERIFY(!store.readWindowBounds());
    }

    void storedValuesOfOtherTypes_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<int>("expected");

        QTest::newRow("switch stored as number 0 keeps default")
            << QByteArray("IncludeFrequency") << QByteArray("<integer>0</integer>") << 1;
        QTest::newRow("switch stored as string")
            << QByteArray("QuitWhenDone") << QByteArray("<string>true</string>") << 0;
        QTest::newRow("switch false")
            << QByteArray("IncludeFrequency") << QByteArray("<false/>") << 0;
        QTest::newRow("number as string")
            << QByteArray("SortBy") << QByteArray("<string>2</string>") << 1;
        QTest::newRow("number beyond 16 bits")
            << QByteArray("LineStyle") << QByteArray("<integer>70000</integer>") << 1;
        QTest::newRow("negative number kept")
            << QByteArray("SeparateBy") << QByteArray("<integer>-3</integer>") << -3;
        QTest::newRow("out of range kept as is")
            << QByteArray("LineStyle") << QByteArray("<integer>7</integer>") << 7;
        QTest::newRow("zero kept")
            << QByteArray("SortBy") << QByteArray("<integer>0</integer>") << 0;
        QTest::newRow("whole real") << QByteArray("SortBy") << QByteArray("<real>2</real>") << 2;
        QTest::newRow("fractional real")
            << QByteArray("SortBy") << QByteArray("<real>2.5</real>") << 1;
        QTest::newRow("number as array") << QByteArray("SortBy") << QByteArray("<array/>") << 1;
    }

    void storedValuesOfOtherTypes()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, xml);
        QFETCH(int, expected);
        testing::TestEnvironment env;
        const PreferenceStore store;
        QVERIFY(!env.writeFile(QStringLiteral("config/Okaluna Software/Tallyvox.plist"),
                               plistWith(key.constData(), xml.constData()))
                     .isEmpty());
        int value = 0;
        if (key == "IncludeFrequency")
            value = store.GetIncludeFrequency();
        else if (key == "QuitWhenDone")
            value = store.GetQuitWhenDone();
        else if (key == "SortBy")
            value = store.GetSortBy();
        else if (key == "SeparateBy")
            value = store.GetSeparateBy();
        else
            value = store.GetLineStyle();
        QCOMPARE(value, expected);
    }

    void writesAreSeenByEveryReaderAtOnce()
    {
        testing::TestEnvironment env;
        PreferenceStore writer;
        const PreferenceStore reader; // stands for another process
        QCOMPARE(reader.GetSortBy(), 1);
        QVERIFY(writer.writeNumber(prefs::SortBy, 2));
        QVERIFY(writer.writeBool(prefs::IncludeFrequency, false));
        QVERIFY(writer.writeNumber(prefs::LineStyle, -3));
        QVERIFY(writer.writeBool(prefs::QuitWhenDone, true));
        QCOMPARE(reader.GetSortBy(), 2);
        QCOMPARE(reader.GetIncludeFrequency(), false);
        QCOMPARE(reader.GetLineStyle(), -3);
        QCOMPARE(reader.GetQuitWhenDone(), true);
        QCOMPARE(reader.GetSeparateBy(), 1);

        // An edit made behind the store's back is read at the next call.
        QVERIFY(!env.writeFile(QStringLiteral("config/Okaluna Software/Tallyvox.plist"),
                               plistWith("SortBy", "<integer>5</integer>"))
                     .isEmpty());
        QCOMPARE(reader.GetSortBy(), 5);
        QCOMPARE(reader.GetIncludeFrequency(), true);
    }

    void failedWriteKeepsOldValue()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        QVERIFY(store.writeNumber(prefs::SeparateBy, 3));
        const QString folder = env.configHome() + QStringLiteral("/Okaluna Software");
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
        if (QFile(folder + QStringLiteral("/probe")).open(QIODevice::WriteOnly))
            QSKIP("running with permissions that ignore read-only folders");
        QVERIFY(!store.writeNumber(prefs::SeparateBy, 2));
        QCOMPARE(store.GetSeparateBy(), 3);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void corruptFileReadsAsDefaults()
    {
        testing::TestEnvironment env;
        const PreferenceStore store;
        env.writeFile(QStringLiteral("config/Okaluna Software/Tallyvox.plist"), "not a plist");
        QCOMPARE(store.GetIncludeFrequency(), true);
        QCOMPARE(store.GetLineStyle(), 1);
    }

    void windowBoundsAreEightBigEndianBytes()
    {
        const QRect bounds(-20, 300, 640, 480); // left, top, width, height
        const QByteArray bytes = encodeWindowBounds(bounds);
        // top 300, left -20, bottom 780, right 620
        QCOMPARE(bytes, QByteArray::fromHex("012cffec030c026c"));
        QCOMPARE(decodeWindowBounds(bytes), bounds);

        testing::TestEnvironment env;
        PreferenceStore store;
        QVERIFY(store.writeWindowBounds(bounds));
        QCOMPARE(store.readWindowBounds(), bounds);
    }

    void windowBoundsOfOtherShapesAreIgnored_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("16 bytes") << QByteArray("<data>AAECAwQFBgcICQoLDA0ODw==</data>");
        QTest::newRow("array") << QByteArray("<array><integer>1</integer></array>");
        QTest::newRow("string") << QByteArray("<string>0,0,10,10</string>");
    }

    void windowBoundsOfOtherShapesAreIgnored()
    {
        QFETCH(QByteArray, xml);
        testing::TestEnvironment env;
        PreferenceStore store;
        env.writeFile(QStringLiteral("config/Okaluna Software/Tallyvox.plist"),
                      plistWith("WindowBounds", xml.constData()));
        QVERIFY(!store.readWindowBounds());
        // Saving at exit replaces it with 8 bytes and keeps nothing of the old value.
        QVERIFY(store.writeWindowBounds(QRect(10, 20, 30, 40)));
        QCOMPARE(store.readData(prefs::WindowBounds)->size(), 8);
    }
};

QTEST_GUILESS_MAIN(PreferenceStoreTest)
#include "PreferenceStoreTest.moc"
