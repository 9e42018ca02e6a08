<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
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
        <translation>Déposez des documents ici</translation>
    </message>
    <message>
        <source>Drop documents here, or open them with Tallyvox from the file manager</source>
        <translation>Déposez des documents ici, ou ouvrez-les avec Tallyvox depuis le gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Drop documents here</source>
        <translation>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Déposez des documents ici</translation>
    </message>
    <message>
        <source>Extracting words...</source>
        <translation>Extraction des mots...</translation>
    </message>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Pour extraire des mots, utilisez Fichier &gt; Ouvrir, déposez un ou plusieurs fichiers sur cette fenêtre, ou ouvrez-les avec Tallyvox depuis le gestionnaire de fichiers.</translation>
    </message>
    <message>
        <source>Files begun</source>
        <translation>Fichiers commencés</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Stop once the file in progress is done (Esc)</source>
        <translation>Arrêter une fois le fichier en cours terminé (Échap)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Aide</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Ouvrir...</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Préférences...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;About Tallyvox</source>
        <translation>À &amp;propos de Tallyvox</translation>
    </message>
    <message>
        <source>Tallyvox &amp;Help</source>
        <translation>&amp;Aide de Tallyvox</translation>
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
        <translation>Préférences de Tallyvox</translation>
    </message>
    <message>
        <source>Sort words:</source>
        <translation>Trier les mots :</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>Par ordre alphabétique</translation>
    </message>
    <message>
        <source>By frequency</source>
        <translation>Par fréquence</translation>
    </message>
    <message>
        <source>Include frequency</source>
        <translation>Indiquer la fréquence</translation>
    </message>
    <message>
        <source>Show counts as:</source>
        <translation>Afficher les nombres ainsi :</translation>
    </message>
    <message>
        <source>word (3)</source>
        <translation>mot (3)</translation>
    </message>
    <message>
        <source>word, tab, 3</source>
        <translation>mot, tabulation, 3</translation>
    </message>
    <message>
        <source>word,3</source>
        <translation>mot,3</translation>
    </message>
    <message>
        <source>Separate words by:</source>
        <translation>Séparer les mots par :</translation>
    </message>
    <message>
        <source>New line (LF)</source>
        <translation>Saut de ligne (LF)</translation>
    </message>
    <message>
        <source>Carriage return (CR)</source>
        <translation>Retour chariot (CR)</translation>
    </message>
    <message>
        <source>CR and LF</source>
        <translation>CR et LF</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Espace</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Virgule</translation>
    </message>
    <message>
        <source>Quit when done</source>
        <translation>Quitter une fois terminé</translation>
    </message>
    <message>
        <source>Word-list options</source>
        <translation>Options des listes de mots</translation>
    </message>
    <message>
        <source>Words that differ only in case count as one entry, written as they occur most often. Folding follows Unicode: ß and SS are one word.</source>
        <translation>Les mots qui ne diffèrent que par la casse comptent comme une seule entrée, écrite sous sa forme la plus fréquente. Le regroupement suit Unicode : ß et SS sont un même mot.</translation>
    </message>
    <message>
        <source>Treat case as one (THE, The, the)</source>
        <translation>Ignorer la casse (LE, Le, le)</translation>
    </message>
    <message>
        <source>Alphabetical order follows your language (LC_COLLATE or LANG), so é sorts beside e; by frequency, words of equal count follow it too. Off: by character codes, as before.</source>
        <translation>L’ordre alphabétique suit votre langue (LC_COLLATE ou LANG), ainsi é se range à côté de e ; par fréquence, les mots de même nombre le suivent aussi. Désactivé : par codes de caractères, comme auparavant.</translation>
    </message>
    <message>
        <source>Sort as a dictionary does</source>
        <translation>Trier comme un dictionnaire</translation>
    </message>
    <message>
        <source>Minimum count:</source>
        <translation>Nombre minimal :</translation>
    </message>
    <message>
        <source>Words counted fewer times than this are left out. 1 keeps every word.</source>
        <translation>Les mots comptés moins de fois sont omis. 1 garde tous les mots.</translation>
    </message>
    <message>
        <source>Stop list:</source>
        <translation>Liste de mots vides :</translation>
    </message>
    <message>
        <source>A UTF-8 text file of words to leave out, one a line; # starts a comment. Compared without case when case is treated as one. Empty: none.</source>
        <translation>Un fichier texte UTF-8 des mots à omettre, un par ligne ; # commence un commentaire. Comparés sans tenir compte de la casse lorsque la casse est ignorée. Vide : aucune.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message>
        <source>Choose the stop list&apos;s file.</source>
        <translation>Choisir le fichier de la liste de mots vides.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>Several files opened at once make one list of all their words, in the Combined folder beside the other lists. A single file still gets its own list.</source>
        <translation>Plusieurs fichiers ouverts ensemble donnent une seule liste de tous leurs mots, dans le dossier Combined à côté des autres listes. Un fichier seul garde sa propre liste.</translation>
    </message>
    <message>
        <source>One list for files dropped together</source>
        <translation>Une liste pour les fichiers déposés ensemble</translation>
    </message>
    <message>
        <source>List format:</source>
        <translation>Format de la liste :</translation>
    </message>
    <message>
        <source>Text, as set above; CSV (word,count) for spreadsheets; or TSV (tab-separated). CSV and TSV have a header row and ignore how counts and words are separated.</source>
        <translation>Texte, comme réglé ci-dessus ; CSV (mot,nombre) pour les tableurs ; ou TSV (séparé par des tabulations). CSV et TSV ont une ligne d’en-tête et ne tiennent pas compte de la séparation des nombres et des mots.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>CSV for spreadsheets</source>
        <translation>CSV pour les tableurs</translation>
    </message>
    <message>
        <source>TSV, tab-separated</source>
        <translation>TSV, séparé par des tabulations</translation>
    </message>
    <message>
        <source>End the list with its totals</source>
        <translation>Terminer la liste par ses totaux</translation>
    </message>
    <message>
        <source>Each word also gets its range: how many files hold it. A list of several files also gets Juilland&apos;s D and Gries&apos; DP, how evenly the word is spread over them. A list of one file has range 1 and no dispersion (shown as -).</source>
        <translation>Chaque mot reçoit aussi son étendue : le nombre de fichiers qui le contiennent. Une liste de plusieurs fichiers reçoit aussi le D de Juilland et le DP de Gries, qui mesurent la régularité de sa répartition. Une liste d’un seul fichier a une étendue de 1 et aucune dispersion (affichée -).</translation>
    </message>
    <message>
        <source>Range and dispersion over the files</source>
        <translation>Étendue et dispersion dans les fichiers</translation>
    </message>
    <message>
        <source>Each word also gets its frequency per million words of the text it came from, so that lists of texts of different lengths compare.</source>
        <translation>Chaque mot reçoit aussi sa fréquence par million de mots de son texte, pour comparer des listes de textes de longueurs différentes.</translation>
    </message>
    <message>
        <source>Frequency per million words</source>
        <translation>Fréquence par million de mots</translation>
    </message>
    <message>
        <source>Reference:</source>
        <translation>Référence :</translation>
    </message>
    <message>
        <source>A document, a folder of documents, or a CSV or TSV word list made by Tallyvox. The list then becomes a keyword list: the words used markedly more (+) or less (-) than in the reference, with log-likelihood and log ratio. Empty: an ordinary list.</source>
        <translation>Un document, un dossier de documents, ou une liste de mots CSV ou TSV faite par Tallyvox. La liste devient alors une liste de mots-clés : les mots nettement plus (+) ou moins (-) employés que dans la référence, avec log-vraisemblance et log ratio. Vide : une liste ordinaire.</translation>
    </message>
    <message>
        <source>Choose the reference&apos;s file; type a folder&apos;s path into the field.</source>
        <translation>Choisir le fichier de référence ; saisissez le chemin d’un dossier dans le champ.</translation>
    </message>
    <message>
        <source>Keyness threshold:</source>
        <translation>Seuil de spécificité :</translation>
    </message>
    <message>
        <source>A keyword list keeps the words whose log-likelihood is at least this. 3.84 is p &lt; 0.05, 6.63 is p &lt; 0.01, 10.83 is p &lt; 0.001, 15.13 is p &lt; 0.0001.</source>
        <translation>Une liste de mots-clés garde les mots dont la log-vraisemblance atteint au moins cette valeur. 3.84 correspond à p &lt; 0.05, 6.63 à p &lt; 0.01, 10.83 à p &lt; 0.001, 15.13 à p &lt; 0.0001.</translation>
    </message>
    <message>
        <source>The list ends with its totals: the words of the text and those listed, the distinct words of each, the type/token ratio of the text, its standardised type/token ratio over runs of 1000 words and its mean word length, and the files or the reference where there are. A text list gets a last line starting with #; CSV and TSV get rows after an empty row.</source>
        <translation>La liste se termine par ses totaux : les mots du texte et ceux listés, les mots distincts de chacun, le rapport types/occurrences du texte, son rapport types/occurrences standardisé sur des tranches de 1000 mots et sa longueur moyenne de mot, ainsi que les fichiers ou la référence s’il y en a. Une liste texte reçoit une dernière ligne commençant par # ; CSV et TSV reçoivent des lignes après une ligne vide.</translation>
    </message>
