#!/usr/bin/env python3
"""level_test.py: which classes are taken for such that devices take."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).parent.parent.parent
JAVA = ROOT / "java"

# What is wrong with a class of one method: its body, the compiler's target, and what is said of it.
BODIES = {
    "what every device has is taken": ("new java.util.Vector().size();", "1.1", None),
    "arrays are taken": ("Object[][] a = new String[2][3]; a.clone();", "1.1", None),
    "a newer version is refused": ("", "1.2", "has version 46.0, and devices take 45.3"),
    "a class that came later is refused": (
        "new java.util.ArrayList();", "1.1", "uses the class java.util.ArrayList, which devices lack"),
    "an array of such a class is refused": (
        "Object a = new java.util.List[1];", "1.1", "uses the class java.util.List, which devices lack"),
    "a method that came later is refused": (
        "\"\".split(\"\");", "1.1",
        "uses java.lang.String.split(Ljava/lang/String;)[Ljava/lang/String;, which devices lack"),
    "a later form of an old method is refused": (
        "new StringBuffer().append(new StringBuffer());", "1.1",
        "uses java.lang.StringBuffer.append(Ljava/lang/StringBuffer;)Ljava/lang/StringBuffer;, "
        "which devices lack"),
    "a field that came later is refused": (
        "Object o = String.CASE_INSENSITIVE_ORDER;", "1.1",
        "uses java.lang.String.CASE_INSENSITIVE_ORDER, which devices lack"),
    "a field that is not listed is refused": (
        "Object o = System.in;", "1.1", "uses java.lang.System.in, which devices lack"),
}


class LevelTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.cases = {"Case%d" % number: case for number, case in enumerate(BODIES.items())}
        for target in ("1.1", "1.2"):
            cls.compile(target, {name: body for name, (_, (body, wanted, _)) in cls.cases.items()
                                 if wanted == target})
        cls.compile("1.1", {"Toolkit": "", "Program": "new Toolkit();"})

    @classmethod
    def compile(cls, target, bodies):
        """Each class into a folder of its own name."""
        sources = []
        for name, body in bodies.items():
            (cls.folder / name).mkdir()
            source = cls.folder / name / (name + ".java")
            source.write_text("public class %s { static void run() { %s } }" % (name, body))
            sources.append(str(source))
        subprocess.run(["ecj", "-nowarn", "-source", "1.3", "-target", target, *sources], check=True)

    def pack(self, name):
        jar = self.folder / (name + ".jar")
        subprocess.run([sys.executable, str(JAVA / "pack_jar.py"), str(jar), str(self.folder / name)],
                       check=True)
        return jar

    def says(self, *jars):
        done = subprocess.run(
            [sys.executable, str(JAVA / "check_level.py"), str(JAVA / "library-1.1.txt"),
             *map(str, jars)], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        return done.returncode, done.stdout

    def test_classes(self):
        for name, (what, (_, _, reason)) in self.cases.items():
            with self.subTest(what):
                jar = self.pack(name)
                expected = (1, "zemvolt: %s in %s %s\n" % (name, jar, reason)) if reason else (0, "")
                self.assertEqual(self.says(jar), expected)

    def test_classes_of_the_toolkit_may_be_used_where_it_is_named(self):
        toolkit, program = self.pack("Toolkit"), self.pack("Program")
        self.assertEqual(self.says(program, toolkit), (0, ""))
        self.assertEqual(self.says(program), (
            1, "zemvolt: Program in %s uses the class Toolkit, which devices lack\n" % program))

    def test_a_jar_without_classes_is_refused(self):
        (self.folder / "empty").mkdir()
        jar = self.pack("empty")
        self.assertEqual(self.says(jar), (1, "zemvolt: %s holds no class\n" % jar))

    def test_the_same_classes_give_the_same_bytes_at_any_time(self):
        first = self.pack("Toolkit").read_bytes()
        for file in (self.folder / "Toolkit").iterdir():
            os.utime(file, (0, 0))
        self.assertEqual(first, self.pack("Toolkit").read_bytes())


if __name__ == "__main__":
    unittest.main()
