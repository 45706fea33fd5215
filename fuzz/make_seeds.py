#!/usr/bin/env python3
"""Writes whole files of each kind that the fuzzers begin with: make_seeds.py <folder>

A folder for each fuzzer. Batches and configurations are those of the documentation and of the golden
tests; images, lists, maps and references are made here, as instruments and the program write them.
What scripts/fuzz.sh --minimise has kept of them stands in fuzz/corpus.
"""
import lzma
import math
import pathlib
import re
import struct
import sys
import zlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
HC = 12398.424360387684  # [eV angstrom]
SPACING = 3.13553  # [angstrom]


def edge(energy):
    """Absorption of a copper-like edge with a few oscillations."""
    above = max(0.0, energy - 8984)
    waves = 0.1 * math.sin(0.3 * above) * math.exp(-above / 60)
    return 0.4 + (0.5 + math.atan((energy - 8984) / 2) / math.pi) * (1 + waves)


# TIFF

def words(width, height, order="<"):
    return struct.pack(f"{order}{width * height}H", *(k * 37 % 65536 for k in range(width * height)))


def pack_bits(data):
    """Runs and literals by turns, as packers write them."""
    packed = bytearray()
    for at in range(0, len(data), 64):
        part = data[at:at + 64]
        if len(set(part)) == 1:
            packed += bytes([257 - len(part) & 0xFF, part[0]])
        else:
            packed += bytes([len(part) - 1]) + part
    return bytes(packed)


def pack_lzw(data):
    """Codes of 9 bits: the table is cleared before it needs longer ones."""
    codes = [256]
    for at, byte in enumerate(data):
        if at and at % 200 == 0:
            codes.append(256)
        codes.append(byte)
    bits = "".join(f"{code:09b}" for code in codes + [257])
    bits += "0" * (-len(bits) % 8)
    return bytes(int(bits[at:at + 8], 2) for at in range(0, len(bits), 8))


def tiff(width, height, order="<", compression=1, rows=None, packer=lambda data: data, big=False,
         exposure=None, predictor=None, pages=1, changes=()):
    """Strips of `rows` rows, then a directory for each page, each with the same strips."""
    rows = rows or height
    data = words(width, height, order)
    strips = [packer(data[at:at + rows * width * 2])
              for at in range(0, len(data), rows * width * 2)]
    head = 16 if big else 8
    offsets = [head + sum(map(len, strips[:k])) for k in range(len(strips))]
    body = b"".join(strips) + b"\0" * (sum(map(len, strips)) % 2)
    tags = {256: (4, [width]), 257: (4, [height]), 258: (3, [16]), 259: (3, [compression]),
            262: (3, [1]), 273: (4, offsets), 277: (3, [1]), 278: (4, [rows]),
            279: (4, [len(strip) for strip in strips])}
    if predictor:
        tags[317] = (3, [predictor])
    tags.update(dict(changes))
    for page in range(pages):
        body += directory(head + len(body), tags, order, big, exposure, page + 1 == pages)
    first = head + len(b"".join(strips)) + sum(map(len, strips)) % 2
    mark = b"II" if order == "<" else b"MM"
    if big:
        return mark + struct.pack(f"{order}HHHQ", 43, 8, 0, first) + body
    return mark + struct.pack(f"{order}HI", 42, first) + body


def directory(at, tags, order, big, exposure, last):
    """A directory at this place of the file, with its long values and the EXIF part behind it."""
    count, entry, offset = ("Q", "HHQ", "Q") if big else ("H", "HHI", "I")
    inline = 8 if big else 4
    entries = len(tags) + (exposure is not None)
    size = struct.calcsize("=" + count) + entries * (struct.calcsize("=" + entry) + inline)
    behind = at + size + inline
    extra = b""
    lines = b""
    for tag, (kind, values) in sorted(tags.items()):
        packed = struct.pack(f"{order}{len(values)}{'I' if kind == 4 else 'H'}", *values)
        if len(packed) > inline:
            extra, packed = extra + packed, struct.pack(order + offset, behind + len(extra))
        lines += struct.pack(order + entry, tag, kind, len(values)) + packed.ljust(inline, b"\0")
    if exposure is not None:
        exif = behind + len(extra)
        lines += struct.pack(order + entry, 34665, 4, 1) + struct.pack(order + offset, exif)[:inline]
        number = struct.pack(order + "II", exposure, 1000)
        where = exif + struct.calcsize("=" + count + entry) + 2 * inline
        value = number if big else struct.pack(order + "I", where)
        extra += (struct.pack(order + count, 1) + struct.pack(order + entry, 33434, 5, 1) + value
                  + b"\0" * inline + (b"" if big else number))
    following = 0 if last else behind + len(extra)
    return struct.pack(order + count, entries) + lines + struct.pack(order + offset, following) + extra


