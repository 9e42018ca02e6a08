<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>ErrorWindow</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Drop documents here</source>
        <translation>将文档拖放到此处</translation>
    </message>
    <message>
        <source>Drop documents here, or open them with Tallyvox from the file manager</source>
        <translation>将文档拖放到此处，或在文件管理器中用 Tallyvox 打开它们</translation>
    </message>
    <message>
        <source>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;Drop documents here</source>
        <translation>&lt;img src=&quot;:/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg&quot; width=&quot;48&quot; height=&quot;48&quot;&gt;&lt;br&gt;将文档拖放到此处</translation>
    </message>
    <message>
        <source>Extracting words...</source>
        <translation>正在提取词语...</translation>
    </message>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>要提取词语，请使用“文件 &gt; 打开”，将一个或多个文件拖放到此窗口，或在文件管理器中用 Tallyvox 打开它们。</translation>
    </message>
    <message>
        <source>Files begun</source>
        <translation>已开始的文件</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Stop once the file in progress is done (Esc)</source>
        <translation>当前文件处理完后停止 (Esc)</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>首选项(&amp;P)...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>&amp;About Tallyvox</source>
        <translation>关于 Tallyvox(&amp;A)</translation>
    </message>
    <message>
        <source>Tallyvox &amp;Help</source>
        <translation>Tallyvox 帮助(&amp;H)</translation>
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
        <translation>Tallyvox 首选项</translation>
    </message>
    <message>
        <source>Sort words:</source>
        <translation>词语排序：</translation>
    </message>
    <message>
        <source>Alphabetically</source>
        <translation>按字母顺序</translation>
    </message>
    <message>
        <source>By frequency</source>
        <translation>按频率</translation>
    </message>
    <message>
        <source>Include frequency</source>
        <translation>包含频率</translation>
    </message>
    <message>
        <source>Show counts as:</source>
        <translation>计数显示为：</translation>
    </message>
    <message>
        <source>word (3)</source>
        <translation>词语 (3)</translation>
    </message>
    <message>
        <source>word, tab, 3</source>
        <translation>词语、制表符、3</translation>
    </message>
    <message>
        <source>word,3</source>
        <translation>词语,3</translation>
    </message>
    <message>
        <source>Separate words by:</source>
        <translation>词语分隔符：</translation>
    </message>
    <message>
        <source>New line (LF)</source>
        <translation>换行 (LF)</translation>
    </message>
    <message>
        <source>Carriage return (CR)</source>
        <translation>回车 (CR)</translation>
    </message>
    <message>
        <source>CR and LF</source>
        <translation>CR 和 LF</translation>
    </message>
    <message>
        <source>Space</source>
        <translation>空格</translation>
    </message>
    <message>
        <source>Comma</source>
        <translation>逗号</translation>
    </message>
    <message>
        <source>Quit when done</source>
        <translation>完成后退出</translation>
    </message>
    <message>
        <source>Word-list options</source>
        <translation>词表选项</translation>
    </message>
    <message>
        <source>Words that differ only in case count as one entry, written as they occur most often. Folding follows Unicode: ß and SS are one word.</source>
        <translation>仅大小写不同的词语计为一个条目，按最常出现的形式书写。合并遵循 Unicode：ß 与 SS 是同一个词。</translation>
    </message>
    <message>
        <source>Treat case as one (THE, The, the)</source>
        <translation>不区分大小写 (THE、The、the)</translation>
    </message>
    <message>
        <source>Alphabetical order follows your language (LC_COLLATE or LANG), so é sorts beside e; by frequency, words of equal count follow it too. Off: by character codes, as before.</source>
        <translation>字母顺序遵循您的语言 (LC_COLLATE 或 LANG)，因此 é 排在 e 旁边；按频率排序时，计数相同的词语也按此顺序。关闭：与以前一样按字符编码排序。</translation>
    </message>
    <message>
        <source>Sort as a dictionary does</source>
        <translation>按词典方式排序</translation>
    </message>
    <message>
        <source>Minimum count:</source>
        <translation>最小计数：</translation>
    </message>
    <message>
        <source>Words counted fewer times than this are left out. 1 keeps every word.</source>
        <translation>计数少于此值的词语将被略去。1 表示保留所有词语。</translation>
    </message>
    <message>
        <source>Stop list:</source>
        <translation>停用词表：</translation>
    </message>
    <message>
        <source>A UTF-8 text file of words to leave out, one a line; # starts a comment. Compared without case when case is treated as one. Empty: none.</source>
        <translation>一个 UTF-8 文本文件，列出要略去的词语，每行一个；# 开始注释。不区分大小写时，比较也不区分大小写。留空：无。</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Choose the stop list&apos;s file.</source>
        <translation>选择停用词表文件。</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>选择…</translation>
    </message>
    <message>
        <source>Several files opened at once make one list of all their words, in the Combined folder beside the other lists. A single file still gets its own list.</source>
        <translation>同时打开的多个文件生成一个包含其全部词语的词表，位于其他词表旁边的 Combined 文件夹中。单个文件仍生成自己的词表。</translation>
    </message>
    <message>
        <source>One list for files dropped together</source>
        <translation>一起拖放的文件合成一个词表</translation>
    </message>
    <message>
        <source>List format:</source>
        <translation>词表格式：</translation>
    </message>
    <message>
        <source>Text, as set above; CSV (word,count) for spreadsheets; or TSV (tab-separated). CSV and TSV have a header row and ignore how counts and words are separated.</source>
        <translation>文本（按上方设置）；用于电子表格的 CSV（词语,计数）；或 TSV（制表符分隔）。CSV 和 TSV 带有标题行，不使用计数与词语的分隔设置。</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>CSV for spreadsheets</source>
        <translation>用于电子表格的 CSV</translation>
    </message>
    <message>
        <source>TSV, tab-separated</source>
        <translation>TSV，制表符分隔</translation>
    </message>
    <message>
        <source>End the list with its totals</source>
        <translation>在词表末尾附上总计</translation>
    </message>
    <message>
        <source>Each word also gets its range: how many files hold it. A list of several files also gets Juilland&apos;s D and Gries&apos; DP, how evenly the word is spread over them. A list of one file has range 1 and no dispersion (shown as -).</source>
        <translation>每个词语还附上其分布范围：包含它的文件数。多个文件的词表还附上 Juilland 的 D 和 Gries 的 DP，表示该词在各文件中分布的均匀程度。单个文件的词表范围为 1，没有离散度（显示为 -）。</translation>
    </message>
    <message>
        <source>Range and dispersion over the files</source>
        <translation>跨文件的范围与离散度</translation>
    </message>
    <message>
        <source>Each word also gets its frequency per million words of the text it came from, so that lists of texts of different lengths compare.</source>
        <translation>每个词语还附上其在所属文本中的每百万词频率，以便比较长度不同的文本的词表。</translation>
    </message>
    <message>
        <source>Frequency per million words</source>
        <translation>每百万词频率</translation>
    </message>
    <message>
        <source>Reference:</source>
        <translation>参照：</translation>
    </message>
    <message>
        <source>A document, a folder of documents, or a CSV or TSV word list made by Tallyvox. The list then becomes a keyword list: the words used markedly more (+) or less (-) than in the reference, with log-likelihood and log ratio. Empty: an ordinary list.</source>
        <translation>一个文档、一个文档文件夹，或由 Tallyvox 生成的 CSV 或 TSV 词表。此时词表变为关键词表：列出比参照明显多用 (+) 或少用 (-) 的词语，并附对数似然值和对数比。留空：普通词表。</translation>
    </message>
    <message>
        <source>Choose the reference&apos;s file; type a folder&apos;s path into the field.</source>
        <translation>选择参照文件；如为文件夹，请在输入框中键入其路径。</translation>
    </message>
    <message>
        <source>Keyness threshold:</source>
        <translation>关键性阈值：</translation>
    </message>
    <message>
        <source>A keyword list keeps the words whose log-likelihood is at least this. 3.84 is p &lt; 0.05, 6.63 is p &lt; 0.01, 10.83 is p &lt; 0.001, 15.13 is p &lt; 0.0001.</source>
        <translation>关键词表保留对数似然值不低于此值的词语。3.84 对应 p &lt; 0.05，6.63 对应 p &lt; 0.01，10.83 对应 p &lt; 0.001，15.13 对应 p &lt; 0.0001。</translation>
    </message>
    <message>
        <source>The list ends with its totals: the words of the text and those listed, the distinct words of each, the type/token ratio of the text, its standardised type/token ratio over runs of 1000 words and its mean word length, and the files or the reference where there are. A text list gets a last line starting with #; CSV and TSV get rows after an empty row.</source>
        <translation>词表末尾附上总计：文本的词数和列出的词数、两者各自的不同词数、文本的类符/形符比、以每 1000 词为一段的标准化类符/形符比和平均词长，以及（如有）文件或参照语料。文本词表的最后一行以 # 开头；CSV 和 TSV 在一个空行之后附加若干行。</translation>
    </message>
