<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ErrorWindow</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Drop documents here</source>
        <translation>Dokumente hierher ziehen</translation>
    </message>
    <message>
        <source>Drop documents here, or open them with Tallyvox from the file manager</source>
        <translation>Dokumente hierher ziehen oder sie in der Dateiverwaltung mit Tallyvox öffnen</translation>
    </message>
    <message>
        <source>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Drop documents here</source>
        <translation>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Dokumente hierher ziehen</translation>
    </message>
    <message>
        <source>Extracting words...</source>
        <translation>Wörter werden ausgelesen...</translation>
    </message>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Um Wörter auszulesen, wählen Sie Datei &gt; Öffnen, ziehen Sie eine oder mehrere Dateien auf dieses Fenster oder öffnen Sie sie in der Dateiverwaltung mit Tallyvox.</translation>
    </message>
    <message>
        <source>Files begun</source>
        <translation>Begonnene Dateien</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Anhalten</translation>
    </message>
    <message>
        <source>Stop once the file in progress is done (Esc)</source>
        <translation>Anhalten, sobald die laufende Datei fertig ist (Esc)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Öffnen...</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Einstellungen...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;About Tallyvox</source>
        <translation>Ü&amp;ber Tallyvox</translation>
    </message>
    <message>
        <source>Tallyvox &amp;Help</source>
        <translation>Tallyvox-&amp;Handbuch</translation>
    </message>
    <message>
        <source>Esc</source>
        <comment>The key&apos;s name as Qt writes it: kept in English. Set after the button&apos;s text, which would drop it.</comment>
        <translation>Esc</translation>
    </message>
