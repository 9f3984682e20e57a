"""Small installation media and download archives for the flow tests: real bundle packages, made in milliseconds."""
import gzip
import pathlib
import plistlib
import zipfile


def cpio(files):
    """A cpio archive in the portable format: {path: content}."""
    folders = sorted({str(parent) for path in files for parent in pathlib.PurePosixPath(path).parents} - {"."})
    entries = [(f"./{folder}", 0o040755, b"") for folder in folders]
    entries += [(f"./{path}", 0o100644, content) for path, content in files.items()]
    entries.append(("TRAILER!!!", 0, b""))
    return b"".join(cpio_entry(number, *entry) for number, entry in enumerate(entries, 1))


def cpio_entry(number, path, mode, content):
    name = path.encode() + b"\0"
    fields = [(0o070707, 6), (1, 6), (number, 6), (mode, 6), (0, 6), (0, 6), (1, 6), (0, 6), (0, 11), (len(name), 6),
              (len(content), 11)]
    return "".join(f"{value:0{width}o}" for value, width in fields).encode() + name + content


def package_files(name, count):
    """The files of a bundle package whose payload holds `count` files below a folder of the package's own."""
    payload = {f"Library/Quorvel/{name}/file {number}.txt": f"{name} {number}\n".encode() * 100 for number in range(count)}
    information = {"CFBundleIdentifier": f"com.quorvel.{name}", "CFBundleName": name, "CFBundleShortVersionString": "1.0"}
    return {
        "Contents/Archive.pax.gz": gzip.compress(cpio(payload)),
        "Contents/Archive.bom": b"",
        "Contents/Info.plist": plistlib.dumps(information),
    }


def write_package(path, count):
    for name, content in package_files(path.stem, count).items():
        file = path / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content)


def entry(kind, location):
    """One element of a selection file."""
    return {"TYPE": {"text": kind}, "LOCATION": {"text": location}}


# What a run of the media below installs, in the required order: package, kind, number of files.
MEDIA = [
    ("Printer Driver.pkg", "Print Driver", 40),
    ("Hueforge.pkg", "Scan Driver", 30),
    ("Scanwick.pkg", "Scan Driver", 20),
    ("Printer Manager.pkg", "Pressdeck", 10),
    ("Fax.pkg", "PC fax Utility", 5),
    ("Uninstaller.pkg", "Printer Software Uninstaller", 3),
    ("Manual.pkg", "User's Guide", 2),
]
# Carried by the host application, or named by the settings, so not part of the selection.
ADDED = {"Scanwick.pkg", "Uninstaller.pkg", "Manual.pkg"}


def write_media(folder):
    """Media with every kind of package; the selection lists them in another order than the required one."""
    for name, _, count in MEDIA:
        place = "Resources" if name in ("Uninstaller.pkg", "Manual.pkg") else "Packages"
        write_package(folder / place / name, count)
    selection = [entry(kind, f"Packages/{name}") for name, kind, _ in reversed(MEDIA) if name not in ADDED]
    (folder / "SelectedInput.plist").write_bytes(plistlib.dumps(selection))
    (folder / "VantUserSettings.plist").write_bytes(plistlib.dumps({
        "VantWithoutConnection": "no",
        "MODELS": ["RX-100"],
        "PackagesInfo": {"Scan Driver1": {"LOCATION": "Packages/Scanwick.pkg"}},
    }))
    (folder / "MANUAL" / "RX-100").mkdir(parents=True)
    return folder


def write_site(folder, archives):
    """A download site: {archive name: {path inside: content}}, each archive one component of the selection."""
    folder.mkdir(parents=True)
    for name, files in archives.items():
        with zipfile.ZipFile(folder / name, "w", zipfile.ZIP_DEFLATED) as archive:
            for path, content in files.items():
                archive.writestr(path, content)
    selection = [entry(pathlib.PurePath(name).stem, name) for name in archives]
    (folder / "SelectedInput.plist").write_bytes(plistlib.dumps(selection))
    return folder


def inside(folder, files):
    """The files, one folder further down."""
    return {f"{folder}/{path}": content for path, content in files.items()}
