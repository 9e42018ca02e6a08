#include "services/Pasteboard.h"
#include "services/SpellOutNumber.h"
#include "services/TemporaryFile.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <unicode/locid.h>

using namespace tallyvox;

namespace {

PasteboardItem item(const char* type, const QByteArray& bytes)
{
    return {{QString::fromLatin1(type), bytes}};
}

} // namespace

class ServiceTextTest : public QObject {
    Q_OBJECT

private slots:
    void readText_data()
    {
        QTest::addColumn<Pasteboard>("pasteboard");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("text");

        const QByteArray image("\x89PNG\r\n");
        QTest::newRow("image-only first item is passed over")
            << Pasteboard{item("image/png", image), item("text/plain;charset=utf-8", "second")}
            << true << QStringLiteral("second");
        QTest::newRow("UTF-8 wins over generic text in one item")
            << Pasteboard{{{QStringLiteral("text/plain"), "generic"},
                           {QStringLiteral("text/plain;charset=utf-8"), "utf8"}}}
            << true << QStringLiteral("utf8");
        QTest::newRow("X11 UTF8_STRING") << Pasteboard{item("UTF8_STRING", "\xc3\xa9t\xc3\xa9")}
                                         << true << QStringLiteral("\u00e9t\u00e9");
        QTest::newRow("empty UTF-8 is nothing, not empty text")
            << Pasteboard{item("text/plain;charset=utf-8", ""), item("text/plain", "later")}
            << false << QString();
        QTest::newRow("UTF-16 ASCII stays UTF-8: A NUL B NUL")
            << Pasteboard{item("text/plain;charset=utf-16le", QByteArray("A\0B\0", 4))} << true
            << QString::fromUtf16(u"A\0B\0", 4);
        QByteArray utf16(reinterpret_cast<const char*>(u"\u00e9\u65e5"), 4);
        QTest::newRow("not UTF-8: host-order UTF-16")
            << Pasteboard{item("text/plain;charset=utf-16le", utf16)} << true
            << QStringLiteral("\u00e9\u65e5");
        QTest::newRow("the mark of external UTF-16 is kept")
            << Pasteboard{item("text/plain;charset=utf-16", QByteArray("\xff\xfe", 2) + utf16)}
            << true << QStringLiteral("\ufeff\u00e9\u65e5");
        QTest::newRow("odd length is neither")
            << Pasteboard{item("STRING", "\xe9")} << false << QString();
        QTest::newRow("no text flavor")
            << Pasteboard{item("image/png", image)} << false << QString();
    }
    void readText()
    {
        QFETCH(Pasteboard, pasteboard);
        QFETCH(bool, found);
        QFETCH(QString, text);
        const std::optional<QString> read = ReadTextFromPasteboard(pasteboard);
        QCOMPARE(read.has_value(), found);
        QCOMPARE(read.value_or(QString()), text);
    }

    void readFileUrl_data()
    {
        QTest::addColumn<QByteArray>("uri");
        QTest::addColumn<bool>("found");
        QTest::addColumn<QString>("relativePath");
        QTest::newRow("escaped file URL")
            << QByteArray("a%20b.txt") << true << QStringLiteral("a b.txt");
        QTest::newRow("uri-list line ending")
            << QByteArray("a%20b.txt\r\n") << true << QStringLiteral("a b.txt");
        QTest::newRow("missing file") << QByteArray("gone.txt") << false << QString();
        QTest::newRow("empty data") << QByteArray() << false << QString();
    }
    void readFileUrl()
    {
        QFETCH(QByteArray, uri);
        QFETCH(bool, found);
        QFETCH(QString, relativePath);
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("a b.txt"), "x");
        const QByteArray url =
            uri.isEmpty() ? uri : QUrl::fromLocalFile(env.root()).toEncoded() + '/' + uri;
        std::optional<FileRef> ref;
        const Pasteboard pasteboard{item("image/png", "x"), item("text/uri-list", url)};
        QCOMPARE(ReadFileURLFromPasteboard(pasteboard, ref), found);
        if (found)
            QCOMPARE(ref->path(), env.root() + QLatin1Char('/') + relativePath);
    }

    void temporaryFile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("blocker");
        QTest::addColumn<bool>("written");
        QTest::newRow("text outside ASCII as UTF-8")
            << QStringLiteral("\u00e9t\u00e9") << QByteArray() << true;
        QTest::newRow("empty text") << QString() << QByteArray() << true;
        QTest::newRow("Tallyvox is a plain file")
            << QStringLiteral("x") << QByteArray("file") << false;
    }
    void temporaryFile()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, blocker);
        QFETCH(bool, written);
        testing::TestEnvironment env;
        if (!blocker.isEmpty())
            env.writeFile(QStringLiteral("tmp/Tallyvox"), blocker);
        std::optional<FileRef> first;
        std::optional<FileRef> second;
        QCOMPARE(WriteTextToTemporaryFile(text, first), written);
        QCOMPARE(WriteTextToTemporaryFile(text, second), written);
        if (!written)
            return;
        QCOMPARE(first->name(), QStringLiteral("TallyvoxData.txt"));
        QVERIFY(first->path() != second->path());
        QFile file(first->path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), text.toUtf8());
    }

    void spellOut_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("words");
        const QString en = QStringLiteral("en");
        QTest::newRow("123") << en << QStringLiteral("123")
                             << QStringLiteral("one hundred twenty-three");
        QTest::newRow("leading blanks")
            << en << QStringLiteral("  42 apples") << QStringLiteral("forty-two");
        QTest::newRow("no number is zero")
            << en << QStringLiteral("apples") << QStringLiteral("zero");
        QTest::newRow("stops at the comma")
            << en << QStringLiteral("1,000") << QStringLiteral("one");
        QTest::newRow("fraction") << en << QStringLiteral("2.5")
                                  << QStringLiteral("two point five");
        // The full stop is the decimal separator in every locale.
        QTest::newRow("German") << QStringLiteral("de") << QStringLiteral("2.5")
                                << QStringLiteral("zwei Komma f\u00fcnf");
    }
    void spellOut()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(QString, words);
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale(locale.toLatin1().constData()), status);
        testing::RecordingDesktop desktop;
        SpellOutNumber(desktop, text);
        QCOMPARE(desktop.clipboard(), words);
        QCOMPARE(desktop.texts(QStringLiteral("sound")), QStringList{QStringLiteral("Ping")});
        QCOMPARE(desktop.alerts(),
                 QStringList{
                     QStringLiteral("The following \"spell out\" has been put on the clipboard: ") +
                     words});
    }
};

QTEST_GUILESS_MAIN(ServiceTextTest)
#include "ServiceTextTest.moc"