</context>
<context>
    <name>PreferencesWindow</name>
    <message>
        <source>Tallyvox Preferences</source>
        <translation>Tallyvox-Einstellungen</translation>
    </message>
    <message>
        <source>Sort words:</source>
        <translation>Wörter sortieren:</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>Alphabetisch</translation>
    </message>
    <message>
        <source>By frequency</source>
        <translation>Nach Häufigkeit</translation>
    </message>
    <message>
        <source>Include frequency</source>
        <translation>Häufigkeit angeben</translation>
    </message>
    <message>
        <source>Show counts as:</source>
        <translation>Anzahl zeigen als:</translation>
    </message>
    <message>
        <source>word (3)</source>
        <translation>Wort (3)</translation>
    </message>
    <message>
        <source>word, tab, 3</source>
        <translation>Wort, Tabulator, 3</translation>
    </message>
    <message>
        <source>word,3</source>
        <translation>Wort,3</translation>
    </message>
    <message>
        <source>Separate words by:</source>
        <translation>Wörter trennen durch:</translation>
    </message>
    <message>
        <source>New line (LF)</source>
        <translation>Zeilenumbruch (LF)</translation>
    </message>
    <message>
        <source>Carriage return (CR)</source>
        <translation>Wagenrücklauf (CR)</translation>
    </message>
    <message>
        <source>CR and LF</source>
        <translation>CR und LF</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Leerzeichen</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Komma</translation>
    </message>
    <message>
        <source>Quit when done</source>
        <translation>Nach getaner Arbeit beenden</translation>
    </message>
    <message>
        <source>Word-list options</source>
        <translation>Wortlisten-Optionen</translation>
    </message>
    <message>
        <source>Words that differ only in case count as one entry, written as they occur most often. Folding follows Unicode: ß and SS are one word.</source>
        <translation>Wörter, die sich nur in Groß- und Kleinschreibung unterscheiden, zählen als ein Eintrag, geschrieben in ihrer häufigsten Form. Die Zusammenfassung folgt Unicode: ß und SS sind ein Wort.</translation>
    </message>
    <message>
        <source>Treat case as one (THE, The, the)</source>
        <translation>Groß-/Kleinschreibung gleich behandeln (DIE, Die, die)</translation>
    </message>
    <message>
        <source>Alphabetical order follows your language (LC_COLLATE or LANG), so é sorts beside e; by frequency, words of equal count follow it too. Off: by character codes, as before.</source>
        <translation>Die alphabetische Reihenfolge folgt Ihrer Sprache (LC_COLLATE oder LANG), sodass é neben e steht; nach Häufigkeit folgen ihr auch Wörter gleicher Anzahl. Aus: nach Zeichencodes, wie bisher.</translation>
    </message>
    <message>
        <source>Sort as a dictionary does</source>
        <translation>Wie ein Wörterbuch sortieren</translation>
    </message>
    <message>
        <source>Minimum count:</source>
        <translation>Mindestanzahl:</translation>
    </message>
    <message>
        <source>Words counted fewer times than this are left out. 1 keeps every word.</source>
        <translation>Wörter, die seltener gezählt werden, werden weggelassen. 1 behält jedes Wort.</translation>
    </message>
    <message>
        <source>Stop list:</source>
        <translation>Stoppliste:</translation>
    </message>
    <message>
        <source>A UTF-8 text file of words to leave out, one a line; # starts a comment. Compared without case when case is treated as one. Empty: none.</source>
        <translation>Eine UTF-8-Textdatei mit wegzulassenden Wörtern, eines pro Zeile; # leitet einen Kommentar ein. Ohne Groß-/Kleinschreibung verglichen, wenn diese gleich behandelt wird. Leer: keine.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Choose the stop list&apos;s file.</source>
        <translation>Die Datei der Stoppliste wählen.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen…</translation>
    </message>
    <message>
        <source>Several files opened at once make one list of all their words, in the Combined folder beside the other lists. A single file still gets its own list.</source>
        <translation>Mehrere gleichzeitig geöffnete Dateien ergeben eine Liste all ihrer Wörter, im Ordner Combined neben den anderen Listen. Eine einzelne Datei erhält weiterhin ihre eigene Liste.</translation>
    </message>
    <message>
        <source>One list for files dropped together</source>
        <translation>Eine Liste für gemeinsam abgelegte Dateien</translation>
    </message>
    <message>
        <source>List format:</source>
        <translation>Listenformat:</translation>
    </message>
    <message>
        <source>Text, as set above; CSV (word,count) for spreadsheets; or TSV (tab-separated). CSV and TSV have a header row and ignore how counts and words are separated.</source>
        <translation>Text, wie oben eingestellt; CSV (Wort,Anzahl) für Tabellenkalkulationen; oder TSV (durch Tabulatoren getrennt). CSV und TSV haben eine Kopfzeile und übergehen, wie Anzahlen und Wörter getrennt werden.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>CSV for spreadsheets</source>
        <translation>CSV für Tabellenkalkulationen</translation>
    </message>
    <message>
        <source>TSV, tab-separated</source>
        <translation>TSV, durch Tabulatoren getrennt</translation>
    </message>
    <message>
        <source>End the list with its totals</source>
        <translation>Liste mit ihren Summen beenden</translation>
    </message>
    <message>
        <source>Each word also gets its range: how many files hold it. A list of several files also gets Juilland&apos;s D and Gries&apos; DP, how evenly the word is spread over them. A list of one file has range 1 and no dispersion (shown as -).</source>
        <translation>Jedes Wort erhält zudem seine Reichweite: wie viele Dateien es enthalten. Eine Liste mehrerer Dateien erhält außerdem Juillands D und Gries’ DP, also wie gleichmäßig das Wort über sie verteilt ist. Eine Liste einer Datei hat Reichweite 1 und keine Streuung (als - gezeigt).</translation>
    </message>
    <message>
        <source>Range and dispersion over the files</source>
        <translation>Reichweite und Streuung über die Dateien</translation>
    </message>
    <message>
        <source>Each word also gets its frequency per million words of the text it came from, so that lists of texts of different lengths compare.</source>
        <translation>Jedes Wort erhält zudem seine Häufigkeit pro Million Wörter seines Textes, sodass sich Listen unterschiedlich langer Texte vergleichen lassen.</translation>
    </message>
    <message>
        <source>Frequency per million words</source>
        <translation>Häufigkeit pro Million Wörter</translation>
    </message>
    <message>
        <source>Reference:</source>
        <translation>Referenz:</translation>
    </message>
    <message>
        <source>A document, a folder of documents, or a CSV or TSV word list made by Tallyvox. The list then becomes a keyword list: the words used markedly more (+) or less (-) than in the reference, with log-likelihood and log ratio. Empty: an ordinary list.</source>
        <translation>Ein Dokument, ein Ordner mit Dokumenten oder eine CSV- oder TSV-Wortliste von Tallyvox. Die Liste wird dann zur Schlüsselwortliste: die Wörter, die deutlich häufiger (+) oder seltener (-) als in der Referenz vorkommen, mit Log-Likelihood und Log-Ratio. Leer: eine gewöhnliche Liste.</translation>
    </message>
    <message>
        <source>Choose the reference&apos;s file; type a folder&apos;s path into the field.</source>
        <translation>Die Datei der Referenz wählen; den Pfad eines Ordners in das Feld eingeben.</translation>
    </message>
    <message>
        <source>Keyness threshold:</source>
        <translation>Keyness-Schwelle:</translation>
    </message>
    <message>
        <source>A keyword list keeps the words whose log-likelihood is at least this. 3.84 is p &lt; 0.05, 6.63 is p &lt; 0.01, 10.83 is p &lt; 0.001, 15.13 is p &lt; 0.0001.</source>
        <translation>Eine Schlüsselwortliste behält die Wörter, deren Log-Likelihood mindestens diesen Wert erreicht. 3.84 ist p &lt; 0.05, 6.63 ist p &lt; 0.01, 10.83 ist p &lt; 0.001, 15.13 ist p &lt; 0.0001.</translation>
    </message>
    <message>
        <source>The list ends with its totals: the words of the text and those listed, the distinct words of each, the type/token ratio of the text, its standardised type/token ratio over runs of 1000 words and its mean word length, and the files or the reference where there are. A text list gets a last line starting with #; CSV and TSV get rows after an empty row.</source>
        <translation>Die Liste endet mit ihren Summen: die Wörter des Textes und die aufgeführten, die verschiedenen Wörter von beiden, das Type-Token-Verhältnis des Textes, sein standardisiertes Type-Token-Verhältnis über Abschnitte von 1000 Wörtern und seine mittlere Wortlänge sowie gegebenenfalls die Dateien oder die Referenz. Eine Textliste erhält eine letzte Zeile, die mit # beginnt; CSV und TSV erhalten Zeilen nach einer leeren Zeile.</translation>
    </message>
</context>
<context>
    <name>WordList</name>
    <message>
        <source>No Hunspell dictionary &quot;%1&quot; is installed, so the word lists are made without grouping word forms. Debian&apos;s hunspell packages install dictionaries (hunspell-en-us for en_US).</source>
        <translation>Es ist kein Hunspell-Wörterbuch „%1“ installiert, daher werden die Wortlisten ohne Gruppierung der Wortformen erstellt. Debians hunspell-Pakete installieren Wörterbücher (hunspell-en-us für en_US).</translation>
    </message>
