"""The programs of tests that reach the library, and build folders in which they find another library
than the desk's: one with counters, one with a change."""
import fcntl
import json
import os
import subprocess
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BUILD = os.environ.get("ZEMVOLT_BUILD", os.path.join(ROOT, "build"))
DESK = os.path.join(BUILD, "desk")
SOURCES = os.path.join(ROOT, "src")
OF_LIBRARY = ("unit", "disposal", "faults", "java", "companion", "selftest", "testing")
# What is tried here runs no native.
WITHOUT_NATIVES = ("arithmetic_test", "native_types_test", "header_test")
SLOWER = 3  # than the desk's, with counters


class Test:
    """A test as the suite runs it: a name, a command, and what its environment has more."""

    def __init__(self, described):
        self.name = described["name"]
        self.command = described["command"]
        properties = {each["name"]: each["value"] for each in described["properties"]}
        self.environment = dict(each.split("=", 1) for each in properties.get("ENVIRONMENT", []))
        self.plain = "LABELS" not in properties or "varieties" not in properties["LABELS"]
        self.limit = SLOWER * int(properties.get("TIMEOUT", 600))

    def loads_library(self):
        """With the desk's code, on the plain device, and not beside it."""
        runs = any(os.path.basename(word) in ("on-device", "run-java") for word in self.command)
        runs = runs or self.command[0].endswith("selftest/run")
        return (runs and self.plain and "--device" not in self.command
                and self.name not in WITHOUT_NATIVES)


def all_tests():
    listed = subprocess.run(["ctest", "--test-dir", DESK, "--show-only=json-v1"],
                            capture_output=True, text=True, check=True)
    described = json.loads(listed.stdout)
    graph = described["backtraceGraph"]

    def folder(test):
        node = graph["nodes"][test["backtrace"]]
        while "parent" in node:
            node = graph["nodes"][node["parent"]]
        return os.path.basename(os.path.dirname(graph["files"][node["file"]]))

    found = [(Test(each), folder(each)) for each in described["tests"] if "command" in each]
    reaching = [(test, where) for test, where in found if where in OF_LIBRARY and test.loads_library()]
    without = set(OF_LIBRARY) - {where for _, where in reaching}
    if without:
        raise SystemExit(f"no test of tests/{' and tests/'.join(sorted(without))} is known to reach the library")
    return [test for test, _ in reaching]


class Copy:
    """A build folder that has its own devices and, of the desk's files, all that it does not replace. One
    program at a time has it; another waits."""

    def __init__(self, name, processor=None):
        """processor: number of the one that its programs stay on, counted from 0 over and over; None: any"""
        self.prefix = []
        if processor is not None:
            usable = sorted(os.sched_getaffinity(0))
            self.prefix = ["taskset", "-c", str(usable[processor % len(usable)])]
        self.folder = os.path.join(BUILD, name)
        self.bin = os.path.join(self.folder, "desk", "bin")
        os.makedirs(self.bin, exist_ok=True)
        os.makedirs(os.path.join(self.folder, "run"), exist_ok=True)
        self.lock = open(os.path.join(self.folder, "lock"), "w")
        fcntl.flock(self.lock, fcntl.LOCK_EX)
        self.link(os.path.join(DESK, "java"), os.path.join(self.folder, "desk", "java"))
        for unpacked in ("jre32", "sounds", "images-go", "images-more", "images-pixbuf"):
            source = os.path.join(BUILD, "run", unpacked)
            self.link(source, os.path.join(self.folder, "run", unpacked))

    def replace(self, replaced):
        """replaced: folder whose files stand in for the desk's of their names."""
        own = set(os.listdir(replaced))
        for name in os.listdir(os.path.join(DESK, "bin")):
            where = replaced if name in own else os.path.join(DESK, "bin")
            self.link(os.path.join(where, name), os.path.join(self.bin, name))

    @staticmethod
    def link(source, target):
        if os.path.islink(target) and os.readlink(target) == source:
            return
        if os.path.lexists(target):
            os.remove(target)
        os.symlink(source, target)

    def run(self, test, more, output, limit=None):
        """Runs the test on the copy's own device and in its folder, for as many seconds as it may at most;
        its output goes to the file. Returns its exit code, None when it had to be ended, and the seconds
        that it took."""
        environment = {**os.environ, **test.environment, "ZEMVOLT_BUILD": self.folder, **more}
        command = self.prefix + [word.replace(os.path.join(DESK, "bin"), self.bin) for word in test.command]
        start = time.monotonic()
        with open(output, "wb") as file:
            program = subprocess.Popen(command, env=environment, cwd=self.folder,
                                       stdin=subprocess.DEVNULL, stdout=file,
                                       stderr=subprocess.STDOUT)
            try:
                code = program.wait(limit or test.limit)
            except subprocess.TimeoutExpired:
                program.terminate()
                program.wait()
                code = None
        return code, time.monotonic() - start

    def end_devices(self):
        script = '. "$1/launcher/environment.sh"; . "$1/launcher/device.sh"; end_shared_devices'
        environment = {**os.environ, "ZEMVOLT_BUILD": self.folder}
        subprocess.run(["bash", "-c", script, "-", ROOT], env=environment, check=False)
