"""Wrong changes to the plug-in, each of which the macOS build must refuse, and for the reason that it is wrong."""

import json
import subprocess
import tempfile
import unittest
from pathlib import Path

import bundle

FRAME = """#import <Cocoa/Cocoa.h>
#import <Security/Authorization.h>
#include <unistd.h>
void change(NSString *text, NSMutableArray *list, NSProgressIndicator *bar, AuthorizationRef rights);
void change(NSString *text, NSMutableArray *list, NSProgressIndicator *bar, AuthorizationRef rights) {
    (void)text, (void)list, (void)bar, (void)rights;
    %s
}
"""


def compiler():
    """The command that the build compiles the plug-in's operations with, for the oldest system alone, without its input
    and output."""
    for entry in json.loads((bundle.BUILD / "compile_commands.json").read_text()):
        if entry["file"].startswith(str(bundle.SOURCE)) and entry["file"].endswith(".mm"):
            command = entry["command"][entry["command"].index(" --target"):].split(" -o ")[0]
            for newer in (" -arch arm64", " -Xarch_arm64 -mmacosx-version-min=11.0"):
                command = command.replace(newer, "")
            return ["clang++-19", *command.split()]
    raise LookupError("the build compiles no operation")


class WrongChange(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.command = compiler()

    def complaints(self, line, header=""):
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / "change.mm"
            source.write_text(header + FRAME % line)
            done = subprocess.run([*self.command, "-fsyntax-only", str(source)], text=True, capture_output=True)
        return done.stderr if done.returncode else ""

    def refused(self, line, reason, header=""):
        complaints = self.complaints(line, header)
        self.assertIn("error:", complaints, f"this compiles: {line}")
        self.assertIn(reason, complaints)

    def test_a_right_change_is_not_refused(self):
        self.assertEqual(self.complaints("[list addObject:[text stringByAppendingString:@\"!\"]];"), "")

    def test_a_selector_that_is_nowhere(self):
        self.refused("[list addObjectTwice:text];", "'-addObjectTwice:' not found")

    def test_a_selector_that_nobody_has_looked_up(self):
        self.refused("[list sortUsingSelector:@selector(compare:)];", "'-sortUsingSelector:' not found")

    def test_a_class_that_nobody_has_looked_up(self):
        self.refused("[NSURLSession sharedSession];", "undeclared identifier 'NSURLSession'")

    def test_a_download_past_the_one_file_that_has_the_platforms_class(self):
        download = "NSURLDownload *download = nil; [download cancel];"
        self.refused(download, "unknown type name 'NSURLDownload'")
        self.assertEqual(self.complaints(download, "#import <Foundation/NSURLDownload.h>\n"), "")

    def test_an_argument_of_another_class(self):
        self.refused("[text stringByAppendingString:list];", "cannot initialize a parameter of type 'NSString *")

    def test_a_message_to_the_wrong_class(self):
        self.refused("[text addObject:text];", "may not respond to 'addObject:'")

    def test_a_message_that_only_gnustep_has(self):
        self.refused("[text stringByTrimmingSpaces];", "'-stringByTrimmingSpaces' not found")

    def test_a_function_that_only_gnustep_has(self):
        self.refused("NSDebugLog(@\"%@\", text);", "undeclared identifier 'NSDebugLog'")

    def test_a_constant_that_macos_lacks(self):
        self.refused("(void)NSIconWindowMask;", "undeclared identifier 'NSIconWindowMask'")

    def test_a_constant_of_another_enumeration(self):
        self.refused("[bar setStyle:NSControlSizeSmall];", "'NSControlSize'")

    def test_a_constant_newer_than_the_oldest_system(self):
        self.refused("[bar setControlSize:NSControlSizeLarge];", "only available on macOS 11.0 or newer")

    def test_a_part_of_the_standard_library_newer_than_the_oldest_system(self):
        self.refused("(void)std::filesystem::exists(\"/\");", "introduced in macOS 10.15", "#include <filesystem>\n")

    def test_a_deprecated_call_that_is_not_one_of_the_known(self):
        self.refused("[NSBundle loadNibNamed:text owner:nil];", "is deprecated")

    def test_nil_where_an_object_must_be(self):
        self.refused("[list addObject:nil];", "null passed to a callee that requires a non-null argument")

    def test_a_format_that_its_argument_does_not_fit(self):
        self.refused("(void)[NSString stringWithFormat:@\"%d\", text];", "format specifies type 'int'")

    def test_a_call_with_an_argument_too_few(self):
        self.refused("(void)AuthorizationFree(rights);", "no matching function for call to 'AuthorizationFree'")

    def test_a_function_of_another_c_library(self):
        self.refused("int ends[2]; (void)pipe2(ends, 0);", "undeclared identifier 'pipe2'")

    def test_a_value_that_its_place_cannot_hold(self):
        self.refused("char first = [text length]; (void)first;", "implicit conversion loses integer precision")
