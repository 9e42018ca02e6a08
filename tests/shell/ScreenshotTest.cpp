#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");

QString run(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    process.start(tool, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

// The X window id of the first window with exactly this title, or empty.
QString findWindow(const QString& title)
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--name"),
                                           QLatin1Char('^') + title + QLatin1Char('$')})
        .section(u'\n', 0, 0);
}

} // namespace

/// Starts the real application on a real X server and keeps pictures of its windows.
class ScreenshotTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY"))
            QSKIP("no X display: run under xvfb-run");
        for (const char* tool : {"xdotool", "import"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty())
                QSKIP("xdotool and imagemagick are needed");
        }
    }

    void mainAndPreferencesWindows()
    {
        tallyvox::testing::TestEnvironment env;
        const QString shots = QStringLiteral(TALLYVOX_SCREENSHOT_DIR);
        QDir().mkpath(shots);
        QProcess app;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        app.setProcessEnvironment(environment);
        app.setProcessChannelMode(QProcess::ForwardedChannels);
        app.start(program, {});
        QVERIFY(app.waitForStarted());

        QString mainWindow;
        QTRY_VERIFY_WITH_TIMEOUT(!(mainWindow = findWindow(QStringLiteral("Tallyvox"))).isEmpty(),
                                 10000);
        QTest::qWait(700); // painted
        const QString mainShot = shots + QStringLiteral("/main-window.png");
        run(QStringLiteral("import"), {QStringLiteral("-window"), mainWindow, mainShot});

        run(QStringLiteral("xdotool"),
            {QStringLiteral("windowfocus"), QStringLiteral("--sync"), mainWindow});
        run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("ctrl+comma")});
        QString preferences;
        QTRY_VERIFY_WITH_TIMEOUT(
            !(preferences = findWindow(QStringLiteral("Tallyvox Preferences"))).isEmpty(), 10000);
        QTest::qWait(700);
        const QString preferencesShot = shots + QStringLiteral("/preferences-window.png");
        run(QStringLiteral("import"), {QStringLiteral("-window"), preferences, preferencesShot});

        run(QStringLiteral("xdotool"),
            {QStringLiteral("windowfocus"), QStringLiteral("--sync"), mainWindow});
        run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("ctrl+q")});
        QVERIFY(app.waitForFinished(10000));
        QCOMPARE(app.exitCode(), 0);

        for (const QString& shot : {mainShot, preferencesShot}) {
            const QImage image(shot);
            QVERIFY2(image.width() > 200 && image.height() > 100, qPrintable(shot));
        }
    }
};

QTEST_GUILESS_MAIN(ScreenshotTest)
#include "ScreenshotTest.moc"
