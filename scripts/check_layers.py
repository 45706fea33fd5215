#!/usr/bin/env python3
"""Holds the includes of src/ against the order of its folders and of its conductors.

A folder includes only itself and what stands above it, and the files of the core library include
no header of Qt Widgets. The header made from a form belongs to one source file. In conduct/ a
class includes only conductors that stand above it. Every source belongs to a target. Prints each
breach as file:line and ends with code 1 when there is one.
"""
import pathlib
import re
import sys

# In the order of dependence.
FOLDERS = ["common", "spectrum", "image", "maps", "walk", "display", "batch", "selection",
           "calibration", "analysis", "registration", "output", "conduct", "app"]

# The classes of conduct/, in the order of dependence: each calls only those above it.
CONDUCTORS = ["SourceReader", "StackConductor", "DarkConductor", "ViewConductor",
              "CursorConductor", "FolderConductor", "WalkConductor", "CalibConductor",
              "AnalysisConductor", "ArithmeticConductor", "DiagnosticsConductor", "ExplainConductor", "SaveConductor", "ExportConductor", "RegistrationConductor", "BatchConductor"]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
TARGET_SOURCES = re.compile(r"(?:target_sources|morvenkite_lane_sources)\s*\(\s*(\w+)\s+([^)]*)\)")
COMMENT = re.compile(r"#[^\n]*")

# Headers of the Qt Widgets library that do not begin with QtWidgets or have Widget in their name.
WIDGET_HEADERS = {
    "QAbstractButton", "QAbstractItemView", "QAbstractScrollArea", "QAction", "QApplication",
    "QBoxLayout", "QButtonGroup", "QCheckBox", "QComboBox", "QDialog", "QDialogButtonBox", "QDockWidget",
    "QFileDialog", "QFormLayout", "QFrame", "QGridLayout", "QGroupBox", "QHBoxLayout", "QLabel",
    "QLayout", "QLineEdit", "QListView", "QMainWindow", "QMenu", "QMenuBar", "QMessageBox",
    "QPlainTextEdit", "QProgressBar", "QPushButton", "QRadioButton", "QScrollArea", "QScrollBar",
    "QShortcut", "QSlider", "QSpinBox", "QSplitter", "QStatusBar", "QStyle", "QStyleFactory",
    "QTableView", "QTextEdit", "QToolBar", "QToolBox", "QToolButton", "QToolTip", "QTreeView",
    "QVBoxLayout"}


def is_widget_header(name):
    """Whether an included name belongs to Qt Widgets, or is made from a form."""
    base = name.split("/")[-1]
    return ("QtWidgets" in name or base in WIDGET_HEADERS or base.startswith("ui_")
            or (base.startswith("Q") and base.endswith("Widget")))


def includes(path):
    """Line number, bracket or quote, and name of each include of a file."""
    text = path.read_text(encoding="utf-8")
    for number, line in enumerate(text.splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match[1], match[2]


def sources(folder):
    """The C++ files below a folder."""
    return sorted([*folder.rglob("*.h"), *folder.rglob("*.cpp")])


def targets(src):
    """The files of each target, as the lists of the folders' CMake files tell."""
    files = {}
    for listing in src.rglob("CMakeLists.txt"):
        text = COMMENT.sub("", listing.read_text(encoding="utf-8"))
        for target, names in TARGET_SOURCES.findall(text):
            for name in re.split(r"\s+", names):
                path = listing.parent / name
                if path.suffix in (".cpp", ".h"):
                    files.setdefault(target, set()).add(path)
    return files


def order_breaches(src):
    """Includes of a folder that stands below the including file's own."""
    for path in sources(src):
        own = path.relative_to(src).parts[0]
        if own not in FOLDERS:
            yield f"{path}:1: the folder {own} has no place in the order of folders"
            continue
        for number, mark, name in includes(path):
            folder = name.split("/")[0]
            if mark != '"' or "/" not in name:
                continue
            if folder not in FOLDERS:
                yield f"{path}:{number}: {name} is not written from src/"
            elif FOLDERS.index(folder) > FOLDERS.index(own):
                yield f"{path}:{number}: {own} includes {name}, which stands below it"


def form_breaches(src):
    """Headers made from a form that a header includes, or more than one source."""
    places = {}
    for path in sources(src):
        for number, _, name in includes(path):
            form = name.split("/")[-1]
            if form.startswith("ui_"):
                places.setdefault(form, []).append((path, number))
    for form, users in places.items():
        for path, number in users:
            if path.suffix == ".h":
                yield f"{path}:{number}: a header includes {form}"
            elif len(users) > 1:
                yield f"{path}:{number}: {form} is included by {len(users)} files"


def conductor(name):
    """The class that a file of conduct/ belongs to, or None for a helper."""
    return max((c for c in CONDUCTORS if name.startswith(c)), key=len, default=None)


def conductor_breaches(src):
    """Includes of a conductor that stands below the file's own, and all those by a helper."""
    for path in sources(src / "conduct"):
        own = conductor(path.name)
        for number, _, name in includes(path):
            other = conductor(name.split("/")[-1])
            if other is None:
                continue
            if own is None:
                yield f"{path}:{number}: a helper of the conductors includes {name}"
            elif CONDUCTORS.index(other) > CONDUCTORS.index(own):
                yield f"{path}:{number}: {own} includes {name}, which stands below it"


def core_breaches(src, files):
    """Widget headers, and headers of the widget library, in files of the core library."""
    core = files.get("morvenkite_core", set())
    widgets = files.get("morvenkite_widgets", set())
    for path in sorted(core):
        if not path.exists():
            yield f"{path}:1: is listed and does not exist"
            continue
        for number, mark, name in includes(path):
            if is_widget_header(name):
                yield f"{path}:{number}: the core includes the widget header {name}"
            elif mark == '"' and (src / name) in widgets:
                yield f"{path}:{number}: the core includes {name} of the widget library"


def unlisted(src, files):
    """Sources that no target builds: nothing would check them."""
    listed = set().union(*files.values()) if files else set()
    for path in sorted(src.rglob("*.cpp")):
        if path not in listed and path != src / "app" / "main.cpp":
            yield f"{path}:1: no target lists it"


def main():
    """Checks the src folder given, by default that of this repository."""
    src = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else (
        pathlib.Path(__file__).resolve().parent.parent / "src")
    if not src.is_dir():
        print(f"check_layers.py: no folder {src}", file=sys.stderr)
        return 2
    files = targets(src)
    breaches = [*order_breaches(src), *form_breaches(src), *conductor_breaches(src),
                *core_breaches(src, files), *unlisted(src, files)]
    for breach in breaches:
        print(breach)
    return 1 if breaches else 0


if __name__ == "__main__":
    sys.exit(main())
