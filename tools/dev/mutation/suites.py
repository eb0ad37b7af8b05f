"""The suites of tests, which of them run for a changed file, and how they run."""
import json
import os
import re
import resource
import signal
import subprocess
import sys

MAIN = "tools/vsa/main.cpp"

# Which suites run for which folder: those of the first row whose folder begins the path of the changed file. "..." is
# every other suite that links what is changed.
SUITES = [
    ("include/vsa/foundation", ["foundation", "..."]),
    ("include/vsa/scene", ["scene", "..."]),
    ("include/vsa/model", ["scene", "..."]),
    ("include/vsa/values", ["scene", "..."]),
    ("include", ["api", "..."]),
    ("src/foundation", ["foundation", "..."]),
    ("src/scene", ["scene", "..."]),
    ("src/vsa", ["vsa", "case", "..."]),
    ("src/diagnostics", ["vsa", "api", "case", "..."]),
    ("src/api", ["api", "..."]),
    ("src/write", ["write", "..."]),
    ("src/syntax", ["syntax", "tool/fmt", "..."]),
    ("tools/scene_text", ["tool", "tool/dump", "tool/convert", "..."]),
    ("tools/vsa/common", ["tool/common", "tool", "tool/check", "..."]),
    ("tools/vsa/input", ["tool/common", "tool", "..."]),
    # Other commands use parts of these two.
    ("tools/vsa/check", ["tool/check", "tool/explain", "tool", "tool/common"]),
    ("tools/vsa/fmt", ["tool/fmt", "tool/convert", "tool/merge", "tool", "tool/common"]),
    ("tools/vsa", ["tool/{folder}", "tool", "tool/common"]),
]
LIBRARY_SUITES = ["case", "vsa", "api", "scene", "write", "foundation", "syntax"]

# What some suites are linked with besides their own sources: options of the linker, and more sources.
OPTIONS = {"write": ["-Wl,--wrap=malloc,--wrap=calloc,--wrap=realloc,--wrap=aligned_alloc,--wrap=free"]}
SUPPORT = {"write": ["tests/support/allocation_tracker.cpp"], "api": ["tests/support/case_run.cpp"],
           "case": ["tests/case_test.cpp", "tests/support/case_run.cpp"]}


class Suite:
    """A test program: its sources, and what it is linked with."""

    def __init__(self, name, sources):
        self.name, self.sources = name, sorted(sources + SUPPORT.get(name, []))
        self.options = OPTIONS.get(name, [])
        self.has_commands = name.startswith("tool")


def all_suites(tree):
    """Returns the suites: one for each folder of tests, one for each folder in tests/tool, one for the files there."""
    def sources(folder, pattern):
        return [str(path.relative_to(tree)) for path in (tree / "tests" / folder).glob(pattern)]

    found = {name: Suite(name, sources(name, "**/*.cpp")) for name in LIBRARY_SUITES}
    folders = [path for path in (tree / "tests/tool").iterdir() if path.is_dir()]
    for name in sorted(f"tool/{path.name}" for path in folders):
        found[name] = Suite(name, sources(name, "**/*.cpp"))
    found["tool"] = Suite("tool", sources("tool", "*.cpp"))
    return found


def first_suites(file, suites):
    """Returns the suites that the row of the file names."""
    row = next(names for folder, names in SUITES if file.startswith(folder + "/"))
    names = [name.format(folder=file.split("/")[2]) for name in row]
    return [name for name in names if name in suites or name == "..."]


def suites_for(file, suites):
    """Returns the names of the suites that may detect a change of `file`, the most likely one first."""
    first = first_suites(file, suites)
    if first[-1] != "...":
        return first
    library = [] if file.startswith("tools/vsa/") else LIBRARY_SUITES
    tools = sorted(name for name in suites if name.startswith("tool"))
    return list(dict.fromkeys(first[:-1] + library + tools))


# --- running ----------------------------------------------------------------------------------------------------------

def limit(seconds):
    def set_limits():
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
        resource.setrlimit(resource.RLIMIT_AS, (12 << 30, 12 << 30))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 30, 1 << 30))
    return set_limits


def end_of(process, seconds):
    """Waits for the end of a program. The limit of its processor time does not end a program that waits for something,
    so it is killed after a longer time. Returns its output and its status."""
    try:
        shown = process.communicate(timeout=60 + 3 * seconds)[0]
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        shown = process.communicate()[0]
    return shown.decode(errors="replace"), process.returncode


def run_tests(program, folder, tree, seconds, tests="*"):
    """Runs tests of a program up to the first failure, with the command vsa in `folder`. Returns what was printed, and
    the name of the test that failed, crashed or took too long, or None."""
    temporary = folder / "tmp"
    temporary.mkdir(exist_ok=True)
    environment = {"GTEST_FAIL_FAST": "1", "GTEST_FILTER": tests, "PATH": "/usr/bin:/bin",
                   "VSA_UNDER_TEST": str(folder / "vsa"), "TMPDIR": str(temporary)}
    process = subprocess.Popen([program], cwd=tree, env=environment, preexec_fn=limit(seconds), start_new_session=True,
                               stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    shown, status = end_of(process, seconds)
    if status == 0:
        return shown, None
    started = re.findall(r"^\[ RUN      \] (\S+)", shown, re.M)
    failed = re.findall(r"^\[  FAILED  \] (\S+?),? ", shown, re.M)
    return shown, (failed or started[-1:] or ["start"])[0]


class Measured:
    """The time limit of a suite, and its slow tests. They run only for mutants that survive all others, and only if the
    row of the mutant names the suite."""

    def __init__(self, base, name):
        saved = base.folder / (name.replace("/", "_") + "_measured.json")
        program = base.link_suite(name, base.folder, {})
        if not saved.exists() or saved.stat().st_mtime < base.newest_object(name):
            saved.write_text(json.dumps(measure(base, name, program)))
        self.seconds, slow = json.loads(saved.read_text())
        self.slow = ":".join(slow)
        self.quick = "-" + self.slow if slow else "*"


def measure(base, name, program):
    """Runs a suite without any mutant. Returns its limit in seconds of processor time, and its slow tests."""
    before = processor_time()
    shown, failed = run_tests(program, base.folder, base.tree, 600)
    if failed:
        sys.exit(f"mutate: without any mutant, {name} fails at {failed}")
    times = {test: int(ms) for test, ms in re.findall(r"\[ +OK \] (\S+?)(?:, where .*)? \((\d+) ms\)", shown)}
    slow = [test for test, ms in times.items() if ms > max(500, 0.04 * sum(times.values()))]
    return int(4 * (processor_time() - before)) + 5, slow


def processor_time():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime
