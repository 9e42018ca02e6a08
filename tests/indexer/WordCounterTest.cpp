// The word counter must give exactly what ICU alone gives on the same text, however the text
// is cut into pieces, and hand the words on in UTF-16 order. The reference here uses ICU
// directly, sharing no code with the counter.

#include "indexer/WordCounter.h"
#include "indexer/WordScanner.h"

#include <QByteArrayList>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QTest>

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

using namespace tallyvox::indexer;
using namespace Qt::StringLiterals;

namespace {

using Counts = std::map<std::string, std::uint64_t>;

Counts toCounts(const WordMap& words)
{
    Counts counts;
    words.forEach([&](std::string_view word, std::uint64_t n) { counts[std::string(word)] = n; });
    return counts;
}

// A segment as a word's key: default-ignorable characters left out, white space at the
// edges trimmed, NFC.
std::string keyOf(const icu::UnicodeString& segment, const icu::Normalizer2& nfc)
{
    icu::UnicodeString visible;
    for (int32_t i = 0; i < segment.length(); i = segment.moveIndex32(i, 1)) {
        const UChar32 c = segment.char32At(i);
        if (!u_hasBinaryProperty(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT)) {
            visible.append(c);
        }
    }
    while (!visible.isEmpty() && u_isUWhiteSpace(visible.char32At(0))) {
        visible.remove(0, U16_LENGTH(visible.char32At(0)));
    }
    while (!visible.isEmpty() && u_isUWhiteSpace(visible.char32At(visible.length() - 1))) {
        const int32_t last = visible.moveIndex32(visible.length(), -1);
        visible.truncate(last);
    }
    UErrorCode status = U_ZERO_ERROR;
    std::string word;
    nfc.normalize(visible, status).toUTF8String(word);
    return word;
}

// ICU's segmentation of the whole text as UTF-16, each word as its key, case kept.
Counts countWithIcu(std::string_view utf8)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> words(
        icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    const icu::UnicodeString text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), int32_t(utf8.size())));
    words->setText(text);
    Counts counts;
    for (int32_t start = words->first(), end = words->next(); end != icu::BreakIterator::DONE;
         start = end, end = words->next()) {
        const int32_t rule = words->getRuleStatus();
        if (rule >= UBRK_WORD_NUMBER && rule < UBRK_WORD_IDEO_LIMIT) {
            const std::string word = keyOf(text.tempSubString(start, end - start), *nfc);
            if (!word.empty()) {
                ++counts[word];
            }
        }
    }
    return counts;
}

// The first words on which two tables disagree, for the failure message.
QByteArray difference(const Counts& got, const Counts& expected)
{
    QByteArray out;
    int shown = 0;
    for (const auto& [word, n] : got) {
        const auto it = expected.find(word);
        if ((it == expected.end() || it->second != n) && shown++ < 8) {
            out += "got " + QByteArray::fromStdString(word) + "=" + QByteArray::number(n) + "; ";
        }
    }
    for (const auto& [word, n] : expected) {
        const auto it = got.find(word);
        if ((it == got.end() || it->second != n) && shown++ < 16) {
            out += "ICU " + QByteArray::fromStdString(word) + "=" + QByteArray::number(n) + "; ";
        }
    }
    return out;
}

Counts countPieces(std::string_view text, WordCounter::Options options, std::size_t piece)
{
    WordCounter counter(options);
    counter.expectText(text.size());
    for (std::size_t i = 0; i < text.size(); i += piece) {
        counter.text(text.substr(i, piece));
    }
    return toCounts(counter.finish());
}

