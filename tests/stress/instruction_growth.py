#!/usr/bin/env python3
"""Compares the instructions that the reader needs for texts of 16 KiB and for texts of four times that size.

instruction_growth.py PROGRAM [--all | --only TEXT]

Runs PROGRAM, which is instruction_growth.cpp, under callgrind. Fails if a stress text of four times the size takes more
than 4.6 times as many instructions. The factor is 4 for linear time, 4.3 for n log n, and 16 for the square of the
size. Without options, only the stress texts of SAMPLE are read. Reading all takes a minute of processor time.
"""
import argparse
import pathlib
import subprocess
import sys
import tempfile

BYTES = 16384
MAX_GROWTH = 4.6
# The stress texts with the shortest readings, one for each construct that a text can repeat. They
# take six seconds.
SAMPLE = [
    "line ends", "comments of one byte", "version comments", "one identifier", "one string of escapes",
    "mixed brackets", "re-declarations", "declarations", "defines", "created, used and removed",
    "names that differ in the middle", "type warnings", "inputs of one node", "members of one object",
    "one path of members", "holes in proportion to the text", "holes in proportion to the text, buffer",
    "an array filled by index", "an array of arrays", "an array of buffers", "references", "forward references",
    "connections", "connections to missing nodes", "one long connection source", "one integer",
    "one matrix of numbers", "strings", "buffers of one number", "integers", "floats with exponents", "doubles of 800 digits", "too many elements",
    "small streams", "tiny dynamic blocks", "many texts: an array of buffers",
    "many texts: the last buffer of an array",
]


def names_of(program, asked):
    """Returns the names of the stress texts to read."""
    names = subprocess.run([program], check=True, stdout=subprocess.PIPE, text=True).stdout.splitlines()
    missing = set(SAMPLE) - set(names)
    if missing:
        sys.exit(f"instruction_growth: there is no stress text {', '.join(sorted(missing))}")
    if asked.all:
        return names
    return [name for name in names if (asked.only in name if asked.only else name in SAMPLE)]


def records(path):
    """Yields the name of each reading, with its instructions."""
    name = None
    with open(path, errors="replace") as lines:
        for line in lines:
            if line.startswith("desc: Trigger: Client Request: "):
                name = line.rstrip().partition("Request: ")[2]
            elif line.startswith("totals:") and name is not None:
                yield name, int(line.split()[1])
                name = None


def count(program, names):
    """Returns the instructions for each stress text and size."""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder) / "callgrind.out"
        done = subprocess.run(
            ["valgrind", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no", "--dump-line=no",
             "--combine-dumps=yes", f"--callgrind-out-file={out}", program, str(BYTES), *names],
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if done.returncode != 0:
            sys.exit(f"instruction_growth: valgrind failed\n{done.stdout}")
        counts = {}
        for record, instructions in records(out):
            size, _, name = record.partition(" ")
            counts.setdefault(name, {})[int(size)] = instructions
        return counts


def main():
    asked = argparse.ArgumentParser(description="growth of the instructions of reading")
    asked.add_argument("program")
    asked.add_argument("--all", action="store_true", help="read all stress texts")
    asked.add_argument("--only", help="read the stress texts with this text in their name")
    asked = asked.parse_args()
    names = names_of(asked.program, asked)
    counts = count(asked.program, names)
    if not names or set(counts) != set(names):
        sys.exit("instruction_growth: not every stress text was counted")
    growths = sorted(((by[4 * BYTES] / by[BYTES], by[BYTES], name) for name, by in counts.items()), reverse=True)
    failed = [growth for growth in growths if growth[0] > MAX_GROWTH]
    for growth, instructions, name in failed or growths[:3]:
        print(f"{growth:6.2f} times the {instructions} instructions of {BYTES} bytes: {name}")
    print(f"{len(growths)} stress texts, {len(failed)} grow by more than {MAX_GROWTH}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
