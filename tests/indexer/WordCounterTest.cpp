// The ASCII fast path and the block handling of WordCounter must give exactly what ICU alone
// gives on the same text, however the text is cut into pieces.

#include "indexer/WordCounter.h"

#include <QTest>

#include <map>
#include <random>
#include <string>

using namespace tallyvox::indexer;

namespace {

using Counts = std::map<std::string, std::uint64_t>;

Counts toCounts(const WordMap& words)
{
    Counts counts;
    words.forEach([&](std::string_view word, std::uint64_t n) { counts[std::string(word)] = n; });
    return counts;
}

// Varied text: ASCII words and every ASCII punctuation byte, numbers, other scripts,
// combining marks and several kinds of space, in random order.
QByteArray variedText(qsizetype size, unsigned seed)
{
    static const char* const pieces[] = {
        "the",    "Word",     "don't",    "3.14",    "1,000",  "a.b",
        "x'y",    "__init__", "_",        "__",      "@",      "me@example.org",
        "v1.2.3", "e.g.",     "a;b",      "1;2",     "a:b",    "'",
        "\"",     ".",        ",",        ";",       "-",      "café",
        "naïve",  "Straße",   "Привет",   "Ελλάδα",  "日本語", "テキスト",
        "中文",   "한국어",   "ภาษาไทย",  "שלום",    "צה\"ל",  "مرحبا",
        "١٢٣",    "１２３",   "\u0301",   "e\u0301", "“q”",    "‘s’",
        "—",      "…",        "\u00A0",   "\u3000",  "👍",      "©",
        "x²",     "\xff",     "\xe2\x82", "\t",      "\n",     "\r\n",
        "  ",
    };
    constexpr std::size_t pieceCount = sizeof(pieces) / sizeof(pieces[0]);
    std::mt19937 random(seed);
    QByteArray text;
    while (text.size() < size) {
        text += pieces[random() % pieceCount];
        const unsigned gap = random() % 8;
        if (gap < 4) {
            text += ' ';
        } else if (gap == 4) {
            text += static_cast<char>(0x21 + random() % 0x5E); // any printable ASCII
        }
    }
    return text;
}

} // namespace

class WordCounterTest : public QObject {
    Q_OBJECT

private slots:
    void agreesWithIcu_data();
    void agreesWithIcu();
    void exactCounts();
    void tableCountsLikeAStdMap();
};

void WordCounterTest::agreesWithIcu_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<WordCounter::Options>("options");
    QTest::addColumn<int>("piece"); // the text is pushed in pieces of this size
    // Small blocks and pieces put block and piece edges inside words and characters. Blocks
    // stay longer than the longest run without whitespace, which the counter would cut.
    const auto row = [](const char* name, const QByteArray& text) {
        QTest::addRow("%s, whole", name) << text << WordCounter::Options{} << int(text.size() + 1);
        const std::pair<WordCounter::Options, int> small[] = {
            {{64, 1}, 1}, {{64, 2}, 3}, {{97, 2}, 7}, {{150, 1}, 5}};
        for (const auto& [options, piece] : small) {
            QTest::addRow("%s, block %d, %u threads, piece %d", name, int(options.blockSize),
                          options.threads, piece)
                << text << options << piece;
        }
    };
    row("punctuation and controls",
        "Hello, world! It's e.g. U.S.A. end. (x) [y] a-b a/b a:b "
        "C++ #tag $v a|b http://example.org/x?y=z&w=1 a\tb\r\nc\fd\ve\x01"
        "f\x7fg");
    row("numbers",
        "3.14 3,000 1;2 1:2 v1.2.3 10.0.0.1 1.a a.1 007 1e10 -5 +7 1'000 2.x 1,a ١٢٣ ＡＢ１２");
    row("at and underscore", "foo@bar.com @ @@ _ __ ___ __init__ a_b _1 1_ a_.b a._b _._ x_'y");
    row("apostrophes", "don't it''s 'tis o'clock rock'n'roll x' 'y 1'2 a'1 1'a x’s ‘q’");
    row("hebrew with quotes", "צה\"ל ו\"ח a\"b \"שלום\" ש'\"ל");
    row("cjk and thai",
        "日本語のテキストです。中文文本，还有한국어 텍스트도 カタカナ ｶﾀｶﾅ ภาษาไทยง่าย");
    row("combining marks",
        " \u0301x cafe\u0301 e\u0301cole \u0301lead a \u0301b \t\u0301c\n\u0301d a\u200db");
    row("malformed utf-8",
        "abc\xff\xfe def \xc3 ghi \xe2\x82 jkl caf\xc3\xa9\xff \xed\xa0\x80x 👍🏽");
    row("empty", "");
    // Long varied texts, with blocks also split between the two threads.
    for (const std::size_t blockSize : {4096, 200 * 1024}) {
        QTest::addRow("varied, blocks of %d", int(blockSize))
            << variedText(600 * 1024, unsigned(blockSize)) << WordCounter::Options{blockSize, 2}
            << 100001;
    }
    // No whitespace for far longer than a block: the counter must cut the run (memory stays
    // bounded) and, where ICU's boundaries do not depend on context, still count exactly.
    QByteArray run;
    for (int i = 0; run.size() < 300 * 1024; ++i) {
        run += "alpha/βeta/" + QByteArray::number(i % 97) + "/";
    }
    QTest::newRow("long run without spaces") << run << WordCounter::Options{4096, 2} << 1000;
}

void WordCounterTest::agreesWithIcu()
{
    QFETCH(QByteArray, text);
    QFETCH(WordCounter::Options, options);
    QFETCH(int, piece);
    const std::string_view view(text.constData(), std::size_t(text.size()));
    WordCounter counter(options);
    for (std::size_t i = 0; i < view.size(); i += std::size_t(piece)) {
        counter.text(view.substr(i, std::size_t(piece)));
    }
    QVERIFY(toCounts(counter.finish()) == toCounts(countWithIcu(view)));
}

// Exact counts, not only agreement with ICU: NFC, case kept, and a boundary ends a word.
void WordCounterTest::exactCounts()
{
    WordCounter counter({64, 2});
    for (const std::string_view piece :
         {"cafe\u0301 café Café CAFÉ abc", "def don", "'t 日本", "語"}) {
        counter.text(piece);
        counter.boundary();
    }
    const Counts expected{{"café", 2}, {"Café", 1}, {"CAFÉ", 1}, {"abc", 1}, {"def", 1},
                          {"don", 1},  {"t", 1},    {"日本", 1}, {"語", 1}};
    QVERIFY(toCounts(counter.finish()) == expected);
}

void WordCounterTest::tableCountsLikeAStdMap()
{
    // The ICU comparisons above share the table, so check it on its own: keys of every
    // length around the inline limit, differing only in their last byte, through growth
    // and a merge.
    std::mt19937 random(11);
    WordMap first;
    WordMap second;
    Counts expected;
    for (int i = 0; i < 60000; ++i) {
        std::string word(1 + random() % 40, 'a');
        for (char& c : word) {
            c = static_cast<char>('a' + random() % 3);
        }
        const std::uint64_t n = 1 + random() % 3;
        (i % 2 ? first : second).add(word, n);
        expected[word] += n;
    }
    first.merge(std::move(second));
    QVERIFY(toCounts(first) == expected);
    QCOMPARE(first.size(), expected.size());
    for (const auto& [word, n] : expected) {
        QCOMPARE(first.count(word), n);
    }
    QCOMPARE(first.count("abcd"), std::uint64_t(0));
}

QTEST_GUILESS_MAIN(WordCounterTest)
#include "WordCounterTest.moc"
