<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es_ES">
<context>
    <name>ErrorWindow</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Drop documents here</source>
        <translation>Suelte documentos aquí</translation>
    </message>
    <message>
        <source>Drop documents here, or open them with Tallyvox from the file manager</source>
        <translation>Suelte documentos aquí, o ábralos con Tallyvox desde el gestor de archivos</translation>
    </message>
    <message>
        <source>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Drop documents here</source>
        <translation>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Suelte documentos aquí</translation>
    </message>
    <message>
        <source>Extracting words...</source>
        <translation>Extrayendo palabras...</translation>
    </message>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Para extraer palabras, use Archivo &gt; Abrir, suelte uno o varios archivos en esta ventana, o ábralos con Tallyvox desde el gestor de archivos.</translation>
    </message>
    <message>
        <source>Files begun</source>
        <translation>Archivos empezados</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Stop once the file in progress is done (Esc)</source>
        <translation>Detener cuando termine el archivo en curso (Esc)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Archivo</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>A&amp;yuda</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Abrir...</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Preferencias...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
    <message>
        <source>&amp;About Tallyvox</source>
        <translation>A&amp;cerca de Tallyvox</translation>
    </message>
    <message>
        <source>Tallyvox &amp;Help</source>
        <translation>&amp;Ayuda de Tallyvox</translation>
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
        <translation>Preferencias de Tallyvox</translation>
    </message>
    <message>
        <source>Sort words:</source>
        <translation>Ordenar palabras:</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>Alfabéticamente</translation>
    </message>
    <message>
        <source>By frequency</source>
        <translation>Por frecuencia</translation>
    </message>
    <message>
        <source>Include frequency</source>
        <translation>Incluir frecuencia</translation>
    </message>
    <message>
        <source>Show counts as:</source>
        <translation>Mostrar recuentos como:</translation>
    </message>
    <message>
        <source>word (3)</source>
        <translation>palabra (3)</translation>
    </message>
    <message>
        <source>word, tab, 3</source>
        <translation>palabra, tabulador, 3</translation>
    </message>
    <message>
        <source>word,3</source>
        <translation>palabra,3</translation>
    </message>
    <message>
        <source>Separate words by:</source>
        <translation>Separar palabras con:</translation>
    </message>
    <message>
        <source>New line (LF)</source>
        <translation>Salto de línea (LF)</translation>
    </message>
    <message>
        <source>Carriage return (CR)</source>
        <translation>Retorno de carro (CR)</translation>
    </message>
    <message>
        <source>CR and LF</source>
        <translation>CR y LF</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>Espacio</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>Coma</translation>
    </message>
    <message>
        <source>Quit when done</source>
        <translation>Salir al terminar</translation>
    </message>
    <message>
        <source>Word-list options</source>
        <translation>Opciones de las listas de palabras</translation>
    </message>
    <message>
        <source>Words that differ only in case count as one entry, written as they occur most often. Folding follows Unicode: ß and SS are one word.</source>
        <translation>Las palabras que solo difieren en mayúsculas y minúsculas cuentan como una entrada, escrita en su forma más frecuente. La unificación sigue Unicode: ß y SS son una misma palabra.</translation>
    </message>
    <message>
        <source>Treat case as one (THE, The, the)</source>
        <translation>No distinguir mayúsculas (EL, El, el)</translation>
    </message>
    <message>
        <source>Alphabetical order follows your language (LC_COLLATE or LANG), so é sorts beside e; by frequency, words of equal count follow it too. Off: by character codes, as before.</source>
        <translation>El orden alfabético sigue su idioma (LC_COLLATE o LANG), así é se ordena junto a e; por frecuencia, también lo siguen las palabras con el mismo recuento. Desactivado: por códigos de carácter, como antes.</translation>
    </message>
    <message>
        <source>Sort as a dictionary does</source>
        <translation>Ordenar como un diccionario</translation>
    </message>
    <message>
        <source>Minimum count:</source>
        <translation>Recuento mínimo:</translation>
    </message>
    <message>
        <source>Words counted fewer times than this are left out. 1 keeps every word.</source>
        <translation>Se omiten las palabras contadas menos veces. 1 conserva todas las palabras.</translation>
    </message>
    <message>
        <source>Stop list:</source>
        <translation>Lista de palabras vacías:</translation>
    </message>
    <message>
        <source>A UTF-8 text file of words to leave out, one a line; # starts a comment. Compared without case when case is treated as one. Empty: none.</source>
        <translation>Un archivo de texto UTF-8 con las palabras que omitir, una por línea; # inicia un comentario. Se comparan sin distinguir mayúsculas cuando estas no se distinguen. Vacío: ninguna.</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>Choose the stop list&apos;s file.</source>
        <translation>Elegir el archivo de la lista de palabras vacías.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Elegir…</translation>
    </message>
    <message>
        <source>Several files opened at once make one list of all their words, in the Combined folder beside the other lists. A single file still gets its own list.</source>
        <translation>Varios archivos abiertos a la vez forman una sola lista con todas sus palabras, en la carpeta Combined junto a las demás listas. Un archivo suelto sigue teniendo su propia lista.</translation>
    </message>
    <message>
        <source>One list for files dropped together</source>
        <translation>Una lista para los archivos soltados juntos</translation>
    </message>
    <message>
        <source>List format:</source>
        <translation>Formato de la lista:</translation>
    </message>
    <message>
        <source>Text, as set above; CSV (word,count) for spreadsheets; or TSV (tab-separated). CSV and TSV have a header row and ignore how counts and words are separated.</source>
        <translation>Texto, según lo ajustado arriba; CSV (palabra,recuento) para hojas de cálculo; o TSV (separado por tabuladores). CSV y TSV tienen una fila de encabezado y no tienen en cuenta cómo se separan recuentos y palabras.</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texto</translation>
    </message>
    <message>
        <source>CSV for spreadsheets</source>
        <translation>CSV para hojas de cálculo</translation>
    </message>
    <message>
        <source>TSV, tab-separated</source>
        <translation>TSV, separado por tabuladores</translation>
    </message>
    <message>
        <source>End the list with its totals</source>
        <translation>Terminar la lista con sus totales</translation>
    </message>
    <message>
        <source>Each word also gets its range: how many files hold it. A list of several files also gets Juilland&apos;s D and Gries&apos; DP, how evenly the word is spread over them. A list of one file has range 1 and no dispersion (shown as -).</source>
        <translation>Cada palabra recibe también su rango: cuántos archivos la contienen. Una lista de varios archivos recibe además la D de Juilland y la DP de Gries, que miden lo uniforme de su reparto. Una lista de un solo archivo tiene rango 1 y ninguna dispersión (se muestra -).</translation>
    </message>
    <message>
        <source>Range and dispersion over the files</source>
        <translation>Rango y dispersión en los archivos</translation>
    </message>
    <message>
        <source>Each word also gets its frequency per million words of the text it came from, so that lists of texts of different lengths compare.</source>
        <translation>Cada palabra recibe también su frecuencia por millón de palabras de su texto, para comparar listas de textos de distinta longitud.</translation>
    </message>
    <message>
        <source>Frequency per million words</source>
        <translation>Frecuencia por millón de palabras</translation>
    </message>
    <message>
        <source>Reference:</source>
        <translation>Referencia:</translation>
    </message>
    <message>
        <source>A document, a folder of documents, or a CSV or TSV word list made by Tallyvox. The list then becomes a keyword list: the words used markedly more (+) or less (-) than in the reference, with log-likelihood and log ratio. Empty: an ordinary list.</source>
        <translation>Un documento, una carpeta de documentos o una lista de palabras CSV o TSV hecha por Tallyvox. La lista pasa a ser una lista de palabras clave: las palabras usadas claramente más (+) o menos (-) que en la referencia, con log-verosimilitud y log ratio. Vacío: una lista normal.</translation>
    </message>
    <message>
        <source>Choose the reference&apos;s file; type a folder&apos;s path into the field.</source>
        <translation>Elegir el archivo de referencia; escriba la ruta de una carpeta en el campo.</translation>
    </message>
    <message>
        <source>Keyness threshold:</source>
        <translation>Umbral de relevancia:</translation>
    </message>
    <message>
        <source>A keyword list keeps the words whose log-likelihood is at least this. 3.84 is p &lt; 0.05, 6.63 is p &lt; 0.01, 10.83 is p &lt; 0.001, 15.13 is p &lt; 0.0001.</source>
        <translation>Una lista de palabras clave conserva las palabras cuya log-verosimilitud alcanza al menos este valor. 3.84 es p &lt; 0.05, 6.63 es p &lt; 0.01, 10.83 es p &lt; 0.001, 15.13 es p &lt; 0.0001.</translation>
    </message>
    <message>
        <source>The list ends with its totals: the words of the text and those listed, the distinct words of each, the type/token ratio of the text, its standardised type/token ratio over runs of 1000 words and its mean word length, and the files or the reference where there are. A text list gets a last line starting with #; CSV and TSV get rows after an empty row.</source>
        <translation>La lista termina con sus totales: las palabras del texto y las listadas, las palabras distintas de cada uno, la proporción tipo/ocurrencia del texto, su proporción tipo/ocurrencia estandarizada en tramos de 1000 palabras y su longitud media de palabra y, si los hay, los archivos o la referencia. Una lista de texto recibe una última línea que empieza por #; CSV y TSV reciben filas tras una fila vacía.</translation>
    </message>
