#include "shell/ConsoleMode.h"
#include "prefs/PreferenceStore.h"
#include "shell/CommandLine.h"
#include "shell/ConsoleDesktop.h"
#include "shell/SelectionItems.h"
#include "support/FilePath.h"
#include "tests/common/FakeIndexer.h"
#include "tests/common/TestEnvironment.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QMimeData>
#include <QProcess>
#include <QTest>

#include <fcntl.h>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

struct Run {
    int exitCode = -1;
    QStringList lines;
    QString errors;
    qint64 milliseconds = 0;
};

// The real program in the test's sandbox (the environment is inherited, with changes:
// an empty value removes the variable).
Run runTallyvox(const QStringList& arguments, const QString& directory,
                const QMap<QString, QString>& changes = {}, const QString& input = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        if (change.value().isEmpty()) {
            environment.remove(change.key());
        } else {
            environment.insert(change.key(), change.value());
        }
    }
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(directory);
    if (!input.isEmpty()) {
        process.setStandardInputFile(input);
    }
    QElapsedTimer clock;
    clock.start();
    process.start(QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox"), arguments);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(),
            QString::fromUtf8(process.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts),
            QString::fromUtf8(process.readAllStandardError()), clock.elapsed()};
}

// The fields of a parse that are set, as one line.
QString describe(const CommandLine& line)
{
    static const char* const sources[] = {"", "files", "text", "selection", "clipboard", "stdin"};
    QStringList parts;
    if (line.console) {
        parts.append(u"console"_s);
    }
    if (!line.saveAsPath.isEmpty()) {
        parts.append(u"save-as "_s + line.saveAsPath);
    }
    if (!line.serviceName.isEmpty() || line.serviceSource != ServiceSource::None) {
        parts.append(u"service %1 from %2"_s.arg(line.serviceName,
                                                 QLatin1String(sources[int(line.serviceSource)])));
    }
    if (!line.serviceText.isEmpty()) {
        parts.append(u"text "_s + line.serviceText);
    }
    if (!line.files.isEmpty()) {
        parts.append(u"files "_s + line.files.join(u'|'));
    }
    if (!line.error.isEmpty()) {
        parts.append(u"error: "_s + line.error);
    }
    return parts.join(u", "_s);
}

} // namespace

