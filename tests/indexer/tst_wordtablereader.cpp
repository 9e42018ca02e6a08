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
#include <random>

#include <sys/mman.h>
#include <unistd.h>

using tallyvox::ParseWordTable;
using tallyvox::ReadWordTableFile;
using tallyvox::unreadableCount;
using tallyvox::WordTable;
using tallyvox::indexer::WordMap;

namespace {

QByteArray writeBinary(const WordTable& table)
{
    WordMap words;
    for (auto it = table.begin(); it != table.end(); ++it) {
        const QByteArray utf8 = it.key().toUtf8();
        words.add(std::string_view(utf8.constData(), std::size_t(utf8.size())),
                  std::uint64_t(it.value()));
    }
    std::FILE* file = std::tmpfile();
    if (!file || !tallyvox::indexer::writeBinaryPlist(file, words))
        return {};
    QByteArray bytes(std::ftell(file), Qt::Uninitialized);
    std::rewind(file);
    const std::size_t read = std::fread(bytes.data(), 1, std::size_t(bytes.size()), file);
    std::fclose(file);
    return read == std::size_t(bytes.size()) ? bytes : QByteArray();
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

// Holds bytes so that they end exactly at an unreadable page: a read past the end crashes.
class GuardedBytes {
public:
    explicit GuardedBytes(const QByteArray& data)
    {
        const std::size_t page = std::size_t(::sysconf(_SC_PAGESIZE));
        m_length = ((std::size_t(data.size()) + page - 1) / page + 1) * page;
        m_memory =
            ::mmap(nullptr, m_length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        char* guard = static_cast<char*>(m_memory) + m_length - page;
        ::mprotect(guard, page, PROT_NONE);
        char* start = guard - data.size();
        std::memcpy(start, data.constData(), std::size_t(data.size()));
        m_view = QByteArray::fromRawData(start, data.size());
    }
    ~GuardedBytes() { ::munmap(m_memory, m_length); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    const QByteArray& bytes() const { return m_view; }

private:
    void* m_memory = nullptr;
    std::size_t m_length = 0;
    QByteArray m_view;
};

#ifdef PYTHON3
QByteArray runPython(const QString& script, const QStringList& arguments)
{
    QProcess python;
    python.start(QStringLiteral(PYTHON3), QStringList{QStringLiteral("-c"), script} + arguments);
    if (!python.waitForFinished(30000) || python.exitCode() != 0) {
        qWarning() << python.readAllStandardError();
        return {};
    }
    return python.readAllStandardOutput();
}
#endif

} // namespace

class WordTableReaderTest : public QObject {
    Q_OBJECT

private slots:
    void roundTrip_data();
    void roundTrip();
    void pythonReadsWhatTheIndexerWrites();
    void readsWhatPythonWrites_data();
    void readsWhatPythonWrites();
    void readsXml_data();
    void readsXml();
    void refusesWhatIsNoTable_data();
    void refusesWhatIsNoTable();
    void survivesDamagedBinary();
    void refusesHostileBinary_data();
    void refusesHostileBinary();
};

void WordTableReaderTest::roundTrip_data()
{
    QTest::addColumn<WordTable>("table");
    QTest::newRow("empty") << WordTable();
    QTest::newRow("one ascii word") << WordTable{{QStringLiteral("hello"), 3}};
    QTest::newRow("case and non-ascii") << WordTable{{QStringLiteral("Straße"), 1},
                                                     {QStringLiteral("straße"), 2},
                                                     {QStringLiteral("日本語"), 70000},
                                                     {QStringLiteral("𝄞clef"), 9}};
    // Enough objects for 1-, 2- and 4-byte references, and offsets past 64 KB.
    QTest::newRow("14 words") << makeTable(14);
    QTest::newRow("300 words") << makeTable(300);
    QTest::newRow("70000 words") << makeTable(70000);
}

void WordTableReaderTest::roundTrip()
{
    QFETCH(WordTable, table);
    const QByteArray bytes = writeBinary(table);
    QVERIFY(bytes.startsWith("bplist00"));
    const std::optional<WordTable> read = ParseWordTable(bytes);
    QVERIFY(read);
    QCOMPARE(*read, table);
}

void WordTableReaderTest::pythonReadsWhatTheIndexerWrites()
{
#ifndef PYTHON3
    QSKIP("python3 was not found at configure time");
#else
    tallyvox::testing::TestEnvironment environment;
    const WordTable table = makeTable(3000);
    const QString path = environment.writeFile(QStringLiteral("table.plist"), writeBinary(table));
    const QByteArray json =
        runPython(QStringLiteral("import json, plistlib, sys\n"
                                 "d = plistlib.load(open(sys.argv[1], 'rb'))\n"
                                 "assert all(type(v) is int for v in d.values())\n"
                                 "print(json.dumps({k: str(v) for k, v in d.items()}))"),
                  {path});
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    QCOMPARE(object.size(), table.size());
    for (auto it = table.begin(); it != table.end(); ++it)
        QCOMPARE(object.value(it.key()).toString().toLongLong(), it.value());
#endif
}

void WordTableReaderTest::readsWhatPythonWrites_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("binary") << QStringLiteral("FMT_BINARY");
    QTest::newRow("xml") << QStringLiteral("FMT_XML");
}

void WordTableReaderTest::readsWhatPythonWrites()
{
#ifndef PYTHON3
    QSKIP("python3 was not found at configure time");
#else
    QFETCH(QString, format);
    tallyvox::testing::TestEnvironment environment;
    const QString path = environment.root() + QStringLiteral("/python.plist");
    const QByteArray done = runPython(
        QStringLiteral("import plistlib, sys\n"
                       "d = {'word': 1, 'Word': 2, 'naïve': 300, '日本語': 70000, '𝄞': 5,\n"
                       "     'big': 2**40, 'neg': -7, 'a&b<c>': 4, 'x' * 40: 6,\n"
                       "     'real': 2.5, 'list': [1, 2]}\n"
                       "plistlib.dump(d, open(sys.argv[1], 'wb'), fmt=plistlib.%1)\n"
                       "print('ok')")
            .arg(format),
        {path});
    QCOMPARE(done.trimmed(), QByteArray("ok"));
    const std::optional<WordTable> table = ReadWordTableFile(path);
    QVERIFY(table);
    const WordTable expected{{QStringLiteral("word"), 1},
                             {QStringLiteral("Word"), 2},
                             {QStringLiteral("naïve"), 300},
                             {QStringLiteral("日本語"), 70000},
                             {QStringLiteral("𝄞"), 5},
                             {QStringLiteral("big"), 1LL << 40},
                             {QStringLiteral("neg"), -7},
                             {QStringLiteral("a&b<c>"), 4},
                             {QString(40, QLatin1Char('x')), 6},
                             {QStringLiteral("real"), unreadableCount},
                             {QStringLiteral("list"), unreadableCount}};
    QCOMPARE(*table, expected);
#endif
}

void WordTableReaderTest::readsXml_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<WordTable>("expected");
    const QByteArray header = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                              "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                              "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";
    QTest::newRow("empty dict") << header + "<plist version=\"1.0\"><dict/></plist>" << WordTable();
    QTest::newRow("words") << header + "<plist version=\"1.0\"><dict>\n"
                                       "\t<key>a&amp;b</key>\n\t<integer>3</integer>\n"
                                       "\t<key>café</key><integer> -4 </integer>\n"
                                       "\t<key>nested</key><dict><key>x</key><integer>1"
                                       "</integer></dict>\n"
                                       "\t<key>real</key><real>2</real>\n"
                                       "\t<key>bad</key><integer>12x</integer>\n"
                                       "</dict></plist>"
                           << WordTable{{QStringLiteral("a&b"), 3},
                                        {QStringLiteral("café"), -4},
                                        {QStringLiteral("nested"), unreadableCount},
                                        {QStringLiteral("real"), unreadableCount},
                                        {QStringLiteral("bad"), unreadableCount}};
    QTest::newRow("bare dict") << QByteArray("<dict><key>w</key><integer>1</integer></dict>")
                               << WordTable{{QStringLiteral("w"), 1}};
}

void WordTableReaderTest::readsXml()
{
    QFETCH(QByteArray, xml);
    QFETCH(WordTable, expected);
    const std::optional<WordTable> table = ParseWordTable(xml);
    QVERIFY(table);
    QCOMPARE(*table, expected);
}

void WordTableReaderTest::refusesWhatIsNoTable_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("plain text") << QByteArray("hello world\n");
    QTest::newRow("xml array") << QByteArray("<plist><array><integer>1</integer></array></plist>");
    QTest::newRow("xml string") << QByteArray("<plist><string>x</string></plist>");
    QTest::newRow("key without value") << QByteArray("<plist><dict><key>x</key></dict></plist>");
    QTest::newRow("value without key") << QByteArray("<plist><dict><integer>1</integer></dict>");
    QTest::newRow("unclosed xml") << QByteArray("<plist><dict><key>x</key><integer>1</integer>");
    QTest::newRow("binary header only") << QByteArray("bplist00");
    QByteArray array = writeBinary(WordTable{{QStringLiteral("x"), 1}});
    array[8] = char(0xA1); // the root dictionary marker made an array's
    QTest::newRow("binary array") << array;
}

