// The result file as other readers see it: libplist and Python's plistlib must read the
// indexer's binary list, with every key and count, keys in UTF-16 code-unit order.

#include "indexer/BinaryPlistWriter.h"
#include "tests/common/TestEnvironment.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <plist/plist.h>

using tallyvox::indexer::WordMap;
using namespace Qt::StringLiterals;

namespace {

using Entries = QList<std::pair<QString, qint64>>;

// The table the writer gets, and what a reader must find, in order.
struct Table {
    WordMap words;
    Entries expected;
};

Table makeTable(const Entries& entries, bool sorted)
{
    Table table{WordMap(2), entries};
    for (const auto& [word, count] : entries) {
        const QByteArray utf8 = word.toUtf8();
        table.words.add(std::string_view(utf8.constData(), std::size_t(utf8.size())),
                        std::uint64_t(count));
    }
    if (sorted) {
        table.words.sort();
    }
    std::sort(table.expected.begin(), table.expected.end());
    return table;
}

// n words, counts from 1 to past 2^32, ASCII and not, long and short, from both sides of
// the UTF-16 surrogates.
Entries manyWords(int n)
{
    const QString extras[] = {QString(), u"é"_s, u"日本"_s, u"𝄞"_s, QString(30, u'x'), u"\uFF21"_s};
    const qint64 counts[] = {1, 255, 256, 65536, 4294967295LL, 4294967301LL};
    Entries entries;
    for (int i = 0; i < n; ++i) {
        entries.append({u"w%1"_s.arg(i) + extras[i % 6], counts[i % 6] + i});
    }
    return entries;
}

QByteArray write(const WordMap& words)
{
    char* buffer = nullptr;
    std::size_t size = 0;
    std::FILE* file = open_memstream(&buffer, &size);
    const bool written = file && tallyvox::indexer::writeBinaryPlist(file, words);
    if (file) {
        std::fclose(file);
    }
    QByteArray bytes = written ? QByteArray(buffer, qsizetype(size)) : QByteArray();
    std::free(buffer);
    return bytes;
}

Entries readWithLibplist(const QByteArray& bytes)
{
    Entries entries;
    plist_t root = nullptr;
    plist_from_bin(bytes.constData(), uint32_t(bytes.size()), &root);
    if (!root || plist_get_node_type(root) != PLIST_DICT) {
        plist_free(root);
        return {{u"not a dictionary"_s, -1}};
    }
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(root, &iter);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(root, iter, &key, &value);
        if (!key) {
            break;
        }
        uint64_t count = 0;
        plist_get_uint_val(value, &count);
        entries.append({QString::fromUtf8(key), qint64(count)});
        std::free(key);
    }
    std::free(iter);
    plist_free(root);
    return entries;
}

} // namespace

class BinaryPlistWriterTest : public QObject {
    Q_OBJECT

private slots:
    void othersReadIt_data();
    void othersReadIt();
};

void BinaryPlistWriterTest::othersReadIt_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<bool>("sorted"); // the table sorted before writing, as the counter does
    const Entries mixed{{u"Straße"_s, 1},  {u"straße"_s, 2},    {u"日本語"_s, 70000},
                        {u"𝄞clef"_s, 9},   {u"\uE000pua"_s, 3}, {u"\uFFFDx"_s, 4},
                        {u"zebra"_s, 256}, {u"Zebra"_s, 65535}, {u"a"_s, 1}};
    QTest::newRow("empty") << Entries() << true;
    QTest::newRow("mixed scripts") << mixed << true;
    QTest::newRow("mixed scripts, not sorted first") << mixed << false;
    // Enough objects for 2- and 4-byte references, and offsets past 64 KB.
    QTest::newRow("300 words") << manyWords(300) << true;
    QTest::newRow("70000 words") << manyWords(70000) << true;
}

void BinaryPlistWriterTest::othersReadIt()
{
    QFETCH(Entries, entries);
    QFETCH(bool, sorted);
    const Table table = makeTable(entries, sorted);
    const QByteArray bytes = write(table.words);
    QVERIFY(bytes.startsWith("bplist00"));
    QCOMPARE(readWithLibplist(bytes), table.expected);

#ifdef PYTHON3
    tallyvox::testing::TestEnvironment environment;
    const QString path = environment.writeFile(QStringLiteral("list"), bytes);
    QProcess python;
    python.start(QStringLiteral(PYTHON3), {QStringLiteral("-c"), uR"(import json, plistlib, sys
table = plistlib.load(open(sys.argv[1], 'rb'))
print(json.dumps([[k, v] for k, v in table.items()]))
)"_s,
                                           path});
    QVERIFY(python.waitForFinished(60000));
    QVERIFY2(python.exitCode() == 0, python.readAllStandardError().constData());
    Entries fromPython;
    for (const QJsonValue pair : QJsonDocument::fromJson(python.readAllStandardOutput()).array()) {
        fromPython.append({pair[0].toString(), qint64(pair[1].toDouble())});
    }
    QCOMPARE(fromPython, table.expected);
#endif
}

QTEST_GUILESS_MAIN(BinaryPlistWriterTest)
#include "BinaryPlistWriterTest.moc"
