#!/usr/bin/env python3
"""The n-gram table of a generated multi-script text as the indexer counts it, against the
table computed here from the words the text was made of: no word breaking, no sentence
rules, only the generator's own record of its sentences.

Usage: ngram_reference.py INDEXER [N ...]   (N defaults to 2 and 3)
"""

import collections
import os
import plistlib
import random
import subprocess
import sys
import tempfile

# Words each script's sentences are made of, and how those sentences end. Han words are
# single ideographs, each a word of its own whatever ICU's dictionary knows.
SCRIPTS = {
    "latin": (["the", "cat", "sat", "on", "mat", "Über", "straße", "café", "naïve", "x2",
               "don't", "3.14"], [".", "!", "?", '."', "?!", ".)"]),
    "cyrillic": (["привет", "мир", "книга", "дом", "вода", "Ёлка"], [".", "!", "?"]),
    "greek": (["καλή", "μέρα", "σπίτι", "νερό", "Οδός"], ["."]),
    "han": (["我", "你", "他", "学", "书", "水"], ["。", "！", "？"]),
    "devanagari": (["घर", "पानी", "किताब", "नमस्ते"], ["।", "॥"]),
    "arabic": (["كتاب", "بيت", "ماء", "شمس"], [".", "؟"]),
}
# What may stand between two words of a sentence: none of it ends one.
BETWEEN = [" ", " ", " ", ", ", " - ", "\n", ": ", " (", ") "]


def generate(size, seed=1964):
    rng = random.Random(seed)
    parts = []
    sentences = []
    length = 0
    while length < size:
        words, ends = SCRIPTS[rng.choice(sorted(SCRIPTS))]
        sentence = [rng.choice(words) for _ in range(rng.randint(1, 12))]
        sentences.append(sentence)
        text = sentence[0]
        for word in sentence[1:]:
            text += rng.choice(BETWEEN) + word
        # Unended sentences before a blank line: the paragraph ends them.
        if rng.random() < 0.15:
            text += rng.choice(["\n\n", "\n \n", "\r\n\r\n"])
        else:
            text += rng.choice(ends) + rng.choice([" ", "  ", "\n", "\n\n"])
        parts.append(text)
        length += len(text.encode())
    return "".join(parts), sentences


def expected_ngrams(sentences, n):
    counts = collections.Counter()
    for words in sentences:
        for i in range(len(words) - n + 1):
            counts[" ".join(words[i:i + n])] += 1
    return counts


def indexed_ngrams(indexer, path, n):
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o700)
        environment = dict(os.environ, TMPDIR=folder)
        subprocess.run([indexer, path, "--ngram-length", str(n)], env=environment, check=True)
        with open(os.path.join(folder, "index-1964.dat"), "rb") as result:
            return collections.Counter(plistlib.load(result))


def main():
    indexer = sys.argv[1]
    lengths = [int(n) for n in sys.argv[2:]] or [2, 3]
    # Past one 4 MB block, so that the text is cut at least once on its way.
    text, sentences = generate(6 << 20)
    failed = False
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", newline="", suffix=".txt") as f:
        f.write(text)
        f.flush()
        for n in lengths:
            want = expected_ngrams(sentences, n)
            got = indexed_ngrams(indexer, f.name, n)
            if got != want:
                failed = True
                missing = want - got
                extra = got - want
                print(f"{n}-grams differ: {len(missing)} missing or short, {len(extra)} extra")
                for ngram, count in list(missing.items())[:10]:
                    print(f"  missing {ngram!r} x{count}")
                for ngram, count in list(extra.items())[:10]:
                    print(f"  extra   {ngram!r} x{count}")
            else:
                print(f"{n}-grams: {len(want)} distinct, {sum(want.values())} in all, equal")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
