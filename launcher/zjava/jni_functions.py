#!/usr/bin/env python3
"""Reads jni.h and prints, for each slot of the JNI function table, one line of the thunk list:

    JNI_FUNCTION index, name, words of arguments     an ordinary function
    JNI_VARIADIC index, name, words before the dots, index of the form that takes a va_list
    JNI_RESERVED index
"""
import re
import sys


def slots(header):
    text = re.sub(r"/\*.*?\*/", "", header, flags=re.S)
    body = text[text.index("struct JNINativeInterface_ {"):]
    body = body[body.index("{") + 1:body.index("\n};")]
    body = re.sub(r"#.*", "", body)
    for declaration in body.split(";"):
        declaration = " ".join(declaration.split())
        if not declaration:
            continue
        match = re.match(r".*\(\s*JNICALL \*(\w+)\)\s*\((.*)\)$", declaration)
        if not match:
            if "reserved" not in declaration:
                sys.exit(f"jni_functions: cannot read: {declaration}")
            yield None, 0, False
            continue
        arguments = [argument.strip() for argument in match.group(2).split(",")]
        variadic = arguments[-1] == "..."
        if variadic:
            arguments.pop()
        wide = re.compile(r"(const )?j(long|double)( \w+)?$")
        words = sum(2 if wide.match(argument) else 1 for argument in arguments)
        yield match.group(1), words, variadic


def main():
    with open(sys.argv[1], encoding="utf-8") as header:
        table = list(slots(header.read()))
    index_of = {name: index for index, (name, _, _) in enumerate(table)}
    for index, (name, words, variadic) in enumerate(table):
        if name is None:
            print(f"JNI_RESERVED {index}")
        elif variadic:
            print(f"JNI_VARIADIC {index}, {name}, {words}, {index_of[name + 'V']}")
        else:
            print(f"JNI_FUNCTION {index}, {name}, {words}")


main()