</context>
<context>
    <name>tallyvox::AboutWindow</name>
    <message>
        <source>About Tallyvox</source>
        <translation>Über Tallyvox</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;The project&apos;s page&lt;/a&gt; (in the user guide)</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;Die Seite des Projekts&lt;/a&gt; (im Benutzerhandbuch)</translation>
    </message>
    <message>
        <source>Turns documents into word lists with their counts.</source>
        <translation>Macht aus Dokumenten Wortlisten mit ihren Häufigkeiten.</translation>
    </message>
    <message>
        <source>Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)</source>
        <translation>Lizenz: GNU General Public License, Version 3 oder neuer (GPL-3.0-or-later)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ApplicationShell</name>
    <message>
        <source>Select one or more files to extract words from.</source>
        <translation>Wählen Sie eine oder mehrere Dateien, aus denen Wörter ausgelesen werden sollen.</translation>
    </message>
    <message>
        <source>Bye.</source>
        <translation>Auf Wiedersehen.</translation>
    </message>
    <message>
        <source>View in Okaluna Website...</source>
        <translation>Auf der Okaluna-Website ansehen...</translation>
    </message>
    <message>
        <source>View in Software Centre...</source>
        <translation>In der Softwareverwaltung ansehen...</translation>
    </message>
</context>
<context>
    <name>tallyvox::BatchRunner</name>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Um Wörter auszulesen, wählen Sie Datei &gt; Öffnen, ziehen Sie eine oder mehrere Dateien auf dieses Fenster oder öffnen Sie sie in der Dateiverwaltung mit Tallyvox.</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>An error occurred while launching &quot;%1&quot;   (Error code: %2)</source>
        <translation>Beim Öffnen von „%1“ ist ein Fehler aufgetreten   (Fehlercode: %2)</translation>
    </message>
    <message>
        <source>One or more items you dropped on Tallyvox was not a file.</source>
        <translation>Mindestens eines der auf Tallyvox abgelegten Objekte war keine Datei.</translation>
    </message>
    <message>
        <source>Tallyvox only extracts words from files.</source>
        <translation>Tallyvox liest Wörter nur aus Dateien aus.</translation>
    </message>
    <message>
        <source>%1: %2% read</source>
        <translation>%1: %2 % gelesen</translation>
    </message>
    <message>
        <source>%1: reading…</source>
        <translation>%1: wird gelesen…</translation>
    </message>
    <message>
        <source>Stopping after this file…</source>
        <translation>Nach dieser Datei wird angehalten…</translation>
    </message>
    <message>
        <source>%1 — stopping after this file…</source>
        <translation>%1 – nach dieser Datei wird angehalten…</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is empty: %2.</source>
        <translation>Die Wortliste von „%1“ ist leer: %2.</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is incomplete: %2.</source>
        <translation>Die Wortliste von „%1“ ist unvollständig: %2.</translation>
    </message>
    <message>
        <source>Some word lists are empty or incomplete: %1.</source>
        <translation>Einige Wortlisten sind leer oder unvollständig: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>„%1“ (%2)</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>die Datei ist leer</translation>
    </message>
    <message>
        <source>the document holds no words</source>
        <translation>das Dokument enthält keine Wörter</translation>
    </message>
    <message>
        <source>the file cannot be read (permission denied)</source>
        <translation>die Datei kann nicht gelesen werden (Zugriff verweigert)</translation>
    </message>
    <message>
        <source>the document is password-protected</source>
        <translation>das Dokument ist passwortgeschützt</translation>
    </message>
    <message>
        <source>the file is not a document Tallyvox reads</source>
        <translation>die Datei ist kein Dokument, das Tallyvox lesen kann</translation>
    </message>
    <message>
        <source>its path is longer than Tallyvox can read (254 bytes)</source>
        <translation>ihr Pfad ist länger, als Tallyvox lesen kann (254 Byte)</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>die Datei konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>it was cut at a limit</source>
        <translation>sie wurde an einer Grenze abgeschnitten</translation>
    </message>
    <message>
        <source>it was cut at a limit (%1)</source>
        <translation>sie wurde an einer Grenze abgeschnitten (%1)</translation>
    </message>
</context>
<context>
    <name>tallyvox::CommandLine</name>
    <message>
        <source>--save-as needs a path</source>
        <translation>--save-as braucht einen Pfad</translation>
    </message>
    <message>
        <source>--service needs a service name</source>
        <translation>--service braucht den Namen eines Dienstes</translation>
    </message>
    <message>
        <source>--text needs a text</source>
        <translation>--text braucht einen Text</translation>
    </message>
    <message>
        <source>--save-as works with --console only</source>
        <translation>--save-as wirkt nur zusammen mit --console</translation>
    </message>
    <message>
        <source>--text, --selection, --clipboard and --stdin work with --service only</source>
        <translation>--text, --selection, --clipboard und --stdin wirken nur zusammen mit --service</translation>
    </message>
    <message>
        <source>--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin</source>
        <translation>--service nimmt genau eines von FILE..., --text TEXT, --selection, --clipboard oder --stdin</translation>
    </message>
    <message>
        <source>Usage: tallyvox [FILE...]
       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
       tallyvox --install-integration

</source>
        <translation>Aufruf: tallyvox [FILE...]
        tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
        tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
        tallyvox --install-integration

