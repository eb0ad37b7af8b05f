"""Builds the sources at -O0, and the test programs with and without a mutant."""
import concurrent.futures
import functools
import os
import pathlib
import re
import shutil
import subprocess
import sys

from mutation import suites

ROOT = pathlib.Path(__file__).resolve().parents[3]
COMPILER = ["g++", "-std=c++20", "-O0", "-w"]
# lld links the command in 0.2 s of processor time, the default linker in 0.7 s.
LINKER = ["g++", "-fuse-ld=lld"]
LIBRARIES = ["-lgtest", "-lfmt", "-lz", "-pthread"]
# The headers that are compiled in advance: none of ours, because a mutant may change it.
STANDARD = ["algorithm", "cstdint", "filesystem", "fstream", "functional", "map", "memory", "optional", "ostream",
            "sstream", "string", "string_view", "vector"]
# The files that are embedded in the command, as in tools/CMakeLists.txt.
EMBEDDED = {"pageTemplate": "tools/vsa/stats/page.html", "chartScript": "tools/vsa/stats/vendor/chart.umd.min.js",
            "messagesPage": "docs/messages.md", "rulesPage": "docs/rules.md"}
# If more tests include a header, only its own test is compiled again. Compiling a test takes a second.
MAX_TESTS_OF_HEADER = 10
EMBEDDED_SOURCE = "tools/vsa/embedded_files.cpp"


def quietly(command):
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0


class DoesNotLink(Exception):
    """A program with a mutant cannot be linked."""


def must(command):
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(f"mutate: {' '.join(map(str, command))}\n{done.stderr}")


def listed_files(target):
    """Returns the files that the object was compiled from. The compiler listed them in a file next to it."""
    listed = target.with_suffix(".d")
    return listed.read_text().replace("\\\n", " ").split()[1:] if listed.exists() else []


@functools.lru_cache(maxsize=None)
def time_of(file):
    """Returns when the file was changed, or infinity if it does not exist. The result is kept, because no file of the
    copy changes during the run."""
    return os.stat(file).st_mtime if os.path.exists(file) else float("inf")


def is_fresh(target):
    """Returns whether the object is newer than all its sources."""
    files = listed_files(target)
    return target.exists() and files and max(map(time_of, files)) < target.stat().st_mtime


def write_embedded(tree):
    """Writes the source that tools/vsa/common/embedded/embed.cmake generates. It gets the time of the newest embedded
    file, so that it is compiled again only if one of them has changed."""
    source = tree / EMBEDDED_SOURCE
    text = '#include "tools/vsa/common/embedded/embedded_files.h"\nnamespace vsa_tools {\n'
    for function, file in EMBEDDED.items():
        data = ",".join(map(str, (tree / file).read_bytes()))
        text += (f"static const unsigned char {function}Bytes[] = {{{data}}};\nstd::string_view {function}() {{\n"
                 f"  return {{reinterpret_cast<const char*>({function}Bytes), sizeof {function}Bytes}};\n}}\n")
    source.write_text(text + "}\n")
    shutil.copystat(max((tree / file for file in EMBEDDED.values()), key=lambda file: file.stat().st_mtime), source)