def tiffs():
    yield tiff(8, 6)
    yield tiff(7, 5, order=">", rows=2, exposure=250)
    yield tiff(6, 4, exposure=200)
    yield tiff(6, 4, big=True, exposure=200)
    yield tiff(6, 4, order=">", big=True)
    yield tiff(5, 5, pages=3)
    yield tiff(64, 9, rows=3, compression=32773, packer=pack_bits)
    yield tiff(16, 8, rows=4, compression=5, packer=pack_lzw)
    yield tiff(16, 8, rows=4, compression=8, packer=zlib.compress)
    yield tiff(16, 8, compression=32946, packer=zlib.compress, predictor=2)
    yield tiff(16, 8, compression=34925, packer=lzma.compress)
    for compression in (2, 3, 4, 7, 32809, 32908, 32909, 34676, 34712, 34887, 50000, 50001):
        yield tiff(8, 4, compression=compression)
    yield tiff(4, 4, changes={339: (3, [2])}.items())
    yield tiff(4, 4, changes={339: (3, [4])}.items())
    yield tiff(4, 4, changes={258: (3, [8])}.items())
    yield tiff(4, 4, changes={257: (4, [0x0FFFFFFF])}.items())
    yield tiff(8, 6)[:70]


# Other images

def img(width, height, comment=b"", longs=False, corner=(0, 0)):
    head = b"IM" + struct.pack("<5H", len(comment), width, height, *corner)
    pixels = [k * 91 % 60000 for k in range(width * height)]
    return head.ljust(64, b"\0") + comment + struct.pack(f"<{len(pixels)}{'I' if longs else 'H'}", *pixels)


def imgs():
    yield img(6, 4)
    yield img(5, 3, b"Camera=C1,BytesPerPixel=4,ExposureTime=200 ms,Binning=1,", True, (3, 2))
    yield img(3, 5, b"ExposureTime=0.25,BytesPerPixel=2,")
    yield img(3, 2, b"ExposureTime=70 us\0BytesPerPixel=4")
    yield img(60, 40)[:70]


