#!/usr/bin/env python3
"""Draws the program's icon, an absorption edge over the pixels of a map in a rounded square. Writes it
in the sizes that desktops ask for to src/resources/icon-<size>.png, and in any size to
packaging/morvenkite.svg.
"""
import math
import pathlib
import struct
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
FOLDER = ROOT / "src" / "resources"
SIZES = (16, 32, 64, 128, 256)
SAMPLES = 4  # each way, in a pixel

# Lengths are parts of the icon's side.
CORNER = 0.2
CELLS = 4  # of a side of the map, whole pixels in every size
LOW, HIGH = (22, 38, 92), (46, 148, 158)  # colours of the map
LINE = (255, 214, 92)
SHADE = (10, 18, 46)

# Margin, width of the line, gap between cells; coarser where there are few pixels.
USUAL_STYLE = (1 / 32, 0.085, 0.012)
STYLES = {16: (0.0, 0.13, 0.0), 32: (1 / 32, 0.11, 0.0)}


def edge(x):
    """Height of the absorption curve at x, both from 0 to 1."""
    rise = 0.5 + math.atan((x - 0.36) / 0.022) / math.pi
    peak = 0.20 * math.exp(-((x - 0.425) / 0.05) ** 2)
    waves = 0.0
    if x > 0.5:
        t = x - 0.5
        waves = 0.085 * min(1.0, t / 0.06) * math.sin(t / 0.052) * math.exp(-t / 0.35)
    return 0.22 + 0.46 * rise + peak + waves


STEPS = 160
START, LENGTH = 0.09, 0.82  # of the curve along x
CURVE = [(START + LENGTH * i / STEPS, edge(0.02 + 0.96 * i / STEPS)) for i in range(STEPS + 1)]
REACH = 0.12  # farther from the curve nothing is drawn


def distance_to_curve(x, y):
    """Distance of a point, y upward, from the curve as a polyline; REACH when it is not near."""
    first = int((x - REACH - START) / LENGTH * STEPS)
    last = int((x + REACH - START) / LENGTH * STEPS) + 2
    near = CURVE[max(0, first):max(0, last)]
    nearest = REACH
    for (x0, y0), (x1, y1) in zip(near, near[1:]):
        dx, dy = x1 - x0, y1 - y0
        t = min(1.0, max(0.0, ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy)))
        nearest = min(nearest, math.hypot(x - x0 - t * dx, y - y0 - t * dy))
    return nearest


def in_square(x, y, margin):
    """Whether a point lies in the rounded square."""
    half = 0.5 - margin
    dx = max(0.0, abs(x - 0.5) - (half - CORNER))
    dy = max(0.0, abs(y - 0.5) - (half - CORNER))
    return math.hypot(dx, dy) <= CORNER


def cell_color(x, y, gap):
    column, row = int(x * CELLS), int(y * CELLS)
    inside_x, inside_y = x - column / CELLS, y - row / CELLS
    if min(inside_x, inside_y, 1 / CELLS - inside_x, 1 / CELLS - inside_y) < gap / 2:
        return SHADE
    # A blob of one species, a little below and to the right of the middle.
    u, v = (column + 0.5) / CELLS, (row + 0.5) / CELLS
    share = math.exp(-((u - 0.68) ** 2 + (v - 0.62) ** 2) / 0.16)
    share = 0.9 * share + 0.1 * ((column * 3 + row * 5) % 4) / 3
    return tuple(a + share * (b - a) for a, b in zip(LOW, HIGH))


def sample(x, y, style):
    """Red, green, blue and alpha at a point, y downward."""
    margin, line, gap = style
    if not in_square(x, y, margin):
        return (0, 0, 0, 0)
    distance = distance_to_curve(x, 1.0 - y)
    if distance < line / 2:
        return (*LINE, 255)
    color = cell_color(x, y, gap)
    if distance < line * 0.8:
        color = tuple((a + b) / 2 for a, b in zip(color, SHADE))
    return (*color, 255)


def pixel(px, py, size):
    style = STYLES.get(size, USUAL_STYLE)
    sums = [0.0] * 4
    for i in range(SAMPLES * SAMPLES):
        x = (px + (i % SAMPLES + 0.5) / SAMPLES) / size
        y = (py + (i // SAMPLES + 0.5) / SAMPLES) / size
        *color, alpha = sample(x, y, style)
        for k in range(3):
            sums[k] += color[k] * alpha
        sums[3] += alpha
    if sums[3] == 0:
        return bytes(4)
    return bytes([*(round(c / sums[3]) for c in sums[:3]), round(sums[3] / SAMPLES**2)])


def png(size):
    """The icon as a PNG file with 8 bits of red, green, blue and alpha."""
    rows = b"".join(
        b"\0" + b"".join(pixel(x, y, size) for x in range(size)) for y in range(size))

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))


def hex_color(color):
    return "#" + "".join(f"{round(c):02x}" for c in color)


def svg(side=256):
    """The icon as an SVG file: the same cells and curve in lengths of a picture of that side."""
    margin, line, gap = (part * side for part in USUAL_STYLE)
    cell = side / CELLS
    parts = [f'<rect x="{column * cell + gap / 2:.2f}" y="{row * cell + gap / 2:.2f}" '
             f'width="{cell - gap:.2f}" height="{cell - gap:.2f}" '
             f'fill="{hex_color(cell_color((column + 0.5) / CELLS, (row + 0.5) / CELLS, 0))}"/>'
             for row in range(CELLS) for column in range(CELLS)]
    points = " ".join(f"{x * side:.2f},{(1 - y) * side:.2f}" for x, y in CURVE)
    parts += [f'<polyline points="{points}" fill="none" stroke="{color}" stroke-width="{width:.2f}" '
              f'stroke-opacity="{opacity}" stroke-linecap="round" stroke-linejoin="round"/>'
              for color, width, opacity in ((hex_color(SHADE), 1.6 * line, 0.5), (hex_color(LINE), line, 1))]
    inside = side - 2 * margin
    square = (f'<rect x="{margin:g}" y="{margin:g}" width="{inside:g}" height="{inside:g}" '
              f'rx="{CORNER * side:g}"')
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{side}" height="{side}" viewBox="0 0 {side} {side}">',
        f'<clipPath id="square">{square}/></clipPath>',
        '<g clip-path="url(#square)">', f'{square} fill="{hex_color(SHADE)}"/>', *parts, "</g>", "</svg>", ""])


if __name__ == "__main__":
    for size in SIZES:
        (FOLDER / f"icon-{size}.png").write_bytes(png(size))
    (ROOT / "packaging" / "morvenkite.svg").write_text(svg(), encoding="utf-8")