// Varied text: ASCII words and every ASCII punctuation byte, numbers, other scripts,
// combining marks and several kinds of space, in random order.
QByteArray variedText(qsizetype size, unsigned seed)
{
    static const char* const pieces[] = {
        "the",      "Word",     "don't",    "3.14",
        "1,000",    "a.b",      "x'y",      "__init__",
        "_",        "__",       "@",        "me@x.org",
        "v1.2.3",   "e.g.",     "a;b",      "1;2",
        "a:b",      "'",        "\"",       ".",
        ",",        ";",        "-",        "café",
        "naïve",    "Straße",   "Привет",   "Ελλάδα",
        "日本語",   "テキスト", "中文",     "한국어",
        "ภาษาไทย",  "שלום",     "צה\"ל",    "مرحبا",
        "١٢٣",      "１２３",   "\u0301",   "e\u0301",
        "“q”",      "‘s’",      "it’s",     "l’été",
        "—",        "…",        "\u00A0",   "\u3000",
        "👍",        "©",        "x²",       "\xff",
        "\xe2\x82", "\t",       "\n",       "\r\n",
        "  ",       "Ça",       "Việt",     "ǅ",
        "ﬁ",        "K",        "Å",        "·",
        "a·b",      "1٫5",      "1‘2",      "a\u2027b",
        "\u00AD",   "a\u200Db", "a\u202Fb", "‿",
        "Ω",        "ﾟ",        "𝄞",        "\xED\xA0\x80",
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

// Every BMP character (surrogates left out) in one context, runs apart.
QByteArray everyCharacter(const QString& context)
{
    QString text;
    for (char32_t c = 0x80; c < 0x10000; ++c) {
        if (c >= 0xD800 && c < 0xE000) {
            continue;
        }
        QString piece = context;
        text += piece.replace(QLatin1Char('X'), QChar(static_cast<char16_t>(c))) + QLatin1Char(' ');
    }
    return text.toUtf8();
}

} // namespace

class WordCounterTest : public QObject {
    Q_OBJECT

private slots:
    void agreesWithIcu_data();
    void agreesWithIcu();
    void everyCharacterAgreesWithIcu_data();
    void everyCharacterAgreesWithIcu();
    void asciiScannersAgree();
    void boundariesEndWords();
    void keysOfEveryScript_data();
    void keysOfEveryScript();
    void conformsToUnicode_data();
    void conformsToUnicode();
    void tableCountsAndOrders_data();
    void tableCountsAndOrders();
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
    row("apostrophes", "don't it''s 'tis o'clock rock'n'roll x' 'y 1'2 a'1 1'a x’s ‘q’ l’été");
    row("hebrew with quotes", "צה\"ל ו\"ח a\"b \"שלום\" ש'\"ל");
    row("cjk and thai",
        "日本語のテキストです。中文文本，还有한국어 텍스트도 カタカナ ｶﾀｶﾅ ภาษาไทยง่าย");
    row("latin, greek, cyrillic and their punctuation",
        "Ça coûte très cher — “vraiment” … «non» Ελληνικά, Привет‚ мир· a·b Việt Nam ǅemal");
    row("combining marks",
        " \u0301x cafe\u0301 e\u0301cole \u0301lead a \u0301b \t\u0301c\n\u0301d a\u200db");
    row("malformed utf-8", "abc\xff\xfe def \xc3 ghi \xe2\x82 jkl caf\xc3\xa9\xff \xed\xa0\x80x "
                           "👍🏽 \xc3\xa9\xc3");
    row("empty", "");
    // Long varied texts, with blocks also split between the two threads.
    for (const std::size_t blockSize : {std::size_t{4096}, std::size_t{200} << 10}) {
        QTest::addRow("varied, blocks of %d", int(blockSize))
            << variedText(qsizetype{600} << 10, unsigned(blockSize))
            << WordCounter::Options{blockSize, 2} << 100001;
    }
    QByteArray noise(qsizetype{64} << 10, ' ');
    std::mt19937 random(3);
    for (char& c : noise) {
        if (random() % 4 != 0) {
            c = static_cast<char>(random());
        }
    }
    QTest::newRow("random bytes") << noise << WordCounter::Options{4096, 2} << 333;
    QTest::newRow("varied, counted where it lies")
        << variedText(qsizetype{3} << 20, 7) << WordCounter::Options{std::size_t{256} << 10, 2}
        << (1 << 20);
    // No whitespace for far longer than a block: the counter must cut the run (memory stays
    // bounded) and, where ICU's boundaries do not depend on context, still count exactly.
    QByteArray run;
    for (int i = 0; run.size() < (qsizetype{300} << 10); ++i) {
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
    const Counts got = countPieces(view, options, std::size_t(piece));
    const Counts expected = countWithIcu(view);
    QVERIFY2(got == expected, difference(got, expected).constData());
}

void WordCounterTest::everyCharacterAgreesWithIcu_data()
{
    // What the scanner takes from ICU's properties, checked against ICU's segmentation for
    // every character: X is the character, next to letters, digits and joiners.
    QTest::addColumn<QString>("context");
    for (const char* context : {"X", "XX", "aXb", "1X2", "aX1", "_X_", "X.a", "1,X"}) {
        QTest::newRow(context) << QString::fromLatin1(context);
    }
}

void WordCounterTest::everyCharacterAgreesWithIcu()
{
    QFETCH(QString, context);
    const QByteArray text = everyCharacter(context);
    const std::string_view view(text.constData(), std::size_t(text.size()));
    const Counts got = countPieces(view, {}, view.size());
    const Counts expected = countWithIcu(view);
    QVERIFY2(got == expected, difference(got, expected).constData());
}

// The scanner a processor without AVX2 runs must find the same words as the one it has.
void WordCounterTest::asciiScannersAgree()
{
    class Collect final : public WordBatch {
    public:
        std::vector<std::string> words;

    protected:
        void deliver(const Span* spans, std::size_t n) override
        {
            for (std::size_t i = 0; i < n; ++i) {
                words.emplace_back(spans[i].data, spans[i].size);
            }
        }
    };
    std::mt19937 random(5);
    const std::string alphabet = "aZ@09_.',;: -\t\n!x";
    std::string text;
    for (int i = 0; i < 200000; ++i) {
        text += i % 7 ? alphabet[random() % alphabet.size()] : static_cast<char>(random() % 128);
    }
    Collect wide;
    Collect portable;
    WordScanner::scanAscii(text.data(), text.data() + text.size(), wide);
    WordScanner::scanAsciiPortable(text.data(), text.data() + text.size(), portable);
    wide.flush();
    portable.flush();
    QVERIFY(wide.words.size() > 10000);
    QVERIFY(wide.words == portable.words);
}

// Exact counts, not only agreement with ICU: NFC, case kept, and a boundary ends a word.
void WordCounterTest::boundariesEndWords()
{
    WordCounter counter({64, 2});
    for (const std::string_view piece :
         {"cafe\u0301 café Café CAFÉ abc", "def don", "'t 日本", "語", "\u0301x"}) {
        counter.text(piece);
        counter.boundary();
    }
    const Counts expected{{"café", 2}, {"Café", 1}, {"CAFÉ", 1}, {"abc", 1}, {"def", 1},
                          {"don", 1},  {"t", 1},    {"日本", 1}, {"語", 1},  {"x", 1}};
    QCOMPARE(toCounts(counter.finish()), expected);
}

void WordCounterTest::keysOfEveryScript_data()
{
    // Exact words where ICU's UTF-8 and UTF-16 segmentation part, or where what ICU calls a
    // word holds characters nobody sees. Each text goes through both the scanner's and ICU's
    // paths (a run that needs ICU for something else).
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArrayList>("words"); // as counted, one entry per occurrence
    const QByteArrayList burmese{"ကခဂ", "ကခဂ"};
    QTest::newRow("burmese, three letters") << QByteArray(" ကခဂ ကခဂ ") << burmese;
    QTest::newRow("khmer, three letters") << QByteArray(" កកក ") << QByteArrayList{"កកក"};
    QTest::newRow("burmese beside Han") << QByteArray("ကခဂ 中") << QByteArrayList{"ကခဂ", "中"};
    QTest::newRow("narrow no-break space before !")
        << QByteArray("Bonjour ! Ça va ? Été́ ;") << QByteArrayList{"Bonjour", "Ça", "va", "Été́"};
    QTest::newRow("narrow no-break space inside a number")
        << QByteArray("10 000  a") << QByteArrayList{"10 000", "a"};
    QTest::newRow("only spaces that join") << QByteArray("   x") << QByteArrayList{"x"};
    QTest::newRow("soft hyphen") << QByteArray("co­operate cooperate co­")
                                 << QByteArrayList{"cooperate", "cooperate", "co"};
    QTest::newRow("word joiner") << QByteArray("a⁠b ab ⁠ab")
                                 << QByteArrayList{"ab", "ab", "ab"};
    QTest::newRow("zero-width non-joiner")
        << QByteArray("می‌خواهم میخواهم") << QByteArrayList{"میخواهم", "میخواهم"};
    QTest::newRow("variation selector") << QByteArray("葛󠄀 葛") << QByteArrayList{"葛", "葛"};
    QTest::newRow("dropped mark between marks")
        << QByteArray("a̖͏́ á̖") << QByteArrayList{"á̖", "á̖"};
}

void WordCounterTest::keysOfEveryScript()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArrayList, words);
    Counts expected;
    for (const QByteArray& word : words) {
        ++expected[QString::fromUtf8(word).normalized(QString::NormalizationForm_C).toStdString()];
    }
    for (const unsigned threads : {1u, 2u}) {
        const Counts got = countPieces(std::string_view(text.constData(), std::size_t(text.size())),
                                       {64, threads}, std::size_t(text.size()) + 1);
        QVERIFY2(got == expected, difference(got, expected).constData());
    }
}

