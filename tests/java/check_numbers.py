#!/usr/bin/env python3
"""check_numbers.py JAVA_NUMBERS.h TOOLKIT.jar JAVA_FOLDER: compares the numbers that the library goes
by with those that the toolkit's classes make known, name by name and both ways. JAVA_FOLDER holds
what reads class files."""
import re
import sys
import zipfile

PACKAGE, NATIVES = "com/nuvik/wyx/", "com/nuvik/wyx/k4tr/OS"


def constant_of(enumerator, is_scoped):
    """closeRequested of an enum class is CLOSE_REQUESTED; styleCloseBox of another CLOSE_BOX."""
    if enumerator.isupper():
        return enumerator
    words = re.sub(r"(?<=[a-z0-9])([A-Z])", r" \1", enumerator).split()
    return "_".join(words if is_scoped else words[1:]).upper()


def numbers_of_header(path):
    numbers = {}
    with open(path, encoding="ascii") as file:
        text = re.sub(r"//.*", "", file.read())
    for scoped, name, body in re.findall(r"\benum (class )?(\w+)[^{;]*\{([^}]*)\}", text):
        owner = NATIVES if name == "CallbackId" else PACKAGE + name
        value = -1
        for enumerator in filter(None, map(str.strip, body.split(","))):
            word, _, given = map(str.strip, enumerator.partition("="))
            value = int(given, 0) if given else value + 1
            numbers[owner, constant_of(word, bool(scoped))] = value
    return numbers


def numbers_of_jar(path, read_class):
    with zipfile.ZipFile(path) as jar:
        classes = [read_class(jar.read(name)) for name in jar.namelist() if name.endswith(".class")]
    return {(found.name, name): value for found in classes for name, value in found.numbers.items()}


def main():
    header, jar, folder = sys.argv[1:]
    sys.path.insert(0, folder)
    from class_file import read_class
    library, java = numbers_of_header(header), numbers_of_jar(jar, read_class)
    for owner, name in sorted(library.keys() | java.keys()):
        ours, theirs = library.get((owner, name)), java.get((owner, name))
        if ours != theirs:
            print(f"{owner.replace('/', '.')}.{name} is {theirs} in Java and {ours} in the library")
    print(f"{len(library)} numbers in the library, {len(java)} in Java")
    sys.exit(library != java or not java)


main()