</context>
<context>
    <name>WordList</name>
    <message>
        <source>No Hunspell dictionary &quot;%1&quot; is installed, so the word lists are made without grouping word forms. Debian&apos;s hunspell packages install dictionaries (hunspell-en-us for en_US).</source>
        <translation>未安装 Hunspell 词典“%1”，因此生成词表时不归并词形。Debian 的 hunspell 软件包可以安装词典（en_US 对应 hunspell-en-us）。</translation>
    </message>
</context>
<context>
    <name>tallyvox::AboutWindow</name>
    <message>
        <source>About Tallyvox</source>
        <translation>关于 Tallyvox</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
    <message>
        <source>&lt;a href=&quot;%1&quot;&gt;The project&apos;s page&lt;/a&gt; (in the user guide)</source>
        <translation>&lt;a href=&quot;%1&quot;&gt;项目页面&lt;/a&gt;（在用户指南中）</translation>
    </message>
    <message>
        <source>Turns documents into word lists with their counts.</source>
        <translation>将文档转换为带计数的词表。</translation>
    </message>
    <message>
        <source>Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)</source>
        <translation>许可证：GNU 通用公共许可证第 3 版或更高版本 (GPL-3.0-or-later)</translation>
    </message>
</context>
<context>
    <name>tallyvox::ApplicationShell</name>
    <message>
        <source>Select one or more files to extract words from.</source>
        <translation>选择一个或多个要从中提取词语的文件。</translation>
    </message>
    <message>
        <source>Bye.</source>
        <translation>再见。</translation>
    </message>
    <message>
        <source>View in Okaluna Website...</source>
        <translation>在 Okaluna 网站上查看...</translation>
    </message>
    <message>
        <source>View in Software Centre...</source>
        <translation>在软件中心查看...</translation>
    </message>
