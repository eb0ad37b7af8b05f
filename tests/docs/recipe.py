"""Tests the Python recipe of docs/format.md: its output must be read without a message, as the intended values."""

import math
import struct

STRINGS = ["", "red", 'say "aye"', "C:\\new\\tex.png", "ends in \\", "two\nlines\r\n", "größe \U0001f600", "\x7f\x1b[0m",
           "'single'", "# no comment", "\\u0041", "\\xff"]
LABELS = ["arm.L", "arm-L", "arm L", "arm_L", "arm_L_2", "", "3d", "true", "TRUE", "Null", "größe", "Arm.L", "a;b", "²"]
REALS = [0.0, -0.0, 1.0, -2.5, 1e-05, 1e22, 1e300, 5e-324, 1.7976931348623157e308, 0.1, 123456789.125,
         -math.inf]
COLOURS = bytes(range(256)) * 4


class Failure(Exception):
    """An error: the reader does not read back the values that the recipe wrote."""


def require(condition, what):
    if not condition:
        raise Failure(f"the recipe: {what}")


def values(dump, node):
    inputs = next(other["inputs"] for other in dump["nodes"] if other["name"] == node)
    return {value["name"]: value for value in inputs}


def read(dump, messages_of, text):
    found = dump(text)
    require(found["result"] is True and not messages_of(found), f"{messages_of(found)} for\n{text}")
    return found


def check_strings(names, read_text):
    for text in STRINGS + ["with a \0 byte"]:
        written = names["string"](text)
        require(isinstance(written, str), "string() does not return a str")
        found = values(read_text(f"thing n: .s = {written};"), "n")["s"]["value"]
        require(found == text.replace("\0", ""), f"{text!r} reads back as {found!r}")


def check_names(names, read_text):
    namer = names["Names"]()
    written = [namer.name(label) for label in LABELS]
    require(len(set(written)) == len(LABELS), f"two labels have one name: {written}")
    text = "".join(f"thing {name}: .label = {names['string'](label)};\n" for name, label in zip(written, LABELS))
    found = read_text(text)
    for name, label in zip(written, LABELS):
        require(values(found, name)["label"]["value"] == label, f"the node {name} is not the one of {label!r}")


def check_reals(names, read_text):
    for real in REALS + [math.nan]:
        found = values(read_text(f"thing n: .x = {names['real'](real)};"), "n")["x"]
        require(found["type"] == "Real", f"{real!r} is not a Real")
        back = float(found["value"])
        same = struct.pack("d", back) == struct.pack("d", real) or (math.isnan(back) and math.isnan(real))
        require(same, f"{real!r} reads back as {back!r}")
    try:
        names["real"](math.inf)
    except ValueError:
        return
    require(False, "plus infinity alone is not refused")


def check_lists(names, read_text):
    numbers = REALS + [math.inf, 1, -7]
    text = " ".join(names["number"](number) for number in numbers)
    found = values(read_text(f"thing n: .x = double[{len(numbers)}] {{{text}}};"), "n")["x"]["value"]
    require([float(number) for number in found] == [float(number) for number in numbers], f"{numbers} reads as {found}")


def check_packed(names, read_text):
    packed = names["packed"]("rgba8", len(COLOURS) // 4, COLOURS)
    found = values(read_text(f"thing n: .x = {packed}; .none = {names['packed']('byte', 0, b'')};"), "n")
    require(found["x"]["value"] == list(COLOURS), "the compressed bytes differ")
    require(found["none"]["value"] == [], "an empty buffer is not empty")


def check(source, dump, messages_of):
    """Runs the recipe, given as its source text. Raises Failure if it writes something wrong."""
    names = {}
    exec(compile(source, "docs/format.md", "exec"), names)  # pylint: disable=exec-used

    def read_text(text):
        return read(dump, messages_of, text)

    for part in (check_strings, check_names, check_reals, check_lists, check_packed):
        part(names, read_text)
