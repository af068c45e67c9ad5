"""The natives that the toolkit's Java classes declare."""
import re

PACKAGE = re.compile(r"^package com\.nuvik\.wyx\.(\w+);", re.M)
DECLARATION = re.compile(r"public static native ([\w\[\]]+) (\w+)\(([^)]*)\);")


def layer_of(source):
    """The package of a class's source: k4tr or dovr."""
    return PACKAGE.search(source)[1]


def natives_of(source):
    """Result, name and parameters of each, the parameters as pairs of type and name."""
    for result, name, declared in DECLARATION.findall(source):
        yield result, name, [tuple(one.split()) for one in declared.split(",") if one.strip()]
