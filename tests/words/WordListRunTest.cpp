#include "prefs/PreferenceStore.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/OutputFolder.h"
#include "words/WordList.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// Words between white space, as the stand-in indexer counts them.
const QStringList documents{
    u"The cat sat on the mat\n"_s,
    u"the dog THE cat 3,000 cats\n"_s,
    u"Dog eat dog \u00fcber alles the end\n"_s,
};

struct World {
    testing::TestEnvironment env;
    testing::RecordingDesktop desktop;
    PreferenceStore prefs;
    testing::FakeIndexer indexer;
    WordListRun run;
    WordContext context{desktop, prefs, indexer, env.tempFolder()};
    /// The lists belong to the run; a service's list is a run of its own.
    bool inARun = true;

    QString output() const { return env.dataHome() + u"/Okaluna Software/Tallyvox"_s; }

    FileRef input(const QString& name, const QString& text) const
    {
        return *FileRef::fromPath(env.writeFile(u"input/"_s + name, text.toUtf8()));
    }

    /// A batch run over the files, as the application's batch runs it: every list begun
    /// at once, and committed in the order of the files.
    Status runBatch(const QList<FileRef>& files, bool combine, bool quitting = false)
    {
        run.begin(combine);
        std::vector<std::unique_ptr<WordListJob>> jobs;
        for (const FileRef& file : files) {
            jobs.push_back(
                std::make_unique<WordListJob>(context, file, file.name(), inARun ? &run : nullptr));
            jobs.back()->start();
        }
        Status status = noErr;
        for (const auto& job : jobs) {
            if (!job->isReady()) {
                QSignalSpy ready(job.get(), &FileJob::ready);
                if (!ready.wait(10000)) {
                    return ioErr;
                }
            }
            if (const Status committed = job->commit(); committed != noErr) {
                status = committed;
            }
        }
        const Status finished = run.finish(context, quitting);
        return status != noErr ? status : finished;
    }

    /// Every file below the output folder, relative to it.
    QStringList lists() const
    {
        QStringList found;
        QDirIterator it(output(), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            found.append(it.next().mid(output().size() + 1));
        }
        found.sort();
        return found;
    }
};

// A TSV list read back as a table.
WordTable readTsv(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    WordTable table;
    const QStringList rows = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& row : rows.mid(1)) {
        table.insert(row.section(u'\t', 0, 0), row.section(u'\t', 1).toLongLong());
    }
    return table;
}

// Recomputes every figure of a combined keyword list (CSV, with range, dispersion, rate and
// totals) from the documents, split at white space as the stand-in indexer splits them,
// and prints what differs.
const char16_t recomputeKeywordList[] = uR"(
import csv, json, math, sys
from collections import Counter
args = json.loads(sys.argv[1])
def words(path):
    return open(path, encoding='utf-8').read().split()
files = [Counter(words(p)) for p in args['files']]
ref = Counter()
for p in args['reference']:
    ref.update(words(p))
total = Counter()
for f in files:
    total.update(f)
c, d = sum(total.values()), sum(ref.values())
sizes = [sum(f.values()) for f in files]
def g2(a, b):
    e1, e2 = c * (a + b) / (c + d), d * (a + b) / (c + d)
    t = lambda o, e: o * math.log(o / e) if o > 0 else 0
    return 2 * (t(a, e1) + t(b, e2))
rows, left_out = [], 0
for w in set(total) | set(ref):
    a, b = total[w], ref[w]
    g = g2(a, b)
    if g < args['threshold']:
        left_out += 1
        continue
    counts = [f[w] for f in files]
    dp = D = None
    if a > 0:
        dp = 0.5 * sum(abs(x / a - s / c) for x, s in zip(counts, sizes))
        p = [x / s for x, s in zip(counts, sizes)]
        m = sum(p) / len(p)
        sd = math.sqrt(sum((x - m) ** 2 for x in p) / len(p))
        D = 1 - (sd / m) / math.sqrt(len(p) - 1)
    lr = math.log2(((a or 0.5) / c) / ((b or 0.5) / d))
    rows.append([w, a, sum(1 for x in counts if x), D, dp, a * 1e6 / c, b, g, lr,
                 '+' if a * d > b * c else '-'])
