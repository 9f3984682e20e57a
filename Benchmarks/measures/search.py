"""Searching an expanded folder for packages, against find walking it."""
from . import bench as tools
from .figures import Figure

ITEMS = 100_000
FILES_A_FOLDER = 48
ROUNDS = 6
PACKAGES = ["Printer Driver.pkg", "Printer Manager.pkg", "Hueforge.pkg", "Fax.pkg"]
NAMES = ["Papers", "Größen", "Colour Tables", "Page Sizes"]
KINDS = [".txt", ".plist", ".tiff", ".icc", ".nib", ".ppd", ".gz", ".html", ".dat", ""]


def measure(bench):
    source = bench.folder()
    fill(source)
    runs = []
    for _ in range(ROUNDS):
        bench.fresh()
        pane = bench.measured("search", source)
        runs.append((pane["seconds"], tools.seconds("find", source)))
    yield Figure("search", f"{ITEMS:,} items", "find", runs, notes={"packages": pane["packages"]})


def fill(top):
    """Nested folders, some files without an extension, four packages that are bundles of many files."""
    left, number = ITEMS, 0
    while left > 0:
        left -= make_folder(place(top, number))
        for file in range(min(FILES_A_FOLDER, left)):
            (place(top, number) / f"Farbprofil {file}{KINDS[file % len(KINDS)]}").touch()
            left -= 1
        number += 1


def place(top, number):
    """Every other four folders lie inside packages."""
    inside = PACKAGES[number % 8] + "/Contents/Resources" if number % 8 < 4 else f"Quorvel Suite/Disk {number % 50}"
    return top / inside / f"{NAMES[number // 8 % 4]} {number % 200}" / f"Part {number}"


def make_folder(path):
    """Makes a folder with those above it; how many that were."""
    if path.is_dir():
        return 0
    made = make_folder(path.parent)
    path.mkdir()
    return made + 1