</context>
<context>
    <name>WordList</name>
    <message>
        <source>No Hunspell dictionary &quot;%1&quot; is installed, so the word lists are made without grouping word forms. Debian&apos;s hunspell packages install dictionaries (hunspell-en-us for en_US).</source>
        <translation>Aucun dictionnaire Hunspell « %1 » n’est installé ; les listes de mots sont donc faites sans regrouper les formes des mots. Les paquets hunspell de Debian installent des dictionnaires (hunspell-en-us pour en_US).</translation>
    </message>
</context>
<context>
    <name>tallyvox::AboutWindow</name>
    <message>
        <source>About Tallyvox</source>
        <translation>À propos de Tallyvox</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;The project&apos;s page&lt;/a&gt; (in the user guide)</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;La page du projet&lt;/a&gt; (dans le guide de l’utilisateur)</translation>
    </message>
    <message>
        <source>Turns documents into word lists with their counts.</source>
        <translation>Transforme des documents en listes de mots avec leurs nombres d’occurrences.</translation>
    </message>
    <message>
        <source>Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)</source>
        <translation>Licence : GNU General Public License, version 3 ou ultérieure (GPL-3.0-or-later)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ApplicationShell</name>
    <message>
        <source>Select one or more files to extract words from.</source>
        <translation>Sélectionnez un ou plusieurs fichiers dont extraire les mots.</translation>
    </message>
    <message>
        <source>Bye.</source>
        <translation>Au revoir.</translation>
    </message>
    <message>
        <source>View in Okaluna Website...</source>
        <translation>Voir sur le site d’Okaluna...</translation>
    </message>
    <message>
        <source>View in Software Centre...</source>
        <translation>Voir dans la logithèque...</translation>
    </message>
