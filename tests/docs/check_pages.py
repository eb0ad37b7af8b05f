#!/usr/bin/env -S python3 -B
"""check_pages.py BUILD COMPILER: runs what the documentation shows and compares the output with the documentation.

Each block of code in README.md, CONTRIBUTING.md, SECURITY.md and docs/*.md is run. Its language decides how:

  vsa      A text that `vsa dump` reads. The `log` block after it is the expected log, the `json` block the expected
           nodes. Without such a block, the text must be read without a message. The comment <!-- before: TEXT --> adds
           a text before an excerpt. With <!-- with: NAME -->, the program hosts/NAME.cpp reads the text and prints the
           log.
  cpp      A whole program. With <!-- in: NAME -->, it is an excerpt that hosts/NAME.cpp includes as "block.inc". It is
           compiled against the installed library and run in a folder in which scene.vsa is the first text of README.md.
           <!-- reads: PATH --> adds a copy of that file of the tree to the folder. The program prints the `output`
           block after it, or nothing without such a block. Its exit status is 0.
  c        The same as cpp, but in C99 and with the shared library.
  console  Commands after "$ ", each followed by its output. `./dev run` and `./dev check` become `vsa dump` and `vsa
           check` of the build under test, which is the program that they would build. The commands run in a folder with
           links to the files and folders of the root.
  calls    The calls that hosts/order_of_calls.cpp prints. A repeated query is listed once. Two blanks begin a remark.
  sh       Commands that run in a folder with app.cpp, the program of README.md, and with the installed library. A build
           in build/library is written to a scratch folder. It copies those object files of the build under test that
           were compiled with the same commands (see reuse_object.py).
  cmake    The lines after find_package in the CMakeLists.txt of a project with app.cpp.
  python   The recipe for exporters, which recipe.py tests.

Other blocks, and blocks that cannot be run, have <!-- not run: REASON --> before them. The test counts these blocks.
format_tables.py tests the tables of docs/format.md row by row. Links must have an existing target. Files, folders and
settings that a page names must exist. Lines have at most 120 columns, except tables and links.
"""

import difflib
import glob
import gzip
import html
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile

import format_tables
import recipe
from markdown import Page, code_of

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
MAX_COLUMNS = 120
OUTCOMES = ("log", "json", "output")


class Failure(Exception):
    """An error: the output of a block is not what the page says."""


