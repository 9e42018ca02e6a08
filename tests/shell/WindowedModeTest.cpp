#include "shell/WindowedMode.h"
#include "shell/ApplicationShell.h"
#include "shell/CommandLine.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QTest>

#include <tuple>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// The running instance as the launch sees it: whether there is one, whether it answers,
// and what it was handed, one line a call.
class FakeInstance final : public InstanceLink {
public:
    bool running = false;
    bool answers = true;
    QStringList handed;

    InstanceClaim claim(ApplicationBusObject&) override
    {
        return running ? InstanceClaim::OtherInstanceRuns : InstanceClaim::Primary;
    }
    bool forwardDocuments(const QStringList& paths) override
    {
        handed.append(u"open "_s + paths.join(u'|'));
        return answers;
    }
    bool forwardService(const QString& name, const std::optional<Pasteboard>& pasteboard,
                        SelectionSource) override
    {
        handed.append(u"service "_s + name +
                      (pasteboard ? u" with %1 items"_s.arg(pasteboard->size())
                                  : u" reading the selection"_s));
        return answers;
    }
};

} // namespace

class WindowedModeTest : public QObject {
    Q_OBJECT

private slots:
    // What a launch does with the instance that runs, or as the instance: handed is what
    // the running instance got, done what this process did (indexer calls, alerts).
    void launch_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("running");
        QTest::addColumn<bool>("answers");
        QTest::addColumn<bool>("display");
        QTest::addColumn<int>("status");
        QTest::addColumn<QStringList>("handed");
        QTest::addColumn<QStringList>("done");
        QTest::addColumn<QString>("errors");

        const QStringList none;
        const QString silent;
        const QString noAnswer = u"tallyvox: the running instance did not answer\n"_s;
        const QString noDisplay =
            u"tallyvox: cannot open the display to show the window (--console runs without one)\n"_s;
        QTest::newRow("files to the running instance")
            << QStringList{u"a.txt"_s, u"b.txt"_s} << true << true << true << 0
            << QStringList{u"open ROOT/a.txt|ROOT/b.txt"_s} << none << silent;
        QTest::newRow("no files: brought forward")
            << none << true << true << true << 0 << QStringList{u"open "_s} << none << silent;
        QTest::newRow("the instance does not answer")
            << QStringList{u"a.txt"_s} << true << false << true << 1
            << QStringList{u"open ROOT/a.txt"_s} << none << noAnswer;
        QTest::newRow("service to the running instance")
            << QStringList{u"--service"_s, u"charCount"_s, u"--text"_s, u"abc"_s} << true << true
            << true << 0 << QStringList{u"service charCount with 1 items"_s} << none << silent;
        QTest::newRow("an empty selection is left to the instance")
            << QStringList{u"--service"_s, u"charCount"_s, u"--selection"_s} << true << true << true
            << 0 << QStringList{u"service charCount reading the selection"_s} << none << silent;
        QTest::newRow("without a display, handed over all the same")
            << QStringList{u"a.txt"_s} << true << true << false << 0
            << QStringList{u"open ROOT/a.txt"_s} << none << silent;
        QTest::newRow("without a display and no instance")
            << QStringList{u"a.txt"_s} << false << true << false << 1 << none << none << noDisplay;
        QTest::newRow("files of the first instance")
            << QStringList{u"a.txt"_s, u"b.txt"_s} << false << true << true << 0 << none
            << QStringList{u"SearchKitIndexer ROOT/a.txt"_s, u"SearchKitIndexer ROOT/b.txt"_s}
            << silent;
        QTest::newRow("service of the first instance")
            << QStringList{u"--service"_s, u"charCount"_s, u"--text"_s, u"abc"_s} << false << true
            << true << 0 << none << QStringList{u"alert Character count: 3"_s} << silent;
    }
    void launch()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, running);
        QFETCH(bool, answers);
        QFETCH(bool, display);
        QFETCH(int, status);
        QFETCH(QStringList, handed);
        QFETCH(QStringList, done);
        QFETCH(QString, errors);
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        testing::FakeIndexer indexer;
        env.writeFile(u"a.txt"_s, "one two");
        env.writeFile(u"b.txt"_s, "three");
        FakeInstance instance;
        instance.running = running;
        instance.answers = answers;
        QString errorText;
        QTextStream err(&errorText);
        QBuffer input;
        input.open(QIODevice::ReadOnly);
        QStringList did;
        const auto eventLoop = [&](ApplicationShell&) {
            // Until the launch's files or service are done (the comparisons below say what
            // was missing); the user then quits.
            std::ignore = QTest::qWaitFor(
                [&] {
                    did = indexer.calls();
                    for (const QString& alert : desktop.texts(u"alert"_s)) {
                        did.append(u"alert "_s + alert);
                    }
                    return did.size() >= done.size();
                },
                3000);
        };
        const CommandLine line = parseCommandLine(arguments, env.root());
        QCOMPARE(runWindowedMode(line, {.desktop = desktop,
                                        .instance = instance,
                                        .err = err,
                                        .input = input,
                                        .displayOpened = display,
                                        .screen = QRect(0, 0, 1440, 900),
                                        .windowMade = {},
                                        .eventLoop = eventLoop,
                                        .indexer = &indexer}),
                 status);
        QCOMPARE(instance.handed.replaceInStrings(env.root(), u"ROOT"_s), handed);
        QCOMPARE(did.replaceInStrings(env.root(), u"ROOT"_s), done);
        err.flush();
        QCOMPARE(errorText, errors);
    }
};

QTEST_MAIN(WindowedModeTest)
#include "WindowedModeTest.moc"
