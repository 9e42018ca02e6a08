#!/usr/bin/env python3
"""Writes a PDF of text to standard output, for the benchmarks: make-pdf.py PAGES < TEXT.

Each page holds 60 lines of at most 90 characters in Helvetica (WinAnsiEncoding), its
content stream deflated, as a word processor would print plain prose. The text is read
until PAGES pages are full; it should be long enough (about 4.5 KB a page).
"""
import sys
import textwrap
import zlib

LINES, WIDTH = 60, 90


def escape(line):
    data = line.encode("cp1252", errors="replace")
    return data.replace(b"\\", b"\\\\").replace(b"(", b"\\(").replace(b")", b"\\)")


def page_lines(source, pages):
    words = []
    for raw in source:
        words.extend(raw.decode("utf-8", errors="replace").split())
        while len(words) > 2000:
            text = " ".join(words[:2000])
            words = words[2000:]
            yield from textwrap.wrap(text, WIDTH)
    yield from textwrap.wrap(" ".join(words), WIDTH)


def main():
    pages = int(sys.argv[1])
    lines = page_lines(sys.stdin.buffer, pages)
    objects = [b"<< /Type /Catalog /Pages 2 0 R >>", None,
               b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
               b"/Encoding /WinAnsiEncoding >>"]
    kids = []
    for _ in range(pages):
        body = [b"BT /F1 10 Tf 12 TL 50 760 Td"]
        for _, line in zip(range(LINES), lines):
            body.append(b"(" + escape(line) + b") '")
        body.append(b"ET")
        content = zlib.compress(b"\n".join(body))
        objects.append(b"<< /Length %d /Filter /FlateDecode >>\nstream\n" % len(content) +
                       content + b"\nendstream")
        objects.append(b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] "
                       b"/Resources << /Font << /F1 3 0 R >> >> /Contents %d 0 R >>"
                       % (len(objects)))
        kids.append(b"%d 0 R" % len(objects))
    objects[1] = b"<< /Type /Pages /Kids [" + b" ".join(kids) + b"] /Count %d >>" % pages
    out = bytearray(b"%PDF-1.4\n")
    offsets = []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj\n" % number + body + b"\nendobj\n"
    xref = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(objects) + 1)
    out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    out += b"trailer\n<< /Size %d /Root 1 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (
        len(objects) + 1, xref)
    sys.stdout.buffer.write(out)


if __name__ == "__main__":
    main()