</context>
<context>
    <name>tallyvox::BatchRunner</name>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Pour extraire des mots, utilisez Fichier &gt; Ouvrir, déposez un ou plusieurs fichiers sur cette fenêtre, ou ouvrez-les avec Tallyvox depuis le gestionnaire de fichiers.</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Fichier : %1</translation>
    </message>
    <message>
        <source>An error occurred while launching &quot;%1&quot;   (Error code: %2)</source>
        <translation>Une erreur s’est produite à l’ouverture de « %1 »   (code d’erreur : %2)</translation>
    </message>
    <message>
        <source>One or more items you dropped on Tallyvox was not a file.</source>
        <translation>Au moins un des éléments déposés sur Tallyvox n’était pas un fichier.</translation>
    </message>
    <message>
        <source>Tallyvox only extracts words from files.</source>
        <translation>Tallyvox n’extrait des mots que de fichiers.</translation>
    </message>
    <message>
        <source>%1: %2% read</source>
        <translation>%1 : %2 % lu</translation>
    </message>
    <message>
        <source>%1: reading…</source>
        <translation>%1 : lecture…</translation>
    </message>
    <message>
        <source>Stopping after this file…</source>
        <translation>Arrêt après ce fichier…</translation>
    </message>
    <message>
        <source>%1 — stopping after this file…</source>
        <translation>%1 — arrêt après ce fichier…</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is empty: %2.</source>
        <translation>La liste de mots de « %1 » est vide : %2.</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is incomplete: %2.</source>
        <translation>La liste de mots de « %1 » est incomplète : %2.</translation>
    </message>
    <message>
        <source>Some word lists are empty or incomplete: %1.</source>
        <translation>Certaines listes de mots sont vides ou incomplètes : %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>« %1 » (%2)</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>le fichier est vide</translation>
    </message>
    <message>
        <source>the document holds no words</source>
        <translation>le document ne contient aucun mot</translation>
    </message>
    <message>
        <source>the file cannot be read (permission denied)</source>
        <translation>le fichier ne peut pas être lu (permission refusée)</translation>
    </message>
    <message>
        <source>the document is password-protected</source>
        <translation>le document est protégé par un mot de passe</translation>
    </message>
    <message>
        <source>the file is not a document Tallyvox reads</source>
        <translation>le fichier n’est pas un document que Tallyvox sait lire</translation>
    </message>
    <message>
        <source>its path is longer than Tallyvox can read (254 bytes)</source>
        <translation>son chemin est plus long que ce que Tallyvox peut lire (254 octets)</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>le fichier n’a pas pu être lu</translation>
    </message>
    <message>
        <source>it was cut at a limit</source>
        <translation>elle a été coupée à une limite</translation>
    </message>
    <message>
        <source>it was cut at a limit (%1)</source>
        <translation>elle a été coupée à une limite (%1)</translation>
    </message>
</context>
<context>
    <name>tallyvox::CommandLine</name>
    <message>
        <source>--save-as needs a path</source>
        <translation>--save-as demande un chemin</translation>
    </message>
    <message>
        <source>--service needs a service name</source>
        <translation>--service demande un nom de service</translation>
    </message>
    <message>
        <source>--text needs a text</source>
        <translation>--text demande un texte</translation>
    </message>
    <message>
        <source>--save-as works with --console only</source>
        <translation>--save-as ne fonctionne qu’avec --console</translation>
    </message>
    <message>
        <source>--text, --selection, --clipboard and --stdin work with --service only</source>
        <translation>--text, --selection, --clipboard et --stdin ne fonctionnent qu’avec --service</translation>
    </message>
    <message>
        <source>--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin</source>
        <translation>--service prend un seul de FILE..., --text TEXT, --selection, --clipboard ou --stdin</translation>
    </message>
    <message>
        <source>Usage: tallyvox [FILE...]
       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
       tallyvox --install-integration

