"""A foil whose edge lies 1.5 eV above that of the scan."""
from pathlib import Path

from experiment import ENERGIES, mu_b, write_common, write_scan

write_common()
write_scan("scan", lambda x, y: 0.2 + 0.05 * x + 0.1 * y)
Path("foil.dat").write_text("".join(f"{e} {mu_b(e - 1.5):.17g}\n" for e in ENERGIES))
