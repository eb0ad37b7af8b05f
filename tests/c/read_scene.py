#!/usr/bin/env -S python3 -B
"""read_scene.py LIBRARY FOLDER: tests the shared library with ctypes only. It reads short texts and an example."""

import ctypes
import os
import sys


class Text(ctypes.Structure):
    _fields_ = [("data", ctypes.POINTER(ctypes.c_char)), ("length", ctypes.c_size_t)]

    def __str__(self):
        return ctypes.string_at(self.data, self.length).decode()


class Buffer(ctypes.Structure):
    _fields_ = [("data", ctypes.c_void_p), ("count", ctypes.c_uint64), ("bytes", ctypes.c_uint64),
                ("element_type", ctypes.c_char_p), ("component_type", ctypes.c_char_p),
                ("components", ctypes.c_size_t), ("component_bytes", ctypes.c_size_t)]


class Position(ctypes.Structure):
    _fields_ = [("offset", ctypes.c_uint64), ("line", ctypes.c_uint64), ("column", ctypes.c_uint64)]


class Diagnostic(ctypes.Structure):
    _fields_ = [("id", ctypes.c_char_p), ("is_error", ctypes.c_int), ("ended_reading", ctypes.c_int),
                ("message", Text), ("input_path", Text), ("begin", Position), ("end", Position)]


class SkippedBuffer(ctypes.Structure):
    _fields_ = [("input_path", Text), ("element_type", ctypes.c_char_p), ("count", ctypes.c_uint64),
                ("begin", Position), ("end", Position)]


class Counts(ctypes.Structure):
    _fields_ = [(name, ctypes.c_uint64) for name in
                ("bytes_read", "statements", "nodes", "elements", "values", "links", "errors", "warnings")]


class Progress(ctypes.Structure):
    _fields_ = [(name, ctypes.c_uint64) for name in
                ("bytes_read", "bytes_total", "links_resolved", "links_total")]


HANDLE = ctypes.c_void_p
NAME = ctypes.c_char_p
SIZE = ctypes.c_size_t
NUMBER = ctypes.c_uint64
ON_PROGRESS = ctypes.CFUNCTYPE(ctypes.c_int, HANDLE, ctypes.POINTER(Progress))


class Options(ctypes.Structure):
    _fields_ = [("size", SIZE), ("text_bytes", NUMBER), ("memory_bytes", NUMBER), ("buffer_bytes", NUMBER),
                ("nodes", NUMBER), ("elements", NUMBER), ("depth", NUMBER), ("diagnostics", NUMBER),
                ("kept_diagnostics", NUMBER), ("kept_diagnostic_bytes", NUMBER), ("keep_header", ctypes.c_int),
                ("skips_buffers", ctypes.c_int), ("wanted_names", ctypes.POINTER(NAME)),
                ("wanted_name_count", SIZE), ("wanted_types", ctypes.POINTER(NAME)), ("wanted_type_count", SIZE),
                ("progress", ON_PROGRESS), ("progress_data", HANDLE)]


def to(kind):
    return ctypes.POINTER(kind)


FUNCTIONS = {
    "vsa_options_init": (None, [to(Options)]),
    "vsa_read_file": (HANDLE, [NAME, to(Options)]),
    "vsa_read_text": (HANDLE, [NAME, SIZE, to(Options)]),
    "vsa_free": (None, [HANDLE]),
    "vsa_reading_status": (ctypes.c_int, [HANDLE]),
    "vsa_status_name": (NAME, [ctypes.c_int]),
    "vsa_reading_message": (Text, [HANDLE]),
    "vsa_reading_limit": (ctypes.c_int, [HANDLE]),
    "vsa_limit_name": (NAME, [ctypes.c_int]),
    "vsa_reading_counts": (ctypes.c_int, [HANDLE, to(Counts)]),
    "vsa_diagnostic_count": (SIZE, [HANDLE]),
    "vsa_diagnostics_found": (NUMBER, [HANDLE]),
    "vsa_diagnostic_at": (ctypes.c_int, [HANDLE, SIZE, to(Diagnostic)]),
    "vsa_diagnostic_argument_count": (SIZE, [HANDLE, SIZE]),
    "vsa_diagnostic_argument": (Text, [HANDLE, SIZE, SIZE]),
    "vsa_skipped_count": (SIZE, [HANDLE]),
    "vsa_skipped_at": (ctypes.c_int, [HANDLE, SIZE, to(SkippedBuffer)]),
    "vsa_load_buffer": (HANDLE, [NAME, HANDLE, SIZE, to(Options)]),
    "vsa_load_buffer_from_text": (HANDLE, [NAME, SIZE, HANDLE, SIZE, to(Options)]),
    "vsa_loaded_buffer": (ctypes.c_int, [HANDLE, to(Buffer)]),
    "vsa_file_version": (NUMBER, [HANDLE]),
    "vsa_file_time": (Text, [HANDLE]),
    "vsa_comment_count": (SIZE, [HANDLE]),
    "vsa_comment_at": (Text, [HANDLE, SIZE]),
    "vsa_first_node": (HANDLE, [HANDLE]),
    "vsa_next_node": (HANDLE, [HANDLE]),
    "vsa_find_node": (HANDLE, [HANDLE, NAME]),
    "vsa_node_name": (Text, [HANDLE]),
    "vsa_node_type": (Text, [HANDLE]),
    "vsa_input_count": (SIZE, [HANDLE]),
    "vsa_input_at": (HANDLE, [HANDLE, SIZE]),
    "vsa_find_input": (HANDLE, [HANDLE, NAME]),
    "vsa_element_count": (SIZE, [HANDLE]),
    "vsa_element_at": (HANDLE, [HANDLE, SIZE]),
    "vsa_member_count": (SIZE, [HANDLE]),
    "vsa_member_at": (HANDLE, [HANDLE, SIZE]),
    "vsa_find_member": (HANDLE, [HANDLE, NAME]),
    "vsa_input_name": (Text, [HANDLE]),
    "vsa_input_path": (SIZE, [HANDLE, NAME, SIZE]),
    "vsa_input_type": (ctypes.c_int, [HANDLE]),
    "vsa_type_name": (NAME, [ctypes.c_int]),
    "vsa_bool": (ctypes.c_int, [HANDLE, to(ctypes.c_int)]),
    "vsa_int": (ctypes.c_int, [HANDLE, to(ctypes.c_int64)]),
    "vsa_uint": (ctypes.c_int, [HANDLE, to(NUMBER)]),
    "vsa_real": (ctypes.c_int, [HANDLE, to(ctypes.c_double)]),
    "vsa_string": (ctypes.c_int, [HANDLE, to(Text)]),
    "vsa_components": (SIZE, [HANDLE, to(to(ctypes.c_double))]),
    "vsa_reference": (HANDLE, [HANDLE]),
    "vsa_connection": (HANDLE, [HANDLE, to(Text)]),
    "vsa_buffer_of": (ctypes.c_int, [HANDLE, to(Buffer)]),
}


