#!/usr/bin/python3
"""Makes the two element tables that are compiled into the program, from xraylib's data.

    tools/make_element_tables.py src/resources

Needs Debian's python3-xraylib and python3-numpy, and those only to remake the tables: the output is
committed.
"""
import pathlib
import sys

import numpy
import xraylib

HC = 12.398424360387684  # keV angstrom
SHELLS = (xraylib.K_SHELL, xraylib.L1_SHELL, xraylib.L2_SHELL, xraylib.L3_SHELL, xraylib.M1_SHELL)
# The calibration of our beamlines stands on this energy of the copper K edge.
FIXED_EDGES = {(29, xraylib.K_SHELL): 8.98436029}
LOWEST, HIGHEST = 0.1, 200.0  # keV, where the cross sections are used
SAMPLES = 60
MISSING = "="
LAST_ABSORPTION = 92
FIRST_LINES, LAST_LINES = 3, 97
LINES = (xraylib.KA2_LINE, xraylib.KA1_LINE, xraylib.KB_LINE, xraylib.LA2_LINE, xraylib.LA1_LINE,
         xraylib.LB1_LINE, xraylib.LB2_LINE)
EDGES = (xraylib.K_SHELL, xraylib.L3_SHELL, xraylib.L2_SHELL, xraylib.L1_SHELL)


def value_or(missing, function, *arguments):
    """xraylib raises ValueError for what an element does not have."""
    try:
        value = function(*arguments)
    except ValueError:
        return missing
    return value if value > 0 else missing


def edge(z, shell):
    return FIXED_EDGES.get((z, shell)) or value_or(0.0, xraylib.EdgeEnergy, z, shell)


def victoreen(z, low, high):
    """C and D of C lambda^3 - D lambda^4 [cm2/g] between two energies, every sample weighing by its
    relative deviation; D is missing where the data would have it negative."""
    low, high = max(low * 1.002, LOWEST), min(high * 0.998, HIGHEST)
    if high <= low:
        return MISSING, MISSING
    energies = numpy.geomspace(low, high, SAMPLES)
    sections = numpy.array([xraylib.CS_Photo(z, e) for e in energies])
    wavelengths = HC / energies
    terms = numpy.stack([wavelengths**3, -wavelengths**4], axis=1) / sections[:, None]
    for count in (2, 1):
        solution = numpy.linalg.lstsq(terms[:, :count], numpy.ones(SAMPLES), rcond=None)[0]
        if (solution > 0).all():
            numbers = [f"{c:.5g}" for c in solution]
            return tuple(numbers + [MISSING] * (2 - count))
    return MISSING, MISSING


def absorption_fields(z):
    edges = [edge(z, shell) for shell in SHELLS]
    fields = [xraylib.AtomicNumberToSymbol(z), str(z)]
    for i, energy in enumerate(edges):
        is_m1 = i == len(edges) - 1
        if energy == 0:
            fields += [MISSING] * (3 if is_m1 else 4)
            continue
        above = [e for e in edges[:i] if e > energy]
        c, d = victoreen(z, energy, min(above, default=10 * max(energy, LOWEST)))
        fields.append(f"{energy:.9g}")
        if not is_m1:
            fields.append(f"{HC / energy:.6g}")
        fields += [c, d]
    return fields


def absorption_table():
    # The title takes row 0 of the table, so that the row index equals the atomic number.
    title = ["=元素", "番号"]
    for name in ("K", "LI", "LII", "LIII"):
        title += [f"{name}吸収端[keV]", "波長[A]", f"C({name})", f"D({name})"]
    title += ["M1吸収端[keV]", "C(M1)", "D(M1)"]
    rows = [title] + [absorption_fields(z) for z in range(1, LAST_ABSORPTION + 1)]
    return "".join("\t".join(row) + "\n" for row in rows)


def line_table():
    text = "#          Ka2      Ka1       Kb      La2      La1      Lb1      Lb2        K     LIII" \
           "      LII       LI\n"
    for z in range(FIRST_LINES, LAST_LINES + 1):
        energies = [value_or(0.0, xraylib.LineEnergy, z, line) for line in LINES]
        energies += [edge(z, shell) for shell in EDGES]
        text += f"{xraylib.AtomicNumberToSymbol(z):<2} {z:3d}"
        text += "".join(f" {1000 * e:8.1f}" if e > 0 else f" {0:8d}" for e in energies) + "\n"
    return text


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[1])
    (folder / "Victoreen1.txt").write_text(absorption_table(), encoding="utf-8")
    (folder / "xray-KLIII.txt").write_text(line_table(), encoding="utf-8")


main()
