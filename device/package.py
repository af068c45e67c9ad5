#!/usr/bin/env python3
"""Makes what is carried to a device of what was built: the folder zemvolt11, a .zip of it, and for
each kind of processor a .cab that the device installs. The same files give the same bytes."""

import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import zipfile
from xml.sax.saxutils import quoteattr

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "java"))
from check_level import complaint  # noqa: E402

NAME = "zemvolt11"
FOLDER = "\\Program Files\\" + NAME
# A shortcut's file holds no more.
LONGEST_SHORTCUT = 255
LONG_AGO = (1980, 1, 1, 0, 0, 0)
LONG_AGO_SECONDS = 315532800

# The installer's names of the folders that every device has.
PROGRAMS, SYSTEM, START_MENU = "%CE1%\\" + NAME, "%CE2%", "%CE11%"

# A shortcut, the jars of its program, and what the virtual machine is told to run.
EXAMPLE_JARS = ("program.jar", "device-examples.jar")
SHORTCUTS = [
    ("Tap", EXAMPLE_JARS, "com.nuvik.examples.Logged \\Tap.txt com.nuvik.examples.Tap"),
    ("Menus", EXAMPLE_JARS, "com.nuvik.examples.Logged \\Menus.txt com.nuvik.examples.Menus"),
    ("Self-test", ("selftest.jar",), "com.nuvik.selftest.SelfTest \\zemvolt11-report.txt"),
]


def fail(text):
    sys.exit("zemvolt: " + text)


def shortcut(vm, jars, program):
    """What a file that starts the program holds: the length of a command line, and that."""
    classpath = ";".join(FOLDER + "\\" + name for name in (NAME + ".jar", *jars))
    if not vm.isascii():
        fail("the VM's command line is not plain ASCII")
    line = vm.replace("{classpath}", classpath).replace("{class}", program)
    content = "%d#%s" % (len(line), line)
    if len(content) > LONGEST_SHORTCUT:
        fail("the VM's command line is too long: a shortcut holds %d characters, this needs %d"
             % (LONGEST_SHORTCUT, len(content)))
    return content.encode("ascii")


def setup_document(places):
    """What the device's installer does: for each folder the files, each with its name in the cab."""
    lines = ["<wap-provisioningdoc>", '  <characteristic type="Install">']
    count = sum(len(files) for files in places.values())
    for name, value in (("InstallPhase", "install"), ("OSVersionMin", "4.20"),
                        ("OSVersionMax", "6.99"), ("AppName", NAME), ("InstallDir", PROGRAMS),
                        ("NumDirs", len(places)), ("NumFiles", count), ("NumRegKeys", 0),
                        ("NumRegVals", 0), ("NumShortcuts", 0)):
        translation = ' translation="install"' if name == "InstallDir" else ""
        lines.append("    <parm name=%s value=%s%s />"
                     % (quoteattr(name), quoteattr(str(value)), translation))
    lines += ["  </characteristic>", '  <characteristic type="FileOperation">']
    for place, files in places.items():
        lines.append('    <characteristic type=%s translation="install">' % quoteattr(place))
        lines.append('      <characteristic type="MakeDir" />')
        for name, short in files:
            lines += ['      <characteristic type=%s translation="install">' % quoteattr(name),
                      '        <characteristic type="Extract">',
                      '          <parm name="Source" value=%s />' % quoteattr(short),
                      "        </characteristic>", "      </characteristic>"]
        lines.append("    </characteristic>")
    lines += ["  </characteristic>", "</wap-provisioningdoc>", ""]
    return "\n".join(lines).encode("ascii")


def short_name(name, number):
    letters = "".join(letter for letter in name.upper() if letter.isalnum())
    return "%s.%03d" % (letters[:8], number)


def place_of(name):
    if name.endswith(".dll"):
        return SYSTEM
    return START_MENU if name.endswith(".lnk") else PROGRAMS


def write_cab(target, files):
    """A cabinet without compression, which every installer reads."""
    gcab = shutil.which("gcab")
    if not gcab:
        fail("gcab is missing; ./zemvolt device installs it")
    places = {PROGRAMS: [], SYSTEM: [], START_MENU: []}
    with tempfile.TemporaryDirectory() as folder:
        contents = {}
        for number, (name, data) in enumerate(sorted(files.items()), 1):
            short = short_name(name, number)
            contents[short] = data
            places[place_of(name)].append((name, short))
        contents["_setup.xml"] = setup_document(places)
        for name, data in contents.items():
            path = pathlib.Path(folder, name)
            path.write_bytes(data)
            os.utime(path, (LONG_AGO_SECONDS, LONG_AGO_SECONDS))
        command = [gcab, "-c", "-n", str(target.resolve())] + sorted(contents, reverse=True)
        done = subprocess.run(command, cwd=folder, env={**os.environ, "TZ": "UTC"},
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if done.returncode:
            fail("gcab: " + done.stdout.strip())


def write_zip(target, files):
    with zipfile.ZipFile(target, "w") as archive:
        for name, data in sorted(files.items()):
            entry = zipfile.ZipInfo("%s/%s" % (NAME, name), LONG_AGO)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, data)


def write_folder(folder, files):
    shutil.rmtree(folder, ignore_errors=True)
    for name, data in files.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


def collect(options):
    for built in (options.library, options.older_library, *options.jars):
        if not built.is_file():
            fail("%s is not built; ./zemvolt device builds it" % built.name)
    for jar in options.jars:
        said = complaint(options.java_library, jar, options.jars)
        if said:
            fail(said)
    if "{class}" not in options.vm or "{classpath}" not in options.vm:
        fail("the VM's command line has to hold {classpath} and {class}")
    files = {path.name: path.read_bytes() for path in options.jars}
    files["guide.txt"] = options.guide.read_bytes().replace(b"\n", b"\r\n")
    for name, jars, program in SHORTCUTS:
        if files.keys() >= set(jars):
            files[name + ".lnk"] = shortcut(options.vm, jars, program)
    return files


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--library", type=pathlib.Path, required=True)
    parser.add_argument("--older-library", type=pathlib.Path, required=True,
                        help="the library for processors of architecture 4")
    parser.add_argument("--jars", type=pathlib.Path, nargs="+", required=True)
    parser.add_argument("--java-library", type=pathlib.Path, required=True,
                        help="the list of what a device's Java has")
    parser.add_argument("--guide", type=pathlib.Path, required=True)
    parser.add_argument("--vm", required=True,
                        help="the virtual machine's command line, with {classpath} and {class}")
    parser.add_argument("output", type=pathlib.Path)
    options = parser.parse_args()

    files = collect(options)
    library = {"zemvolt11.dll": options.library.read_bytes()}
    older = options.older_library.read_bytes()
    options.output.mkdir(parents=True, exist_ok=True)
    everything = {**files, **library, "armv4/zemvolt11.dll": older}
    write_cab(options.output / (NAME + ".cab"), {**files, **library})
    write_cab(options.output / (NAME + "-armv4.cab"), {**files, "zemvolt11.dll": older})
    write_folder(options.output / NAME, everything)
    write_zip(options.output / (NAME + ".zip"), everything)


main()