def load(path):
    library = ctypes.CDLL(path)
    for name, (result, arguments) in FUNCTIONS.items():
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    return library


def expect(found, expected):
    if found != expected:
        sys.exit(f"found {found!r}, expected {expected!r}")


def status_of(vsa, reading):
    return vsa.vsa_status_name(vsa.vsa_reading_status(reading)).decode()


def read(vsa, text, options=None):
    return vsa.vsa_read_text(text, len(text), options)


def default_options(vsa):
    options = Options()
    vsa.vsa_options_init(options)
    expect(options.size, ctypes.sizeof(Options))
    return options


def value_of(function, kind, handle):
    out = kind()
    return out if function(handle, out) else None


def check_nodes(vsa):
    reading = read(vsa, b"# version: 7\n# time: noon\nlamp sun: .power = 2.5; sky dusk;")
    expect(status_of(vsa, reading), "complete")
    expect(str(vsa.vsa_reading_message(reading)), "")
    expect((vsa.vsa_file_version(reading), str(vsa.vsa_file_time(reading))), (7, "noon"))
    expect((vsa.vsa_comment_count(reading), str(vsa.vsa_comment_at(reading, 1))), (2, "# time: noon"))
    names, node = [], vsa.vsa_first_node(reading)
    while node:
        names.append(f"{vsa.vsa_node_type(node)} {vsa.vsa_node_name(node)}")
        node = vsa.vsa_next_node(node)
    expect(names, ["lamp sun", "sky dusk"])
    power = vsa.vsa_find_input(vsa.vsa_find_node(reading, b"sun"), b"power")
    expect(value_of(vsa.vsa_real, ctypes.c_double, power).value, 2.5)
    expect(value_of(vsa.vsa_real, ctypes.c_double, vsa.vsa_find_node(reading, b"son")), None)
    counts = value_of(vsa.vsa_reading_counts, Counts, reading)
    expect((counts.bytes_read, counts.nodes, counts.values), (59, 2, 1))
    vsa.vsa_free(reading)


def check_inputs(vsa):
    reading = read(vsa, b'lamp a: .on = true; .i = -3; .u = 12u; .s = "x"; .at = pos3(1 2 3); .to = b;\n'
                        b'.c |= b.out; .k[1].t = 1.5; sky b;')
    a, b = (vsa.vsa_find_node(reading, name) for name in (b"a", b"b"))
    inputs = [vsa.vsa_input_at(a, i) for i in range(vsa.vsa_input_count(a))]
    names = [str(vsa.vsa_input_name(each)) for each in inputs]
    expect(names, ["on", "i", "u", "s", "at", "to", "c", "k"])
    types = [vsa.vsa_type_name(vsa.vsa_input_type(each)).decode() for each in inputs]
    expect(types, ["Bool", "Int", "UInt", "String", "Pos3", "Node", "Null", "Array"])
    on, i, u, s, at, to_b, c, k = inputs
    expect(value_of(vsa.vsa_bool, ctypes.c_int, on).value, 1)
    expect(value_of(vsa.vsa_int, ctypes.c_int64, i).value, -3)
    expect(value_of(vsa.vsa_uint, NUMBER, u).value, 12)
    expect(str(value_of(vsa.vsa_string, Text, s)), "x")
    numbers = to(ctypes.c_double)()
    expect(vsa.vsa_components(at, numbers), 3)
    expect(numbers[:3], [1, 2, 3])
    output = Text()
    expect((vsa.vsa_reference(to_b), vsa.vsa_connection(c, output), str(output)), (b, b, "out"))
    expect(vsa.vsa_element_count(k), 2)
    element = vsa.vsa_element_at(k, 1)
    expect(vsa.vsa_member_count(element), 1)
    expect(vsa.vsa_member_at(element, 0), vsa.vsa_find_member(element, b"t"))
    path = ctypes.create_string_buffer(16)
    expect(vsa.vsa_input_path(vsa.vsa_member_at(element, 0), path, len(path)), 8)
    expect(path.value, b"a.k[1].t")
    vsa.vsa_free(reading)


