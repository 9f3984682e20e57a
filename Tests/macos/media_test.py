"""vantmedia as a Mac would run it, looked at without a Mac."""

import subprocess
import tempfile
import unittest

import bundle

# Where a Mac has the libraries that its SDK lacks; the stand-ins for them say so.
PACKAGES = {f"/opt/local/lib/{name}.dylib"
            for name in ("libarchive.13", "liblzma.5", "libplist-2.0.4", "libduktape.207")}
PLATFORM = {f"/System/Library/Frameworks/{name}.framework/Versions/A/{name}" for name in ("CoreFoundation", "Foundation")}
PLATFORM |= {f"/usr/lib/{name}.dylib"
             for name in ("libSystem.B", "libc++.1", "libobjc.A", "libcurl.4", "libexpat.1", "libz.1")}


def targets(build):
    """The names of all that a build folder can build."""
    listed = subprocess.run(["ninja", "-C", build, "-t", "targets", "all"], check=True, text=True, capture_output=True)
    return {line.split(":")[0] for line in listed.stdout.splitlines() if ": phony" in line}


class Media(unittest.TestCase):
    def test_has_a_slice_for_either_processor(self):
        self.assertEqual(bundle.slices(bundle.MEDIA), set(bundle.PROGRAM_SLICES))

    def test_asks_for_the_oldest_system_that_it_runs_on(self):
        for architecture, version in bundle.PROGRAM_SLICES.items():
            with self.subTest(architecture):
                self.assertEqual(bundle.minimum_version(architecture, bundle.MEDIA), version)

    def test_loads_what_it_reads_packages_with_and_of_the_platform_no_more_than_it_needs(self):
        # No AppKit, so it runs where nobody is logged in; nothing of Debian, GNUstep least of all.
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.libraries(architecture, bundle.MEDIA), PLATFORM | PACKAGES)

    def test_imports_what_has_been_looked_up_and_nothing_else(self):
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                imports = bundle.imports(architecture, bundle.MEDIA)
                self.assertGreater(len(imports), 150)
                strange = sorted(f"{symbol} from {library}" for symbol, library in imports
                                 if symbol not in bundle.offered(library, "host", "media"))
                self.assertEqual(strange, [], "look them up, and list them in cmake/macos/symbols")

    def test_takes_all_that_is_listed_for_it_alone(self):
        taken = {symbol for architecture in bundle.PROGRAM_SLICES
                 for symbol, _ in bundle.imports(architecture, bundle.MEDIA)}
        lists = ("libSystem.media", "libc++.media", "libarchive", "libcurl", "libduktape", "libexpat", "liblzma",
                 "libplist-2.0", "libz")
        for name in lists:
            with self.subTest(name):
                self.assertEqual(sorted(bundle.listed(name) - taken), [])

    def test_watches_over_its_workers_and_its_downloads_by_the_platforms_own_queue(self):
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                names = {symbol for symbol, _ in bundle.imports(architecture, bundle.MEDIA)}
                self.assertLessEqual({"_kqueue", "_kevent", "_proc_pid_rusage"}, names)

    def test_is_left_out_with_a_word_about_it_where_a_library_is_missing(self):
        with tempfile.TemporaryDirectory() as folder:
            command = ["cmake", "--preset", "macos-cross", "-B", folder, "-DCMAKE_DISABLE_FIND_PACKAGE_EXPAT=ON"]
            said = subprocess.run(command, cwd=bundle.PROJECT, check=True, text=True, capture_output=True).stdout
            self.assertIn("vantmedia is left out, since this Mac lacks EXPAT\n", said)
            self.assertEqual(targets(folder) & {"vantmedia", "VantMedia", "VantHost", "VantInstallation"},
                             {"VantHost", "VantInstallation"})

    def test_is_signed_for_the_processor_that_runs_nothing_unsigned(self):
        self.assertIn("LC_CODE_SIGNATURE", bundle.load_commands("arm64", bundle.MEDIA))
