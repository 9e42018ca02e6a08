#include "shell/CommandLine.h"
#include "support/FilePath.h"

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
            return QStringLiteral("--save-as needs a path");
        }
        result.saveAsPath = absolutePath(*path, workingDirectory);
    } else if (isOption(argument, "--service")) {
        const std::optional<QString> name = optionValue(arguments, i);
        if (!name || name->isEmpty()) {
            return QStringLiteral("--service needs a service name");
        }
        result.serviceName = *name;
    } else if (isOption(argument, "--text")) {
        const std::optional<QString> text = optionValue(arguments, i);
        if (!text) {
            return QStringLiteral("--text needs a text");
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
        return failure(QStringLiteral("--save-as works with --console only"));
    }
    if (result.serviceName.isEmpty()) {
        if (!sources.isEmpty()) {
            return failure(QStringLiteral(
                "--text, --selection, --clipboard and --stdin work with --service only"));
        }
        return result;
    }
    if (!result.files.isEmpty()) {
        sources.append(ServiceSource::Files);
    }
    if (sources.size() != 1) {
        return failure(QStringLiteral("--service takes one of FILE..., --text TEXT, --selection, "
                                      "--clipboard or --stdin"));
    }
    result.serviceSource = sources.first();
    return result;
}

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
            return failure(QStringLiteral("unknown option %1").arg(argument));
        }
    }
    return finish(std::move(result), std::move(sources));
}

