#include "prefs/PreferenceStore.h"
#include "shell/ApplicationShell.h"
#include "shell/PreferencesWindow.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QTranslator>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

QString run(const QString& tool, const QStringList& arguments)
{
    QProcess process;
    process.start(tool, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

// The X window id of the first shown window with exactly this title, or empty.
QString findWindow(const QString& title)
{
    return run(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u'^' + title + u'$'})
        .section(u'\n', 0, 0);
}

// Waits for the window of this title, gives it time to paint and saves a picture of it;
// gives the window's id, empty when it never came.
QString shoot(const QString& title, const QString& file)
{
    QString window;
    if (!QTest::qWaitFor([&] { return !(window = findWindow(title)).isEmpty(); }, 10000)) {
        return {};
    }
    QTest::qWait(700);
    run(u"import"_s, {u"-window"_s, window, QStringLiteral(TALLYVOX_SCREENSHOT_DIR "/") + file});
    return window;
}

// Focuses a window and types a key combination into it.
void press(const QString& window, const QString& keys)
{
    run(u"xdotool"_s, {u"windowfocus"_s, u"--sync"_s, window});
    run(u"xdotool"_s, QStringList{u"key"_s} + keys.split(u' '));
}

// With no window manager a key can arrive before the window takes input: press again
// until what the key should do has happened.
bool pressUntil(const QString& window, const QString& keys, const std::function<bool()>& done)
{
    for (int attempt = 0; attempt < 5; ++attempt) {
        press(window, keys);
        if (QTest::qWaitFor(done, 3000)) {
            return true;
        }
    }
    return false;
}

// Texts of a window that escaped translation (no brackets in the pseudo-language), and
// its controls narrower than their text. Fields' contents and values are data; a standard
// button (Close) has Qt's own text, which Qt's translation turns.
QStringList escapedOrClipped(const QWidget& window)
{
    QStringList found;
    for (auto* widget : window.findChildren<QWidget*>()) {
        QStringList texts;
        for (const char* property : {"text", "title", "toolTip", "placeholderText"}) {
            texts.append(widget->property(property).toString());
        }
        if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
            for (int i = 0; i < combo->count(); ++i) {
                texts.append(combo->itemText(i));
            }
        }
        for (const QAction* action : widget->actions()) {
            texts.append(action->text());
        }
        const auto* box = qobject_cast<const QDialogButtonBox*>(widget->parent());
        auto* button = qobject_cast<QAbstractButton*>(widget);
        const bool data =
            qobject_cast<const QLineEdit*>(widget) ||
            qobject_cast<const QAbstractSpinBox*>(widget) ||
            widget->property("wholeText").isValid() ||
            (box && button && box->standardButton(button) != QDialogButtonBox::NoButton);
        // A dictionary's name (en_US) is data too.
        static const QRegularExpression dictionary(u"^[a-z]{2,3}(_[A-Z]{2})?$"_s);
        for (QString text : std::as_const(texts)) {
            text.remove(QRegularExpression(u"<[^>]*>"_s));
            if (!data && !text.trimmed().isEmpty() && !text.startsWith(u'[') &&
                !dictionary.match(text).hasMatch()) {
                found.append(text);
            }
        }
        const auto* label = qobject_cast<const QLabel*>(widget);
        if ((button || (label && !label->wordWrap() && !data)) && widget->isVisible() &&
            widget->width() < widget->minimumSizeHint().width()) {
            found.append(widget->objectName() + u" is clipped"_s);
        }
    }
    return found;
}

} // namespace