class Tools:
    """The build under test, its installation, and a scratch folder."""

    def __init__(self, build, compiler, scratch):
        self.build, self.compiler, self.scratch = build, compiler, scratch
        self.scene = ""  # the text of scene.vsa
        self.prefix = os.path.join(scratch, "prefix")
        self.vsa = os.path.join(self.prefix, "bin", "vsa")
        self.hosts = {}  # the path of each host program, by its name
        self.run(["cmake", "--install", build, "--prefix", self.prefix])

    def path(self, name):
        return os.path.join(self.scratch, name)

    def write(self, name, text):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(text)
        return self.path(name)

    def attempt(self, command, folder=None, **environment):
        """Runs a command. Returns its exit status and its output, including standard error."""
        variables = dict(os.environ, PATH=f"{self.prefix}/bin:{os.environ['PATH']}", **environment)
        done = subprocess.run(command, cwd=folder or self.scratch, env=variables, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        return done.returncode, done.stdout.decode("utf-8", "replace")

    def run(self, command, folder=None, **environment):
        status, printed = self.attempt(command, folder, **environment)
        if status != 0:
            raise Failure(f"{' '.join(command)}: status {status}\n{printed}")
        return printed

    def tree(self):
        """Returns a folder with links to the files and folders of the root, so that commands write no files there."""
        folder = self.path("tree")
        if not os.path.exists(folder):
            os.mkdir(folder)
            for name in os.listdir(ROOT):
                os.symlink(os.path.join(ROOT, name), os.path.join(folder, name))
        return folder

    def library_folder(self):
        return os.path.dirname(glob.glob(f"{self.prefix}/lib*/**/libvsa.a", recursive=True)[0])

    def compile(self, source, program):
        options = ["-std=c++20", "-pthread", "-Wall", "-Wextra", "-Werror", "-Winvalid-pch",
                   f"-I{self.prefix}/include", f"-I{self.scratch}"]
        with open(source, encoding="utf-8") as file:
            includes_vsa = "#include <vsa/vsa.h>\n" in file.read()
        header = ["-include", self.precompiled(options)] if includes_vsa else []
        self.run([self.compiler, *options, *header, source, f"{self.library_folder()}/libvsa.a", "-o", program])

    def precompiled(self, options):
        """Returns a precompiled header that includes <vsa/vsa.h>, with which a program compiles in half the time."""
        header = self.path("precompiled.h")
        if not os.path.exists(header):
            self.run([self.compiler, *options, "-x", "c++-header", self.write("precompiled.h", "#include <vsa/vsa.h>\n"),
                      "-o", header + ".gch"])
        return header

    def dump(self, text):
        """Returns the output of `vsa dump` for a text."""
        path = self.write("text.vsa", text)
        status, printed = self.attempt([self.vsa, "dump", path])
        if status not in (0, 1):
            raise Failure(f"vsa dump: status {status}\n{printed}")
        return json.loads(printed[printed.index('{"result"') :])

    def host(self, name):
        """Returns the program of hosts/NAME.cpp, which is compiled once."""
        if name not in self.hosts:
            self.hosts[name] = self.path("host_" + name)
            self.compile(os.path.join(HERE, "hosts", name + ".cpp"), self.hosts[name])
        return self.hosts[name]


def expect(what, found, stated):
    if found != stated:
        difference = difflib.unified_diff(stated.splitlines(), found.splitlines(), "stated", "found", lineterm="")
        raise Failure(f"{what}:\n" + "\n".join(difference))


def outcome(block, language):
    """Returns the text of the block's outcome in that language, or None."""
    return next((other.text for other in block.outcomes if other.language == language), None)


# The bytes that cause the messages of `vsa dump` in the section "What the command adds" of
# docs/messages.md.
DAMAGED = {
    "this looks like UTF-16": "lamp sun;".encode("utf-16"),
    "this file is compressed with gzip": gzip.compress(b"lamp sun;"),
    "a NUL byte": b"# a comment\0 and its rest\nlamp sun;",
    "a byte 0xFF": b"lamp sun; \xff lamp moon;",
    "the text is cut off": b'lamp sun; "never closed',
}


def check_command_messages(tools, page, report):
    for row in page.rows:
        if row.section != "What the command adds":
            continue
        stated = re.match(r"`([^`]*)`", row.cells[0])[1]
        damage = next((data for text, data in DAMAGED.items() if stated.startswith(text)), None)
        if damage is None:
            report.not_run.append((row.place, f"'{stated}' needs a file that cannot be read"))
            continue
        with open(tools.path("damaged.vsa"), "wb") as file:
            file.write(damage)
        status, printed = tools.attempt([tools.vsa, "dump", "damaged.vsa"])
        if status != 1 or stated.removesuffix("...") not in printed:
            report.fail(row.place, f"status {status}: {printed}")
        report.count("damaged files")


def check_table_of_messages(tools, page, report):
    """Checks that the page has all rows of the table of diagnostics, and that paragraphs begin with the log line."""
    rows = {code_of(row.cells[1])[0]: row for row in page.rows if re.match(r"\[`", row.cells[1])}
    paragraphs = {heading: text for heading, text in page.first_lines()}
    for line in tools.run([tools.host("print_table")]).splitlines():
        name, kind, severity, logged, arguments = line.split("\t")
        row, place = rows.get(name), f"{page.name}: {name}"
        if row is None or name not in paragraphs:
            report.fail(place, "there is no row or no paragraph")
            continue
        level, fatal = ("error", "yes") if severity == "fatal" else (severity, "no")
        stated = [row.cells[2].replace("...", "%s"), row.cells[3], row.cells[4]]
        if stated != [kind or "none", level, fatal]:
            report.fail(row.place, f"{name} is {kind or 'none'}, {level}, fatal: {fatal}")
        if ", ".join(code_of(row.cells[5])) != arguments:
            report.fail(row.place, f"the arguments of {name} are {arguments or 'none'}")
        if not paragraphs[name].startswith(f"`{logged}`"):
            report.fail(place, f"the paragraph does not begin with `{logged}`")
        report.count("messages")


def lines_of(texts):
    return "".join(text + "\n" for text in texts)


def messages_of(dump):
    """Returns the logged messages in order, and the text of the exception that left the entry point."""
    texts = [message["text"] for message in dump["log"]]
    return texts + ([dump["escaped"]] if dump["escaped"] is not None else [])


def without_lines(message, count):
    """Returns the message with a line number that does not count the first `count` lines of the text."""
    return re.sub(r"\((\d+),(\d+)\)", lambda at: f"({int(at[1]) - count},{at[2]})", message, count=1)


def run_vsa(tools, block):
    host = block.directive("with")
    if host is not None:
        found = tools.run([tools.host(host), tools.write("text.vsa", block.text)])
        return expect("the log", found, outcome(block, "log") or "")
    before = block.directive("before")
    dump = tools.dump(f"{before}\n{block.text}" if before else block.text)
    messages = [without_lines(message, 1 if before else 0) for message in messages_of(dump)]
    expect("the log", lines_of(messages), outcome(block, "log") or "")
    nodes = outcome(block, "json")
    if nodes is not None:
        stated = json.loads(f"[{nodes}]")
        expect("the nodes", json.dumps(dump["nodes"], indent=1), json.dumps(stated, indent=1))
    return None


def run_cpp(tools, block):
    name = block.directive("in")
    if name is None:
        program = tools.path("program")
        tools.compile(tools.write("program.cpp", block.text), program)
    else:
        tools.write("block.inc", block.text)
        program = tools.host(name)
    tools.write("scene.vsa", tools.scene)
    if block.directive("reads") is not None:
        shutil.copy(os.path.join(ROOT, block.directive("reads")), tools.scratch)
    expect("what it prints", tools.run([program]), outcome(block, "output") or "")


def run_c(tools, block):
    source, program, folder = tools.write("program.c", block.text), tools.path("program"), tools.library_folder()
    tools.run(["cc", "-std=c99", "-pedantic", "-Wall", "-Wextra", "-Werror", f"-I{tools.prefix}/include", source,
               f"-L{folder}", "-lvsa", f"-Wl,-rpath,{folder}", "-o", program])
    tools.write("scene.vsa", tools.scene)
    expect("what it prints", tools.run([program]), outcome(block, "output") or "")


def commands_of(block):
    """Yields the commands of a console block, each with its expected output."""
    command, printed = None, []
    for line in block.lines + ["$ "]:
        if line.startswith("$ "):
            if command is not None:
                yield command, lines_of(printed)
            command, printed = line[2:], []
        else:
            printed.append(line)


def run_console(tools, block):
    for command, stated in commands_of(block):
        command = re.sub(r"^\./dev run ", "vsa dump ", command)
        command = re.sub(r"^\./dev check ", "vsa check ", command)
        expect(command, tools.attempt(["bash", "-c", command], tools.tree())[1], stated)


def run_calls(tools, block):
    found = tools.run([tools.host("order_of_calls")]).splitlines()
    asked = [line for number, line in enumerate(found) if " = " not in line or line not in found[:number]]
    stated = [re.sub(r"  .*", "", line) for line in block.lines]
    expect("the calls", lines_of(asked), lines_of(stated))


def run_sh(tools, block):
    text = block.text.replace("build/library", tools.path("library"))
    folder = ROOT if "cmake -S ." in text else tools.scratch
    variables = {"PKG_CONFIG_PATH": f"{tools.library_folder()}/pkgconfig", "HOME": tools.path("home"),
                 "CMAKE_CXX_COMPILER_LAUNCHER": f"{HERE}/reuse_object.py;{tools.build}"}
    tools.run(["bash", "-euc", text], folder, **variables)


def run_cmake(tools, block):
    head = "cmake_minimum_required(VERSION 3.25)\nproject(app LANGUAGES CXX)\n"
    tools.write("project/CMakeLists.txt", head + block.text)
    shutil.copy(tools.path("app.cpp"), tools.path("project/app.cpp"))
    tools.run(["cmake", "-S", "project", "-B", "project/build", f"-DCMAKE_PREFIX_PATH={tools.prefix}",
               f"-DCMAKE_CXX_COMPILER={tools.compiler}"])
    tools.run(["cmake", "--build", "project/build"])
    tools.run([tools.path("project/build/app")])


def run_python(tools, block):
    recipe.check(block.text, tools.dump, messages_of)


RUNNERS = {"vsa": run_vsa, "cpp": run_cpp, "c": run_c, "calls": run_calls, "console": run_console, "sh": run_sh,
           "cmake": run_cmake, "python": run_python}


def join_outcomes(page):
    """Returns the blocks of the page. A block that is the outcome of another block is attached to that block."""
    blocks = []
    for block in page.blocks:
        if block.language in OUTCOMES and blocks and not block.comment:
            blocks[-1].outcomes.append(block)
        else:
            blocks.append(block)
    return blocks


class Report:
    def __init__(self):
        self.ran, self.not_run, self.failures = {}, [], []

    def fail(self, place, what):
        self.failures.append(f"{place}: {what}")

    def count(self, kind):
        self.ran[kind] = self.ran.get(kind, 0) + 1

    def print(self):
        for failure in self.failures:
            print(failure)
        print("run: " + ", ".join(f"{count} {kind}" for kind, count in sorted(self.ran.items())))
        for place, reason in self.not_run:
            print(f"not run: {place}: {reason}")
        print(f"{len(self.not_run)} not run, {len(self.failures)} failed")


def check_block(tools, block, report):
    reason = block.directive("not run")
    if reason is not None:
        return report.not_run.append((block.place, reason))
    if block.language not in RUNNERS:
        return report.fail(block.place, f"a block of '{block.language}' that nothing runs, without a reason")
    try:
        RUNNERS[block.language](tools, block)
        report.count(block.language)
    except (Failure, recipe.Failure) as failure:
        report.fail(block.place, failure)
    return None


def check_links(pages, report):
    for page in pages.values():
        for line, target in page.links():
            path, _, anchor = target.partition("#")
            name = os.path.normpath(os.path.join(os.path.dirname(page.name), path)) if path else page.name
            if not os.path.exists(os.path.join(ROOT, name)):
                report.fail(f"{page.name}:{line}", f"there is no {name}")
            elif anchor and name in pages and anchor not in pages[name].anchors():
                report.fail(f"{page.name}:{line}", f"{name} has no heading #{anchor}")
            else:
                report.count("links")


def check_paths(page, report):
    """Checks the files and folders that the page names. It may name a file without its extension."""
    folders = "bench|cmake|docs|examples|fuzz|include|src|tests|tools"
    for line, text in page.prose:
        for path in re.findall(rf"`((?:{folders})/[\w./*-]+)", text):
            if not glob.glob(f"{ROOT}/{path}") and not glob.glob(f"{ROOT}/{path}.*"):
                report.fail(f"{page.name}:{line}", f"there is no {path}")
            report.count("names of files and folders")


def check_settings(page, report):
    """Checks the environment variables and CMake options that the page names."""
    for line, text in page.prose:
        for name in re.findall(r"\b(VSA_[A-Z_]+)\b", text):
            folders = ["CMakeLists.txt", "cmake", "examples", "fuzz", "include", "src", "tests", "tools"]
            found = subprocess.run(["grep", "-rqw", "--exclude-dir=docs", name] + folders, cwd=ROOT, check=False)
            if found.returncode != 0:
                report.fail(f"{page.name}:{line}", f"nothing reads {name}")
            report.count("names of settings")


def check_diagrams(report):
    """Checks that each picture has the labels of its source, and that the folders in the labels exist."""
    for source in sorted(glob.glob(f"{ROOT}/docs/*.dot")):
        name = os.path.relpath(source, ROOT)
        with open(source, encoding="utf-8") as file:
            labels = "\\n".join(re.findall(r'label="([^"]*)"', file.read())).split("\\n")
            labels = [label.strip() for label in labels]
        with open(source.replace(".dot", ".svg"), encoding="utf-8") as file:
            shown = [html.unescape(text).strip() for text in re.findall(r"<text[^>]*>([^<]*)</text>", file.read())]
        if sorted(labels) != sorted(shown):
            report.fail(name, f"the picture shows something else: {set(labels) ^ set(shown)}")
        for label in labels:
            if label.startswith("src/") and not os.path.isdir(os.path.join(ROOT, label)):
                report.fail(name, f"there is no {label}")
        report.count("diagrams")


def check_width(page, report):
    for line, text in page.prose:
        if len(text) > MAX_COLUMNS and not text.startswith("|") and "](" not in text:
            report.fail(f"{page.name}:{line}", f"{len(text)} columns")


def read_pages():
    names = ["README.md", "CONTRIBUTING.md", "SECURITY.md"]
    names += sorted(os.path.relpath(path, ROOT) for path in glob.glob(f"{ROOT}/docs/*.md"))
    pages = {}
    for name in names:
        with open(os.path.join(ROOT, name), encoding="utf-8") as file:
            pages[name] = Page(name, file.read())
    return pages


def texts_of_examples():
    texts = []
    for path in sorted(glob.glob(f"{ROOT}/examples/*.vsa")):
        with open(path, encoding="utf-8") as file:
            texts.append(file.read())
    return "\n".join(texts)


def first_block(pages, page, language):
    return next(block for block in pages[page].blocks if block.language == language)


def check_readme_program(tools, program, report):
    """Checks that the program of README.md does not crash with any of these texts."""
    texts = ["", "}", "lamp sun;", "lamp snu: .power = 2.5;", "lamp sun: .pwoer = 2.5;", 'lamp sun: .power = "2.5";']
    for text in texts:
        tools.write("scene.vsa", text)
        status, printed = tools.attempt([program])
        if status < 0:
            report.fail("README.md", f"the program is killed by signal {-status} with the text {text!r}: {printed}")
        report.count("texts for the program of README.md")


def main():
    build, compiler = os.path.abspath(sys.argv[1]), sys.argv[2]
    pages, report = read_pages(), Report()
    with tempfile.TemporaryDirectory() as scratch:
        tools = Tools(build, compiler, scratch)
        scene, program = first_block(pages, "README.md", "vsa"), first_block(pages, "README.md", "cpp")
        tools.scene = scene.text
        tools.write("app.cpp", program.text)
        # Programs are first, because they read texts of other pages.
        blocks = [block for page in pages.values() for block in join_outcomes(page)]
        for block in sorted(blocks, key=lambda block: block.language != "cpp"):
            check_block(tools, block, report)
        format_tables.check(pages["docs/format.md"], tools.dump, messages_of, report, texts_of_examples())
        check_command_messages(tools, pages["docs/messages.md"], report)
        check_table_of_messages(tools, pages["docs/messages.md"], report)
        tools.compile(tools.path("app.cpp"), tools.path("app"))
        check_readme_program(tools, tools.path("app"), report)
    check_links(pages, report)
    check_diagrams(report)
    for page in pages.values():
        check_paths(page, report)
        check_settings(page, report)
        check_width(page, report)
    report.print()
    return 1 if report.failures else 0


if __name__ == "__main__":
    sys.exit(main())
