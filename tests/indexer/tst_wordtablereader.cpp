// The result file both ways: the indexer's binary writer against the application's reader,
// both against Python's plistlib, and the reader against broken and hostile files.

#include "indexer/BinaryPlistWriter.h"
#include "tests/common/TestEnvironment.h"
#include "words/WordTableReader.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include <sys/mman.h>
#include <unistd.h>

using tallyvox::ParseWordTable;
using tallyvox::ReadWordTableFile;
using tallyvox::unreadableCount;
using tallyvox::WordTable;
using tallyvox::indexer::WordMap;
using namespace Qt::StringLiterals;

namespace {

QByteArray writeBinary(const WordTable& table)
{
    WordMap words;
    for (auto it = table.begin(); it != table.end(); ++it) {
        const QByteArray utf8 = it.key().toUtf8();
        words.add(std::string_view(utf8.constData(), std::size_t(utf8.size())),
                  std::uint64_t(it.value()));
    }
    char* buffer = nullptr;
    std::size_t size = 0;
    std::FILE* file = open_memstream(&buffer, &size);
    const bool written = file && tallyvox::indexer::writeBinaryPlist(file, words);
    if (file)
        std::fclose(file);
    const QByteArray bytes = written ? QByteArray(buffer, qsizetype(size)) : QByteArray();
    std::free(buffer);
    return bytes;
}

// A table written as "word=count ...", with "?" for unreadableCount.
WordTable tableOf(const QString& listing)
{
    WordTable table;
    for (const QString& entry : listing.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const qsizetype at = entry.lastIndexOf(QLatin1Char('='));
        const QStringView count = QStringView(entry).mid(at + 1);
        table.insert(entry.left(at), count == u"?" ? unreadableCount : count.toLongLong());
    }
    return table;
}

// n words with counts from 1 up to past 2^32, mixing ASCII, non-ASCII and long words.
WordTable makeTable(int n)
{
    WordTable table;
    const QString extras[] = {QStringLiteral("é"), QStringLiteral("日本"), QStringLiteral("𝄞")};
    for (int i = 0; i < n; ++i) {
        QString word = QStringLiteral("w%1").arg(i);
        if (i % 3 == 1)
            word += extras[i % 9 / 3];
        if (i % 10 == 2)
            word += QString(20 + i % 7, QLatin1Char('x'));
        const qint64 counts[] = {1, 2, 255, 256, 65535, 65536, 4294967295LL, 4294967301LL};
        table.insert(word, counts[i % 8] + (i % 5 == 0 ? i : 0));
    }
    return table;
}

// The bytes copied to end exactly at an unreadable page, so that a read past the end
// crashes; valid until the next call.
QByteArray guarded(const QByteArray& data)
{
    static const std::size_t page = std::size_t(::sysconf(_SC_PAGESIZE));
    static const std::size_t room = std::size_t{4} << 20;
    static char* const guard = [] {
        void* memory = ::mmap(nullptr, room + page, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ::mprotect(static_cast<char*>(memory) + room, page, PROT_NONE);
        return static_cast<char*>(memory) + room;
    }();
    if (std::size_t(data.size()) > room)
        qFatal("guarded: too many bytes");
    char* start = guard - data.size();
    std::memcpy(start, data.constData(), std::size_t(data.size()));
    return QByteArray::fromRawData(start, data.size());
}

} // namespace

class WordTableReaderTest : public QObject {
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void survivesDamagedBinary();
    void agreesWithPython();
};

void WordTableReaderTest::parses_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<WordTable>("expected");
    const auto accept = [](const char* name, const QByteArray& content, const WordTable& table) {
        QTest::newRow(name) << content << true << table;
    };
    const auto refuse = [](const char* name, const QByteArray& content) {
        QTest::newRow(name) << content << false << WordTable();
    };
    // What the indexer writes, with enough objects for 1-, 2- and 4-byte references, and
    // offsets past 64 KB.
    for (const WordTable& table :
         {WordTable(), tableOf(u"hello=3"_s), tableOf(u"Straße=1 straße=2 日本語=70000 𝄞clef=9"_s),
          makeTable(14), makeTable(300), makeTable(70000)}) {
        QTest::addRow("written, %d words", int(table.size()))
            << writeBinary(table) << true << table;
    }
    accept("xml, empty dict",
           "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD "
           "PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\"><dict/></plist>",
           {});
    accept("xml, words",
           "<plist version=\"1.0\"><dict>\n\t<key>a&amp;b</key>\n\t<integer>3</integer>\n"
           "\t<key>café</key><integer> -4 </integer>\n"
           "\t<key>nested</key><dict><key>x</key><integer>1</integer></dict>\n"
           "\t<key>real</key><real>2</real>\n\t<key>bad</key><integer>12x</integer>\n"
           "</dict></plist>",
           tableOf(u"a&b=3 café=-4 nested=? real=? bad=?"_s));
    accept("xml, bare dict", "<dict><key>w</key><integer>1</integer></dict>", tableOf(u"w=1"_s));

