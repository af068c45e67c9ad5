#!/usr/bin/env python3
"""compare_instructions.py [--update] TABLE.txt COMMAND...: runs the command, which counts instructions,
and compares with the table. More than 5 % above what was counted last, or anything above the most
that the table allows, is a failure; --update writes what was counted into the table."""
import re
import subprocess
import sys

TOLERANCE = 1.05
ROW = re.compile(r"^(?P<name>[a-z ]+?) +(?P<count>[\d.]+) +(?P<most>[\d.]+)$", re.M)


def count(command):
    run = subprocess.run(command, capture_output=True, text=True, check=False)
    found = dict(re.findall(r"^instructions (\w+) ([\d.]+)\r?$", run.stdout, re.M))
    if run.returncode or not found:
        sys.exit(f"the instructions cannot be counted:\n{run.stdout}{run.stderr}")
    return {name.replace("_", " "): value for name, value in found.items()}


def rewritten(row, value):
    start, end = row.start("count") - row.start(), row.end("count") - row.start()
    return row[0][:start - max(0, len(value) - (end - start))] + value.rjust(end - start) + row[0][end:]


def main():
    words = sys.argv[1:]
    update = words[0] == "--update"
    path, *command = words[update:]
    with open(path, encoding="utf-8") as file:
        text = file.read()
    rows = {row["name"]: row for row in ROW.finditer(text)}
    found = count(command)
    if rows.keys() != found.keys():
        sys.exit(f"{path} and what is counted differ: {sorted(rows.keys() ^ found.keys())}")
    if update:
        text = ROW.sub(lambda row: rewritten(row, found[row["name"]]), text)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
    problems = []
    for name, value in found.items():
        last, most = float(rows[name]["count"]), float(rows[name]["most"])
        print(f"{name}: {value} instructions, {last:g} in {path.rsplit('/', 1)[-1]}, {most:g} at most")
        if float(value) > most:
            problems.append(f"{name} takes {value} instructions, more than {most:g}")
        elif float(value) > last * TOLERANCE and not update:
            problems.append(f"{name} takes {value} instructions, "
                            f"{float(value) / last - 1:.0%} more than {last:g}")
    if problems:
        sys.exit("\n".join(problems))


main()
