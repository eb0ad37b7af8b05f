#!/usr/bin/env -S python3 -B
"""editors.py VSA [--editors]: checks that other programs recognise the output of `vsa check --format line`.

The problem matcher of GitHub in docs/checking.md must find the expected places. With --editors, Vim's errorformat and
Emacs' compilation-mode must find them, too.
"""

import json
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[3]

# Texts whose messages have quotes, colons, hints and a long name.
TEXTS = {
    "unknown.vsa": "lamp sun:\n  .power = 1e-5;\nlamp moon: .light = snu;\n\tmoon.power = [1 2;\n",
    "warnings.vsa": 'lamp a: .k = 1;\n.k = "C:\\new";\n.k = 2.5;\na.' + "n" * 300 + " |= b.c;\n",
    "sub/no-end.vsa": "# version: x\nsphere ball: .radius = 2.5\nball.centre = pos3(1 2);\n",
}
LEVELS = {"error", "warning"}


def documented(language, part):
    """Returns the block of code in docs/checking.md that has that language and contains `part`."""
    page = (ROOT / "docs/checking.md").read_text(encoding="utf-8")
    blocks = re.findall(rf"```{language}\n(.*?)```", page, re.DOTALL)
    return next(block for block in blocks if part in block)


def check(vsa, folder, form):
    run = subprocess.run([vsa, "check", "-q", "--no-config", "--format", form, *TEXTS], cwd=folder, check=False,
                         capture_output=True)
    return run.stdout.decode("utf-8")


def expected_places(vsa, folder):
    places = []
    for line in check(vsa, folder, "json").splitlines():
        finding = json.loads(line)
        begin = finding["range"]["begin"]
        places.append((finding["file"], begin["line"], begin["column"], finding["level"]))
    return places


def by_problem_matcher(lines, _folder):
    matcher = json.loads(documented("json", "problemMatcher"))["problemMatcher"][0]["pattern"][0]
    places = []
    for line in lines.splitlines():
        found = re.search(matcher["regexp"], line)
        if found is None:
            continue
        assert found[matcher["message"]] and found[matcher["code"]], line
        places.append((found[matcher["file"]], int(found[matcher["line"]]), int(found[matcher["column"]]),
                       found[matcher["severity"]]))
    return places


def by_vim(lines, folder):
    (folder / "lines.txt").write_text(lines, encoding="utf-8")
    errorformat = re.search(r"^set errorformat=.*$", documented("vim", "errorformat"), re.MULTILINE)[0]
    item = '[bufname(v:val.bufnr), v:val.lnum, v:val.col, v:val.type]'
    script = f"{errorformat}\ncgetfile lines.txt\n" \
             f"call writefile(map(filter(getqflist(), 'v:val.valid'), 'json_encode({item})'), 'vim.txt')\nqa!\n"
    (folder / "script.vim").write_text(script, encoding="utf-8")
    subprocess.run(["vim", "-N", "-u", "NONE", "-i", "NONE", "-es", "-S", "script.vim"], cwd=folder, check=True,
                   stdin=subprocess.DEVNULL, timeout=60)
    types = {"e": "error", "w": "warning"}
    rows = [json.loads(row) for row in (folder / "vim.txt").read_text(encoding="utf-8").splitlines()]
    return [(name, line, column, types[kind.lower()]) for name, line, column, kind in rows]


EMACS_SCRIPT = """
(require 'compile)
(require 'json)
(find-file "lines.txt")
(compilation-mode)
(setq buffer-read-only nil)
(compilation--ensure-parse (point-max))
(let ((at (point-min)) (places nil) message loc)
  (while at
    (when (setq message (get-text-property at 'compilation-message))
      (setq loc (compilation--message->loc message))
      (push (list (caar (compilation--loc->file-struct loc)) (compilation--loc->line loc)
                  (compilation--loc->col loc) (compilation--message->type message)) places))
    (setq at (next-single-property-change at 'compilation-message)))
  (with-temp-file "emacs.txt"
    (dolist (place (delete-dups (nreverse places))) (insert (json-encode place) "\\n"))))
"""


def by_emacs(lines, folder):
    (folder / "lines.txt").write_text(lines, encoding="utf-8")
    (folder / "script.el").write_text(EMACS_SCRIPT, encoding="utf-8")
    subprocess.run(["emacs", "--batch", "-Q", "-l", "script.el"], cwd=folder, check=True, capture_output=True,
                   stdin=subprocess.DEVNULL, timeout=120)
    types = {2: "error", 1: "warning"}
    rows = [json.loads(row) for row in (folder / "emacs.txt").read_text(encoding="utf-8").splitlines()]
    return [(name, line, column, types[kind]) for name, line, column, kind in rows]


def main():
    vsa = str(pathlib.Path(sys.argv[1]).resolve())
    parsers = [by_problem_matcher] + ([by_vim, by_emacs] if "--editors" in sys.argv else [])
    failed = False
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for file, text in TEXTS.items():
            (folder / file).parent.mkdir(exist_ok=True)
            (folder / file).write_text(text, encoding="utf-8")
        lines = check(vsa, folder, "line")
        expected = expected_places(vsa, folder)
        assert len(expected) >= 8 and {place[3] for place in expected} == LEVELS, expected
        for parser in parsers:
            found = parser(lines, folder)
            if found != expected:
                failed = True
                print(f"{parser.__name__}: expected\n{expected}\nfound\n{found}\nin\n{lines}")
            else:
                print(f"{parser.__name__}: {len(found)} places")
    return failed


if __name__ == "__main__":
    sys.exit(main())
