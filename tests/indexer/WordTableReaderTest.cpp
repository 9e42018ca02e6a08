// The result file both ways: the indexer's binary writer against the application's reader,
// both against Python's plistlib, and the reader against broken and hostile files.

#include "words/WordTableReader.h"
#include "indexer/BinaryPlistWriter.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace tallyvox {
// Failures then show the words.
char* toString(const WordTable& table)
{
    QStringList entries;
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        entries.append(it.key().toString() + u'=' + QString::number(it.value()));
    }
    return QTest::toString(entries.join(u' '));
}
} // namespace tallyvox

using namespace tallyvox;
using indexer::WordMap;
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
    const bool written = file && indexer::writeBinaryPlist(file, words);
    if (file) {
        std::fclose(file);
    }
    QByteArray bytes = written ? QByteArray(buffer, qsizetype(size)) : QByteArray();
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
    const QString extras[] = {QString(), u"é"_s, u"日本"_s, u"𝄞"_s, QString(30, u'x')};
    const qint64 counts[] = {1, 255, 256, 65536, 4294967295LL, 4294967301LL};
    WordTable table;
    for (int i = 0; i < n; ++i) {
        table.insert(u"w%1"_s.arg(i) + extras[i % 5], counts[i % 6] + i);
    }
    return table;
}

QByteArray bigEndian(quint64 value, int width)
{
    QByteArray out;
    for (int i = width - 1; i >= 0; --i) {
        out += char((value >> (8 * i)) & 0xFF);
    }
    return out;
}

// Where a binary list's root object starts, from its trailer and offset table.
qsizetype topObjectOffset(const QByteArray& list)
{
    const auto number = [&list](qsizetype at, int width) {
        quint64 value = 0;
        for (int i = 0; i < width; ++i) {
            value = (value << 8) | quint8(list[at + i]);
        }
        return qsizetype(value);
    };
    const int offsetSize = quint8(list[list.size() - 26]);
    const qsizetype top = number(list.size() - 16, 8);
    return number(number(list.size() - 8, 8) + top * offsetSize, offsetSize);
}

QByteArray trailer(int offsetSize, int refSize, quint64 objects, quint64 top, quint64 table)
{
    return QByteArray(6, '\0') + char(offsetSize) + char(refSize) + bigEndian(objects, 8) +
           bigEndian(top, 8) + bigEndian(table, 8);
}

} // namespace

class WordTableReaderTest : public QObject {
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
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
         {WordTable(), tableOf(u"Straße=1 straße=2 日本語=70000 𝄞clef=9"_s), makeTable(300),
          makeTable(70000)}) {
        QTest::addRow("written, %d words", int(table.size()))
            << writeBinary(table) << true << table;
    }
    accept("xml, empty dict", "<plist><dict/></plist>", {});
    accept("xml, words",
           "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD "
           "PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\"><dict>\n\t<key>a&amp;b</key>\n\t<integer>3</integer>\n"
           "\t<key>café</key><integer> -4 </integer>\n"
           "\t<key>nested</key><dict><key>x</key><integer>1</integer></dict>\n"
           "\t<key>real</key><real>2</real>\n\t<key>bad</key><integer>12x</integer>\n"
           "</dict></plist>",
           tableOf(u"a&b=3 café=-4 nested=? real=? bad=?"_s));
    // Other writers may give the words in any order, even twice: sorted, the later kept.
    accept("xml, out of order and a word twice",
           "<?xml version=\"1.0\" encoding=\"UTF-8\"?><plist><dict><key>b</key><integer>1</integer>"
           "<key>a</key><integer>2</integer>"
           "<key>𝄞</key><integer>4</integer><key>～</key><integer>5"
           "</integer><key>b</key><integer>3</integer></dict></plist>",
           tableOf(u"a=2 b=3 𝄞=4 ～=5"_s));

    refuse("empty file", {});
    refuse("plain text", "hello world\n");
    refuse("xml array", "<plist><array><integer>1</integer></array></plist>");
    refuse("unclosed xml", "<plist><dict><key>x</key><integer>1</integer>");
    const QByteArray good = writeBinary(makeTable(40));
    refuse("binary cut in the objects", good.left(good.size() / 2));
    refuse("binary cut in the trailer", good.chopped(1));
    QByteArray array = writeBinary(tableOf(u"x=1"_s));
    array[topObjectOffset(array)] = char(0xA1); // the root dictionary marker made an array's
    refuse("binary array", array);

    // Hostile binary files; the fuzzer tries many more shapes.
    const QByteArray magic = "bplist00";
    refuse("table past the end", magic + char(0xD0) + trailer(1, 1, 1, 0, 4000));
    refuse("top object out of range", magic + char(0xD0) + char(8) + trailer(1, 1, 1, 5, 9));
    // 3000 keys that are all one 60 KB string object: each valid alone, together quadratic
    // to decode unless the reader notices that they reuse the same bytes.
    const QByteArray text = magic + "\x5F\x11" + bigEndian(60000, 2) + QByteArray(60000, 'a');
    const quint64 valueAt = quint64(text.size());
    const QByteArray dict = text + "\x10\x01" + "\xDF\x11" + bigEndian(3000, 2) +
                            bigEndian(2, 2).repeated(3000) + bigEndian(1, 2).repeated(3000);
    refuse("keys sharing one long string", dict + bigEndian(valueAt + 2, 4) +
                                               bigEndian(valueAt, 4) + bigEndian(8, 4) +
                                               trailer(4, 2, 3, 0, quint64(dict.size())));
}