</source>
        <translation>Utilisation : tallyvox [FILE...]
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
        <translation>Transforme des documents en listes de mots. Chaque fichier (FILE) est traité
comme s’il était déposé sur la fenêtre : ses mots, avec leurs nombres, sont
écrits dans un fichier texte qui s’ouvre dans l’éditeur de texte. Un Tallyvox
déjà lancé reçoit les fichiers au lieu qu’une deuxième fenêtre s’ouvre.

</translation>
    </message>
    <message>
        <source>Options:
</source>
        <translation>Options :
</translation>
    </message>
    <message>
        <source>  --service NAME   perform a service (see below) on one source: each FILE in
                   turn, or the TEXT of --text, the primary selection
                   (--selection), the clipboard (--clipboard) or standard input
                   (--stdin); a running Tallyvox performs it, else this one
</source>
        <translation>  --service NAME   effectuer un service (voir plus bas) sur une source : chaque
                   FILE tour à tour, ou le TEXT de --text, la sélection primaire
                   (--selection), le presse-papiers (--clipboard) ou l’entrée
                   standard (--stdin) ; un Tallyvox déjà lancé l’effectue, sinon
                   celui-ci
</translation>
    </message>
    <message>
        <source>  --text TEXT      the text for --service
</source>
        <translation>  --text TEXT      le texte pour --service
</translation>
    </message>
    <message>
        <source>  --selection      read the primary selection (the text last selected) for --service
</source>
        <translation>  --selection      lire la sélection primaire (le dernier texte sélectionné)
                   pour --service
</translation>
    </message>
    <message>
        <source>  --clipboard      read the clipboard for --service
</source>
        <translation>  --clipboard      lire le presse-papiers pour --service
</translation>
    </message>
    <message>
        <source>  --stdin          read standard input for --service
</source>
        <translation>  --stdin          lire l’entrée standard pour --service
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
        <translation>  --console        ni fenêtre ni instance en cours : les alertes sont écrites en
                   lignes sur la sortie standard, et les fichiers ne sont pas
                   ouverts mais écrits sous la forme &quot;open PATH&quot; ; un PATH ou un
                   message contenant un caractère de contrôle (un saut de ligne
                   dans un nom de fichier, par exemple) est écrit entre
                   guillemets à la manière du shell, sous la forme $&apos;...&apos; ; le
                   texte placé dans le presse-papiers est conservé jusqu’à ce
                   qu’un autre programme l’ait récupéré, 10 secondes au plus
                   (dans une session Wayland, wl-copy le conserve)
</translation>
    </message>
    <message>
        <source>  --save-as PATH   in console mode, the answer to any save panel (none: cancel)
</source>
        <translation>  --save-as PATH   en mode console, la réponse à toute boîte d’enregistrement
                   (aucune : annuler)
</translation>
    </message>
    <message>
        <source>  --install-integration
                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo
                   for this user (under $XDG_DATA_HOME)
</source>
        <translation>  --install-integration
                   ajouter Tallyvox aux menus contextuels de Dolphin, Nautilus
                   et Nemo pour cet utilisateur (sous $XDG_DATA_HOME)
</translation>
    </message>
    <message>
        <source>  -h, --help       show this help
</source>
        <translation>  -h, --help       afficher cette aide
</translation>
    </message>
    <message>
        <source>  -v, --version    show the version

</source>
        <translation>  -v, --version    afficher la version

</translation>
    </message>
    <message>
        <source>Services (NAME is matched without regard to case):
</source>
        <translation>Services (NAME sans tenir compte de la casse) :
</translation>
    </message>
    <message>
        <source>  tallyvox         word list of a file, or of the text
</source>
        <translation>  tallyvox         liste de mots d’un fichier, ou du texte
</translation>
    </message>
    <message>
        <source>  wordCount        number of words of a file, or of the text
</source>
        <translation>  wordCount        nombre de mots d’un fichier, ou du texte
</translation>
    </message>
    <message>
        <source>  charCount        characters of a file&apos;s words, or of the text itself
</source>
        <translation>  charCount        caractères des mots d’un fichier, ou du texte lui-même
</translation>
    </message>
    <message>
        <source>  decodeBase64     decode Base64 text (or a file of it) and save the bytes
</source>
        <translation>  decodeBase64     décoder un texte Base64 (ou un fichier qui en contient) et
                   enregistrer les octets
</translation>
    </message>
    <message>
        <source>  spellOutNumber   spell the text&apos;s leading number out in words, onto the clipboard
</source>
        <translation>  spellOutNumber   écrire en toutes lettres le nombre en tête du texte, dans le
                   presse-papiers
</translation>
    </message>
    <message>
        <source>  saveGraphicData  save the text as a graphic file (an SVG image, for one)
</source>
        <translation>  saveGraphicData  enregistrer le texte comme fichier graphique (une image SVG,
                   par exemple)