rows.sort(key=lambda r: (r[9] != '+', -r[7], r[0].encode('utf-16-be')))
with open(args['list'], newline='', encoding='utf-8') as f:
    written = list(csv.reader(f, strict=True))
problems = []
header = ['word', 'count', 'range', 'juilland d', 'dp', 'per million', 'reference count',
          'log-likelihood', 'log ratio', 'sign']
if written[0] != header:
    problems.append(['header', written[0]])
end = written.index([])
for want, got in zip(rows, written[1:end]):
    for i, value in enumerate(want):
        cell = got[i]
        same = (cell == value if isinstance(value, str) else
                cell == '' if value is None else
                cell == str(value) if isinstance(value, int) else
                abs(float(cell) - value) <= 0.00005 + 1e-12)
        if not same:
            problems.append([want[0], header[i], cell, value])
if end - 1 != len(rows):
    problems.append(['rows', end - 1, len(rows)])
totals = {row[0]: row[1] for row in written[end + 1:]}
for name, value in [('# words in the text', c), ('# files', len(files)),
                    ('# words in the reference', d)]:
    if totals.get(name) != str(value):
        problems.append([name, totals.get(name), value])
if left_out == 0 or len(rows) < 3:
    problems.append(['the threshold chose nothing', left_out, len(rows)])
print(json.dumps(problems))
)";

} // namespace

