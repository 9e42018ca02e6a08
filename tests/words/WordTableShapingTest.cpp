#include "words/WordTableShaping.h"
#include "tests/common/TestEnvironment.h"
#include "words/StopList.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// "word:count ..." both ways; "u" stands for a count the indexer gave as no integer, "_" for
// the space between the words of an n-gram.
WordTable tableOf(const QString& entries)
{
    WordTable table;
    for (const QString& entry : entries.split(u' ', Qt::SkipEmptyParts)) {
        const QString count = entry.section(u':', -1);
        table.insert(entry.section(u':', 0, -2).replace(u'_', u' '),
                     count == u"u"_s ? unreadableCount : count.toLongLong());
    }
    return table;
}

QString describe(const WordTable& table)
{
    QStringList entries;
    for (auto it = table.cbegin(); it != table.cend(); ++it) {
        entries.append(it.key().toString().replace(u' ', u'_') + u':' +
                       (it.value() == unreadableCount ? u"u"_s : QString::number(it.value())));
    }
    entries.sort();
    return entries.join(u' ');
}

QString describe(const QSet<QString>& words)
{
    QStringList list(words.cbegin(), words.cend());
    list.sort();
    return list.join(u'|');
}

} // namespace

class WordTableShapingTest : public QObject {
    Q_OBJECT

private slots:
    void shapesTheTable_data()
    {
        QTest::addColumn<bool>("foldCase");
        QTest::addColumn<QString>("stopWords"); // separated by "|"
        QTest::addColumn<int>("minimumCount");
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("ngramLength");
        const auto fold = [](const char* name, const QString& table, const QString& expected) {
            QTest::newRow(name) << true << QString() << 1 << table << expected << 1;
        };
        const auto ngrams = [](const char* name, bool foldCase, const QString& stopWords,
                               const QString& table, const QString& expected) {
            QTest::newRow(name) << foldCase << stopWords << 1 << table << expected << 2;
        };
        ngrams("a stop word at either edge", false, u"the|of"_s,
               u"the_end:2 end_of:1 end_to:3 of_the:1 to_end:4"_s, u"end_to:3 to_end:4"_s);
        ngrams("a stop word inside stays", false, u"of"_s,
               u"end_of_the:1 the_end_of:1 the_end_day:2"_s, u"end_of_the:1 the_end_day:2"_s);
        ngrams("stop words folded in n-grams", true, u"THE"_s, u"The_End:2 the_end:1 big_end:3"_s,
               u"big_end:3"_s);
        ngrams("folding folds each word", true, QString(),
               u"The_END:1 the_end:2 Stra\u00dfe_X:1 strasse_x:1"_s,
               u"Stra\u00dfe_X:2 the_end:3"_s);
        ngrams("a word alone is compared whole", false, u"of"_s, u"of:1 off:2"_s, u"off:2"_s);
        // Written in the most frequent form; of equal counts the smallest in code units.
        fold("most frequent form", u"the:3 The:1 THE:5"_s, u"THE:9"_s);
        fold("sharp s is ss", u"Stra\u00dfe:2 STRASSE:1 strasse:1"_s, u"Stra\u00dfe:4"_s);
        fold("sharp s, a tie", u"\u00df:1 SS:1 ss:1"_s, u"SS:3"_s);
        // Full folding, the same in every locale: capital dotted I becomes i and a combining
        // dot, and the dotless i folds to itself.
        fold("Turkish dotted I apart", u"\u0130stanbul:3 istanbul:2 ISTANBUL:1"_s,
             u"istanbul:3 \u0130stanbul:3"_s);
        fold("dotted I with i and a combining dot", u"\u0130:1 i\u0307:2"_s, u"i\u0307:3"_s);
        fold("dotless i apart", u"\u0131:1 I:1 i:1"_s, u"I:2 \u0131:1"_s);
        fold("Greek final sigma",
             u"\u039f\u0394\u039f\u03a3:1 \u03bf\u03b4\u03bf\u03c2:2 "
             u"\u03bf\u03b4\u03bf\u03c3:1"_s,
             u"\u03bf\u03b4\u03bf\u03c2:4"_s);
        fold("counts that are no integer", u"a:u A:2 b:u B:u"_s, u"A:2 B:u"_s);
        fold("nothing to merge", u"cat:1 dog:2"_s, u"cat:1 dog:2"_s);

        // Stop words are compared exactly, or folded when folding is on.
        QTest::newRow("stop words exact")
            << false << u"the|Cat"_s << 1 << u"the:3 The:2 cat:1"_s << u"The:2 cat:1"_s << 1;
        QTest::newRow("stop words folded")
            << true << u"THE|strasse"_s << 1 << u"the:3 The:2 Stra\u00dfe:1 cat:1"_s << u"cat:1"_s
            << 1;
        QTest::newRow("stop word not in the table")
            << false << u"xyz"_s << 1 << u"a:1"_s << u"a:1"_s << 1;

        // The minimum applies to the merged count; 1 or less keeps every word, even one
        // counted 0 or given no integer.
        QTest::newRow("minimum 3")
            << false << QString() << 3 << u"a:3 b:2 c:u d:40"_s << u"a:3 d:40"_s << 1;
        QTest::newRow("minimum after folding")
            << true << QString() << 4 << u"The:2 the:2 cat:3"_s << u"The:4"_s << 1;
        QTest::newRow("minimum 1")
            << false << QString() << 1 << u"a:0 b:-1 c:u"_s << u"a:0 b:-1 c:u"_s << 1;
        QTest::newRow("minimum 0")
            << false << QString() << 0 << u"a:0 b:-1"_s << u"a:0 b:-1"_s << 1;
        QTest::newRow("every option off")
            << false << QString() << 1 << u"a:0 A:2 c:u"_s << u"A:2 a:0 c:u"_s << 1;
    }
    void shapesTheTable()
    {
        QFETCH(bool, foldCase);
        QFETCH(QString, stopWords);
        QFETCH(int, minimumCount);
        QFETCH(QString, table);
        QFETCH(QString, expected);
        QFETCH(int, ngramLength);
        WordListOptions options;
        options.foldCase = foldCase;
        options.ngramLength = ngramLength;
        options.minimumCount = minimumCount;
        for (const QString& word : stopWords.split(u'|', Qt::SkipEmptyParts)) {
            options.stopWords.insert(word);
        }
        WordTable shaped = tableOf(table);
        shapeWordTable(shaped, options);
        QCOMPARE(describe(shaped), expected);
    }

