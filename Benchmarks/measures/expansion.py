"""Expanding archives of 5,000 files with ditto, against bsdtar."""
import random
import shutil

from . import bench as tools
from .figures import Figure

FILES = 5000
ROUNDS = 7
ARCHIVES = 'cd "$1" && zip -qr ../files.zip . && find . | cpio -o --quiet -H odc | gzip -1 >../files.cpio.gz'


def measure(bench):
    work = bench.folder_in_memory()
    fill(work / "source")
    tools.shell(ARCHIVES, work / "source")
    for kind, option in [("zip", "-xk"), ("cpio.gz", "-x")]:
        archive = work / f"files.{kind}"
        runs = [one_round(bench.build / "tools/ditto", option, archive, work / "out") for _ in range(ROUNDS)]
        yield Figure("expansion", f"{FILES:,} files, {kind}", "bsdtar", runs)


def fill(top):
    random.seed(5)
    for number in range(FILES):
        folder = top / f"Folder {number // 50}"
        folder.mkdir(parents=True, exist_ok=True)
        half = random.randbytes(random.randrange(0, 16_000))
        (folder / f"File {number}.dat").write_bytes(half + b"option = default\n" * (len(half) // 17))


def one_round(ditto, option, archive, out):
    """Both into an empty folder; ours has to leave all files."""
    empty(out)
    ours = tools.seconds(ditto, option, archive, out / "new")
    found = sum(1 for path in (out / "new").rglob("*") if path.is_file())
    if found != FILES:
        raise SystemExit(f"run: ditto left {found} of {FILES} files of {archive.name}")
    empty(out)
    return ours, tools.seconds("bsdtar", "-x", "-f", archive, "-C", out)


def empty(folder):
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
