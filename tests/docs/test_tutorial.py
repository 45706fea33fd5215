"""Runs the batches of the tutorial as it tells: each is found in order, ends well, and writes what it says.

usage: test_tutorial.py <morvenkite> <morvenkite-demo> <batch-tutorial.md>
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

TUTORIAL = pathlib.Path(sys.argv.pop())
DEMO = sys.argv.pop()
PROGRAM = sys.argv.pop()


class Tutorial(unittest.TestCase):
    """Over the demonstration experiment, small."""

    def test_its_batches_are_in_order_and_run(self):
        batches = re.findall(r"```batch\n(.*?)```", TUTORIAL.read_text(), re.S)
        self.assertEqual(len(batches), 3)
        with tempfile.TemporaryDirectory() as parent:
            folder = pathlib.Path(parent)
            self.run_well(DEMO, "write", folder, "--size", "60", "--noise", "off")
            for number, text in enumerate(batches):
                batch = folder / f"{number}.bat"
                batch.write_text(text)
                config = ("-c", folder / "config.cfg")
                told = self.run_well(PROGRAM, *config, "--check", batch)
                self.assertRegex(told, r"^0 findings; \d+ images to load", told)
                self.run_well(PROGRAM, "-e", *config, "-b", batch, "-x")
            maps = {path.name for path in (folder / "maps").iterdir()}
            self.assertLessEqual({"first-0.dat", "tutorial-shift.emp", "why.txt"}, maps)
            # A loop that did not replace its text would have written one name three times.
            self.assertEqual(len({name[:6] for name in maps if name.startswith("half-")}), 3)
            pictures = {path.name for path in (folder / "pictures").iterdir()}
            self.assertLessEqual({f"share-{row}.png" for row in range(3)}, pictures)

    def run_well(self, *arguments):
        """What a program prints, which must end without a failure."""
        result = subprocess.run(list(map(str, arguments)), timeout=300, text=True, check=False,
                                env=dict(os.environ, QT_QPA_PLATFORM="offscreen"),
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.assertEqual(result.returncode, 0, result.stdout[-4000:])
        return result.stdout


if __name__ == "__main__":
    unittest.main()