</context>
<context>
    <name>tallyvox::BatchRunner</name>
    <message>
        <source>Use File &gt; Open, drop one or more files on this window, or open them with Tallyvox from the file manager to extract words.</source>
        <translation>要提取词语，请使用“文件 &gt; 打开”，将一个或多个文件拖放到此窗口，或在文件管理器中用 Tallyvox 打开它们。</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>文件：%1</translation>
    </message>
    <message>
        <source>An error occurred while launching &quot;%1&quot;   (Error code: %2)</source>
        <translation>打开“%1”时出错   （错误代码：%2）</translation>
    </message>
    <message>
        <source>One or more items you dropped on Tallyvox was not a file.</source>
        <translation>拖放到 Tallyvox 上的项目中有不是文件的项目。</translation>
    </message>
    <message>
        <source>Tallyvox only extracts words from files.</source>
        <translation>Tallyvox 只从文件中提取词语。</translation>
    </message>
    <message>
        <source>%1: %2% read</source>
        <translation>%1：已读取 %2%</translation>
    </message>
    <message>
        <source>%1: reading…</source>
        <translation>%1：正在读取…</translation>
    </message>
    <message>
        <source>Stopping after this file…</source>
        <translation>将在此文件之后停止…</translation>
    </message>
    <message>
        <source>%1 — stopping after this file…</source>
        <translation>%1 — 将在此文件之后停止…</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is empty: %2.</source>
        <translation>“%1”的词表为空：%2。</translation>
    </message>
    <message>
        <source>The word list of &quot;%1&quot; is incomplete: %2.</source>
        <translation>“%1”的词表不完整：%2。</translation>
    </message>
    <message>
        <source>Some word lists are empty or incomplete: %1.</source>
        <translation>部分词表为空或不完整：%1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2)</source>
        <translation>“%1”（%2）</translation>
    </message>
    <message>
        <source>the file is empty</source>
        <translation>文件为空</translation>
    </message>
    <message>
        <source>the document holds no words</source>
        <translation>文档中没有词语</translation>
    </message>
    <message>
        <source>the file cannot be read (permission denied)</source>
        <translation>无法读取文件（权限被拒绝）</translation>
    </message>
    <message>
        <source>the document is password-protected</source>
        <translation>文档受密码保护</translation>
    </message>
    <message>
        <source>the file is not a document Tallyvox reads</source>
        <translation>该文件不是 Tallyvox 能读取的文档</translation>
    </message>
    <message>
        <source>its path is longer than Tallyvox can read (254 bytes)</source>
        <translation>其路径超出 Tallyvox 可读取的长度（254 字节）</translation>
    </message>
    <message>
        <source>the file could not be read</source>
        <translation>无法读取该文件</translation>
    </message>
    <message>
        <source>it was cut at a limit</source>
        <translation>在达到上限时被截断</translation>
    </message>
    <message>
        <source>it was cut at a limit (%1)</source>
        <translation>在达到上限时被截断（%1）</translation>
    </message>
</context>
<context>
    <name>tallyvox::CommandLine</name>
    <message>
        <source>--save-as needs a path</source>
        <translation>--save-as 需要一个路径</translation>
    </message>
    <message>
        <source>--service needs a service name</source>
        <translation>--service 需要一个服务名称</translation>
    </message>
    <message>
        <source>--text needs a text</source>
        <translation>--text 需要一段文本</translation>
    </message>
    <message>
        <source>--save-as works with --console only</source>
        <translation>--save-as 只能与 --console 一起使用</translation>
    </message>
    <message>
        <source>--text, --selection, --clipboard and --stdin work with --service only</source>
        <translation>--text、--selection、--clipboard 和 --stdin 只能与 --service 一起使用</translation>
    </message>
    <message>
        <source>--service takes one of FILE..., --text TEXT, --selection, --clipboard or --stdin</source>
        <translation>--service 只接受 FILE...、--text TEXT、--selection、--clipboard 或 --stdin 中的一个</translation>
    </message>
    <message>
        <source>Usage: tallyvox [FILE...]
       tallyvox --service NAME (FILE... | --text TEXT | --selection | --clipboard | --stdin)
       tallyvox --console [--save-as PATH] [FILE... | --service NAME ...]
       tallyvox --install-integration

