#!/usr/bin/env python3
"""check_tests.py FILE...: tests call natives with the types that the Java classes declare, which
tests/support/natives.py reads there, and spell no signature themselves; what looks for something left
behind by many rounds is named so, which makes it a part of the proof of cycles; no file is longer than
LONGEST lines."""
import re
import sys

LONGEST = 500
SPELT_OUT = re.compile(
    r"\bcall<[^<>;]*\(|\b(?:exportOf|toolkitExport)\(\s*\"Java_|"
    r"\(\s*(?:__stdcall|JNICALL)\s*\*\s*\)\(JNIEnv\*, \w+\*?, j")


def faults(name, text):
    lines = text.count("\n")
    if lines > LONGEST:
        yield f"{name}: {lines} lines, of {LONGEST} at most"
    for match in SPELT_OUT.finditer(text):
        line = text.count("\n", 0, match.start()) + 1
        yield f"{name}:{line}: a native's signature; natives.h has it"


def unnamed_cycles(name, text):
    for test in re.finditer(r"^TEST(?:_F|_P)?\((\w+), (\w+)\) \{$(.*?)^\}$", text, re.M | re.S):
        if "leakRounds()" in test[3] and "leave_nothing_behind" not in test[2]:
            yield f"{name}: {test[1]}.{test[2]} uses leakRounds, and is not named ..._leave_nothing_behind"


wrong = []
for file in sys.argv[1:]:
    with open(file, encoding="utf-8") as opened:
        text = opened.read()
        wrong += [*faults(file, text), *unnamed_cycles(file, text)]
print("\n".join(wrong) if wrong else f"tests: {len(sys.argv) - 1} files")
sys.exit(1 if wrong else 0)
