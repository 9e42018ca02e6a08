// How a text file's bytes become text: each encoding uchardet can name must reach a converter,
// and legacy text must read as the characters its writer typed.

#include "indexer/TextReader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <string>

#include <iconv.h>
#include <unicode/ucnv.h>

using namespace tallyvox::indexer;

namespace {

class Collect final : public TextSink {
public:
    std::string all;
    void text(std::string_view utf8) override { all.append(utf8); }
    void boundary() override { all.push_back('\n'); }
};

// text in the named encoding, through glibc: a converter of its own, not the reader's.
QByteArray encode(const QString& text, const char* encoding)
{
    QByteArray in = text.toUtf8();
    QByteArray out(in.size() * 4, '\0');
    const iconv_t encoder = iconv_open(encoding, "UTF-8");
    char* from = in.data();
    std::size_t left = std::size_t(in.size());
    char* to = out.data();
    std::size_t room = std::size_t(out.size());
    const std::size_t result = iconv(encoder, &from, &left, &to, &room);
    iconv_close(encoder);
    if (result == std::size_t(-1)) {
        return {};
    }
    out.truncate(out.size() - qsizetype(room));
    return out;
}

} // namespace

class TextReaderTest : public QObject {
    Q_OBJECT

private slots:
    void everyDetectedNameHasAConverter_data();
    void everyDetectedNameHasAConverter();
    void legacyTextReadsAsWritten_data();
    void legacyTextReadsAsWritten();
};

void TextReaderTest::everyDetectedNameHasAConverter_data()
{
    // The names uchardet 0.0.7 answers with (its probers' charset names).
    QTest::addColumn<QByteArray>("detected");
    for (const char* name : {"ASCII",        "UTF-8",        "UTF-16",       "UTF-32",
                             "BIG5",         "EUC-JP",       "EUC-KR",       "EUC-TW",
                             "GB18030",      "HZ-GB-2312",   "IBM852",       "IBM855",
                             "IBM866",       "ISO-2022-CN",  "ISO-2022-JP",  "ISO-2022-KR",
                             "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",
                             "ISO-8859-5",   "ISO-8859-6",   "ISO-8859-7",   "ISO-8859-8",
                             "ISO-8859-9",   "ISO-8859-10",  "ISO-8859-11",  "ISO-8859-13",
                             "ISO-8859-15",  "ISO-8859-16",  "KOI8-R",       "MAC-CENTRALEUROPE",
                             "MAC-CYRILLIC", "SHIFT_JIS",    "TIS-620",      "UHC",
                             "VISCII",       "WINDOWS-1250", "WINDOWS-1251", "WINDOWS-1252",
                             "WINDOWS-1253", "WINDOWS-1255", "WINDOWS-1256", "WINDOWS-1257",
                             "WINDOWS-1258"}) {
        QTest::newRow(name) << QByteArray(name);
    }
}

void TextReaderTest::everyDetectedNameHasAConverter()
{
    QFETCH(QByteArray, detected);
    const std::string name = decoderName(detected.toStdString());
    UErrorCode status = U_ZERO_ERROR;
    UConverter* converter = ucnv_open(name.c_str(), &status);
    ucnv_close(converter);
    if (U_SUCCESS(status)) {
        return;
    }
    // The few ICU lacks, glibc must have.
    const iconv_t decoder = iconv_open("UTF-8", name.c_str());
    // NOLINTNEXTLINE(performance-no-int-to-ptr): iconv_open's documented failure value
    QVERIFY2(decoder != reinterpret_cast<iconv_t>(-1), name.c_str());
    iconv_close(decoder);
}

void TextReaderTest::legacyTextReadsAsWritten_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text"); // what must come out, or appear in it
    const QString korean =
        QStringLiteral("대한민국의 수도는 서울이다. 한국어는 한글로 적는다. 오늘 날씨가 좋다. ");
    QTest::newRow("Korean, EUC-KR") << encode(korean.repeated(40), "EUC-KR") << korean;
    // 똠 and 햏 exist only in CP949, which uchardet calls UHC.
    const QString extended = korean + QStringLiteral("똠방각하 햏 ");
    QTest::newRow("Korean, CP949") << encode(extended.repeated(40), "CP949") << extended;
    // Curly quotes only after the detector's 64 KB: still Windows-1252, not Latin-1.
    const QString french = QStringLiteral("Le garçon a mangé une pêche à côté de la forêt. ");
    const QString quoted = QStringLiteral("l’option “dite” — fin… ");
    QTest::newRow("Windows-1252, quotes late")
        << encode(french.repeated(2000) + quoted, "windows-1252") << quoted;
    QTest::newRow("Latin-1 stays Latin-1") << encode(french.repeated(100), "ISO-8859-1") << french;
    const QString romanian = QStringLiteral(
        "Și totuși, în țara aceasta frumoasă, oamenii își încălzesc casele cu lemne. ");
    QTest::newRow("Romanian, ISO-8859-16")
        << encode(romanian.repeated(300), "ISO-8859-16") << romanian;
    const QString vietnamese =
        QStringLiteral("Tiếng Việt là ngôn ngữ chính thức của Việt Nam, được nói rộng rãi. ");
    QTest::newRow("Vietnamese, VISCII") << encode(vietnamese.repeated(300), "VISCII") << vietnamese;
}

void TextReaderTest::legacyTextReadsAsWritten()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("legacy.txt"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    file.close();
    QVERIFY(!bytes.isEmpty());
    Collect sink;
    QVERIFY(readTextFile(path.toStdString(), sink));
    const QString got = QString::fromStdString(sink.all);
    QVERIFY2(got.contains(text), qPrintable(got.left(200)));
}

QTEST_GUILESS_MAIN(TextReaderTest)
#include "TextReaderTest.moc"