</translation>
    </message>
    <message>
        <source>Text that is a file: URL or an absolute path of an existing file stands for that
file.

</source>
        <translation>Un texte qui est une URL file: ou le chemin absolu d’un fichier existant désigne
ce fichier.

</translation>
    </message>
    <message>
        <source>Settings:
</source>
        <translation>Réglages :
</translation>
    </message>
    <message>
        <source>  File &gt; Preferences writes them to Tallyvox.plist (see Files). Each is read
  when it is used, so a change applies to the next file. Defaults in brackets.

</source>
        <translation>  Fichier &gt; Préférences les écrit dans Tallyvox.plist (voir Fichiers). Chacun
  est lu au moment où il sert, une modification s’applique donc au fichier
  suivant. Valeurs par défaut entre crochets.

</translation>
    </message>
    <message>
        <source>  QuitWhenDone      true: quit after a batch run or a service [false]
</source>
        <translation>  QuitWhenDone      true : quitter après un traitement par lot ou un service
                    [false]
</translation>
    </message>
    <message>
        <source>  IncludeFrequency  true: each word&apos;s count follows it [true]
</source>
        <translation>  IncludeFrequency  true : chaque mot est suivi de son nombre [true]
</translation>
    </message>
    <message>
        <source>  SortBy            1: alphabetically; any other number: by frequency [1]
</source>
        <translation>  SortBy            1 : par ordre alphabétique ; tout autre nombre : par
                    fréquence [1]
</translation>
    </message>
    <message>
        <source>  SeparateBy        how a count follows its word: 1 &quot;word (3)&quot;, 2 a tab,
                    3 &quot;word,3&quot;, another number: no count [1]
</source>
        <translation>  SeparateBy        comment un nombre suit son mot : 1 &quot;word (3)&quot;, 2 une
                    tabulation, 3 &quot;word,3&quot;, un autre nombre : pas de nombre [1]
</translation>
    </message>
    <message>
        <source>  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,
                    5 a comma, another number: nothing [1]

</source>
        <translation>  LineStyle         ce qui suit chaque mot : 1 LF, 2 CR, 3 CR LF, 4 une espace,
                    5 une virgule, un autre nombre : rien [1]

</translation>
    </message>
    <message>
        <source>Word-list options:
</source>
        <translation>Options des listes de mots :
</translation>
    </message>
    <message>
        <source>  Settings as well, each off by default; with all of them off a list is made
  as the settings above say.

</source>
        <translation>  Ce sont aussi des réglages, chacun désactivé par défaut ; tous désactivés, une
  liste est faite comme le disent les réglages ci-dessus.

</translation>
    </message>
    <message>
        <source>  FoldCase          true: words that differ only in case are one entry,
                    written in their most frequent form [false]
</source>
        <translation>  FoldCase          true : les mots qui ne diffèrent que par la casse forment
                    une entrée, écrite sous sa forme la plus fréquente [false]
</translation>
    </message>
    <message>
        <source>  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,
                    LC_COLLATE or LANG does, also words of equal count [false]
</source>
        <translation>  DictionaryOrder   true : trier comme un dictionnaire de la langue de LC_ALL,
                    LC_COLLATE ou LANG, y compris les mots de même nombre
                    [false]
</translation>
    </message>
    <message>
        <source>  MinimumCount      leave out words counted fewer times [1]
</source>
        <translation>  MinimumCount      omettre les mots comptés moins de fois [1]
</translation>
    </message>
    <message>
        <source>  StopListPath      a UTF-8 file of words to leave out, one a line; # starts
                    a comment; ~/ and relative paths start at the home
                    folder [none]
</source>
        <translation>  StopListPath      un fichier UTF-8 de mots à omettre, un par ligne ; #
                    commence un commentaire ; ~/ et les chemins relatifs partent
                    du dossier personnel [aucun]
</translation>
    </message>
    <message>
        <source>  CombineFiles      true: a batch of several files makes one list of all
                    their words, Combined/Combined word list.txt [false]
</source>
        <translation>  CombineFiles      true : un lot de plusieurs fichiers donne une seule liste de
                    tous leurs mots, Combined/Combined word list.txt [false]
</translation>
    </message>
    <message>
        <source>  ListFormat        0: text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; the
                    list&apos;s name ends in .txt, .csv or .tsv [0]
</source>
        <translation>  ListFormat        0 : texte ; 1 : CSV (&quot;word,count&quot;, CR LF) ; 2 : TSV ; le nom
                    de la liste se termine par .txt, .csv ou .tsv [0]
</translation>
    </message>
    <message>
        <source>  IncludeRange      true: each word&apos;s range (files holding it), and over a
                    combined list&apos;s files Juilland&apos;s D and Gries&apos; DP; one
                    file: range 1, no dispersion (&quot;-&quot;, an empty cell) [false]
</source>
        <translation>  IncludeRange      true : l’étendue de chaque mot (fichiers qui le contiennent)
                    et, sur les fichiers d’une liste combinée, le D de Juilland
                    et le DP de Gries ; un fichier : étendue 1, pas de
                    dispersion (&quot;-&quot;, une cellule vide) [false]