/// Starts the real application on a real X server and keeps pictures of its windows.
class ScreenshotTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY")) {
            QSKIP("no X display: run under tests/with-xvfb.sh");
        }
        for (const char* tool : {"xdotool", "import"}) {
            if (QStandardPaths::findExecutable(QString::fromLatin1(tool)).isEmpty()) {
                QSKIP("xdotool and imagemagick are needed");
            }
        }
    }

    void mainAndPreferencesWindows()
    {
        tallyvox::testing::TestEnvironment env;
        QProcess app;
        const QString mainWindow = startAndShoot(app, {}, u"main-window.png"_s);
        QVERIFY(!mainWindow.isEmpty());
        QVERIFY(pressUntil(mainWindow, u"ctrl+comma"_s,
                           [] { return !findWindow(u"Tallyvox Preferences"_s).isEmpty(); }));
        QVERIFY(!shoot(u"Tallyvox Preferences"_s, u"preferences-window.png"_s).isEmpty());
        // Help > About Tallyvox by its mnemonics.
        QVERIFY(pressUntil(mainWindow, u"alt+h a"_s,
                           [] { return !findWindow(u"About Tallyvox"_s).isEmpty(); }));
        QVERIFY(!shoot(u"About Tallyvox"_s, u"about-window.png"_s).isEmpty());
        QVERIFY(pressUntil(mainWindow, u"ctrl+q"_s,
                           [&app] { return app.state() == QProcess::NotRunning; }));
        QCOMPARE(app.exitCode(), 0);

        checkPictures({"main-window.png", "preferences-window.png", "about-window.png"});
    }

    // A file that takes seconds shows how far it is read; Esc is the stop button, and the
    // stop is acknowledged while the file goes on. The application's shell runs here, in
    // this process on the X server, with an indexer that takes four seconds, so the test
    // reads back the very texts the pictures show.
    void progressWithinALongFile()
    {
        tallyvox::testing::TestEnvironment env;
        const QString path = env.writeFile(u"Long report.txt"_s, "long report");
        tallyvox::testing::RecordingDesktop desktop;
        tallyvox::PreferenceStore store;
        tallyvox::testing::FakeIndexer indexer;
        indexer.script(path, {tallyvox::WordTable{{u"long"_s, 1}, {u"report"_s, 1}},
                              tallyvox::IndexerEnding::Complete,
                              std::chrono::seconds(4),
                              {{100, 400}, {200, 400}, {300, 400}}});
        tallyvox::ApplicationShell shell(store, {desktop, store, indexer, env.tempFolder()});
        shell.start(QRect(0, 0, 1280, 1024));
        auto* window = &shell.mainWindow();
        const auto* progress =
            window->findChild<QLabel*>(QLatin1String(tallyvox::mainControls::ProgressText));
        QVERIFY(progress);
        QSignalSpy ended(&shell.batch(), &tallyvox::BatchRunner::runEnded);
        shell.openDocuments({path});

        QTRY_COMPARE_WITH_TIMEOUT(progress->text(), u"Long report.txt: 25% read"_s, 3000);
        QVERIFY(progress->isVisible());
        saveWindow(*window, u"progress-text.png"_s);
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
        // At once: long before the next report.
        QTRY_COMPARE_WITH_TIMEOUT(
            progress->text(), u"Long report.txt: 25% read \u2014 stopping after this file\u2026"_s,
            300);
        QTRY_COMPARE_WITH_TIMEOUT(
            progress->text(), u"Long report.txt: 50% read \u2014 stopping after this file\u2026"_s,
            3000);
        saveWindow(*window, u"stop-acknowledged.png"_s);
        // The file in hand still gets its list.
        QVERIFY(ended.wait(5000));
        QCOMPARE(desktop.texts(u"editor"_s).size(), 1);
        checkPictures({"progress-text.png", "stop-acknowledged.png"});
    }

    // A name of 200 characters: both status lines elide it in the middle, and the window
    // keeps its width.
    void longNameInProgress()
    {
        tallyvox::testing::TestEnvironment env;
        const QString name = u"Quarterly report of the regional offices "_s + u"x"_s.repeated(130) +
                             u" final draft.pdf"_s;
        const QString path = env.writeFile(name, "long name");
        tallyvox::testing::RecordingDesktop desktop;
        tallyvox::PreferenceStore store;
        tallyvox::testing::FakeIndexer indexer;
        indexer.script(path, {tallyvox::WordTable{{u"long"_s, 1}},
                              tallyvox::IndexerEnding::Complete,
                              std::chrono::seconds(3),
                              {{100, 400}, {200, 400}}});
        tallyvox::ApplicationShell shell(store, {desktop, store, indexer, env.tempFolder()});
        shell.start(QRect(0, 0, 1280, 1024));
        auto* window = &shell.mainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        const int width = window->width();
        const auto* progress =
            window->findChild<QLabel*>(QLatin1String(tallyvox::mainControls::ProgressText));
        const auto* status =
            window->findChild<QLabel*>(QLatin1String(tallyvox::mainControls::StatusText));
        QSignalSpy ended(&shell.batch(), &tallyvox::BatchRunner::runEnded);
        shell.openDocuments({path});
        QTRY_VERIFY_WITH_TIMEOUT(progress->text().endsWith(u"final draft.pdf: 25% read"_s), 3000);
        QVERIFY(progress->text().startsWith(u"Quarterly"_s));
        QVERIFY(progress->text().contains(u'\u2026'));
        QVERIFY(status->text().startsWith(u"File: Quarterly"_s));
        QVERIFY(status->text().contains(u'\u2026'));
        QCOMPARE(window->width(), width);
        saveWindow(*window, u"long-name.png"_s);
        QVERIFY(ended.wait(5000));
        checkPictures({"long-name.png"});
    }

    // The windows in the pseudo-language: every text bracketed and 40 % longer. A text
    // without brackets escaped translation; a control narrower than its text is clipped.
    void pseudoLanguage()
    {
        QTranslator pseudo;
        QVERIFY(pseudo.load(QStringLiteral(TALLYVOX_BUILD_BIN_DIR
                                           "/../share/tallyvox/translations/tallyvox_en_XA.qm")));
        QCoreApplication::installTranslator(&pseudo);
        tallyvox::testing::TestEnvironment env;
        tallyvox::testing::RecordingDesktop desktop;
        tallyvox::PreferenceStore store;
        tallyvox::testing::FakeIndexer indexer;
        tallyvox::ApplicationShell shell(store, {desktop, store, indexer, env.tempFolder()});
        shell.start(QRect(0, 0, 1280, 1024));
        auto* window = &shell.mainWindow();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // Before the preferences window covers it.
        saveWindow(*window, u"pseudo-main-window.png"_s);
        shell.issueCommand(tallyvox::commands::Preferences,
                           tallyvox::ApplicationShell::Origin::MainWindow);
        QWidget* preferences = shell.preferencesWindow();
        QVERIFY(preferences);
        QVERIFY(QTest::qWaitForWindowExposed(preferences));
        const auto* status =
            window->findChild<QLabel*>(QLatin1String(tallyvox::mainControls::StatusText));
        QVERIFY2(status->text().startsWith(u'['), qPrintable(status->text()));
        for (QWidget* shown : {static_cast<QWidget*>(window), preferences}) {
            QVERIFY(shown->windowTitle() == u"Tallyvox"_s || shown->windowTitle().startsWith(u'['));
            const QStringList wrong = escapedOrClipped(*shown);
            QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u" | "_s)));
        }
        saveWindow(*preferences, u"pseudo-preferences-window.png"_s);
        QCoreApplication::removeTranslator(&pseudo);
        checkPictures({"pseudo-main-window.png", "pseudo-preferences-window.png"});
    }

