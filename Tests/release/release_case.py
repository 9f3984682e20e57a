"""What the tests of a release share: one installed below a folder of its own, and hosts that run from it alone."""
import os
import pathlib
import pwd
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "Tests" / "flows"))

import small_media  # noqa: E402

BUILD = pathlib.Path(os.environ.get("VANT_BUILD", SOURCE / "build" / "debug"))
LONGEST = 60  # seconds; no run takes nearly as long


def cached(name):
    """A value of the build's configuration."""
    return re.search(rf"^{name}:\w+=(.*)$", (BUILD / "CMakeCache.txt").read_text(), re.MULTILINE)[1]


VERSION = cached("CMAKE_PROJECT_VERSION")


def output(*command, **options):
    return subprocess.run([str(word) for word in command], check=True, capture_output=True, text=True, timeout=LONGEST,
                          stdin=subprocess.DEVNULL, **options).stdout


def programs(folder):
    """What the linker has made, below a folder."""
    for path in sorted(folder.rglob("*")):
        if path.is_file() and not path.is_symlink():
            with path.open("rb") as file:
                if file.read(4) == b"\x7fELF":
                    yield path


class ReleaseCase(unittest.TestCase):
    """A test gets an empty folder, which goes at its end."""

    maxDiff = None

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="vant release "))
        self.addCleanup(shutil.rmtree, self.folder)

    def install(self):
        """The prefix of a release that has been installed from the build."""
        prefix = self.folder / "vant"
        output("cmake", "--install", BUILD, "--prefix", prefix, "--strip")
        return prefix

    def write_media(self):
        return small_media.write_media(self.folder / "media")

    def stage_host(self, app, media):
        """Copies the application with what it links to onto the media, with the packages that a host carries."""
        staged = media / app.name
        shutil.copytree(app, staged)
        for package in (media / "Resources").iterdir():
            (staged / "Resources" / package.name).symlink_to(package)
        return staged

    def environment(self, prefix):
        """An environment that holds nothing of this machine's but its programs and the display."""
        home, temporary, volume = (self.folder / name for name in ("home", "tmp", "volume"))
        for path in (home / "Library" / "Logs", temporary, volume):
            path.mkdir(parents=True, exist_ok=True)
        temporary.chmod(0o700)
        user = pwd.getpwuid(os.getuid())
        (self.folder / "passwd").write_text(f"{user.pw_name}:x:{user.pw_uid}:{user.pw_gid}::{home}:/bin/sh\n")
        (self.folder / "group").write_text(f"{user.pw_name}:x:{user.pw_gid}:\n")
        return {"PATH": "/usr/bin:/bin", "HOME": str(home), "LANG": "C.UTF-8", "TEMP": str(temporary),
                "DISPLAY": os.environ["DISPLAY"],
                # The platform asks the password database for the home folder.
                "LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": str(self.folder / "passwd"),
                "NSS_WRAPPER_GROUP": str(self.folder / "group"),
                "VANT_AUTHORIZATION": "grant", "VANT_INSTALL_ROOT": str(volume),
                "VANT_SYSTEM_ROOT": str(prefix / "lib" / "vant-installation" / "system")}

    def run_host(self, app, prefix):
        ended = subprocess.run([app / "SampleHost"], env=self.environment(prefix), cwd=self.folder / "tmp", check=False,
                               capture_output=True, text=True, timeout=LONGEST, stdin=subprocess.DEVNULL)
        self.assertEqual(ended.returncode, 0, ended.stderr)

    def assert_media_installed(self):
        """Every file of every package of the media lies on the volume."""
        library = self.folder / "volume" / "Library" / "Quorvel"
        held = {path.name: sum(1 for _ in path.iterdir()) for path in library.iterdir()}
        self.assertEqual(held, {pathlib.PurePath(name).stem: count for name, _, count in small_media.MEDIA})

    def assert_stands_alone(self, prefix):
        """Its programs take every library from the system, wherever they lie."""
        found = list(programs(prefix))
        self.assertGreaterEqual(len(found), 5)
        for path in found:
            self.assertNotRegex(output("readelf", "--dynamic", path), "RPATH|RUNPATH", path)
            self.assertNotIn("not found", output("ldd", path), path)