</translation>
    </message>
    <message>
        <source>Turns documents into word lists. Each FILE is processed as if dropped on the
window: its words, with their counts, are written to a text file that opens in
the text editor. A running Tallyvox receives the files instead of a second window
opening.

</source>
        <translation>Macht aus Dokumenten Wortlisten. Jede Datei (FILE) wird behandelt, als wäre sie
auf das Fenster gezogen worden: Ihre Wörter werden mit ihren Anzahlen in eine
Textdatei geschrieben, die sich im Texteditor öffnet. Läuft Tallyvox bereits,
erhält es die Dateien, statt dass sich ein zweites Fenster öffnet.

</translation>
    </message>
    <message>
        <source>Options:
</source>
        <translation>Optionen:
</translation>
    </message>
    <message>
        <source>  --service NAME   perform a service (see below) on one source: each FILE in
                   turn, or the TEXT of --text, the primary selection
                   (--selection), the clipboard (--clipboard) or standard input
                   (--stdin); a running Tallyvox performs it, else this one
</source>
        <translation>  --service NAME   einen Dienst (siehe unten) auf eine Quelle anwenden: jede
                   FILE der Reihe nach, oder den TEXT von --text, die primäre
                   Auswahl (--selection), die Zwischenablage (--clipboard) oder
                   die Standardeingabe (--stdin); ein laufendes Tallyvox führt
                   ihn aus, sonst dieses
</translation>
    </message>
    <message>
        <source>  --text TEXT      the text for --service
</source>
        <translation>  --text TEXT      der Text für --service
</translation>
    </message>
    <message>
        <source>  --selection      read the primary selection (the text last selected) for --service
</source>
        <translation>  --selection      die primäre Auswahl (den zuletzt markierten Text) für
                   --service lesen
</translation>
    </message>
    <message>
        <source>  --clipboard      read the clipboard for --service
</source>
        <translation>  --clipboard      die Zwischenablage für --service lesen
</translation>
    </message>
    <message>
        <source>  --stdin          read standard input for --service
</source>
        <translation>  --stdin          die Standardeingabe für --service lesen
</translation>
    </message>
    <message>
        <source>  --console        no window and no running instance: alerts are printed as lines
                   on standard output, and files are not opened but printed as
                   &quot;open PATH&quot;; a PATH or message holding a control character
                   (a line break in a file name, say) is printed quoted the
                   shell&apos;s way, as $&apos;...&apos;; text put on the clipboard is held until
                   another program has fetched it, for at most 10 seconds (in a
                   Wayland session wl-copy keeps it)
</source>
        <translation>  --console        kein Fenster und keine laufende Instanz: Meldungen werden als
                   Zeilen auf der Standardausgabe ausgegeben, und Dateien werden
                   nicht geöffnet, sondern als &quot;open PATH&quot; ausgegeben; ein PATH
                   oder eine Meldung mit einem Steuerzeichen (etwa einem
                   Zeilenumbruch im Dateinamen) wird nach Art der Shell in
                   Anführung ausgegeben, als $&apos;...&apos;; Text in der Zwischenablage
                   wird gehalten, bis ein anderes Programm ihn abgeholt hat,
                   höchstens 10 Sekunden lang (in einer Wayland-Sitzung hält ihn
                   wl-copy)
</translation>
    </message>
    <message>
        <source>  --save-as PATH   in console mode, the answer to any save panel (none: cancel)
</source>
        <translation>  --save-as PATH   im Konsolenmodus die Antwort auf jeden Speichern-Dialog
                   (keine: Abbrechen)
</translation>
    </message>
    <message>
        <source>  --install-integration
                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo
                   for this user (under $XDG_DATA_HOME)
</source>
        <translation>  --install-integration
                   Tallyvox für diesen Benutzer zu den Kontextmenüs von Dolphin,
                   Nautilus und Nemo hinzufügen (unter $XDG_DATA_HOME)
</translation>
    </message>
    <message>
        <source>  -h, --help       show this help
</source>
        <translation>  -h, --help       diese Hilfe zeigen
</translation>
    </message>
    <message>
        <source>  -v, --version    show the version

</source>
        <translation>  -v, --version    die Version zeigen

</translation>
    </message>
    <message>
        <source>Services (NAME is matched without regard to case):
</source>
        <translation>Dienste (NAME ohne Rücksicht auf Groß-/Kleinschreibung):
</translation>
    </message>
    <message>
        <source>  tallyvox         word list of a file, or of the text
</source>
        <translation>  tallyvox         Wortliste einer Datei oder des Textes
</translation>
    </message>
    <message>
        <source>  wordCount        number of words of a file, or of the text
</source>
        <translation>  wordCount        Anzahl der Wörter einer Datei oder des Textes
</translation>
    </message>
    <message>
        <source>  charCount        characters of a file&apos;s words, or of the text itself
</source>
        <translation>  charCount        Zeichen der Wörter einer Datei oder des Textes selbst
</translation>
    </message>
    <message>
        <source>  decodeBase64     decode Base64 text (or a file of it) and save the bytes
</source>
        <translation>  decodeBase64     Base64-Text (oder eine Datei davon) dekodieren und die Bytes
                   speichern
</translation>
    </message>
    <message>
        <source>  spellOutNumber   spell the text&apos;s leading number out in words, onto the clipboard
</source>
        <translation>  spellOutNumber   die führende Zahl des Textes in Worten ausschreiben, in die
                   Zwischenablage
