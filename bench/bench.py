#!/usr/bin/env python3
"""The benchmark table of `make bench`: python3 bench/bench.py BUILD_DIR.

Every time is the median of paired runs: `wc -w` in a UTF-8 locale on the same file, then
the step measured (the order alternating from pair to pair), so that other work on the
machine weighs on both sides of each ratio. Peak memory is GNU time's maximum resident set
size. The inputs are made under BUILD_DIR and removed afterwards.

Each written list is also checked against bench/reference-lists.txt, which holds digests of
the lists as the code before the speed work wrote them for the same inputs (see check_list).
The real English text depends on the packages installed: after they change, record the
reference for the new text with bench/record-reference.sh.

Environment:
  BENCH_QUICK=1       leave out the 1 GB and 4 GB rows
  BENCH_ROWS=a,b      only these rows (names as in ROWS below)
  BENCH_RUNS=N        pairs per row on 100 MB inputs (default 5)
  BENCH_BIG_RUNS=N    pairs per row on the larger inputs (default 3)
  BENCH_MANY_RUNS=N   pairs per row on the collections and the long PDF (default 3)
  BENCH_RECORD=1      write the lists' digests into the reference file instead of checking
  BENCH_GROW=PATH     the text grower, when BUILD_DIR has none (an older build)
"""
import hashlib
import os
import plistlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
REFERENCE = HERE / "reference-lists.txt"
MB = 1_000_000
UTF8 = "C.UTF-8"

# name, input, what runs, ordering (1 alphabetical, 2 by frequency), goal as a ratio to wc -w
ROWS = [
    ("indexer-english", "english", "indexer", None, 0.75),
    ("indexer-mixed", "mixed", "indexer", None, 2.5),
    ("list-alphabetical", "english", "file", 1, 1.5),
    ("list-frequency", "english", "file", 2, 1.5),
    ("list-stdin", "english", "stdin", 1, 2.0),
    ("list-options", "english", "options", 1, 2.0),
    ("list-bigrams", "english", "ngram2", 1, 3.0),
    ("list-trigrams", "english", "ngram3", 1, 4.0),
    # Against the same list without the lemma file, not against wc -w.
    ("list-lemmas", "english", "lemmas", 1, 1.3),
    ("list-hunspell", "english", "hunspell", 1, 1.3),
    ("list-distinct", "distinct", "file", 1, 15.0),
    ("indexer-shuffled", "shuffled", "indexer", None, 8.0),
    ("list-shuffled", "shuffled", "file", 1, 12.0),
    ("list-1gb", "english-1gb", "file", 1, None),
    ("list-4gb", "english-4gb", "file", 1, 1.6),
]
BIG_INPUTS = {"english-1gb", "english-4gb"}

# Collections: name, files, bytes each, CombineFiles; and the long PDF. Each is timed against
# its peer over the same files in the same run: `wc -w FILES...`, `pdftotext FILE - | wc -w`.
# Goals: the lists of 200 files of 500 KB within 1.5x of `wc -w` over them, of 2,000 files
# of 50 KB within 2.5x, combined or not; an indexer per file within 2x of `wc -w` per
# file; a PDF read in half the time pdftotext takes.
# The "indexer-" rows run the indexer once per file, against `wc -w` once per file: the cost
# of one process per file, which the application pays for each.
MANY_ROWS = [
    ("files-500k", 200, 500_000, False, 1.5),
    ("files-500k-combined", 200, 500_000, True, 1.5),
    ("files-50k", 2000, 50_000, False, 2.5),
    ("files-50k-combined", 2000, 50_000, True, 2.5),
    ("indexer-files-500k", 200, 500_000, None, 2.0),
    ("indexer-files-50k", 2000, 50_000, None, 2.0),
    ("indexer-files-11b", 2000, 11, None, 2.0),
]
EACH = 'for f; do "$0" "$f" >/dev/null; done'
PDF_ROW = ("pdf-8000", 8200, 0.5)
DESCRIPTIONS = {
    "english": "100 MB real English",
    "mixed": "100 MB mixed scripts",
    "distinct": "111 MB, all-distinct words",
    "shuffled": "88 MB, 12 M distinct short words, shuffled",
    "english-1gb": "1 GB English",
    "english-4gb": "4 GB English",
}
STEPS = {"indexer": "indexer", "file": "file to list", "stdin": "`--stdin` to list",
         "options": "file to list, every word-list option on",
         "ngram2": "file to bigram list", "ngram3": "file to trigram list",
         "lemmas": "file to list with lemma groups (against the list without)",
         "hunspell": "file to list grouped by en_US stems (against the list without)"}