</source>
        <translation>用法： tallyvox [FILE...]
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
        <translation>将文档转换为词表。每个文件 (FILE) 的处理方式与拖放到窗口上相同：其词语连同计数写
入一个文本文件，并在文本编辑器中打开。如果 Tallyvox 已在运行，则由它接收这些文
件，而不会打开第二个窗口。

</translation>
    </message>
    <message>
        <source>Options:
</source>
        <translation>选项：
</translation>
    </message>
    <message>
        <source>  --service NAME   perform a service (see below) on one source: each FILE in
                   turn, or the TEXT of --text, the primary selection
                   (--selection), the clipboard (--clipboard) or standard input
                   (--stdin); a running Tallyvox performs it, else this one
</source>
        <translation>  --service NAME   对一个来源执行服务（见下文）：依次处理每个 FILE，或 --text 的
                   TEXT、主选区 (--selection)、剪贴板 (--clipboard) 或标准输入
                   (--stdin)；如有正在运行的 Tallyvox 则由其执行，否则由本进程执
                   行
</translation>
    </message>
    <message>
        <source>  --text TEXT      the text for --service
</source>
        <translation>  --text TEXT      用于 --service 的文本
</translation>
    </message>
    <message>
        <source>  --selection      read the primary selection (the text last selected) for --service
</source>
        <translation>  --selection      为 --service 读取主选区（最后选中的文本）
</translation>
    </message>
    <message>
        <source>  --clipboard      read the clipboard for --service
</source>
        <translation>  --clipboard      为 --service 读取剪贴板
</translation>
    </message>
    <message>
        <source>  --stdin          read standard input for --service
</source>
        <translation>  --stdin          为 --service 读取标准输入
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
        <translation>  --console        不使用窗口，也不使用正在运行的实例：提示以行的形式输出到标准
                   输出，文件不打开，而是输出为 &quot;open PATH&quot;；含有控制字符（例如
                   文件名中的换行符）的 PATH 或消息按 shell 的方式加引号输出为
                   $&apos;...&apos;；放到剪贴板的文本会一直保留到其他程序取走为止，最多 10
                   秒（在 Wayland 会话中由 wl-copy 保留）
</translation>
    </message>
    <message>
        <source>  --save-as PATH   in console mode, the answer to any save panel (none: cancel)
</source>
        <translation>  --save-as PATH   控制台模式下对任何保存对话框的回答（无：取消）
</translation>
    </message>
    <message>
        <source>  --install-integration
                   add Tallyvox to the context menus of Dolphin, Nautilus and Nemo
                   for this user (under $XDG_DATA_HOME)
</source>
        <translation>  --install-integration
                   为当前用户将 Tallyvox 添加到 Dolphin、Nautilus 和 Nemo 的右键
                   菜单（位于 $XDG_DATA_HOME 下）
</translation>
    </message>
    <message>
        <source>  -h, --help       show this help
</source>
        <translation>  -h, --help       显示此帮助
</translation>
    </message>
    <message>
        <source>  -v, --version    show the version

</source>
        <translation>  -v, --version    显示版本

</translation>
    </message>
    <message>
        <source>Services (NAME is matched without regard to case):
</source>
        <translation>服务（NAME 不区分大小写）：
</translation>
    </message>
    <message>
        <source>  tallyvox         word list of a file, or of the text
</source>
        <translation>  tallyvox         文件或文本的词表
</translation>
    </message>
    <message>
        <source>  wordCount        number of words of a file, or of the text
</source>
        <translation>  wordCount        文件或文本的词数
</translation>
    </message>
    <message>
        <source>  charCount        characters of a file&apos;s words, or of the text itself
</source>
        <translation>  charCount        文件中词语的字符数，或文本本身的字符数
</translation>
    </message>
    <message>
        <source>  decodeBase64     decode Base64 text (or a file of it) and save the bytes
</source>
        <translation>  decodeBase64     解码 Base64 文本（或其文件）并保存字节
</translation>
    </message>
    <message>
        <source>  spellOutNumber   spell the text&apos;s leading number out in words, onto the clipboard
</source>
        <translation>  spellOutNumber   将文本开头的数字拼写为文字，放到剪贴板
</translation>
    </message>
    <message>
        <source>  saveGraphicData  save the text as a graphic file (an SVG image, for one)
</source>
        <translation>  saveGraphicData  将文本保存为图形文件（例如 SVG 图像）
</translation>
    </message>
    <message>
        <source>Text that is a file: URL or an absolute path of an existing file stands for that
