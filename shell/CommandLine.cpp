#include "shell/CommandLine.h"
#include "support/FilePath.h"

#include <QCoreApplication>
#include <QDir>
#include <QUrl>

#include <optional>

namespace tallyvox {

namespace {

CommandLine failure(const QString& message)
{
    CommandLine result;
    result.error = message;
    return result;
}

QString absolutePath(const QString& argument, const QString& workingDirectory)
{
    if (argument.startsWith(QLatin1String("file:"))) {
        return pathOfFileUrl(QUrl(argument)).value_or(QString());
    }
    // Not canonical: a symbolic link keeps its own name.
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(argument));
}

// The value of "--option VALUE" or "--option=VALUE"; nothing when it is missing.
std::optional<QString> optionValue(const QStringList& arguments, qsizetype& i)
{
    const QString& argument = arguments.at(i);
    if (argument.contains(QLatin1Char('='))) {
        return argument.section(QLatin1Char('='), 1);
    }
    if (i + 1 < arguments.size()) {
        return arguments.at(++i);
    }
    return std::nullopt;
}

bool isOption(const QString& argument, const char* name)
{
    return argument == QLatin1String(name) ||
           argument.startsWith(QLatin1String(name) + QLatin1Char('='));
}

// An option without a value; false when the argument is not one.
bool takeFlag(const QString& argument, CommandLine& result, QList<ServiceSource>& sources)
{
    static constexpr std::pair<const char*, ServiceSource> sourceFlags[] = {
        {"--selection", ServiceSource::Selection},
        {"--clipboard", ServiceSource::Clipboard},
        {"--stdin", ServiceSource::Stdin},
    };
    for (const auto& [name, source] : sourceFlags) {
        if (argument == QLatin1String(name)) {
            sources.append(source);
            return true;
        }
    }
    const auto is = [&argument](const char* name) { return argument == QLatin1String(name); };
    if (is("--console")) {
        result.console = true;
    } else if (is("--install-integration")) {
        result.installIntegration = true;
    } else if (is("--help") || is("-h")) {
        result.showHelp = true;
    } else if (is("--version") || is("-v")) {
        result.showVersion = true;
    } else {
        return false;
    }
    return true;
}

// An option with a value, at i (which moves past a separate value). Nothing when the
// argument is not such an option, else the error, empty when the option was taken.
std::optional<QString> takeValueOption(const QStringList& arguments, qsizetype& i,
                                       const QString& workingDirectory, CommandLine& result,
                                       QList<ServiceSource>& sources)
{
    const QString& argument = arguments.at(i);
    if (isOption(argument, "--save-as")) {
        const std::optional<QString> path = optionValue(arguments, i);
        if (!path) {
            return QCoreApplication::translate("tallyvox::CommandLine", "--save-as needs a path");
        }
        result.saveAsPath = absolutePath(*path, workingDirectory);
    } else if (isOption(argument, "--service")) {
        const std::optional<QString> name = optionValue(arguments, i);
        if (!name || name->isEmpty()) {
            return QCoreApplication::translate("tallyvox::CommandLine",
                                               "--service needs a service name");
        }
        result.serviceName = *name;
    } else if (isOption(argument, "--text")) {
        const std::optional<QString> text = optionValue(arguments, i);
        if (!text) {
            return QCoreApplication::translate("tallyvox::CommandLine", "--text needs a text");
        }
        result.serviceText = *text;
        sources.append(ServiceSource::Text);
    } else {
        return std::nullopt;
    }
    return QString();
}

// The checks that need the whole command line.
CommandLine finish(CommandLine result, QList<ServiceSource> sources)
{
    if (!result.saveAsPath.isEmpty() && !result.console) {
        return failure(QCoreApplication::translate("tallyvox::CommandLine",
                                                   "--save-as works with --console only"));
    }
    if (result.serviceName.isEmpty()) {
        if (!sources.isEmpty()) {
            return failure(QCoreApplication::translate(
                "tallyvox::CommandLine",
                "--text, --selection, --clipboard and --stdin work with --service only"));
        }
        return result;
    }
    if (!result.files.isEmpty()) {
        sources.append(ServiceSource::Files);
    }
    if (sources.size() != 1) {
        return failure(QCoreApplication::translate(
            "tallyvox::CommandLine", "--service takes one of FILE..., --text TEXT, --selection, "
                                     "--clipboard or --stdin"));
    }
    result.serviceSource = sources.first();
    return result;
}

// The help in pieces, each translated on its own: a new option leaves the other pieces'
// translations standing. Names of options, settings, variables and files stay as they are.
constexpr const char* helpPieces[] = {
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "Usage: tallyvox [FILE...]\n"
                      "       tallyvox --service NAME (FILE... | --text TEXT | --selection | "
                      "--clipboard | --stdin)\n"
                      "       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]\n"
                      "       tallyvox --install-integration\n"
                      "\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "Turns documents into word lists. Each FILE is processed as if dropped on the\n"
        "window: its words, with their counts, are written to a text file that opens in\n"
        "the text editor. A running Tallyvox receives the files instead of a second window\n"
        "opening.\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Options:\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  --service NAME   perform a service (see below) on one source: each FILE in\n"
        "                   turn, or the TEXT of --text, the primary selection\n"
        "                   (--selection), the clipboard (--clipboard) or standard input\n"
        "                   (--stdin); a running Tallyvox performs it, else this one\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "  --text TEXT      the text for --service\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  --selection      read the primary selection (the text last selected) for --service\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  --clipboard      read the clipboard for --service\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  --stdin          read standard input for --service\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  --console        no window and no running instance: alerts are printed as lines\n"
        "                   on standard output, and files are not opened but printed as\n"
        "                   \"open PATH\"; a PATH or message holding a control character\n"
        "                   (a line break in a file name, say) is printed quoted the\n"
        "                   shell's way, as $'...'; text put on the clipboard is held until\n"
        "                   another program has fetched it, for at most 10 seconds (in a\n"
        "                   Wayland session wl-copy keeps it)\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  --save-as PATH   in console mode, the answer to any save panel (none: cancel)\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  --install-integration\n"
        "                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo\n"
        "                   for this user (under $XDG_DATA_HOME)\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "  -h, --help       show this help\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "  -v, --version    show the version\n"
                                               "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "Services (NAME is matched without regard to case):\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  tallyvox         word list of a file, or of the text\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  wordCount        number of words of a file, or of the text\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  charCount        characters of a file's words, or of the text itself\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  decodeBase64     decode Base64 text (or a file of it) and save the bytes\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  spellOutNumber   spell the text's leading number out in words, onto the clipboard\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  saveGraphicData  save the text as a graphic file (an SVG image, for one)\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "Text that is a file: URL or an absolute path of an existing file stands for that\n"
        "file.\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Settings:\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  File > Preferences writes them to Tallyvox.plist (see Files). Each is read\n"
        "  when it is used, so a change applies to the next file. Defaults in brackets.\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  QuitWhenDone      true: quit after a batch run or a service [false]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  IncludeFrequency  true: each word's count follows it [true]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  SortBy            1: alphabetically; any other number: by frequency [1]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  SeparateBy        how a count follows its word: 1 \"word (3)\", 2 a tab,\n"
                      "                    3 \"word,3\", another number: no count [1]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,\n"
        "                    5 a comma, another number: nothing [1]\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Word-list options:\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  Settings as well, each off by default; with all of them off a list is made\n"
        "  as the settings above say.\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  FoldCase          true: words that differ only in case are one entry,\n"
                      "                    written in their most frequent form [false]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,\n"
        "                    LC_COLLATE or LANG does, also words of equal count [false]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  MinimumCount      leave out words counted fewer times [1]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  StopListPath      a UTF-8 file of words to leave out, one a line; # starts\n"
        "                    a comment; ~/ and relative paths start at the home\n"
        "                    folder [none]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  CombineFiles      true: a batch of several files makes one list of all\n"
                      "                    their words, Combined/Combined word list.txt [false]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  ListFormat        0: text; 1: CSV (\"word,count\", CR LF); 2: TSV; the\n"
                      "                    list's name ends in .txt, .csv or .tsv [0]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  IncludeTotals     true: the list ends with \"# N words in the text, N listed;\n"
        "                    N distinct words, N listed; type/token ratio R\", the\n"
        "                    standardised type/token ratio over runs of 1000 words\n"
        "                    (none in a shorter text) and the mean word length in\n"
        "                    characters (and the files, the reference's words); CSV\n"
        "                    and TSV: rows after an empty row [false]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  IncludeRange      true: each word's range (files holding it), and over a\n"
        "                    combined list's files Juilland's D and Gries' DP; one\n"
        "                    file: range 1, no dispersion (\"-\", an empty cell) [false]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  IncludePerMillion true: each word's count per million words of the\n"
                      "                    text [false]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  ReferencePath     a document, a folder of documents or a CSV or TSV word\n"
        "                    list of Tallyvox's: the list becomes a keyword list\n"
        "                    against it, with the reference count, log-likelihood\n"
        "                    (G2), log ratio and + or -; ~/ and relative paths start\n"
        "                    at the home folder [none]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p < 0.01 [6.63]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  NGramLength       1 to 5: each entry is a sequence of that many words,\n"
        "                    joined by a space, never across a sentence end, a blank\n"
        "                    line or a document's paragraph, cell or slide; a stop\n"
        "                    word at either end leaves a sequence out [1]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  LemmaListPath     a UTF-8 file of lines \"headword -> form, form, ...\"; #\n"
        "                    starts a comment; each headword is one entry with its\n"
        "                    forms' counts added up and the forms found after it,\n"
        "                    \"{form N, ...}\" (CSV and TSV: a column \"forms\"); ~/\n"
        "                    and relative paths start at the home folder [none]\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  Lemmatize         true: with no LemmaListPath, forms are grouped under their\n"
        "                    stem in a Hunspell dictionary (Debian's hunspell-*\n"
        "                    packages); words it does not know stay as they are\n"
        "                    [false]\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  LemmaLanguage     the dictionary's name, as en_US [the locale's]\n"
                      "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Environment:\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  XDG_CONFIG_HOME  settings in \"Okaluna Software/Tallyvox.plist\" (~/.config)\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  XDG_DATA_HOME    word lists in \"Okaluna Software/Tallyvox/\", context-menu\n"
        "                   entries (~/.local/share)\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  TMPDIR           temporary files, also the indexers' (else\n"
        "                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared\n"
        "                   one gets a private folder of Tallyvox's own beneath it\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further\n"
        "                            before it is ended (60)\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  TALLYVOX_JOBS    files read at once, at most one a processor core (one a\n"
                      "                   core)\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  LANG, LC_ALL     the language of spelled-out numbers and of counts\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)\n"
                      "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Files:\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings\n"
                      "  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists\n"
                      "  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several\n"
                      "                                                      files\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a\n"
        "                                                      service, kept for a day\n"
        "\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "Exit status:\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine",
                      "  0  success, or the request was handed to the running Tallyvox\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  1  a file could not be processed, its word list or a decoded or graphic file\n"
        "     not written (console mode),\n"
        "     the display could not be opened for the window, or to read --selection or\n"
        "     --clipboard (console mode), the running Tallyvox did not answer, or the\n"
        "     context-menu entries could not be installed\n"),
    QT_TRANSLATE_NOOP("tallyvox::CommandLine", "  2  the command line could not be understood\n"),
    QT_TRANSLATE_NOOP(
        "tallyvox::CommandLine",
        "  3  a word list is empty because its file could not be read, is locked by a\n"
        "     password or is not a document Tallyvox reads (console mode)\n"),
};

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& workingDirectory)
{
    CommandLine result;
    bool optionsEnded = false;
    QList<ServiceSource> sources;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (optionsEnded || !argument.startsWith(QLatin1Char('-')) ||
            argument == QLatin1String("-")) {
            result.files.append(absolutePath(argument, workingDirectory));
        } else if (argument == QLatin1String("--")) {
            optionsEnded = true;
        } else if (const std::optional<QString> error =
                       takeValueOption(arguments, i, workingDirectory, result, sources)) {
            if (!error->isEmpty()) {
                return failure(*error);
            }
        } else if (!takeFlag(argument, result, sources)) {
            return failure(QCoreApplication::translate("tallyvox::CommandLine", "unknown option %1")
                               .arg(argument));
        }
    }
    return finish(std::move(result), std::move(sources));
}

QString commandLineHelp()
{
    QString help;
    for (const char* piece : helpPieces) {
        help += QCoreApplication::translate("tallyvox::CommandLine", piece);
    }
    return help;
}

QString versionText()
{
    return QStringLiteral("Tallyvox %1\n").arg(QLatin1String(TALLYVOX_VERSION));
}

} // namespace tallyvox
