#!/usr/bin/env python3
"""Compares the instructions that commands need for texts with few mistakes and with four times as many.

check_growth.py VSA [--all]

Runs the command VSA under callgrind for texts that consist of one mistake again and again. Fails if a text of four
times the size takes more than 4.6 times as many instructions. The factor is 4 for linear time, 4.3 for n log n, and 16
for the square of the size. The instructions for a text without statements are subtracted. Without --all, only the
mistakes of SAMPLE are checked, which take ten seconds.

Most texts are for `vsa check`. The commands of COMMANDS read a text whose node has a long name, with many diagnostics
about its inputs: the text of four times the size has four times as many, and a name that is four times as long. The
commands print only the first of these diagnostics and must not take time for the texts of the others.
"""
import argparse
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

# Up to 4 KiB after a mistake are searched for its end, so smaller texts of some mistakes grow faster.
BYTES, BYTES_OF_SAMPLE = 8192, 4096
MAX_GROWTH = 4.6
MISTAKES = {
    "assignments without semicolons": "  .x = 1\n",
    "tuples without semicolons": "  .x = vec3(1 2 3)\n",
    "declarations without semicolons": "lamp a\n",
    "strings without a second quote": '  .x = "abc;\n',
    "colons": ": ",
    "colons in one line": ":",
    "semicolons in one line": ";",
    "blocks without a name": "={};",
    "open braces before semicolons": "{;",
    "characters that begin no token": "%",
    "numbers": "1;\n",
    "braces": "{\n",
    "open parentheses": "a.x = (1;\n",
    "open braces": "a.x = float[3] {1 2\n",
    "open indices": "a[\n",
    "object notation of another format": '"name": {\n',
    "elements of markup": '<a name="b"/>\n',
    "lines of a program": "import x from y\n",
    "conflict markers": "<<<<<<< HEAD\n",
    "two equals signs": "a = = b\n",
    "commas between values": "a.x = 1, 2;\n",
    "two periods": "a..b = 1;\n",
    "line comments of another format": "// hello\n",
    "open comments of another format": "/* a \n",
    "missing nodes": "b.x = 1;\n",
    "wrong types": 'a.x = 1; a.x = "s";\n',
    "narrowed values": "a.k = 1; a.k = 2.5;\n",
    "unknown escapes": 'a.s = "\\q";\n',
    "links to missing nodes": "a.r = nobody;\n",
}
COMMANDS = ["stats", "dump", "types", "convert", "merge"]
NAME_BYTES = 16384
SAMPLE = ["assignments without semicolons", "colons", "blocks without a name", "open braces", "conflict markers"]


CHECK = ["check", "-q", "--format", "line", "--max-diagnostics", "1000000"]


def instructions(command, text, folder, name, arguments=CHECK):
    """Returns the instructions of the command with these arguments for the text."""
    path = folder / f"{name}.vsa"
    path.write_text(text)
    done = subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={folder / name}.out", command,
                           *arguments, path],
                          stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, cwd=folder)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode > 1 or not found:
        sys.exit(f"check_growth: {name}: {done.stderr}")
    return int(found.group(1))


def growth(command, folder, nothing, mistake, size):
    """Returns how many times as many instructions the text of four times the size takes."""
    count = size // len(MISTAKES[mistake])
    name = re.sub(r"\W", "_", mistake)
    few, many = (instructions(command, "lamp a:\n" + MISTAKES[mistake] * times, folder, f"{name}_{times}")
                 for times in (count, 4 * count))
    return (many - nothing) / max(few - nothing, 1)


def growth_of_names(command, folder, name):
    """Returns the same factor for a text with a long name and the command `name`."""
    arguments = [name, "--max-diagnostics", "1"]
    sizes = {"nothing": 0, "few": NAME_BYTES, "many": 4 * NAME_BYTES}
    nothing, few, many = (instructions(command, f"lamp a{'a' * size}:\n  .k = 1;\n" + "  .k = 2.5;\n" * (size // 16),
                                       folder, f"{name}_{key}", arguments) for key, size in sizes.items())
    return (many - nothing) / max(few - nothing, 1)


def main():
    asked = argparse.ArgumentParser()
    asked.add_argument("command", type=pathlib.Path)
    asked.add_argument("--all", action="store_true")
    asked = asked.parse_args()
    names, size = (MISTAKES, BYTES) if asked.all else (SAMPLE, BYTES_OF_SAMPLE)
    command = asked.command.resolve()
    with tempfile.TemporaryDirectory() as name, concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        folder = pathlib.Path(name)
        nothing = instructions(command, "lamp a:\n", folder, "nothing")
        found = list(pool.map(lambda mistake: growth(command, folder, nothing, mistake, size), names))
        found += pool.map(lambda name: growth_of_names(command, folder, name), COMMANDS)
    for factor, mistake in zip(found, [*names, *(f"a long name, vsa {name}" for name in COMMANDS)]):
        print(f"{factor:6.2f}  {mistake}")
    failed = sum(factor > MAX_GROWTH for factor in found)
    print(f"{len(found)} texts, {failed} grow by more than {MAX_GROWTH}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