def brnx(width, height, lines, value=lambda x, y: f"{0.001 * x + y:.5g}"):
    text = f"#BRNX-CTImg\n# RANGE_X0 = 0\n# RANGE_X1 = {width}\n# RANGE_Y0 = 0\n# RANGE_Y1 = {height}\n"
    places = [(k % width, k // width) for k in range(lines)]
    return (text + "".join(f"{x} {y} {value(x, y)}\n" for x, y in places)).encode()


def brnxs():
    yield brnx(5, 4, 20)
    yield brnx(4, 3, 7)
    yield brnx(2, 2, 4, lambda x, y: '"-1.5e300"')
    yield brnx(2, 2, 4, lambda x, y: "nan")
    yield brnx(3, 2, 6).replace(b"\n", b"\r\n").lower().replace(b"brnx-cti", b"BRNX-CTI")
    yield brnx(1 << 20, 1 << 10, 3)
    yield b"#BRNX-CTImg\n# RANGE_X0 = -3.9\n# RANGE_X1 = 1e99\n"
    yield b"no image at all"


# Texts

def err_points():
    yield b"# Size 200 200\n17 140\n91 22\n5 3\n6 3\n7 3\n"
    yield b"# Size 20 20\n\n# a comment\n5 4 9 # two\n  16\t14\n"
    yield b"5 3\n5 3\n4294967296 -1\n# Size 3 3\n8 8\n"
    yield b"# Size 9\n\"6\" \"7\"\n6,7\n"


def shift_map(width, height, values, **changes):
    head = {"Std Edge Energy [eV]": 8984.36, "Spacing [nm]": SPACING, "X Offset [pix]": 2,
            "Y Offset [pix]": 1, "Width [pix]": width, "Height [pix]": height,
            "Bin Half Width [pix]": 1, "Bin Half Height [pix]": 1, "Area X0": 0, "Area X1": width,
            "Area Y0": 0, "Area Y1": height, "Std File Name": "/data/metal.dat",
            "Map Height": height, "Map Width": f"0 {width}"}
    head.update(changes)
    lines = ["###Morvenkite::MVKT", *(f"{key:<24}: {value}" for key, value in head.items()),
             "##-----------------"]
    return ("\n".join(lines) + "\n" + " ".join(values) + "\n").encode()


def shift_maps():
    values = [f"{0.0004 * math.sin(k):.6f}" for k in range(24)]
    yield shift_map(6, 4, values)
    yield shift_map(6, 4, values[:20])
    yield shift_map(3, 2, ["nan", "1e308", "word", "-90", "77", "0"])
    yield shift_map(3, 2, values[:6]).replace(b"###Morvenkite::MVKT", b"###MVKT")
    yield shift_map(6, 4, values, **{"Area X0": -5, "Area X1": 99, "Bin Half Width [pix]": -3})
    yield shift_map(6, 4, values, **{"Area X1": 0, "Area Y1": 0})
    yield shift_map(60000, 60000, values)
    yield shift_map(6, 4, values, **{"Spacing [nm]": 0})


def simple_reference(energies, separator=" ", head=""):
    lines = [f"{energy:.3f}{separator}{edge(energy):.5f}" for energy in energies]
    return (head + "\n".join(lines) + "\n").encode()


def beamline_scan(energies, item=""):
    head = f"9809     Beamline\nMono : SI(111)  D= {SPACING} A {item}\nAngle(c) Angle(o) time/s I0 I1\n"
    lines = []
    for energy in energies:
        angle = math.degrees(math.asin(HC / (2 * SPACING * energy)))
        lines.append(f"{angle:.8f} {angle:.8f} 1.00 500000.000 {500000 * math.exp(-edge(energy)):.3f}")
    return (head + "Offset 0 0 0 0\n" + "\n".join(lines) + "\n").encode()


def references():
    usual = range(8950, 9050, 2)
    yield simple_reference(usual)
    yield simple_reference(usual, ",", "# Cu2O\n# energy mu\n") + b" "
    yield simple_reference(reversed(range(8950, 9030, 3)), "; ")
    yield simple_reference([e / 1000 for e in usual])
    yield simple_reference(usual, "\t", "# Column.1: energy\n# Column.2: mu\n# Column.3: i0\n").replace(
        b"\n", b"\r")
    yield beamline_scan(usual)
    yield beamline_scan(usual, "Fluorescence( 3)") + b"\n"
    yield b"1 2\n1 3\n1D3 4\n1e308 -1e308\n-5 nan\n"
    yield b"1 1\n2 1\n3 1\n4 1\n"


def documented(language):
    """Examples of the documentation, by the language of their blocks."""
    for page in [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]:
        text = page.read_text(encoding="utf-8")
        for block in re.findall(rf"```{language}\n(.*?)```", text, re.S):
            yield block.encode()


def batches():
    yield from documented("batch")
    for path in sorted((ROOT / "tests" / "golden").glob("*/*.bat")):
        yield path.read_bytes()
    # Each command once, with arguments, as its list has it; a few a file, since short ones run faster.
    page = (ROOT / "docs" / "batch-commands.md").read_text(encoding="utf-8")
    examples = re.findall(r"^\| `[^`]+` \|[^|]*\| `([^`]+)` \|$", page, re.M)
    for at in range(0, len(examples), 20):
        yield "\n".join(examples[at:at + 20]).encode()
    yield b":let a $b$\n:let b $a$$a$\n:for L %i% 1 3 0\n:echo $a$%i%\n:next L\n"
    yield "\ufeff:echo \"\u00e9\"\nquit\n".encode("utf-16")
    yield b":rem_start\nload_I1_files new \\\n a.tif\n:rem_end\n:end\nx\n"


def configurations():
    for path in sorted((ROOT / "tests" / "golden").glob("*/config.cfg")):
        yield path.read_bytes()
    yield (b"DataRoot   \"/data/2024 spring\"       # start folder\nBatchRoot  /data/batches\n"
           b"ErrPoints  /data/bad.txt\nThreads 3\nShowAnalyzer2Button 1\nbatch      :echo \"Hello\"\n")
    yield b"INCLUDE a\nKey 1\n@@@\nINCLUDE b\nkey 2\n@@@\nINCLUDE config\nINCLUDE a\nINCLUDE b\nKEY 3\n"
    yield b"INCLUDE a\nINCLUDE a\nINCLUDE a\n@@@\nINCLUDE b\nINCLUDE b\nINCLUDE b\n@@@\nk v w\n"


def command_lines():
    yield b"-c\nconfig.cfg\n-b\na.bat\n-x\n-timeout\n30\n-v"
    yield b"-let\nscan=a 1\n-let\nb=\n-let\n=c\n-let\nd"
    yield b"-d\n/data\n-br\n/batches\n-threads\n4\n-showA2B\n1\n-e\n-j\n-dbg"
    yield b"--check\na.bat\n-config\nnone.cfg\n-C\nx"
    yield b"--help-commands\n--version\n-timeout\nnan\n-threads\n999999999999"


KINDS = {"tiff": tiffs, "img": imgs, "brnx": brnxs, "errpoints": err_points,
         "shiftmap": shift_maps, "reference": references, "batch": batches,
         "cfg": configurations, "commandline": command_lines}


def main(folder):
    for kind, seeds in KINDS.items():
        place = pathlib.Path(folder) / kind
        place.mkdir(parents=True, exist_ok=True)
        for number, seed in enumerate(seeds()):
            (place / f"seed-{number:02}").write_bytes(seed)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(sys.argv[1])