class ConsoleModeTest : public QObject {
    Q_OBJECT

private slots:
    // Console mode in this process, its streams and its indexer the test's: what it prints
    // and its exit status, as --help describes them. "@" in a line stands for the output
    // folder; a file named "fails" is one that neither indexer can read.
    void consoleModeInProcess_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<QStringList>("out");
        QTest::addColumn<int>("status");
        QTest::newRow("two files listed in order")
            << u"b.txt a.txt"_s << QByteArray()
            << QStringList{u"open @/b.txt.txt"_s, u"open @/a.txt.txt"_s} << 0;
        QTest::newRow("a folder and a missing file")
            << u"folder missing.txt"_s << QByteArray()
            << QStringList{u"An error occurred while launching \"folder\"   (Error code: -43)"_s,
                           u"One or more items you dropped on Tallyvox was not a file."_s}
            << 1;
        QTest::newRow("files no indexer reads, beside one it does")
            << u"fails a.txt fails2"_s << QByteArray()
            << QStringList{u"open @/a.txt.txt"_s,
                           u"Some word lists are empty or incomplete: \"fails\" (the file could "
                           u"not be read); \"fails2\" (the file could not be read)."_s}
            << 1;
        // A list empty because the file is empty is the truth, not a failure; one empty
        // because the document is locked is.
        QTest::newRow("an empty file")
            << u"empty a.txt"_s << QByteArray()
            << QStringList{u"open @/a.txt.txt"_s, u"The word list of \"empty\" is empty: the "
                                                  u"file is empty."_s}
            << 0;
        QTest::newRow("a password-protected document")
            << u"locked.pdf a.txt"_s << QByteArray()
            << QStringList{u"open @/a.txt.txt"_s,
                           u"The word list of \"locked.pdf\" is empty: the document is "
                           u"password-protected."_s}
            << wordsLostStatus;
        QTest::newRow("a list cut at a limit")
            << u"cut a.txt"_s << QByteArray()
            << QStringList{u"open @/cut.txt"_s, u"open @/a.txt.txt"_s,
                           u"The word list of \"cut\" is incomplete: it was cut at a limit "
                           u"(zip: entries beyond the first 10000 were left out)."_s}
            << 0;
        QTest::newRow("character count of text")
            << u"--service charCount --text hello"_s << QByteArray()
            << QStringList{u"Character count: 5"_s} << 0;
        QTest::newRow("word count of a file") << u"--service wordCount a.txt"_s << QByteArray()
                                              << QStringList{u"Word count: 3"_s} << 0;
        QTest::newRow("word count of a file no indexer reads")
            << u"--service wordCount fails"_s << QByteArray()
            << QStringList{u"Word count: 0"_s, u"Tallyvox could not read \"fails\"."_s} << 1;
        QTest::newRow("word list of standard input")
            << u"--service tallyvox --stdin"_s << QByteArray("b a b")
            << QStringList{u"open @/TallyvoxData.txt.txt"_s} << 0;
    }
    void consoleModeInProcess()
    {
        QFETCH(QString, arguments);
        QFETCH(QByteArray, input);
        QFETCH(QStringList, out);
        QFETCH(int, status);
        testing::TestEnvironment env;
        env.writeFile(u"a.txt"_s, "one two two");
        env.writeFile(u"b.txt"_s, "three");
        QDir().mkpath(env.root() + u"/folder"_s);
        env.writeFile(u"empty"_s, "");
        testing::FakeIndexer indexer;
        // As poppler leaves it: no text without the password.
        indexer.script(
            env.writeFile(u"locked.pdf"_s, "%PDF-1.6\ntrailer << /Encrypt 3 0 R >>\n%%EOF\n"),
            {WordTable{}, IndexerEnding::Complete, {}, {}});
        const QString cut = env.writeFile(u"cut"_s, "cut short");
        indexer.script(cut, {WordTable{{u"cut"_s, 1}}, IndexerEnding::Partial, {}, {}});
        indexer.scriptCutReasons(cut, u"zip: entries beyond the first 10000 were left out"_s);
        for (const QString& name : {u"fails"_s, u"fails2"_s}) {
            env.writeFile(name, "unread");
            for (const char* executable : {"SearchKitIndexer", "SearchKitIndexer32"}) {
                indexer.script(env.root() + u'/' + name,
                               {std::nullopt, IndexerEnding::Failed, {}, {}},
                               QString::fromLatin1(executable));
            }
        }
        const CommandLine line =
            parseCommandLine(QStringList{u"--console"_s} + arguments.split(u' '), env.root());
        QVERIFY(line.error.isEmpty());
        QString printed;
        QString complaints;
        QTextStream outStream(&printed);
        QTextStream errStream(&complaints);
        QBuffer inputDevice(&input);
        QVERIFY(inputDevice.open(QIODevice::ReadOnly));
        QCOMPARE(runConsoleMode(line, {outStream, errStream, inputDevice}, &indexer), status);
        outStream.flush();
        const QString folder = env.dataHome() + u"/Okaluna Software/Tallyvox"_s;
        QCOMPARE(printed.split(u'\n', Qt::SkipEmptyParts),
                 QStringList(out).replaceInStrings(u"@"_s, folder));
    }

    void commandLine_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QString>("parsed");
        QTest::newRow("files") << u"a.txt /x/../b"_s << u"files /work/a.txt|/b"_s;
        QTest::newRow("console save-as") << u"--console --save-as out.png c"_s
                                         << u"console, save-as /work/out.png, files /work/c"_s;
        QTest::newRow("file URI") << u"file:///tmp/a%20b"_s << u"files /tmp/a b"_s;
        QTest::newRow("save-as needs console")
            << u"--save-as x"_s << u"error: --save-as works with --console only"_s;
        QTest::newRow("save-as needs a path")
            << u"--console --save-as"_s << u"error: --save-as needs a path"_s;
        QTest::newRow("unknown option")
            << u"--frobnicate"_s << u"error: unknown option --frobnicate"_s;

        // A service takes exactly one source.
        QTest::newRow("service text")
            << u"--service charCount --text -5"_s << u"service charCount from text, text -5"_s;
        QTest::newRow("service files after --")
            << u"--console --service=tallyvox -- --a b"_s
            << u"console, service tallyvox from files, files /work/--a|/work/b"_s;
        const QString oneSource = u"error: --service takes one of FILE..., --text TEXT, "
                                  u"--selection, --clipboard or --stdin"_s;
        QTest::newRow("two sources") << u"--service x --stdin a"_s << oneSource;
        QTest::newRow("no source") << u"--service x"_s << oneSource;
        QTest::newRow("source without service")
            << u"--selection"_s
            << u"error: --text, --selection, --clipboard and --stdin work with --service only"_s;
    }
    void commandLine()
    {
        QFETCH(QString, arguments);
        QFETCH(QString, parsed);
        QCOMPARE(describe(parseCommandLine(arguments.split(u' '), u"/work"_s)), parsed);
    }

    // Copied files become one item each, also as the file manager's cut list.
    void selectionItemsFromMimeData()
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(u"/a b"_s), QUrl::fromLocalFile(u"/c"_s)});
        const QList<PasteboardItem> uris = itemsFromMimeData(files);
        QCOMPARE(uris.size(), 2);
        QCOMPARE(uris.at(0), (PasteboardItem{{u"text/uri-list"_s, "file:///a%20b"}}));
        QMimeData gnome;
        gnome.setData(u"x-special/gnome-copied-files"_s, "cut\nfile:///x\nfile:///y");
        const QList<PasteboardItem> cut = itemsFromMimeData(gnome);
        QCOMPARE(cut.size(), 2);
        QCOMPARE(cut.at(1), (PasteboardItem{{u"text/uri-list"_s, "file:///y"}}));
        QVERIFY(itemsFromMimeData(QMimeData()).isEmpty());
    }

    // One line whatever the text holds, and one that the shell reads back as the text.
    void consoleLines_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("printed");
        const auto plain = [](const char* name, const QString& text) {
            QTest::newRow(name) << text << text;
        };
        plain("plain path", u"/home/me/Report.pdf.txt"_s);
        plain("blanks and an apostrophe", u"/tmp/Bob's notes .txt"_s);
        plain("backslash", u"/tmp/a\\nb"_s);
        plain("dollar inside", u"/tmp/$'x'"_s);
        plain("not ASCII", u"/tmp/h\u00e9llo \u65e5\u672c.txt"_s);
        QTest::newRow("line break") << u"/tmp/two\nlines.txt"_s << u"$'/tmp/two\\nlines.txt'"_s;
        QTest::newRow("tab, return, apostrophe, backslash")
            << u"it's\t\r\\"_s << u"$'it\\'s\\t\\r\\\\'"_s;
        QTest::newRow("other controls") << u"a\x1b[0m\x7f"_s << u"$'a\\x1b[0m\\x7f'"_s;
        QTest::newRow("C1 control") << u"a\u0085b"_s << u"$'a\\u0085b'"_s;
        QTest::newRow("line separators") << u"a\u2028b\u2029"_s << u"$'a\\u2028b\\u2029'"_s;
        // Would read as a quoted name otherwise.
        QTest::newRow("begins like a quote") << u"$'x'"_s << u"$'$\\'x\\''"_s;
    }
    void consoleLines()
    {
        QFETCH(QString, text);
        QFETCH(QString, printed);
        QCOMPARE(consoleText(text), printed);
        if (printed != text) {
            QProcess bash;
            bash.start(u"bash"_s, {u"-c"_s, u"printf %s "_s + printed});
            QVERIFY(bash.waitForFinished(5000));
            QCOMPARE(QString::fromUtf8(bash.readAllStandardOutput()), text);
        }
    }

    void realProgramHelpAndVersion()
    {
        const Run help = runTallyvox({u"--help"_s}, QDir::tempPath());
        QCOMPARE(help.exitCode, 0);
        QVERIFY(help.lines.first().startsWith(u"Usage: tallyvox"_s));
        // The settings file's keys, so that the manual page lists them too.
        for (const char* key :
             {"FoldCase", "DictionaryOrder", "MinimumCount", "StopListPath", "CombineFiles",
              "ListFormat", "IncludeTotals", "IncludeRange", "IncludePerMillion", "ReferencePath",
              "KeynessThreshold", "NGramLength", "LemmaListPath", "Lemmatize", "LemmaLanguage"}) {
            QVERIFY2(help.lines.join(u'\n').contains(QLatin1String(key)), key);
        }
        QCOMPARE(runTallyvox({u"--version"_s}, QDir::tempPath()).lines,
                 QStringList{QStringLiteral("Tallyvox " TALLYVOX_VERSION)});
        QCOMPARE(runTallyvox({u"--bogus"_s}, QDir::tempPath()).exitCode, 2);
    }

    // A file that no indexer could read (its path is longer than the indexers take) keeps
    // the usual outcome, an empty list or a count of 0, but the exit status says that
    // it could not be processed; the files beside it are listed as usual.
    void realProgramSaysWhenAFileCouldNotBeProcessed_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QStringList>("lines");
        const QString deep = u"d/"_s.repeated(130) + u"deep.txt"_s;
        QTest::newRow("word list")
            << QStringList{u"--console"_s, u"ok.txt"_s, deep}
            << QStringList{u"ok.txt.txt"_s, u"The word list of \"deep.txt\" is empty: its path "
                                            u"is longer than Tallyvox can read (254 bytes)."_s};
        QTest::newRow("word count")
            << QStringList{u"--console"_s, u"--service"_s, u"wordCount"_s, deep}
            << QStringList{u"Word count: 0"_s, u"Tallyvox could not read \"deep.txt\"."_s};
    }
    void realProgramSaysWhenAFileCouldNotBeProcessed()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QStringList, lines);
        testing::TestEnvironment env;
        env.writeFile(u"ok.txt"_s, "fine words\n");
        env.writeFile(arguments.last(), "never read\n");
        const Run run = runTallyvox(arguments, env.root());
        QCOMPARE(run.exitCode, 1);
        QStringList shown;
        for (const QString& line : run.lines) {
            shown.append(line.section(u'/', -1));
        }
        QCOMPARE(shown, lines);
    }

    void realProgramExtractsWordsAndHandsOverTheList_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("quote");
        QTest::newRow("plain name") << u"notes.txt"_s << QString();
        QTest::newRow("line break in the name") << u"notes\nof May.txt"_s << u"'"_s;
    }
    void realProgramExtractsWordsAndHandsOverTheList()
    {
        QFETCH(QString, name);
        QFETCH(QString, quote);
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"))) {
            QSKIP("the indexers are not built");
        }
        testing::TestEnvironment env;
        env.writeFile(name, "the cat and the hat\n");
        const Run run = runTallyvox({u"--console"_s, name}, env.root());
        QCOMPARE(run.exitCode, 0);
        const QString list = env.dataHome() + u"/Okaluna Software/Tallyvox/"_s + name + u".txt"_s;
        const QString printed =
            quote.isEmpty() ? list : u"$'"_s + QString(list).replace(u'\n', u"\\n"_s) + quote;
        QCOMPARE(run.lines, QStringList{u"open "_s + printed});
        QFile file(list);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("and (1)\n"));
    }

    // Standard input is listed as its bytes are as a file, whether it is short enough to be
    // taken as text or long enough to be copied to the temporary file as it comes.
    void realProgramListsStandardInputAsTheFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("short UTF-8") << QByteArray("the cat and the caf\xc3\xa9\n");
        QByteArray latin1; // no UTF-8: each \xe9 alone
        for (int i = 0; latin1.size() < (3 << 20); ++i) {
            latin1 += "caf\xe9 w" + QByteArray::number(i % 7919) + " the\n";
        }
        QTest::newRow("3 MB of Latin-1") << latin1;
    }
    void realProgramListsStandardInputAsTheFile()
    {
        QFETCH(QByteArray, content);
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"))) {
            QSKIP("the indexers are not built");
        }
        testing::TestEnvironment env;
        const QString input = env.writeFile(u"input.txt"_s, content);
        QCOMPARE(runTallyvox({u"--console"_s, u"input.txt"_s}, env.root()).exitCode, 0);
        const QString lists = env.dataHome() + u"/Okaluna Software/Tallyvox/"_s;
        QFile ofFile(lists + u"input.txt.txt"_s);
        QVERIFY(ofFile.open(QIODevice::ReadOnly));

        const Run run = runTallyvox({u"--console"_s, u"--service"_s, u"tallyvox"_s, u"--stdin"_s},
                                    env.root(), {}, input);
        QCOMPARE(run.exitCode, 0);
        QFile ofInput(lists + u"TallyvoxData.txt.txt"_s);
        QVERIFY(ofInput.open(QIODevice::ReadOnly));
        const QByteArray list = ofInput.readAll();
        QVERIFY(list.contains("the ("));
        QCOMPARE(list, ofFile.readAll());
    }

    // The console's batch reads the word-list options as the window's does.
    void realProgramCombinesTheBatch_data()
    {
        QTest::addColumn<QString>("files");
        QTest::addColumn<QString>("stopList");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QByteArray>("list");
        const QString lists = u"open ROOT/data/Okaluna Software/Tallyvox/"_s;
        QTest::newRow("two files and a folder")
            << u"a.txt folder b.txt"_s << QString()
            << QStringList{lists + u"Combined/Combined word list.csv"_s,
                           u"One or more items you dropped on Tallyvox was not a file."_s}
            << "word,count\r\n\"3,000\",1\r\ncat,3\r\nhat,1\r\nthe,3\r\n"_ba;
        QTest::newRow("one file is its own list")
            << u"b.txt"_s << QString() << QStringList{lists + u"b.txt.csv"_s}
            << "word,count\r\nCAT,2\r\nthe,1\r\n"_ba;
        QTest::newRow("a missing stop list, said once")
            << u"a.txt b.txt"_s << u"ROOT/none"_s
            << QStringList{u"The stop list \"ROOT/none\" cannot be read, so the word lists are "
                           u"made without it."_s,
                           lists + u"Combined/Combined word list.csv"_s}
            << "word,count\r\n\"3,000\",1\r\ncat,3\r\nhat,1\r\nthe,3\r\n"_ba;
    }
    void realProgramCombinesTheBatch()
    {
        QFETCH(QString, files);
        QFETCH(QString, stopList);
        QFETCH(QStringList, lines);
        QFETCH(QByteArray, list);
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"))) {
            QSKIP("the indexers are not built");
        }
        testing::TestEnvironment env;
        env.writeFile(u"a.txt"_s, "The hat, the cat 3,000\n");
        env.writeFile(u"b.txt"_s, "the cat CAT\n");
        QDir().mkpath(env.root() + u"/folder"_s);
        PreferenceStore store;
        store.writeBool(prefs::CombineFiles, true);
        store.writeBool(prefs::FoldCase, true);
        store.writeInteger(prefs::ListFormat, static_cast<qint32>(ListFormat::Csv));
        store.writeString(prefs::StopListPath, QString(stopList).replace(u"ROOT"_s, env.root()));

        const Run run = runTallyvox(u"--console "_s.append(files).split(u' '), env.root());
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.lines, lines.replaceInStrings(u"ROOT"_s, env.root()));
        QFile written(run.lines.filter(u"open "_s).first().mid(5));
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), list);
    }

    // A name that is not UTF-8, from the command line through the indexer to the list.
    void realProgramKeepsTheBytesOfAFileName()
    {
        if (!QFile::exists(QStringLiteral(TALLYVOX_BUILD_LIBEXEC_DIR "/SearchKitIndexer"))) {
            QSKIP("the indexers are not built");
        }
        testing::TestEnvironment env;
        const QByteArray input = encodePath(env.root()) + "/bad\xffname.txt";
        const QByteArray list =
            encodePath(env.dataHome()) + "/Okaluna Software/Tallyvox/bad\xffname.txt.txt";
        QFile in;
        const int fd = ::open(input.constData(), O_WRONLY | O_CREAT | O_EXCL, 0600);
        QVERIFY(fd >= 0 && in.open(fd, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle));
        in.write("the cat and the hat\n");
        in.close();
        // QProcess would pass the name as text; the shell passes its bytes.
        QProcess shell;
        shell.setWorkingDirectory(env.root());
        shell.start(u"/bin/sh"_s,
                    {u"-c"_s, u"exec \"$0\" --console \"$(printf 'bad\\377name.txt')\""_s,
                     QStringLiteral(TALLYVOX_BUILD_BIN_DIR "/tallyvox")});
        QVERIFY(shell.waitForFinished(30000));
        QCOMPARE(shell.exitCode(), 0);
        QFile out;
        const int listFd = ::open(list.constData(), O_RDONLY);
        QVERIFY(listFd >= 0 && out.open(listFd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
        QCOMPARE(out.readAll(), "and (1)\ncat (1)\nhat (1)\nthe (2)\n"_ba);
        // Qt cannot remove these with the sandbox.
        ::unlink(input.constData());
        ::unlink(list.constData());
    }

    // A display that cannot be opened is reported, never the end of the process; only
    // what needs the selection fails for it.
    void realProgramWithoutItsDisplay_data()
    {
        QTest::addColumn<QString>("display");
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("error");
        const QString noSelection = u"so there is no selection to read"_s;
        const QString leftAlone = u"the clipboard is left as it is"_s;
        for (const QString& display : {QString(), u":97"_s}) {
            const QByteArray none = display.isEmpty() ? "no display, " : "unreachable display, ";
            QTest::newRow(none + "selection")
                << display << u"--service charCount --selection"_s << 1 << QString() << noSelection;
            QTest::newRow(none + "spelled out")
                << display << u"--service spellOutNumber --text 7"_s << 0
                << u"has been put on the clipboard: seven"_s << leftAlone;
            QTest::newRow(none + "text") << display << u"--service charCount --text abc"_s << 0
                                         << u"Character count: 3"_s << QString();
            QTest::newRow(none + "batch")
                << display << u"folder"_s << 0 << u"One or more items you dropped"_s << QString();
        }
    }
    void realProgramWithoutItsDisplay()
    {
        QFETCH(QString, display);
        QFETCH(QString, arguments);
        QFETCH(int, exitCode);
        QFETCH(QString, output);
        QFETCH(QString, error);
        testing::TestEnvironment env;
        QDir().mkpath(env.root() + u"/folder"_s);
        const Run run = runTallyvox(u"--console "_s.append(arguments).split(u' '), env.root(),
                                    {{u"QT_QPA_PLATFORM"_s, u"xcb"_s},
                                     {u"DISPLAY"_s, display},
                                     {u"WAYLAND_DISPLAY"_s, QString()}});
        QCOMPARE(run.exitCode, exitCode);
        QCOMPARE(run.lines.join(u'\n').contains(output), true);
        QVERIFY2(run.lines.isEmpty() == output.isEmpty(), qPrintable(run.lines.join(u'\n')));
        if (error.isEmpty()) {
            QVERIFY2(!run.errors.contains(u"tallyvox:"_s), qPrintable(run.errors));
        } else {
            QVERIFY2(run.errors.contains(u"tallyvox: cannot open the display"_s) &&
                         run.errors.contains(error),
                     qPrintable(run.errors));
        }
        // Nothing to hold where no clipboard was reached.
        QVERIFY(run.milliseconds < 8000);
    }
};

QTEST_GUILESS_MAIN(ConsoleModeTest)
#include "ConsoleModeTest.moc"
