#!/usr/bin/env python3
"""planted_leaks.py PROGRAM: tests that LeakSanitizer reports each kind of memory that the scene does not free.

Runs PROGRAM, which is planted_leak.cpp, without suppressions. For each kind of memory, a scene that is not destroyed
must be reported, with the function that allocated the memory. The value of a failed statement must not be reported,
because the reader keeps it by rule.
"""
import re
import subprocess
import sys

LONG = "x" * 5000
# For each kind of memory: a text whose scene owns such memory, and a pattern for the report.
LEAKS = {
    "string": (f't n; n.s = "{LONG}";', r"leak of 5001 byte\(s\) in 1 object(.|\n)*?copyOfStringValue"),
    "buffer": ("t n; n.b = byte[6000] {1};", r"leak of 6000 byte\(s\) in 1 object(.|\n)*?VsaParser::buffer"),
    "node": ("t n;", r"leak of [^#]*(#[0-9]+ [^\n]*\n *)*?[^\n]*NodeTable"),
    "list": ("t n; n.a[2000] = 1;", r"leak of 16384 byte\(s\) in 1 object(.|\n)*?InputImpl::appendElement"),
    "handle": ("t n; n.c |= n.o;", r"leak of [^#]*(#[0-9]+ [^\n]*\n *)*?[^\n]*NodeImpl::output"),
}
# Texts with values that no input receives.
KEPT_BY_RULE = [
    f't n; n.a = 1; n.a = "{LONG}";',
    f't n; n.a = 1; n.a = "{LONG}"; n.a = byte[6000] {{1}}; n.a = "{LONG}"',
    f't n; gone.a = "{LONG}";',
    "t n; gone.b = byte[6000] {1};",
    "t n; n.b = byte[2] {1 2 3};",
    f't n; n.a = "{LONG}" t m;',
    f't n; n.a = 1; n.a = "{LONG}"; n.b = 2;',
]


def report(program, how, text):
    """Returns the exit status of the program, and its output."""
    done = subprocess.run([program, how, text], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return done.returncode, done.stdout


def main():
    program = sys.argv[1]
    failures = []
    for kind, (text, expected) in LEAKS.items():
        status, output = report(program, "lost", text)
        if status == 0 or not re.search(expected, output):
            failures.append(f"a lost {kind} is not reported:\n{output}")
        status, output = report(program, "kept", text)
        if status != 0:
            failures.append(f"a {kind} that is freed is reported:\n{output}")
    for text in KEPT_BY_RULE:
        status, output = report(program, "kept", text)
        if status != 0:
            failures.append(f"what is kept by rule is reported: {text[:40]}\n{output}")
    print("\n".join(failures) or f"{len(LEAKS)} planted leaks are reported")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