</context>
<context>
    <name>WordList</name>
    <message>
        <source>No Hunspell dictionary &quot;%1&quot; is installed, so the word lists are made without grouping word forms. Debian&apos;s hunspell packages install dictionaries (hunspell-en-us for en_US).</source>
        <translation>No hay instalado ningún diccionario Hunspell «%1», así que las listas de palabras se hacen sin agrupar las formas de las palabras. Los paquetes hunspell de Debian instalan diccionarios (hunspell-en-us para en_US).</translation>
    </message>
</context>
<context>
    <name>tallyvox::AboutWindow</name>
    <message>
        <source>About Tallyvox</source>
        <translation>Acerca de Tallyvox</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;The project&apos;s page&lt;/a&gt; (in the user guide)</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;La página del proyecto&lt;/a&gt; (en la guía del usuario)</translation>
    </message>
    <message>
        <source>Turns documents into word lists with their counts.</source>
        <translation>Convierte documentos en listas de palabras con sus recuentos.</translation>
    </message>
    <message>
        <source>Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)</source>
        <translation>Licencia: GNU General Public License, versión 3 o posterior (GPL-3.0-or-later)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ApplicationShell</name>
    <message>
        <source>Select one or more files to extract words from.</source>
        <translation>Seleccione uno o varios archivos de los que extraer palabras.</translation>
    </message>
    <message>
        <source>Bye.</source>
        <translation>Adiós.</translation>
    </message>
    <message>
        <source>View in Okaluna Website...</source>
        <translation>Ver en el sitio web de Okaluna...</translation>
    </message>
    <message>
        <source>View in Software Centre...</source>
        <translation>Ver en el centro de software...</translation>
    </message>
