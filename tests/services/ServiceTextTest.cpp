#include "services/Pasteboard.h"
#include "services/SpellOutNumber.h"
#include "services/TemporaryFile.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>

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
        QTest::addColumn<std::optional<QString>>("text");

        const QByteArray utf16(reinterpret_cast<const char*>(u"\u00e9\u65e5"), 4);
        QTest::newRow("image-only first item is passed over")
            << Pasteboard{item("image/png", "\x89PNG"), item("text/plain;charset=utf-8", "b")}
            << std::optional(QStringLiteral("b"));
        QTest::newRow("UTF-8 before generic text in one item")
            << Pasteboard{{{QStringLiteral("text/plain"), "generic"},
                           {QStringLiteral("Text/Plain; charset=UTF-8"), "utf8"}}}
            << std::optional(QStringLiteral("utf8"));
        QTest::newRow("X11 UTF8_STRING") << Pasteboard{item("UTF8_STRING", "\xc3\xa9")}
                                         << std::optional(QStringLiteral("\u00e9"));
        QTest::newRow("empty UTF-8 is no text, later items unread")
            << Pasteboard{item("text/plain;charset=utf-8", ""), item("text/plain", "later")}
            << std::optional<QString>();
        QTest::newRow("UTF-16 ASCII reads as UTF-8: A NUL B NUL")
            << Pasteboard{item("text/plain;charset=utf-16le", QByteArray("A\0B\0", 4))}
            << std::optional(QString::fromUtf16(u"A\0B\0", 4));
        QTest::newRow("not UTF-8: host-order UTF-16")
            << Pasteboard{item("text/plain;charset=utf-16le", utf16)}
            << std::optional(QStringLiteral("\u00e9\u65e5"));
        QTest::newRow("external UTF-16 keeps its mark")
            << Pasteboard{item("text/plain;charset=utf-16", "\xff\xfe" + utf16)}
            << std::optional(QStringLiteral("\ufeff\u00e9\u65e5"));
        QTest::newRow("odd length, not UTF-8")
            << Pasteboard{item("STRING", "\xe9")} << std::optional<QString>();
    }
    void readText()
    {
        QFETCH(Pasteboard, pasteboard);
        QFETCH(std::optional<QString>, text);
        QCOMPARE(ReadTextFromPasteboard(pasteboard), text);
    }

    void temporaryFile_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("blocked");
        QTest::newRow("outside ASCII, as UTF-8") << QStringLiteral("\u00e9t\u00e9") << false;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("Tallyvox is a plain file") << QStringLiteral("x") << true;
    }
    void temporaryFile()
    {
        QFETCH(QString, text);
        QFETCH(bool, blocked);
        testing::TestEnvironment env;
        if (blocked) {
            env.writeFile(QStringLiteral("tmp/Tallyvox"), "a file");
        }
        std::optional<FileRef> first;
        std::optional<FileRef> second;
        QCOMPARE(WriteTextToTemporaryFile(env.tempFolder(), text, first), !blocked);
        QCOMPARE(WriteTextToTemporaryFile(env.tempFolder(), text, second), !blocked);
        if (blocked) {
            return;
        }
        QCOMPARE(first->name(), QStringLiteral("TallyvoxData.txt"));
        QVERIFY(first->path() != second->path());
        QFile written(first->path());
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), text.toUtf8());
    }

    // Copies of selected text live a day; nothing else in the folder is touched.
    void oldTemporaryFilesAreRemoved()
    {
        testing::TestEnvironment env;
        std::optional<FileRef> fresh;
        std::optional<FileRef> old;
        QVERIFY(WriteTextToTemporaryFile(env.tempFolder(), QStringLiteral("new"), fresh));
        QVERIFY(WriteTextToTemporaryFile(env.tempFolder(), QStringLiteral("old"), old));
        const QString stranger = env.writeFile(QStringLiteral("tmp/Tallyvox/notes/a.txt"), "x");
        const QString oldFolder = QFileInfo(old->path()).absolutePath();
        const timespec twoDaysAgo{std::time(nullptr) - std::time_t{2} * 24 * 3600, 0};
        const timespec times[2] = {twoDaysAgo, twoDaysAgo};
        for (const QString& path :
             {old->path(), oldFolder, stranger, QFileInfo(stranger).absolutePath()}) {
            QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
        }
        QCOMPARE(removeOldTemporaryFiles(env.tempFolder(), temporaryFileLifetime), 1);
        QVERIFY(!QFileInfo::exists(oldFolder));
        QVERIFY(QFileInfo::exists(fresh->path()));
        QVERIFY(QFileInfo::exists(stranger));
    }

    void spellOut_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("words");
        const QString en = QStringLiteral("en");
        QTest::newRow("leading blanks")
            << en << QStringLiteral("  42 apples") << QStringLiteral("forty-two");
        QTest::newRow("no number is zero")
            << en << QStringLiteral("apples") << QStringLiteral("zero");
        QTest::newRow("stops at the comma")
            << en << QStringLiteral("1,000") << QStringLiteral("one");
        // The full stop is the decimal separator whatever the locale.
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
    }
};

QTEST_GUILESS_MAIN(ServiceTextTest)
#include "ServiceTextTest.moc"
