// TALLYVOX_INDEXER_THREADS as the indexer reads it: the application sets it to share the
// cores between indexers, and anything but a positive count leaves the default.

#include "indexer/Threads.h"

#include <QTest>
#include <QThread>

using tallyvox::indexer::allowedThreads;
using tallyvox::indexer::availableCores;

class ThreadsTest : public QObject {
    Q_OBJECT

private slots:
    void readsTheVariable_data();
    void readsTheVariable();
    void coresAreCounted();
};

void ThreadsTest::readsTheVariable_data()
{
    QTest::addColumn<QByteArray>("value"); // null: unset
    QTest::addColumn<unsigned>("fallback");
    QTest::addColumn<unsigned>("threads");
    QTest::newRow("unset") << QByteArray() << 2u << 2u;
    QTest::newRow("one") << QByteArray("1") << 2u << 1u;
    QTest::newRow("more than the default") << QByteArray("6") << 2u << 6u;
    QTest::newRow("leading zero") << QByteArray("03") << 2u << 3u;
    QTest::newRow("zero") << QByteArray("0") << 2u << 2u;
    QTest::newRow("negative") << QByteArray("-1") << 4u << 4u;
    QTest::newRow("plus sign") << QByteArray("+2") << 4u << 4u;
    QTest::newRow("empty") << QByteArray("") << 3u << 3u;
    QTest::newRow("word") << QByteArray("two") << 3u << 3u;
    QTest::newRow("trailing junk") << QByteArray("2x") << 3u << 3u;
    QTest::newRow("space") << QByteArray(" 2") << 3u << 3u;
    QTest::newRow("absurdly many") << QByteArray("100000") << 2u << 2u;
    QTest::newRow("overflow") << QByteArray("99999999999999999999999") << 2u << 2u;
}

void ThreadsTest::readsTheVariable()
{
    QFETCH(QByteArray, value);
    QFETCH(unsigned, fallback);
    QFETCH(unsigned, threads);
    if (value.isNull()) {
        qunsetenv("TALLYVOX_INDEXER_THREADS");
    } else {
        qputenv("TALLYVOX_INDEXER_THREADS", value);
    }
    const unsigned allowed = allowedThreads(fallback);
    qunsetenv("TALLYVOX_INDEXER_THREADS");
    QCOMPARE(allowed, threads);
}

void ThreadsTest::coresAreCounted()
{
    // The default for PDF page readers: never zero, never more than the machine has.
    const unsigned cores = availableCores();
    QVERIFY(cores >= 1);
    QVERIFY(cores <= static_cast<unsigned>(QThread::idealThreadCount()));
}

QTEST_GUILESS_MAIN(ThreadsTest)
#include "ThreadsTest.moc"
