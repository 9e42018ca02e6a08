<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja_JP">
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
        <translation>ここに文書をドロップ</translation>
    </message>
    <message>
        <source>Drop documents here, or open them with Tallyvox from the file manager</source>
        <translation>ここに文書をドロップするか、ファイルマネージャーから Tallyvox で開いてください</translation>
    </message>
    <message>
        <source>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Drop documents here</source>
        <translation>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;ここに文書をドロップ</translation>
    </message>
    <message>
        <source>Extracting words...</source>
        <translation>単語を抽出しています...</translation>
    </message>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>単語を抽出するには、ファイル &gt; 開く を使うか、このウィンドウにファイルをドロップするか、ファイルマネージャーから Tallyvox で開いてください。</translation>
    </message>
    <message>
        <source>Files begun</source>
        <translation>開始したファイル</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop once the file in progress is done (Esc)</source>
        <translation>処理中のファイルが終わったら停止 (Esc)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>ファイル(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>ヘルプ(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>開く(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>設定(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;About Tallyvox</source>
        <translation>Tallyvox について(&amp;A)</translation>
    </message>
    <message>
        <source>Tallyvox &amp;Help</source>
        <translation>Tallyvox ヘルプ(&amp;H)</translation>
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
        <translation>Tallyvox の設定</translation>
    </message>
    <message>
        <source>Sort words:</source>
        <translation>単語の並べ方:</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>アルファベット順</translation>
    </message>
    <message>
        <source>By frequency</source>
        <translation>頻度順</translation>
    </message>
    <message>
        <source>Include frequency</source>
        <translation>頻度を含める</translation>
    </message>
    <message>
        <source>Show counts as:</source>
        <translation>出現数の表示:</translation>
    </message>
    <message>
        <source>word (3)</source>
        <translation>単語 (3)</translation>
    </message>
    <message>
        <source>word, tab, 3</source>
        <translation>単語, タブ, 3</translation>
    </message>
    <message>
        <source>word,3</source>
        <translation>単語,3</translation>
    </message>
    <message>
        <source>Separate words by:</source>
        <translation>単語の区切り:</translation>
    </message>
    <message>
        <source>New line (LF)</source>
        <translation>改行 (LF)</translation>
    </message>
    <message>
        <source>Carriage return (CR)</source>
        <translation>復帰 (CR)</translation>
    </message>
    <message>
        <source>CR and LF</source>
        <translation>CR と LF</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空白</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>カンマ</translation>
    </message>
    <message>
        <source>Quit when done</source>
        <translation>完了したら終了</translation>
    </message>
    <message>
        <source>Word-list options</source>
        <translation>単語リストのオプション</translation>
    </message>
    <message>
        <source>Words that differ only in case count as one entry, written as they occur most often. Folding follows Unicode: ß and SS are one word.</source>
        <translation>大文字と小文字だけが違う単語は一つの項目として数え、最も多く現れる形で書きます。統合は Unicode に従います: ß と SS は同じ単語です。</translation>
    </message>
    <message>
        <source>Treat case as one (THE, The, the)</source>
        <translation>大文字と小文字を区別しない (THE, The, the)</translation>
    </message>
    <message>
        <source>Alphabetical order follows your language (LC_COLLATE or LANG), so é sorts beside e; by frequency, words of equal count follow it too. Off: by character codes, as before.</source>
        <translation>アルファベット順はお使いの言語 (LC_COLLATE または LANG) に従うため、é は e の隣に並びます。頻度順では、出現数が同じ単語もこの順に並びます。オフ: 従来どおり文字コード順。</translation>
    </message>
    <message>
        <source>Sort as a dictionary does</source>
        <translation>辞書と同じ順に並べる</translation>
    </message>
    <message>
        <source>Minimum count:</source>
        <translation>最小出現数:</translation>
    </message>
    <message>
        <source>Words counted fewer times than this are left out. 1 keeps every word.</source>
        <translation>これより出現数の少ない単語は除きます。1 ではすべての単語を残します。</translation>
    </message>
    <message>
        <source>Stop list:</source>
        <translation>ストップリスト:</translation>
    </message>
    <message>
        <source>A UTF-8 text file of words to leave out, one a line; # starts a comment. Compared without case when case is treated as one. Empty: none.</source>
        <translation>除く単語を 1 行に 1 語ずつ書いた UTF-8 テキストファイル。# 以降はコメントです。大文字と小文字を区別しないときは区別せずに比較します。空: なし。</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Choose the stop list&apos;s file.</source>
        <translation>ストップリストのファイルを選択します。</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>選択…</translation>
    </message>
    <message>
        <source>Several files opened at once make one list of all their words, in the Combined folder beside the other lists. A single file still gets its own list.</source>
        <translation>同時に開いた複数のファイルから、すべての単語を含む一つのリストを、ほかのリストと同じ場所の Combined フォルダーに作ります。ファイルが一つだけなら、これまでどおりそのファイルのリストを作ります。</translation>
    </message>
    <message>
        <source>One list for files dropped together</source>
        <translation>まとめてドロップしたファイルを一つのリストに</translation>
    </message>
    <message>
        <source>List format:</source>
        <translation>リストの形式:</translation>
    </message>
    <message>
        <source>Text, as set above; CSV (word,count) for spreadsheets; or TSV (tab-separated). CSV and TSV have a header row and ignore how counts and words are separated.</source>
        <translation>テキスト (上の設定どおり)、表計算ソフト向けの CSV (単語,出現数)、または TSV (タブ区切り)。CSV と TSV には見出し行があり、出現数や単語の区切りの設定は使われません。</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>テキスト</translation>
    </message>
    <message>
        <source>CSV for spreadsheets</source>
        <translation>表計算ソフト向け CSV</translation>
    </message>
    <message>
        <source>TSV, tab-separated</source>
        <translation>TSV (タブ区切り)</translation>
    </message>
    <message>
        <source>End the list with its totals</source>
        <translation>リストの最後に合計を付ける</translation>
    </message>
    <message>
        <source>Each word also gets its range: how many files hold it. A list of several files also gets Juilland&apos;s D and Gries&apos; DP, how evenly the word is spread over them. A list of one file has range 1 and no dispersion (shown as -).</source>
        <translation>各単語にレンジ (その単語を含むファイルの数) も付けます。複数ファイルのリストでは、単語がファイル間にどれだけ均等に分布しているかを示す Juilland の D と Gries の DP も付けます。ファイル一つのリストはレンジ 1 で、散布度はありません (- と表示)。</translation>
    </message>
    <message>
        <source>Range and dispersion over the files</source>
        <translation>ファイル間のレンジと散布度</translation>
    </message>
    <message>
        <source>Each word also gets its frequency per million words of the text it came from, so that lists of texts of different lengths compare.</source>
        <translation>長さの違うテキストのリストを比べられるよう、各単語に元のテキストの 100 万語あたりの頻度も付けます。</translation>
    </message>
    <message>
        <source>Frequency per million words</source>
        <translation>100 万語あたりの頻度</translation>
    </message>
    <message>
        <source>Reference:</source>
        <translation>参照:</translation>
    </message>
    <message>
        <source>A document, a folder of documents, or a CSV or TSV word list made by Tallyvox. The list then becomes a keyword list: the words used markedly more (+) or less (-) than in the reference, with log-likelihood and log ratio. Empty: an ordinary list.</source>
        <translation>文書、文書のフォルダー、または Tallyvox が作った CSV か TSV の単語リスト。このときリストは特徴語リストになります: 参照より明らかに多く (+) または少なく (-) 使われている単語を、対数尤度と対数比とともに示します。空: 通常のリスト。</translation>
    </message>
    <message>
        <source>Choose the reference&apos;s file; type a folder&apos;s path into the field.</source>
        <translation>参照のファイルを選択します。フォルダーの場合はパスを欄に入力してください。</translation>
    </message>
    <message>
        <source>Keyness threshold:</source>
        <translation>特徴度のしきい値:</translation>
    </message>
    <message>
        <source>A keyword list keeps the words whose log-likelihood is at least this. 3.84 is p &lt; 0.05, 6.63 is p &lt; 0.01, 10.83 is p &lt; 0.001, 15.13 is p &lt; 0.0001.</source>
        <translation>特徴語リストには、対数尤度がこの値以上の単語を残します。3.84 は p &lt; 0.05、6.63 は p &lt; 0.01、10.83 は p &lt; 0.001、15.13 は p &lt; 0.0001 です。</translation>
    </message>
    <message>
        <source>The list ends with its totals: the words of the text and those listed, the distinct words of each, the type/token ratio of the text, its standardised type/token ratio over runs of 1000 words and its mean word length, and the files or the reference where there are. A text list gets a last line starting with #; CSV and TSV get rows after an empty row.</source>
        <translation>リストの最後に合計を付けます: テキストの単語数と掲載した単語数、それぞれの異なり語数、テキストのタイプ・トークン比、1000 語ごとの標準化タイプ・トークン比と平均語長、さらにあればファイルや参照コーパスの情報。テキスト形式では # で始まる最終行、CSV と TSV では空行の後の行になります。</translation>
    </message>
</context>
<context>
    <name>WordList</name>
    <message>
        <source>No Hunspell dictionary &quot;%1&quot; is installed, so the word lists are made without grouping word forms. Debian&apos;s hunspell packages install dictionaries (hunspell-en-us for en_US).</source>
        <translation>Hunspell 辞書「%1」がインストールされていないため、語形をまとめずに単語リストを作ります。辞書は Debian の hunspell パッケージでインストールできます (en_US なら hunspell-en-us)。</translation>
    </message>
</context>
<context>
    <name>tallyvox::AboutWindow</name>
    <message>
        <source>About Tallyvox</source>
        <translation>Tallyvox について</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;The project&apos;s page&lt;/a&gt; (in the user guide)</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;プロジェクトのページ&lt;/a&gt; (ユーザーガイド内)</translation>
    </message>
    <message>
        <source>Turns documents into word lists with their counts.</source>
        <translation>文書から出現数付きの単語リストを作ります。</translation>
    </message>
    <message>
        <source>Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)</source>
        <translation>ライセンス: GNU General Public License バージョン 3 以降 (GPL-3.0-or-later)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ApplicationShell</name>
    <message>
        <source>Select one or more files to extract words from.</source>
        <translation>単語を抽出するファイルを一つ以上選択してください。</translation>
    </message>
    <message>
        <source>Bye.</source>
        <translation>さようなら。</translation>
    </message>
    <message>
        <source>View in Okaluna Website...</source>
        <translation>Okaluna のウェブサイトで見る...</translation>
    </message>
    <message>
        <source>View in Software Centre...</source>
        <translation>ソフトウェアセンターで見る...</translation>
    </message>
</context>
<context>
    <name>tallyvox::BatchRunner</name>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>単語を抽出するには、ファイル &gt; 開く を使うか、このウィンドウにファイルをドロップするか、ファイルマネージャーから Tallyvox で開いてください。</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>ファイル: %1</translation>
    </message>
    <message>
        <source>An error occurred while launching &quot;%1&quot;   (Error code: %2)</source>
        <translation>「%1」を開く際にエラーが発生しました   (エラーコード: %2)</translation>
    </message>
    <message>
        <source>One or more items you dropped on Tallyvox was not a file.</source>
        <translation>Tallyvox にドロップした項目の中に、ファイルでないものがありました。</translation>
    </message>
    <message>
        <source>Tallyvox only extracts words from files.</source>
        <translation>Tallyvox はファイルからのみ単語を抽出します。</translation>
    </message>
    <message>
        <source>%1: %2% read</source>
        <translation>%1: %2% 読み込み済み</translation>
    </message>
    <message>
        <source>%1: reading…</source>
        <translation>%1: 読み込み中…</translation>
    </message>
    <message>
        <source>Stopping after this file…</source>
        <translation>このファイルの後で停止します…</translation>
    </message>
    <message>
        <source>%1 — stopping after this file…</source>
        <translation>%1 — このファイルの後で停止します…</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is empty: %2.</source>
        <translation>「%1」の単語リストは空です: %2。</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is incomplete: %2.</source>
        <translation>「%1」の単語リストは不完全です: %2。</translation>
    </message>
    <message>
        <source>Some word lists are empty or incomplete: %1.</source>
        <translation>空または不完全な単語リストがあります: %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>「%1」(%2)</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>ファイルが空です</translation>
    </message>
    <message>
        <source>the document holds no words</source>
        <translation>文書に単語がありません</translation>
    </message>
    <message>
        <source>the file cannot be read (permission denied)</source>
        <translation>ファイルを読めません (アクセス権がありません)</translation>
    </message>
    <message>
        <source>the document is password-protected</source>
        <translation>文書がパスワードで保護されています</translation>
    </message>
    <message>
        <source>the file is not a document Tallyvox reads</source>
        <translation>Tallyvox が読める文書ではありません</translation>
    </message>
    <message>
        <source>its path is longer than Tallyvox can read (254 bytes)</source>
        <translation>パスが Tallyvox の読める長さ (254 バイト) を超えています</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>ファイルを読めませんでした</translation>
    </message>
    <message>
        <source>it was cut at a limit</source>
        <translation>上限で打ち切られました</translation>
    </message>
    <message>
        <source>it was cut at a limit (%1)</source>
        <translation>上限で打ち切られました (%1)</translation>
    </message>
</context>
<context>
    <name>tallyvox::CommandLine</name>
    <message>
        <source>--save-as needs a path</source>
        <translation>--save-as にはパスが必要です</translation>
    </message>
    <message>
        <source>--service needs a service name</source>
        <translation>--service にはサービス名が必要です</translation>
    </message>
    <message>
        <source>--text needs a text</source>
        <translation>--text にはテキストが必要です</translation>
    </message>
    <message>
        <source>--save-as works with --console only</source>
        <translation>--save-as は --console と一緒にしか使えません</translation>
    </message>
    <message>
        <source>--text, --selection, --clipboard and --stdin work with --service only</source>
        <translation>--text、--selection、--clipboard、--stdin は --service と一緒にしか使えません</translation>
    </message>
    <message>
        <source>--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin</source>
        <translation>--service には FILE...、--text TEXT、--selection、--clipboard、--stdin のどれか一つを指定します</translation>
    </message>
    <message>
        <source>Usage: tallyvox [FILE...]
       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
       tallyvox --install-integration

</source>
        <translation>使い方: tallyvox [FILE...]
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
        <translation>文書から単語リストを作ります。各ファイル (FILE) はウィンドウにドロップされたのと
同じように処理されます: その単語が出現数とともにテキストファイルに書き出され、テ
キストエディターで開かれます。Tallyvox がすでに動いていれば、二つ目のウィンドウ
を開かずにそちらがファイルを受け取ります。

</translation>
    </message>
    <message>
        <source>Options:
</source>
        <translation>オプション:
</translation>
    </message>
    <message>
        <source>  --service NAME   perform a service (see below) on one source: each FILE in
                   turn, or the TEXT of --text, the primary selection
                   (--selection), the clipboard (--clipboard) or standard input
                   (--stdin); a running Tallyvox performs it, else this one
</source>
        <translation>  --service NAME   一つのソースにサービス (下記参照) を実行します: 各 FILE を順
                   に、または --text の TEXT、プライマリー選択 (--selection)、ク
                   リップボード (--clipboard)、標準入力 (--stdin)。動いている
                   Tallyvox があればそれが、なければこのプロセスが実行します
</translation>
    </message>
    <message>
        <source>  --text TEXT      the text for --service
</source>
        <translation>  --text TEXT      --service に渡すテキスト
</translation>
    </message>
    <message>
        <source>  --selection      read the primary selection (the text last selected) for --service
</source>
        <translation>  --selection      --service のためにプライマリー選択 (最後に選択したテキスト)
                   を読む
</translation>
    </message>
    <message>
        <source>  --clipboard      read the clipboard for --service
</source>
        <translation>  --clipboard      --service のためにクリップボードを読む
</translation>
    </message>
    <message>
        <source>  --stdin          read standard input for --service
</source>
        <translation>  --stdin          --service のために標準入力を読む
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
        <translation>  --console        ウィンドウも動作中のインスタンスも使いません: 通知は標準出力
                   に行として書き出し、ファイルは開かずに &quot;open PATH&quot; と書き出し
                   ます。制御文字 (ファイル名中の改行など) を含む PATH やメッセ
                   ージは、シェルと同じ $&apos;...&apos; の形で引用して書き出します。クリ
                   ップボードに置いたテキストは、ほかのプログラムが取得するまで
                   最大 10 秒保持します (Wayland セッションでは wl-copy が保持し
                   ます)
</translation>
    </message>
    <message>
        <source>  --save-as PATH   in console mode, the answer to any save panel (none: cancel)
</source>
        <translation>  --save-as PATH   コンソールモードで、保存ダイアログへの答え (なし: キャンセル)
</translation>
    </message>
    <message>
        <source>  --install-integration
                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo
                   for this user (under $XDG_DATA_HOME)
</source>
        <translation>  --install-integration
                   このユーザーの Dolphin、Nautilus、Nemo のコンテキストメニュー
                   に Tallyvox を追加します ($XDG_DATA_HOME の下)
</translation>
    </message>
    <message>
        <source>  -h, --help       show this help
</source>
        <translation>  -h, --help       このヘルプを表示
</translation>
    </message>
    <message>
        <source>  -v, --version    show the version

</source>
        <translation>  -v, --version    バージョンを表示

</translation>
    </message>
    <message>
        <source>Services (NAME is matched without regard to case):
</source>
        <translation>サービス (NAME の大文字と小文字は区別しません):
</translation>
    </message>
    <message>
        <source>  tallyvox         word list of a file, or of the text
</source>
        <translation>  tallyvox         ファイルまたはテキストの単語リスト
</translation>
    </message>
    <message>
        <source>  wordCount        number of words of a file, or of the text
</source>
        <translation>  wordCount        ファイルまたはテキストの単語数
</translation>
    </message>
    <message>
        <source>  charCount        characters of a file&apos;s words, or of the text itself
</source>
        <translation>  charCount        ファイルの単語の文字数、またはテキストそのものの文字数
</translation>
    </message>
    <message>
        <source>  decodeBase64     decode Base64 text (or a file of it) and save the bytes
</source>
        <translation>  decodeBase64     Base64 テキスト (またはそのファイル) をデコードしてバイト列を
                   保存
</translation>
    </message>
    <message>
        <source>  spellOutNumber   spell the text&apos;s leading number out in words, onto the clipboard
</source>
        <translation>  spellOutNumber   テキスト先頭の数を言葉で書き表し、クリップボードへ
</translation>
    </message>
    <message>
        <source>  saveGraphicData  save the text as a graphic file (an SVG image, for one)
</source>
        <translation>  saveGraphicData  テキストを画像ファイル (SVG 画像など) として保存
</translation>
    </message>
    <message>
        <source>Text that is a file: URL or an absolute path of an existing file stands for that
file.

</source>
        <translation>file: URL または既存ファイルの絶対パスであるテキストは、そのファイルを表します。

</translation>
    </message>
    <message>
        <source>Settings:
</source>
        <translation>設定:
</translation>
    </message>
    <message>
        <source>  File &gt; Preferences writes them to Tallyvox.plist (see Files). Each is read
  when it is used, so a change applies to the next file. Defaults in brackets.

</source>
        <translation>  ファイル &gt; 設定 で Tallyvox.plist (「ファイル」参照) に書き込みます。各設定は
  使うときに読まれるため、変更は次のファイルから反映されます。角かっこ内は既定値
  です。

</translation>
    </message>
    <message>
        <source>  QuitWhenDone      true: quit after a batch run or a service [false]
</source>
        <translation>  QuitWhenDone      true: 一括処理やサービスの後に終了 [false]
</translation>
    </message>
    <message>
        <source>  IncludeFrequency  true: each word&apos;s count follows it [true]
</source>
        <translation>  IncludeFrequency  true: 各単語の後に出現数を付ける [true]
</translation>
    </message>
    <message>
        <source>  SortBy            1: alphabetically; any other number: by frequency [1]
</source>
        <translation>  SortBy            1: アルファベット順、それ以外の数: 頻度順 [1]
</translation>
    </message>
    <message>
        <source>  SeparateBy        how a count follows its word: 1 &quot;word (3)&quot;, 2 a tab,
                    3 &quot;word,3&quot;, another number: no count [1]
</source>
        <translation>  SeparateBy        出現数の付け方: 1 &quot;word (3)&quot;、2 タブ、3 &quot;word,3&quot;、それ以外の
                    数: 出現数なし [1]
</translation>
    </message>
    <message>
        <source>  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,
                    5 a comma, another number: nothing [1]

</source>
        <translation>  LineStyle         各単語の後に続くもの: 1 LF、2 CR、3 CR LF、4 空白、5 カン
                    マ、それ以外の数: なし [1]

</translation>
    </message>
    <message>
        <source>Word-list options:
</source>
        <translation>単語リストのオプション:
</translation>
    </message>
    <message>
        <source>  Settings as well, each off by default; with all of them off a list is made
  as the settings above say.

</source>
        <translation>  これらも設定で、既定ではすべてオフです。すべてオフなら、リストは上の設定どおり
  に作られます。

</translation>
    </message>
    <message>
        <source>  FoldCase          true: words that differ only in case are one entry,
                    written in their most frequent form [false]
</source>
        <translation>  FoldCase          true: 大文字と小文字だけが違う単語を一つの項目にし、最も多い
                    形で書く [false]
</translation>
    </message>
    <message>
        <source>  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,
                    LC_COLLATE or LANG does, also words of equal count [false]
</source>
        <translation>  DictionaryOrder   true: LC_ALL、LC_COLLATE、LANG の言語の辞書と同じ順に並べ
                    る。出現数が同じ単語も同様 [false]
</translation>
    </message>
    <message>
        <source>  MinimumCount      leave out words counted fewer times [1]
</source>
        <translation>  MinimumCount      これより出現数の少ない単語を除く [1]
</translation>
    </message>
    <message>
        <source>  StopListPath      a UTF-8 file of words to leave out, one a line; # starts
                    a comment; ~/ and relative paths start at the home
                    folder [none]
</source>
        <translation>  StopListPath      除く単語を 1 行に 1 語ずつ書いた UTF-8 ファイル。# 以降はコ
                    メント。~/ と相対パスはホームフォルダーから [なし]
</translation>
    </message>
    <message>
        <source>  CombineFiles      true: a batch of several files makes one list of all
                    their words, Combined/Combined word list.txt [false]
</source>
        <translation>  CombineFiles      true: 複数ファイルの一括処理で、すべての単語の一つのリスト
                    Combined/Combined word list.txt を作る [false]
</translation>
    </message>
    <message>
        <source>  ListFormat        0: text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; the
                    list&apos;s name ends in .txt, .csv or .tsv [0]
</source>
        <translation>  ListFormat        0: テキスト、1: CSV (&quot;word,count&quot;、CR LF)、2: TSV。リストの
                    名前は .txt、.csv、.tsv で終わる [0]
</translation>
    </message>
    <message>
        <source>  IncludeRange      true: each word&apos;s range (files holding it), and over a
                    combined list&apos;s files Juilland&apos;s D and Gries&apos; DP; one
                    file: range 1, no dispersion (&quot;-&quot;, an empty cell) [false]
</source>
        <translation>  IncludeRange      true: 各単語のレンジ (その単語を含むファイル数)、結合リスト
                    ではファイル間の Juilland の D と Gries の DP。ファイル一つ:
                    レンジ 1、散布度なし (&quot;-&quot;、空のセル) [false]
</translation>
    </message>
    <message>
        <source>  IncludePerMillion true: each word&apos;s count per million words of the
                    text [false]
</source>
        <translation>  IncludePerMillion true: テキストの 100 万語あたりの各単語の出現数 [false]
</translation>
    </message>
    <message>
        <source>  ReferencePath     a document, a folder of documents or a CSV or TSV word
                    list of Tallyvox&apos;s: the list becomes a keyword list
                    against it, with the reference count, log-likelihood
                    (G2), log ratio and + or -; ~/ and relative paths start
                    at the home folder [none]
</source>
        <translation>  ReferencePath     文書、文書のフォルダー、または Tallyvox の CSV か TSV の単語
                    リスト。リストはそれに対する特徴語リストになり、参照での出現
                    数、対数尤度 (G2)、対数比、+ か - を付ける。~/ と相対パスは
                    ホームフォルダーから [なし]
</translation>
    </message>
    <message>
        <source>  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p &lt; 0.01 [6.63]
</source>
        <translation>  KeynessThreshold  特徴語リストに残す最小の G2。6.63 は p &lt; 0.01 [6.63]
</translation>
    </message>
    <message>
        <source>  NGramLength       1 to 5: each entry is a sequence of that many words,
                    joined by a space, never across a sentence end, a blank
                    line or a document&apos;s paragraph, cell or slide; a stop
                    word at either end leaves a sequence out [1]
</source>
        <translation>  NGramLength       1 から 5: 各項目はその数の単語を空白でつないだ連なりで、文
                    末、空行、文書の段落・セル・スライドをまたがない。両端のどち
                    らかがストップワードの連なりは除く [1]
</translation>
    </message>
    <message>
        <source>Environment:
</source>
        <translation>環境変数:
</translation>
    </message>
    <message>
        <source>  XDG_CONFIG_HOME  settings in &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</source>
        <translation>  XDG_CONFIG_HOME  設定は &quot;Okaluna Software/Tallyvox.plist&quot; に (~/.config)
</translation>
    </message>
    <message>
        <source>  XDG_DATA_HOME    word lists in &quot;Okaluna Software/Tallyvox/&quot;, context-menu
                   entries (~/.local/share)
</source>
        <translation>  XDG_DATA_HOME    単語リストは &quot;Okaluna Software/Tallyvox/&quot; に、コンテキストメ
                   ニューの項目も (~/.local/share)
</translation>
    </message>
    <message>
        <source>  TMPDIR           temporary files, also the indexers&apos; (else
                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared
                   one gets a private folder of Tallyvox&apos;s own beneath it
</source>
        <translation>  TMPDIR           一時ファイル。インデクサーのものも (なければ
                   $XDG_RUNTIME_DIR/tallyvox か /tmp/tallyvox-UID)。共有のものな
                   ら、その下に Tallyvox 専用のフォルダーを作る
</translation>
    </message>
    <message>
        <source>  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further
                            before it is ended (60)
</source>
        <translation>  TALLYVOX_INDEXER_TIMEOUT  インデクサーが読み進まないまま許される秒数。過ぎると
                            終了させる (60)
</translation>
    </message>
    <message>
        <source>  TALLYVOX_JOBS    files read at once, at most one a processor core (one a
                   core)
</source>
        <translation>  TALLYVOX_JOBS    同時に読むファイル数。プロセッサーのコアあたり最大一つ (コア
                   あたり一つ)
</translation>
    </message>
    <message>
        <source>  LANG, LC_ALL     the language of spelled-out numbers and of counts
</source>
        <translation>  LANG, LC_ALL     言葉で書き表す数と出現数の言語
</translation>
    </message>
    <message>
        <source>  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)

</source>
        <translation>  LC_COLLATE       DictionaryOrder の辞書順 (LC_ALL の次)

</translation>
    </message>
    <message>
        <source>Files:
</source>
        <translation>ファイル:
</translation>
    </message>
    <message>
        <source>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several
                                                      files
</source>
        <translation>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    設定
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           単語リスト
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  複数ファイルのリスト
</translation>
    </message>
    <message>
        <source>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a
                                                      service, kept for a day

</source>
        <translation>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              サービスの選択テキスト。1
                                                      日保存

</translation>
    </message>
    <message>
        <source>Exit status:
</source>
        <translation>終了ステータス:
</translation>
    </message>
    <message>
        <source>  0  success, or the request was handed to the running Tallyvox
</source>
        <translation>  0  成功、または動作中の Tallyvox に要求を渡した
</translation>
    </message>
    <message>
        <source>  1  a file could not be processed, its word list or a decoded or graphic file
     not written (console mode),
     the display could not be opened for the window, or to read --selection or
     --clipboard (console mode), the running Tallyvox did not answer, or the
     context-menu entries could not be installed
</source>
        <translation>  1  ファイルを処理できなかった、その単語リストやデコードしたファイル・画像ファ
     イルを書き出せなかった (コンソールモード)、ウィンドウのために、または
     --selection や --clipboard を読むためにディスプレイを開けなかった (コンソ
     ールモード)、動作中の Tallyvox が応答しなかった、またはコンテキストメニュー
     の項目をインストールできなかった
</translation>
    </message>
    <message>
        <source>  2  the command line could not be understood
</source>
        <translation>  2  コマンドラインを解釈できなかった
</translation>
    </message>
    <message>
        <source>  3  a word list is empty because its file could not be read, is locked by a
     password or is not a document Tallyvox reads (console mode)
</source>
        <translation>  3  ファイルを読めない、パスワードで保護されている、または Tallyvox が読める文
     書ではないため、単語リストが空 (コンソールモード)
</translation>
    </message>
    <message>
        <source>unknown option %1</source>
        <translation>不明なオプション %1</translation>
    </message>
    <message>
        <source>tallyvox: %1
Try &apos;tallyvox --help&apos;.
</source>
        <translation>tallyvox: %1
詳しくは &apos;tallyvox --help&apos; を実行してください。
</translation>
    </message>
    <message>
        <source>  LemmaListPath     a UTF-8 file of lines &quot;headword -&gt; form, form, ...&quot;; #
                    starts a comment; each headword is one entry with its
                    forms&apos; counts added up and the forms found after it,
                    &quot;{form N, ...}&quot; (CSV and TSV: a column &quot;forms&quot;); ~/
                    and relative paths start at the home folder [none]
</source>
        <translation>  LemmaListPath     &quot;headword -&gt; form, form, ...&quot; の行からなる UTF-8 ファイル。#
                    以降はコメント。見出し語ごとに一つの項目になり、語形の出現数
                    を合計し、見つかった語形を後ろに &quot;{form N, ...}&quot; と付ける
                    (CSV と TSV: 列 &quot;forms&quot;)。~/ と相対パスはホームフォルダーか
                    ら [なし]
</translation>
    </message>
    <message>
        <source>  Lemmatize         true: with no LemmaListPath, forms are grouped under their
                    stem in a Hunspell dictionary (Debian&apos;s hunspell-*
                    packages); words it does not know stay as they are
                    [false]
</source>
        <translation>  Lemmatize         true: LemmaListPath がなければ、語形を Hunspell 辞書 (Debian
                    の hunspell-* パッケージ) の語幹にまとめる。辞書にない単語は
                    そのまま [false]
</translation>
    </message>
    <message>
        <source>  LemmaLanguage     the dictionary&apos;s name, as en_US [the locale&apos;s]

</source>
        <translation>  LemmaLanguage     辞書の名前。en_US など [ロケールのもの]

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
        <translation>  IncludeTotals     true: リストの最後に &quot;# N words in the text, N listed; N
                    distinct words, N listed; type/token ratio R&quot;、1000 語ごと
                    の標準化タイプ・トークン比 (それより短いテキストにはなし)
                    と文字数での平均語長 (とファイル、参照の単語数) を付ける。
                    CSV と TSV: 空行の後の行 [false]
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleDesktop</name>
    <message>
        <source>tallyvox: the open panel is not available in console mode
</source>
        <translation>tallyvox: コンソールモードでは開くダイアログを使えません
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleMode</name>
    <message>
        <source>tallyvox: the selection holds nothing
</source>
        <translation>tallyvox: 選択が空です
</translation>
    </message>
</context>
<context>
    <name>tallyvox::DecodeAndSave</name>
    <message>
        <source>The file &quot;%1&quot; was not saved: %2.</source>
        <translation>ファイル「%1」は保存されませんでした: %2。</translation>
    </message>
    <message>
        <source>The text could not be base64 decoded</source>
        <translation>テキストを Base64 としてデコードできませんでした</translation>
    </message>
    <message>
        <source>The text could not be decoded as UTF8</source>
        <translation>テキストを UTF-8 としてデコードできませんでした</translation>
    </message>
</context>
<context>
    <name>tallyvox::Integration</name>
    <message>
        <source>tallyvox: could not write %1
</source>
        <translation>tallyvox: %1 を書き込めませんでした
</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferenceStore</name>
    <message>
        <source>The settings file &quot;%1&quot; is no regular file; Tallyvox uses its default settings and sets it aside at the first change.</source>
        <translation>設定ファイル「%1」は通常のファイルではありません。Tallyvox は既定の設定を使い、最初に設定を変えたときにこのファイルを退避します。</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferencesWindow</name>
    <message>
        <source>Each entry is a sequence of this many words, never across a sentence end or a paragraph. A stop word at either end leaves a sequence out. 1: single words.</source>
        <translation>各項目はこの数の単語の連なりで、文末や段落をまたぐことはありません。両端のどちらかがストップワードの連なりは除きます。1: 単語ごと。</translation>
    </message>
    <message>
        <source>Words per entry:</source>
        <translation>項目あたりの単語数:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>A UTF-8 text file of lines &quot;headword -&gt; form, form, ...&quot;; each headword becomes one entry with its forms&apos; counts added up. Empty: none.</source>
        <translation>「見出し語 -&gt; 語形, 語形, ...」の行からなる UTF-8 テキストファイル。見出し語ごとに一つの項目になり、その語形の出現数を合計します。空: なし。</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>選択…</translation>
    </message>
    <message>
        <source>Choose the lemma file.</source>
        <translation>レンマファイルを選択します。</translation>
    </message>
    <message>
        <source>Lemma list:</source>
        <translation>レンマリスト:</translation>
    </message>
    <message>
        <source>Choose a Stop List</source>
        <translation>ストップリストの選択</translation>
    </message>
    <message>
        <source>Choose a Lemma List</source>
        <translation>レンマリストの選択</translation>
    </message>
    <message>
        <source>Choose a Reference</source>
        <translation>参照の選択</translation>
    </message>
    <message>
        <source>Group word forms by a dictionary</source>
        <translation>辞書で語形をまとめる</translation>
    </message>
    <message>
        <source>Without a lemma list, each word is counted under its stem in the Hunspell dictionary chosen below (goes, going: go). Words it does not know stay as they are.</source>
        <translation>レンマリストがない場合、各単語を下で選んだ Hunspell 辞書での語幹にまとめて数えます (goes, going: go)。辞書にない単語はそのままです。</translation>
    </message>
    <message>
        <source>The Hunspell dictionary that groups the word forms: those installed (Debian&apos;s hunspell-* packages).</source>
        <translation>語形をまとめる Hunspell 辞書。インストール済みのものから選べます (Debian の hunspell-* パッケージ)。</translation>
    </message>
    <message>
        <source>The locale&apos;s (%1)</source>
        <translation>ロケールのもの (%1)</translation>
    </message>
    <message>
        <source>Dictionary:</source>
        <translation>辞書:</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1 (未インストール)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ProcessFile</name>
    <message>
        <source>Word count: %1</source>
        <translation>単語数: %1</translation>
    </message>
    <message>
        <source>Content character count: %1</source>
        <translation>本文の文字数: %1</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is too large to decode: Tallyvox decodes files of up to 32 MB.</source>
        <translation>ファイル「%1」は大きすぎてデコードできません。Tallyvox がデコードできるのは 32 MB までのファイルです。</translation>
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
        <translation>開く</translation>
    </message>
</context>
<context>
    <name>tallyvox::ServiceDispatcher</name>
    <message>
        <source>Character count: %1</source>
        <translation>文字数: %1</translation>
    </message>
    <message>
        <source>Tallyvox could not read &quot;%1&quot;.</source>
        <translation>Tallyvox は「%1」を読めませんでした。</translation>
    </message>
</context>
<context>
    <name>tallyvox::SpellOutNumber</name>
    <message>
        <source>The text could not be spelled out.</source>
        <translation>テキストを言葉で書き表せませんでした。</translation>
    </message>
    <message>
        <source>The following &quot;spell out&quot; has been put on the clipboard: %1</source>
        <translation>次の言葉による表記をクリップボードに置きました: %1</translation>
    </message>
</context>
<context>
    <name>tallyvox::Startup</name>
    <message>
        <source>tallyvox: cannot open the display%1 (%2), so there is no selection to read
</source>
        <translation>tallyvox: ディスプレイ%1 を開けないため (%2)、読み取る選択がありません
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display%1 (%2); the clipboard is left as it is
</source>
        <translation>tallyvox: ディスプレイ%1 を開けません (%2)。クリップボードはそのままです
</translation>
    </message>
    <message>
        <source>tallyvox: the running instance did not answer
</source>
        <translation>tallyvox: 動作中のインスタンスが応答しませんでした
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display to show the window (--console runs without one)
</source>
        <translation>tallyvox: ウィンドウを表示するためのディスプレイを開けません (--console はディスプレイなしで動作します)
</translation>
    </message>
</context>
<context>
    <name>tallyvox::WordList</name>
    <message>
        <source>The stop list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>ストップリスト「%1」を読めないため、これを使わずに単語リストを作ります。</translation>
    </message>
    <message>
        <source>The lemma list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>レンマリスト「%1」を読めないため、これを使わずに単語リストを作ります。</translation>
    </message>
    <message>
        <source>The reference &quot;%1&quot; cannot be read, so no keyword list is made.</source>
        <translation>参照「%1」を読めないため、特徴語リストは作りません。</translation>
    </message>
</context>
</TS>