</translation>
    </message>
    <message>
        <source>  IncludePerMillion true: each word&apos;s count per million words of the
                    text [false]
</source>
        <translation>  IncludePerMillion true : le nombre de chaque mot par million de mots du texte
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
        <translation>  ReferencePath     un document, un dossier de documents ou une liste de mots
                    CSV ou TSV de Tallyvox : la liste devient une liste de
                    mots-clés par rapport à elle, avec le nombre dans la
                    référence, la log-vraisemblance (G2), le log ratio et + ou -
                    ; ~/ et les chemins relatifs partent du dossier personnel
                    [aucun]
</translation>
    </message>
    <message>
        <source>  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p &lt; 0.01 [6.63]
</source>
        <translation>  KeynessThreshold  le plus petit G2 qu’une liste de mots-clés garde ; 6.63
                    correspond à p &lt; 0.01 [6.63]
</translation>
    </message>
    <message>
        <source>  NGramLength       1 to 5: each entry is a sequence of that many words,
                    joined by a space, never across a sentence end, a blank
                    line or a document&apos;s paragraph, cell or slide; a stop
                    word at either end leaves a sequence out [1]
</source>
        <translation>  NGramLength       de 1 à 5 : chaque entrée est une suite de ce nombre de mots,
                    joints par une espace, jamais à cheval sur une fin de
                    phrase, une ligne vide ou un paragraphe, une cellule ou une
                    diapositive d’un document ; un mot vide à l’une des
                    extrémités exclut la suite [1]
</translation>
    </message>
    <message>
        <source>Environment:
</source>
        <translation>Environnement :
</translation>
    </message>
    <message>
        <source>  XDG_CONFIG_HOME  settings in &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</source>
        <translation>  XDG_CONFIG_HOME  réglages dans &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</translation>
    </message>
    <message>
        <source>  XDG_DATA_HOME    word lists in &quot;Okaluna Software/Tallyvox/&quot;, context-menu
                   entries (~/.local/share)
</source>
        <translation>  XDG_DATA_HOME    listes de mots dans &quot;Okaluna Software/Tallyvox/&quot;, entrées des
                   menus contextuels (~/.local/share)
</translation>
    </message>
    <message>
        <source>  TMPDIR           temporary files, also the indexers&apos; (else
                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared
                   one gets a private folder of Tallyvox&apos;s own beneath it
</source>
        <translation>  TMPDIR           fichiers temporaires, y compris ceux des indexeurs (sinon
                   $XDG_RUNTIME_DIR/tallyvox ou /tmp/tallyvox-UID) ; un dossier
                   partagé reçoit en dessous un dossier privé propre à Tallyvox
</translation>
    </message>
    <message>
        <source>  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further
                            before it is ended (60)
</source>
        <translation>  TALLYVOX_INDEXER_TIMEOUT  secondes pendant lesquelles un indexeur peut ne rien
                            lire de plus avant d’être arrêté (60)
</translation>
    </message>
    <message>
        <source>  TALLYVOX_JOBS    files read at once, at most one a processor core (one a
                   core)
</source>
        <translation>  TALLYVOX_JOBS    fichiers lus en même temps, au plus un par cœur de processeur
                   (un par cœur)
</translation>
    </message>
    <message>
        <source>  LANG, LC_ALL     the language of spelled-out numbers and of counts
</source>
        <translation>  LANG, LC_ALL     la langue des nombres écrits en toutes lettres et des nombres
</translation>
    </message>
    <message>
        <source>  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)

</source>
        <translation>  LC_COLLATE       l’ordre de dictionnaire de DictionaryOrder (après LC_ALL)

</translation>
    </message>
    <message>
        <source>Files:
</source>
        <translation>Fichiers :
</translation>
    </message>
    <message>
        <source>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several
                                                      files
</source>
        <translation>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    les réglages
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           les listes de mots
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  les listes de plusieurs
                                                      fichiers
</translation>
    </message>
    <message>
        <source>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a
                                                      service, kept for a day

</source>
        <translation>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              texte sélectionné d’un
                                                      service, gardé un jour

</translation>
    </message>
    <message>
        <source>Exit status:
</source>
        <translation>Code de sortie :
</translation>
    </message>
    <message>
        <source>  0  success, or the request was handed to the running Tallyvox
</source>
        <translation>  0  succès, ou la demande a été transmise au Tallyvox en cours
</translation>
    </message>
    <message>
        <source>  1  a file could not be processed, its word list or a decoded or graphic file
     not written (console mode),
     the display could not be opened for the window, or to read --selection or
     --clipboard (console mode), the running Tallyvox did not answer, or the
     context-menu entries could not be installed
</source>
        <translation>  1  un fichier n’a pas pu être traité, sa liste de mots ou un fichier décodé ou
     graphique n’a pas été écrit (mode console), l’affichage n’a pas pu être
     ouvert pour la fenêtre, ou pour lire --selection ou --clipboard (mode
     console), le Tallyvox en cours n’a pas répondu, ou les entrées des menus
     contextuels n’ont pas pu être installées