    void tablesOfSeveralFilesAddUp()
    {
        WordTable sum;
        for (const QString& table : {u"the:3 cat:1 x:u"_s, u"the:2 The:1 y:u"_s, u"cat:4 x:5"_s}) {
            addWordTable(sum, tableOf(table));
        }
        QCOMPARE(describe(sum), u"The:1 cat:5 the:5 x:5 y:u"_s);
        QCOMPARE(addCounts(std::numeric_limits<qint64>::max(), 1),
                 std::numeric_limits<qint64>::max());
    }

    void stopListText_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("words");
        QTest::newRow("comments and blank lines")
            << "# articles\n\nthe\n  and  # a conjunction\n#of\n\t\n"_ba << u"and|the"_s;
        QTest::newRow("byte-order mark and CR LF") << "\xEF\xBB\xBFthe\r\nof\r\n"_ba << u"of|the"_s;
        QTest::newRow("no line end at the end") << "a\nb"_ba << u"a|b"_s;
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("not UTF-8") << "caf\xE9\n"_ba << u"caf\uFFFD"_s;
        QTest::newRow("words as they are") << "\xC3\x9F\nThe\n"_ba << u"The|\u00df"_s;
    }
    void stopListText()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, words);
        QCOMPARE(describe(parseStopList(bytes)), words);
    }

    void stopListFiles_data()
    {
        QTest::addColumn<QString>("setting");
        QTest::addColumn<bool>("readable");
        QTest::newRow("absolute") << u"ROOT/home/stop.txt"_s << true;
        QTest::newRow("from the home folder") << u"~/stop.txt"_s << true;
        QTest::newRow("relative, from the home folder") << u"stop.txt"_s << true;
        QTest::newRow("missing") << u"ROOT/missing.txt"_s << false;
        QTest::newRow("a folder") << u"ROOT/home"_s << false;
        QTest::newRow("a named pipe without a writer") << u"ROOT/pipe"_s << false;
        QTest::newRow("too large") << u"ROOT/large.txt"_s << false;
        QTest::newRow("unreadable") << u"ROOT/locked.txt"_s << false;
    }
    void stopListFiles()
    {
        QFETCH(QString, setting);
        QFETCH(bool, readable);
        testing::TestEnvironment env;
        env.writeFile(u"home/stop.txt"_s, "the\n");
        QVERIFY(::mkfifo(QFile::encodeName(env.root() + u"/pipe"_s).constData(), 0600) == 0);
        QFile large(env.writeFile(u"large.txt"_s, "a\n"));
        QVERIFY(large.resize(largestStopList + 1));
        const QString locked = env.writeFile(u"locked.txt"_s, "the\n");
        QFile::setPermissions(locked, QFileDevice::WriteOwner);
        if (setting.endsWith(u"locked.txt"_s) && QFile(locked).open(QIODevice::ReadOnly)) {
            QSKIP("running with permissions that ignore unreadable files");
        }

        const std::optional<QSet<QString>> words =
            readStopList(QString(setting).replace(u"ROOT"_s, env.root()));
        QCOMPARE(words.has_value(), readable);
        if (readable) {
            QCOMPARE(describe(*words), u"the"_s);
        }
    }
};

QTEST_GUILESS_MAIN(WordTableShapingTest)
#include "WordTableShapingTest.moc"