</context>
<context>
    <name>tallyvox::BatchRunner</name>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>Para extraer palabras, use Archivo &gt; Abrir, suelte uno o varios archivos en esta ventana, o ábralos con Tallyvox desde el gestor de archivos.</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Archivo: %1</translation>
    </message>
    <message>
        <source>An error occurred while launching &quot;%1&quot;   (Error code: %2)</source>
        <translation>Se produjo un error al abrir «%1»   (código de error: %2)</translation>
    </message>
    <message>
        <source>One or more items you dropped on Tallyvox was not a file.</source>
        <translation>Uno o varios de los elementos soltados en Tallyvox no eran archivos.</translation>
    </message>
    <message>
        <source>Tallyvox only extracts words from files.</source>
        <translation>Tallyvox solo extrae palabras de archivos.</translation>
    </message>
    <message>
        <source>%1: %2% read</source>
        <translation>%1: %2 % leído</translation>
    </message>
    <message>
        <source>%1: reading…</source>
        <translation>%1: leyendo…</translation>
    </message>
    <message>
        <source>Stopping after this file…</source>
        <translation>Deteniendo tras este archivo…</translation>
    </message>
    <message>
        <source>%1 — stopping after this file…</source>
        <translation>%1 — deteniendo tras este archivo…</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is empty: %2.</source>
        <translation>La lista de palabras de «%1» está vacía: %2.</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is incomplete: %2.</source>
        <translation>La lista de palabras de «%1» está incompleta: %2.</translation>
    </message>
    <message>
        <source>Some word lists are empty or incomplete: %1.</source>
        <translation>Algunas listas de palabras están vacías o incompletas: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>«%1» (%2)</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>el archivo está vacío</translation>
    </message>
    <message>
        <source>the document holds no words</source>
        <translation>el documento no contiene palabras</translation>
    </message>
    <message>
        <source>the file cannot be read (permission denied)</source>
        <translation>el archivo no se puede leer (permiso denegado)</translation>
    </message>
    <message>
        <source>the document is password-protected</source>
        <translation>el documento está protegido con contraseña</translation>
    </message>
    <message>
        <source>the file is not a document Tallyvox reads</source>
        <translation>el archivo no es un documento que Tallyvox lea</translation>
    </message>
    <message>
        <source>its path is longer than Tallyvox can read (254 bytes)</source>
        <translation>su ruta es más larga de lo que Tallyvox puede leer (254 bytes)</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>no se pudo leer el archivo</translation>
    </message>
    <message>
        <source>it was cut at a limit</source>
        <translation>se cortó en un límite</translation>
    </message>
    <message>
        <source>it was cut at a limit (%1)</source>
        <translation>se cortó en un límite (%1)</translation>
    </message>
</context>
<context>
    <name>tallyvox::CommandLine</name>
    <message>
        <source>--save-as needs a path</source>
        <translation>--save-as necesita una ruta</translation>
    </message>
    <message>
        <source>--service needs a service name</source>
        <translation>--service necesita un nombre de servicio</translation>
    </message>
    <message>
        <source>--text needs a text</source>
        <translation>--text necesita un texto</translation>
    </message>
    <message>
        <source>--save-as works with --console only</source>
        <translation>--save-as solo funciona con --console</translation>
    </message>
    <message>
        <source>--text, --selection, --clipboard and --stdin work with --service only</source>
        <translation>--text, --selection, --clipboard y --stdin solo funcionan con --service</translation>
    </message>
    <message>
        <source>--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin</source>
        <translation>--service admite uno solo de FILE..., --text TEXT, --selection, --clipboard o --stdin</translation>
    </message>
    <message>
        <source>Usage: tallyvox [FILE...]
       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
       tallyvox --install-integration

