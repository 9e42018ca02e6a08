// No text handed to the log can make a line of its own: a file name may hold any character.

#include "support/SystemLog.h"
#include "tests/common/RecordingDesktop.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

class SystemLogTest : public QObject {
    Q_OBJECT

private slots:
    void everyLogWritesOneLine_data();
    void everyLogWritesOneLine();
};

void SystemLogTest::everyLogWritesOneLine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("written");
    // The quoting itself is console mode's, checked against bash in ConsoleModeTest.
    QTest::newRow("plain") << u"There are 3 words in \"a b.txt\""_s
                           << u"There are 3 words in \"a b.txt\""_s;
    QTest::newRow("forged line")
        << u"There are 3 words in \"x\nThere are 999 words in \"forged\"\""_s
        << u"$'There are 3 words in \"x\\nThere are 999 words in \"forged\"\"'"_s;
    QTest::newRow("line separator") << u"a\u2028b\u2029"_s << u"$'a\\u2028b\\u2029'"_s;
    QTest::newRow("begins like a quote") << u"$'x\\'"_s << u"$'$\\'x\\\\\\''"_s;
}

void SystemLogTest::everyLogWritesOneLine()
{
    QFETCH(QString, line);
    QFETCH(QString, written);

    testing::RecordingDesktop desktop;
    desktop.log(line);
    QCOMPARE(desktop.logLines(), QStringList{written});

    // What reaches standard error (the system log gets the same bytes).
    QTemporaryDir folder;
    const QByteArray path = folder.filePath(u"stderr"_s).toLocal8Bit();
    const int capture = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    QVERIFY(capture >= 0);
    std::fflush(stderr);
    const int saved = ::dup(STDERR_FILENO);
    ::dup2(capture, STDERR_FILENO);
    systemLog(line);
    ::dup2(saved, STDERR_FILENO);
    ::close(saved);
    ::close(capture);
    QFile file(QString::fromLocal8Bit(path));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), u"Tallyvox: "_s + written + u'\n');
}

QTEST_GUILESS_MAIN(SystemLogTest)
#include "SystemLogTest.moc"