</translation>
    </message>
    <message>
        <source>  2  the command line could not be understood
</source>
        <translation>  2  la ligne de commande n’a pas pu être comprise
</translation>
    </message>
    <message>
        <source>  3  a word list is empty because its file could not be read, is locked by a
     password or is not a document Tallyvox reads (console mode)
</source>
        <translation>  3  une liste de mots est vide parce que son fichier n’a pas pu être lu, est
     verrouillé par un mot de passe ou n’est pas un document que Tallyvox lit
     (mode console)
</translation>
    </message>
    <message>
        <source>unknown option %1</source>
        <translation>option inconnue %1</translation>
    </message>
    <message>
        <source>tallyvox: %1
Try &apos;tallyvox --help&apos;.
</source>
        <translation>tallyvox : %1
Essayez « tallyvox --help ».
</translation>
    </message>
    <message>
        <source>  LemmaListPath     a UTF-8 file of lines &quot;headword -&gt; form, form, ...&quot;; #
                    starts a comment; each headword is one entry with its
                    forms&apos; counts added up and the forms found after it,
                    &quot;{form N, ...}&quot; (CSV and TSV: a column &quot;forms&quot;); ~/
                    and relative paths start at the home folder [none]
</source>
        <translation>  LemmaListPath     un fichier UTF-8 de lignes &quot;headword -&gt; form, form, ...&quot; ; #
                    commence un commentaire ; chaque lemme forme une entrée où
                    les nombres de ses formes sont additionnés, suivie des
                    formes trouvées, &quot;{form N, ...}&quot; (CSV et TSV : une colonne
                    &quot;forms&quot;) ; ~/ et les chemins relatifs partent du dossier
                    personnel [aucun]
</translation>
    </message>
    <message>
        <source>  Lemmatize         true: with no LemmaListPath, forms are grouped under their
                    stem in a Hunspell dictionary (Debian&apos;s hunspell-*
                    packages); words it does not know stay as they are
                    [false]
</source>
        <translation>  Lemmatize         true : sans LemmaListPath, les formes sont regroupées sous
                    leur radical dans un dictionnaire Hunspell (paquets
                    hunspell-* de Debian) ; les mots qu’il ne connaît pas
                    restent tels quels [false]
</translation>
    </message>
    <message>
        <source>  LemmaLanguage     the dictionary&apos;s name, as en_US [the locale&apos;s]

</source>
        <translation>  LemmaLanguage     le nom du dictionnaire, par exemple en_US [celui de la
                    locale]

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
        <translation>  IncludeTotals     true : la liste se termine par &quot;# N words in the text, N
                    listed; N distinct words, N listed; type/token ratio R&quot;, le
                    rapport types/occurrences standardisé sur des tranches de
                    1000 mots (aucun pour un texte plus court) et la longueur
                    moyenne des mots en caractères (et les fichiers, les mots
                    de la référence) ; CSV et TSV : des lignes après une ligne
                    vide [false]
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleDesktop</name>
    <message>
        <source>tallyvox: the open panel is not available in console mode
</source>
        <translation>tallyvox : la boîte d’ouverture n’est pas disponible en mode console
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleMode</name>
    <message>
        <source>tallyvox: the selection holds nothing
</source>
        <translation>tallyvox : la sélection est vide
</translation>
    </message>
</context>
<context>
    <name>tallyvox::DecodeAndSave</name>
    <message>
        <source>The file &quot;%1&quot; was not saved: %2.</source>
        <translation>Le fichier « %1 » n’a pas été enregistré : %2.</translation>
    </message>
    <message>
        <source>The text could not be base64 decoded</source>
        <translation>Le texte n’a pas pu être décodé en Base64</translation>
    </message>
    <message>
        <source>The text could not be decoded as UTF8</source>
        <translation>Le texte n’a pas pu être décodé en UTF-8</translation>
    </message>
</context>
<context>
    <name>tallyvox::Integration</name>
    <message>
        <source>tallyvox: could not write %1
</source>
        <translation>tallyvox : impossible d’écrire %1
