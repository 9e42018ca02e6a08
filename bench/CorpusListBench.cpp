// A combined list of many files with and without range and dispersion, the application's side
// only (the tables as the indexer leaves them, summed or kept word by word, then rendered):
//   tallyvox_bench_corpus FILES TOKENS MODE
// MODE "plain" sums the tables as a run without "IncludeRange" does (WordListRun::collect), "range"
// keeps them word by word and writes range, Juilland's D and DP. Prints the seconds of the run's
// work (making the made-up tables is not counted), the distinct words, the word-and-file pairs and
// the peak resident memory. bench/corpus-lists.py runs it and prints the ratio.

#include "words/ListSettings.h"
#include "words/WordListRenderer.h"
#include "words/WordSpread.h"
#include "words/WordTableShaping.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace tallyvox;

namespace {

constexpr int vocabularySize = 200000;

QString wordOf(int rank)
{
    QString word = QStringLiteral("w");
    do {
        word += QChar(u'a' + rank % 26);
        rank /= 26;
    } while (rank > 0);
    return word;
}

// One file's table: tokens drawn from a Zipf curve, as words are in text.
WordTable madeUpFile(std::mt19937& rng, const std::vector<double>& cumulative,
                     const std::vector<QString>& words, int tokens)
{
    std::uniform_real_distribution<double> uniform(0.0, cumulative.back());
    std::vector<qint64> counts(words.size(), 0);
    std::vector<int> used;
    for (int i = 0; i < tokens; ++i) {
        const auto rank =
            std::size_t(std::lower_bound(cumulative.begin(), cumulative.end(), uniform(rng)) -
                        cumulative.begin());
        if (counts[rank]++ == 0) {
            used.push_back(int(rank));
        }
    }
    WordTable table;
    for (const int rank : used) {
        table.insert(words[std::size_t(rank)], counts[std::size_t(rank)]);
    }
    table.size(); // sorted here, as the indexer's table arrives sorted
    return table;
}

// The sum as WordListRun::collect makes it without "IncludeRange": sums of 1, 2, 4 ...
// files, merged as a binary counter carries.
class BinarySum {
public:
    void add(WordTable table)
    {
        m_sums.emplace_back(std::move(table), 1);
        while (m_sums.size() >= 2 && m_sums[m_sums.size() - 2].second == m_sums.back().second) {
            auto [last, files] = std::move(m_sums.back());
            m_sums.pop_back();
            addWordTable(m_sums.back().first, last);
            m_sums.back().second += files;
        }
    }
    WordTable take()
    {
        WordTable words;
        while (!m_sums.empty()) {
            addWordTable(words, m_sums.back().first);
            m_sums.pop_back();
        }
        return words;
    }

private:
    std::vector<std::pair<WordTable, int>> m_sums;
};

long peakResidentKilobytes()
{
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0) {
            return std::strtol(line.c_str() + 6, nullptr, 10);
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || (std::strcmp(argv[3], "plain") != 0 && std::strcmp(argv[3], "range") != 0)) {
        std::fprintf(stderr, "usage: %s FILES TOKENS plain|range\n", argv[0]);
        return 2;
    }
    const int files = std::atoi(argv[1]);
    const int tokens = std::atoi(argv[2]);
    const bool range = std::strcmp(argv[3], "range") == 0;

    std::vector<QString> words;
    std::vector<double> cumulative;
    double weight = 0;
    for (int rank = 0; rank < vocabularySize; ++rank) {
        words.push_back(wordOf(rank));
        weight += 1.0 / (rank + 1);
        cumulative.push_back(weight);
    }
    std::mt19937 rng(1964);

    using Clock = std::chrono::steady_clock;
    Clock::duration spent{};
    WordTable total;
    BinarySum sum;
    WordSpread spread;
    qint64 pairs = 0;
    for (int file = 0; file < files; ++file) {
        const WordTable table = madeUpFile(rng, cumulative, words, tokens);
        pairs += table.size();
        const auto start = Clock::now();
        if (range) {
            spread.add(table);
        } else {
            sum.add(table);
        }
        spent += Clock::now() - start;
    }
    const Clock::duration collecting = spent;
    ListSettings settings;
    settings.alphabetical = false;
    settings.options.listFormat = ListFormat::Csv;
    settings.options.includeRange = range;
    ListSources sources;
    const auto start = Clock::now();
    if (range) {
        total = spread.sum();
        sources.spread = &spread;
    } else {
        total = sum.take();
    }
    const qint64 distinct = total.size();
    const RenderedList list =
        renderWordTable(std::move(total), settings, QStringLiteral("files"), sources);
    spent += Clock::now() - start;

    std::printf("%s seconds %.3f collecting %.3f distinct %lld pairs %lld bytes %lld peak_kb %ld\n",
                argv[3], std::chrono::duration<double>(spent).count(),
                std::chrono::duration<double>(collecting).count(), static_cast<long long>(distinct),
                static_cast<long long>(pairs),
                static_cast<long long>(list.text ? list.text->size() : 0), peakResidentKilobytes());
    return 0;
}
