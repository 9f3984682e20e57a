"""The archives of a release, as cmake --build --target package leaves them."""
import re
import tarfile

from release_case import BUILD, SOURCE, VERSION, ReleaseCase, output, programs

ARCHIVE = f"vant-installation-{VERSION}-debian-x86_64.tar.xz"
DEB = f"vantmedia_{VERSION}_amd64.deb"


class Archive(ReleaseCase):

    def unpack(self):
        with tarfile.open(BUILD / ARCHIVE) as archive:
            archive.extractall(self.folder)
        return self.folder / ARCHIVE.removesuffix(".tar.xz")

    def unpack_deb(self):
        output("dpkg-deb", "--extract", BUILD / DEB, self.folder / "deb")
        return self.folder / "deb"

    def test_a_host_runs_from_it_alone(self):
        prefix = self.unpack()
        self.assert_stands_alone(prefix)
        app = self.stage_host(prefix / "share" / "vant-installation" / "SampleHost.app", self.write_media())
        self.run_host(app, prefix)
        self.assert_media_installed()

    def test_has_a_checksum_beside_each(self):
        for name in (ARCHIVE, DEB):
            self.assertIn(f"{name}: OK", output("sha256sum", "--check", f"{name}.sha256", cwd=BUILD))

    def test_names_no_folder_of_the_building_machine(self):
        """Debug information is stripped, and messages name files below the sources. What is left are the names that the
        compiler gives to Objective-C modules: the folder, and the file with its folder once more."""
        for path in [*programs(self.unpack()), *programs(self.unpack_deb())]:
            named = {text for text in output("strings", path).splitlines() if str(SOURCE) in text}
            modules = {text for text in named if re.fullmatch(rf"{re.escape(str(SOURCE))}/.*/{re.escape(str(SOURCE))}/.*\.mm", text)}
            self.assertEqual(named - modules, set(), path)

    def test_the_debian_package_says_what_it_needs(self):
        needed = output("dpkg-deb", "--field", BUILD / DEB, "Depends")
        for library in ("libarchive13", "libgnustep-base1.28", "libc6"):
            self.assertIn(library, needed)
        self.assertEqual(output("dpkg-deb", "--field", BUILD / DEB, "Package", "Version", "Architecture"),
                         f"Package: vantmedia\nVersion: {VERSION}\nArchitecture: amd64\n")

    def test_the_debian_package_brings_the_program_and_its_manual(self):
        root = self.unpack_deb()
        self.assertEqual(output(root / "usr" / "bin" / "vantmedia", "--version"), f"vantmedia {VERSION}\n")
        plan = output(root / "usr" / "bin" / "vantmedia", "plan", self.write_media(), "--language", "GR")
        self.assertIn("Druckertreiber: Installation...", plan)
        self.assertTrue((root / "usr" / "share" / "man" / "man1" / "vantmedia.1.gz").exists())
        self.assertEqual((root / "usr" / "share" / "doc" / "vantmedia" / "copyright").read_text(),
                         (SOURCE / "LICENSE").read_text())