ORDERS = {None: "", 1: ", alphabetical", 2: ", by frequency"}


def log(message):
    print(message, file=sys.stderr, flush=True)


# ---- inputs ----------------------------------------------------------------------------

def real_english(path):
    """What Debian ships on this machine: copyright files, changelogs and documents under
    /usr/share/doc, and the manual pages (roff sources, markup included), in the order of
    their paths, so that the same packages give the same text."""
    def files(root, pattern):
        found = subprocess.run(["find", root, "-name", pattern, "-type", "f"], text=True,
                               capture_output=True, check=False).stdout.split("\n")
        return sorted(f for f in found if f)

    with open(path, "wb") as out:
        for name in files("/usr/share/doc", "copyright"):
            with open(name, "rb") as f:
                shutil.copyfileobj(f, out)
        for name in files("/usr/share/doc", "*.gz") + files("/usr/share/man", "*.gz"):
            subprocess.run(["zcat", "-f", name], stdout=out, stderr=subprocess.DEVNULL,
                           check=False)


def make_input(name, work, tools):
    path = work / (name + ".txt")
    corpus = work / "corpus.txt"
    if name in ("english", "english-1gb", "english-4gb") and not corpus.exists():
        real_english(corpus)
    if name == "english":
        with open(corpus, "rb") as source, open(path, "wb") as out:
            out.write(source.read(100 * MB))
    elif name == "mixed":
        generate(path, "mixed", "100", 100 * MB)
    elif name == "distinct":
        generate(path, "distinct", "12000000", None)
    elif name == "shuffled":
        generate(path, "shuffled", "12000000", None)
    else:
        size = 1000 * MB if name == "english-1gb" else 4000 * MB
        with open(path, "wb") as out:
            subprocess.run([tools["grow"], str(corpus), str(size)], stdout=out, check=True)
    return path


def generate(path, kind, amount, limit):
    with open(path, "wb") as out:
        process = subprocess.Popen([sys.executable, str(HERE / "generate-text.py"), kind, amount],
                                   stdout=subprocess.PIPE)
        left = limit
        while chunk := process.stdout.read(1 << 20):
            if left is not None:
                chunk = chunk[:left]
                left -= len(chunk)
            out.write(chunk)
            if left == 0:
                break
        process.kill()
        process.wait()


def file_digest(path):
    digest = hashlib.blake2b(digest_size=16)
    with open(path, "rb") as f:
        while chunk := f.read(8 << 20):
            digest.update(chunk)
    return digest.hexdigest()


# ---- running ---------------------------------------------------------------------------

