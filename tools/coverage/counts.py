"""What the counters of one or several programs say of the sources' lines and branches."""
import collections
import json
import os
import re
import subprocess

GCOV = "i686-w64-mingw32-gcov-posix"


class Counts:
    """runs: (file, line) to how often it was run; taken: (file, line) to how often each branch was
    taken, in the order of evaluation; function: (file, line) to the function around it."""

    def __init__(self, sources):
        self.sources = sources
        self.runs = collections.Counter()
        self.taken = {}
        self.function = {}

    def add(self, described):
        for file in described["files"]:
            path = os.path.normpath(file["file"])
            if not path.startswith(self.sources + os.sep):
                continue
            path = os.path.relpath(path, self.sources)
            names = {each["name"]: each["demangled_name"] for each in file["functions"]}
            for line in file["lines"]:
                self.add_line((path, line["line_number"]), line, names)

    def add_line(self, place, line, names):
        self.runs[place] += line["count"]
        name = names.get(line.get("function_name"), "")
        self.function[place] = re.sub(r"\(.*", "", name)
        counts = [branch["count"] for branch in line["branches"] if not branch["throw"]]
        known = self.taken.setdefault(place, [])
        known += [0] * (len(counts) - len(known))
        for index, count in enumerate(counts):
            known[index] += count

    def merge(self, other):
        for place, count in other.runs.items():
            self.runs[place] += count
        self.function.update(other.function)
        for place, counts in other.taken.items():
            known = self.taken.setdefault(place, [])
            known += [0] * (len(counts) - len(known))
            for index, count in enumerate(counts):
                known[index] += count


def read(folder, notes, sources):
    """Counts of the program that left its counters below the folder. notes: folder of what the
    compiler noted of each object."""
    counts = Counts(sources)
    left = {}
    for where, _, names in os.walk(folder):
        left.update({name: os.path.join(where, name) for name in names if name.endswith(".gcda")})
    for where, _, names in os.walk(notes):
        noted = sorted(name for name in names if name.endswith(".gcno"))
        if noted:
            read_folder(counts, folder, where, noted, notes)
    return counts


def read_folder(counts, folder, where, noted, notes):
    counted = folder + where
    os.makedirs(counted, exist_ok=True)
    for name in noted:
        link = os.path.join(counted, name)
        if not os.path.lexists(link):
            os.symlink(os.path.join(where, name), link)
    described = subprocess.run([GCOV, "-b", "-c", "--json-format", "-t", *noted], cwd=counted,
                               capture_output=True, text=True, check=True)
    for document in described.stdout.splitlines():
        if document.startswith("{"):
            counts.add(json.loads(document))