file.

</source>
        <translation>如果文本是 file: URL 或现有文件的绝对路径，则代表该文件。

</translation>
    </message>
    <message>
        <source>Settings:
</source>
        <translation>设置：
</translation>
    </message>
    <message>
        <source>  File &gt; Preferences writes them to Tallyvox.plist (see Files). Each is read
  when it is used, so a change applies to the next file. Defaults in brackets.

</source>
        <translation>  “文件 &gt; 首选项”将它们写入 Tallyvox.plist（见“文件”）。每项设置在使用时读取，因
  此更改从下一个文件开始生效。方括号内为默认值。

</translation>
    </message>
    <message>
        <source>  QuitWhenDone      true: quit after a batch run or a service [false]
</source>
        <translation>  QuitWhenDone      true：批量处理或服务完成后退出 [false]
</translation>
    </message>
    <message>
        <source>  IncludeFrequency  true: each word&apos;s count follows it [true]
</source>
        <translation>  IncludeFrequency  true：每个词语后跟其计数 [true]
</translation>
    </message>
    <message>
        <source>  SortBy            1: alphabetically; any other number: by frequency [1]
</source>
        <translation>  SortBy            1：按字母顺序；其他任何数字：按频率 [1]
</translation>
    </message>
    <message>
        <source>  SeparateBy        how a count follows its word: 1 &quot;word (3)&quot;, 2 a tab,
                    3 &quot;word,3&quot;, another number: no count [1]
</source>
        <translation>  SeparateBy        计数如何跟在词语后：1 &quot;word (3)&quot;，2 制表符，3 &quot;word,3&quot;，其他
                    数字：不显示计数 [1]
</translation>
    </message>
    <message>
        <source>  LineStyle         what follows each word: 1 LF, 2 CR, 3 CR LF, 4 a space,
                    5 a comma, another number: nothing [1]

</source>
        <translation>  LineStyle         每个词语之后的内容：1 LF，2 CR，3 CR LF，4 空格，5 逗号，其
                    他数字：无 [1]

</translation>
    </message>
    <message>
        <source>Word-list options:
</source>
        <translation>词表选项：
</translation>
    </message>
    <message>
        <source>  Settings as well, each off by default; with all of them off a list is made
  as the settings above say.

</source>
        <translation>  这些也是设置，默认均为关闭；全部关闭时，词表按上述设置生成。

</translation>
    </message>
    <message>
        <source>  FoldCase          true: words that differ only in case are one entry,
                    written in their most frequent form [false]
</source>
        <translation>  FoldCase          true：仅大小写不同的词语为一个条目，按最常见的形式书写
                    [false]
</translation>
    </message>
    <message>
        <source>  DictionaryOrder   true: sort as a dictionary of the language of LC_ALL,
                    LC_COLLATE or LANG does, also words of equal count [false]
</source>
        <translation>  DictionaryOrder   true：按 LC_ALL、LC_COLLATE 或 LANG 所指语言的词典方式排序，
                    计数相同的词语也如此 [false]
</translation>
    </message>
    <message>
        <source>  MinimumCount      leave out words counted fewer times [1]
</source>
        <translation>  MinimumCount      略去计数少于此值的词语 [1]
</translation>
    </message>
    <message>
        <source>  StopListPath      a UTF-8 file of words to leave out, one a line; # starts
                    a comment; ~/ and relative paths start at the home
                    folder [none]
</source>
        <translation>  StopListPath      列出要略去词语的 UTF-8 文件，每行一个；# 开始注释；~/ 和相对
                    路径从主文件夹开始 [无]
</translation>
    </message>
    <message>
        <source>  CombineFiles      true: a batch of several files makes one list of all
                    their words, Combined/Combined word list.txt [false]
</source>
        <translation>  CombineFiles      true：多个文件的批量处理生成一个包含其全部词语的词表
                    Combined/Combined word list.txt [false]
</translation>
    </message>
    <message>
        <source>  ListFormat        0: text; 1: CSV (&quot;word,count&quot;, CR LF); 2: TSV; the
                    list&apos;s name ends in .txt, .csv or .tsv [0]
</source>
        <translation>  ListFormat        0：文本；1：CSV (&quot;word,count&quot;，CR LF)；2：TSV；词表名称以
                    .txt、.csv 或 .tsv 结尾 [0]
</translation>
    </message>
    <message>
        <source>  IncludeRange      true: each word&apos;s range (files holding it), and over a
                    combined list&apos;s files Juilland&apos;s D and Gries&apos; DP; one
                    file: range 1, no dispersion (&quot;-&quot;, an empty cell) [false]
</source>
        <translation>  IncludeRange      true：每个词语的范围（包含它的文件数），合并词表还有跨文件的
                    Juilland D 和 Gries DP；单个文件：范围 1，无离散度 (&quot;-&quot;，空
                    单元格) [false]