class Sandbox:
    """Folders of their own for the application: settings, output, temporary files."""

    def __init__(self, root):
        self.root = root
        self.config = root / "config"
        self.data = root / "data"
        self.tmp = root / "tmp"
        self.indexer_tmp = root / "indexer-tmp"
        for folder in (self.config / "Okaluna Software", self.data, self.tmp, self.indexer_tmp,
                       root / "home"):
            folder.mkdir(parents=True, exist_ok=True)
        # The indexer takes TMPDIR only when it is private.
        for folder in (self.tmp, self.indexer_tmp):
            folder.chmod(0o700)

    def settings(self, sort_by, options=False, combine=False, ngram=1, lemmas=None,
                 hunspell=False):
        # A property list with the one setting that differs between the rows, or with every
        # word-list option on: folding, dictionary order, a minimum, a stop list, one list
        # for the files, CSV and totals.
        extra = ""
        if options:
            stop_list = self.root / "stop-list.txt"
            stop_list.write_text("# common words\nthe\nof\nand\na\nto\nin\nis\n\nit\n")
            extra = ("<key>FoldCase</key><true/><key>DictionaryOrder</key><true/>"
                     "<key>MinimumCount</key><integer>2</integer>"
                     f"<key>StopListPath</key><string>{stop_list}</string>"
                     "<key>CombineFiles</key><true/><key>ListFormat</key><integer>1</integer>"
                     "<key>IncludeTotals</key><true/>")
        elif combine:
            extra = "<key>CombineFiles</key><true/>"
        elif ngram > 1:
            extra = f"<key>NGramLength</key><integer>{ngram}</integer>"
        elif lemmas:
            extra = f"<key>LemmaListPath</key><string>{lemmas}</string>"
        elif hunspell:
            extra = ("<key>Lemmatize</key><true/>"
                     "<key>LemmaLanguage</key><string>en_US</string>")
        (self.config / "Okaluna Software" / "Tallyvox.plist").write_text(
            '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict>'
            f"<key>SortBy</key><integer>{sort_by}</integer>{extra}</dict></plist>\n")

    def environment(self):
        env = {
            "PATH": os.environ.get("PATH", "/usr/bin:/bin"),
            "HOME": str(self.root / "home"),
            "LC_ALL": UTF8,
            "XDG_CONFIG_HOME": str(self.config),
            "XDG_DATA_HOME": str(self.data),
            "TMPDIR": str(self.tmp),
        }
        return env

    def lists(self):
        return sorted(p for p in self.data.rglob("*") if p.suffix in (".txt", ".csv"))

    def clean(self):
        # Each run starts without the previous run's list and the copy --stdin leaves.
        for path in self.lists():
            path.unlink()
        shutil.rmtree(self.tmp, ignore_errors=True)
        self.tmp.mkdir(mode=0o700)


def timed(command, env, stdin_path=None):
    """Wall seconds, peak RSS in bytes (GNU time) and CPU seconds of one run."""
    with tempfile.NamedTemporaryFile("r") as report:
        stdin = open(stdin_path, "rb") if stdin_path else subprocess.DEVNULL
        try:
            start = time.perf_counter()
            subprocess.run(["/usr/bin/time", "-f", "%M %U %S", "-o", report.name, *command],
                           env=env, stdin=stdin, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=False)
            seconds = time.perf_counter() - start
        finally:
            if stdin_path:
                stdin.close()
        rss, user, system = report.read().split("\n")[-2].split()
    return seconds, int(rss) * 1024, float(user) + float(system)


def paired(file, command, env, runs, stdin_path=None, after=None, peer=None):
    """Medians of runs of wc -w (or the peer given) and of the command, alternating which
    goes first."""
    wc = peer or ["wc", "-w", str(file)]
    wc_env = {"PATH": env["PATH"], "LC_ALL": UTF8}
    timed(wc, wc_env)  # warm the page cache
    results = {"wc": [], "step": [], "ratio": [], "rss": [], "cpu": []}
    for i in range(runs):
        order = [("wc", wc, wc_env, None), ("step", command, env, stdin_path)]
        if i % 2:
            order.reverse()
        pair = {}
        for key, cmd, cmd_env, cmd_stdin in order:
            pair[key] = timed(cmd, cmd_env, cmd_stdin)
            if key == "step" and after:
                after(i == runs - 1)
        results["wc"].append(pair["wc"][0])
        results["step"].append(pair["step"][0])
        results["ratio"].append(pair["step"][0] / pair["wc"][0])
        results["rss"].append(pair["step"][1])
        results["cpu"].append(pair["step"][2])
    return {
        "wc": statistics.median(results["wc"]),
        "step": statistics.median(results["step"]),
        "ratio": statistics.median(results["ratio"]),
        "rss": max(results["rss"]),
        "cpu": statistics.median(results["cpu"]),
    }


def lemma_file(result, path):
    """A lemma file for the words of an indexer's result: each word that ends in "s", "ed"
    or "ing" after a stem of three letters or more that is a word of the text too is a form
    of that stem. Crude, but as many groups as real English files give a text this size."""
    words = set(plistlib.loads(result.read_bytes()))
    groups = {}
    for word in words:
        for ending in ("s", "ed", "ing"):
            stem = word[:-len(ending)]
            if word.endswith(ending) and len(stem) >= 3 and stem in words:
                groups.setdefault(stem, []).append(word)
                break
    with open(path, "w", encoding="utf-8") as out:
        for stem in sorted(groups):
            out.write(f"{stem} -> {', '.join(sorted(groups[stem]))}\n")
    return len(groups)


