"""The log of the mutants that were tried, over several runs, and the explained survivors."""
import pathlib
import threading

FOLDER = pathlib.Path(__file__).parents[1]
KNOWN = FOLDER / "mutate_survivors.txt"
RESULTS = FOLDER / "mutate_results.txt"
# The share of killed mutants among those that are not equivalent.
BAR = 92


def known_survivors():
    """Returns the examined mutants with their reasons. In the file, an indented reason follows each key."""
    reasons, key = {}, ""
    for line in KNOWN.read_text().splitlines():
        if line.startswith("  "):
            reasons[key] = f"{reasons[key]} {line.strip()}".lstrip()
        elif line and line[0] != "#":
            key = line
            reasons[key] = ""
    return reasons


def percent(part, whole):
    return 100 * part / max(whole, 1)


def folder_of(file):
    """Returns the row of the report that a file belongs to: src/vsa/lex/lexer.h to src/vsa."""
    return "/".join(file.split("/")[:-1][:3 if file.startswith("tools/vsa/") else 2])


class Log:
    """What became of each mutant: "stillborn", "survived", or the suite and the test that killed it.

    A line of the file has the seed, the result and the identity of a mutant, divided by tabs. The last line of a mutant
    is valid. Lines of mutants whose source line has changed since are not counted.
    """

    def __init__(self, mutants, seed):
        self.seed, self.lock = seed, threading.Lock()
        self.mutants = {mutant.identity(): mutant for stack in mutants.values() for mutant in stack}
        self.fates, self.outdated = {}, 0
        for line in RESULTS.read_text().splitlines() if RESULTS.exists() else []:
            _, fate, identity = line.split("\t", 2)
            if identity in self.mutants:
                self.fates[identity] = fate
            else:
                self.outdated += 1

    def __contains__(self, mutant):
        return mutant.identity() in self.fates

    def add(self, mutant, fate):
        with self.lock, open(RESULTS, "a") as file:
            self.fates[mutant.identity()] = fate
            file.write(f"{self.seed}\t{fate}\t{mutant.identity()}\n")

    def tried(self):
        return {self.mutants[identity]: fate for identity, fate in self.fates.items() if fate != "stillborn"}

    def survivors(self):
        return [mutant for mutant, fate in self.tried().items() if fate == "survived"]

    def unexplained(self):
        known = known_survivors()
        return [mutant for mutant in self.survivors() if mutant.key() not in known]

    def likely_tests(self, file, suite):
        """Returns up to 8 tests of the suite that killed mutants of the file or its folder, the file's and newest
        first."""
        pairs = [(self.mutants[identity].file, fate.split(" ")[1])
                 for identity, fate in reversed(list(self.fates.items())) if fate.startswith(suite + " ")]
        own = [test for path, test in pairs if path == file]
        near = [test for path, test in pairs if folder_of(path) == folder_of(file)]
        return list(dict.fromkeys(test for test in own + near if "." in test))[:8]

    def report(self):
        """Prints the survivors that have no reason, and the counts. Returns whether enough mutants are killed."""
        for mutant in sorted(self.unexplained(), key=lambda mutant: mutant.show()):
            print("survived", mutant.show())
        known, rows = known_survivors(), {}
        for mutant, fate in self.tried().items():
            same = fate == "survived" and known.get(mutant.key(), "").startswith("same: ")
            for name in (folder_of(mutant.file), "all"):
                row = rows.setdefault(name, [0, 0, 0])
                row[0] += 1
                row[1] += fate != "survived"
                row[2] += same
        for name, (tried, killed, same) in sorted(rows.items(), key=lambda row: (row[0] == "all", row[0])):
            print(f"{name:28} {tried:5} mutants {killed:5} killed {same:4} equivalent  "
                  f"{percent(killed, tried - same):5.1f} %")
        tried, killed, same = rows.get("all", (0, 0, 0))
        survived, fresh = tried - killed, len(self.unexplained())
        stillborn = len(self.fates) - tried
        share = percent(killed, tried - same)
        print(f"{percent(killed, tried):.1f} % of all are killed, {share:.1f} % of those that are not equivalent\n"
              f"{survived} survived: {same} equivalent, {survived - same - fresh} otherwise explained, "
              f"{fresh} to be looked at\n"
              f"{stillborn} more did not compile or link, {self.outdated} in the log are of lines that have changed")
        return share >= BAR
