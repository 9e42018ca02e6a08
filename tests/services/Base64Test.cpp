#include "services/Base64.h"

#include <QTest>

#include <algorithm>
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
            << QByteArray("QUJD\r\n") << qint64(2) << QByteArray("AB");
        QTest::newRow("line break inside loses nothing")
            << QByteArray("QUJD\nRA==") << qint64(4) << QByteArray("ABCD");
        QTest::newRow("padding then line break")
            << QByteArray("QQ==\n") << qint64(1) << QByteArray("A");
        QTest::newRow("one character decodes to nothing")
            << QByteArray("Q") << qint64(0) << QByteArray();
        QTest::newRow("empty") << QByteArray("") << qint64(0) << QByteArray();
        QTest::newRow("a blank is minus one") << QByteArray(" ") << qint64(-1) << QByteArray();
        QTest::newRow("only padding is minus one")
            << QByteArray("====") << qint64(-1) << QByteArray();
        QTest::newRow("blank, tab, NUL and high bytes are skipped")
            << QByteArray("SG Vs\t\0\xc3\xa9"
                          "bG8=",
                          13)
            << qint64(5) << QByteArray("Hello");
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
        // From text: minus one is no data at all, and text outside ASCII decodes to none.
        const QString text = QString::fromLatin1(input);
        const bool ascii =
            std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
        QCOMPARE(dataFromBase64String(text),
                 length < 0 ? std::nullopt : std::optional(ascii ? expected : QByteArray()));
    }

    void encodes_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<bool>("separateLines");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("one padding") << QByteArray("ABCDE") << false << QByteArray("QUJDREU=");
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
};

QTEST_GUILESS_MAIN(Base64Test)
#include "Base64Test.moc"
