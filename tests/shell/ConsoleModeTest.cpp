#include "shell/CommandLine.h"
#include "shell/ConsoleDesktop.h"
#include "shell/DesktopFactory.h"
#include "shell/SelectionItems.h"
#include "tests/common/TestEnvironment.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QTest>

using namespace tallyvox;

namespace {

const QString program = QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox");

struct Run {
    int exitCode = -1;
    QStringList lines;
    QString errors;
};

// The real program in the test's sandbox (the environment is inherited).
Run runTallyvox(const QStringList& arguments, const QString& directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start(program, arguments);
    Run run;
    if (!process.waitForFinished(30000))
        return run;
    run.exitCode = process.exitCode();
    run.lines = QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    run.errors = QString::fromUtf8(process.readAllStandardError());
    return run;
}

} // namespace

class ConsoleModeTest : public QObject {
    Q_OBJECT

private slots:
    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("console");
        QTest::addColumn<QString>("saveAs");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<bool>("failed");
        const QStringList none;
        QTest::newRow("files") << QStringList{QStringLiteral("a.txt"), QStringLiteral("/x/../b")}
                               << false << QString()
                               << QStringList{QStringLiteral("/work/a.txt"), QStringLiteral("/b")}
                               << false;
        QTest::newRow("console save-as")
            << QStringList{QStringLiteral("--console"), QStringLiteral("--save-as"),
                           QStringLiteral("out.png"), QStringLiteral("c")}
            << true << QStringLiteral("/work/out.png") << QStringList{QStringLiteral("/work/c")}
            << false;
        QTest::newRow("save-as=") << QStringList{QStringLiteral("--console"),
                                                 QStringLiteral("--save-as=/tmp/o")}
                                  << true << QStringLiteral("/tmp/o") << none << false;
        QTest::newRow("file URI") << QStringList{QStringLiteral("file:///tmp/a%20b")} << false
                                  << QString() << QStringList{QStringLiteral("/tmp/a b")} << false;
        QTest::newRow("dash file after --")
            << QStringList{QStringLiteral("--"), QStringLiteral("--console")} << false << QString()
            << QStringList{QStringLiteral("/work/--console")} << false;
        QTest::newRow("save-as needs console")
            << QStringList{QStringLiteral("--save-as"), QStringLiteral("x")} << false << QString()
            << none << true;
        QTest::newRow("save-as needs a path")
            << QStringList{QStringLiteral("--console"), QStringLiteral("--save-as")} << false
            << QString() << none << true;
        QTest::newRow("unknown option")
            << QStringList{QStringLiteral("--frobnicate")} << false << QString() << none << true;
    }
    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, console);
        QFETCH(QString, saveAs);
        QFETCH(QStringList, files);
        QFETCH(bool, failed);
        const CommandLine line = parseCommandLine(arguments, QStringLiteral("/work"));
        QCOMPARE(!line.error.isEmpty(), failed);
        QCOMPARE(line.console, console);
        QCOMPARE(line.saveAsPath, saveAs);
        QCOMPARE(line.files, files);
    }

    void consoleDesktopPrintsWhatItIsAsked()
    {
        QString out, err;
        QTextStream outStream(&out), errStream(&err);
        const auto desktop = makeDesktop(
            {DesktopChoice::Kind::Console, &outStream, &errStream, QStringLiteral("/tmp/x.png")});
        desktop->alert(QStringLiteral("There are 3 words"));
        desktop->stopAlert(QStringLiteral("Stop."), QStringLiteral("Not shown."));
        desktop->openInTextEditor(QStringLiteral("/a b.txt"));
        QVERIFY(desktop->openUrl(QUrl(QStringLiteral("https://okaluna.example/a b"))));
        QCOMPARE(desktop->chooseSavePath(QStringLiteral("proposed")), QStringLiteral("/tmp/x.png"));
        QVERIFY(desktop->chooseFilesToOpen(QStringLiteral("prompt")).isEmpty());
        QCOMPARE(out, QStringLiteral("There are 3 words\nStop.\nopen /a b.txt\n"
                                     "open https://okaluna.example/a%20b\n"));
        QVERIFY(err.contains(QStringLiteral("not available")));
    }

    void clipboardAndSelectionItems()
    {
        QString out, err;
        QTextStream outStream(&out), errStream(&err);
        ConsoleDesktop desktop(outStream, errStream, {});
        desktop.setClipboardText(QStringLiteral("zwölf"));
        const QMimeData* written = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(written->data(QStringLiteral("text/plain;charset=utf-8")),
                 QStringLiteral("zwölf").toUtf8());
        QCOMPARE(written->data(QStringLiteral("text/plain")), QStringLiteral("zwölf").toUtf8());

        const QList<PasteboardItem> text = desktop.readSelection(SelectionSource::Clipboard);
        QCOMPARE(text.size(), 1);
        QVERIFY(text.first().contains(
            {QStringLiteral("text/plain;charset=utf-8"), QStringLiteral("zwölf").toUtf8()}));

        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(QStringLiteral("/a b")),
                       QUrl::fromLocalFile(QStringLiteral("/c"))});
        const QList<PasteboardItem> uris = itemsFromMimeData(files);
        QCOMPARE(uris.size(), 2);
        QCOMPARE(uris.at(0), (PasteboardItem{{QStringLiteral("text/uri-list"), "file:///a%20b"}}));

        QMimeData gnome;
        gnome.setData(QStringLiteral("x-special/gnome-copied-files"), "cut\nfile:///x\nfile:///y");
        const QList<PasteboardItem> cut = itemsFromMimeData(gnome);
        QCOMPARE(cut.size(), 2);
        QCOMPARE(cut.at(1), (PasteboardItem{{QStringLiteral("text/uri-list"), "file:///y"}}));
        QVERIFY(itemsFromMimeData(QMimeData()).isEmpty());
    }

    void realProgramHelpAndVersion()
    {
        const Run help = runTallyvox({QStringLiteral("--help")}, QDir::tempPath());
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.lines.first().startsWith(QStringLiteral("Usage: tallyvox")));
        const Run version = runTallyvox({QStringLiteral("--version")}, QDir::tempPath());
        QCOMPARE(version.lines, QStringList{QStringLiteral("Tallyvox " TALLYVOX_VERSION)});
        QCOMPARE(runTallyvox({QStringLiteral("--bogus")}, QDir::tempPath()).exitCode, 2);
    }

    void realProgramRunsTheBatchWithoutAWindow()
    {
        testing::TestEnvironment env;
        QDir().mkpath(env.root() + QStringLiteral("/folder"));
        const Run run = runTallyvox(
            {QStringLiteral("--console"), QStringLiteral("folder"), QStringLiteral("missing.txt")},
            env.root());
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.lines,
                 (QStringList{QStringLiteral("An error occurred while launching \"folder\"   "
                                             "(Error code: -43)"),
                              QStringLiteral("One or more items you dropped on Tallyvox was not a "
                                             "file.")}));
    }

    void realProgramExtractsWordsAndHandsOverTheList()
    {
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer")))
            QSKIP("the indexers are not built");
        testing::TestEnvironment env;
        env.writeFile(QStringLiteral("notes.txt"), "the cat and the hat\n");
        const Run run =
            runTallyvox({QStringLiteral("--console"), QStringLiteral("notes.txt")}, env.root());
        QCOMPARE(run.exitCode, 0);
        const QString list =
            env.dataHome() + QStringLiteral("/Okaluna Software/Tallyvox/notes.txt.txt");
        QCOMPARE(run.lines, QStringList{QStringLiteral("open ") + list});
        QFile file(list);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("and (1)\n"));
    }
};

QTEST_MAIN(ConsoleModeTest)
#include "ConsoleModeTest.moc"
