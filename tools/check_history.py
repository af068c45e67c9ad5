#!/usr/bin/env python3
"""check_history.py [BASE]: the commits since BASE each have a subject of at most 72 letters and one
parent. Without a history, as in an archive of the sources, there is nothing to check; in one that does
not reach back to BASE, all that there is of it is checked."""
import subprocess
import sys

BASE = "43d44fd9c9" # the last one before subjects were kept short
LONGEST = 72


def git(*words):
    return subprocess.run(("git", *words), capture_output=True, text=True, check=False)


def commits(base):
    known = git("merge-base", "--is-ancestor", base, "HEAD").returncode == 0
    log = git("log", "--format=%h %p%x09%s", f"{base}..HEAD" if known else "HEAD")
    return log.stdout.splitlines() if log.returncode == 0 else []


def faults(commit):
    hashes, subject = commit.split("\t", 1)
    name, *parents = hashes.split()
    if len(subject) > LONGEST:
        yield f"{name}: a subject of {len(subject)} letters: {subject}"
    if len(parents) > 1:
        yield f"{name}: a merge: {subject}"


found = commits(sys.argv[1] if len(sys.argv) > 1 else BASE)
wrong = [fault for commit in found for fault in faults(commit)]
print("\n".join(wrong) if wrong else f"history: {len(found)} commits")
sys.exit(1 if wrong else 0)