void WordCounterTest::conformsToUnicode_data()
{
    // Unicode's own cases: ICU's UTF-16 segmentation must give the file's boundaries, and the
    // counter the words of ICU's UTF-16 segmentation.
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("boundaries");  // in UTF-16 code units
    QTest::addColumn<QByteArray>("fileVersion"); // empty when it is ICU's Unicode version
    QFile file(QString::fromUtf8(WORD_BREAK_TEST));
    QVERIFY2(file.open(QIODevice::ReadOnly),
             "WordBreakTest.txt is missing: install the package unicode-data");
    // "# WordBreakTest-15.0.0.txt"; ICU says "15.0".
    const QByteArray head = file.readLine().trimmed();
    const QByteArray version = head.mid(head.indexOf('-') + 1).chopped(4);
    const QByteArray fileVersion =
        version == U_UNICODE_VERSION || version == U_UNICODE_VERSION ".0" ? QByteArray() : version;
    // ICU's root rules take the colon out of MidLetter on purpose ("a:b" is two words): where
    // the file joins letters across a colon (rules 6 and 7), ICU breaks on both sides.
    const QRegularExpression rule(QStringLiteral("([÷×]) \\[(\\d+\\.\\d+)\\]"));
    int line = 1;
    while (!file.atEnd()) {
        const QString entry = QString::fromUtf8(file.readLine());
        ++line;
        const QStringList codePoints =
            entry.section(u'#', 0, 0)
                .split(QRegularExpression(QStringLiteral("[÷× \\t\\n]+")), Qt::SkipEmptyParts);
        if (codePoints.isEmpty()) {
            continue;
        }
        QStringList breaks; // before each code point and at the end: "÷" or "×" and the rule
        for (auto it = rule.globalMatch(entry.section(u'#', 1)); it.hasNext();) {
            const auto match = it.next();
            breaks.append(match.captured(1) + match.captured(2));
        }
        QVERIFY2(breaks.size() == codePoints.size() + 1, qPrintable(entry));
        QString text;
        QList<int> boundaries;
        for (qsizetype i = 0; i <= codePoints.size(); ++i) {
            const char32_t c = i < codePoints.size() ? codePoints[i].toUInt(nullptr, 16) : 0;
            if (c == u':' && breaks[i] == u"×6.0") {
                const qsizetype after = breaks.indexOf(u"×7.0"_s, i + 1);
                QVERIFY2(after > i, qPrintable(entry));
                breaks[i] = u"÷"_s;
                breaks[after] = u"÷"_s;
            }
            if (breaks[i].startsWith(u'÷')) {
                boundaries.append(int(text.size()));
            }
            if (i < codePoints.size()) {
                text.append(QString::fromUcs4(&c, 1));
            }
        }
        QTest::addRow("line %d", line) << text << boundaries << fileVersion;
    }
}