</translation>
    </message>
    <message>
        <source>  IncludePerMillion true: each word&apos;s count per million words of the
                    text [false]
</source>
        <translation>  IncludePerMillion true：每个词语在文本中的每百万词计数 [false]
</translation>
    </message>
    <message>
        <source>  ReferencePath     a document, a folder of documents or a CSV or TSV word
                    list of Tallyvox&apos;s: the list becomes a keyword list
                    against it, with the reference count, log-likelihood
                    (G2), log ratio and + or -; ~/ and relative paths start
                    at the home folder [none]
</source>
        <translation>  ReferencePath     一个文档、一个文档文件夹，或 Tallyvox 的 CSV 或 TSV 词表：词
                    表变为相对于它的关键词表，附参照计数、对数似然值 (G2)、对数
                    比以及 + 或 -；~/ 和相对路径从主文件夹开始 [无]
</translation>
    </message>
    <message>
        <source>  KeynessThreshold  the least G2 a keyword list keeps; 6.63 is p &lt; 0.01 [6.63]
</source>
        <translation>  KeynessThreshold  关键词表保留的最小 G2；6.63 对应 p &lt; 0.01 [6.63]
</translation>
    </message>
    <message>
        <source>  NGramLength       1 to 5: each entry is a sequence of that many words,
                    joined by a space, never across a sentence end, a blank
                    line or a document&apos;s paragraph, cell or slide; a stop
                    word at either end leaves a sequence out [1]
</source>
        <translation>  NGramLength       1 到 5：每个条目是由这么多个词以空格连接的序列，不跨越句末、
                    空行或文档的段落、单元格、幻灯片；任一端为停用词的序列将被略
                    去 [1]
</translation>
    </message>
    <message>
        <source>Environment:
</source>
        <translation>环境变量：
</translation>
    </message>
    <message>
        <source>  XDG_CONFIG_HOME  settings in &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</source>
        <translation>  XDG_CONFIG_HOME  设置位于 &quot;Okaluna Software/Tallyvox.plist&quot; (~/.config)
</translation>
    </message>
    <message>
        <source>  XDG_DATA_HOME    word lists in &quot;Okaluna Software/Tallyvox/&quot;, context-menu
                   entries (~/.local/share)
</source>
        <translation>  XDG_DATA_HOME    词表位于 &quot;Okaluna Software/Tallyvox/&quot;，右键菜单项也在此
                   (~/.local/share)
</translation>
    </message>
    <message>
        <source>  TMPDIR           temporary files, also the indexers&apos; (else
                   $XDG_RUNTIME_DIR/tallyvox or /tmp/tallyvox-UID); a shared
                   one gets a private folder of Tallyvox&apos;s own beneath it
</source>
        <translation>  TMPDIR           临时文件，也包括索引器的（否则为 $XDG_RUNTIME_DIR/tallyvox 或
                   /tmp/tallyvox-UID）；如为共享目录，则在其下建立 Tallyvox 专用
                   的私有文件夹
</translation>
    </message>
    <message>
        <source>  TALLYVOX_INDEXER_TIMEOUT  seconds an indexer may go without reading further
                            before it is ended (60)
</source>
        <translation>  TALLYVOX_INDEXER_TIMEOUT  索引器在没有继续读取时被终止前可等待的秒数 (60)
</translation>
    </message>
    <message>
        <source>  TALLYVOX_JOBS    files read at once, at most one a processor core (one a
                   core)
</source>
        <translation>  TALLYVOX_JOBS    同时读取的文件数，每个处理器核心最多一个（每核一个）
</translation>
    </message>
    <message>
        <source>  LANG, LC_ALL     the language of spelled-out numbers and of counts
</source>
        <translation>  LANG, LC_ALL     拼写数字和计数所用的语言
</translation>
    </message>
    <message>
        <source>  LC_COLLATE       the dictionary order of DictionaryOrder (after LC_ALL)

</source>
        <translation>  LC_COLLATE       DictionaryOrder 的词典顺序（在 LC_ALL 之后）

</translation>
    </message>
    <message>
        <source>Files:
</source>
        <translation>文件：
</translation>
    </message>
    <message>
        <source>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    the settings
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           the word lists
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  the lists of several
                                                      files
</source>
        <translation>  $XDG_CONFIG_HOME/Okaluna Software/Tallyvox.plist    设置
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/           词表
  $XDG_DATA_HOME/Okaluna Software/Tallyvox/Combined/  多个文件的词表
</translation>
    </message>
    <message>
        <source>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              selected text of a
                                                      service, kept for a day

</source>
        <translation>  $TMPDIR/Tallyvox/UUID/TallyvoxData.txt              服务的选中文本，保留一天

</translation>
    </message>
    <message>
        <source>Exit status:
</source>
        <translation>退出状态：
</translation>
    </message>
    <message>
        <source>  0  success, or the request was handed to the running Tallyvox
</source>
        <translation>  0  成功，或请求已交给正在运行的 Tallyvox
