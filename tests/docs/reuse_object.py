#!/usr/bin/env -S python3 -BES
"""reuse_object.py BUILD COMPILER ARGUMENT...: a compiler launcher for CMake (CMAKE_CXX_COMPILER_LAUNCHER).

Copies the object file of the build folder BUILD if that build compiled the same source with the same arguments.
Options for warnings and precompiled headers may differ, because they do not change the object. Otherwise, runs the
compiler. Thus building the library a second time takes seconds, but different commands are still tested.
"""

import json
import os
import shutil
import sys

WITH_VALUE = ("-o", "-c", "-MT", "-MF", "-include")


def parts_of(command, folder):
    """Returns the source and the object of a compiler command, and the other arguments that affect the object."""
    values, others, option = {}, [], None
    for word in command:
        if option is not None:
            values[option], option = os.path.join(folder, word), None
        elif word in WITH_VALUE:
            option = word
        elif not word.startswith("-W") and word != "-MD":
            others.append(word)
    return values.get("-c"), values.get("-o"), others


def compiled_object(build, source, others):
    """Returns the object file that `build` made from this source with these arguments, or None."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        commands = json.load(file)
    for entry in commands:
        if entry["file"] == source:
            found = parts_of(entry["command"].split(), entry["directory"])
            if found[2] == others and os.path.exists(found[1]):
                return found[1]
    return None


def main():
    build, command = sys.argv[1], sys.argv[2:]
    source, target, others = parts_of(command, os.getcwd())
    made = compiled_object(build, source, others) if source and target else None
    if made is None:
        os.execvp(command[0], command)
    shutil.copyfile(made, target)


if __name__ == "__main__":
    main()
