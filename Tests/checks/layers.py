"""tools/check-layers on made-up trees: what it lets pass and what it refuses."""
import scripts


class Layers(scripts.TreeCase):

    def setUp(self):
        super().setUp()
        self.check = scripts.load("check-layers")
        self.check.ORDER = ["base", "selection", "install/package", "install/chain", "shell"]
        self.check.UPWARD = []
        self.check.CIRCLES = []

    def breaches(self, files):
        self.write(files)
        return self.check.breaches(self.root)

    def test_includes_of_the_own_folder_and_of_those_below_pass(self):
        self.assertEqual(self.breaches({
            "base/Text.hpp": "#include <string>\n",
            "base/Text.cpp": '#include "base/Text.hpp"\n',
            "install/package/Run.h": '#import "base/Text.hpp"\n',
            "install/chain/Chain.mm": '#import "install/package/Run.h"\n#include "base/Text.hpp"\n',
        }), [])

    def test_an_upward_include_is_refused(self):
        self.assertEqual(self.breaches({
            "base/Text.mm": '#import "selection/Record.h"\n',
            "selection/Record.h": "",
        }), ["base/Text.mm: base includes selection/Record.h, which is above it"])

    def test_an_upward_include_between_subfolders_is_refused(self):
        self.assertEqual(self.breaches({
            "install/package/Run.h": '  #  include "install/chain/Chain.h"\n',
            "install/chain/Chain.h": "",
        }), ["install/package/Run.h: install/package includes install/chain/Chain.h, which is above it"])

    def test_an_include_without_its_folder_is_refused_even_beside_the_file(self):
        self.assertEqual(self.breaches({
            "base/Text.cpp": '#include "Text.hpp"\n',
            "base/Text.hpp": "",
        }), ['base/Text.cpp: "Text.hpp" does not name its folder'])

    def test_an_include_of_a_file_that_is_not_there_is_refused(self):
        self.assertEqual(self.breaches({"base/Text.cpp": '#include "layer/Queue.hpp"\n'}),
                         ['base/Text.cpp: "layer/Queue.hpp" is no file of this tree'])

    def test_a_circle_of_files_is_refused(self):
        self.assertEqual(self.breaches({
            "base/A.hpp": '#include "base/B.hpp"\n',
            "base/B.hpp": '#include "base/C.hpp"\n',
            "base/C.hpp": '#include "base/A.hpp"\n',
            "base/D.hpp": '#include "base/A.hpp"\n',
        }), ["these include each other in a circle: base/A.hpp, base/B.hpp, base/C.hpp"])

    def test_a_circle_of_folders_is_refused_at_the_include_that_leads_up(self):
        self.assertEqual(self.breaches({
            "base/A.hpp": "",
            "base/B.mm": '#import "shell/Host.h"\n',
            "shell/Host.h": "",
            "shell/Host.mm": '#import "base/A.hpp"\n',
        }), ["base/B.mm: base includes shell/Host.h, which is above it"])

    def test_a_folder_without_a_place_is_refused(self):
        self.assertEqual(self.breaches({"attic/Old.hpp": ""}), ["attic/Old.hpp: its folder has no place in the order"])

    def test_an_exception_opens_its_include_alone(self):
        self.check.UPWARD = [("*", "shell/Pane.h", "the one class")]
        self.assertEqual(self.breaches({
            "selection/Record.mm": '#import "shell/Pane.h"\n#import "shell/Host.h"\n',
            "shell/Pane.h": "",
            "shell/Host.h": "",
        }), ["selection/Record.mm: selection includes shell/Host.h, which is above it"])

    def test_no_exception_opens_the_ground(self):
        self.check.UPWARD = [("*", "shell/Pane.h", "the one class")]
        self.assertIn("base/Text.mm: base includes shell/Pane.h, which is above it", self.breaches({
            "base/Text.mm": '#import "shell/Pane.h"\n',
            "shell/Pane.h": "",
        }))

    def test_an_exception_does_not_hide_a_circle(self):
        self.check.UPWARD = [("*", "shell/Pane.h", "the one class")]
        self.assertEqual(self.breaches({
            "selection/Record.h": '#import "shell/Pane.h"\n',
            "shell/Pane.h": '#import "selection/Record.h"\n',
        }), ["these include each other in a circle: selection/Record.h, shell/Pane.h"])

    def test_a_listed_circle_passes(self):
        self.check.CIRCLES = [("base/A.hpp", "base/B.hpp")]
        self.assertEqual(self.breaches({
            "base/A.hpp": '#include "base/B.hpp"\n',
            "base/B.hpp": '#include "base/A.hpp"\n',
        }), [])

    def test_an_exception_that_nobody_needs_is_refused(self):
        self.check.UPWARD = [("*", "shell/Pane.h", "the one class")]
        self.assertEqual(self.breaches({"base/Text.hpp": ""}),
                         ["check-layers: no file needs the exception * -> shell/Pane.h any more"])

    def test_an_empty_tree_is_refused(self):
        self.assertEqual(self.breaches({}), [f"check-layers: no sources in {self.root}"])
