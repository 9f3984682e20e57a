"""The reference host that a Mac would run, looked at without a Mac."""

import plistlib
import unittest

import bundle


class Host(unittest.TestCase):
    def test_has_a_slice_for_either_processor(self):
        self.assertEqual(bundle.slices(bundle.HOST), set(bundle.PROGRAM_SLICES))

    def test_asks_for_the_oldest_system_that_it_runs_on(self):
        for architecture, version in bundle.PROGRAM_SLICES.items():
            with self.subTest(architecture):
                self.assertEqual(bundle.minimum_version(architecture, bundle.HOST), version)

    def test_loads_the_libraries_of_the_platform_and_no_other(self):
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                strange = [path for path in bundle.libraries(architecture, bundle.HOST)
                           if not path.startswith(("/System/Library/Frameworks/", "/usr/lib/"))]
                self.assertEqual(strange, [])

    def test_imports_what_has_been_looked_up_and_nothing_else(self):
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                imports = bundle.imports(architecture, bundle.HOST)
                self.assertGreater(len(imports), 50)
                strange = sorted(f"{symbol} from {library}" for symbol, library in imports
                                 if symbol not in bundle.offered(library, "host"))
                self.assertEqual(strange, [], "look them up, and list them in cmake/macos/symbols")

    def test_takes_nothing_of_the_pane_but_its_principal_class(self):
        # It finds the class through the bundle, so that a pane of another build can be tried too.
        for architecture in bundle.PROGRAM_SLICES:
            with self.subTest(architecture):
                names = {symbol for symbol, _ in bundle.imports(architecture, bundle.HOST)}
                self.assertNotIn("_OBJC_CLASS_$_VantInstallation", names)

    def test_tells_the_system_what_it_is_and_what_the_pane_needs(self):
        with open(bundle.HOST_CONTENTS / "Info.plist", "rb") as file:
            info = plistlib.load(file)
        expected = {"CFBundleExecutable": "VantHost", "CFBundlePackageType": "APPL", "NSPrincipalClass": "NSApplication",
                    "LSMinimumSystemVersion": bundle.PROGRAM_SLICES["x86_64"]}
        self.assertEqual({key: info.get(key) for key in expected}, expected)
        self.assertTrue(info["NSAppTransportSecurity"]["NSAllowsArbitraryLoads"])
        self.assertTrue(info["NSDesktopFolderUsageDescription"])
        self.assertTrue(info["NSRemovableVolumesUsageDescription"])
        self.assertNotIn("${", str(info))

    def test_has_every_table_of_every_language(self):
        source = bundle.PROJECT / "Installer/Host/resources"
        tables = {path.relative_to(source) for path in source.glob("*.lproj/*.strings")}
        self.assertGreaterEqual(len(tables), 20)
        copied = {path.relative_to(bundle.HOST_CONTENTS / "Resources")
                  for path in bundle.HOST_CONTENTS.glob("Resources/*.lproj/*.strings")}
        self.assertEqual(copied, tables)
