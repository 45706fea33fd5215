#!/usr/bin/env python3
"""Draws how data move from files to maps, and writes the picture to docs/img/data-flow.svg, which
stands in docs/architecture.md.

Run it without arguments after changing the tables below, when a class that data pass through comes,
goes or gets another name. The same tables give the same bytes. It refuses a text that is too wide
for its box.
"""
import pathlib
import xml.sax.saxutils as sax

FILE = pathlib.Path(__file__).resolve().parent.parent / "docs" / "img" / "data-flow.svg"

# Kind of box: fill, border, and what the legend calls it.
KINDS = {
    "file": ("#ffffff", "#777777", "files"),
    "form": ("#fdf1d8", "#b08a3a", "forms"),
    "data": ("#dcebf9", "#41719c", "data"),
    "conductor": ("#e2f0dc", "#5b8a48", "conductors"),
    "worker": ("#f6dfe3", "#a8505f", "workers, in threads of their own"),
}

# Key: column and row, kind, name, and a line below it.
BOXES = {
    "images": (0, 0, "file", "Image files", "TIFF, IMG, BRNX"),
    "loader": (1, 0, "worker", "LoadTiff", "reads"),
    "stack": (2, 0, "conductor", "StackConductor", "gives energies"),
    "data": (3, 0, "data", "Measurement", "stacks, dark image"),
    "image": (4, 0, "conductor", "ViewConductor", "image on show"),
    "forms": (1, 1, "form", "Forms", "boxes, rows, panels"),
    "reader": (3, 1, "conductor", "SourceReader", "as things stand"),
    "shifts": (4, 1, "data", "ShiftMap", "the one in force"),
    "source": (3, 2, "data", "WalkSource", "frozen"),
    "cursor": (0, 3, "conductor", "CursorConductor", "one position"),
    "proc": (1, 3, "worker", "AnalyzeProc", "fits"),
    "engine": (3, 3, "worker", "WalkEngine", "kernels, on a pool"),
    "views": (0, 4, "form", "Views", "spectrum, sections"),
    "panel": (1, 4, "form", "Analyzer", "weights at the cursor"),
    "lcf": (3, 4, "data", "LcfSink", "in walking order"),
    "calib": (4, 3, "data", "CalibSink", "in walking order"),
    "book": (2, 4, "data", "MapBook", "maps by key"),
    "map": (1, 5, "conductor", "ViewConductor", "map on show"),
    "save": (2, 5, "conductor", "SaveConductor", "output/"),
    "saved": (3, 5, "file", "Saved files", "TIFF, text, pictures"),
}

# From a side of a box to a side of another; "both" points both ways.
ARROWS = [
    ("images", "right", "loader", "left", ""),
    ("forms", "top", "loader", "bottom", ""),
    ("loader", "right", "stack", "left", ""),
    ("stack", "right", "data", "left", ""),
    ("data", "right", "image", "left", ""),
    ("data", "bottom", "reader", "top", ""),
    ("forms", "right", "reader", "left", ""),
    ("shifts", "left", "reader", "right", ""),
    ("reader", "bottom", "source", "top", ""),
    ("source", "bottom", "cursor", "top", ""),
    ("source", "bottom", "engine", "top", ""),
    ("cursor", "right", "proc", "left", ""),
    ("cursor", "bottom", "views", "top", ""),
    ("proc", "bottom", "panel", "top", ""),
    ("engine", "bottom", "lcf", "top", ""),
    ("engine", "right", "calib", "left", ""),
    ("lcf", "left", "book", "right", ""),
    ("calib", "top", "shifts", "bottom", ""),
    ("book", "bottom", "map", "top", ""),
    ("book", "bottom", "save", "top", ""),
    ("save", "right", "saved", "left", ""),
]

# Lengths in pixels of a picture 900 wide.
WIDTH, HEIGHT = 900, 548
BOX_WIDTH, BOX_HEIGHT = 152, 50
COLUMN, ROW = 177, 84  # from box to box
LEFT, TOP = 20, 16
NAME_SIZE, LINE_SIZE, LEGEND_SIZE = 13, 12, 12
HEAD = 8  # of an arrow, along it
# Mean width of a letter in the widest of the usual fonts, in parts of the text's size.
GLYPH, BOLD_GLYPH = 0.6, 0.68