void WordTableReaderTest::parses()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, valid);
    QFETCH(WordTable, expected);
    const std::optional<WordTable> table = ParseWordTable(content);
    QCOMPARE(table.has_value(), valid);
    if (valid) {
        QCOMPARE(*table, expected);
    }
    testing::TestEnvironment environment;
    QVERIFY(ReadWordTableFile(environment.writeFile(QStringLiteral("f"), content)) == table);
    QVERIFY(!ReadWordTableFile(environment.root() + QStringLiteral("/absent")));
    QVERIFY(!ReadWordTableFile(environment.tempFolder()));
}

void WordTableReaderTest::agreesWithPython()
{
#ifndef PYTHON3
    QSKIP("python3 was not found at configure time");
#else
    // Python's plistlib reads the indexer's file and writes it again, and writes a table of
    // its own, each in both of its formats.
    testing::TestEnvironment environment;
    const WordTable table = makeTable(3000);
    const QString ours = environment.writeFile(QStringLiteral("ours"), writeBinary(table));
    const QString out = environment.root() + QLatin1Char('/');
    QProcess python;
    python.start(QStringLiteral(PYTHON3), {QStringLiteral("-c"), uR"(import plistlib, sys
ours = plistlib.load(open(sys.argv[1], 'rb'))
assert all(type(v) is int for v in ours.values())
theirs = {'word': 1, 'Word': 2, 'naïve': 300, '日本語': 70000, '𝄞': 5, 'big': 2**40,
          'neg': -7, 'a&b<c>': 4, 'x' * 40: 6, 'real': 2.5, 'list': [1, 2]}
for f in ('BINARY', 'XML'):
    for name, d in (('ours', ours), ('theirs', theirs)):
        with open(sys.argv[2] + name + f, 'wb') as file:
            # Ours in the order the indexer wrote it, theirs in no order at all.
            plistlib.dump(d, file, fmt=getattr(plistlib, 'FMT_' + f), sort_keys=name == 'ours')
)"_s,
                                           ours, out});
    QVERIFY(python.waitForFinished(30000));
    QVERIFY2(python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0,
             python.readAllStandardError().constData());
    const WordTable theirs = tableOf(u"word=1 Word=2 naïve=300 日本語=70000 𝄞=5 big=1099511627776 "
                                     "neg=-7 a&b<c>=4 real=? list=? "_s +
                                     QString(40, QLatin1Char('x')) + u"=6"_s);
    for (const char* format : {"BINARY", "XML"}) {
        QVERIFY(ReadWordTableFile(out + u"ours"_s + QLatin1String(format)) == table);
        QVERIFY(ReadWordTableFile(out + u"theirs"_s + QLatin1String(format)) == theirs);
    }
#endif
}

QTEST_GUILESS_MAIN(WordTableReaderTest)
#include "WordTableReaderTest.moc"
