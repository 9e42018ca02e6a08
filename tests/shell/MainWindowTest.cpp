#include "prefs/PreferenceStore.h"
#include "shell/ApplicationShell.h"
#include "shell/WindowBounds.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

using namespace tallyvox;

namespace {

std::unique_ptr<QMimeData> mimeData(const QList<QUrl>& urls, const QString& text = {})
{
    auto data = std::make_unique<QMimeData>();
    if (!urls.isEmpty())
        data->setUrls(urls);
    if (!text.isNull())
        data->setText(text);
    return data;
}

// Delivers a drag's enter and drop as the window system would; true when each was accepted.
std::pair<bool, bool> dragAndDrop(QWidget& window, const QMimeData& data)
{
    const QPoint at = window.rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &drop);
    return {enter.isAccepted(), drop.isAccepted()};
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT

private slots:
    void drops_data()
    {
        QTest::addColumn<QStringList>("names"); // "" for a non-file URL
        QTest::addColumn<bool>("withText");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<int>("beeps");
        QTest::newRow("text only") << QStringList{} << true << false << QStringList{} << 0;
        QTest::newRow("web address only")
            << QStringList{QString()} << false << false << QStringList{} << 0;
        QTest::newRow("two files")
            << QStringList{QStringLiteral("a"), QStringLiteral("b")} << false << true
            << QStringList{QStringLiteral("a"), QStringLiteral("b")} << 0;
        QTest::newRow("file with a clipping") << QStringList{QStringLiteral("a")} << true << true
                                              << QStringList{QStringLiteral("a")} << 0;
        QTest::newRow("folder") << QStringList{QStringLiteral("dir")} << false << true
                                << QStringList{QStringLiteral("dir")} << 0;
        // One entry per item; only the last item decides whether the files go out.
        QTest::newRow("unusable item in the middle")
            << QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")} << false << true
            << QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")} << 0;
        QTest::newRow("unusable item last")
            << QStringList{QStringLiteral("a"), QString()} << false << false << QStringList{} << 1;
    }
    void drops()
    {
        QFETCH(QStringList, names);
        QFETCH(bool, withText);
        QFETCH(bool, accepted);
        QFETCH(QStringList, entries);
        QFETCH(int, beeps);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        QDir().mkpath(env.root() + QStringLiteral("/dir"));
        env.writeFile(QStringLiteral("a"), "x");
        env.writeFile(QStringLiteral("b"), "x");
        QList<QUrl> urls;
        for (const QString& name : names) {
            urls.append(name.isEmpty() ? QUrl(QStringLiteral("https://okaluna.example/x"))
                                       : QUrl::fromLocalFile(env.root() + u'/' + name));
        }
        MainWindow window(desktop);
        window.show();
        QSignalSpy dropped(&window, &MainWindow::documentsDropped);
        const auto data = mimeData(urls, withText ? QStringLiteral("clipping") : QString());
        const auto [enterAccepted, dropAccepted] = dragAndDrop(window, *data);

        QCOMPARE(dropAccepted, accepted);
        QCOMPARE(enterAccepted, !(names.isEmpty() || names == QStringList{QString()}));
        // The files are delivered after the drop has returned.
        QCOMPARE(dropped.size(), 0);
        QTest::qWait(10);
        QCOMPARE(dropped.size(), accepted ? 1 : 0);
        if (accepted) {
            QStringList expected;
            for (const QString& entry : entries)
                expected.append(entry.isEmpty() ? QString() : env.root() + u'/' + entry);
            QCOMPARE(dropped.first().first().toStringList(), expected);
        }
        QCOMPARE(desktop.texts(QStringLiteral("beep")).size(), beeps);
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

        const auto data = mimeData({QUrl::fromLocalFile(env.writeFile(QStringLiteral("a"), "x"))});
        QDragEnterEvent enter(content.center(), Qt::CopyAction, data.get(), Qt::LeftButton,
                              Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QCOMPARE(pixel(1, 40) == highlight, false);
        QCOMPARE(pixel(2, 40), highlight);
        QCOMPARE(pixel(40, 2), highlight);
        QCOMPARE(pixel(content.width() - 3, 40), highlight);
        QCOMPARE(pixel(content.width() - 2, 40) == highlight, false);

        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(&window, &leave);
        QVERIFY(pixel(2, 40) != highlight);
    }

    void boundsRule_data()
    {
        QTest::addColumn<QRect>("stored");
        QTest::addColumn<bool>("restored");
        QTest::newRow("inside") << QRect(100, 50, 400, 300) << true;
        QTest::newRow("far outside") << QRect(3000, 2000, 400, 300) << false;
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
        const std::optional<QRect> result = boundsToRestore(stored, screen);
        QCOMPARE(result.has_value(), restored);
        if (restored)
            QCOMPARE(*result, stored); // neither clipped nor moved
        QVERIFY(!boundsToRestore(std::nullopt, screen));
    }

    void boundsAreRestoredAtStartAndSavedAtShutdown()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        PreferenceStore store;
        {
            ApplicationShell shell(desktop, store, [](const FileRef&) {});
            // Wholly off screen: the designed size stays and is what is saved.
            store.writeWindowBounds(QRect(3000, 2000, 400, 300));
            shell.start(QRect(0, 0, 1440, 900));
            QCOMPARE(shell.mainWindow().size(), QSize(440, 280));
            shell.shutdown();
            QCOMPARE(store.readWindowBounds(), std::optional<QRect>(shell.mainWindow().geometry()));
        }
        store.writeWindowBounds(QRect(-399, 120, 400, 300));
        ApplicationShell shell(desktop, store, [](const FileRef&) {});
        shell.start(QRect(0, 0, 1440, 900));
        QCOMPARE(shell.mainWindow().geometry(), QRect(-399, 120, 400, 300));
    }
};

QTEST_MAIN(MainWindowTest)
#include "MainWindowTest.moc"
