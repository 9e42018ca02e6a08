#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <limits>

#include <sys/stat.h>

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

// A binary property list whose top dictionary maps "k" to object 2, followed by arrays:
// arrays[i] lists the objects (counted from 2) that array 2 + i holds.
QByteArray binaryWithArrays(const QList<QList<int>>& arrays)
{
    QByteArray out = "bplist00";
    const auto put = [&out](quint64 value, int width) {
        for (int i = width - 1; i >= 0; --i) {
            out.append(char(value >> (8 * i)));
        }
    };
    QList<quint64> offsets{8};
    out.append(char(0xD1)); // { object 1: object 2 }; references are 4 bytes throughout
    put(1, 4);
    put(2, 4);
    offsets.append(quint64(out.size()));
    out += "\x51k"_ba;
    for (const QList<int>& array : arrays) {
        offsets.append(quint64(out.size()));
        out.append(char(0xAF)).append(char(0x12));
        put(quint64(array.size()), 4);
        for (int ref : array) {
            put(quint64(ref), 4);
        }
    }
    const auto table = quint64(out.size());
    for (quint64 offset : offsets) {
        put(offset, 4);
    }
    out += QByteArray(6, 0);
    out.append(char(4)).append(char(4)); // offset and reference sizes
    put(quint64(offsets.size()), 8);
    put(0, 8);
    put(table, 8);
    return out;
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

    // A snapshot is the file as it was read once: later writes and edits reach the store's
    // own readers, not the snapshot's; a missing or broken file gives the defaults.
    void snapshotKeepsWhatWasStored()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        const PreferenceStore empty = store.snapshot();
        QVERIFY(store.writeChoice(prefs::SortBy, SortBy::ByFrequency));
        QVERIFY(store.writeString(prefs::StopListPath, u"stop.txt"_s));
        const PreferenceStore before = store.snapshot();
        QVERIFY(store.writeChoice(prefs::SortBy, SortBy::Alphabetical));
        env.writeFile(plistPath, plistWith("IncludeFrequency", "<false/>"));
        QCOMPARE(before.GetSortBy(), SortBy::ByFrequency);
        QCOMPARE(before.readString(prefs::StopListPath), u"stop.txt"_s);
        QCOMPARE(before.GetIncludeFrequency(), true);
        QCOMPARE(store.GetIncludeFrequency(), false);
        QCOMPARE(settings(empty), settings(PreferenceStore(env.root() + u"/none.plist"_s)));
        env.writeFile(plistPath, "not a property list");
        QCOMPARE(store.snapshot().GetSortBy(), SortBy::Alphabetical);
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

    // A file that is no dictionary within the limits reads as defaults and is never parsed
    // whole by libplist (which recurses per level and copies shared objects); the first
    // write moves it aside untouched, so nothing of it is lost.
    void unreadableFileIsKeptAsideBeforeAnyWrite_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray valid = plistWith("SortBy", "<integer>2</integer>");
        QTest::newRow("garbage") << "\x00\xffnot a property list"_ba;
        QTest::newRow("truncated") << valid.left(valid.size() / 2);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("an array, not a dictionary") << "<plist><array/></plist>"_ba;
        QTest::newRow("65,000 levels of XML")
            << "<plist><dict><key>k</key>"_ba + QByteArray("<array>").repeated(65'000) +
                   QByteArray("</array>").repeated(65'000) + "</dict></plist>"_ba;
        QTest::newRow("quotes hiding the nesting")
            << "<plist><dict><key>k</key>"_ba + QByteArray("<array x=\"/>\">").repeated(1000) +
                   "</dict></plist>"_ba;
        QList<QList<int>> chain;
        QList<QList<int>> doubling;
        for (int i = 0; i < 5000; ++i) {
            chain.append(i + 1 < 5000 ? QList<int>{i + 3} : QList<int>{});
        }
        for (int i = 0; i < 60; ++i) {
            doubling.append(i + 1 < 60 ? QList<int>{i + 3, i + 3} : QList<int>{});
        }
        QTest::newRow("5,000 levels, binary") << binaryWithArrays(chain);
        QTest::newRow("2^60 copies of shared objects, binary") << binaryWithArrays(doubling);
        QTest::newRow("an array holding itself, binary") << binaryWithArrays({{2}});
        QTest::newRow("larger than 1 MiB") << plistWith(
            "Pad", ("<string>"_ba + QByteArray(1 << 20, 'x') + "</string>").constData());
    }
    void unreadableFileIsKeptAsideBeforeAnyWrite()
    {
        QFETCH(QByteArray, content);
        testing::TestEnvironment env;
        const QString path = env.writeFile(plistPath, content);
        PreferenceStore store;
        QCOMPARE(settings(store), (QList<int>{0, 1, 1, 1, 1}));
        QVERIFY(!store.readWindowBounds());
        QVERIFY(store.writeWindowBounds(QRect(1, 2, 3, 4)));
        QFile aside(path + u".bad"_s);
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QCOMPARE(aside.readAll(), content);
        QCOMPARE(store.readWindowBounds(), QRect(1, 2, 3, 4));
    }

    // Something other than a file at the settings path is never opened for reading in a way
    // that waits, reads as the defaults, is named in an alert, and is set aside at a write.
    void specialFileIsRefused_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("named pipe") << u"pipe"_s;
        QTest::newRow("folder") << u"folder"_s;
        QTest::newRow("regular file") << u"file"_s;
    }
    void specialFileIsRefused()
    {
        QFETCH(QString, kind);
        testing::TestEnvironment env;
        const QString path = env.writeFile(plistPath, plistWith("SortBy", "<integer>2</integer>"));
        if (kind != u"file"_s) {
            QVERIFY(QFile::remove(path));
        }
        if (kind == u"pipe"_s) {
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        } else if (kind == u"folder"_s) {
            QVERIFY(QDir().mkdir(path));
        }
        PreferenceStore store;
        if (kind == u"file"_s) {
            QCOMPARE(store.refusal(), std::nullopt);
            QCOMPARE(static_cast<int>(store.GetSortBy()), 2);
            return;
        }
        QCOMPARE(store.refusal(),
                 u"The settings file \"%1\" is no regular file; Tallyvox uses its default "
                 "settings and sets it aside at the first change."_s.arg(path));
        QCOMPARE(settings(store), (QList<int>{0, 1, 1, 1, 1}));
        QVERIFY(store.writeWindowBounds(QRect(1, 2, 3, 4)));
        QCOMPARE(store.readWindowBounds(), QRect(1, 2, 3, 4));
        QCOMPARE(store.refusal(), std::nullopt);
        QVERIFY(QFileInfo(path + u".bad"_s).exists());
    }

    void sharedObjectsWithinTheLimitsAreRead()
    {
        testing::TestEnvironment env;
        QList<QList<int>> doubling;
        for (int i = 0; i < 10; ++i) {
            doubling.append(i + 1 < 10 ? QList<int>{i + 3, i + 3} : QList<int>{});
        }
        env.writeFile(plistPath, binaryWithArrays(doubling));
        PreferenceStore store;
        QVERIFY(store.writeWindowBounds(QRect(1, 2, 3, 4)));
        QVERIFY(!QFile::exists(env.root() + u'/' + plistPath + u".bad"_s));
    }

    // The word-list options as one line, in the order of their keys.
    static QString wordListOptions(const PreferenceStore& store)
    {
        return u"%1 %2 %3 [%4] %5 %6 %7"_s.arg(store.readBool(prefs::FoldCase))
            .arg(store.readBool(prefs::DictionaryOrder))
            .arg(store.readInteger(prefs::MinimumCount))
            .arg(store.readString(prefs::StopListPath))
            .arg(store.readBool(prefs::CombineFiles))
            .arg(store.readInteger(prefs::ListFormat))
            .arg(store.readBool(prefs::IncludeTotals));
    }

    void wordListOptionsOfOtherTypesReadAsDefaults_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* key, const char* xml,
                            const QString& expected) {
            QTest::newRow(name) << plistWith(key, xml) << expected;
        };
        const QString defaults = u"0 0 1 [] 0 0 0"_s;
        row("nothing stored", "Other", "<true/>", defaults);
        row("switch as number", "FoldCase", "<integer>1</integer>", defaults);
        row("switch as string", "CombineFiles", "<string>true</string>", defaults);
        row("integer as string", "MinimumCount", "<string>5</string>", defaults);
        row("integer beyond 32 bits", "MinimumCount", "<integer>4294967296</integer>", defaults);
        row("fractional real", "ListFormat", "<real>1.5</real>", defaults);
        row("string as number", "StopListPath", "<integer>3</integer>", defaults);
        // Beyond 16 bits is fine here, and a negative or unnamed value is kept as it is.
        row("integer beyond 16 bits", "MinimumCount", "<integer>70000</integer>",
            u"0 0 70000 [] 0 0 0"_s);
        row("negative integer", "MinimumCount", "<integer>-3</integer>", u"0 0 -3 [] 0 0 0"_s);
        row("whole real", "ListFormat", "<real>2</real>", u"0 0 1 [] 0 2 0"_s);
        row("unnamed format", "ListFormat", "<integer>9</integer>", u"0 0 1 [] 0 9 0"_s);
        row("path", "StopListPath", "<string>/tmp/stop w\u00f6rds.txt</string>",
            u"0 0 1 [/tmp/stop w\u00f6rds.txt] 0 0 0"_s);
    }
    void wordListOptionsOfOtherTypesReadAsDefaults()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        testing::TestEnvironment env;
        env.writeFile(plistPath, file);
        QCOMPARE(wordListOptions(PreferenceStore()), expected);
    }

    void wordListOptionsAreWrittenBesideTheOtherSettings()
    {
        testing::TestEnvironment env;
        PreferenceStore writer;
        const PreferenceStore reader;
        QVERIFY(writer.writeChoice(prefs::SortBy, SortBy::ByFrequency));
        QVERIFY(writer.writeBool(prefs::FoldCase, true));
        QVERIFY(writer.writeInteger(prefs::MinimumCount, std::numeric_limits<qint32>::max()));
        QVERIFY(writer.writeString(prefs::StopListPath, u"/home/me/stop w\u00f6rter.txt"_s));
        QVERIFY(writer.writeInteger(prefs::ListFormat, -1));
        QCOMPARE(wordListOptions(reader),
                 u"1 0 2147483647 [/home/me/stop w\u00f6rter.txt] 0 -1 0"_s);
        QCOMPARE(listFormatOf(reader.readInteger(prefs::ListFormat)), ListFormat::Text);
        QCOMPARE(settings(reader), (QList<int>{0, 1, 2, 1, 1}));
    }

    // The corpus figures' keys as one line, in the order of their keys.
    static QString corpusOptions(const PreferenceStore& store)
    {
        return u"%1 %2 [%3] %4"_s.arg(store.readBool(prefs::IncludeRange))
            .arg(store.readBool(prefs::IncludePerMillion))
            .arg(store.readString(prefs::ReferencePath))
            .arg(store.readReal(prefs::KeynessThreshold));
    }

    void corpusOptionsOfEachType_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const char* key, const char* xml,
                            const QString& expected) {
            QTest::newRow(name) << plistWith(key, xml) << expected;
        };
        const QString defaults = u"0 0 [] 6.63"_s;
        row("nothing stored", "Other", "<true/>", defaults);
        row("range as number", "IncludeRange", "<integer>1</integer>", defaults);
        row("range on", "IncludeRange", "<true/>", u"1 0 [] 6.63"_s);
        row("per million on", "IncludePerMillion", "<true/>", u"0 1 [] 6.63"_s);
        row("reference as number", "ReferencePath", "<integer>3</integer>", defaults);
        row("reference", "ReferencePath", "<string>~/Korpus</string>", u"0 0 [~/Korpus] 6.63"_s);
        row("threshold as string", "KeynessThreshold", "<string>3.84</string>", defaults);
        row("threshold real", "KeynessThreshold", "<real>3.84</real>", u"0 0 [] 3.84"_s);
        // An integer is the same number; one beyond 32 bits as well.
        row("threshold integer", "KeynessThreshold", "<integer>15</integer>", u"0 0 [] 15"_s);
        row("threshold negative", "KeynessThreshold", "<integer>-2</integer>", u"0 0 [] -2"_s);
        row("threshold not finite", "KeynessThreshold", "<real>nan</real>", defaults);
    }
    void corpusOptionsOfEachType()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);
        testing::TestEnvironment env;
        env.writeFile(plistPath, file);
        QCOMPARE(corpusOptions(PreferenceStore()), expected);

        PreferenceStore writer;
        const PreferenceStore before = writer.snapshot();
        QVERIFY(writer.writeReal(prefs::KeynessThreshold, 10.83));
        QCOMPARE(PreferenceStore().readReal(prefs::KeynessThreshold), 10.83);
        // A snapshot keeps what was stored when it was taken.
        QCOMPARE(corpusOptions(before), expected);
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