void WordCounterTest::conformsToUnicode()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, boundaries);
    QFETCH(QByteArray, fileVersion);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> breaker(
        icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
    const icu::UnicodeString utf16(false, reinterpret_cast<const UChar*>(text.utf16()),
                                   int32_t(text.size()));
    breaker->setText(utf16);
    QList<int> icu;
    for (int32_t at = breaker->first(); at != icu::BreakIterator::DONE; at = breaker->next()) {
        icu.append(at);
    }
    if (icu != boundaries && !fileVersion.isEmpty()) {
        QSKIP(qPrintable(
            QStringLiteral("the file is Unicode %1, ICU implements %2, and the two "
                           "segment this case differently")
                .arg(QString::fromLatin1(fileVersion), QStringLiteral(U_UNICODE_VERSION))));
    }
    QCOMPARE(icu, boundaries);
    const QByteArray utf8 = text.toUtf8();
    const std::string_view view(utf8.constData(), std::size_t(utf8.size()));
    const Counts got = countPieces(view, {64, 1}, view.size() + 1);
    const Counts expected = countWithIcu(view);
    QVERIFY2(got == expected, difference(got, expected).constData());
}

void WordCounterTest::tableCountsAndOrders_data()
{
    QTest::addColumn<int>("shards");
    QTest::addColumn<int>("reserve"); // words the shards are sized for first, or 0
    QTest::addColumn<bool>("sorted"); // sorted before the ordered walk
    QTest::addColumn<int>("words");
    QTest::addColumn<int>("resizeAt"); // reserve again for 8x the words after this many, or 0
    QTest::newRow("one shard, growing") << 1 << 0 << false << 60000 << 0;
    QTest::newRow("two shards, sorted") << 2 << 0 << true << 60000 << 0;
    QTest::newRow("two shards, sized first") << 2 << 100000 << true << 60000 << 0;
    // Past 65,536 slots (2 MB) a shard grows where it lies, by doubling and by a jump of
    // several sizes at once; sorting afterwards has to rebuild from the moved pages.
    QTest::newRow("one shard, growing in place") << 1 << 0 << true << 400000 << 0;
    QTest::newRow("one shard, resized in place") << 1 << 40000 << false << 300000 << 120000;
}