</source>
        <translation>Uso: tallyvox [FILE...]
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
        <translation>Convierte documentos en listas de palabras. Cada archivo (FILE) se procesa como
si se soltara en la ventana: sus palabras, con sus recuentos, se escriben en un
archivo de texto que se abre en el editor de texto. Un Tallyvox ya en marcha
recibe los archivos en lugar de abrirse una segunda ventana.

</translation>
    </message>
    <message>
        <source>Options:
</source>
        <translation>Opciones:
</translation>
    </message>
    <message>
        <source>  --service NAME   perform a service (see below) on one source: each FILE in
                   turn, or the TEXT of --text, the primary selection
                   (--selection), the clipboard (--clipboard) or standard input
                   (--stdin); a running Tallyvox performs it, else this one
</source>
        <translation>  --service NAME   realizar un servicio (véase abajo) sobre una fuente: cada
                   FILE por turno, o el TEXT de --text, la selección primaria
                   (--selection), el portapapeles (--clipboard) o la entrada
                   estándar (--stdin); lo realiza un Tallyvox ya en marcha, si
                   no, este
</translation>
    </message>
    <message>
        <source>  --text TEXT      the text for --service
</source>
        <translation>  --text TEXT      el texto para --service
</translation>
    </message>
    <message>
        <source>  --selection      read the primary selection (the text last selected) for --service
</source>
        <translation>  --selection      leer la selección primaria (el último texto seleccionado)
                   para --service
</translation>
    </message>
    <message>
        <source>  --clipboard      read the clipboard for --service
</source>
        <translation>  --clipboard      leer el portapapeles para --service
</translation>
    </message>
    <message>
        <source>  --stdin          read standard input for --service
</source>
        <translation>  --stdin          leer la entrada estándar para --service
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
        <translation>  --console        sin ventana ni instancia en marcha: los avisos se escriben
                   como líneas en la salida estándar, y los archivos no se abren
                   sino que se escriben como &quot;open PATH&quot;; un PATH o un mensaje
                   con un carácter de control (un salto de línea en un nombre de
                   archivo, por ejemplo) se escribe entrecomillado al modo del
                   shell, como $&apos;...&apos;; el texto puesto en el portapapeles se
                   conserva hasta que otro programa lo haya recogido, 10
                   segundos como mucho (en una sesión Wayland lo conserva
                   wl-copy)
</translation>
    </message>
    <message>
        <source>  --save-as PATH   in console mode, the answer to any save panel (none: cancel)
</source>
        <translation>  --save-as PATH   en modo consola, la respuesta a cualquier diálogo de guardar
                   (ninguna: cancelar)
</translation>
    </message>
    <message>
        <source>  --install-integration
                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo
                   for this user (under $XDG_DATA_HOME)
</source>
        <translation>  --install-integration
                   añadir Tallyvox a los menús contextuales de Dolphin, Nautilus
                   y Nemo para este usuario (bajo $XDG_DATA_HOME)
</translation>
    </message>
    <message>
        <source>  -h, --help       show this help
</source>
        <translation>  -h, --help       mostrar esta ayuda
</translation>
    </message>
    <message>
        <source>  -v, --version    show the version

</source>
        <translation>  -v, --version    mostrar la versión

</translation>
    </message>
    <message>
        <source>Services (NAME is matched without regard to case):
</source>
        <translation>Servicios (NAME sin distinguir mayúsculas):
</translation>
    </message>
    <message>
        <source>  tallyvox         word list of a file, or of the text
</source>
        <translation>  tallyvox         lista de palabras de un archivo, o del texto
</translation>
    </message>
    <message>
        <source>  wordCount        number of words of a file, or of the text
</source>
        <translation>  wordCount        número de palabras de un archivo, o del texto
</translation>
    </message>
    <message>
        <source>  charCount        characters of a file&apos;s words, or of the text itself
</source>
        <translation>  charCount        caracteres de las palabras de un archivo, o del propio texto
</translation>
    </message>
    <message>
        <source>  decodeBase64     decode Base64 text (or a file of it) and save the bytes
</source>
        <translation>  decodeBase64     decodificar texto Base64 (o un archivo con él) y guardar los
                   bytes
</translation>
    </message>
    <message>
        <source>  spellOutNumber   spell the text&apos;s leading number out in words, onto the clipboard
</source>
        <translation>  spellOutNumber   escribir con letras el número inicial del texto, en el
                   portapapeles
</translation>
    </message>
    <message>
        <source>  saveGraphicData  save the text as a graphic file (an SVG image, for one)
</source>
        <translation>  saveGraphicData  guardar el texto como archivo gráfico (una imagen SVG, por
                   ejemplo)
</translation>
    </message>
    <message>
        <source>Text that is a file: URL or an absolute path of an existing file stands for that
file.

