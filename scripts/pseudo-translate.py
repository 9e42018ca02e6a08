#!/usr/bin/env python3
"""Writes a pseudo translation of a Qt Linguist .ts file: every text bracketed, its letters
accented and lengthened by 40 %, so that a window shown in it reveals at a glance a text
that escaped translation (it has no brackets), a text cut short (no closing bracket) and a
layout too tight for longer languages.

    pseudo-translate.py IN.ts OUT.ts [LANGUAGE]

Only the source texts of IN.ts are read; placeholders (%1), accelerators (&F), HTML tags
and entities are kept as they are. LANGUAGE defaults to en_XA, the name the program loads
for LANGUAGE=en_XA.
"""
import math
import re
import sys
import xml.etree.ElementTree as ET

ACCENTED = dict(zip(
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ",
    "àƀćðéƒĝĥîĵķłɱñôþǫŕšţûṽŵẋŷžÀƁĆÐÉƑĜĤÎĴĶŁṀÑÔÞǪŔŠŢÛṼŴẊŶŽ"))

# A key's name (the stop button's shortcut) stays as it is, or the key would not work.
KEY = re.compile(r"^((Ctrl|Shift|Alt|Meta)\+)*(F[0-9]+|Esc|Return|Tab|.)$")

# What must survive: placeholders, accelerators, tags, entities.
KEPT = re.compile(r"%[1-9]|%%|&&|&(?=\w)|<[^>]*>|&[a-z]+;")


def pseudo(text):
    if KEY.match(text):
        return text
    trailing = text[len(text.rstrip("\n")):]
    body = text.rstrip("\n")
    out = []
    visible = 0
    position = 0
    for match in KEPT.finditer(body):
        chunk = body[position:match.start()]
        out.append("".join(ACCENTED.get(ch, ch) for ch in chunk))
        visible += len(chunk)
        out.append(match.group(0))
        position = match.end()
    chunk = body[position:]
    out.append("".join(ACCENTED.get(ch, ch) for ch in chunk))
    visible += len(chunk)
    # In runs of at most eight, so that a long text still wraps as a longer language's
    # would, rather than as one unbreakable word.
    tildes = math.ceil(visible * 0.4)
    padding = " ".join("~" * min(8, tildes - start) for start in range(0, tildes, 8))
    return "[" + "".join(out) + padding + "]" + trailing


def main():
    source, target = sys.argv[1], sys.argv[2]
    language = sys.argv[3] if len(sys.argv) > 3 else "en_XA"
    tree = ET.parse(source)
    root = tree.getroot()
    root.set("language", language)
    for message in root.iter("message"):
        translation = message.find("translation")
        if translation is None:
            translation = ET.SubElement(message, "translation")
        translation.attrib.pop("type", None)
        translation.text = pseudo(message.find("source").text or "")
    with open(target, "w", encoding="utf-8") as out:
        out.write('<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n')
        out.write(ET.tostring(root, encoding="unicode"))
        out.write("\n")


if __name__ == "__main__":
    main()
