"""Checking media with many packages against sha256sum of the same files, and planning the same media against the time
that a plan may take."""
import os
import plistlib
import random
import resource

from . import bench as tools
from .figures import Figure

PACKAGES = 1000
BYTES = 5_000_000
# So many differ; the others are further names of the same files, and are read as often.
CONTENTS = 8
ROUNDS = 3
PLAN_MAY_TAKE = 0.1  # seconds
ARCHIVE = 'cd "$1" && find . | cpio -o --quiet -H odc | gzip -6 >../Payload'
PACKAGE = 'cd "$1" && bsdtar -c -f "$2" --format xar --options "xar:compression=none" PackageInfo Payload'
INFORMATION = '<pkg-info identifier="example.{0}" install-location="/Library/{0}"><payload numberOfFiles="9"/></pkg-info>'


def measure(bench):
    media = bench.folder_in_memory() / "media"
    fill(media, bench.folder_in_memory())
    files = sorted((media / "Packages").iterdir())
    program = bench.build / "vantmedia"
    checks, plans, cpu = [], [], [0.0, 0.0]
    for _ in range(ROUNDS):
        start = cpu_seconds()
        check = tools.seconds(program, "check", media)
        between = cpu_seconds()
        checks.append((check, tools.seconds("sha256sum", *files)))
        cpu = [cpu[0] + between - start, cpu[1] + cpu_seconds() - between]
        plans.append((tools.seconds(program, "plan", media), PLAN_MAY_TAKE))
    yield Figure("media", f"checking {PACKAGES:,} packages of {BYTES / 1e6:.0f} MB", "sha256sum", checks,
                 notes={"CPU ratio": cpu[0] / cpu[1]})
    yield Figure("media", "the plan of the same media", "what it may take", plans)


def cpu_seconds():
    """What all children so far have used."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def fill(media, work):
    (media / "Packages").mkdir(parents=True)
    (media / "Resources").mkdir()
    for number in range(CONTENTS):
        make_package(work / str(number), media / "Packages" / f"{number}.pkg")
    for number in range(CONTENTS, PACKAGES):
        os.link(media / "Packages" / f"{number % CONTENTS}.pkg", media / "Packages" / f"{number}.pkg")
    os.link(media / "Packages" / "0.pkg", media / "Resources" / "Uninstaller.pkg")
    entries = [{"TYPE": {"text": "Print Driver"}, "LOCATION": {"text": f"Packages/{number}.pkg"}}
               for number in range(PACKAGES)]
    (media / "SelectedInput.plist").write_bytes(plistlib.dumps(entries))
    (media / "VantUserSettings.plist").write_bytes(plistlib.dumps({"Debug": "debug_off"}))


def make_package(folder, path):
    """A flat package whose files are two thirds noise, one third text."""
    random.seed(folder.name)
    tree = folder / "tree"
    tree.mkdir(parents=True)
    for number in range(8):
        (tree / f"File {number}").write_bytes(random.randbytes(BYTES // 8) + b"option = default\n" * (BYTES // 8 // 34))
    tools.shell(ARCHIVE, tree)
    (folder / "PackageInfo").write_text(INFORMATION.format(folder.name))
    tools.shell(PACKAGE, folder, path)
