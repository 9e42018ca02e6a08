#include "services/Base64.h"

#include <QTest>

#include <cstdlib>

using namespace tallyvox;

namespace {

// The decoded length as the signed value it stands for (minus one shows as -1).
qint64 decode(const QByteArray& input, QByteArray& bytes)
{
    std::size_t length = 0;
    unsigned char* decoded =
        Base64Decode(input.constData(), static_cast<std::size_t>(input.size()), &length);
    const auto signedLength = static_cast<qint64>(length);
    bytes = signedLength > 0 ? QByteArray(reinterpret_cast<char*>(decoded), signedLength)
                             : QByteArray();
    std::free(decoded);
    return signedLength;
}

QByteArray encode(const QByteArray& input, bool separateLines)
{
    std::size_t length = 0;
    char* encoded = Base64Encode(input.constData(), static_cast<std::size_t>(input.size()),
                                 separateLines, &length);
    const QByteArray result(encoded, static_cast<qsizetype>(length));
    const bool terminated = encoded[length] == '\0';
    std::free(encoded);
    return terminated ? result : QByteArray("not terminated");
}

} // namespace

class Base64Test : public QObject {
    Q_OBJECT

private slots:
    void decodes_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<qint64>("length");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("one group") << QByteArray("QUJD") << qint64(3) << QByteArray("ABC");
        QTest::newRow("trailing line break loses the last byte")
            << QByteArray("QUJD\n") << qint64(2) << QByteArray("AB");
        QTest::newRow("trailing CR LF too")
            << QByteArray("QUJD\r\n") << qint64(2) << QByteArray("AB");
        QTest::newRow("line break inside loses nothing")
            << QByteArray("QUJD\nRA==") << qint64(4) << QByteArray("ABCD");
        QTest::newRow("padding then line break")
            << QByteArray("QQ==\n") << qint64(1) << QByteArray("A");
        QTest::newRow("no padding") << QByteArray("QQ") << qint64(1) << QByteArray("A");
        QTest::newRow("one character decodes to nothing")
            << QByteArray("Q") << qint64(0) << QByteArray();
        QTest::newRow("empty") << QByteArray("") << qint64(0) << QByteArray();
        QTest::newRow("a blank is minus one") << QByteArray(" ") << qint64(-1) << QByteArray();
        QTest::newRow("only padding is minus one")
            << QByteArray("====") << qint64(-1) << QByteArray();
        QTest::newRow("blanks and tabs inside")
            << QByteArray("SG Vs\tbG8=") << qint64(5) << QByteArray("Hello");
        QTest::newRow("high bytes are skipped") << QByteArray("SGVs\xc3\xa9"
                                                              "bG8=")
                                                << qint64(5) << QByteArray("Hello");
        QTest::newRow("NUL bytes are skipped")
            << QByteArray("QU\0JD", 5) << qint64(3) << QByteArray("ABC");
        QTest::newRow("all 64 characters")
            << QByteArray("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
            << qint64(48)
            << QByteArray::fromHex("00108310518720928b30d38f41149351559761969b71d79f8218a39259a7"
                                   "a29aabb2dbafc31cb3d35db7e39ebbf3dfbf");
    }
    void decodes()
    {
        QFETCH(QByteArray, input);
        QFETCH(qint64, length);
        QFETCH(QByteArray, expected);
        QByteArray bytes;
        QCOMPARE(decode(input, bytes), length);
        QCOMPARE(bytes, expected);
    }

    void encodes_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<bool>("separateLines");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("ABCD") << QByteArray("ABCD") << false << QByteArray("QUJDRA==");
        QTest::newRow("empty") << QByteArray() << true << QByteArray();
        QTest::newRow("high bytes") << QByteArray("\xff\xfe\xfd") << false << QByteArray("//79");
        const QByteArray line = QByteArray(48, 'a').toBase64();
        QTest::newRow("48 bytes: one line, no break") << QByteArray(48, 'a') << true << line;
        QTest::newRow("49 bytes: break, then four")
            << QByteArray(49, 'a') << true << line + "\r\nYQ==";
        QTest::newRow("96 bytes: one break between")
            << QByteArray(96, 'a') << true << line + "\r\n" + line;
        QTest::newRow("not separated: no breaks")
            << QByteArray(100, 'a') << false << QByteArray(100, 'a').toBase64();
    }
    void encodes()
    {
        QFETCH(QByteArray, input);
        QFETCH(bool, separateLines);
        QFETCH(QByteArray, expected);
        QCOMPARE(encode(input, separateLines), expected);
    }

    void dataFromString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("hasData");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("Base64") << QStringLiteral("SGVsbG8=") << true << QByteArray("Hello");
        QTest::newRow("empty text: empty data") << QString() << true << QByteArray();
        QTest::newRow("blank: no data") << QStringLiteral(" ") << false << QByteArray();
        QTest::newRow("punctuation only: no data")
            << QStringLiteral("-.!?\n") << false << QByteArray();
        QTest::newRow("outside ASCII: empty data")
            << QStringLiteral("SGVsbG8=\u00e9") << true << QByteArray();
        QTest::newRow("trailing line break")
            << QStringLiteral("QUJD\n") << true << QByteArray("AB");
    }
    void dataFromString()
    {
        QFETCH(QString, text);
        QFETCH(bool, hasData);
        QFETCH(QByteArray, expected);
        const std::optional<QByteArray> data = dataFromBase64String(text);
        QCOMPARE(data.has_value(), hasData);
        if (data)
            QCOMPARE(*data, expected);
    }
};

QTEST_GUILESS_MAIN(Base64Test)
#include "Base64Test.moc"