    refuse("empty file", {});
    refuse("plain text", "hello world\n");
    refuse("xml array", "<plist><array><integer>1</integer></array></plist>");
    refuse("xml string", "<plist><string>x</string></plist>");
    refuse("key without value", "<plist><dict><key>x</key></dict></plist>");
    refuse("value without key", "<plist><dict><integer>1</integer></dict>");
    refuse("unclosed xml", "<plist><dict><key>x</key><integer>1</integer>");
    refuse("binary header only", "bplist00");
    QByteArray array = writeBinary(tableOf(u"x=1"_s));
    array[8] = char(0xA1); // the root dictionary marker made an array's
    refuse("binary array", array);

    // Hostile binary files.
    const QByteArray magic = "bplist00";
    const auto bigEndian = [](quint64 value, int width) {
        QByteArray out;
        for (int i = width - 1; i >= 0; --i)
            out += char((value >> (8 * i)) & 0xFF);
        return out;
    };
    const auto trailer = [&](int offsetSize, int refSize, quint64 objects, quint64 top,
                             quint64 table) {
        return QByteArray(6, '\0') + char(offsetSize) + char(refSize) + bigEndian(objects, 8) +
               bigEndian(top, 8) + bigEndian(table, 8);
    };
    // A dictionary claiming 2^62 entries.
    refuse("huge count", magic + char(0xDF) + char(0x13) + bigEndian(1ULL << 62, 8) +
                             bigEndian(8, 1) + trailer(1, 1, 1, 0, 18));
    refuse("object count overflows",
           magic + char(0xD0) + bigEndian(8, 8) + trailer(8, 1, 1ULL << 61, 0, 9));
    refuse("table past the end", magic + char(0xD0) + trailer(1, 1, 1, 0, 4000));
    refuse("top object out of range", magic + char(0xD0) + char(8) + trailer(1, 1, 1, 5, 9));
    refuse("odd reference size", magic + char(0xD0) + char(8) + trailer(1, 3, 1, 0, 9));
    // 3000 keys that are all one 60 KB string object: each valid alone, together quadratic
    // to decode unless the reader notices that they reuse the same bytes.
    QByteArray overlap = magic;
    const int keys = 3000;
    const int stringAt = 8;
    overlap +=
        char(0x5F) + QByteArray(1, char(0x11)) + bigEndian(60000, 2) + QByteArray(60000, 'a');
    const quint64 valueAt = quint64(overlap.size());
    overlap += char(0x10) + QByteArray(1, char(1));
    const quint64 dictAt = quint64(overlap.size());
    overlap += char(0xDF) + QByteArray(1, char(0x11)) + bigEndian(keys, 2);
    overlap += bigEndian(2, 2).repeated(keys) + bigEndian(1, 2).repeated(keys);
    const quint64 tableAt = quint64(overlap.size());
    overlap += bigEndian(dictAt, 4) + bigEndian(valueAt, 4) + bigEndian(stringAt, 4);
    overlap += trailer(4, 2, 3, 0, tableAt);
    refuse("keys sharing one long string", overlap);
}

