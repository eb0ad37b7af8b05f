"""Tests the tables of docs/format.md against the reader and the examples."""

import itertools
import re

from markdown import code_of

# The text before each row of "Common mistakes": the with node n, and nodes to link to.
PRELUDE = "thing a; thing b; sphere ball; material clay; thing n:\n"

# A value of each type in the table of conversions.
SAMPLES = {
    "Bool": "true", "Int": "7", "UInt": "7u", "Real": "2.5", "Vec2": "vec2(1 2)", "Pos2": "pos2(1 2)",
    "Vec3": "vec3(1 2 3)", "Pos3": "pos3(1 2 3)", "Vec4": "vec4(1 2 3 4)", "Quat": "quat(0 0 0 1)",
    "Rgba": "rgba(1 0 0 1)", "Mat3": "mat3(1 0 0 0 1 0 0 0 1)", "Mat4": "mat4(1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1)",
    "String": '"red"', "Buffer": "byte[1] {1}", "Object": "{}",
}
# The columns of the table of conversions. The last one has the heading "any other".
CONVERTED = ["Bool", "Int, UInt", "Real", "Vec2, Pos2", "Vec3, Pos3", "Vec4, Quat, Rgba", "Mat3", "Mat4",
             "String, Buffer, Object"]

ESCAPED = {
    "backslash": "\\", "double quote": '"', "apostrophe": "'", "slash": "/", "bell": "\a", "backspace": "\b",
    "form feed": "\f", "line feed": "\n", "carriage return": "\r", "tab": "\t", "vertical tab": "\v",
}


class Tables:
    def __init__(self, page, dump, messages_of, report):
        self.page, self.dump, self.messages_of, self.report = page, dump, messages_of, report

    def rows(self, section):
        return [row for row in self.page.rows if row.section == section]

    def read(self, text):
        """Returns the scene of a text, and its log."""
        dump = self.dump(text)
        return dump, self.messages_of(dump)

    def require(self, row, condition, what):
        if not condition:
            self.report.fail(row.place, what)

    def value(self, dump):
        """Returns the only input of the only node."""
        return dump["nodes"][0]["inputs"][0]


def check_mistakes(tables):
    """Tests that a row causes the message in its second cell or none, and the text in its third cell none."""
    for row in tables.rows("Common mistakes"):
        written, result, instead = row.cells
        if not code_of(written) or "(0xFF)" in written:
            tables.report.not_run.append((row.place, f"'{written}' is not a text"))
            continue
        expected = code_of(result)
        is_stated = bool(expected) != ("no message" in result)
        tables.require(row, is_stated, "states neither a message nor that there is none")
        for text in code_of(written):
            messages = tables.read(PRELUDE + text)[1]
            for message in expected:
                tables.require(row, any(message in other for other in messages), f"{text} gives {messages}")
            tables.require(row, expected or not messages, f"{text} gives {messages}")
        for text in code_of(instead):
            messages = tables.read(PRELUDE + text)[1]
            tables.require(row, not messages, f"{text} gives {messages}")
        tables.report.count("rows of mistakes")


def check_element_types(tables):
    """Tests that each keyword has the type and component count of its row, and can be compressed if it says so."""
    keywords = []
    for row in tables.rows("Buffers"):
        keyword, name, stored = code_of(row.cells[0])[0], row.cells[1], row.cells[3]
        numbers = int(re.match(r"\d+", row.cells[2])[0])
        keywords.append(keyword)
        exact, messages = tables.read(f"n n: .x = {keyword}[1] {{{'1 ' * numbers}}};")
        tables.require(row, not messages and tables.value(exact)["bufferType"] == name, f"{messages}")
        for count, message in ((numbers - 1, "Too few elements (0)"), (numbers + 1, "Cannot add 1 @ index")):
            messages = tables.read(f"n n: .x = {keyword}[1] {{{'1 ' * count}}};")[1]
            tables.require(row, len(messages) == 1 and message in messages[0], f"{count} numbers: {messages}")
        messages = tables.read(f"n n: .x = {keyword}[1] {{.}};")[1]
        compressed = bool(messages) and "compressed data is empty" in messages[0]
        tables.require(row, compressed == ("may be compressed" in stored), f"compressed data: {messages}")
        tables.report.count("element types")
    return keywords


def check_grammar(tables, keywords):
    """Tests that the grammar lists each keyword of the tables once."""
    grammar = next(block for block in tables.page.blocks if block.language == "ebnf")
    listed = re.search(r"buffer-type = (.*)", grammar.text, re.DOTALL)[1].split()
    if sorted(listed) != sorted(keywords):
        tables.report.fail(grammar.place, f"the grammar and the tables differ: {set(listed) ^ set(keywords)}")


def outcome_of(messages):
    if not messages:
        return "ok"
    return "warns" if messages[0].startswith("TYPE WARNING") else "no"


def check_conversions(tables):
    for row in tables.rows("Conversions"):
        if len(row.cells) != len(CONVERTED) + 1:
            continue
        sources = [name for name in row.cells[0].split(", ") if name in SAMPLES]
        for column, cell in zip(CONVERTED, row.cells[1:]):
            for source in sources:
                for target in column.split(", "):
                    messages = tables.read(f"n n: .x = {SAMPLES[target]}; .x = {SAMPLES[source]};")[1]
                    stated = "ok" if source == target else cell
                    tables.require(row, outcome_of(messages) == stated, f"{source} to {target}: {messages}")
                    tables.report.count("conversions")


def check_values(tables):
    """Tests that each form has the type in its row. Arrays and references are not tested."""
    for row in tables.rows("Values"):
        kind = row.cells[1]
        for form in code_of(row.cells[0]):
            if kind in ("Array",) or kind.startswith("none"):
                continue
            text = {"mat3(...)": SAMPLES["Mat3"], "mat4(...)": SAMPLES["Mat4"]}.get(form, form)
            if re.fullmatch(r"[a-z0-9]+\([a-z ]+\)", text):
                text = re.sub(r"\b[a-z]\b", "1", text)
            dump, messages = tables.read(f"n n: .x = {text};")
            tables.require(row, not messages and tables.value(dump)["type"] == kind, f"{text}: {messages}")
            tables.report.count("forms of values")


def check_escapes(tables):
    for row in tables.rows("Strings"):
        for written, character in (row.cells[0:2], row.cells[2:4]):
            if character not in ESCAPED:
                continue
            dump, messages = tables.read(f'n n: .x = "{code_of(written)[0]}";')
            found = tables.value(dump)["value"]
            tables.require(row, not messages and found == ESCAPED[character], f"{written} gives {found!r}")
            tables.report.count("escape sequences")


def check_recommendations(tables, examples):
    """Tests that the examples use each recommended input with each recommended type."""
    for row in tables.rows("Recommended names and types of inputs"):
        types = [re.match(r"\w+", kind)[0] for kind in code_of(row.cells[2])]
        for name, kind in itertools.product(code_of(row.cells[1]), types):
            found = re.search(rf"{re.escape(name)} = {kind}[(\[]", examples)
            tables.require(row, found, f"no example has {name} = {kind}")
            tables.report.count("recommendations")


def check(page, dump, messages_of, report, examples):
    tables = Tables(page, dump, messages_of, report)
    check_mistakes(tables)
    check_grammar(tables, check_element_types(tables))
    check_conversions(tables)
    check_values(tables)
    check_escapes(tables)
    check_recommendations(tables, examples)