void WordTableReaderTest::refusesWhatIsNoTable()
{
    QFETCH(QByteArray, content);
    QVERIFY(!ParseWordTable(content));
    tallyvox::testing::TestEnvironment environment;
    QVERIFY(!ReadWordTableFile(environment.writeFile(QStringLiteral("f"), content)));
    QVERIFY(!ReadWordTableFile(environment.root() + QStringLiteral("/absent")));
    QVERIFY(!ReadWordTableFile(environment.tempFolder()));
}

void WordTableReaderTest::survivesDamagedBinary()
{
    // Every truncation and many single-byte changes of a real file: the reader may refuse
    // or read some table, but must never read outside the bytes it was given.
    const QByteArray good = writeBinary(makeTable(40));
    for (qsizetype size = 0; size < good.size(); ++size) {
        const GuardedBytes bytes(good.left(size));
        QVERIFY(!ParseWordTable(bytes.bytes()));
    }
    std::mt19937 random(7);
    const char values[] = {0, 1, 0x0F, 0x10, 0x13, 0x5F, 0x6F, char(0x7F), char(0x80), char(0xFF)};
    for (qsizetype at = 0; at < good.size(); ++at) {
        for (char value : values) {
            QByteArray damaged = good;
            damaged[at] = value;
            const GuardedBytes bytes(damaged);
            ParseWordTable(bytes.bytes());
        }
    }
}

