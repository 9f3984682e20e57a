"""The bundle that a Mac would load, looked at without a Mac."""

import plistlib
import re
import struct
import unittest

import bundle

LANGUAGES = ("en", "fr", "de", "it", "es", "pt", "nl", "ko", "zh-Hans", "zh-Hant")
PICTURES = ("Toner.jpg", "Mobile.jpg", "Next_Normal.png", "Next_Disable.png", "Back_Normal.png", "Back_Disable.png",
            "indicator_selected.png", "Indicator_normal.png")

# What a host sends to the pane, with the types as a compiled host has them; "c" stands for BOOL, which is another type
# on each processor.
CONTRACT = {
    "initWithModel:": "@24@0:8@16", "contentView": "@16@0:8", "windowTitle": "@16@0:8", "model": "@16@0:8",
    "isPluginValid": "@16@0:8", "performButton1Action": "@16@0:8", "performButton2Action": "@16@0:8",
    "performButton3Action": "@16@0:8", "needToShowQuitSheet": "c16@0:8", "langParser": "@16@0:8",
    "hostStringForKey:": "@24@0:8@16", "localizedStringForKey:": "@24@0:8@16", "getErrcodeStr": "i16@0:8",
    "setIsButton1Enabled:": "v20@0:8c16", "setIsButton2Enabled:": "v20@0:8c16", "setIsButton3Enabled:": "v20@0:8c16",
    "setIsButton1Hidden:": "v20@0:8c16", "setIsButton2Hidden:": "v20@0:8c16", "setIsButton3Hidden:": "v20@0:8c16",
    "changeImage:": "v24@0:8@16",
}
# Names that notifications, timers, threads and delayed messages carry, which no compiler holds to a method.
SENT_BY_NAME = ("ReNotification:", "receivedownloadNotification:", "receiveunzipNotification:", "receiveNotification1:",
                "installCompoentAtPath:", "installCDComponentAtPath:", "InstallWebComponents:", "InstallCDComponents:",
                "changeImageTrigger", "showBackPaneView")
DOWNLOAD_DELEGATE = ("download:didReceiveResponse:", "download:didReceiveDataOfLength:",
                     "download:didCreateDestination:", "downloadDidFinish:", "download:didFailWithError:")
CLASSES = {"VantInstallation", "VantInstallationLogger", "BDObject", "BDContinuousProgressCell",
           "BDDiscreteProgressCell", "VantButton", "VantComponentTable"}


def declared(pattern):
    """The pattern's first group wherever it matches in the plug-in's implementation files."""
    texts = (path.read_text() for path in bundle.SOURCE.rglob("*.mm"))
    return {found for text in texts for found in re.findall(pattern, text, re.MULTILINE)}


class Bundle(unittest.TestCase):
    def test_has_a_slice_for_either_processor(self):
        self.assertEqual(bundle.slices(), set(bundle.SLICES))

    def test_asks_for_the_oldest_system_that_it_runs_on(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.minimum_version(architecture), bundle.SLICES[architecture])

    def test_is_a_bundle_that_takes_each_symbol_from_the_library_that_has_it(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                header = bundle.told("objdump", "--macho", "--private-header", f"--arch={architecture}")
                self.assertIn("BUNDLE", header)
                self.assertIn("TWOLEVEL", header)
                self.assertIn("NOUNDEFS", header)

    def test_loads_the_libraries_of_the_platform_and_no_other(self):
        frameworks = {f"/System/Library/Frameworks/{name}.framework/Versions/A/{name}"
                      for name in ("AppKit", "Cocoa", "CoreFoundation", "Foundation", "Security")}
        system = {f"/usr/lib/{name}.dylib" for name in ("libSystem.B", "libc++.1", "libobjc.A")}
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.libraries(architecture), frameworks | system)

    def test_imports_what_has_been_looked_up_and_nothing_else(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                imports = bundle.imports(architecture)
                self.assertGreater(len(imports), 50)
                strange = sorted(f"{symbol} from {library}" for symbol, library in imports
                                 if symbol not in bundle.offered(library))
                self.assertEqual(strange, [], "look them up, and list them in cmake/macos/symbols")

    def test_exports_its_principal_class_and_nothing_else(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.exports(architecture),
                                 {"_OBJC_CLASS_$_VantInstallation", "_OBJC_METACLASS_$_VantInstallation"})

    def test_has_every_class_that_the_sources_implement(self):
        implemented = declared(r"^@implementation (\w+)\s*$")
        self.assertGreaterEqual(implemented, CLASSES)
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.methods(architecture).classes, implemented)

    def test_has_every_category_that_the_sources_implement(self):
        implemented = {f"{name}({category})" for name, category in declared(r"^@implementation (\w+) \((\w+)\)")}
        self.assertGreaterEqual(len(implemented), 15)
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                self.assertEqual(bundle.methods(architecture).categories, implemented)

    def test_answers_what_a_host_sends(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                boolean = "B" if architecture == "arm64" else "c"
                types = bundle.methods(architecture).types
                answered = {selector: types.get(("-", "VantInstallation", selector)) for selector in CONTRACT}
                self.assertEqual(answered, {selector: expected.replace("c", boolean)
                                            for selector, expected in CONTRACT.items()})

    def test_answers_what_is_sent_to_it_by_name(self):
        for architecture in bundle.SLICES:
            with self.subTest(architecture):
                types = bundle.methods(architecture).types
                sent = [("-", "VantInstallation", selector) for selector in SENT_BY_NAME + DOWNLOAD_DELEGATE]
                sent += [("-", "BDObject", selector) for selector in DOWNLOAD_DELEGATE]
                self.assertEqual([message for message in sent if message not in types], [])

    def test_tells_the_system_what_it_is(self):
        with open(bundle.CONTENTS / "Info.plist", "rb") as file:
            info = plistlib.load(file)
        expected = {"CFBundleExecutable": "VantInstallation", "CFBundlePackageType": "BNDL",
                    "NSPrincipalClass": "VantInstallation", "LSMinimumSystemVersion": bundle.SLICES["x86_64"],
                    "CFBundleIdentifier": "com.quorvel.vantinstallation"}
        self.assertEqual({key: info.get(key) for key in expected}, expected)
        self.assertRegex(info["CFBundleShortVersionString"], r"^\d+\.\d+\.\d+$")
        self.assertNotIn("${", str(info))

    def test_has_a_table_for_each_language(self):
        tables = {path.parent.name for path in bundle.CONTENTS.glob("Resources/*.lproj/Localizable-Inst.strings")}
        self.assertEqual(tables, {f"{language}.lproj" for language in LANGUAGES})

    def test_has_each_picture_for_either_screen(self):
        for picture in PICTURES:
            name, ending = picture.split(".")
            double = bundle.CONTENTS / "Resources" / f"{name}@2x.{ending}"
            plain = bundle.CONTENTS / "Resources" / picture
            self.assertTrue(plain.is_file(), plain.name)
            self.assertTrue(double.is_file(), double.name)
            if ending == "png":
                self.assertEqual(pixels(double), tuple(2 * side for side in pixels(plain)))

    def test_has_the_nib(self):
        # Debian has no compiler for it, so its source lies in its place.
        self.assertTrue((bundle.CONTENTS / "Resources/VTInstallation.xib").is_file())

    def test_is_signed_for_the_processor_that_loads_nothing_unsigned(self):
        self.assertIn("LC_CODE_SIGNATURE", bundle.load_commands("arm64"))


def pixels(path):
    return struct.unpack(">II", path.read_bytes()[16:24])