QString commandLineHelp()
{
    return QStringLiteral(
        "Usage: tallyvox [FILE...]\n"
        "       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard "
        "| --stdin)\n"
        "       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]\n"
        "       tallyvox --install-integration\n"
        "\n"
        "Turns documents into word lists. Each FILE is processed as if dropped on the\n"
        "window: its words, with their counts, are written to a text file that opens in\n"
        "the text editor. A running Tallyvox receives the files instead of a second window\n"
        "opening.\n"
        "\n"
        "Options:\n"
        "  --service NAME   perform a service (see below) on one source: each FILE in\n"
        "                   turn, or the TEXT of --text, the primary selection\n"
        "                   (--selection), the clipboard (--clipboard) or standard input\n"
        "                   (--stdin); a running Tallyvox performs it, else this one\n"
        "  --text TEXT      the text for --service\n"
        "  --selection      read the primary selection (the text last selected) for --service\n"
        "  --clipboard      read the clipboard for --service\n"
        "  --stdin          read standard input for --service\n"
        "  --console        no window and no running instance: alerts are printed as lines\n"
        "                   on standard output, and files are not opened but printed as\n"
        "                   \"open PATH\"; a PATH or message holding a control character\n"
        "                   (a line break in a file name, say) is printed quoted the\n"
        "                   shell's way, as $'...'; text put on the clipboard is held until\n"
        "                   another program has fetched it, for at most 10 seconds (in a\n"
        "                   Wayland session wl-copy keeps it)\n"
        "  --save-as PATH   in console mode, the answer to any save panel (none: cancel)\n"
        "  --install-integration\n"
        "                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo\n"
        "                   for this user (under $XDG_DATA_HOME)\n"
        "  -h, --help       show this help\n"
        "  -v, --version    show the version\n"
        "\n"
        "Services (NAME is matched without regard to case):\n"
        "  tallyvox         word list of a file, or of the text\n"
        "  wordCount        number of words of a file, or of the text\n"
        "  charCount        characters of a file's words, or of the text itself\n"
        "  decodeBase64     decode Base64 text (or a file of it) and save the bytes\n"
        "  spellOutNumber   spell the text's leading number out in words, onto the clipboard\n"
        "  saveGraphicData  save the text as a graphic file (an SVG image, for one)\n"
        "Text that is a file: URL or an absolute path of an existing file stands for that\n"
        "file.\n"
        "\n"
        "Settings:\n"
        "  File > Preferences writes them to Tallyvox.plist (see Files). Each is read\n"
        "  when it is used, so a change applies to the next file. Defaults in brackets.\n"
        "\n"
        "  QuitWhenDone      true: quit after a batch run or a service [false]\n"
        "  IncludeFrequency  true: each word's count follows it [true]\n"
        "  SortBy            1: alphabetically; any other number: by frequency [1]\n"
        "  SeparateBy        how a count follows its word: 1 \"word (3)\", 2 a tab,\n"
        "                    3 \"word,3\", another number: no count [1]\n"
        "  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,\n"
        "                    5 a comma, another number: nothing [1]\n"
        "\n"
        "Word-list options:\n"
        "  Settings as well, each off by default; with all of them off a list is made\n"
        "  as the settings above say.\n"
        "\n"
        "  FoldCase          true: words that differ only in case are one entry,\n"
        "                    written in their most frequent form [false]\n"
        "  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,\n"
        "                    LC_COLLATE or LANG does, also words of equal count [false]\n"
        "  MinimumCount      leave out words counted fewer times [1]\n"
        "  StopListPath      a UTF-8 file of words to leave out, one a line; # starts\n"
        "                    a comment; ~/ and relative paths start at the home\n"
        "                    folder [none]\n"
        "  CombineFiles      true: a batch of several files makes one list of all\n"
        "                    their words, Combined/Combined word list.txt [false]\n"
        "  ListFormat        0: text; 1: CSV (\"word,count\", CR LF); 2: TSV; the\n"
        "                    list's name ends in .txt, .csv or .tsv [0]\n"
        "  IncludeTotals     true: the list ends with \"# N words in the text, N listed;\n"
        "                    N distinct words, N listed; type/token ratio R\", the\n"
        "                    standardised type/token ratio over runs of 1000 words\n"
        "                    (none in a shorter text) and the mean word length in\n"
        "                    characters (and the files, the reference's words); CSV\n"
        "                    and TSV: rows after an empty row [false]\n"
        "  IncludeRange      true: each word's range (files holding it), and over a\n"
        "                    combined list's files Juilland's D and Gries' DP; one\n"
        "                    file: range 1, no dispersion (\"-\", an empty cell) [false]\n"
        "  IncludePerMillion true: each word's count per million words of the\n"
        "                    text [false]\n"
        "  ReferencePath     a document, a folder of documents or a CSV or TSV word\n"
        "                    list of Tallyvox's: the list becomes a keyword list\n"
        "                    against it, with the reference count, log-likelihood\n"
        "                    (G2), log ratio and + or -; ~/ and relative paths start\n"
        "                    at the home folder [none]\n"
        "  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p < 0.01 [6.63]\n"
        "  NGramLength       1 to 5: each entry is a sequence of that many words,\n"
        "                    joined by a space, never across a sentence end, a blank\n"
        "                    line or a document's paragraph, cell or slide; a stop\n"
        "                    word at either end leaves a sequence out [1]\n"
        "  LemmaListPath     a UTF-8 file of lines \"headword -> form, form, ...\"; #\n"
        "                    starts a comment; each headword is one entry with its\n"
        "                    forms' counts added up and the forms found after it,\n"
        "                    \"{form N, ...}\" (CSV and TSV: a column \"forms\"); ~/\n"
        "                    and relative paths start at the home folder [none]\n"
        "  Lemmatize         true: with no LemmaListPath, forms are grouped under their\n"
        "                    stem in a Hunspell dictionary (Debian's hunspell-*\n"
        "                    packages); words it does not know stay as they are\n"
        "                    [false]\n"
        "  LemmaLanguage     the dictionary's name, as en_US [the locale's]\n"
        "\n"
        "Environment:\n"
        "  XDG_CONFIG_HOME  settings in \"Okaluna Software/Tallyvox.plist\" (~/.config)\n"
        "  XDG_DATA_HOME    word lists in \"Okaluna Software/Tallyvox/\", context-menu\n"
        "                   entries (~/.local/share)\n"
        "  TMPDIR           temporary files, also the indexers' (else\n"
        "                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared\n"
        "                   one gets a private folder of Tallyvox's own beneath it\n"
        "  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further\n"
        "                            before it is ended (60)\n"
        "  TALLYVOX_JOBS    files read at once, at most one a processor core (one a\n"
        "                   core)\n"
        "  LANG, LC_ALL     the language of spelled-out numbers and of counts\n"
        "  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)\n"
        "\n"
        "Files:\n"
        "  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings\n"
        "  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists\n"
        "  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several\n"
        "                                                      files\n"
        "  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a\n"
        "                                                      service, kept for a day\n"
        "\n"
        "Exit status:\n"
        "  0  success, or the request was handed to the running Tallyvox\n"
        "  1  a file could not be processed, its word list or a decoded or graphic file\n"
        "     not written (console mode),\n"
        "     the display could not be opened for the window, or to read --selection or\n"
        "     --clipboard (console mode), the running Tallyvox did not answer, or the\n"
        "     context-menu entries could not be installed\n"
        "  2  the command line could not be understood\n"
        "  3  a word list is empty because its file could not be read, is locked by a\n"
        "     password or is not a document Tallyvox reads (console mode)\n");
}

QString versionText()
{
    return QStringLiteral("Tallyvox %1\n").arg(QLatin1String(TALLYVOX_VERSION));
}

} // namespace tallyvox