def check_diagnostics(vsa):
    reading = read(vsa, b"lamp a: .n = 1; .n = 2.5;\n.x = ;")
    expect(status_of(vsa, reading), "stopped-by-error")
    expect((vsa.vsa_diagnostic_count(reading), vsa.vsa_diagnostics_found(reading)), (2, 2))
    warning, error, missing = Diagnostic(), Diagnostic(), Diagnostic()
    expect([vsa.vsa_diagnostic_at(reading, i, d) for i, d in enumerate((warning, error, missing))], [1, 1, 0])
    expect((warning.id, warning.is_error, warning.ended_reading), (b"narrowing", 0, 0))
    expect((str(warning.message), str(warning.input_path)), ("narrowing Real to Int @ a.n", "a.n"))
    count = vsa.vsa_diagnostic_argument_count(reading, 0)
    expect([str(vsa.vsa_diagnostic_argument(reading, 0, i)) for i in range(count)], ["Real", "Int", "a.n"])
    expect((warning.begin.offset, warning.begin.line, warning.begin.column, warning.end.offset), (21, 1, 22, 24))
    expect((error.is_error, error.ended_reading, error.begin.line), (1, 1, 2))
    vsa.vsa_free(reading)


def check_options(vsa):
    options = default_options(vsa)
    options.nodes = 1
    reading = read(vsa, b"lamp a; lamp b;", options)
    expect(status_of(vsa, reading), "over-limit")
    expect(vsa.vsa_limit_name(vsa.vsa_reading_limit(reading)), b"nodes")
    vsa.vsa_free(reading)

    options = default_options(vsa)
    options.wanted_types, options.wanted_type_count = (NAME * 1)(b"mesh"), 1
    reading = read(vsa, b"lamp a; mesh b;", options)
    expect(str(vsa.vsa_node_name(vsa.vsa_first_node(reading))), "b")
    vsa.vsa_free(reading)

    options = default_options(vsa)
    totals = []
    options.progress = ON_PROGRESS(lambda _, progress: totals.append(progress[0].bytes_total) or 0)
    reading = read(vsa, b"lamp a;", options)
    expect((status_of(vsa, reading), totals), ("cancelled", [7]))
    vsa.vsa_free(reading)

    options.size += 8
    reading = read(vsa, b"lamp a;", options)
    expect(status_of(vsa, reading), "wrong-use")
    vsa.vsa_free(reading)


def expect_points(buffer):
    expect((buffer.count, buffer.components, buffer.component_type), (375, 3, b"Float"))
    points = (ctypes.c_float * (buffer.count * buffer.components)).from_address(buffer.data)
    expect(round(max(points[1::3]), 3), 0.288)


def check_buffers(vsa, path):
    reading = vsa.vsa_read_file(path, None)
    points = vsa.vsa_find_input(vsa.vsa_find_node(reading, b"vaseMesh"), b"points")
    expect_points(value_of(vsa.vsa_buffer_of, Buffer, points))
    vsa.vsa_free(reading)

    options = default_options(vsa)
    options.skips_buffers = 1
    reading = vsa.vsa_read_file(path, options)
    skipped = [SkippedBuffer() for _ in range(vsa.vsa_skipped_count(reading))]
    expect([vsa.vsa_skipped_at(reading, i, each) for i, each in enumerate(skipped)], [1] * len(skipped))
    index = [str(each.input_path) for each in skipped].index("vaseMesh.points")
    expect(skipped[index].count, 375)
    with open(path, "rb") as file:
        text = file.read()
    loaded = [vsa.vsa_load_buffer(path, reading, index, None),
              vsa.vsa_load_buffer_from_text(text, len(text), reading, index, None)]
    vsa.vsa_free(reading)
    for each in loaded:
        expect(status_of(vsa, each), "complete")
        expect_points(value_of(vsa.vsa_loaded_buffer, Buffer, each))
        vsa.vsa_free(each)


def main(library, folder):
    vsa = load(library)
    check_nodes(vsa)
    check_inputs(vsa)
    check_diagnostics(vsa)
    check_options(vsa)
    check_buffers(vsa, os.path.join(folder, "vase_mesh.vsa").encode())


if __name__ == "__main__":
    main(*sys.argv[1:])
