#!/usr/bin/env python3
"""check_imports_test.py SCRIPT DEVICE_EXPORTS LIBRARY COREDLL AYGSHELL: the check of imports finds what is missing."""
import os
import subprocess
import sys
import tempfile
import unittest

SCRIPT, DEVICE_EXPORTS, LIBRARY, COREDLL, AYGSHELL = sys.argv[1:6]


def check(*arguments):
    return subprocess.run([sys.executable, SCRIPT, "--device", DEVICE_EXPORTS, *arguments], capture_output=True, text=True,
                          check=False)


class CheckImports(unittest.TestCase):
    def test_a_served_library_passes(self):
        run = check(LIBRARY, "--exporter", COREDLL, "--exporter", AYGSHELL)
        self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_a_missing_ordinal_is_told(self):
        run = check(LIBRARY, "--exporter", COREDLL)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("the desk's aygshell.dll does not export 34", run.stderr)

    def test_a_missing_name_is_told(self):
        run = check(LIBRARY, "--exporter", AYGSHELL)
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("the desk's coredll.dll does not export CreateWindowExW", run.stderr)
        self.assertNotIn("ole32", run.stderr)

    def check_list(self, text):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "list.def")
            with open(path, "w", encoding="utf-8") as definition:
                definition.write(text)
            return check("--exporter", COREDLL, "--exporter", AYGSHELL, "--lists", path)

    def test_a_listed_name_that_is_not_called_yet_is_told(self):
        run = self.check_list("LIBRARY coredll.dll\nEXPORTS\n Sleep@4\n NoSuchCall@8\n")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("does not export NoSuchCall", run.stderr)
        self.assertNotIn("Sleep", run.stderr)

    def test_a_listed_ordinal_is_looked_for_as_one(self):
        run = self.check_list("LIBRARY aygshell.dll\nEXPORTS\n Made@4 @34 NONAME\n Up@4 @999 NONAME\n")
        self.assertNotEqual(run.returncode, 0)
        self.assertIn("does not export 999", run.stderr)
        self.assertNotIn("export 34", run.stderr)

    def test_what_the_desk_has_and_the_device_lacks_is_told(self):
        for name in ("GetCurrentThreadId@0", "GetCurrentProcessId@0", "GlobalAlloc@8", "Arc@36",
                     "LoadLibraryA@4", "TlsAlloc@0"):
            run = self.check_list(f"LIBRARY coredll.dll\nEXPORTS\n Sleep@4\n {name}\n")
            self.assertNotEqual(run.returncode, 0)
            self.assertIn(f"the device's coredll.dll does not export {name.split('@')[0]}",
                          run.stderr)

    def test_what_came_in_a_later_version_is_told(self):
        with tempfile.TemporaryDirectory() as folder:
            exports = os.path.join(folder, "exports.txt")
            with open(exports, "w", encoding="utf-8") as file:
                file.write("LIBRARY coredll.dll\nSleep 4.20\nLineTo 5.0\n")
            listed = os.path.join(folder, "list.def")
            with open(listed, "w", encoding="utf-8") as file:
                file.write("LIBRARY coredll.dll\nEXPORTS\n Sleep@4\n LineTo@12\n")
            run = check("--device", exports, "--lists", listed)
        self.assertIn("the device's coredll.dll does not export LineTo", run.stderr)
        self.assertNotIn("Sleep", run.stderr)

    def test_an_empty_list_is_told(self):
        self.assertNotEqual(self.check_list("LIBRARY coredll.dll\n").returncode, 0)

    def test_nothing_to_check_is_told(self):
        self.assertNotEqual(check().returncode, 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