def copy_tree(tree):
    """Copies the files of the repository that changed, and removes those that it has no more. So the files may be
    edited during the run."""
    asked = ["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    names = subprocess.run(asked, capture_output=True, text=True, check=True).stdout.split("\0")
    wanted = {tree / name: ROOT / name for name in names if name and (ROOT / name).is_file()}
    for file in [path for path in tree.rglob("*") if path.is_file() and path not in wanted]:
        file.unlink()
    for file, original in wanted.items():
        if time_and_size(file) != time_and_size(original):
            file.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(original, file)


def time_and_size(file):
    return (file.stat().st_mtime_ns, file.stat().st_size) if file.exists() else None


class Base:
    """A copy of the tree, the objects of its sources and tests, and the names of the test programs."""

    def __init__(self, folder, jobs):
        self.folder, self.tree = folder, folder / "tree"
        self.objects = folder / "objects"
        self.objects.mkdir(parents=True, exist_ok=True)
        copy_tree(self.tree)
        write_embedded(self.tree)
        version = re.search(r"project\(vsa VERSION ([\d.]+)", (self.tree / "CMakeLists.txt").read_text()).group(1)
        tests = self.tree / "tests"
        self.defines = [f'-DVSA_VERSION="{version}"', f'-DVSA_TEST_DIR="{tests}"', f'-DVSA_CASE_DIR="{tests}/cases"',
                        '-DVSA_COMMAND="$VSA_UNDER_TEST"', "-DVSA_HAVE_ZLIB"]
        self.sources = {part: self.sources_in(*folders) for part, folders in
                        {"library": ["src"], "tools": ["tools/scene_text", "tools/vsa"]}.items()}
        self.suites = suites.all_suites(self.tree)
        self.precompile()
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            list(pool.map(self.compile_base, self.all_sources() + self.all_tests()))
        self.read_users()

    def sources_in(self, *folders):
        found = (path for folder in folders for path in (self.tree / folder).rglob("*.cpp"))
        return sorted(str(path.relative_to(self.tree)) for path in found)

    def all_sources(self):
        return self.sources["library"] + self.sources["tools"]

    def all_tests(self):
        return sorted({source for suite in self.suites.values() for source in suite.sources})

    def precompile(self):
        for kind, headers in {"source": STANDARD, "test": ["gtest/gtest.h", *STANDARD]}.items():
            header = self.objects / f"{kind}.h"
            header.write_text("".join(f"#include <{name}>\n" for name in headers))
            if not header.with_suffix(".h.gch").exists():
                must([*COMPILER, "-x", "c++-header", header, "-o", header.with_suffix(".h.gch")])

    def command(self, file, overlay=None):
        kind = "test" if file.startswith("tests/") else "source"
        roots = [root for root in (overlay, self.tree) if root]
        places = [f"-I{place}" for root in roots for place in (root / "include", root / "src", root)]
        return [*COMPILER, "-include", self.objects / f"{kind}.h", *places, *self.defines, "-c"]

    def object(self, file):
        return self.objects / (file.replace("/", "_") + ".o")

    def compile_base(self, file):
        if not is_fresh(self.object(file)):
            must([*self.command(file), "-MMD", self.tree / file, "-o", self.object(file)])

    def compile_changed(self, file, changed, overlay, target):
        """Compiles `file` with the source or header `changed`, whose copy with the mutant is in `overlay`. Returns
        whether it compiles."""
        place = overlay if file == changed else self.tree
        return quietly([*self.command(file, overlay), place / file, "-o", target])

    def link(self, program, objects, changed, options=()):
        """Links `objects`, those of `changed` (file to object) instead of the ones of the base. The linker uses the
        first copy of an inline function, so the changed objects are first. Throws DoesNotLink if it fails with a
        mutant."""
        rest = [self.object(file) for file in objects if file not in changed]
        first = [target for file, target in changed.items() if file in objects]
        command = [*LINKER, *first, *rest, *options, *LIBRARIES, "-o", program]
        if not changed:
            must(command)
        elif not quietly(command):
            raise DoesNotLink

    def objects_of(self, name):
        """Returns the files whose objects are linked for a suite."""
        suite = self.suites[name]
        parts = self.all_sources() if suite.has_commands else self.sources["library"] + [
            file for file in self.sources["tools"] if file.startswith("tools/scene_text/")]
        return [file for file in parts if file != suites.MAIN] + suite.sources

    def newest_object(self, name):
        files = self.objects_of(name) + self.all_sources() * self.suites[name].has_commands
        return max(self.object(file).stat().st_mtime for file in files)

    def link_suite(self, name, folder, changed):
        """Links the program of a suite in `folder`, and returns its path."""
        program = folder / (name.replace("/", "_") + "_test")
        self.link(program, self.objects_of(name), changed, [*self.suites[name].options, "-lgtest_main"])
        return program

    def link_command(self, program, changed):
        self.link(program, self.all_sources(), changed)

    def read_users(self):
        self.used_by = {}
        for file in self.all_sources():
            for path in listed_files(self.object(file)):
                if path.startswith(str(self.tree)):
                    name = str(pathlib.Path(path).relative_to(self.tree))
                    self.used_by.setdefault(name, []).append(file)

    def users(self, file):
        """Returns the sources that must be compiled again when `file` changes."""
        return [file] if file.endswith(".cpp") else self.used_by.get(file, [])

    def tests_of_header(self, file):
        """Returns the tests that must be compiled again when the header `file` changes, because they have copies of what
        it defines: those that include it themselves or, if they are many, the one that has its name."""
        if not file.endswith(".h"):
            return []
        written = re.compile(rf'#include [<"]({file}|{file.partition("/")[2]})[>"]')
        tests = [test for test in self.all_tests() if written.search((self.tree / test).read_text())]
        if len(tests) <= MAX_TESTS_OF_HEADER:
            return tests
        return [test for test in tests if pathlib.Path(test).name == pathlib.Path(file).stem + "_test.cpp"]
