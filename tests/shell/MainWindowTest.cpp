#include "shell/MainWindow.h"
#include "prefs/PreferenceStore.h"
#include "shell/ApplicationShell.h"
#include "shell/WindowBounds.h"
#include "support/FilePath.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QLabel>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <fcntl.h>
#include <unistd.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void drops_data()
    {
        // Items as names below the test's root, "~" for a web address, "%" for a file whose
        // name is not UTF-8; none: a text clipping.
        QTest::addColumn<QString>("items");
        QTest::addColumn<bool>("entered");
        QTest::addColumn<QString>("delivered"); // null when the drop is refused
        QTest::addColumn<int>("beeps");
        QTest::newRow("text only") << QString() << false << QString() << 0;
        QTest::newRow("two files and a folder") << u"a dir b"_s << true << u"a dir b"_s << 0;
        // One entry per item; only the last item decides whether the files go out.
        QTest::newRow("unusable item in the middle") << u"a ~ b"_s << true << u"a ~ b"_s << 0;
        QTest::newRow("unusable item last") << u"a ~"_s << true << QString() << 1;
        QTest::newRow("name that is not UTF-8") << u"% a"_s << true << u"% a"_s << 0;
    }
    void drops()
    {
        QFETCH(QString, items);
        QFETCH(bool, entered);
        QFETCH(QString, delivered);
        QFETCH(int, beeps);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        QDir().mkpath(env.root() + u"/dir"_s);
        env.writeFile(u"a"_s, "x");
        env.writeFile(u"b"_s, "x");
        const QByteArray odd = encodePath(env.root()) + "/odd\xff";
        ::close(::open(odd.constData(), O_WRONLY | O_CREAT, 0600));
        const auto paths = [&](const QString& names) {
            QStringList result;
            for (const QString& name : names.split(u' ', Qt::SkipEmptyParts)) {
                if (name == u"%"_s) {
                    result.append(decodePath(odd));
                } else {
                    result.append(name == u"~"_s ? QString() : env.root() + u'/' + name);
                }
            }
            return result;
        };
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths(items)) {
            urls.append(path.isEmpty() ? QUrl(u"https://okaluna.example/x"_s)
                                       : fileUrlOfPath(path));
        }
        urls.isEmpty() ? data.setText(u"clipping"_s) : data.setUrls(urls);

        MainWindow window(desktop);
        window.show();
        QSignalSpy dropped(&window, &MainWindow::documentsDropped);
        const QPoint at = window.rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QDropEvent drop(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &drop);

        QCOMPARE(enter.isAccepted(), entered);
        QCOMPARE(drop.isAccepted(), !delivered.isNull());
        // The files are delivered after the drop has returned.
        QCOMPARE(dropped.size(), 0);
        QTest::qWait(10);
        QCOMPARE(dropped.size(), delivered.isNull() ? 0 : 1);
        if (!delivered.isNull()) {
            QCOMPARE(dropped.first().first().toStringList(), paths(delivered));
        }
        QCOMPARE(desktop.texts(u"beep"_s).size(), beeps);
        ::unlink(odd.constData()); // Qt could not remove it with the sandbox
    }

    // A long name is elided in its middle and never widens the window, however long.
    void longNamesKeepTheWindowWithinItsScreen_data()
    {
        QTest::addColumn<int>("target");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("elided");
        const QString name = u"report-"_s + u"x"_s.repeated(200) + u"-final.pdf"_s;
        QTest::newRow("status, a long name") << 1 << u"File: "_s + name << true;
        QTest::newRow("status, a long name with spaces")
            << 1 << u"File: "_s + u"word "_s.repeated(40) + u"end.pdf"_s << true;
        QTest::newRow("progress, a long name") << 2 << name + u": 40% read"_s << true;
        QTest::newRow("status, short") << 1 << u"File: a.pdf"_s << false;
        QTest::newRow("progress, short") << 2 << u"a.pdf: 40% read"_s << false;
    }
    void longNamesKeepTheWindowWithinItsScreen()
    {
        QFETCH(int, target);
        QFETCH(QString, text);
        QFETCH(bool, elided);
        testing::RecordingDesktop desktop;
        MainWindow window(desktop);
        window.resize(440, 280);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.setProgressVisible(true);
        window.showStatus(text, StatusTarget(target));
        QTest::qWait(20);
        QVERIFY2(window.width() <= 440, qPrintable(QString::number(window.width())));
        QVERIFY(window.minimumSizeHint().width() < 440);
        auto* line = window.findChild<QLabel*>(
            QLatin1String(target == 1 ? mainControls::StatusText : mainControls::ProgressText));
        QVERIFY(line);
        QCOMPARE(line->text().contains(u'\u2026'), elided);
        QCOMPARE(line->accessibleName(), text);
        if (elided) {
            // Both ends stay: what the line is about, and the name's extension or the share read.
            QCOMPARE(line->text().left(4), text.left(4));
            QCOMPARE(line->text().right(4), text.right(4));
            QCOMPARE(line->toolTip(), text);
            QVERIFY(line->fontMetrics()
                        .boundingRect(line->contentsRect(), Qt::TextWordWrap, line->text())
                        .width() <= line->contentsRect().width());
        } else {
            QCOMPARE(line->text(), text);
        }
        // A wider window shows more of the name again.
        const QString before = line->text();
        window.resize(900, 280);
        QTest::qWait(50);
        QCOMPARE(line->text().size() > before.size(), elided);
    }

    void highlightSitsTwoPixelsInside()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        MainWindow window(desktop);
        window.resize(400, 300);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QRect content = window.centralWidget()->geometry();
        const QColor highlight = window.palette().color(QPalette::Highlight);
        auto pixel = [&](int dx, int dy) {
            return window.grab().toImage().pixelColor(content.topLeft() + QPoint(dx, dy));
        };
        QVERIFY(pixel(2, 40) != highlight);

        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(env.writeFile(u"a"_s, "x"))});
        QDragEnterEvent enter(content.center(), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QVERIFY(pixel(1, 40) != highlight);
        QCOMPARE(pixel(2, 40), highlight);
        QCOMPARE(pixel(content.width() - 3, 40), highlight);
        QVERIFY(pixel(content.width() - 2, 40) != highlight);
    }

    void boundsRule_data()
    {
        QTest::addColumn<QRect>("stored");
        QTest::addColumn<bool>("restored");
        QTest::newRow("right edge on screen's left") << QRect(-400, 100, 400, 300) << false;
        QTest::newRow("one pixel in at the left") << QRect(-399, 100, 400, 300) << true;
        QTest::newRow("one pixel in at the bottom") << QRect(100, 899, 400, 300) << true;
        QTest::newRow("top on screen's bottom") << QRect(100, 900, 400, 300) << false;
    }
    void boundsRule()
    {
        QFETCH(QRect, stored);
        QFETCH(bool, restored);
        const QRect screen(0, 0, 1440, 900);
        // Neither clipped nor moved when restored.
        QCOMPARE(boundsToRestore(stored, screen), restored ? std::optional(stored) : std::nullopt);
        QVERIFY(!boundsToRestore(std::nullopt, screen));
    }

    void boundsAreRestoredAtStartAndSavedAtShutdown()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore store;
        store.writeWindowBounds(QRect(-399, 120, 400, 300));
        testing::FakeIndexer indexer;
        ApplicationShell shell(store, {desktop, store, indexer, env.tempFolder()});
        shell.start(QRect(0, 0, 1440, 900));
        QCOMPARE(shell.mainWindow().geometry(), QRect(-399, 120, 400, 300));
        shell.mainWindow().setGeometry(QRect(10, 40, 420, 310));
        shell.shutdown();
        QCOMPARE(store.readWindowBounds(), std::optional(shell.mainWindow().geometry()));
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
