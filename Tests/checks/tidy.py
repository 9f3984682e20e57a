"""tools/check-tidy on a project of two files that is really built: what it reads again, and what it refuses."""
import contextlib
import io
import json
import subprocess

import scripts

CONFIGURATION = "Checks: '-*,modernize-use-nullptr'\nWarningsAsErrors: '*'\nHeaderFilterRegex: '.*'\n"
COMMAND = "clang++ -MD -MF {name}.d -c {source} -o {name}.o"
NINJA = """
rule compile
  command = clang++ -MD -MF $out.d -c $in -o $out
  depfile = $out.d
  deps = gcc
build one.o: compile {root}/one.cpp
build two.o: compile {root}/two.cpp
"""


class Tidy(scripts.TreeCase):

    def setUp(self):
        super().setUp()
        self.check = scripts.load("check-tidy")
        self.check.TOP = self.root
        self.write({
            ".clang-tidy": CONFIGURATION,
            "one.cpp": '#include "shared.hpp"\nint *one() { return shared(); }\n',
            "two.cpp": "int two() { return 2; }\n",
            "shared.hpp": "inline int *shared() { return nullptr; }\n",
            "build/build.ninja": NINJA.format(root=self.root),
            "build/compile_commands.json": json.dumps([
                {"directory": str(self.root / "build"), "file": str(self.root / f"{name}.cpp"),
                 "command": COMMAND.format(name=name, source=self.root / f"{name}.cpp")} for name in ["one", "two"]]),
        })

    def run_check(self, *arguments):
        """Builds, checks, and gives the exit status, what was said, and what was found."""
        subprocess.run(["ninja", "-C", self.root / "build"], check=True, stdout=subprocess.DEVNULL)
        said, found = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(said), contextlib.redirect_stderr(found):
            status = self.check.main(["--build", str(self.root / "build"), *arguments])
        return status, said.getvalue().strip(), found.getvalue()

    def assert_read(self, count, *arguments):
        self.assertEqual(self.run_check(*arguments), (0, f"clang-tidy: {count}, 0 with findings", ""))

    def test_a_file_that_has_passed_is_not_read_again(self):
        self.assert_read("2 of 2 files read")
        self.assert_read("0 of 2 files read")

    def test_a_changed_header_has_its_includers_read_again(self):
        self.assert_read("2 of 2 files read")
        self.write({"shared.hpp": "inline int *shared() { return new int; }\n"})
        self.assert_read("1 of 2 files read")

    def test_a_changed_configuration_has_everything_read_again(self):
        self.assert_read("2 of 2 files read")
        self.write({".clang-tidy": CONFIGURATION + "# more\n"})
        self.assert_read("2 of 2 files read")

    def test_a_finding_is_told_and_found_again(self):
        self.write({"two.cpp": "int *two() { return 0; }\n"})
        for count in [2, 1]:
            status, said, found = self.run_check()
            self.assertEqual((status, said), (1, f"clang-tidy: {count} of 2 files read, 1 with findings"))
            self.assertIn("two.cpp:1:21: error: use nullptr", found)

    def test_a_finding_in_a_header_is_told_once(self):
        self.write({"shared.hpp": "inline int *shared() { return 0; }\n",
                    "two.cpp": '#include "shared.hpp"\nint *two() { return shared(); }\n'})
        status, said, found = self.run_check()
        self.assertEqual((status, said), (1, "clang-tidy: 2 of 2 files read, 2 with findings"))
        self.assertEqual(found.count("error: use nullptr"), 1)

    def test_a_folder_limits_it(self):
        self.assert_read("1 of 1 files read", str(self.root / "two.cpp"))

    def test_only_what_the_branch_has_changed_is_read_when_asked(self):
        git = ["git", "-C", str(self.root), "-c", "user.name=a", "-c", "user.email=a@example.invalid"]
        for words in [["init", "-q", "-b", "main"], ["add", "."], ["commit", "-q", "-m", "one"]]:
            subprocess.run([*git, *words], check=True)
        self.assert_read("0 of 0 files read", "--changed")
        self.write({"shared.hpp": "inline int *shared() { return new int; }\n"})
        self.assert_read("1 of 1 files read", "--changed")