</translation>
    </message>
    <message>
        <source>  1  a file could not be processed, its word list or a decoded or graphic file
     not written (console mode),
     the display could not be opened for the window, or to read --selection or
     --clipboard (console mode), the running Tallyvox did not answer, or the
     context-menu entries could not be installed
</source>
        <translation>  1  某个文件无法处理，其词表或解码后的文件、图形文件未能写入（控制台模式），无
     法为窗口打开显示，或无法打开显示以读取 --selection 或 --clipboard（控制台
     模式），正在运行的 Tallyvox 没有应答，或无法安装右键菜单项
</translation>
    </message>
    <message>
        <source>  2  the command line could not be understood
</source>
        <translation>  2  无法理解命令行
</translation>
    </message>
    <message>
        <source>  3  a word list is empty because its file could not be read, is locked by a
     password or is not a document Tallyvox reads (console mode)
</source>
        <translation>  3  某个词表为空，因为其文件无法读取、被密码锁定或不是 Tallyvox 能读取的文档（
     控制台模式）
</translation>
    </message>
    <message>
        <source>unknown option %1</source>
        <translation>未知选项 %1</translation>
    </message>
    <message>
        <source>tallyvox: %1
Try &apos;tallyvox --help&apos;.
</source>
        <translation>tallyvox：%1
请尝试执行“tallyvox --help”。
</translation>
    </message>
    <message>
        <source>  LemmaListPath     a UTF-8 file of lines &quot;headword -&gt; form, form, ...&quot;; #
                    starts a comment; each headword is one entry with its
                    forms&apos; counts added up and the forms found after it,
                    &quot;{form N, ...}&quot; (CSV and TSV: a column &quot;forms&quot;); ~/
                    and relative paths start at the home folder [none]
</source>
        <translation>  LemmaListPath     由 &quot;headword -&gt; form, form, ...&quot; 行组成的 UTF-8 文件；# 开始
                    注释；每个词目为一个条目，其各词形计数相加，后附找到的词形
                    &quot;{form N, ...}&quot;（CSV 和 TSV：一列 &quot;forms&quot;）；~/ 和相对路径从
                    主文件夹开始 [无]
</translation>
    </message>
    <message>
        <source>  Lemmatize         true: with no LemmaListPath, forms are grouped under their
                    stem in a Hunspell dictionary (Debian&apos;s hunspell-*
                    packages); words it does not know stay as they are
                    [false]
</source>
        <translation>  Lemmatize         true：没有 LemmaListPath 时，按 Hunspell 词典（Debian 的
                    hunspell-* 软件包）中的词干归并词形；词典中没有的词保持原样
                    [false]
</translation>
    </message>
    <message>
        <source>  LemmaLanguage     the dictionary&apos;s name, as en_US [the locale&apos;s]

</source>
        <translation>  LemmaLanguage     词典名称，例如 en_US [区域设置的]

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
        <translation>  IncludeTotals     true：词表末尾为 &quot;# N words in the text, N listed; N
                    distinct words, N listed; type/token ratio R&quot;、以每 1000
                    词为一段的标准化类符/形符比（较短的文本没有）和以字符计的
                    平均词长（以及文件、参照的词数）；CSV 和 TSV：空行之后的若
                    干行 [false]
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleDesktop</name>
    <message>
        <source>tallyvox: the open panel is not available in console mode
</source>
        <translation>tallyvox：控制台模式下没有打开对话框
</translation>
    </message>
</context>
<context>
    <name>tallyvox::ConsoleMode</name>
    <message>
        <source>tallyvox: the selection holds nothing
</source>
        <translation>tallyvox：选区为空
</translation>
    </message>
</context>
<context>
    <name>tallyvox::DecodeAndSave</name>
    <message>
        <source>The file &quot;%1&quot; was not saved: %2.</source>
        <translation>文件“%1”未保存：%2。</translation>
    </message>
    <message>
        <source>The text could not be base64 decoded</source>
        <translation>无法对文本进行 Base64 解码</translation>
    </message>
    <message>
        <source>The text could not be decoded as UTF8</source>
        <translation>无法将文本解码为 UTF-8</translation>
    </message>
</context>
<context>
    <name>tallyvox::Integration</name>
    <message>
        <source>tallyvox: could not write %1
</source>
        <translation>tallyvox：无法写入 %1
</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferenceStore</name>
    <message>
        <source>The settings file &quot;%1&quot; is no regular file; Tallyvox uses its default settings and sets it aside at the first change.</source>
        <translation>设置文件“%1”不是普通文件；Tallyvox 将使用默认设置，并在第一次更改设置时将其移到一旁。</translation>
    </message>
