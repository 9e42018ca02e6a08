#include "words/ReferenceCorpus.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// A table as "word=count" pairs in code-unit order, or "none".
QString described(const std::optional<WordTable>& table)
{
    if (!table) {
        return u"none"_s;
    }
    QStringList pairs;
    for (auto it = table->cbegin(); it != table->cend(); ++it) {
        pairs.append(it.key().toString() + u'=' + QString::number(it.value()));
    }
    return pairs.join(u' ');
}

struct World {
    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    PreferenceStore prefs;
    testing::FakeIndexer indexer;
    WordContext context{desktop, prefs, indexer, env.tempFolder()};

    /// The reference that setting names, read to its end.
    std::shared_ptr<const WordTable> read(const QString& setting, bool stopAtOnce = false)
    {
        reference = std::make_unique<ReferenceCorpus>(context, setting);
        QSignalSpy finished(reference.get(), &ReferenceCorpus::finished);
        reference->start();
        if (stopAtOnce) {
            reference->stop();
        }
        if (!finished.wait(10000)) {
            return nullptr;
        }
        return reference->table();
    }

    std::unique_ptr<ReferenceCorpus> reference;
};

} // namespace

class ReferenceCorpusTest : public QObject {
    Q_OBJECT

private slots:
    void wordListsTallyvoxWrote_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("CSV") << "word,count\r\nthe,3\r\ncat,2\r\n"_ba << u"cat=2 the=3"_s;
        QTest::newRow("CSV with figures and quotes")
            << "word,count,range\r\n\"3,000\",4,1\r\n\"say \"\"hi\"\"\",2,1\r\n\"two\r\nlines\",1,1\r\n"_ba
            << u"3,000=4 say \"hi\"=2 two\r\nlines=1"_s;
        QTest::newRow("CSV, totals after the empty row")
            << "word,count\r\nthe,3\r\n\r\n# words in the text,28\r\n"_ba << u"the=3"_s;
        QTest::newRow("CSV, formula guard")
            << "word,count\r\n'=sum,2\r\n'x,1\r\n'\tab,3\r\n"_ba << u"\tab=3 'x=1 =sum=2"_s;
        QTest::newRow("TSV with escapes and an older totals line")
            << "word\tcount\ntab\\there\t1\nback\\\\slash\t2\n# 3 words, 2 distinct words\n"_ba
            << u"back\\slash=2 tab\there=1"_s;
        QTest::newRow("byte-order mark")
            << "\xEF\xBB\xBFword\tcount\n\xC3\xBC\t5\n"_ba << u"\u00fc=5"_s;
        QTest::newRow("byte-order marks in a word are part of it")
            << "word\tcount\n\xEF\xBB\xBF\t2\n\xEF\xBB\xBF\xEF\xBB\xBFx\t1\n"_ba
            << u"\uFEFF=2 \uFEFF\uFEFFx=1"_s;
        QTest::newRow("a word twice") << "word,count\r\na,2\r\na,3\r\n"_ba << u"a=5"_s;
        QTest::newRow("header only") << "word,count\r\n"_ba << QString();
        QTest::newRow("no count column") << "word\r\nthe\r\n"_ba << u"none"_s;
        QTest::newRow("another header") << "words,count\r\nthe,3\r\n"_ba << u"none"_s;
        QTest::newRow("count that is no number") << "word,count\r\nthe,three\r\n"_ba << u"none"_s;
        QTest::newRow("negative count") << "word,count\r\nthe,-3\r\n"_ba << u"none"_s;
        QTest::newRow("empty count") << "word,count\r\nthe,\r\n"_ba << u"none"_s;
        QTest::newRow("row without count") << "word,count\r\nthe\r\n"_ba << u"none"_s;
        QTest::newRow("quote left open") << "word,count\r\n\"the,3\r\n"_ba << u"none"_s;
    }
    void wordListsTallyvoxWrote()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);
        QCOMPARE(described(parseWordList(bytes)), expected);
    }

    void referencesOfEachKind_data()
    {
        QTest::addColumn<QStringList>("files"); // "path:text" below the home folder
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("indexerRuns");
        QTest::newRow("a document")
            << QStringList{u"ref.txt:a b b"_s} << u"~/ref.txt"_s << u"a=1 b=2"_s << 1;
        QTest::newRow("a relative path")
            << QStringList{u"ref.txt:a b b"_s} << u"ref.txt"_s << u"a=1 b=2"_s << 1;
        QTest::newRow("a folder and its subfolders")
            << QStringList{u"corpus/one.txt:a b"_s, u"corpus/two.txt:b c"_s,
                           u"corpus/more/three.txt:c c"_s}
            << u"~/corpus"_s << u"a=1 b=2 c=3"_s << 3;
        QTest::newRow("a word list, not indexed")
            << QStringList{u"ref.csv:word,count\r\nx,7\r\n"_s} << u"~/ref.csv"_s << u"x=7"_s << 0;
        QTest::newRow("a CSV document")
            << QStringList{u"data.csv:name,age x"_s} << u"~/data.csv"_s << u"name,age=1 x=1"_s << 1;
        QTest::newRow("missing") << QStringList{} << u"~/nothing.txt"_s << u"none"_s << 0;
        QTest::newRow("an empty folder")
            << QStringList{u"corpus/.keep:"_s} << u"~/corpus/empty"_s << u"none"_s << 0;
        QTest::newRow("a document without words")
            << QStringList{u"ref.txt:"_s} << u"~/ref.txt"_s << u"none"_s << 1;
        QTest::newRow("a word list that is broken")
            << QStringList{u"ref.tsv:word\tcount\nx\tmany\n"_s} << u"~/ref.tsv"_s << u"none"_s << 0;
    }
    void referencesOfEachKind()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, setting);
        QFETCH(QString, expected);
        QFETCH(int, indexerRuns);
        World w;
        QDir().mkpath(w.env.home() + u"/corpus/empty"_s);
        for (const QString& file : files) {
            w.env.writeFile(u"home/"_s + file.section(u':', 0, 0), file.section(u':', 1).toUtf8());
        }
        const std::shared_ptr<const WordTable> table = w.read(setting);
        QCOMPARE(described(table ? std::optional(*table) : std::nullopt), expected);
        QCOMPARE(w.indexer.calls().size(), indexerRuns);
        // A reference that cannot be read is to be reported once.
        QCOMPARE(w.reference->takeFailureReport(), !table);
        QVERIFY(!w.reference->takeFailureReport());
    }

    // Part of a reference is no reference: one document the indexer fails on or cuts short
    // leaves none, however many others it read.
    void documentsThatFailSpoilTheReference_data()
    {
        QTest::addColumn<int>("ending");
        QTest::newRow("failed") << int(IndexerEnding::Failed);
        QTest::newRow("cut short") << int(IndexerEnding::Partial);
    }
    void documentsThatFailSpoilTheReference()
    {
        QFETCH(int, ending);
        World w;
        for (const char* name : {"a", "b", "c", "d"}) {
            w.env.writeFile(u"home/corpus/%1.txt"_s.arg(QLatin1String(name)), "word word");
        }
        const QString bad = w.env.home() + u"/corpus/b.txt"_s;
        testing::FakeIndexer::Script script;
        script.ending = static_cast<IndexerEnding>(ending);
        if (script.ending == IndexerEnding::Partial) {
            script.table = WordTable{{u"word"_s, 1}};
        }
        w.indexer.script(bad, script);
        w.indexer.script(bad, script, u"SearchKitIndexer32"_s);
        QVERIFY(!w.read(u"~/corpus"_s));
        QVERIFY(w.reference->isFinished());
        QVERIFY(w.reference->takeFailureReport());
    }

    // Quitting is no failure to report.
    void stoppedReferenceIsNotReported()
    {
        World w;
        w.env.writeFile(u"home/ref.txt"_s, "a b");
        w.indexer.setDefaultDelay(std::chrono::milliseconds(2000));
        QVERIFY(!w.read(u"~/ref.txt"_s, true));
        QVERIFY(!w.reference->takeFailureReport());
    }
};

QTEST_GUILESS_MAIN(ReferenceCorpusTest)
#include "ReferenceCorpusTest.moc"
