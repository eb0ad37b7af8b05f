"""Pages of documentation: their blocks of code, tables, links and headings."""

import re


class Block:
    """A fenced block: its language, its text, and the HTML comment on the line before it ("" without a comment)."""

    def __init__(self, page, line, language, comment):
        self.page, self.line, self.language, self.comment = page, line, language, comment
        self.lines = []
        self.outcomes = []  # the blocks after it that are its outcome

    @property
    def text(self):
        return "".join(line + "\n" for line in self.lines)

    @property
    def place(self):
        return f"{self.page}:{self.line}"

    def directive(self, name):
        """Returns REST of the comment `<!-- NAME: REST -->`, or None if the block has another comment."""
        if not self.comment.startswith(name + ":"):
            return None
        return self.comment[len(name) + 1 :].strip()


class Row:
    """A row of a table: the heading of its section, its place and its cells."""

    def __init__(self, page, line, section, cells):
        self.page, self.line, self.section, self.cells = page, line, section, cells

    @property
    def place(self):
        return f"{self.page}:{self.line}"


class Page:
    """A page: the parts that the tests use. Fenced text is only in `blocks`."""

    def __init__(self, name, text):
        self.name = name
        self.blocks, self.rows, self.headings, self.prose = [], [], [], []
        self._parse(text.split("\n"))

    def _parse(self, lines):
        block, comment, inside_comment, table_lines = None, "", False, 0
        for number, line in enumerate(lines, 1):
            if block is not None:
                if line.startswith("```"):
                    self.blocks.append(block)
                    block, comment = None, ""
                else:
                    block.lines.append(line)
                continue
            if line.startswith("```"):
                block = Block(self.name, number, line[3:].strip(), comment.strip())
                continue
            if inside_comment or line.startswith("<!--"):
                comment += line.replace("<!--", "").replace("-->", "") + "\n"
                inside_comment = "-->" not in line
                continue
            if line.strip():
                comment = ""
                self.prose.append((number, line))
            table_lines = table_lines + 1 if line.startswith("|") else 0
            if table_lines > 2:
                section = self.headings[-1] if self.headings else ""
                self.rows.append(Row(self.name, number, section, cells_of(line)))
            heading = re.match(r"#+ +(.*)", line)
            if heading:
                self.headings.append(heading.group(1))
        if block is not None:
            raise ValueError(f"{self.name}:{block.line}: the block is not closed")

    def first_lines(self):
        """Yields each heading with the first line of prose after it."""
        heading = None
        for _, line in self.prose:
            if line.startswith("#"):
                heading = line.lstrip("# ")
            elif heading is not None:
                yield heading, line
                heading = None

    def anchors(self):
        return {anchor_of(heading) for heading in self.headings}

    def links(self):
        """Yields each link to a file of the tree as (line, target)."""
        for number, line in self.prose:
            for target in re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`]*`", "", line)):
                if not re.match(r"[a-z]+:", target):
                    yield number, target


def cells_of(line):
    """Returns the cells of a table row. A backslash precedes each vertical bar inside a cell."""
    cells = re.split(r"(?<!\\)\|", line.strip().strip("|"))
    return [cell.strip().replace("\\|", "|") for cell in cells]


def code_of(cell):
    """Returns the pieces of code in a cell, in their order."""
    return re.findall(r"`([^`]+)`", cell)


def anchor_of(heading):
    """Returns the anchor of a heading: lower case, hyphens instead of blanks, no punctuation."""
    text = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", heading)
    return re.sub(r"[^\w\- ]", "", text.lower()).replace(" ", "-")