</context>
<context>
    <name>tallyvox::PreferencesWindow</name>
    <message>
        <source>Each entry is a sequence of this many words, never across a sentence end or a paragraph. A stop word at either end leaves a sequence out. 1: single words.</source>
        <translation>每个条目是由这么多个词组成的序列，不会跨越句末或段落。任一端为停用词的序列将被略去。1：单个词。</translation>
    </message>
    <message>
        <source>Words per entry:</source>
        <translation>每个条目的词数：</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>A UTF-8 text file of lines &quot;headword -&gt; form, form, ...&quot;; each headword becomes one entry with its forms&apos; counts added up. Empty: none.</source>
        <translation>由“词目 -&gt; 词形, 词形, ...”行组成的 UTF-8 文本文件；每个词目成为一个条目，其各词形的计数相加。留空：无。</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>选择…</translation>
    </message>
    <message>
        <source>Choose the lemma file.</source>
        <translation>选择词目文件。</translation>
    </message>
    <message>
        <source>Lemma list:</source>
        <translation>词目表：</translation>
    </message>
    <message>
        <source>Choose a Stop List</source>
        <translation>选择停用词表</translation>
    </message>
    <message>
        <source>Choose a Lemma List</source>
        <translation>选择词目表</translation>
    </message>
    <message>
        <source>Choose a Reference</source>
        <translation>选择参照</translation>
    </message>
    <message>
        <source>Group word forms by a dictionary</source>
        <translation>按词典归并词形</translation>
    </message>
    <message>
        <source>Without a lemma list, each word is counted under its stem in the Hunspell dictionary chosen below (goes, going: go). Words it does not know stay as they are.</source>
        <translation>没有词目表时，每个词按下方所选 Hunspell 词典中的词干计数（goes、going：go）。词典中没有的词保持原样。</translation>
    </message>
    <message>
        <source>The Hunspell dictionary that groups the word forms: those installed (Debian&apos;s hunspell-* packages).</source>
        <translation>用于归并词形的 Hunspell 词典：可从已安装的词典中选择（Debian 的 hunspell-* 软件包）。</translation>
    </message>
    <message>
        <source>The locale&apos;s (%1)</source>
        <translation>区域设置的词典 (%1)</translation>
    </message>
    <message>
        <source>Dictionary:</source>
        <translation>词典：</translation>
    </message>
    <message>
        <source>%1 (not installed)</source>
        <translation>%1（未安装）</translation>
    </message>
</context>
<context>
    <name>tallyvox::ProcessFile</name>
    <message>
        <source>Word count: %1</source>
        <translation>词数：%1</translation>
    </message>
    <message>
        <source>Content character count: %1</source>
        <translation>内容字符数：%1</translation>
    </message>
    <message>
        <source>The file &quot;%1&quot; is too large to decode: Tallyvox decodes files of up to 32 MB.</source>
        <translation>文件“%1”太大，无法解码：Tallyvox 只解码不超过 32 MB 的文件。</translation>
    </message>
</context>
<context>
    <name>tallyvox::QtDesktop</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
</context>
<context>
    <name>tallyvox::ServiceDispatcher</name>
    <message>
        <source>Character count: %1</source>
        <translation>字符数：%1</translation>
    </message>
    <message>
        <source>Tallyvox could not read &quot;%1&quot;.</source>
        <translation>Tallyvox 无法读取“%1”。</translation>
    </message>
</context>
<context>
    <name>tallyvox::SpellOutNumber</name>
    <message>
        <source>The text could not be spelled out.</source>
        <translation>无法将文本拼写为文字。</translation>
    </message>
    <message>
        <source>The following &quot;spell out&quot; has been put on the clipboard: %1</source>
        <translation>以下文字拼写已放到剪贴板：%1</translation>
    </message>
</context>
<context>
    <name>tallyvox::Startup</name>
    <message>
        <source>tallyvox: cannot open the display%1 (%2), so there is no selection to read
</source>
        <translation>tallyvox：无法打开显示%1 (%2)，因此没有可读取的选区
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display%1 (%2); the clipboard is left as it is
</source>
        <translation>tallyvox：无法打开显示%1 (%2)；剪贴板保持不变
</translation>
    </message>
    <message>
        <source>tallyvox: the running instance did not answer
</source>
        <translation>tallyvox：正在运行的实例没有应答
</translation>
    </message>
    <message>
        <source>tallyvox: cannot open the display to show the window (--console runs without one)
</source>
        <translation>tallyvox：无法打开显示以显示窗口（--console 无需显示即可运行）
</translation>
    </message>
</context>
<context>
    <name>tallyvox::WordList</name>
    <message>
        <source>The stop list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>无法读取停用词表“%1”，因此生成词表时不使用它。</translation>
    </message>
    <message>
        <source>The lemma list &quot;%1&quot; cannot be read, so the word lists are made without it.</source>
        <translation>无法读取词目表“%1”，因此生成词表时不使用它。</translation>
    </message>
    <message>
        <source>The reference &quot;%1&quot; cannot be read, so no keyword list is made.</source>
        <translation>无法读取参照“%1”，因此不生成关键词表。</translation>
    </message>
</context>
</TS>
