#!/usr/bin/env python3
"""Writes made-up text for the benchmarks to standard output.

generate-text.py english MEGABYTES   English-like prose: Zipf-distributed words, sentences,
                                     punctuation, numbers and about 1% non-ASCII words.
generate-text.py mixed MEGABYTES     A third of the bytes in other scripts (Japanese,
                                     Chinese, Russian, Greek, Arabic, accented Latin).
generate-text.py distinct WORDS      WORDS different words, each once or twice: a large table.
generate-text.py shuffled WORDS      WORDS different lowercase words of 6 to 8 letters, each
                                     once, ten a line, in an order unrelated to the alphabet.
"""
import itertools
import random
import sys

SYLLABLES = [c + v for c in "bcdfghjklmnprstvwz" for v in "aeiou"] + ["th", "st", "ng", "er"]
OTHER = ["café", "naïve", "“quoted”", "it’s", "Straße", "résumé", "façade", "—", "Zürich"]
MIXED = ["日本語の文章です。", "中文文本测试", "Привет мир", "Ελληνικά", "مرحبا بالعالم",
         "한국어 텍스트", "ภาษาไทย", "Ça coûte très cher", "テキスト"]


def vocabulary(size, rng):
    words = set()
    while len(words) < size:
        words.add("".join(rng.choice(SYLLABLES) for _ in range(rng.choice((1, 1, 2, 2, 3, 4)))))
    words = sorted(words)
    rng.shuffle(words)  # rank in the Zipf curve is unrelated to spelling
    return words


def english(megabytes, mixed, rng):
    words = vocabulary(200_000, rng)
    weights = list(itertools.accumulate(1.0 / (rank + 1) for rank in range(len(words))))
    out = sys.stdout.buffer
    target = megabytes * 1_000_000
    written = 0
    while written < target:
        batch = rng.choices(words, cum_weights=weights, k=200_000)
        parts = []
        for i, word in enumerate(batch):
            r = i % 97
            if r == 0:
                word = word.capitalize()
            elif r == 13:
                word += ","
            elif r == 29:
                word += "."
            elif r == 41:
                word = str(rng.randrange(100_000))
            elif r == 53:
                word = rng.choice(OTHER)
            parts.append(word)
            if mixed and i % 3 == 0:
                parts.append(rng.choice(MIXED))
            if i % 17 == 16:
                parts.append("\n")
        chunk = " ".join(parts).encode()
        out.write(chunk)
        written += len(chunk)


def distinct(count, rng):
    out = sys.stdout.buffer
    for i in range(count):
        word = "q" + letters(i)  # "q" first: no two numbers give the same word
        out.write((word + (" " + word if i % 3 == 0 else "") + "\n").encode())


def shuffled(count, rng):
    # An affine step through the six-letter words (its factor prime to 26) gives each i its
    # own stem, in an order that jumps all over the alphabet; the letters after the stem only
    # lengthen some words, so no two are the same.
    stems = 26 ** 6
    if count > stems:
        raise SystemExit("at most 26^6 words")
    factor = rng.randrange(stems // 3, stems) | 1
    while factor % 13 == 0:
        factor += 2
    offset = rng.randrange(stems)
    alphabet = "abcdefghijklmnopqrstuvwxyz"
    out = sys.stdout.buffer
    line = []
    for i in range(count):
        n = (i * factor + offset) % stems
        word = ""
        for _ in range(6):
            word += alphabet[n % 26]
            n //= 26
        r = i % 12  # a quarter of the words longer: 6.33 letters on average
        if r < 2:
            word += alphabet[(i // 12) % 26]
        elif r == 2:
            word += alphabet[(i // 12) % 26] + alphabet[(i // 312) % 26]
        line.append(word)
        if len(line) == 10:
            out.write((" ".join(line) + "\n").encode())
            line = []
    if line:
        out.write((" ".join(line) + "\n").encode())


def letters(n):
    s = ""
    while True:
        s = chr(ord("a") + n % 26) + s
        n //= 26
        if n == 0:
            return s


if __name__ == "__main__":
    kind, amount = sys.argv[1], int(sys.argv[2])
    rng = random.Random(1964)
    if kind == "distinct":
        distinct(amount, rng)
    elif kind == "shuffled":
        shuffled(amount, rng)
    else:
        english(amount, kind == "mixed", rng)