</translation>
    </message>
    <message>
        <source>  saveGraphicData  save the text as a graphic file (an SVG image, for one)
</source>
        <translation>  saveGraphicData  den Text als Grafikdatei speichern (etwa als SVG-Bild)
</translation>
    </message>
    <message>
        <source>Text that is a file: URL or an absolute path of an existing file stands for that
file.

</source>
        <translation>Ein Text, der eine file:-URL oder der absolute Pfad einer vorhandenen Datei ist,
steht für diese Datei.

</translation>
    </message>
    <message>
        <source>Settings:
</source>
        <translation>Einstellungen:
</translation>
    </message>
    <message>
        <source>  File &gt; Preferences writes them to Tallyvox.plist (see Files). Each is read
  when it is used, so a change applies to the next file. Defaults in brackets.

</source>
        <translation>  Datei &gt; Einstellungen schreibt sie nach Tallyvox.plist (siehe Dateien). Jede
  wird gelesen, wenn sie gebraucht wird, eine Änderung gilt also ab der nächsten
  Datei. Standardwerte in Klammern.

</translation>
    </message>
    <message>
        <source>  QuitWhenDone      true: quit after a batch run or a service [false]
</source>
        <translation>  QuitWhenDone      true: nach einem Stapellauf oder einem Dienst beenden
                    [false]
</translation>
    </message>
    <message>
        <source>  IncludeFrequency  true: each word&apos;s count follows it [true]
</source>
        <translation>  IncludeFrequency  true: auf jedes Wort folgt seine Anzahl [true]
</translation>
    </message>
    <message>
        <source>  SortBy            1: alphabetically; any other number: by frequency [1]
</source>
        <translation>  SortBy            1: alphabetisch; jede andere Zahl: nach Häufigkeit [1]
</translation>
    </message>
    <message>
        <source>  SeparateBy        how a count follows its word: 1 &quot;word (3)&quot;, 2 a tab,
                    3 &quot;word,3&quot;, another number: no count [1]
</source>
        <translation>  SeparateBy        wie eine Anzahl ihrem Wort folgt: 1 &quot;word (3)&quot;, 2 ein
                    Tabulator, 3 &quot;word,3&quot;, eine andere Zahl: keine Anzahl [1]
</translation>
    </message>
    <message>
        <source>  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,
                    5 a comma, another number: nothing [1]

</source>
        <translation>  LineStyle         was auf jedes Wort folgt: 1 LF, 2 CR, 3 CR LF, 4 ein
                    Leerzeichen, 5 ein Komma, eine andere Zahl: nichts [1]

</translation>
    </message>
    <message>
        <source>Word-list options:
</source>
        <translation>Wortlisten-Optionen:
</translation>
    </message>
    <message>
        <source>  Settings as well, each off by default; with all of them off a list is made
  as the settings above say.

</source>
        <translation>  Ebenfalls Einstellungen, jede standardmäßig aus; sind alle aus, wird eine
  Liste so erstellt, wie es die Einstellungen oben sagen.

</translation>
    </message>
    <message>
        <source>  FoldCase          true: words that differ only in case are one entry,
                    written in their most frequent form [false]
</source>
        <translation>  FoldCase          true: Wörter, die sich nur in Groß-/Kleinschreibung
                    unterscheiden, sind ein Eintrag, in ihrer häufigsten Form
                    geschrieben [false]
</translation>
    </message>
    <message>
        <source>  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,
                    LC_COLLATE or LANG does, also words of equal count [false]
</source>
        <translation>  DictionaryOrder   true: so sortieren wie ein Wörterbuch der Sprache von
                    LC_ALL, LC_COLLATE oder LANG, auch Wörter gleicher Anzahl
                    [false]
</translation>
    </message>
    <message>
        <source>  MinimumCount      leave out words counted fewer times [1]
</source>
        <translation>  MinimumCount      seltener gezählte Wörter weglassen [1]
</translation>
    </message>
    <message>
        <source>  StopListPath      a UTF-8 file of words to leave out, one a line; # starts
                    a comment; ~/ and relative paths start at the home
                    folder [none]
</source>
        <translation>  StopListPath      eine UTF-8-Datei wegzulassender Wörter, eines pro Zeile; #
                    leitet einen Kommentar ein; ~/ und relative Pfade beginnen
                    im persönlichen Ordner [keine]
</translation>
    </message>
    <message>
        <source>  CombineFiles      true: a batch of several files makes one list of all
                    their words, Combined/Combined word list.txt [false]
</source>
        <translation>  CombineFiles      true: ein Stapel mehrerer Dateien ergibt eine Liste all
                    ihrer Wörter, Combined/Combined word list.txt [false]
</translation>
    </message>
    <message>
        <source>  ListFormat        0: text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; the
                    list&apos;s name ends in .txt, .csv or .tsv [0]
</source>
        <translation>  ListFormat        0: Text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; der Name der
                    Liste endet auf .txt, .csv oder .tsv [0]
</translation>
    </message>
    <message>
        <source>  IncludeRange      true: each word&apos;s range (files holding it), and over a
                    combined list&apos;s files Juilland&apos;s D and Gries&apos; DP; one
                    file: range 1, no dispersion (&quot;-&quot;, an empty cell) [false]
</source>
        <translation>  IncludeRange      true: die Reichweite jedes Wortes (Dateien, die es
                    enthalten), und über die Dateien einer gemeinsamen Liste
                    Juillands D und Gries’ DP; eine Datei: Reichweite 1, keine
                    Streuung (&quot;-&quot;, eine leere Zelle) [false]
