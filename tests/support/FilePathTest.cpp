#include "support/FilePath.h"
#include "support/FileRef.h"
#include "tests/common/TestEnvironment.h"

#include <QTest>

#include <fcntl.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

class FilePathTest : public QObject {
    Q_OBJECT

private slots:
    // Whatever the bytes, the way there and back is exact, and UTF-8 reads as text.
    void bytesSurviveTheString_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text"); // empty: not all of it is text
        QTest::newRow("ASCII") << "/tmp/a b.txt"_ba << u"/tmp/a b.txt"_s;
        QTest::newRow("UTF-8") << "/caf\xc3\xa9/\xe6\x97\xa5\xf0\x9f\x98\x80"_ba
                               << u"/caf\u00e9/\u65e5\U0001F600"_s;
        QTest::newRow("Latin-1 byte") << "bad\xffname.txt"_ba << QString();
        QTest::newRow("cut sequence") << "x\xe6\x97"_ba << QString();
        QTest::newRow("overlong slash") << "a\xc0\xaf"_ba << QString();
        QTest::newRow("encoded surrogate") << "\xed\xa0\x80"_ba << QString();
        QTest::newRow("beyond U+10FFFF") << "\xf4\x90\x80\x80"_ba << QString();
        QTest::newRow("escape next to a pair") << "\xf0\x9f\x98\x80\x80"_ba << QString();
        QByteArray all;
        for (int b = 1; b < 256; ++b) {
            all.append(char(b));
        }
        QTest::newRow("every byte") << all << QString();
    }
    void bytesSurviveTheString()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        const QString path = decodePath(bytes);
        QCOMPARE(encodePath(path), bytes);
        if (!text.isEmpty()) {
            QCOMPARE(path, text);
        }
        const QString absolute = u'/' + path;
        QCOMPARE(pathOfFileUrl(fileUrlOfPath(absolute)), std::optional<QString>(absolute));
    }

    void fileUrls_data()
    {
        QTest::addColumn<QByteArray>("url");
        QTest::addColumn<QByteArray>("path"); // "-": no local path
        QTest::newRow("escaped byte") << "file:///tmp/bad%FFname"_ba
                                      << "/tmp/bad\xffname"_ba;
        QTest::newRow("escaped UTF-8") << "file:///tmp/caf%C3%A9"_ba
                                       << "/tmp/caf\xc3\xa9"_ba;
        QTest::newRow("localhost") << "file://localhost/etc/hosts"_ba
                                   << "/etc/hosts"_ba;
        QTest::newRow("other host") << "file://elsewhere/etc/hosts"_ba
                                    << "-"_ba;
        QTest::newRow("not a file") << "https://example.org/x"_ba
                                    << "-"_ba;
    }
    void fileUrls()
    {
        QFETCH(QByteArray, url);
        QFETCH(QByteArray, path);
        const std::optional<QString> local = pathOfFileUrl(QUrl::fromEncoded(url));
        QCOMPARE(local ? encodePath(*local) : "-"_ba, path);
    }

    // A file whose name is not UTF-8 can be referred to and named like any other.
    void referencesKeepTheName()
    {
        testing::TestEnvironment env;
        const QByteArray name = "bad\xffname.txt";
        const QByteArray raw = encodePath(env.root()) + '/' + name;
        const int fd = ::open(raw.constData(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        QVERIFY(fd >= 0);
        ::close(fd);
        const std::optional<FileRef> ref = FileRef::fromPath(decodePath(raw));
        QVERIFY(ref);
        QCOMPARE(encodePath(CopyFileName(*ref).value()), name);
        QByteArray bytes;
        QCOMPARE(ref->makePath(bytes, int(raw.size()) + 1), noErr);
        QCOMPARE(bytes, raw);
        // The limit counts bytes: the escaped byte is one, not the three of U+FFFD.
        QCOMPARE(ref->makePath(bytes, int(raw.size())), pathTooLongStatus);
        ::unlink(raw.constData()); // Qt could not remove it with the folder
    }
};

QTEST_GUILESS_MAIN(FilePathTest)
#include "FilePathTest.moc"
