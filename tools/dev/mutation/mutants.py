"""Finds the mutants of a source: a changed condition, bound, constant or text."""
import random
import re

# The folders that are mutated. Left out are a program that only the test `scenes` runs, and a generated source.
MUTATED = ["include", "src", "tools"]
LEFT_OUT = ("tools/json_same/", "tools/vsa/embedded_files.cpp")
# A header that N > 10 sources include gets 10/N as many mutants as a source, because each one recompiles all of them.
WIDE_HEADER = 10

SWAPS = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==",
    "&&": "||", "||": "&&", "+": "-", "-": "+", "*": "+", "+=": "-=", "-=": "+=",
    "&": "|", "|": "&", "<<": ">>", ">>": "<<",
}
# A binary operator. clang-format puts blanks around binary operators, and around no other use of their characters.
OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in sorted(SWAPS, key=len, reverse=True)) + r")(?= )")
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9A-Fa-f]+|\d+)([uUlL]*)(?![\w.'])")
CHARACTER = re.compile(r"'([ -&(-\[\]-~])'")
WORD = re.compile(r"\b(true|false)\b")
CONDITION = re.compile(r"\b(?:if|while) \(")
PLAIN_STRING = re.compile(r'"(?:[^"\\\n]|\\.)*"')
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.S)
# Lines without mutants: declarations, and checks that the compiler makes.
PASSED_OVER = re.compile(r"^\s*(#|static_assert|template\b|using\b|namespace\b|friend\b|extern\b)|= (delete|default);"
                         r"|\boperator\b|CHAR_BIT|VSA_PRINTF")


class Mutant:
    def __init__(self, file, text, start, end, new):
        self.file, self.start, self.end, self.new = file, start, end, new
        self.old = text[start:end]
        self.line = text.count("\n", 0, start) + 1
        self.column = start - text.rfind("\n", 0, start)
        self.line_text = text.split("\n")[self.line - 1].strip()

    def apply(self, text):
        return text[: self.start] + self.new + text[self.end:]

    def show(self):
        old, new = (" ".join(part.split()) for part in (self.old, self.new))
        return f"{self.file}:{self.line}: {old} -> {new} | {self.line_text}"

    def key(self):
        """Returns the name of the mutant in mutate_survivors.txt. It has no line number, because that changes."""
        return self.show().replace(f":{self.line}:", ":", 1)

    def identity(self):
        """Returns the name of the mutant in the log. It is valid as long as the line does not change."""
        return f"{self.column} {self.key()}"


def blanked(text, pattern):
    """Returns the text with blanks instead of every match, so that offsets remain the same."""
    def blank(match):
        return re.sub(r"[^\n]", " ", match.group())
    return pattern.sub(blank, text)


def closing(text, start):
    """Returns the offset of the parenthesis that closes the one at `start`."""
    depth = 0
    for at in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[at], 0)
        if depth == 0:
            return at
    return -1


def mutants_of(file, text):
    code = blanked(text, COMMENT)
    passed = set()
    for number, line in enumerate(code.split("\n"), 1):
        if PASSED_OVER.search(line):
            passed.add(number)
    strings = [m for m in PLAIN_STRING.finditer(code)]
    bare = blanked(code, PLAIN_STRING)
    found = []

    def add(start, end, new):
        mutant = Mutant(file, text, start, end, new)
        if mutant.line not in passed:
            found.append(mutant)

    for m in OPERATOR.finditer(bare):
        add(m.start(), m.end(), SWAPS[m.group()])
    for m in NUMBER.finditer(blanked(bare, CHARACTER)):
        value = int(m.group(1), 8 if re.match(r"0\d", m.group(1)) else 0)
        add(m.start(), m.end(), ("0" if value == 1 else str(value + 1)) + m.group(2))
    for m in CHARACTER.finditer(bare):
        add(m.start(1), m.end(1), "x" if m.group(1) != "x" else "y")
    for m in WORD.finditer(bare):
        add(m.start(), m.end(), "false" if m.group() == "true" else "true")
    for m in CONDITION.finditer(bare):
        end = closing(bare, m.end() - 1)
        condition = text[m.end():end]
        if end > 0 and ";" not in condition and " = " not in condition:
            add(m.end(), end, "!(" + condition + ")")
    for m in strings:
        letter = re.search(r"(?<![%\\lzh0-9x.])[A-Za-z](?=[a-z ])", m.group())
        if letter:
            at = m.start() + letter.start()
            add(at, at + 1, "Q" if text[at] != "Q" else "R")
    return found


def all_mutants(tree):
    """Returns the mutants of every file, without those that look the same as an earlier one of the file."""
    found = {}
    for path in sorted(path for folder in MUTATED for path in (tree / folder).rglob("*")):
        file = str(path.relative_to(tree))
        if path.suffix in (".h", ".cpp") and not file.startswith(LEFT_OUT):
            mutants = {mutant.identity(): mutant for mutant in reversed(mutants_of(file, path.read_text()))}
            found[file] = list(mutants.values())
    return found


def drawn(mutants, seed, users):
    """Yields the mutants in the order in which they are tried: one of each file in turn, of widely included headers
    less often."""
    chance = random.Random(seed)
    for stack in mutants.values():
        chance.shuffle(stack)
    while any(mutants.values()):
        files = [file for file, stack in mutants.items() if stack]
        chance.shuffle(files)
        for file in files:
            if not users(file):
                mutants[file].clear()  # only tests include the header
            elif chance.random() * len(users(file)) < WIDE_HEADER:
                yield mutants[file].pop()