</translation>
    </message>
    <message>
        <source>  IncludePerMillion true: each word&apos;s count per million words of the
                    text [false]
</source>
        <translation>  IncludePerMillion true: die Anzahl jedes Wortes pro Million Wörter des Textes
                    [false]
</translation>
    </message>
    <message>
        <source>  ReferencePath     a document, a folder of documents or a CSV or TSV word
                    list of Tallyvox&apos;s: the list becomes a keyword list
                    against it, with the reference count, log-likelihood
                    (G2), log ratio and + or -; ~/ and relative paths start
                    at the home folder [none]
</source>
        <translation>  ReferencePath     ein Dokument, ein Ordner mit Dokumenten oder eine CSV- oder
                    TSV-Wortliste von Tallyvox: die Liste wird zur
                    Schlüsselwortliste gegen sie, mit der Anzahl in der
                    Referenz, Log-Likelihood (G2), Log-Ratio und + oder -; ~/
                    und relative Pfade beginnen im persönlichen Ordner [keine]
</translation>
    </message>
    <message>
        <source>  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p &lt; 0.01 [6.63]
</source>
        <translation>  KeynessThreshold  das kleinste G2, das eine Schlüsselwortliste behält; 6.63
                    ist p &lt; 0.01 [6.63]
</translation>
    </message>
    <message>
        <source>  NGramLength       1 to 5: each entry is a sequence of that many words,
                    joined by a space, never across a sentence end, a blank
                    line or a document&apos;s paragraph, cell or slide; a stop
                    word at either end leaves a sequence out [1]
</source>
        <translation>  NGramLength       1 bis 5: jeder Eintrag ist eine Folge so vieler Wörter,
                    durch ein Leerzeichen verbunden, nie über ein Satzende, eine
                    Leerzeile oder einen Absatz, eine Zelle oder Folie eines
                    Dokuments hinweg; ein Stoppwort an einem der Enden lässt
                    eine Folge wegfallen [1]
</translation>
    </message>
    <message>
        <source>Environment:
</source>
        <translation>Umgebung:
</translation>
    </message>
    <message>
        <source>  XDG_CONFIG_HOME  settings in &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</source>
        <translation>  XDG_CONFIG_HOME  Einstellungen in &quot;Okaluna Software/Tallyvox.plist&quot;
                   (~/.config)
</translation>
    </message>
    <message>
        <source>  XDG_DATA_HOME    word lists in &quot;Okaluna Software/Tallyvox/&quot;, context-menu
                   entries (~/.local/share)
</source>
        <translation>  XDG_DATA_HOME    Wortlisten in &quot;Okaluna Software/Tallyvox/&quot;,
                   Kontextmenü-Einträge (~/.local/share)
</translation>
    </message>
    <message>
        <source>  TMPDIR           temporary files, also the indexers&apos; (else
                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared
                   one gets a private folder of Tallyvox&apos;s own beneath it
</source>
        <translation>  TMPDIR           temporäre Dateien, auch die der Indexer (sonst
                   $XDG_RUNTIME_DIR/tallyvox oder /tmp/tallyvox-UID); ein
                   gemeinsam genutzter erhält darunter einen privaten Ordner von
                   Tallyvox
</translation>
    </message>
    <message>
        <source>  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further
                            before it is ended (60)
</source>
        <translation>  TALLYVOX_INDEXER_TIMEOUT  Sekunden, die ein Indexer ohne Weiterlesen
                            verbringen darf, bevor er beendet wird (60)
</translation>
    </message>
    <message>
        <source>  TALLYVOX_JOBS    files read at once, at most one a processor core (one a
                   core)
</source>
        <translation>  TALLYVOX_JOBS    gleichzeitig gelesene Dateien, höchstens eine pro
                   Prozessorkern (eine pro Kern)
</translation>
    </message>
    <message>
        <source>  LANG, LC_ALL     the language of spelled-out numbers and of counts
</source>
        <translation>  LANG, LC_ALL     die Sprache ausgeschriebener Zahlen und der Anzahlen
</translation>
    </message>
    <message>
        <source>  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)

</source>
        <translation>  LC_COLLATE       die Wörterbuchreihenfolge von DictionaryOrder (nach LC_ALL)

</translation>
    </message>
    <message>
        <source>Files:
</source>
        <translation>Dateien:
</translation>
    </message>
    <message>
        <source>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several
                                                      files
</source>
        <translation>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    die Einstellungen
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           die Wortlisten
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  die Listen mehrerer
                                                      Dateien
</translation>
    </message>
    <message>
        <source>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a
                                                      service, kept for a day

</source>
        <translation>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              markierter Text eines
                                                      Dienstes, einen Tag lang
                                                      aufbewahrt

</translation>
    </message>
    <message>
        <source>Exit status:
</source>
        <translation>Rückgabewert:
</translation>
    </message>
    <message>
        <source>  0  success, or the request was handed to the running Tallyvox
</source>
        <translation>  0  Erfolg, oder die Anfrage wurde an das laufende Tallyvox übergeben
</translation>
    </message>
    <message>
        <source>  1  a file could not be processed, its word list or a decoded or graphic file
     not written (console mode),
     the display could not be opened for the window, or to read --selection or
     --clipboard (console mode), the running Tallyvox did not answer, or the
     context-menu entries could not be installed
