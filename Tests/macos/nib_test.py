"""The source of the nib, as Interface Builder would see it, and the check that says so."""

import copy
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

import nib

SOURCE = Path(__file__).resolve().parents[2] / "Installer/Plugins/Installation/Source"


class Nib(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.root = xml.parse(SOURCE / "resources/VTInstallation.xib").getroot()
        cls.classes = nib.declarations(SOURCE)

    def refuses(self, word, change):
        """The check must name what the change broke, and nothing is wrong without the change."""
        changed = copy.deepcopy(self.root)
        change(changed)
        found = nib.faults(changed, self.classes)
        self.assertTrue([fault for fault in found if word in fault], f"{word!r} is not among {found}")

    def button(self, root):
        return root.find(".//button")

    def test_holds_nothing_that_interface_builder_would_not_write(self):
        self.assertEqual(nib.faults(self.root, self.classes), [])

    def test_has_the_classes_the_outlets_and_the_actions_in_it_at_all(self):
        self.assertGreaterEqual(len(self.root.findall(".//outlet")), 20)
        self.assertGreaterEqual(len(self.root.findall(".//action")), 4)
        self.assertGreaterEqual(len(self.classes["VantInstallation"].outlets), 12)

    def test_an_identifier_of_another_form_is_refused(self):
        self.refuses("xxx-xx-xxx", lambda root: self.button(root).set("id", "next"))

    def test_an_identifier_that_stands_twice_is_refused(self):
        self.refuses("twice", lambda root: self.button(root).set("id", root.find(".//matrix").get("id")))

    def test_an_identifier_on_a_header_cell_is_refused(self):
        self.refuses("tableHeaderCell", lambda root: root.find(".//tableHeaderCell").set("id", "aaa-bb-ccc"))

    def test_an_object_without_an_identifier_is_refused(self):
        self.refuses("no identifier", lambda root: root.find(".//tableColumn").attrib.pop("id"))

    def test_an_attribute_that_is_never_written_is_refused(self):
        self.refuses("autorecalculatesCellSize",
                     lambda root: root.find(".//matrix").set("autorecalculatesCellSize", "NO"))

    def test_an_outlet_to_nowhere_is_refused(self):
        self.refuses("which is not there", lambda root: root.find(".//outlet").set("destination", "aaa-bb-ccc"))

    def test_an_outlet_that_the_class_lacks_is_refused(self):
        self.refuses("declares no outlet", lambda root: root.find(".//outlet").set("property", "foreButton"))

    def test_an_action_that_the_class_lacks_is_refused(self):
        self.refuses("declares no action", lambda root: root.find(".//action").set("selector", "turnPage:"))

    def test_an_action_to_nowhere_is_refused(self):
        self.refuses("which is not there", lambda root: root.find(".//action").set("target", "aaa-bb-ccc"))

    def test_a_class_that_is_not_declared_is_refused(self):
        self.refuses("no header declares",
                     lambda root: root.find(".//button[@customClass]").set("customClass", "VantLink"))

    def test_a_class_of_another_kind_is_refused(self):
        self.refuses("cannot be of class",
                     lambda root: root.find(".//button[@customClass]").set("customClass", "BDDiscreteProgressCell"))

    def test_an_element_that_nobody_has_looked_up_is_refused(self):
        self.refuses("not looked up", lambda root: xml.SubElement(root, "stackView"))
