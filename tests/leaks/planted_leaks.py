#!/usr/bin/env python3
"""planted_leaks.py PROGRAM: LeakSanitizer reports each kind of memory of the library's scene that is not freed.

Runs PROGRAM, planted_leak.cpp, without suppressions, as all other tests of the reader run. A scene that loses what it
owns is reported for each kind, by the function that allocated it. What the reader keeps by rule, the value of a
statement that fails, is not reported.
"""
import re
import subprocess
import sys

LONG = "x" * 5000
# Each kind: a text whose scene owns it, and what the report says about it.
LEAKS = {
    "string": (f't n; n.s = "{LONG}";', r"leak of 5001 byte\(s\) in 1 object(.|\n)*?copyOfStringValue"),
    "buffer": ("t n; n.b = byte[6000] {1};", r"leak of 6000 byte\(s\) in 1 object(.|\n)*?VsaParser::buffer"),
    "node": ("t n;", r"leak of [^#]*(#[0-9]+ [^\n]*\n *)*?[^\n]*NodeTable"),
    "list": ("t n; n.a[2000] = 1;", r"leak of 16384 byte\(s\) in 1 object(.|\n)*?InputImpl::appendElement"),
    "handle": ("t n; n.c |= n.o;", r"leak of [^#]*(#[0-9]+ [^\n]*\n *)*?[^\n]*NodeImpl::output"),
}
# Statements whose values no input takes.
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
    """The exit status of the program and what it printed."""
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