def written_list(sandbox, file, command, env, runs, peer=None):
    """Times command (against peer, or wc -w) where the list is another than the plain one:
    only that it is written is checked."""
    outcome = {}

    def after(last):
        if last:
            outcome["check"] = "written" if sandbox.lists() else "no list"
        sandbox.clean()

    sandbox.clean()
    measured = paired(file, command, env, runs, None, after, peer)
    return measured, outcome.get("check", "no list")


def distinct_words(result):
    """The number of keys of the indexer's binary result, read from its root object."""
    data = result.read_bytes()
    if not data.startswith(b"bplist00"):
        return len(plistlib.loads(data))
    offset_size = data[-26]
    top = int.from_bytes(data[-16:-8], "big")
    table = int.from_bytes(data[-8:], "big")
    at = int.from_bytes(data[table + top * offset_size:table + (top + 1) * offset_size], "big")
    count = data[at] & 0x0F
    if count == 0x0F:
        width = 1 << (data[at + 1] & 0x0F)
        count = int.from_bytes(data[at + 2:at + 2 + width], "big")
    return count


# ---- collections and the long PDF ----------------------------------------------------------

def make_collection(folder, files, size):
    """files files of size bytes of the generated English, each a different stretch."""
    folder.mkdir()
    if size < 1000:
        paths = [folder / f"{i:04d}.txt" for i in range(files)]
        for path in paths:
            path.write_bytes(b"hello world"[:size])
        return paths
    text = folder / "all.txt"
    generate(text, "english", str(files * size // MB + 1), files * size)
    paths = []
    with open(text, "rb") as source:
        for i in range(files):
            path = folder / f"{i:04d}.txt"
            path.write_bytes(source.read(size))
            paths.append(path)
    text.unlink()
    return paths


def make_long_pdf(path, pages):
    """pages pages of the generated English (about 5 KB of text a page) as a PDF."""
    with open(path, "wb") as out:
        text = subprocess.Popen([sys.executable, str(HERE / "generate-text.py"), "english",
                                 str(pages * 5500 // MB + 1)], stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL)
        subprocess.run([sys.executable, str(HERE / "make-pdf.py"), str(pages)],
                       stdin=text.stdout, stdout=out, check=True)
        text.stdout.close()
        text.kill()
        text.wait()


def many_rows(app, indexer, work, sandbox, only, runs):
    """The rows of many files and of the long PDF, as table entries."""
    entries = []
    env = sandbox.environment()
    made = {}
    for name, files, size, combined, goal in MANY_ROWS:
        if only and name not in only:
            continue
        log(f"  {name}")
        if (files, size) not in made:
            made[(files, size)] = make_collection(work / f"files-{files}-{size}", files, size)
        paths = [str(p) for p in made[(files, size)]]
        if combined is None:
            indexer_env = dict(env, TMPDIR=str(sandbox.indexer_tmp))
            measured = paired(None, ["sh", "-c", EACH, str(indexer), *paths], indexer_env, runs,
                              None, None, ["sh", "-c", EACH, "wc", *paths])
            entries.append({
                "row": f"indexer once per file, {files:,} files of {size:,} bytes",
                "peer": "`wc -w` once per file", "distinct": None, "goal": goal,
                "check": "-", "measured": measured, "ok": True})
            continue
        sandbox.settings(1, combine=combined)
        outcome = {}

        def after(last, outcome=outcome, expected=1 if combined else files):
            if last:
                written = len(sandbox.lists())
                outcome["check"] = (f"{written} written" if written == expected
                                    else f"{written} of {expected} written")
            sandbox.clean()

        sandbox.clean()
        measured = paired(None, [str(app), "--console", *paths], env, runs, None, after,
                          ["wc", "-w", *paths])
        label = "one list" if combined else "a list per file"
        entries.append({
            "row": f"{files:,} files of {size // 1000} KB to lists, {label}",
            "peer": "`wc -w` on all", "distinct": None, "goal": goal,
            "check": outcome.get("check", "no list"), "measured": measured,
            "ok": outcome.get("check") == f"{1 if combined else files} written"})
    name, pages, goal = PDF_ROW
    if (not only or name in only) and not shutil.which("pdftotext"):
        log(f"  {name}: left out, pdftotext (poppler-utils) is not installed")
    elif not only or name in only:
        log(f"  {name}")
        pdf = work / "long.pdf"
        make_long_pdf(pdf, pages)
        indexer_env = dict(env, TMPDIR=str(sandbox.indexer_tmp))
        measured = paired(None, [str(indexer), str(pdf)], indexer_env, runs, None, None,
                          ["sh", "-c", 'pdftotext "$1" - | wc -w', "sh", str(pdf)])
        result = sandbox.indexer_tmp / "index-1964.dat"
        entries.append({
            "row": f"indexer, PDF of {pages:,} pages", "peer": "`pdftotext \\| wc -w`",
            "distinct": distinct_words(result) if result.exists() else None, "goal": goal,
            "check": "written" if result.exists() else "no table", "measured": measured,
            "ok": result.exists()})
    return entries


def print_many(entries):
    print()
    print("| step | distinct words | time (CPU) | peer | peer time | ratio | goal "
          "| peak RSS | list |")
    print("|---|---|---|---|---|---|---|---|---|")
    for e in entries:
        m = e["measured"]
        goal = f"≤ {e['goal']:g}x " + ("met" if m["ratio"] <= e["goal"] else "**missed**")
        distinct = "-" if e["distinct"] is None else f"{e['distinct']:,}"
        print(f"| {e['row']} | {distinct} | {m['step']:.2f} s ({m['cpu']:.2f}) | {e['peer']} "
              f"| {m['wc']:.2f} s | {m['ratio']:.2f}x | {goal} | {m['rss'] / 2**20:.0f} MB "
              f"| {e['check']} |")


# ---- the check of the written lists ------------------------------------------------------

def list_digest(path, by_frequency):
    """A digest of a written list. Lists by frequency leave the order of equal counts open,
    so their lines are checked to go down by count and then sorted within each count."""
    data = path.read_bytes()
    if not by_frequency:
        return hashlib.blake2b(data, digest_size=16).hexdigest()
    lines = data.split(b"\n")
    tail = lines.pop() if lines and lines[-1] == b"" else None
    groups = []
    previous = None
    for line in lines:
        count = int(line[line.rindex(b"(") + 1:line.rindex(b")")])
        if previous is not None and count > previous:
            return "not-by-frequency"
        if count != previous:
            groups.append([])
            previous = count
        groups[-1].append(line)
    canonical = b"\n".join(b"\n".join(sorted(group)) for group in groups)
    if tail is not None:
        canonical += b"\n"
    return hashlib.blake2b(canonical, digest_size=16).hexdigest()


def read_reference():
    entries = {}
    if REFERENCE.exists():
        for line in REFERENCE.read_text().splitlines():
            if line and not line.startswith("#"):
                name, input_digest, kind, digest = line.split()
                entries[(name, input_digest, kind)] = digest
    return entries


def write_reference(entries):
    lines = ["# Digests of the written lists for the benchmark inputs (bench/bench.py):",
             "# input, digest of the input, kind of list, digest of the list."]
    lines += [" ".join(key + (value,)) for key, value in sorted(entries.items())]
    REFERENCE.write_text("\n".join(lines) + "\n")


def check_list(reference, record, name, input_digest, kind, path, by_frequency):
    if path is None:
        return "no list"
    digest = list_digest(path, by_frequency)
    key = (name, input_digest, kind)
    if record:
        reference[key] = digest
        return "recorded"
    if key not in reference:
        return "no reference"
    return "same" if reference[key] == digest else "DIFFERS"


# ---- the table ---------------------------------------------------------------------------

def main():
    build = Path(sys.argv[1]).resolve()
    quick = os.environ.get("BENCH_QUICK") == "1"
    record = os.environ.get("BENCH_RECORD") == "1"
    only = set(filter(None, os.environ.get("BENCH_ROWS", "").split(",")))
    runs = int(os.environ.get("BENCH_RUNS", "5"))
    many_runs = int(os.environ.get("BENCH_MANY_RUNS", "3"))
    big_runs = int(os.environ.get("BENCH_BIG_RUNS", "3"))
    app = build / "bin" / "tallyvox"
    indexer = build / "libexec" / "tallyvox" / "SearchKitIndexer"
    tools = {"grow": os.environ.get("BENCH_GROW", str(build / "bench" / "tallyvox_bench_grow"))}
    rows = [row for row in ROWS if (not only or row[0] in only)
            and not (quick and row[1] in BIG_INPUTS)]

    work = Path(tempfile.mkdtemp(prefix="bench-", dir=build))
    reference = read_reference()
    table = []
    many = []
    started = time.time()
    load = open("/proc/loadavg").read().split()[:3]
    try:
        sandbox = Sandbox(work / "sandbox")
        env = sandbox.environment()
        for input_name in dict.fromkeys(row[1] for row in rows):
            log(f"making {input_name}")
            file = make_input(input_name, work, tools)
            size = file.stat().st_size
            input_digest = file_digest(file)
            input_runs = (big_runs if size > 100 * MB or input_name in ("distinct", "shuffled")
                          else runs)
            indexer_env = dict(env, TMPDIR=str(sandbox.indexer_tmp))
            result = sandbox.indexer_tmp / "index-1964.dat"
            # The indexer on its own: its peak memory, its time, and the table's size.
            log(f"  indexer on {input_name}")
            alone = paired(file, [str(indexer), str(file)], indexer_env,
                           input_runs if any(r[1] == input_name and r[2] == "indexer"
                                             for r in rows) else 1)
            distinct = distinct_words(result)
            checked = {}
            for name, _, step, sort_by, goal in (r for r in rows if r[1] == input_name):
                log(f"  {name}")
                if step == "indexer":
                    measured = alone
                    # The written list of this input is still checked: one untimed run.
                    sandbox.settings(1)
                    sandbox.clean()
                    subprocess.run([str(app), "--console", str(file)], env=env,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                    lists = sandbox.lists()
                    check = check_list(reference, record, input_name, input_digest,
                                       "alphabetical", lists[0] if lists else None, False)
                elif step in ("ngram2", "ngram3"):
                    # The n-grams' own indexer run gives the memory goal its distinct entries.
                    length = int(step[-1])
                    own = paired(file, [str(indexer), str(file), "--ngram-length", str(length)],
                                 indexer_env, 1)
                    row_distinct, row_indexer_rss = distinct_words(result), own["rss"]
                    sandbox.settings(sort_by, ngram=length)
                    measured, check = written_list(
                        sandbox, file, [str(app), "--console", str(file)], env, input_runs)
                elif step == "lemmas":
                    # The words, as the single-word run left them (an n-gram row may
                    # have run since).
                    subprocess.run([str(indexer), str(file)], env=indexer_env,
                                   stdout=subprocess.DEVNULL, check=True)
                    groups = lemma_file(result, sandbox.root / "lemmas.txt")
                    log(f"    {groups} lemma groups")
                    # The peer is the same list without the file, from a settings folder
                    # of its own.
                    plain = sandbox.root / "plain-config"
                    (plain / "Okaluna Software").mkdir(parents=True, exist_ok=True)
                    sandbox.settings(sort_by)
                    shutil.copy(sandbox.config / "Okaluna Software" / "Tallyvox.plist",
                                plain / "Okaluna Software" / "Tallyvox.plist")
                    sandbox.settings(sort_by, lemmas=sandbox.root / "lemmas.txt")
                    peer = ["env"] + [f"{k}={v}" for k, v in env.items()
                                      if k != "XDG_CONFIG_HOME"]
                    peer += [f"XDG_CONFIG_HOME={plain}", str(app), "--console", str(file)]
                    measured, check = written_list(
                        sandbox, file, [str(app), "--console", str(file)], env, input_runs, peer)
                elif step == "hunspell":
                    # The peer is the same list without grouping, as for the lemma file.
                    plain = sandbox.root / "plain-config"
                    (plain / "Okaluna Software").mkdir(parents=True, exist_ok=True)
                    sandbox.settings(sort_by)
                    shutil.copy(sandbox.config / "Okaluna Software" / "Tallyvox.plist",
                                plain / "Okaluna Software" / "Tallyvox.plist")
                    sandbox.settings(sort_by, hunspell=True)
                    peer = ["env"] + [f"{k}={v}" for k, v in env.items()
                                      if k != "XDG_CONFIG_HOME"]
                    peer += [f"XDG_CONFIG_HOME={plain}", str(app), "--console", str(file)]
                    measured, check = written_list(
                        sandbox, file, [str(app), "--console", str(file)], env, input_runs, peer)
                elif step == "options":
                    # Another list than the plain one: only that it is written is checked.
                    sandbox.settings(sort_by, options=True)
                    measured, check = written_list(
                        sandbox, file, [str(app), "--console", str(file)], env, input_runs)
                else:
                    sandbox.settings(sort_by)
                    command = [str(app), "--console"]
                    command += ["--service", "tallyvox", "--stdin"] if step == "stdin" else [str(file)]
                    outcome = {}

                    def after(last, outcome=outcome, by_frequency=sort_by == 2, step=step):
                        # The same text through standard input must give the file's list.
                        if last:
                            lists = sandbox.lists()
                            kind = "frequency" if by_frequency else "alphabetical"
                            outcome["check"] = check_list(
                                reference, record and step != "stdin", input_name,
                                input_digest, kind, lists[0] if lists else None, by_frequency)
                        sandbox.clean()

                    sandbox.clean()
                    measured = paired(file, command, env, input_runs,
                                      str(file) if step == "stdin" else None, after)
                    check = outcome.get("check", "no list")
                checked[name] = check
                if step not in ("ngram2", "ngram3"):
                    row_distinct, row_indexer_rss = distinct, alone["rss"]
                rss_goal = 64 * 2**20 + 100 * row_distinct
                table.append({
                    "row": f"{STEPS[step]}{ORDERS[sort_by]}, {DESCRIPTIONS[input_name]}",
                    "distinct": row_distinct,
                    "step": measured["step"],
                    "cpu": measured["cpu"],
                    "wc": measured["wc"],
                    "ratio": measured["ratio"],
                    "goal": goal,
                    "app": None if step == "indexer" else measured["rss"],
                    "indexer": row_indexer_rss,
                    "rss_goal": rss_goal,
                    "check": check,
                    "runs": input_runs,
                })
            file.unlink()
            if input_name == "english-4gb" or not any(r[1] in BIG_INPUTS for r in rows):
                (work / "corpus.txt").unlink(missing_ok=True)
        many = many_rows(app, indexer, work, sandbox, only, many_runs)
    finally:
        shutil.rmtree(work, ignore_errors=True)
    if record:
        write_reference(reference)

    print(f"Tallyvox benchmarks, {time.strftime('%Y-%m-%d %H:%M', time.gmtime(started))} UTC, "
          f"{os.cpu_count()} cores, load {' '.join(load)} at the start, "
          f"{(time.time() - started) / 60:.1f} min.")
    print(f"Medians of paired runs against `LC_ALL={UTF8} wc -w` on the same file; "
          "peak RSS from GNU time (the application's figure includes the indexer it runs).")
    print()
    print("| step | distinct words | time (CPU) | `wc -w` | ratio | goal | peak RSS app / indexer "
          "| RSS goal | list |")
    print("|---|---|---|---|---|---|---|---|---|")
    for r in table:
        goal = "-" if r["goal"] is None else (
            f"≤ {r['goal']:g}x " + ("met" if r["ratio"] <= r["goal"] else "**missed**"))
        peaks = [r["app"], r["indexer"]]
        worst = max(p for p in peaks if p is not None)
        rss = " / ".join("-" if p is None else f"{p / 2**20:.0f}" for p in peaks) + " MB"
        rss_goal = f"≤ {r['rss_goal'] / 2**20:.0f} MB " + (
            "met" if worst <= r["rss_goal"] else "**missed**")
        print(f"| {r['row']} | {r['distinct']:,} | {r['step']:.2f} s ({r['cpu']:.2f}) "
              f"| {r['wc']:.2f} s | {r['ratio']:.2f}x | {goal} | {rss} | {rss_goal} "
              f"| {r['check']} |")
    if many:
        print_many(many)
    failed = [e for e in many if not e["ok"]]
    return 1 if failed or any(r["check"] in ("DIFFERS", "no list") for r in table) else 0


if __name__ == "__main__":
    sys.exit(main())
