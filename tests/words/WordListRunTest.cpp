#include "prefs/PreferenceStore.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"
#include "words/OutputFolder.h"
#include "words/WordList.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QSignalSpy>
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
        for (qsizetype i = 0; i < documents.size(); ++i) {
            files.append(w.input(u"doc%1.txt"_s.arg(i), documents[i]));
            const WordTable table = testing::countWhiteSpaceWords(documents[i].toUtf8());
            for (auto it = table.cbegin(); it != table.cend(); ++it) {
                sum.insert(it.key(), sum.value(it.key()) + it.value());
            }
        }
        QCOMPARE(sum.value(u"the"_s), 3);

        QCOMPARE(w.runBatch(files, true), noErr);
        const QString list = u"Combined/Combined word list.tsv"_s;
        QCOMPARE(w.lists(), QStringList{list});
        QCOMPARE(readTsv(w.output() + u'/' + list), sum);
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
