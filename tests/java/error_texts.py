#!/usr/bin/env python3
"""error_texts.py SOURCES CLASSES: the Javadoc of the natives quotes the library's texts of errors as
they are, every one of them, and says where one is empty."""
import glob
import re
import sys

LITERAL = re.compile(r'L("(?:[^"\\]|\\.)*"(?:\s*L?"(?:[^"\\]|\\.)*")*)')
PART = re.compile(r'"((?:[^"\\]|\\.)*)"')

# Texts that no native of these classes reports by themselves.
OTHERS = {
    "Window Class Name",
    "FormatMessage failed",  # in the place of the system's text
    "Failed to load comctl32.dll",  # of an entry point
    "Unable to get comctrl version",
}


def read(pattern):
    for path in glob.glob(pattern, recursive=True):
        with open(path, encoding="utf-8") as source:
            yield source.read()


def texts_of(source):
    for found in LITERAL.finditer(source):
        yield "".join(PART.findall(found.group(1))).replace('\\"', '"')


def comments_of(source):
    for comment in re.findall(r"/\*\*(.*?)\*/", source, re.S):
        yield re.sub(r"\s*\n\s*\*\s*", " ", comment)


sources = "\n".join(read(sys.argv[1] + "/**/*.cpp"))
texts = {text for text in texts_of(sources) if " " in text}
comments = [comment for source in read(sys.argv[2] + "/*/OS.java")
            for comment in comments_of(source)]
javadoc = " ".join(comments)
quoted = {part for comment in comments for part in re.findall('"([^"]*)"', comment) if " " in part}

failures = [f"no Javadoc quotes: {text}" for text in sorted(texts - OTHERS)
            if f'"{text}"' not in javadoc]
failures += [f"the library has no such text: {part}" for part in sorted(quoted)
             if not any(part in text for text in texts)]
empty = len(re.findall(r'SetError\([^;]*L""\)', sources))
told = javadoc.count("an empty message")
if empty != told:
    failures.append(f"{empty} errors have an empty message, of {told} it is said")
print("\n".join(failures) or f"{len(texts)} texts are quoted as they are")
sys.exit(1 if failures else 0)