private:
    // Starts the program on the X server with these arguments and keeps a picture of its
    // main window; gives the window's id, empty when it never came.
    static QString startAndShoot(QProcess& app, const QStringList& arguments,
                                 const QString& picture)
    {
        QDir().mkpath(QStringLiteral(TALLYVOX_SCREENSHOT_DIR));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        app.setProcessEnvironment(environment);
        app.setProcessChannelMode(QProcess::ForwardedChannels);
        // A program that could not reach the fresh server ends at once: start it again.
        QString mainWindow;
        for (int attempt = 0; attempt < 3 && mainWindow.isEmpty(); ++attempt) {
            if (app.state() == QProcess::NotRunning) {
                app.start(QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox"), arguments);
                if (!app.waitForStarted()) {
                    return {};
                }
            }
            mainWindow = shoot(u"Tallyvox"_s, picture);
        }
        return mainWindow;
    }

    // The window as the X server shows it.
    static void saveWindow(QWidget& window, const QString& file)
    {
        QDir().mkpath(QStringLiteral(TALLYVOX_SCREENSHOT_DIR));
        QTest::qWait(300);
        QVERIFY(window.screen()
                    ->grabWindow(window.winId())
                    .save(QStringLiteral(TALLYVOX_SCREENSHOT_DIR "/") + file));
    }

    static void checkPictures(std::initializer_list<const char*> names)
    {
        for (const char* name : names) {
            const QImage image(QStringLiteral(TALLYVOX_SCREENSHOT_DIR "/") + QLatin1String(name));
            QVERIFY2(image.width() > 200 && image.height() > 100, name);
        }
    }
};

QTEST_MAIN(ScreenshotTest)
#include "ScreenshotTest.moc"
