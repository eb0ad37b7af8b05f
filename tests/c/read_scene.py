#!/usr/bin/env -S python3 -B
"""read_scene.py LIBRARY FOLDER: reads an example in FOLDER through the shared library, by ctypes alone."""

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


HANDLE = ctypes.c_void_p
FUNCTIONS = {
    "vsa_read_file": (HANDLE, [ctypes.c_char_p, HANDLE]),
    "vsa_read_text": (HANDLE, [ctypes.c_char_p, ctypes.c_size_t, HANDLE]),
    "vsa_free": (None, [HANDLE]),
    "vsa_reading_status": (ctypes.c_int, [HANDLE]),
    "vsa_status_name": (ctypes.c_char_p, [ctypes.c_int]),
    "vsa_diagnostic_count": (ctypes.c_size_t, [HANDLE]),
    "vsa_first_node": (HANDLE, [HANDLE]),
    "vsa_next_node": (HANDLE, [HANDLE]),
    "vsa_find_node": (HANDLE, [HANDLE, ctypes.c_char_p]),
    "vsa_node_name": (Text, [HANDLE]),
    "vsa_find_input": (HANDLE, [HANDLE, ctypes.c_char_p]),
    "vsa_real": (ctypes.c_int, [HANDLE, ctypes.POINTER(ctypes.c_double)]),
    "vsa_buffer_of": (ctypes.c_int, [HANDLE, ctypes.POINTER(Buffer)]),
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


def main(library, folder):
    vsa = load(library)

    text = b"lamp sun: .power = 2.5; sky dusk;"
    reading = vsa.vsa_read_text(text, len(text), None)
    expect(status_of(vsa, reading), "complete")
    names, node = [], vsa.vsa_first_node(reading)
    while node:
        names.append(str(vsa.vsa_node_name(node)))
        node = vsa.vsa_next_node(node)
    expect(names, ["sun", "dusk"])
    power = ctypes.c_double()
    expect(vsa.vsa_real(vsa.vsa_find_input(vsa.vsa_find_node(reading, b"sun"), b"power"), power), 1)
    expect(power.value, 2.5)
    expect(vsa.vsa_real(vsa.vsa_find_input(vsa.vsa_find_node(reading, b"son"), b"power"), power), 0)
    vsa.vsa_free(reading)

    reading = vsa.vsa_read_text(b"}", 1, None)
    expect(status_of(vsa, reading), "stopped-by-error")
    expect(vsa.vsa_diagnostic_count(reading), 1)
    vsa.vsa_free(reading)

    reading = vsa.vsa_read_file(os.path.join(folder, "vase_mesh.vsa").encode(), None)
    buffer = Buffer()
    expect(vsa.vsa_buffer_of(vsa.vsa_find_input(vsa.vsa_find_node(reading, b"vaseMesh"), b"points"), buffer), 1)
    expect((buffer.count, buffer.components, buffer.component_type), (375, 3, b"Float"))
    points = (ctypes.c_float * (buffer.count * buffer.components)).from_address(buffer.data)
    expect(round(max(points[1::3]), 3), 0.288)
    vsa.vsa_free(reading)


if __name__ == "__main__":
    main(*sys.argv[1:])
