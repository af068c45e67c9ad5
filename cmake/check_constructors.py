#!/usr/bin/env python3
"""check_constructors.py NM LIBRARY: the library has no static constructors; nothing would run them."""
import subprocess
import sys

symbols = subprocess.run([sys.argv[1], sys.argv[2]], check=True, capture_output=True,
                         text=True).stdout.splitlines()
found = [line.split()[-1] for line in symbols if "_GLOBAL__sub_I_" in line]
if not symbols:
    sys.exit("the library has no symbols to look at")
for name in found:
    print(f"static constructor: {name}")
sys.exit(bool(found))