</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferenceStore</name>
    <message>
        <source>The settings file &quot;%1&quot; is no regular file; Tallyvox uses its default settings and sets it aside at the first change.</source>
        <translation>Le fichier de réglages « %1 » n’est pas un fichier ordinaire ; Tallyvox utilise ses réglages par défaut et le met de côté à la première modification.</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferencesWindow</name>
    <message>
        <source>Each entry is a sequence of this many words, never across a sentence end or a paragraph. A stop word at either end leaves a sequence out. 1: single words.</source>
        <translation>Chaque entrée est une suite de ce nombre de mots, jamais à cheval sur une fin de phrase ou un paragraphe. Un mot vide à l’une des extrémités exclut la suite. 1 : mots isolés.</translation>
    </message>
    <message>
        <source>Words per entry:</source>
        <translation>Mots par entrée :</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucune</translation>
    </message>
    <message>
        <source>A UTF-8 text file of lines &quot;headword -&gt; form, form, ...&quot;; each headword becomes one entry with its forms&apos; counts added up. Empty: none.</source>
        <translation>Un fichier texte UTF-8 de lignes « lemme -&gt; forme, forme, ... » ; chaque lemme devient une entrée où les nombres de ses formes sont additionnés. Vide : aucune.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Choisir…</translation>
    </message>
    <message>
        <source>Choose the lemma file.</source>
        <translation>Choisir le fichier de lemmes.</translation>
    </message>
    <message>
        <source>Lemma list:</source>
        <translation>Liste de lemmes :</translation>
    </message>
    <message>
        <source>Choose a Stop List</source>
        <translation>Choisir une liste de mots vides</translation>
    </message>
    <message>
        <source>Choose a Lemma List</source>
        <translation>Choisir une liste de lemmes</translation>
    </message>
    <message>
        <source>Choose a Reference</source>
        <translation>Choisir une référence</translation>
    </message>
    <message>
        <source>Group word forms by a dictionary</source>
        <translation>Regrouper les formes des mots selon un dictionnaire</translation>
    </message>
    <message>
        <source>Without a lemma list, each word is counted under its stem in the Hunspell dictionary chosen below (goes, going: go). Words it does not know stay as they are.</source>
        <translation>Sans liste de lemmes, chaque mot est compté sous son radical dans le dictionnaire Hunspell choisi ci-dessous (goes, going : go). Les mots qu’il ne connaît pas restent tels quels.</translation>
    </message>
    <message>
        <source>The Hunspell dictionary that groups the word forms: those installed (Debian&apos;s hunspell-* packages).</source>
        <translation>Le dictionnaire Hunspell qui regroupe les formes des mots : ceux qui sont installés (paquets hunspell-* de Debian).</translation>
    </message>
    <message>
        <source>The locale&apos;s (%1)</source>
        <translation>Celui de la locale (%1)</translation>
    </message>
    <message>
        <source>Dictionary:</source>
        <translation>Dictionnaire :</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (non installé)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ProcessFile</name>
    <message>
        <source>Word count: %1</source>
        <translation>Nombre de mots : %1</translation>
    </message>
    <message>
        <source>Content character count: %1</source>
        <translation>Nombre de caractères du contenu : %1</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is too large to decode: Tallyvox decodes files of up to 32 MB.</source>
        <translation>Le fichier « %1 » est trop volumineux pour être décodé : Tallyvox décode les fichiers jusqu’à 32 Mo.</translation>
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
        <translation>Ouvrir</translation>
    </message>
</context>
<context>
    <name>tallyvox::ServiceDispatcher</name>
    <message>
        <source>Character count: %1</source>
        <translation>Nombre de caractères : %1</translation>
    </message>
    <message>
        <source>Tallyvox could not read &quot;%1&quot;.</source>
        <translation>Tallyvox n’a pas pu lire « %1 ».</translation>
    </message>
</context>
<context>
    <name>tallyvox::SpellOutNumber</name>
    <message>
        <source>The text could not be spelled out.</source>
        <translation>Le texte n’a pas pu être écrit en toutes lettres.</translation>
    </message>
    <message>
        <source>The following &quot;spell out&quot; has been put on the clipboard: %1</source>
        <translation>Ce nombre en toutes lettres a été placé dans le presse-papiers : %1</translation>
    </message>
</context>
<context>
    <name>tallyvox::Startup</name>
    <message>
        <source>tallyvox: cannot open the display%1 (%2), so there is no selection to read
</source>
        <translation>tallyvox : impossible d’ouvrir l’affichage%1 (%2), il n’y a donc aucune sélection à lire
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display%1 (%2); the clipboard is left as it is
</source>
        <translation>tallyvox : impossible d’ouvrir l’affichage%1 (%2) ; le presse-papiers reste tel quel
</translation>
    </message>
    <message>
        <source>tallyvox: the running instance did not answer
</source>
        <translation>tallyvox : l’instance en cours n’a pas répondu
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display to show the window (--console runs without one)
</source>
        <translation>tallyvox : impossible d’ouvrir l’affichage pour montrer la fenêtre (--console fonctionne sans)
</translation>
    </message>
</context>
<context>
    <name>tallyvox::WordList</name>
    <message>
        <source>The stop list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>La liste de mots vides « %1 » est illisible ; les listes de mots sont donc faites sans elle.</translation>
    </message>
    <message>
        <source>The lemma list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>La liste de lemmes « %1 » est illisible ; les listes de mots sont donc faites sans elle.</translation>
    </message>
    <message>
        <source>The reference &quot;%1&quot; cannot be read, so no keyword list is made.</source>
        <translation>La référence « %1 » est illisible ; aucune liste de mots-clés n’est donc faite.</translation>
    </message>
</context>
</TS>
