#!/usr/bin/env python3
"""compare_instructions.py [--update] TABLE.md COMMAND...: runs the command, which counts instructions,
and compares with the table in the document. More than 5 % above it is a failure; --update writes
what was counted into the table."""
import re
import subprocess
import sys

TOLERANCE = 1.05
ROW = re.compile(r"^\| (?P<name>[a-z ]+?) +\| +(?P<count>[\d.]+) \|$", re.M)


def count(command):
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    found = dict(re.findall(r"^instructions (\w+) ([\d.]+)\r?$", run.stdout, re.M))
    if run.returncode or not found:
        sys.exit(f"the instructions cannot be counted:\n{run.stdout}{run.stderr}")
    return {name.replace("_", " "): value for name, value in found.items()}


def main():
    words = sys.argv[1:]
    update = words[0] == "--update"
    path, *command = words[update:]
    with open(path, encoding="utf-8") as file:
        text = file.read()
    known = {row["name"]: float(row["count"]) for row in ROW.finditer(text)}
    found = count(command)
    if known.keys() != found.keys():
        sys.exit(f"{path} and what is counted differ: {sorted(known.keys() ^ found.keys())}")
    if update:
        text = ROW.sub(lambda row: f"| {row['name']} | {found[row['name']]} |", text)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
    risen = []
    for name, value in found.items():
        print(f"{name}: {value} instructions, {known[name]:g} in {path.rsplit('/', 1)[-1]}")
        if float(value) > known[name] * TOLERANCE and not update:
            risen.append(f"{name} takes {value} instructions, "
                         f"{float(value) / known[name] - 1:.0%} more than {known[name]:g}")
    if risen:
        sys.exit("\n".join(risen))


main()
