// Sequences of words as the n-gram counter forms them: where a sequence must stop, in several
// scripts, and that how the text arrives changes nothing.

#include "indexer/NGramCounter.h"

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

Counts ngramsOf(const std::string& text, unsigned length)
{
    NGramCounter counter(length);
    counter.text(text);
    return toCounts(counter.finish());
}

QString describe(const Counts& counts)
{
    QStringList lines;
    for (const auto& [ngram, n] : counts) {
        lines.append(QString::fromStdString(ngram) + QStringLiteral(" %1").arg(n));
    }
    return lines.join(QStringLiteral(" | "));
}

} // namespace

Q_DECLARE_METATYPE(Counts)

class NGramCounterTest : public QObject {
    Q_OBJECT

private slots:
    void stopsWhereASentenceOrParagraphEnds_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<unsigned>("length");
        QTest::addColumn<Counts>("expected");
        const auto row = [](const char* name, const char* text, unsigned n,
                            const Counts& expected) {
            QTest::newRow(name) << QByteArray(text) << n << expected;
        };
        row("English sentences", "The cat sat. The cat ran.", 2,
            {{"The cat", 2}, {"cat sat", 1}, {"cat ran", 1}});
        row("a line break reads on", "at the end\nof the day", 3,
            {{"at the end", 1}, {"the end of", 1}, {"end of the", 1}, {"of the day", 1}});
        row("a blank line ends a paragraph", "one two\n  \t\nthree four", 2,
            {{"one two", 1}, {"three four", 1}});
        row("CR LF blank line", "one two\r\n\r\nthree four\r\nfive", 2,
            {{"one two", 1}, {"three four", 1}, {"four five", 1}});
        row("a single CR LF reads on", "one two\r\nthree", 2, {{"one two", 1}, {"two three", 1}});
        row("form feed", "one two\fthree four", 2, {{"one two", 1}, {"three four", 1}});
        row("paragraph separator", "one two\u2029three four", 2,
            {{"one two", 1}, {"three four", 1}});
        row("points inside words", "Pi is 3.14 now e.g. this", 2,
            {{"Pi is", 1}, {"is 3.14", 1}, {"3.14 now", 1}, {"now e.g", 1}});
        row("closers after the end", "He said \"stop.\" Then (really?!) she went", 2,
            {{"He said", 1}, {"said stop", 1}, {"Then really", 1}, {"she went", 1}});
        row("ellipsis", "Well... then we go", 2, {{"then we", 1}, {"we go", 1}});
        row("no end without white space after", "see v1.2.3 and a.b", 2,
            {{"see v1.2.3", 1}, {"v1.2.3 and", 1}, {"and a.b", 1}});
        row("German quotes", "Er sagte: \u201eGut.\u201c Dann ging er.", 2,
            {{"Er sagte", 1}, {"sagte Gut", 1}, {"Dann ging", 1}, {"ging er", 1}});
        row("German umlauts and ß", "Die Straße ist groß. Über alles", 2,
            {{"Die Straße", 1}, {"Straße ist", 1}, {"ist groß", 1}, {"Über alles", 1}});
        row("Chinese full stops", "我们学习中文。他们也学习。", 2,
            {{"我们 学习", 1}, {"学习 中文", 1}, {"他们 也", 1}, {"也 学习", 1}});
        row("Chinese exclamation", "你好！我们学习", 2, {{"我们 学习", 1}});
        row("Thai by its dictionary", "ภาษาไทยง่าย", 2, {{"ภาษา ไทย", 1}, {"ไทย ง่าย", 1}});
        row("Thai across a space", "ภาษาไทย ง่าย\n\nภาษาไทย", 2, {{"ภาษา ไทย", 2}, {"ไทย ง่าย", 1}});
        row("Hindi danda", "मैं घर जाता हूँ। तुम आओ", 2,
            {{"मैं घर", 1}, {"घर जाता", 1}, {"जाता हूँ", 1}, {"तुम आओ", 1}});
        row("trigrams", "a b c d. e f", 3, {{"a b c", 1}, {"b c d", 1}});
        row("five", "one two three four five six", 5,
            {{"one two three four five", 1}, {"two three four five six", 1}});
        row("a sentence shorter than n", "a b. c d e", 3, {{"c d e", 1}});
        row("punctuation between words is no end", "red, green; blue - white", 2,
            {{"red green", 1}, {"green blue", 1}, {"blue white", 1}});
        row("nothing", "", 2, {});
    }

    void stopsWhereASentenceOrParagraphEnds()
    {
        QFETCH(QByteArray, text);
        QFETCH(unsigned, length);
        QFETCH(Counts, expected);
        const Counts counts = ngramsOf(text.toStdString(), length);
        QVERIFY2(counts == expected, qPrintable(describe(counts)));
    }

    void readersBoundaryEndsASequence()
    {
        NGramCounter counter(2);
        counter.text("first cell");
        counter.boundary();
        counter.text("second");
        counter.text(" cell"); // a sequence goes on across pieces of text
        const Counts expected{{"first cell", 1}, {"second cell", 1}};
        QCOMPARE(toCounts(counter.finish()), expected);
    }

    // Pieces of any size, and blocks small enough that the text is cut many times, give
    // what the text in one piece gives.
    void sameWhateverThePieces_data()
    {
        QTest::addColumn<std::size_t>("blockSize");
        QTest::addColumn<unsigned>("threads");
        QTest::addColumn<int>("sentences");
        QTest::newRow("default blocks") << (std::size_t{4} << 20) << 1u << 400;
        QTest::newRow("64-byte blocks") << std::size_t{64} << 1u << 400;
        QTest::newRow("17-byte blocks") << std::size_t{17} << 1u << 400;
        // Two threads sort the shards side by side.
        QTest::newRow("two threads, 2 MB") << (std::size_t{3} << 20) << 2u << 150000;
    }

    void sameWhateverThePieces()
    {
        QFETCH(std::size_t, blockSize);
        QFETCH(unsigned, threads);
        QFETCH(int, sentences);
        std::string text;
        const char* pieces[] = {"The cat sat on the mat. ",    "Er sagte: \u201eGut.\u201c ",
                                "Pi is 3.14 now!\n\n",         "a line\nthat reads on? ",
                                "Über alles\r\n\r\nund mehr ", "the end of the day "};
        std::mt19937 random(7);
        for (int i = 0; i < sentences; ++i) {
            text += pieces[random() % std::size(pieces)];
        }
        const Counts whole = ngramsOf(text, 3);
        QVERIFY(whole.size() > 10);

        NGramCounter counter(3, blockSize);
        counter.allowThreads(threads);
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t n = std::min<std::size_t>(
                random() % (std::size_t{threads} * 4000) + 1, text.size() - at);
            counter.text(std::string_view(text).substr(at, n));
            at += n;
        }
        QCOMPARE(toCounts(counter.finish()), whole);
    }
};

QTEST_APPLESS_MAIN(NGramCounterTest)
#include "NGramCounterTest.moc"
