"""Checking media with many packages against sha256sum of the same files, from the disk and from memory, and planning the
same media against the time that a plan may take."""
import concurrent.futures
import os
import plistlib
import random
import shutil

from . import bench as tools
from .figures import Figure

PACKAGES = 1000
BYTES = 5_000_000
ROUNDS = 3
PLAN_MAY_TAKE = 0.1  # seconds
# Quickly compressed: two thirds of it are noise, which no level makes smaller.
ARCHIVE = 'cd "$1" && find . | cpio -o --quiet -H odc | gzip -1 >../Payload'
PACKAGE = 'cd "$1" && bsdtar -c -f "$2" --format xar --options "xar:compression=none" PackageInfo Payload'
INFORMATION = '<pkg-info identifier="example.{0}" install-location="/Library/{0}"><payload numberOfFiles="9"/></pkg-info>'


def measure(bench):
    folder = bench.folder(os.environ.get("VANT_BENCH_TMP"))
    media = folder / "media"
    fill(media, folder / "work")
    files = sorted((media / "Packages").iterdir())
    program = bench.build / "vantmedia"
    for place, prepared in [("on the disk", drop), ("in memory", warm)]:
        yield check(program, media, files, place, prepared)
    yield plan(program, media, files)


def check(program, media, files, place, prepared):
    """Each round prepares the files for one program and then for the other."""
    times, cpu = [], []
    for _ in range(ROUNDS):
        prepared(files)
        ours = tools.spent(program, "check", media)
        prepared(files)
        theirs = tools.spent("sha256sum", *files)
        times.append((ours.seconds, theirs.seconds))
        cpu.append((ours.cpu, theirs.cpu))
    return Figure("media", f"checking {len(files):,} packages of {BYTES / 1e6:.0f} MB {place}", "sha256sum", times,
                  notes={"CPU ratio, least": min(a / b for a, b in cpu), "most": max(a / b for a, b in cpu),
                         "s of CPU": min(a for a, _ in cpu), "theirs": min(b for _, b in cpu)})


def plan(program, media, files):
    drop(files)
    times = [tools.spent(program, "plan", media) for _ in range(2 * ROUNDS)]
    return Figure("media", "the plan of the same media", "what it may take",
                  [(one.seconds, PLAN_MAY_TAKE) for one in times], notes={"s of CPU": min(one.cpu for one in times)})


def drop(files):
    """Out of the page cache, so that they are read from the disk."""
    os.sync()
    for path in files:
        with path.open("rb") as file:
            os.posix_fadvise(file.fileno(), 0, 0, os.POSIX_FADV_DONTNEED)


def warm(files):
    """Into the page cache."""
    for path in files:
        path.read_bytes()


def fill(media, work):
    (media / "Packages").mkdir(parents=True)
    (media / "Resources").mkdir()
    paths = [media / "Packages" / f"{number}.pkg" for number in range(PACKAGES)] + [media / "Resources" / "Uninstaller.pkg"]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as makers:
        list(makers.map(lambda path: make_package(work / path.stem, path), paths))
    entries = [{"TYPE": {"text": "Print Driver"}, "LOCATION": {"text": f"Packages/{number}.pkg"}}
               for number in range(PACKAGES)]
    (media / "SelectedInput.plist").write_bytes(plistlib.dumps(entries))
    (media / "VantUserSettings.plist").write_bytes(plistlib.dumps({"Debug": "debug_off"}))


def make_package(folder, path):
    """A flat package whose files are two thirds noise, one third text; no two packages hold the same."""
    noise = random.Random(folder.name)
    tree = folder / "tree"
    tree.mkdir(parents=True)
    for number in range(8):
        (tree / f"File {number}").write_bytes(noise.randbytes(BYTES // 8) + b"option = default\n" * (BYTES // 8 // 34))
    tools.shell(ARCHIVE, tree)
    (folder / "PackageInfo").write_text(INFORMATION.format(folder.name))
    tools.shell(PACKAGE, folder, path)
    shutil.rmtree(folder)
