"""Runs the real program on both demonstration experiments.

The maps must hold the planted fields within the limits, and be the same for all image formats.
usage: test_demo_program.py <morvenkite> <morvenkite-demo>
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

DEMO = sys.argv.pop()
PROGRAM = sys.argv.pop()
ENVIRONMENT = dict(os.environ, QT_QPA_PLATFORM="offscreen")
# Lets the C library believe that it has an older processor.
WITHOUT_FMA = {"GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-FMA,-FMA4"}


def run(*arguments, **variables):
    """Exit code and all output of a program."""
    result = subprocess.run(list(map(str, arguments)), env=dict(ENVIRONMENT, **variables),
                            timeout=300, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    return result.returncode, result.stdout


class DemoProgram(unittest.TestCase):
    """The whole road by configuration and batch file, without a display."""

    def succeed(self, *arguments):
        code, output = run(*arguments)
        self.assertEqual(code, 0, output[-4000:])

    def analyse(self, folder, image_format, *options):
        """Writes an experiment and lets the program analyse it."""
        self.succeed(DEMO, "write", folder, "--size", 100, "--format", image_format, *options)
        self.execute(folder, "demo.bat")

    def execute(self, folder, batch, **variables):
        """Lets the program run a batch of the folder; gives its log."""
        code, log = run(PROGRAM, "-e", "-c", folder / "config.cfg", "-b", folder / batch, "-x",
                        **variables)
        self.assertEqual(code, 0, log[-4000:])
        return log

    def test_the_maps_hold_the_planted_fields_in_every_format(self):
        with tempfile.TemporaryDirectory(prefix="a demo ") as parent:
            folders = {name: pathlib.Path(parent) / name
                       for name in ("tiff", "img16", "img32", "brnx")}
            for name, folder in folders.items():
                with self.subTest(name):
                    self.analyse(folder, name)
                    self.succeed(DEMO, "compare", folder)
                    self.succeed(DEMO, "compare", folders["tiff"], "--other", folder)

    def test_a_drifting_sample_is_brought_back(self):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.succeed(DEMO, "write", folder, "--drift", 9)
            log = self.execute(folder, "demo.bat")
            self.assertIn("81 images of I1 moved by -9, 0 to 0, 6", log)
            self.assertIn("outside a moved image", log)
            self.succeed(DEMO, "compare", folder)
            # And is not without it.
            batch = (folder / "demo.bat").read_text()
            (folder / "left.bat").write_text(batch.replace("registration_auto_all", "# "))
            self.execute(folder, "left.bat")
            self.assertEqual(run(DEMO, "compare", folder)[0], 1)

    def shift_error(self, folder):
        """Rms and largest error of the saved shift map [eV]."""
        _, table = run(DEMO, "compare", folder)
        row = next(line for line in table.splitlines() if "shift [eV]" in line)
        return [float(word) for word in row.split()[5:7]]

    def test_without_noise_the_planted_energy_shifts_come_back(self):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.analyse(folder, "tiff", "--noise", "off")
            rms, largest = self.shift_error(folder)
            # The search steps by 0.1 eV.
            self.assertLess(rms, 0.035)
            self.assertLess(largest, 0.06)
            batch = (folder / "demo.bat").read_text()
            (folder / "mid.bat").write_text(batch.replace("calib_type 1", "calib_type 0"))
            self.execute(folder, "mid.bat")
            rms, _ = self.shift_error(folder)
            self.assertLess(rms, 1.0 / 3.0)  # the energies are 1 eV apart

    def test_with_the_edge_suggested_for_the_fits_the_fractions_come_back(self):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.succeed(DEMO, "write", folder, "--size", 100)
            batch = (folder / "demo.bat").read_text()
            calibration, fits = batch.split("analyzer_select_analysis_mode", 1)
            suggestion = "Suggest_Elm 1\nSuggesting_Elm Cu\nSuggesting_Edge 0\n"
            (folder / "suggested.bat").write_text(
                calibration + suggestion + "analyzer_select_analysis_mode" + fits)
            self.execute(folder, "suggested.bat")
            self.succeed(DEMO, "compare", folder)

    def test_runs_of_two_rows_leave_two_sets_of_files(self):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.succeed(DEMO, "write", folder, "--size", 40, "--energies", 41)
            batch = re.sub("ref[$]ref[$]", "of-row", (folder / "demo.bat").read_text())
            saved = []
            for row in (1, 2):
                (folder / "row.bat").write_text(
                    batch.replace("analyzer_select_image $ref$", f"analyzer_select_image {row}"))
                self.execute(folder, "row.bat")
                saved.append({file.name: file.read_bytes()
                              for file in (folder / "maps").glob(f"*-of-row-{row}*")})
            names = [name for name in saved[0] if "cBar" not in name]
            self.assertEqual(len(names), 6)
            for name in names:
                other = name.replace("-1.", "-2.")
                self.assertIn(other, saved[1])
                self.assertNotEqual(saved[0][name], saved[1][other], name)

    def saved(self, folder, **variables):
        """What a run of the demonstration saves, by file; it leaves the folder as it was."""
        self.execute(folder, "demo.bat", SOURCE_DATE_EPOCH="1700000000", **variables)
        files = {}
        for file in sorted([*folder.glob("maps/*"), *folder.glob("pictures/*")]):
            files[f"{file.parent.name}/{file.name}"] = file.read_bytes()
            file.unlink()
        return files

    def test_saved_files_do_not_depend_on_what_the_processor_can_do(self):
        # Where the C library has one variant only, there is nothing to tell apart.
        sines = [sys.executable, "-c", "import math; print([math.sin(i / 7) for i in range(9999)])"]
        if run(*sines) == run(*sines, **WITHOUT_FMA):
            self.skipTest("the C library computes alike without fused multiplication")
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.succeed(DEMO, "write", folder, "--size", 100)
            first = self.saved(folder)
            second = self.saved(folder, **WITHOUT_FMA)
            self.assertTrue(any(name.startswith("maps/") for name in first), list(first))
            self.assertEqual(list(first), list(second))
            different = [name for name in first if first[name] != second[name]]
            self.assertEqual(different, [], "these files depend on the processor")

    def test_the_hard_experiment_is_rejected_and_fitted_within_its_limits(self):
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.succeed(DEMO, "write", folder, "--hard", "--size", 60)
            log = self.execute(folder, "demo.bat")
            self.assertEqual(re.findall("Command not available.*", log), [])
            told = re.search("in-keV.dat.*left out", log)
            self.assertTrue(told, "nothing tells that the table in keV is left out")
            self.succeed(DEMO, "compare", folder)


if __name__ == "__main__":
    unittest.main()
