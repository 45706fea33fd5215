"""Writers of small measurements for golden batches, independent of the program's readers."""
import math
import struct
from pathlib import Path

ENERGIES = [8920.0 + 2.0 * i for i in range(61)]
FULL = 4e9  # counts without a sample


def edge(energy):
    return 0.5 * (1.0 + math.tanh((energy - 8980.0) / 0.5))


def mu_a(energy):
    return 0.2 + edge(energy)


def mu_b(energy):
    """Like a but for a bump above the edge: mixtures have the lines of both, so shares come back."""
    return mu_a(energy) + 0.3 * math.exp(-((energy - 8982.0) ** 2) / 0.32)


def write_img(path, width, height, value):
    """value(x, y) as 4-byte counts, exposed for 20 ms."""
    comment = b"BytesPerPixel=4,ExposureTime=20 ms,"
    head = b"IM" + struct.pack("<5H", len(comment), width, height, 0, 0)
    pixels = [int(value(x, y)) for y in range(height) for x in range(width)]
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(head.ljust(64, b"\0") + comment + struct.pack(f"<{len(pixels)}I", *pixels))


def write_scan(folder, share, width=4, height=3, dark=0):
    """i1_0.img to i1_60.img of a mixture, share(x, y) of a and the rest b, above dark counts, which
    the corner of 2 x 2 pixels has alone."""
    for n, energy in enumerate(ENERGIES):
        def counts(x, y):
            part = share(x, y)
            lit = FULL * math.exp(-part * mu_a(energy) - (1.0 - part) * mu_b(energy))
            return dark + (lit if dark == 0 or x > 1 or y > 1 else 0.0)
        write_img(Path(folder) / f"i1_{n}.img", width, height, counts)


def write_common(folder="."):
    """I0 images of one pixel size for all scans of 4 by 3, and both references."""
    for n in range(len(ENERGIES)):
        write_img(Path(folder) / f"i0_{n}.img", 4, 3, lambda x, y: FULL)
    for name, mu in (("a", mu_a), ("b", mu_b)):
        rows = "".join(f"{energy} {mu(energy):.17g}\n" for energy in ENERGIES)
        (Path(folder) / f"{name}.dat").write_text(rows)
