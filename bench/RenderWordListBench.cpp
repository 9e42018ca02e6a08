// Times a word list of many distinct words through the application's side of the pipeline:
// the indexer run and result read, ordering in both orders, and rendering, beside
// `sort | uniq -c` on the same words as a peer measured in the same run; best of three.
//   tallyvox_bench_render INDEXER_DIR [DISTINCT_WORDS]

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/IndexerClient.h"
#include "words/ProcessIndexer.h"
#include "words/WordListRenderer.h"
#include "words/WordOrdering.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <random>

using namespace tallyvox;

namespace {

// Says nothing: only the timings matter here.
class QuietDesktop final : public Desktop {
public:
    void alert(const QString&) override {}
    void stopAlert(const QString&, const QString&) override {}
    QStringList chooseFilesToOpen(const QString&) override { return {}; }
    QString chooseSavePath(const QString&) override { return {}; }
    void openInTextEditor(const QString&) override {}
    bool openFile(const QString&) override { return false; }
    bool openUrl(const QUrl&) override { return false; }
    void beep() override {}
    void playSound(const QString&) override {}
    void raiseApplication() override {}
    void log(const QString&) override {}
    void setClipboardText(const QString&) override {}
    QList<PasteboardItem> readSelection(SelectionSource) override { return {}; }
    void filesChanged(const QStringList&) override {}
};

// Distinct lower-case words, each one to three times, one per line.
QByteArray makeWords(int distinct)
{
    std::mt19937 random(1964);
    QByteArray text;
    for (int i = 0; i < distinct; ++i) {
        QByteArray word;
        for (int n = i + 1; n > 0; n /= 26) {
            word.append(char('a' + n % 26));
        }
        word.append(char('a' + random() % 26));
        for (unsigned repeat = 0; repeat <= random() % 3; ++repeat) {
            text.append(word).append('\n');
        }
    }
    return text;
}

// The file's table, waited for: a benchmark has nothing else to do meanwhile.
WordTable indexNow(const WordContext& context, const FileRef& file)
{
    const std::unique_ptr<WordTableJob> job = BuildWordTable(context, file);
    QEventLoop loop;
    QObject::connect(job.get(), &WordTableJob::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return std::move(job->table());
}

double seconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e9;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s INDEXER_DIR [DISTINCT_WORDS]\n", argv[0]);
        return 2;
    }
    const int distinct = argc > 2 ? std::atoi(argv[2]) : 350000;
    QTemporaryDir dir;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(dir.path()));
    const QString input = dir.path() + QStringLiteral("/words.txt");
    QFile file(input);
    if (!file.open(QIODevice::WriteOnly) || file.write(makeWords(distinct)) < 0) {
        return 1;
    }
    file.close();

    QuietDesktop desktop;
    const PreferenceStore prefs;
    ProcessIndexer indexer(desktop, {QFile::decodeName(argv[1]), dir.path()});
    const WordContext context{desktop, prefs, indexer, dir.path()};
    const FileRef ref = *FileRef::fromPath(input);

    // Best of three for every step: the machine's other work only ever adds time.
    constexpr int runs = 3;
    double indexing = 1e9, alphabetical = 1e9, byCount = 1e9, whole = 1e9, sortUniq = 1e9;
    WordTable table;
    std::optional<QByteArray> text;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        table = indexNow(context, ref);
        indexing = std::min(indexing, seconds(timer));

        std::optional<WordOrder> words;
        std::optional<WordOrder> counts;
        timer.restart();
        OrderWords(true, table, words, counts, true);
        alphabetical = std::min(alphabetical, seconds(timer));
        timer.restart();
        OrderWords(true, table, words, counts, false);
        byCount = std::min(byCount, seconds(timer));

        timer.restart();
        text =
            renderWordTable(indexNow(context, ref), ListSettings{}, QStringLiteral("words")).text;
        whole = std::min(whole, seconds(timer));

        QProcess peer;
        timer.restart();
        peer.start(QStringLiteral("sh"),
                   {QStringLiteral("-c"),
                    QStringLiteral("LC_ALL=C sort \"$0\" | uniq -c > /dev/null"), input});
        peer.waitForFinished(-1);
        sortUniq = std::min(sortUniq, seconds(timer));
    }

    std::printf("distinct words            %d (table %lld)\n", distinct,
                static_cast<long long>(table.size()));
    std::printf("indexer run + read        %.3f s\n", indexing);
    std::printf("ordering, alphabetical    %.3f s\n", alphabetical);
    std::printf("ordering, by count        %.3f s\n", byCount);
    std::printf("list, whole               %.3f s (%.3f s beyond the indexer run)\n", whole,
                whole - indexing);
    std::printf("sort | uniq -c (peer)     %.3f s\n", sortUniq);
    std::printf("list / peer               %.2fx\n", whole / sortUniq);
    return text ? 0 : 1;
}