void WordTableReaderTest::parses()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, valid);
    QFETCH(WordTable, expected);
    const std::optional<WordTable> table = ParseWordTable(guarded(content));
    QCOMPARE(table.has_value(), valid);
    if (valid)
        QCOMPARE(*table, expected);
    tallyvox::testing::TestEnvironment environment;
    QVERIFY(ReadWordTableFile(environment.writeFile(QStringLiteral("f"), content)) == table);
    QVERIFY(!ReadWordTableFile(environment.root() + QStringLiteral("/absent")));
    QVERIFY(!ReadWordTableFile(environment.tempFolder()));
}

void WordTableReaderTest::agreesWithPython()
{
#ifndef PYTHON3
    QSKIP("python3 was not found at configure time");
#else
    tallyvox::testing::TestEnvironment environment;
    const WordTable table = makeTable(3000);
    const QString ours = environment.writeFile(QStringLiteral("ours.plist"), writeBinary(table));
    const QString theirs = environment.root() + QStringLiteral("/theirs.");
    // Python's plistlib reads the indexer's file, and writes one in each of its formats.
    QProcess python;
    python.start(
        QStringLiteral(PYTHON3),
        {QStringLiteral("-c"),
         QStringLiteral("import json, plistlib, sys\n"
                        "d = plistlib.load(open(sys.argv[1], 'rb'))\n"
                        "assert all(type(v) is int for v in d.values())\n"
                        "print(json.dumps({k: str(v) for k, v in d.items()}))\n"
                        "d = {'word': 1, 'Word': 2, 'naïve': 300, '日本語': 70000, '𝄞': 5,\n"
                        "     'big': 2**40, 'neg': -7, 'a&b<c>': 4, 'x' * 40: 6,\n"
                        "     'real': 2.5, 'list': [1, 2]}\n"
                        "for f in ('BINARY', 'XML'):\n"
                        "    with open(sys.argv[2] + f, 'wb') as out:\n"
                        "        plistlib.dump(d, out, fmt=getattr(plistlib, 'FMT_' + f))\n"),
         ours, theirs});
    QVERIFY(python.waitForFinished(30000));
    QVERIFY2(python.exitCode() == 0, python.readAllStandardError().constData());
    const QJsonObject object = QJsonDocument::fromJson(python.readAllStandardOutput()).object();
    QCOMPARE(object.size(), table.size());
    for (auto it = table.begin(); it != table.end(); ++it)
        QCOMPARE(object.value(it.key()).toString().toLongLong(), it.value());
    const WordTable expected =
        tableOf(u"word=1 Word=2 naïve=300 日本語=70000 𝄞=5 big=1099511627776 "
                "neg=-7 a&b<c>=4 real=? list=? "_s +
                QString(40, QLatin1Char('x')) + u"=6"_s);
    for (const char* format : {"BINARY", "XML"})
        QVERIFY(ReadWordTableFile(theirs + QLatin1String(format)) == expected);
#endif
}

void WordTableReaderTest::survivesDamagedBinary()
{
    // Every truncation and many single-byte changes of a real file: the reader may refuse
    // or read some table, but must never read outside the bytes it was given.
    const QByteArray good = writeBinary(makeTable(40));
    for (qsizetype size = 0; size < good.size(); ++size) {
        QVERIFY(!ParseWordTable(guarded(good.left(size))));
    }
    std::mt19937 random(7);
    const char values[] = {0, 1, 0x0F, 0x10, 0x13, 0x5F, 0x6F, char(0x7F), char(0x80), char(0xFF)};
    for (qsizetype at = 0; at < good.size(); ++at) {
        for (char value : values) {
            QByteArray damaged = good;
            damaged[at] = value;
            ParseWordTable(guarded(damaged));
        }
    }
}

QTEST_GUILESS_MAIN(WordTableReaderTest)
#include "tst_wordtablereader.moc"