</source>
        <translation>Un texto que sea una URL file: o la ruta absoluta de un archivo existente
representa ese archivo.

</translation>
    </message>
    <message>
        <source>Settings:
</source>
        <translation>Configuración:
</translation>
    </message>
    <message>
        <source>  File &gt; Preferences writes them to Tallyvox.plist (see Files). Each is read
  when it is used, so a change applies to the next file. Defaults in brackets.

</source>
        <translation>  Archivo &gt; Preferencias la escribe en Tallyvox.plist (véase Archivos). Cada
  ajuste se lee cuando se usa, así que un cambio se aplica al siguiente archivo.
  Valores predeterminados entre corchetes.

</translation>
    </message>
    <message>
        <source>  QuitWhenDone      true: quit after a batch run or a service [false]
</source>
        <translation>  QuitWhenDone      true: salir tras un procesamiento por lotes o un servicio
                    [false]
</translation>
    </message>
    <message>
        <source>  IncludeFrequency  true: each word&apos;s count follows it [true]
</source>
        <translation>  IncludeFrequency  true: cada palabra va seguida de su recuento [true]
</translation>
    </message>
    <message>
        <source>  SortBy            1: alphabetically; any other number: by frequency [1]
</source>
        <translation>  SortBy            1: alfabéticamente; cualquier otro número: por frecuencia
                    [1]
</translation>
    </message>
    <message>
        <source>  SeparateBy        how a count follows its word: 1 &quot;word (3)&quot;, 2 a tab,
                    3 &quot;word,3&quot;, another number: no count [1]
</source>
        <translation>  SeparateBy        cómo sigue un recuento a su palabra: 1 &quot;word (3)&quot;, 2 un
                    tabulador, 3 &quot;word,3&quot;, otro número: sin recuento [1]
</translation>
    </message>
    <message>
        <source>  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,
                    5 a comma, another number: nothing [1]

</source>
        <translation>  LineStyle         qué sigue a cada palabra: 1 LF, 2 CR, 3 CR LF, 4 un espacio,
                    5 una coma, otro número: nada [1]

</translation>
    </message>
    <message>
        <source>Word-list options:
</source>
        <translation>Opciones de las listas de palabras:
</translation>
    </message>
    <message>
        <source>  Settings as well, each off by default; with all of them off a list is made
  as the settings above say.

</source>
        <translation>  También son ajustes, todos desactivados por defecto; con todos desactivados,
  la lista se hace según los ajustes anteriores.

</translation>
    </message>
    <message>
        <source>  FoldCase          true: words that differ only in case are one entry,
                    written in their most frequent form [false]
</source>
        <translation>  FoldCase          true: las palabras que solo difieren en mayúsculas son una
                    entrada, escrita en su forma más frecuente [false]
</translation>
    </message>
    <message>
        <source>  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,
                    LC_COLLATE or LANG does, also words of equal count [false]
</source>
        <translation>  DictionaryOrder   true: ordenar como un diccionario del idioma de LC_ALL,
                    LC_COLLATE o LANG, también las palabras con igual recuento
                    [false]
</translation>
    </message>
    <message>
        <source>  MinimumCount      leave out words counted fewer times [1]
</source>
        <translation>  MinimumCount      omitir las palabras contadas menos veces [1]
</translation>
    </message>
    <message>
        <source>  StopListPath      a UTF-8 file of words to leave out, one a line; # starts
                    a comment; ~/ and relative paths start at the home
                    folder [none]
</source>
        <translation>  StopListPath      un archivo UTF-8 de palabras que omitir, una por línea; #
                    inicia un comentario; ~/ y las rutas relativas parten de la
                    carpeta personal [ninguna]
</translation>
    </message>
    <message>
        <source>  CombineFiles      true: a batch of several files makes one list of all
                    their words, Combined/Combined word list.txt [false]
</source>
        <translation>  CombineFiles      true: un lote de varios archivos forma una sola lista con
                    todas sus palabras, Combined/Combined word list.txt [false]
</translation>
    </message>
    <message>
        <source>  ListFormat        0: text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; the
                    list&apos;s name ends in .txt, .csv or .tsv [0]
</source>
        <translation>  ListFormat        0: texto; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; el nombre de
                    la lista termina en .txt, .csv o .tsv [0]
</translation>
    </message>
    <message>
        <source>  IncludeRange      true: each word&apos;s range (files holding it), and over a
                    combined list&apos;s files Juilland&apos;s D and Gries&apos; DP; one
                    file: range 1, no dispersion (&quot;-&quot;, an empty cell) [false]
</source>
        <translation>  IncludeRange      true: el rango de cada palabra (archivos que la contienen)
                    y, sobre los archivos de una lista combinada, la D de
                    Juilland y la DP de Gries; un archivo: rango 1, sin
                    dispersión (&quot;-&quot;, una celda vacía) [false]
</translation>
    </message>
    <message>
        <source>  IncludePerMillion true: each word&apos;s count per million words of the
                    text [false]