</source>
        <translation>  1  eine Datei konnte nicht verarbeitet, ihre Wortliste oder eine dekodierte
     oder Grafikdatei nicht geschrieben werden (Konsolenmodus), die Anzeige
     konnte für das Fenster oder zum Lesen von --selection oder --clipboard
     (Konsolenmodus) nicht geöffnet werden, das laufende Tallyvox hat nicht
     geantwortet, oder die Kontextmenü-Einträge konnten nicht installiert werden
</translation>
    </message>
    <message>
        <source>  2  the command line could not be understood
</source>
        <translation>  2  die Befehlszeile war unverständlich
</translation>
    </message>
    <message>
        <source>  3  a word list is empty because its file could not be read, is locked by a
     password or is not a document Tallyvox reads (console mode)
</source>
        <translation>  3  eine Wortliste ist leer, weil ihre Datei nicht gelesen werden konnte, durch
     ein Passwort gesperrt ist oder kein Dokument ist, das Tallyvox liest
     (Konsolenmodus)
</translation>
    </message>
    <message>
        <source>unknown option %1</source>
        <translation>unbekannte Option %1</translation>
    </message>
    <message>
        <source>tallyvox: %1
Try &apos;tallyvox --help&apos;.
</source>
        <translation>tallyvox: %1
»tallyvox --help« gibt weitere Informationen.
</translation>
    </message>
    <message>
        <source>  LemmaListPath     a UTF-8 file of lines &quot;headword -&gt; form, form, ...&quot;; #
                    starts a comment; each headword is one entry with its
                    forms&apos; counts added up and the forms found after it,
                    &quot;{form N, ...}&quot; (CSV and TSV: a column &quot;forms&quot;); ~/
                    and relative paths start at the home folder [none]
</source>
        <translation>  LemmaListPath     eine UTF-8-Datei mit Zeilen &quot;headword -&gt; form, form, ...&quot;; #
                    leitet einen Kommentar ein; jede Grundform ist ein Eintrag,
                    in dem die Anzahlen ihrer Formen addiert sind, gefolgt von
                    den gefundenen Formen, &quot;{form N, ...}&quot; (CSV und TSV: eine
                    Spalte &quot;forms&quot;); ~/ und relative Pfade beginnen im
                    persönlichen Ordner [keine]
</translation>
    </message>
    <message>
        <source>  Lemmatize         true: with no LemmaListPath, forms are grouped under their
                    stem in a Hunspell dictionary (Debian&apos;s hunspell-*
                    packages); words it does not know stay as they are
                    [false]
</source>
        <translation>  Lemmatize         true: ohne LemmaListPath werden Formen unter ihrem Stamm in
                    einem Hunspell-Wörterbuch gruppiert (Debians
                    hunspell-*-Pakete); Wörter, die es nicht kennt, bleiben, wie
                    sie sind [false]
</translation>
    </message>
    <message>
        <source>  LemmaLanguage     the dictionary&apos;s name, as en_US [the locale&apos;s]

</source>
        <translation>  LemmaLanguage     der Name des Wörterbuchs, etwa en_US [das der Locale]

</translation>
    </message>
    <message>
        <source>  IncludeTotals     true: the list ends with &quot;# N words in the text, N listed;
                    N distinct words, N listed; type/token ratio R&quot;, the
                    standardised type/token ratio over runs of 1000 words
                    (none in a shorter text) and the mean word length in
                    characters (and the files, the reference&apos;s words); CSV
                    and TSV: rows after an empty row [false]
</source>
        <translation>  IncludeTotals     true: die Liste endet mit &quot;# N words in the text, N listed;
                    N distinct words, N listed; type/token ratio R&quot;, dem
                    standardisierten Type-Token-Verhältnis über Abschnitte von
                    1000 Wörtern (keines bei kürzerem Text) und der mittleren
                    Wortlänge in Zeichen (und den Dateien, den Wörtern der
                    Referenz); CSV und TSV: Zeilen nach einer leeren Zeile [false]
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleDesktop</name>
    <message>
        <source>tallyvox: the open panel is not available in console mode
</source>
        <translation>tallyvox: im Konsolenmodus gibt es keinen Öffnen-Dialog
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleMode</name>
    <message>
        <source>tallyvox: the selection holds nothing
</source>
        <translation>tallyvox: die Auswahl ist leer
</translation>
    </message>
</context>
<context>
    <name>tallyvox::DecodeAndSave</name>
    <message>
        <source>The file &quot;%1&quot; was not saved: %2.</source>
        <translation>Die Datei „%1“ wurde nicht gespeichert: %2.</translation>
    </message>
    <message>
        <source>The text could not be base64 decoded</source>
        <translation>Der Text konnte nicht Base64-dekodiert werden</translation>
    </message>
    <message>
        <source>The text could not be decoded as UTF8</source>
        <translation>Der Text konnte nicht als UTF-8 dekodiert werden</translation>
    </message>
</context>
<context>
    <name>tallyvox::Integration</name>
    <message>
        <source>tallyvox: could not write %1
</source>
        <translation>tallyvox: %1 konnte nicht geschrieben werden
