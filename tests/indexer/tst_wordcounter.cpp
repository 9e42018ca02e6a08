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

Counts countFast(std::string_view text, WordCounter::Options options, std::size_t piece)
{
    WordCounter counter(options);
    for (std::size_t i = 0; i < text.size(); i += piece)
        counter.text(text.substr(i, piece));
    return toCounts(counter.finish());
}

std::string describe(const Counts& expected, const Counts& actual)
{
    std::string out;
    for (const auto& [word, n] : expected) {
        const auto it = actual.find(word);
        if (it == actual.end() || it->second != n)
            out += "  ICU [" + word + "] " + std::to_string(n) + ", fast " +
                   std::to_string(it == actual.end() ? 0 : it->second) + "\n";
    }
    for (const auto& [word, n] : actual) {
        if (!expected.count(word))
            out += "  fast only [" + word + "] " + std::to_string(n) + "\n";
    }
    return out;
}

// Varied text: ASCII words and every ASCII punctuation byte, numbers, other scripts,
// combining marks and several kinds of space, in random order.
std::string variedText(std::size_t size, unsigned seed)
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
    std::string text;
    while (text.size() < size) {
        text += pieces[random() % pieceCount];
        const unsigned gap = random() % 8;
        if (gap < 4)
            text += ' ';
        else if (gap == 4)
            text += static_cast<char>(0x21 + random() % 0x5E); // any printable ASCII
    }
    return text;
}

} // namespace

class WordCounterTest : public QObject {
    Q_OBJECT

private slots:
    void agreesWithIcu_data();
    void agreesWithIcu();
    void agreesWithIcuOnVariedText_data();
    void agreesWithIcuOnVariedText();
    void normalisesToNfcAndKeepsCase();
    void boundaryStopsWords();
    void longRunWithoutSpacesIsCutAtABoundary();
    void tableCountsLikeAStdMap();
};

void WordCounterTest::agreesWithIcu_data()
{
    QTest::addColumn<QByteArray>("text");
    const auto row = [](const char* name, const char* text) {
        QTest::newRow(name) << QByteArray(text);
    };
    row("ascii punctuation",
        "Hello, world! It's a test... e.g. U.S.A. end. (x) [y] {z} <t> a-b a/b");
    row("numbers", "3.14 3,000 1;2 1:2 v1.2.3 10.0.0.1 1.a a.1 007 1e10 -5 +7 1'000 2.x 1,a");
    row("at and underscore", "foo@bar.com @ @@ _ __ ___ __init__ a_b _1 1_ a_.b a._b _._ x_'y");
    row("colon and symbols", "a:b http://example.org/x?y=z&w=1 C++ #tag $v %p ^c ~t `q` a|b a\\b");
    row("apostrophes", "don't it''s 'tis o'clock rock'n'roll x' 'y 1'2 a'1 1'a");
    row("hebrew with quotes", "צה\"ל ו\"ח a\"b \"שלום\" ש'\"ל");
    row("cjk", "日本語のテキストです。中文文本，还有한국어 텍스트도 カタカナ ｶﾀｶﾅ");
    row("thai", "ภาษาไทยง่ายนิดเดียว ไทย");
    row("combining marks", "cafe\u0301 e\u0301cole \u0301leading a \u0301b \t\u0301c\n\u0301d");
    row("curly quotes and dashes", "naïve “quoted” ‘single’ — em–dash non\u00A0breaking x\u2019s");
    row("emoji and symbols", "👍 ok👍 ©2024 x² 👍🏽 a\u200db");
    row("cyrillic greek arabic", "Привет, мир! Ελληνικά κείμενο مرحبا بالعالم 123 ٣٫١٤");
    row("controls", "a\tb\r\nc\fd\ve\x01"
                    "f\x7fg");
    row("malformed utf-8", "abc\xff\xfe def \xc3 ghi \xe2\x82 jkl caf\xc3\xa9\xff \xed\xa0\x80x");
    row("fullwidth", "ＡＢＣ１２３ half １,０００");
    row("leading space and mark", " \u0301x");
    row("empty", "");
}

void WordCounterTest::agreesWithIcu()
{
    QFETCH(QByteArray, text);
    const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
    const Counts expected = toCounts(countWithIcu(view));
    // Small blocks and pieces put block and piece edges inside words and characters. Blocks
    // stay longer than the longest run without whitespace, which the counter would cut.
    const struct {
        WordCounter::Options options;
        std::size_t piece;
    } configurations[] = {
        {{}, view.size() + 1}, {{64, 1}, 1}, {{64, 2}, 3}, {{97, 2}, 7}, {{150, 1}, 5},
    };
    for (const auto& c : configurations) {
        const Counts actual = countFast(view, c.options, c.piece);
        QVERIFY2(actual == expected, ("block " + std::to_string(c.options.blockSize) + ", piece " +
                                      std::to_string(c.piece) + ":\n" + describe(expected, actual))
                                         .c_str());
    }
}

void WordCounterTest::agreesWithIcuOnVariedText_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("blockSize");
    QTest::newRow("default blocks") << 1u << int(4u << 20);
    QTest::newRow("small blocks") << 2u << 4096;
    QTest::newRow("blocks split between threads") << 3u << 200 * 1024;
}

void WordCounterTest::agreesWithIcuOnVariedText()
{
    QFETCH(unsigned, seed);
    QFETCH(int, blockSize);
    const std::string text = variedText(600 * 1024, seed);
    const Counts expected = toCounts(countWithIcu(text));
    const Counts actual = countFast(text, {std::size_t(blockSize), 2}, 100 * 1000 + 1);
    QVERIFY2(actual == expected, describe(expected, actual).c_str());
}

void WordCounterTest::normalisesToNfcAndKeepsCase()
{
    WordCounter counter;
    counter.text("cafe\u0301 café Café CAFÉ");
    const Counts counts = toCounts(counter.finish());
    const Counts expected{{"café", 2}, {"Café", 1}, {"CAFÉ", 1}};
    QCOMPARE(counts, expected);
}

void WordCounterTest::boundaryStopsWords()
{
    WordCounter counter({64, 2});
    counter.text("abc");
    counter.boundary();
    counter.text("def don");
    counter.boundary();
    counter.text("'t 日本");
    counter.boundary();
    counter.text("語");
    const Counts counts = toCounts(counter.finish());
    const Counts expected{{"abc", 1}, {"def", 1}, {"don", 1}, {"t", 1}, {"日本", 1}, {"語", 1}};
    QCOMPARE(counts, expected);
}

void WordCounterTest::longRunWithoutSpacesIsCutAtABoundary()
{
    // No whitespace for far longer than a block: the counter must cut the run (memory stays
    // bounded) and, where ICU's boundaries do not depend on context, still count exactly.
    std::string text;
    for (int i = 0; text.size() < 300 * 1024; ++i)
        text += "alpha/βeta/" + std::to_string(i % 97) + "/";
    const Counts expected = toCounts(countWithIcu(text));
    QCOMPARE(countFast(text, {4096, 2}, 1000), expected);
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
        for (char& c : word)
            c = static_cast<char>('a' + random() % 3);
        const std::uint64_t n = 1 + random() % 3;
        (i % 2 ? first : second).add(word, n);
        expected[word] += n;
    }
    first.merge(std::move(second));
    QCOMPARE(toCounts(first), expected);
    QCOMPARE(first.size(), expected.size());
    for (const auto& [word, n] : expected)
        QCOMPARE(first.count(word), n);
    QCOMPARE(first.count("abcd"), std::uint64_t(0));
}

QTEST_GUILESS_MAIN(WordCounterTest)
#include "tst_wordcounter.moc"