</source>
        <translation>  IncludePerMillion true: el recuento de cada palabra por millón de palabras del
                    texto [false]
</translation>
    </message>
    <message>
        <source>  ReferencePath     a document, a folder of documents or a CSV or TSV word
                    list of Tallyvox&apos;s: the list becomes a keyword list
                    against it, with the reference count, log-likelihood
                    (G2), log ratio and + or -; ~/ and relative paths start
                    at the home folder [none]
</source>
        <translation>  ReferencePath     un documento, una carpeta de documentos o una lista de
                    palabras CSV o TSV de Tallyvox: la lista pasa a ser una
                    lista de palabras clave frente a ella, con el recuento en la
                    referencia, la log-verosimilitud (G2), el log ratio y + o -;
                    ~/ y las rutas relativas parten de la carpeta personal
                    [ninguna]
</translation>
    </message>
    <message>
        <source>  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p &lt; 0.01 [6.63]
</source>
        <translation>  KeynessThreshold  el menor G2 que conserva una lista de palabras clave; 6.63
                    es p &lt; 0.01 [6.63]
</translation>
    </message>
    <message>
        <source>  NGramLength       1 to 5: each entry is a sequence of that many words,
                    joined by a space, never across a sentence end, a blank
                    line or a document&apos;s paragraph, cell or slide; a stop
                    word at either end leaves a sequence out [1]
</source>
        <translation>  NGramLength       de 1 a 5: cada entrada es una secuencia de ese número de
                    palabras, unidas por un espacio, nunca a través de un final
                    de oración, una línea en blanco o un párrafo, celda o
                    diapositiva de un documento; una palabra vacía en cualquiera
                    de los extremos excluye la secuencia [1]
</translation>
    </message>
    <message>
        <source>Environment:
</source>
        <translation>Entorno:
</translation>
    </message>
    <message>
        <source>  XDG_CONFIG_HOME  settings in &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</source>
        <translation>  XDG_CONFIG_HOME  configuración en &quot;Okaluna Software/Tallyvox.plist&quot;
                   (~/.config)
</translation>
    </message>
    <message>
        <source>  XDG_DATA_HOME    word lists in &quot;Okaluna Software/Tallyvox/&quot;, context-menu
                   entries (~/.local/share)
</source>
        <translation>  XDG_DATA_HOME    listas de palabras en &quot;Okaluna Software/Tallyvox/&quot;, entradas
                   de los menús contextuales (~/.local/share)
</translation>
    </message>
    <message>
        <source>  TMPDIR           temporary files, also the indexers&apos; (else
                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared
                   one gets a private folder of Tallyvox&apos;s own beneath it
</source>
        <translation>  TMPDIR           archivos temporales, también los de los indexadores (si no,
                   $XDG_RUNTIME_DIR/tallyvox o /tmp/tallyvox-UID); uno
                   compartido recibe debajo una carpeta privada propia de
                   Tallyvox
</translation>
    </message>
    <message>
        <source>  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further
                            before it is ended (60)
</source>
        <translation>  TALLYVOX_INDEXER_TIMEOUT  segundos que un indexador puede pasar sin seguir
                            leyendo antes de que se le detenga (60)
</translation>
    </message>
    <message>
        <source>  TALLYVOX_JOBS    files read at once, at most one a processor core (one a
                   core)
</source>
        <translation>  TALLYVOX_JOBS    archivos leídos a la vez, como mucho uno por núcleo de
                   procesador (uno por núcleo)
</translation>
    </message>
    <message>
        <source>  LANG, LC_ALL     the language of spelled-out numbers and of counts
</source>
        <translation>  LANG, LC_ALL     el idioma de los números escritos con letras y de los
                   recuentos
</translation>
    </message>
    <message>
        <source>  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)

</source>
        <translation>  LC_COLLATE       el orden de diccionario de DictionaryOrder (después de
                   LC_ALL)

</translation>
    </message>
    <message>
        <source>Files:
</source>
        <translation>Archivos:
</translation>
    </message>
    <message>
        <source>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several
                                                      files
</source>
        <translation>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    la configuración
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           las listas de palabras
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  las listas de varios
                                                      archivos
</translation>
    </message>
    <message>
        <source>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a
                                                      service, kept for a day

</source>
        <translation>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              texto seleccionado de un
                                                      servicio, guardado un día

</translation>
    </message>
    <message>
        <source>Exit status:
</source>
        <translation>Estado de salida:
</translation>
    </message>
    <message>
        <source>  0  success, or the request was handed to the running Tallyvox
</source>
        <translation>  0  éxito, o la petición se entregó al Tallyvox en marcha
</translation>
    </message>
    <message>
        <source>  1  a file could not be processed, its word list or a decoded or graphic file
     not written (console mode),
     the display could not be opened for the window, or to read --selection or
     --clipboard (console mode), the running Tallyvox did not answer, or the
     context-menu entries could not be installed
