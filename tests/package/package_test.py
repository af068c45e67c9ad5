#!/usr/bin/env python3
"""package_test.py BUILD: what is carried to a device holds what it should, in all its forms, and
what is not there is told in one line."""

import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
import zipfile

ROOT = pathlib.Path(__file__).parent.parent.parent
BUILD = pathlib.Path(sys.argv.pop(1))
PACKAGE = BUILD / "package"
JARS = ("zemvolt11.jar", "program.jar", "device-examples.jar", "selftest.jar")
SHORTCUTS = ("Tap.lnk", "Menus.lnk", "Self-test.lnk")
VM = '"\\Windows\\java.exe" -classpath "{classpath}" {class}'


def read_cab(path):
    """What the device's installer would make of a cabinet: folder, name and contents of each file,
    and what the document beside them tells of the whole."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["gcab", "-x", "-C", folder, str(path.resolve())], check=True,
                       stdout=subprocess.DEVNULL)
        contents = {file.name: file.read_bytes() for file in pathlib.Path(folder).iterdir()}
    document = xml.etree.ElementTree.fromstring(contents.pop("_setup.xml"))
    install, operations = document
    told = {parm.get("name"): parm.get("value") for parm in install}
    files = {}
    for place in operations:
        assert place[0].get("type") == "MakeDir"
        for file in place[1:]:
            extract, = file
            source, = extract
            files[place.get("type"), file.get("type")] = contents.pop(source.get("value"))
    assert not contents, "files that go nowhere: %s" % list(contents)
    told["places"] = len(operations)
    return told, files


def read_zip(path):
    with zipfile.ZipFile(path) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def read_folder(path):
    return {file.relative_to(path).as_posix(): file.read_bytes()
            for file in path.rglob("*") if file.is_file()}


class PackageTest(unittest.TestCase):
    def test_the_folder_holds_what_was_built(self):
        folder = read_folder(PACKAGE / "zemvolt11")
        self.assertEqual(set(folder), {"zemvolt11.dll", "armv4/zemvolt11.dll", "guide.txt",
                                       *JARS, *SHORTCUTS})
        for name in ("zemvolt11.dll", "armv4/zemvolt11.dll"):
            self.assertEqual(folder[name], (BUILD / name).read_bytes())
        for name in JARS:
            self.assertEqual(folder[name], (BUILD / "java" / name).read_bytes())
        guide = (ROOT / "docs/device.md").read_bytes()
        self.assertEqual(folder["guide.txt"].replace(b"\r\n", b"\n"), guide)

    def test_the_archive_holds_the_folder(self):
        folder = {"zemvolt11/" + name: data
                  for name, data in read_folder(PACKAGE / "zemvolt11").items()}
        self.assertEqual(read_zip(PACKAGE / "zemvolt11.zip"), folder)

    def check_cab(self, cab, library):
        told, files = read_cab(PACKAGE / cab)
        folder = read_folder(PACKAGE / "zemvolt11")
        expected = {("%CE2%", "zemvolt11.dll"): folder[library]}
        for name in (*JARS, "guide.txt"):
            expected["%CE1%\\zemvolt11", name] = folder[name]
        for name in SHORTCUTS:
            expected["%CE11%", name] = folder[name]
        self.assertEqual(files, expected)
        self.assertEqual((told["NumFiles"], told["NumDirs"]), (str(len(files)), str(told["places"])))
        self.assertEqual(told["InstallDir"], "%CE1%\\zemvolt11")

    def test_the_cabinet_installs_the_library_into_the_systems_folder(self):
        self.check_cab("zemvolt11.cab", "zemvolt11.dll")

    def test_the_cabinet_for_older_processors_installs_theirs(self):
        self.check_cab("zemvolt11-armv4.cab", "armv4/zemvolt11.dll")

    def test_names_in_a_cabinet_are_such_as_its_installer_reads(self):
        names = subprocess.run(["gcab", "-t", str(PACKAGE / "zemvolt11.cab")], check=True,
                               stdout=subprocess.PIPE, text=True).stdout.split()
        self.assertEqual(names[0], "_setup.xml")
        for number, name in enumerate(sorted(names[1:], key=lambda name: name[-3:]), 1):
            self.assertRegex(name, r"^[A-Z0-9]{1,8}\.%03d$" % number)

    def test_a_cabinet_is_stored_without_compression(self):
        cabinet = (PACKAGE / "zemvolt11.cab").read_bytes()
        folders, = struct.unpack_from("<H", cabinet, 26)
        compression, = struct.unpack_from("<H", cabinet, 36 + 6)
        self.assertEqual((cabinet[:4], folders, compression), (b"MSCF", 1, 0))

    def test_files_in_a_cabinet_have_no_time_of_their_own(self):
        cabinet = (PACKAGE / "zemvolt11.cab").read_bytes()
        offset, = struct.unpack_from("<I", cabinet, 16)
        count, = struct.unpack_from("<H", cabinet, 28)
        first_of_1980 = 0x0021
        for _ in range(count):
            self.assertEqual(struct.unpack_from("<HH", cabinet, offset + 10), (first_of_1980, 0))
            offset = cabinet.index(b"\0", offset + 16) + 1

    def test_shortcuts_tell_the_length_of_their_command_line(self):
        for name in SHORTCUTS:
            with self.subTest(name):
                length, line = (PACKAGE / "zemvolt11" / name).read_text("ascii").split("#", 1)
                self.assertEqual(int(length), len(line))

    def test_shortcuts_name_jars_where_the_cabinet_puts_them(self):
        for name in SHORTCUTS:
            with self.subTest(name):
                line = (PACKAGE / "zemvolt11" / name).read_text("ascii")
                jars = re.findall(r"\\Program Files\\zemvolt11\\([^;\"]+)", line)
                self.assertEqual(jars[0], "zemvolt11.jar")
                self.assertTrue(set(jars) <= set(JARS), jars)

    def test_shortcuts_name_classes_that_their_jars_hold(self):
        for name in SHORTCUTS:
            with self.subTest(name):
                line = (PACKAGE / "zemvolt11" / name).read_text("ascii")
                jar = re.search(r"zemvolt11\\([^;\\]+\.jar)\"", line).group(1)
                with zipfile.ZipFile(PACKAGE / "zemvolt11" / jar) as archive:
                    for word in re.findall(r"com\.nuvik\.\S+", line):
                        self.assertIn(word.replace(".", "/") + ".class", archive.namelist())


class MakingTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def make(self, library=BUILD / "zemvolt11.dll", jars=None, vm=VM, path=None, output="out"):
        jars = jars or [BUILD / "java" / name for name in JARS]
        done = subprocess.run(
            [sys.executable, str(ROOT / "device/package.py"), "--library", str(library),
             "--older-library", str(BUILD / "armv4/zemvolt11.dll"), "--jars", *map(str, jars),
             "--java-library", str(ROOT / "java/library-1.1.txt"),
             "--guide", str(ROOT / "docs/device.md"), "--vm", vm, str(self.folder / output)],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
            env={**os.environ, "PATH": path or os.environ["PATH"]})
        return done.returncode, done.stdout

    def refused(self, line, **what):
        self.assertEqual(self.make(**what), (1, "zemvolt: %s\n" % line))

    def test_the_same_files_give_the_same_bytes_at_any_time_and_place(self):
        copies = []
        for name in JARS:
            copy = self.folder / name
            copy.write_bytes((BUILD / "java" / name).read_bytes())
            os.utime(copy, (0, 0))
            copies.append(copy)
        self.assertEqual(self.make(), (0, ""))
        self.assertEqual(self.make(jars=copies, output="elsewhere"), (0, ""))
        self.assertEqual(read_folder(self.folder / "out"), read_folder(self.folder / "elsewhere"))

    def test_the_vms_command_line_is_the_shortcuts(self):
        self.assertEqual(self.make(vm="\\vm\\run.exe -cp {classpath} {class}"), (0, ""))
        names = ("zemvolt11.jar", "program.jar", "device-examples.jar")
        jars = ";".join("\\Program Files\\zemvolt11\\" + name for name in names)
        line = ("\\vm\\run.exe -cp %s com.nuvik.examples.Logged \\Tap.txt com.nuvik.examples.Tap" % jars)
        self.assertEqual((self.folder / "out/zemvolt11/Tap.lnk").read_text("ascii"),
                         "%d#%s" % (len(line), line))

    def test_a_library_that_was_not_built_is_told(self):
        self.refused("zemvolt11.dll is not built; ./zemvolt device builds it",
                     library=self.folder / "zemvolt11.dll")

    def test_a_jar_that_was_not_built_is_told(self):
        self.refused("device-examples.jar is not built; ./zemvolt device builds it",
                     jars=[self.folder / "device-examples.jar"])

    def test_a_missing_tool_is_told(self):
        self.refused("gcab is missing; ./zemvolt device installs it", path=str(self.folder))

    def test_a_jar_of_a_too_new_version_is_told(self):
        jar = self.folder / "new.jar"
        with zipfile.ZipFile(BUILD / "java/zemvolt11.jar") as old, zipfile.ZipFile(jar, "w") as new:
            for name in old.namelist():
                data = old.read(name)
                if name.endswith("/dovr/OS.class"):
                    data = data[:4] + b"\0\0\0\x37" + data[8:]
                new.writestr(name, data)
        self.refused("com.nuvik.wyx.dovr.OS in %s has version 55.0, and devices take 45.3" % jar,
                     jars=[jar])

    def test_a_vm_that_is_not_told_what_to_run_is_refused(self):
        for vm in ("java.exe", "java.exe {class}", "java.exe {classpath}"):
            with self.subTest(vm):
                self.refused("the VM's command line has to hold {classpath} and {class}", vm=vm)

    def test_a_command_line_that_no_shortcut_holds_is_refused(self):
        code, said = self.make(vm="x" * 200 + " {classpath} {class}")
        self.assertEqual(code, 1)
        self.assertRegex(said, r"^zemvolt: the VM's command line is too long: "
                               r"a shortcut holds 255 characters, this needs \d+\n$")

    def test_a_command_line_of_other_letters_is_refused(self):
        self.refused("the VM's command line is not plain ASCII", vm="\u00e4.exe {classpath} {class}")

    def test_a_refused_package_leaves_nothing(self):
        self.make(vm="java.exe")
        self.assertFalse((self.folder / "out").exists())


if __name__ == "__main__":
    unittest.main()