void WordCounterTest::tableCountsAndOrders()
{
    QFETCH(int, shards);
    QFETCH(int, reserve);
    QFETCH(bool, sorted);
    QFETCH(int, words);
    QFETCH(int, resizeAt);
    // Keys of every length around the inline limit, differing only late, with letters from
    // both sides of the UTF-16 surrogates (U+E000.. and the supplementary planes), through
    // growth and a merge.
    static const char* const letters[] = {"a", "b", "é", "\uE000", "\uFFFD", "𝄞", "😀", "日"};
    std::mt19937 random(11);
    WordMap first{unsigned(shards)};
    WordMap second{unsigned(shards)};
    for (unsigned s = 0; s < first.shardCount() && reserve > 0; ++s) {
        first.shard(s).reserve(std::size_t(reserve));
    }
    Counts expected;
    for (int i = 0; i < words; ++i) {
        if (i == resizeAt && i > 0) {
            for (unsigned s = 0; s < first.shardCount(); ++s) {
                first.shard(s).reserve(first.shard(s).size() * 8);
            }
            QCOMPARE(toCounts(first).size(), first.size());
        }
        std::string word;
        for (unsigned length = 1 + random() % 12; length > 0; --length) {
            word += letters[random() % (i % 3 ? 3 : 8)];
        }
        const std::uint64_t n = 1 + random() % 3;
        (i % 2 ? first : second).add(word, n);
        expected[word] += n;
    }
    first.merge(std::move(second));
    if (sorted) {
        first.sort();
    }
    QCOMPARE(toCounts(first), expected);
    QCOMPARE(first.size(), expected.size());
    for (const auto& [word, n] : expected) {
        QCOMPARE(first.count(word), n);
    }
    QCOMPARE(first.count("abcd"), std::uint64_t(0));

    // The application compares QStrings: UTF-16 code units.
    QString previous;
    QString disorder;
    std::size_t walked = 0;
    first.forEachInOrder([&](std::string_view word, std::uint64_t) {
        const QString current = QString::fromUtf8(word.data(), qsizetype(word.size()));
        if (walked++ > 0 && !(previous < current) && disorder.isEmpty()) {
            disorder = previous + QStringLiteral(" before ") + current;
        }
        previous = current;
    });
    QVERIFY2(disorder.isEmpty(), qPrintable(disorder));
    QCOMPARE(walked, expected.size());
}

QTEST_GUILESS_MAIN(WordCounterTest)
#include "WordCounterTest.moc"
