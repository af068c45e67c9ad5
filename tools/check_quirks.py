#!/usr/bin/env python3
"""check_quirks.py SRC TESTS: what the library does oddly, and keeps so, says in a comment what it brings
about and which test fails when it is repaired: "Quirk: sentence. Pinned by Suite.test.". The tests
exist, and no other words say that something is kept."""
import re
import sys
from pathlib import Path

TEST = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.M)
QUIRK = re.compile(r"Quirk:(.*?)(?=Quirk:|$)")
FORM = re.compile(r" [^.]+\. Pinned by (\w+\.\w+)\.")
OTHER_WORDS = re.compile(r"\b(?:is|are) meant\b|\bon purpose\b")


def texts(folder):
    for file in sorted(Path(folder).rglob("*")):
        if file.suffix in (".cpp", ".h"):
            yield file, file.read_text(encoding="utf-8")


def comments(text):
    """Those on lines that follow each other are one."""
    comment = ""
    for line in text.splitlines() + [""]:
        code, _, words = line.partition("//")
        if code.strip() or not words:
            yield comment
            comment = ""
        comment += f" {words.strip()}"


def faults(comment, tests):
    for words in OTHER_WORDS.findall(comment):
        yield f'"{words}" does not say what it brings about'
    for quirk in QUIRK.findall(comment):
        form = FORM.match(quirk)
        if not form:
            yield f'"Quirk:{quirk}" is not "Quirk: sentence. Pinned by Suite.test."'
        elif form.group(1) not in tests:
            yield f"there is no test {form.group(1)}"


source, tests_folder = sys.argv[1:]
tests = {".".join(test) for _, text in texts(tests_folder) for test in TEST.findall(text)}
wrong, count = [], 0
for file, text in texts(source):
    for comment in comments(text):
        count += len(QUIRK.findall(comment))
        wrong += [f"{file}: {fault}" for fault in faults(comment, tests)]
print("\n".join(wrong) if wrong else f"quirks: {count}")
sys.exit(1 if wrong else 0)