</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferenceStore</name>
    <message>
        <source>The settings file &quot;%1&quot; is no regular file; Tallyvox uses its default settings and sets it aside at the first change.</source>
        <translation>Die Einstellungsdatei „%1“ ist keine reguläre Datei; Tallyvox verwendet seine Standardeinstellungen und legt sie bei der ersten Änderung beiseite.</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferencesWindow</name>
    <message>
        <source>Each entry is a sequence of this many words, never across a sentence end or a paragraph. A stop word at either end leaves a sequence out. 1: single words.</source>
        <translation>Jeder Eintrag ist eine Folge so vieler Wörter, nie über ein Satzende oder einen Absatz hinweg. Ein Stoppwort an einem der Enden lässt eine Folge wegfallen. 1: einzelne Wörter.</translation>
    </message>
    <message>
        <source>Words per entry:</source>
        <translation>Wörter pro Eintrag:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>A UTF-8 text file of lines &quot;headword -&gt; form, form, ...&quot;; each headword becomes one entry with its forms&apos; counts added up. Empty: none.</source>
        <translation>Eine UTF-8-Textdatei mit Zeilen „Grundform -&gt; Form, Form, ...“; jede Grundform wird ein Eintrag, in dem die Anzahlen ihrer Formen addiert sind. Leer: keine.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Wählen…</translation>
    </message>
    <message>
        <source>Choose the lemma file.</source>
        <translation>Die Lemmadatei wählen.</translation>
    </message>
    <message>
        <source>Lemma list:</source>
        <translation>Lemmaliste:</translation>
    </message>
    <message>
        <source>Choose a Stop List</source>
        <translation>Stoppliste wählen</translation>
    </message>
    <message>
        <source>Choose a Lemma List</source>
        <translation>Lemmaliste wählen</translation>
    </message>
    <message>
        <source>Choose a Reference</source>
        <translation>Referenz wählen</translation>
    </message>
    <message>
        <source>Group word forms by a dictionary</source>
        <translation>Wortformen nach einem Wörterbuch gruppieren</translation>
    </message>
    <message>
        <source>Without a lemma list, each word is counted under its stem in the Hunspell dictionary chosen below (goes, going: go). Words it does not know stay as they are.</source>
        <translation>Ohne Lemmaliste wird jedes Wort unter seinem Stamm im unten gewählten Hunspell-Wörterbuch gezählt (goes, going: go). Wörter, die es nicht kennt, bleiben, wie sie sind.</translation>
    </message>
    <message>
        <source>The Hunspell dictionary that groups the word forms: those installed (Debian&apos;s hunspell-* packages).</source>
        <translation>Das Hunspell-Wörterbuch, das die Wortformen gruppiert: die installierten (Debians hunspell-*-Pakete).</translation>
    </message>
    <message>
        <source>The locale&apos;s (%1)</source>
        <translation>Das der Locale (%1)</translation>
    </message>
    <message>
        <source>Dictionary:</source>
        <translation>Wörterbuch:</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (nicht installiert)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ProcessFile</name>
    <message>
        <source>Word count: %1</source>
        <translation>Anzahl der Wörter: %1</translation>
    </message>
    <message>
        <source>Content character count: %1</source>
        <translation>Anzahl der Zeichen des Inhalts: %1</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is too large to decode: Tallyvox decodes files of up to 32 MB.</source>
        <translation>Die Datei „%1“ ist zu groß zum Dekodieren: Tallyvox dekodiert Dateien bis 32 MB.</translation>
    </message>
</context>
<context>
    <name>tallyvox::QtDesktop</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
</context>
<context>
    <name>tallyvox::ServiceDispatcher</name>
    <message>
        <source>Character count: %1</source>
        <translation>Anzahl der Zeichen: %1</translation>
    </message>
    <message>
        <source>Tallyvox could not read &quot;%1&quot;.</source>
        <translation>Tallyvox konnte „%1“ nicht lesen.</translation>
    </message>
</context>
<context>
    <name>tallyvox::SpellOutNumber</name>
    <message>
        <source>The text could not be spelled out.</source>
        <translation>Der Text konnte nicht ausgeschrieben werden.</translation>
    </message>
    <message>
        <source>The following &quot;spell out&quot; has been put on the clipboard: %1</source>
        <translation>Folgende ausgeschriebene Zahl wurde in die Zwischenablage gelegt: %1</translation>
    </message>
</context>
<context>
    <name>tallyvox::Startup</name>
    <message>
        <source>tallyvox: cannot open the display%1 (%2), so there is no selection to read
</source>
        <translation>tallyvox: die Anzeige%1 kann nicht geöffnet werden (%2), daher gibt es keine Auswahl zu lesen
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display%1 (%2); the clipboard is left as it is
</source>
        <translation>tallyvox: die Anzeige%1 kann nicht geöffnet werden (%2); die Zwischenablage bleibt, wie sie ist
</translation>
    </message>
    <message>
        <source>tallyvox: the running instance did not answer
</source>
        <translation>tallyvox: die laufende Instanz hat nicht geantwortet
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display to show the window (--console runs without one)
</source>
        <translation>tallyvox: die Anzeige für das Fenster kann nicht geöffnet werden (--console läuft ohne sie)
</translation>
    </message>
</context>
<context>
    <name>tallyvox::WordList</name>
    <message>
        <source>The stop list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>Die Stoppliste „%1“ kann nicht gelesen werden, daher werden die Wortlisten ohne sie erstellt.</translation>
    </message>
    <message>
        <source>The lemma list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>Die Lemmaliste „%1“ kann nicht gelesen werden, daher werden die Wortlisten ohne sie erstellt.</translation>
    </message>
    <message>
        <source>The reference &quot;%1&quot; cannot be read, so no keyword list is made.</source>
        <translation>Die Referenz „%1“ kann nicht gelesen werden, daher wird keine Schlüsselwortliste erstellt.</translation>
    </message>
</context>
</TS>
