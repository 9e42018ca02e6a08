#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QFile>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

const QString plistPath = u"config/Okaluna Software/Tallyvox.plist"_s;

// A property list as another program would leave it, with one key of the given XML value.
QByteArray plistWith(const char* key, const char* xmlValue)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>"_ba +
           key + "</key>" + xmlValue + "</dict></plist>\n";
}

// The five settings, in the order of keyNames.
const QByteArrayList keyNames{"QuitWhenDone", "IncludeFrequency", "SortBy", "SeparateBy",
                              "LineStyle"};
QList<int> settings(const PreferenceStore& store)
{
    return {store.GetQuitWhenDone(), store.GetIncludeFrequency(),
            static_cast<int>(store.GetSortBy()), static_cast<int>(store.GetSeparateBy()),
            static_cast<int>(store.GetLineStyle())};
}

} // namespace

class PreferenceStoreTest : public QObject {
    Q_OBJECT

private slots:
    void freshUserGetsDefaults()
    {
        testing::TestEnvironment env;
        const PreferenceStore store;
        QCOMPARE(store.path(), env.configHome() + u"/Okaluna Software/Tallyvox.plist"_s);
        QCOMPARE(settings(store), (QList<int>{0, 1, 1, 1, 1}));
        QVERIFY(!store.readWindowBounds());
    }

    void storedValuesOfOtherTypes_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<int>("expected");
        const auto row = [](const char* name, const char* key, const char* xml, int expected) {
            QTest::newRow(name) << QByteArray(key) << plistWith(key, xml) << expected;
        };
        row("switch stored as number 0 keeps default", "IncludeFrequency", "<integer>0</integer>",
            1);
        row("switch stored as string", "QuitWhenDone", "<string>true</string>", 0);
        row("number as string", "SortBy", "<string>2</string>", 1);
        row("number beyond 16 bits", "LineStyle", "<integer>70000</integer>", 1);
        row("negative number kept", "SeparateBy", "<integer>-3</integer>", -3);
        row("out of range kept as is", "LineStyle", "<integer>7</integer>", 7);
        row("zero kept", "SortBy", "<integer>0</integer>", 0);
        row("whole real", "SortBy", "<real>2</real>", 2);
        row("fractional real", "SortBy", "<real>2.5</real>", 1);
        QTest::newRow("not a property list") << "IncludeFrequency"_ba
                                             << "not a plist"_ba << 1;
    }
    void storedValuesOfOtherTypes()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, file);
        QFETCH(int, expected);
        testing::TestEnvironment env;
        QVERIFY(!env.writeFile(plistPath, file).isEmpty());
        QCOMPARE(settings(PreferenceStore()).at(keyNames.indexOf(key)), expected);
    }

    void writesAreSeenByEveryReaderAtOnce()
    {
        testing::TestEnvironment env;
        PreferenceStore writer;
        const PreferenceStore reader; // stands for another process
        QCOMPARE(reader.GetSortBy(), SortBy::Alphabetical);
        QVERIFY(writer.writeChoice(prefs::SortBy, SortBy::ByFrequency));
        QVERIFY(writer.writeBool(prefs::IncludeFrequency, false));
        QVERIFY(writer.writeChoice(prefs::LineStyle, qint16{-3}));
        QVERIFY(writer.writeBool(prefs::QuitWhenDone, true));
        QCOMPARE(settings(reader), (QList<int>{1, 0, 2, 1, -3}));

        // An edit made behind the store's back is read at the next call.
        env.writeFile(plistPath, plistWith("SortBy", "<integer>5</integer>"));
        QCOMPARE(settings(reader), (QList<int>{0, 1, 5, 1, 1}));
    }

    void failedWriteKeepsOldValue()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        QVERIFY(store.writeChoice(prefs::SeparateBy, SeparateBy::Comma));
        const QString folder = env.configHome() + u"/Okaluna Software"_s;
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
        if (QFile(folder + u"/probe"_s).open(QIODevice::WriteOnly)) {
            QSKIP("running with permissions that ignore read-only folders");
        }
        QVERIFY(!store.writeChoice(prefs::SeparateBy, SeparateBy::Tab));
        QCOMPARE(store.GetSeparateBy(), SeparateBy::Comma);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void windowBoundsAreEightBigEndianBytes()
    {
        const QRect bounds(-20, 300, 640, 480); // left, top, width, height
        // top 300, left -20, bottom 780, right 620
        QCOMPARE(encodeWindowBounds(bounds), QByteArray::fromHex("012cffec030c026c"));
        QCOMPARE(decodeWindowBounds(encodeWindowBounds(bounds)), bounds);

        testing::TestEnvironment env;
        PreferenceStore store;
        QVERIFY(store.writeWindowBounds(bounds));
        QCOMPARE(store.readWindowBounds(), bounds);
    }

    void windowBoundsOfOtherShapesAreIgnored_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("16 bytes") << "<data>AAECAwQFBgcICQoLDA0ODw==</data>"_ba;
        QTest::newRow("string") << "<string>0,0,10,10</string>"_ba;
    }
    void windowBoundsOfOtherShapesAreIgnored()
    {
        QFETCH(QByteArray, xml);
        testing::TestEnvironment env;
        PreferenceStore store;
        env.writeFile(plistPath, plistWith("WindowBounds", xml.constData()));
        QVERIFY(!store.readWindowBounds());
        // Saving at exit replaces it with 8 bytes and keeps nothing of the old value.
        QVERIFY(store.writeWindowBounds(QRect(10, 20, 30, 40)));
        QCOMPARE(store.readData(prefs::WindowBounds)->size(), 8);
    }
};

QTEST_GUILESS_MAIN(PreferenceStoreTest)
#include "PreferenceStoreTest.moc"
