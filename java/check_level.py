#!/usr/bin/env python3
"""check_level.py LIBRARY.txt FILE.jar [TOOLKIT.jar...]: stops at a class that the Java virtual
machines of devices do not take: one of a newer version than theirs, or one that uses what their
library lacks. LIBRARY.txt lists what that has; what the jars themselves hold may be used as well."""

import sys
import zipfile

from class_file import read_class

NEWEST = (45, 3)


def classes_of(path):
    with zipfile.ZipFile(path) as jar:
        return [read_class(jar.read(name)) for name in jar.namelist() if name.endswith(".class")]


def read_library(path):
    """The classes, each with its members as "name:type"; a class's lines are indented below it."""
    library = {}
    owner = None
    for line in open(path, encoding="ascii"):
        line = line.split("#")[0].rstrip()
        if not line:
            continue
        if line.startswith(" "):
            library[owner].update(line.split())
        else:
            owner = line
            library[owner] = set()
    return library


def plain(name):
    """The class that an array of it is named for; None for arrays of numbers."""
    if not name.startswith("["):
        return name
    element = name.lstrip("[")
    return element[1:-1] if element.startswith("L") else None


def too_new(found, library, own):
    if found.version > NEWEST:
        return "has version %d.%d, and devices take %d.%d" % (found.version + NEWEST)
    for name in map(plain, found.classes):
        if name and name not in own and name not in library:
            return "uses the class %s, which devices lack" % name.replace("/", ".")
    for member in found.members:
        if plain(member.owner) in own:
            continue
        if "%s:%s" % (member.name, member.type) not in library.get(member.owner, ()):
            arguments = member.type if member.type.startswith("(") else ""
            return "uses %s.%s%s, which devices lack" % (
                member.owner.replace("/", "."), member.name, arguments)
    return None


def complaint(library_file, jar, others):
    """What keeps the jar, which may use the others, from devices; None when nothing does."""
    library = read_library(library_file)
    classes = classes_of(jar)
    if not classes:
        return "%s holds no class" % jar
    own = {found.name for path in [jar, *others] for found in classes_of(path)}
    for found in classes:
        reason = too_new(found, library, own)
        if reason:
            return "%s in %s %s" % (found.name.replace("/", "."), jar, reason)
    return None


if __name__ == "__main__":
    said = complaint(sys.argv[1], sys.argv[2], sys.argv[3:])
    if said:
        sys.exit("zemvolt: " + said)
