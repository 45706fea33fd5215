"""Plants breaches of the layers in a small source tree and looks whether the check names them."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = sys.argv.pop(1)


class CheckLayers(unittest.TestCase):
    """One source tree with core, widget and conductor files, and one breach at a time."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.src = pathlib.Path(self.folder.name)
        self.write("image/CMakeLists.txt", "target_sources(morvenkite_core PRIVATE A.cpp A.h)")
        self.write("display/CMakeLists.txt",
                   "# not C.cpp\ntarget_sources(morvenkite_widgets\n    PRIVATE B.cpp B.h)")
        self.write("image/A.h", "#include <QImage>\n")
        self.write("image/A.cpp", '#include "image/A.h"\n')
        self.write("display/B.h", "#include <QWidget>\n")
        self.write("display/B.cpp",
                   '#include "display/B.h"\n#include "image/A.h"\n#include "ui_B.h"\n')
        self.write("conduct/CMakeLists.txt",
                   "target_sources(morvenkite_widgets PRIVATE WalkConductorRun.cpp)")
        self.write("conduct/Record.h", '#include "image/A.h"\n')
        self.write("conduct/StackConductor.h", '#include "conduct/Record.h"\n')
        self.write("conduct/WalkConductor.h", '#include "conduct/StackConductor.h"\n')
        self.write("conduct/WalkConductorRun.cpp", '#include "conduct/WalkConductor.h"\n')

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        path = self.src / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def run_check(self):
        return subprocess.run([sys.executable, CHECK, str(self.src)], capture_output=True,
                              text=True, check=False)

    def test_a_clean_tree_passes(self):
        result = self.run_check()
        self.assertEqual((result.returncode, result.stdout), (0, ""))

    def test_each_breach_is_named_with_file_and_line(self):
        cases = {
            "upwards": ("image/A.h", '#pragma once\n#include "display/B.h"\n', 2),
            "widget header": ("image/A.cpp", "\n#include <QLineEdit>\n", 2),
            "widget module": ("image/A.cpp", "#include <QtWidgets/QFrame>\n", 1),
            "form": ("image/A.cpp", '#include "ui_Body.h"\n', 1),
            "not from src": ("display/B.cpp", '\n\n#include "../image/A.h"\n', 3),
            "unlisted": ("display/C.cpp", "", 1),
            "no place": ("extra/D.h", "", 1),
            "form of a header": ("display/B.h", '#include "ui_Body.h"\n', 1),
            "form of two": ("display/C.cpp", '\n#include "ui_B.h"\n', 2, "display/B.cpp:3:"),
            "call downwards": ("conduct/StackConductorFiles.cpp",
                               '\n#include "conduct/WalkConductor.h"\n', 2),
            "helper that calls": ("conduct/Record.h", '#include "conduct/StackConductor.h"\n', 1),
        }
        for case, (name, text, line, *others) in cases.items():
            with self.subTest(case):
                self.tearDown()
                self.setUp()
                self.write(name, text)
                result = self.run_check()
                self.assertEqual(result.returncode, 1)
                for place in [f"{name}:{line}:", *others]:
                    self.assertIn(str(self.src / place), result.stdout)


if __name__ == "__main__":
    unittest.main()