FONT = "Arial, Helvetica, 'Liberation Sans', sans-serif"
INK, ARROW = "#222222", "#555555"


def corner(key):
    """Upper left corner of a box."""
    column, row = BOXES[key][:2]
    return LEFT + column * COLUMN, TOP + row * ROW


def side(key, where):
    """The middle of a side of a box."""
    x, y = corner(key)
    return {
        "left": (x, y + BOX_HEIGHT // 2),
        "right": (x + BOX_WIDTH, y + BOX_HEIGHT // 2),
        "top": (x + BOX_WIDTH // 2, y),
        "bottom": (x + BOX_WIDTH // 2, y + BOX_HEIGHT),
    }[where]


def route(start, start_side, end, end_side):
    """Corners of the way between two sides: straight, round one corner, or round two."""
    a, b = side(start, start_side), side(end, end_side)
    if a[0] == b[0] or a[1] == b[1]:
        return [a, b]
    if start_side in ("left", "right"):
        return [a, (b[0], a[1]), b]
    if end_side in ("left", "right"):
        return [a, (a[0], b[1]), b]
    # In the gap in front of the end, where no box stands.
    middle = b[1] - (ROW - BOX_HEIGHT) // 2
    return [a, (a[0], middle), (b[0], middle), b]


def text(x, y, size, content, bold=False, anchor="middle"):
    """A line of text; one in the middle of a box must fit into it."""
    if anchor == "middle" and len(content) * size * (BOLD_GLYPH if bold else GLYPH) > BOX_WIDTH:
        raise SystemExit(f"draw_data_flow.py: too wide for its box: {content}")
    weight = ' font-weight="bold"' if bold else ""
    return (f'<text x="{x}" y="{y}" font-size="{size}" text-anchor="{anchor}"{weight}>'
            f"{sax.escape(content)}</text>")


def rectangle(x, y, width, height, kind):
    fill, border, _ = KINDS[kind]
    return (f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="5" fill="{fill}" '
            f'stroke="{border}" stroke-width="1.5"/>')


def box(key):
    kind, name, line = BOXES[key][2:]
    x, y = corner(key)
    middle = x + BOX_WIDTH // 2
    return [rectangle(x, y, BOX_WIDTH, BOX_HEIGHT, kind),
            text(middle, y + 22, NAME_SIZE, name, bold=True),
            text(middle, y + 39, LINE_SIZE, line)]


def head(tip, behind):
    """The head of an arrow at `tip` that comes from `behind`, along an axis."""
    dx, dy = ((c > 0) - (c < 0) for c in (tip[0] - behind[0], tip[1] - behind[1]))
    foot = (tip[0] - dx * HEAD, tip[1] - dy * HEAD)
    half = HEAD // 2
    points = [tip, (foot[0] - dy * half, foot[1] - dx * half),
              (foot[0] + dy * half, foot[1] + dx * half)]
    return '<polygon points="{}" fill="{}"/>'.format(
        " ".join(f"{x},{y}" for x, y in points), ARROW)


def arrow(start, start_side, end, end_side, ways):
    points = route(start, start_side, end, end_side)
    shapes = ['<polyline points="{}" fill="none" stroke="{}" stroke-width="1.5"/>'.format(
        " ".join(f"{x},{y}" for x, y in points), ARROW), head(points[-1], points[-2])]
    if ways == "both":
        shapes.append(head(points[0], points[1]))
    return shapes


def legend():
    x, y = LEFT, HEIGHT - 28
    shapes = []
    for kind, (_, _, words) in KINDS.items():
        shapes += [rectangle(x, y, 22, 14, kind),
                   text(x + 30, y + 11, LEGEND_SIZE, words, anchor="start")]
        x += 62 + round(len(words) * LEGEND_SIZE * 0.6)
    return shapes


def picture():
    lines = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{HEIGHT}" '
             f'viewBox="0 0 {WIDTH} {HEIGHT}" font-family="{FONT}" fill="{INK}">',
             "<title>How data move from files to maps</title>",
             f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>']
    for way in ARROWS:
        lines += arrow(*way)
    for key in BOXES:
        lines += box(key)
    return "\n".join([*lines, *legend(), "</svg>", ""])


if __name__ == "__main__":
    FILE.write_text(picture(), encoding="utf-8")