</source>
        <translation>  1  no se pudo procesar un archivo, ni escribir su lista de palabras o un
     archivo decodificado o gráfico (modo consola), no se pudo abrir la pantalla
     para la ventana, o para leer --selection o --clipboard (modo consola), el
     Tallyvox en marcha no respondió, o no se pudieron instalar las entradas de
     los menús contextuales
</translation>
    </message>
    <message>
        <source>  2  the command line could not be understood
</source>
        <translation>  2  no se pudo entender la línea de órdenes
</translation>
    </message>
    <message>
        <source>  3  a word list is empty because its file could not be read, is locked by a
     password or is not a document Tallyvox reads (console mode)
</source>
        <translation>  3  una lista de palabras está vacía porque su archivo no se pudo leer, está
     bloqueado con contraseña o no es un documento que Tallyvox lea (modo
     consola)
</translation>
    </message>
    <message>
        <source>unknown option %1</source>
        <translation>opción desconocida %1</translation>
    </message>
    <message>
        <source>tallyvox: %1
Try &apos;tallyvox --help&apos;.
</source>
        <translation>tallyvox: %1
Pruebe «tallyvox --help».
</translation>
    </message>
    <message>
        <source>  LemmaListPath     a UTF-8 file of lines &quot;headword -&gt; form, form, ...&quot;; #
                    starts a comment; each headword is one entry with its
                    forms&apos; counts added up and the forms found after it,
                    &quot;{form N, ...}&quot; (CSV and TSV: a column &quot;forms&quot;); ~/
                    and relative paths start at the home folder [none]
</source>
        <translation>  LemmaListPath     un archivo UTF-8 de líneas &quot;headword -&gt; form, form, ...&quot;; #
                    inicia un comentario; cada lema es una entrada que suma los
                    recuentos de sus formas, seguida de las formas halladas,
                    &quot;{form N, ...}&quot; (CSV y TSV: una columna &quot;forms&quot;); ~/ y las
                    rutas relativas parten de la carpeta personal [ninguna]
</translation>
    </message>
    <message>
        <source>  Lemmatize         true: with no LemmaListPath, forms are grouped under their
                    stem in a Hunspell dictionary (Debian&apos;s hunspell-*
                    packages); words it does not know stay as they are
                    [false]
</source>
        <translation>  Lemmatize         true: sin LemmaListPath, las formas se agrupan bajo su raíz
                    en un diccionario Hunspell (paquetes hunspell-* de Debian);
                    las palabras que no conoce se quedan como están [false]
</translation>
    </message>
    <message>
        <source>  LemmaLanguage     the dictionary&apos;s name, as en_US [the locale&apos;s]

</source>
        <translation>  LemmaLanguage     el nombre del diccionario, como en_US [el de la
                    configuración regional]

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
        <translation>  IncludeTotals     true: la lista termina con &quot;# N words in the text, N listed;
                    N distinct words, N listed; type/token ratio R&quot;, la
                    proporción tipo/ocurrencia estandarizada en tramos de 1000
                    palabras (ninguna en un texto más corto) y la longitud
                    media de palabra en caracteres (y los archivos, las
                    palabras de la referencia); CSV y TSV: filas tras una fila
                    vacía [false]
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleDesktop</name>
    <message>
        <source>tallyvox: the open panel is not available in console mode
</source>
        <translation>tallyvox: el diálogo de abrir no está disponible en modo consola
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleMode</name>
    <message>
        <source>tallyvox: the selection holds nothing
</source>
        <translation>tallyvox: la selección está vacía
</translation>
    </message>
</context>
<context>
    <name>tallyvox::DecodeAndSave</name>
    <message>
        <source>The file &quot;%1&quot; was not saved: %2.</source>
        <translation>No se guardó el archivo «%1»: %2.</translation>
    </message>
    <message>
        <source>The text could not be base64 decoded</source>
        <translation>No se pudo decodificar el texto en Base64</translation>
    </message>
    <message>
        <source>The text could not be decoded as UTF8</source>
        <translation>No se pudo decodificar el texto como UTF-8</translation>
    </message>
</context>
<context>
    <name>tallyvox::Integration</name>
    <message>
        <source>tallyvox: could not write %1
</source>
        <translation>tallyvox: no se pudo escribir %1