class WordListRunTest : public QObject {
    Q_OBJECT

private slots:
    void combinedListIsTheSumOfItsFilesTables()
    {
        World w;
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Tsv));
        QList<FileRef> files;
        WordTable sum;
        const TypeRuns runs[] = {{700, 2}, {450, 1}, {0, 0}};
        for (qsizetype i = 0; i < documents.size(); ++i) {
            files.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
            const WordTable table = testing::countWhiteSpaceWords(documents[i].toUtf8());
            for (auto it = table.cbegin(); it != table.cend(); ++it) {
                sum.insert(it.key(), sum.value(it.key()) + it.value());
            }
            // What the real indexer would tell of texts of 2000, 1000 and 0 full runs.
            w.indexer.script(files.last().path(), {.table = table, .typeRuns = runs[i]});
        }
        QCOMPARE(sum.value(u"the"_s), 3);

        QCOMPARE(w.runBatch(files, true), noErr);
        const QString list = u"Combined/Combined word list.tsv"_s;
        QCOMPARE(w.lists(), QStringList{list});
        QCOMPARE(readTsv(w.output() + u'/' + list), sum);
        // The totals of the text, as rows after an empty row, and the files they came from;
        // the type/token runs, asked for only now, of every file added up, not averaged file
        // by file: (700 + 450) / 3000.
        QCOMPARE(w.indexer.calls().filter(u"--sttr"_s), QStringList());
        w.prefs.writeBool(prefs::IncludeTotals, true);
        QCOMPARE(w.runBatch(files, true), noErr);
        QCOMPARE(w.indexer.calls().filter(u"--sttr"_s).size(), 3);
        QFile withTotals(w.output() + u'/' + list);
        QVERIFY(withTotals.open(QIODevice::ReadOnly));
        QVERIFY(withTotals.readAll().endsWith("\n\n# words in the text\t19\n# words listed\t19\n"
                                              "# distinct words in the text\t15\n"
                                              "# distinct words listed\t15\n"
                                              "# type/token ratio\t0.7895\n"
                                              "# standardised type/token ratio (runs of 1000 "
                                              "words)\t0.3833\n"
                                              "# mean word length (characters)\t3.2632\n"
                                              "# files\t3\n"));
        w.desktop.clear();
        w.prefs.writeBool(prefs::IncludeTotals, false);
        QCOMPARE(w.runBatch(files, true), noErr);
        QCOMPARE(w.desktop.texts(u"editor"_s), QStringList{w.output() + u'/' + list});
        QVERIFY(w.desktop.logLines().contains(u"There are 19 words in 3 files"_s));
    }

    void runsOfEachKind_data()
    {
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("combine");
        QTest::addColumn<bool>("quitting");
        QTest::addColumn<QString>("lists");
        QTest::newRow("three files, each its own")
            << 3 << false << false << u"doc0.txt.txt doc1.txt.txt doc2.txt.txt"_s;
        QTest::newRow("three files, combined")
            << 3 << true << false << u"Combined/Combined word list.txt"_s;
        // A batch of one file is that file's own list, as without the option.
        QTest::newRow("one file, combined") << 1 << true << false << u"doc0.txt.txt"_s;
        QTest::newRow("no file") << 0 << true << false << QString();
        // Quit cut the file in progress short: no list of part of the files.
        QTest::newRow("ended by Quit") << 2 << true << true << QString();
    }
    void runsOfEachKind()
    {
        QFETCH(int, files);
        QFETCH(bool, combine);
        QFETCH(bool, quitting);
        QFETCH(QString, lists);
        World w;
        QList<FileRef> inputs;
        for (int i = 0; i < files; ++i) {
            inputs.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
        }
        QCOMPARE(w.runBatch(inputs, combine, quitting), noErr);
        QCOMPARE(w.lists().join(u' '), lists);
        QCOMPARE(w.desktop.texts(u"editor"_s).size(), w.lists().size());
        // A run that did not combine leaves nothing behind for the next.
        QCOMPARE(w.runBatch({w.input(u"next.txt"_s, u"next words"_s)}, false), noErr);
        QVERIFY(w.lists().contains(u"next.txt.txt"_s));
    }

    // Inputs named like the combined list keep their own lists, whatever runs first.
    void combinedListNeverTakesAFilesList()
    {
        World w;
        const QList<FileRef> files{w.input(u"Combined"_s, u"alpha"_s),
                                   w.input(u"Combined word list"_s, u"beta"_s),
                                   w.input(u"Combined word list.txt"_s, u"gamma"_s)};
        QCOMPARE(w.runBatch(files, false), noErr);
        QCOMPARE(w.runBatch(files, true), noErr);
        QCOMPARE(w.lists(),
                 (QStringList{u"Combined word list.txt"_s, u"Combined word list.txt.txt"_s,
                              u"Combined.txt"_s, u"Combined/Combined word list.txt"_s}));
        QFile own(w.output() + u"/Combined word list.txt"_s);
        QVERIFY(own.open(QIODevice::ReadOnly));
        QCOMPARE(own.readAll(), "beta (1)\n"_ba);
    }

    void unreadableStopListIsReportedOncePerRun_data()
    {
        QTest::addColumn<bool>("inARun");
        QTest::addColumn<bool>("combine");
        QTest::addColumn<int>("alerts");
        QTest::newRow("a run of three lists") << true << false << 1;
        QTest::newRow("a run of one combined list") << true << true << 1;
        // A service request makes one list and is a run of its own.
        QTest::newRow("three service requests") << false << false << 3;
    }
    void unreadableStopListIsReportedOncePerRun()
    {
        QFETCH(bool, inARun);
        QFETCH(bool, combine);
        QFETCH(int, alerts);
        World w;
        const QString stopList = w.env.root() + u"/missing stop list.txt"_s;
        w.prefs.writeString(prefs::StopListPath, stopList);
        w.inARun = inARun;
        QList<FileRef> files;
        for (qsizetype i = 0; i < documents.size(); ++i) {
            files.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
        }
        QCOMPARE(w.runBatch(files, combine), noErr);
        const QString alert =
            u"The stop list \"%1\" cannot be read, so the word lists are made without it."_s.arg(
                stopList);
        QCOMPARE(w.desktop.alerts(), QStringList(alerts, alert));
        // Written without it.
        QCOMPARE(w.desktop.texts(u"editor"_s).size(), combine ? 1 : 3);

        // The next run says it again.
        w.desktop.clear();
        QCOMPARE(w.runBatch(files, combine), noErr);
        QCOMPARE(w.desktop.alerts().size(), alerts);
    }

    void combinedKeywordListIsRecomputedInPython()
    {
        if (QStandardPaths::findExecutable(u"python3"_s).isEmpty()) {
            QSKIP("python3 is needed");
        }
        World w;
        const QStringList references{
            w.env.writeFile(u"reference/r1.txt"_s,
                            "the the the the a a a a and and and of of of of to to in in is "
                            "it that the dog\n"),
            w.env.writeFile(u"reference/more/r2.txt"_s,
                            "the of and to a in is was he for it with as his on be at by I "
                            "the the of cat\n")};
        // The reference takes longer than the files: the lists wait for it.
        testing::FakeIndexer::Script slow;
        slow.delay = std::chrono::milliseconds(300);
        slow.table = testing::countWhiteSpaceWords(
            "the of and to a in is was he for it with as his on be at by I the the of cat\n");
        w.indexer.script(references[1], slow);
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Csv));
        w.prefs.writeBool(prefs::IncludeRange, true);
        w.prefs.writeBool(prefs::IncludePerMillion, true);
        w.prefs.writeBool(prefs::IncludeTotals, true);
        w.prefs.writeString(prefs::ReferencePath, w.env.root() + u"/reference"_s);
        w.prefs.writeReal(prefs::KeynessThreshold, 1.0);
        QList<FileRef> files;
        QJsonArray filePaths;
        for (qsizetype i = 0; i < documents.size(); ++i) {
            files.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
            filePaths.append(files.last().path());
        }
        QCOMPARE(w.runBatch(files, true), noErr);
        const QString list = w.output() + u"/Combined/Combined word list.csv"_s;
        QCOMPARE(w.desktop.texts(u"editor"_s), QStringList{list});

        QJsonObject args{{u"files"_s, filePaths},
                         {u"reference"_s, QJsonArray::fromStringList(references)},
                         {u"list"_s, list},
                         {u"threshold"_s, 1.0}};
        QProcess python;
        python.start(u"python3"_s,
                     {u"-c"_s, QString::fromUtf16(recomputeKeywordList),
                      QString::fromUtf8(QJsonDocument(args).toJson(QJsonDocument::Compact))});
        QVERIFY(python.waitForFinished(10000));
        QCOMPARE(python.readAllStandardError(), QByteArray());
        QCOMPARE(python.readAllStandardOutput().trimmed(), "[]"_ba);
    }

    // No keyword list without its reference, and one alert for it, as for a stop list.
    void unreadableReferenceGivesOneAlertAndNoList_data()
    {
        QTest::addColumn<bool>("inARun");
        QTest::addColumn<bool>("combine");
        QTest::addColumn<int>("alerts");
        QTest::newRow("a run of three lists") << true << false << 1;
        QTest::newRow("a run of one combined list") << true << true << 1;
        QTest::newRow("three service requests") << false << false << 3;
    }
    void unreadableReferenceGivesOneAlertAndNoList()
    {
        QFETCH(bool, inARun);
        QFETCH(bool, combine);
        QFETCH(int, alerts);
        World w;
        const QString reference = w.env.root() + u"/missing reference"_s;
        w.prefs.writeString(prefs::ReferencePath, reference);
        w.inARun = inARun;
        QList<FileRef> files;
        for (qsizetype i = 0; i < documents.size(); ++i) {
            files.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
        }
        QCOMPARE(w.runBatch(files, combine), ioErr);
        const QString alert =
            u"The reference \"%1\" cannot be read, so no keyword list is made."_s.arg(reference);
        QCOMPARE(w.desktop.alerts(), QStringList(alerts, alert));
        QCOMPARE(w.lists(), QStringList());
        QVERIFY(w.desktop.texts(u"editor"_s).isEmpty());
    }

    // Every indexer run of an n-gram run counts n-grams, the reference's documents too, and
    // the options work on them: folding, a stop word at either edge, the minimum, range, CSV.
    void ngramRunTakesEveryOption()
    {
        World w;
        w.prefs.writeInteger(prefs::NGramLength, 2);
        w.prefs.writeString(prefs::StopListPath, w.env.writeFile(u"stop.txt"_s, "the\n"));
        w.prefs.writeBool(prefs::FoldCase, true);
        w.prefs.writeInteger(prefs::MinimumCount, 2);
        w.prefs.writeBool(prefs::IncludeRange, true);
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Csv));
        const QList<FileRef> files{w.input(u"a.txt"_s, u"The big dog saw the big dog"_s),
                                   w.input(u"b.txt"_s, u"big dog ran BIG DOG"_s)};
        QCOMPARE(w.runBatch(files, true), noErr);
        QFile list(w.output() + u"/Combined/Combined word list.csv"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        const QList<QByteArray> rows = list.readAll().split('\n');
        QCOMPARE(rows.size(), 3); // the header, one entry, the empty end
        QVERIFY2(rows[1].startsWith("big dog,4,2,"), rows[1].constData());

        w.prefs.writeString(prefs::ReferencePath,
                            w.env.writeFile(u"reference/r.txt"_s, "a big dog\n"));
        QCOMPARE(w.runBatch(files, false), noErr);
        QCOMPARE(w.indexer.calls().size(), 5);
        for (const QString& call : w.indexer.calls()) {
            QVERIFY2(call.endsWith(u" --ngram-length 2"_s), qPrintable(call));
        }
    }

    // A small English text grouped by a lemma file, against the list made by hand.
    void lemmaGroupsOfASmallText()
    {
        World w;
        w.prefs.writeString(prefs::LemmaListPath,
                            w.env.writeFile(u"lemmas.txt"_s,
                                            "# a few verbs and a noun\n"
                                            "go -> goes, went, going, gone\n"
                                            "be -> am, is, are, was, were, been, being\n"
                                            "child -> children\n"));
        w.prefs.writeBool(prefs::FoldCase, true);
        const FileRef text =
            w.input(u"text.txt"_s, u"She goes to school and he went home They are going now "
                                   u"I am here She was gone The children were happy A child "
                                   u"is happy"_s);
        QCOMPARE(w.runBatch({text}, false), noErr);
        QFile list(w.output() + u"/text.txt.txt"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "A (1)\nI (1)\nShe (2)\nThe (1)\nThey (1)\nand (1)\n"
                                 "be (5) {am 1, are 1, is 1, was 1, were 1}\n"
                                 "child (2) {child 1, children 1}\n"
                                 "go (4) {goes 1, going 1, gone 1, went 1}\n"
                                 "happy (2)\nhe (1)\nhere (1)\nhome (1)\nnow (1)\nschool (1)\n"
                                 "to (1)\n"_ba);

        // As a table the forms are a column of their own; a stop word drops a whole group.
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Csv));
        w.prefs.writeString(prefs::StopListPath, w.env.writeFile(u"stop.txt"_s, "BE\n"));
        w.prefs.writeInteger(prefs::MinimumCount, 2);
        QCOMPARE(w.runBatch({text}, false), noErr);
        QFile csv(w.output() + u"/text.txt.csv"_s);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        QCOMPARE(csv.readAll(), "word,count,forms\r\nShe,2,\r\nchild,2,\"child 1, children 1\"\r\n"
                                "go,4,\"goes 1, going 1, gone 1, went 1\"\r\nhappy,2,\r\n"_ba);
        QVERIFY(w.desktop.alerts().isEmpty());
    }

    // Range gathers a headword's forms file by file; a file that cannot be read is said
    // once and the list made without it.
    void lemmaGroupsSpreadOverFilesAndAnUnreadableFile()
    {
        World w;
        w.prefs.writeString(prefs::LemmaListPath,
                            w.env.writeFile(u"lemmas.txt"_s, "go -> went, goes\n"));
        w.prefs.writeBool(prefs::IncludeRange, true);
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Tsv));
        const QList<FileRef> files{w.input(u"a.txt"_s, u"went home"_s),
                                   w.input(u"b.txt"_s, u"goes home"_s),
                                   w.input(u"c.txt"_s, u"home"_s)};
        QCOMPARE(w.runBatch(files, true), noErr);
        QFile list(w.output() + u"/Combined/Combined word list.tsv"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        const QList<QByteArray> rows = list.readAll().split('\n');
        QVERIFY2(rows.size() == 4 && rows[1].startsWith("go\t2\t2\t") &&
                     rows[2].startsWith("home\t3\t3\t"),
                 rows.join('|').constData());

        w.prefs.writeString(prefs::LemmaListPath, w.env.root() + u"/missing.txt"_s);
        w.prefs.writeBool(prefs::IncludeRange, false);
        QCOMPARE(w.runBatch(files, false), noErr);
        QCOMPARE(w.desktop.alerts().size(), 1);
        QVERIFY(w.desktop.alerts().first().contains(u"lemma list"_s));
        QFile plain(w.output() + u"/a.txt.tsv"_s);
        QVERIFY(plain.open(QIODevice::ReadOnly));
        QCOMPARE(plain.readAll(), "word\tcount\nhome\t1\nwent\t1\n"_ba);
    }

    // A small English text grouped by the en_US dictionary, against the list made by hand;
    // an n-gram is grouped word by word.
    void lemmatizeASmallEnglishText()
    {
        World w;
        w.prefs.writeBool(prefs::Lemmatize, true);
        w.prefs.writeString(prefs::LemmaLanguage, u"en_US"_s);
        w.prefs.writeBool(prefs::FoldCase, true);
        const FileRef text =
            w.input(u"text.txt"_s, u"The cats were studying and a cat studies Dogs are going "
                                   u"home We go home The dog went home"_s);
        QCOMPARE(w.runBatch({text}, false), noErr);
        QFile list(w.output() + u"/text.txt.txt"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "The (2)\nWe (1)\na (1)\nand (1)\nare (1)\n"
                                 "cat (2) {cat 1, cats 1}\ndog (2) {Dogs 1, dog 1}\n"
                                 "go (2) {go 1, going 1}\nhome (3)\n"
                                 "study (2) {studies 1, studying 1}\nwent (1)\nwere (1)\n"_ba);

        w.prefs.writeInteger(prefs::NGramLength, 2);
        w.prefs.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Csv));
        const FileRef phrases = w.input(u"phrases.txt"_s, u"go home going home"_s);
        QCOMPARE(w.runBatch({phrases}, false), noErr);
        QFile csv(w.output() + u"/phrases.txt.csv"_s);
        QVERIFY(csv.open(QIODevice::ReadOnly));
        QCOMPARE(csv.readAll(), "word,count,forms\r\ngo home,2,\"go home 1, going home 1\"\r\n"
                                "home go,1,home going 1\r\n"_ba);
        QVERIFY(w.desktop.alerts().isEmpty());
    }

    // A dictionary that is not installed is said once a batch, and the lists are made as
    // without grouping; a lemma file, when there is one, is used instead of any dictionary.
    void lemmatizeWithoutItsDictionary()
    {
        World w;
        w.prefs.writeBool(prefs::Lemmatize, true);
        w.prefs.writeString(prefs::LemmaLanguage, u"xx_NONE"_s);
        const QList<FileRef> files{w.input(u"a.txt"_s, u"cats going"_s),
                                   w.input(u"b.txt"_s, u"cat goes"_s)};
        QCOMPARE(w.runBatch(files, false), noErr);
        QCOMPARE(w.desktop.alerts(), QStringList(missingDictionaryMessage().arg(u"xx_NONE"_s)));
        QFile a(w.output() + u"/a.txt.txt"_s);
        QVERIFY(a.open(QIODevice::ReadOnly));
        QCOMPARE(a.readAll(), "cats (1)\ngoing (1)\n"_ba);

        w.prefs.writeString(prefs::LemmaLanguage, u"en_US"_s);
        w.prefs.writeString(prefs::LemmaListPath, w.env.writeFile(u"lemmas.txt"_s, "go -> goes\n"));
        QCOMPARE(w.runBatch(files, false), noErr);
        QFile b(w.output() + u"/b.txt.txt"_s);
        QVERIFY(b.open(QIODevice::ReadOnly));
        QCOMPARE(b.readAll(), "cat (1)\ngo (1) {goes 1}\n"_ba);
        QCOMPARE(w.desktop.alerts().size(), 1);
    }

    void stopListAndFoldingShapeTheRunsList()
    {
        World w;
        const QString stopList = w.env.writeFile(u"stop.txt"_s, "# articles\nTHE\non\n");
        w.prefs.writeString(prefs::StopListPath, stopList);
        w.prefs.writeBool(prefs::FoldCase, true);
        w.prefs.writeInteger(prefs::MinimumCount, 2);
        QCOMPARE(w.runBatch({w.input(u"a.txt"_s, documents[0]), w.input(u"b.txt"_s, documents[1])},
                            true),
                 noErr);
        QFile list(w.output() + u"/Combined/Combined word list.txt"_s);
        QVERIFY(list.open(QIODevice::ReadOnly));
        QCOMPARE(list.readAll(), "cat (2)\n"_ba);
        QVERIFY(w.desktop.alerts().isEmpty());
    }
};

QTEST_GUILESS_MAIN(WordListRunTest)
#include "WordListRunTest.moc"
