#!/usr/bin/env python3
"""pack_jar.py ARCHIVE.jar FOLDER...: packs the folders' files. The same files give the same bytes,
whenever and wherever they were made."""

import pathlib
import sys
import zipfile

MANIFEST = "META-INF/MANIFEST.MF"
LONG_AGO = (1980, 1, 1, 0, 0, 0)


def add(archive, name, data):
    entry = zipfile.ZipInfo(name, LONG_AGO)
    entry.compress_type = zipfile.ZIP_DEFLATED
    entry.external_attr = 0o644 << 16
    archive.writestr(entry, data)


def main():
    target, folders = sys.argv[1], sys.argv[2:]
    files = {}
    for folder in map(pathlib.Path, folders):
        for file in folder.rglob("*"):
            if file.is_file():
                files[file.relative_to(folder).as_posix()] = file
    with zipfile.ZipFile(target, "w") as archive:
        add(archive, MANIFEST, b"Manifest-Version: 1.0\r\n\r\n")
        for name in sorted(files):
            add(archive, name, files[name].read_bytes())


main()