void WordTableReaderTest::refusesHostileBinary_data()
{
    QTest::addColumn<QByteArray>("content");
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
    QTest::newRow("huge count") << QByteArray("bplist00") + char(0xDF) + char(0x13) +
                                       bigEndian(1ULL << 62, 8) + bigEndian(8, 1) +
                                       trailer(1, 1, 1, 0, 18);
    QTest::newRow("object count overflows")
        << QByteArray("bplist00") + char(0xD0) + bigEndian(8, 8) + trailer(8, 1, 1ULL << 61, 0, 9);
    QTest::newRow("table past the end")
        << QByteArray("bplist00") + char(0xD0) + trailer(1, 1, 1, 0, 4000);
    QTest::newRow("top object out of range")
        << QByteArray("bplist00") + char(0xD0) + char(8) + trailer(1, 1, 1, 5, 9);
    QTest::newRow("odd reference size")
        << QByteArray("bplist00") + char(0xD0) + char(8) + trailer(1, 3, 1, 0, 9);
    // 3000 keys that are all one 60 KB string object: each valid alone, together quadratic
    // to decode unless the reader notices that they reuse the same bytes.
    QByteArray overlap = "bplist00";
    const int keys = 3000;
    const int stringAt = 8;
    overlap +=
        char(0x5F) + QByteArray(1, char(0x11)) + bigEndian(60000, 2) + QByteArray(60000, 'a');
    const quint64 valueAt = quint64(overlap.size());
    overlap += char(0x10) + QByteArray(1, char(1));
    const quint64 dictAt = quint64(overlap.size());
    overlap += char(0xDF) + QByteArray(1, char(0x11)) + bigEndian(keys, 2);
    for (int i = 0; i < keys; ++i)
        overlap += bigEndian(2, 2);
    for (int i = 0; i < keys; ++i)
        overlap += bigEndian(1, 2);
    const quint64 tableAt = quint64(overlap.size());
    overlap += bigEndian(dictAt, 4) + bigEndian(valueAt, 4) + bigEndian(stringAt, 4);
    overlap += trailer(4, 2, 3, 0, tableAt);
    QTest::newRow("keys sharing one long string") << overlap;
}

void WordTableReaderTest::refusesHostileBinary()
{
    QFETCH(QByteArray, content);
    const GuardedBytes bytes(content);
    QVERIFY(!ParseWordTable(bytes.bytes()));
}

QTEST_GUILESS_MAIN(WordTableReaderTest)
#include "tst_wordtablereader.moc"