</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferenceStore</name>
    <message>
        <source>The settings file &quot;%1&quot; is no regular file; Tallyvox uses its default settings and sets it aside at the first change.</source>
        <translation>El archivo de configuración «%1» no es un archivo normal; Tallyvox usa su configuración predeterminada y lo aparta con el primer cambio.</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferencesWindow</name>
    <message>
        <source>Each entry is a sequence of this many words, never across a sentence end or a paragraph. A stop word at either end leaves a sequence out. 1: single words.</source>
        <translation>Cada entrada es una secuencia de este número de palabras, nunca a través de un final de oración o de un párrafo. Una palabra vacía en cualquiera de los extremos excluye la secuencia. 1: palabras sueltas.</translation>
    </message>
    <message>
        <source>Words per entry:</source>
        <translation>Palabras por entrada:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>A UTF-8 text file of lines &quot;headword -&gt; form, form, ...&quot;; each headword becomes one entry with its forms&apos; counts added up. Empty: none.</source>
        <translation>Un archivo de texto UTF-8 con líneas «lema -&gt; forma, forma, ...»; cada lema pasa a ser una entrada que suma los recuentos de sus formas. Vacío: ninguna.</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>Elegir…</translation>
    </message>
    <message>
        <source>Choose the lemma file.</source>
        <translation>Elegir el archivo de lemas.</translation>
    </message>
    <message>
        <source>Lemma list:</source>
        <translation>Lista de lemas:</translation>
    </message>
    <message>
        <source>Choose a Stop List</source>
        <translation>Elegir una lista de palabras vacías</translation>
    </message>
    <message>
        <source>Choose a Lemma List</source>
        <translation>Elegir una lista de lemas</translation>
    </message>
    <message>
        <source>Choose a Reference</source>
        <translation>Elegir una referencia</translation>
    </message>
    <message>
        <source>Group word forms by a dictionary</source>
        <translation>Agrupar las formas de las palabras según un diccionario</translation>
    </message>
    <message>
        <source>Without a lemma list, each word is counted under its stem in the Hunspell dictionary chosen below (goes, going: go). Words it does not know stay as they are.</source>
        <translation>Sin lista de lemas, cada palabra se cuenta bajo su raíz en el diccionario Hunspell elegido abajo (goes, going: go). Las palabras que no conoce se quedan como están.</translation>
    </message>
    <message>
        <source>The Hunspell dictionary that groups the word forms: those installed (Debian&apos;s hunspell-* packages).</source>
        <translation>El diccionario Hunspell que agrupa las formas de las palabras: los instalados (paquetes hunspell-* de Debian).</translation>
    </message>
    <message>
        <source>The locale&apos;s (%1)</source>
        <translation>El de la configuración regional (%1)</translation>
    </message>
    <message>
        <source>Dictionary:</source>
        <translation>Diccionario:</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (no instalado)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ProcessFile</name>
    <message>
        <source>Word count: %1</source>
        <translation>Recuento de palabras: %1</translation>
    </message>
    <message>
        <source>Content character count: %1</source>
        <translation>Recuento de caracteres del contenido: %1</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is too large to decode: Tallyvox decodes files of up to 32 MB.</source>
        <translation>El archivo «%1» es demasiado grande para decodificarlo: Tallyvox decodifica archivos de hasta 32 MB.</translation>
    </message>
</context>
<context>
    <name>tallyvox::QtDesktop</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Abrir</translation>
    </message>
</context>
<context>
    <name>tallyvox::ServiceDispatcher</name>
    <message>
        <source>Character count: %1</source>
        <translation>Recuento de caracteres: %1</translation>
    </message>
    <message>
        <source>Tallyvox could not read &quot;%1&quot;.</source>
        <translation>Tallyvox no pudo leer «%1».</translation>
    </message>
</context>
<context>
    <name>tallyvox::SpellOutNumber</name>
    <message>
        <source>The text could not be spelled out.</source>
        <translation>No se pudo escribir el texto con letras.</translation>
    </message>
    <message>
        <source>The following &quot;spell out&quot; has been put on the clipboard: %1</source>
        <translation>Se ha puesto en el portapapeles el siguiente número escrito con letras: %1</translation>
    </message>
</context>
<context>
    <name>tallyvox::Startup</name>
    <message>
        <source>tallyvox: cannot open the display%1 (%2), so there is no selection to read
</source>
        <translation>tallyvox: no se puede abrir la pantalla%1 (%2), así que no hay selección que leer
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display%1 (%2); the clipboard is left as it is
</source>
        <translation>tallyvox: no se puede abrir la pantalla%1 (%2); el portapapeles se deja como está
</translation>
    </message>
    <message>
        <source>tallyvox: the running instance did not answer
</source>
        <translation>tallyvox: la instancia en marcha no respondió
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display to show the window (--console runs without one)
</source>
        <translation>tallyvox: no se puede abrir la pantalla para mostrar la ventana (--console funciona sin ella)
</translation>
    </message>
</context>
<context>
    <name>tallyvox::WordList</name>
    <message>
        <source>The stop list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>No se puede leer la lista de palabras vacías «%1», así que las listas de palabras se hacen sin ella.</translation>
    </message>
    <message>
        <source>The lemma list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>No se puede leer la lista de lemas «%1», así que las listas de palabras se hacen sin ella.</translation>
    </message>
    <message>
        <source>The reference &quot;%1&quot; cannot be read, so no keyword list is made.</source>
        <translation>No se puede leer la referencia «%1», así que no se hace ninguna lista de palabras clave.</translation>
    </message>
</context>
</TS>
