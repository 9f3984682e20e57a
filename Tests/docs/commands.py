"""That every command printed in a page is one: its program is there, and knows the options."""
import functools
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import unittest

import pages
from pages import SOURCE

BUILD = pathlib.Path(os.environ.get("VANT_BUILD", SOURCE / "build" / "debug"))
# They come with Xcode or with macOS.
MACOS = {"brew", "codesign", "hdiutil", "ibtool", "lipo", "log", "open", "otool", "pkgbuild", "pkgutil", "productbuild", "security", "spctl",
         "xcodebuild", "xcrun"}
# A word in capitals, or between angle brackets, stands for the reader's own.
PLACEHOLDER = re.compile(r"[A-Z]+$|<.*>$")


@functools.cache
def help_of(*command):
    answer = subprocess.run(command, capture_output=True, text=True, timeout=60, stdin=subprocess.DEVNULL, check=False)
    return answer.stdout + answer.stderr


def cmake_help():
    """Each of its modes tells its options when it is given none."""
    return help_of("cmake", "--help") + help_of("cmake", "--build") + help_of("cmake", "--install")


@functools.cache
def presets():
    return {preset["name"] for preset in json.loads((SOURCE / "CMakePresets.json").read_text())["configurePresets"]
            if not preset.get("hidden")}


@functools.cache
def cmake_files():
    listed = subprocess.run(["git", "ls-files", "*CMakeLists.txt", "*.cmake"], cwd=SOURCE, check=True,
                            capture_output=True, text=True).stdout.split()
    return "\n".join((SOURCE / name).read_text() for name in listed)


@functools.cache
def test_names():
    listed = json.loads(help_of("ctest", "--test-dir", str(BUILD), "--show-only=json-v1"))["tests"]
    return [test["name"] for test in listed]


def parts(line):
    """The single commands of a line, as words; a comment ends it."""
    words = shlex.split(line, comments=True)
    command = []
    for word in words:
        if word in ("&&", ";", "|", "&"):
            yield command
            command = []
        else:
            command.append(word)
    if command:
        yield command


def pairs(words):
    """Each word with the one behind it; of --option=value, the two halves."""
    words = [half for word in words for half in (word.split("=", 1) if re.match(r"--[\w-]+=", word) else [word])]
    return list(zip(words, [*words[1:], ""]))


def problems_of_options(words, known):
    return [f"unknown option {word}" for word, _ in pairs(words) if re.match(r"--?[a-zA-Z]", word) and
            not re.search(rf"(?<![\w-]){re.escape(word)}(?![\w-])", known)]


def problems_of_cmake(words):
    found = problems_of_options([word for word in words if not word.startswith("-D")], cmake_help())
    for word, value in pairs(words):
        if word == "--preset" and value not in presets():
            found.append(f"no preset {value}")
        if word == "--target" and value != "package" and not re.search(rf"\({value}\b", cmake_files()):
            found.append(f"no target {value}")
        if word.startswith("-D") and word[2:].partition("=")[0] not in cmake_files():
            found.append(f"no variable {word}")
        if word == "--install" and value and value.removeprefix("build/") not in presets():
            found.append(f"no build folder {value}")
    return found


def problems_of_ctest(words):
    found = problems_of_options(words, help_of("ctest", "--help"))
    for word, value in pairs(words):
        if word == "-L" and not re.search(rf"LABELS {value}\b|vant_python_tests\(\S+ {value}\b", cmake_files()):
            found.append(f"no tests have the label {value}")
        if word == "-R" and not any(re.search(value, name) for name in test_names()):
            found.append(f"no test's name matches {value}")
        if word == "--test-dir" and value.removeprefix("build/") not in presets():
            found.append(f"no build folder {value}")
    return found


def problems_of_run(words):
    if words[:1] == ["plan"] or words[:1] == ["check"]:
        return problems_of_vantmedia(words)
    known = help_of(str(SOURCE / "run"), "--help")
    flows = [word for word in words[:1] if not word.startswith("-")]
    return problems_of_options(words, known) + [f"no flow {flow}" for flow in flows if flow not in known]


def problems_of_test(words):
    own = [word for word, _ in pairs(words) if word in ("--preset", "--check", "--help")]
    rest = [word for word, before in zip(words, ["", *words]) if word not in own and before not in own]
    found = problems_of_options(own, help_of(str(SOURCE / "test"), "--help")) + problems_of_ctest(rest)
    return found + [f"no preset {value}" for word, value in pairs(words) if word == "--preset" and value not in presets()]


def problems_of_vantmedia(words):
    known = help_of(str(BUILD / "vantmedia"), "--help")
    commands = [word for word in words[:1] if not word.startswith("-")]
    return problems_of_options(words, known) + [f"no command {word}" for word in commands if f"vantmedia {word} " not in known]


def problems_of_prepare(words):
    groups = re.findall(r"^\[(\w+)\]$", (SOURCE / "packages.txt").read_text(), re.MULTILINE)
    return [f"no group {word}" for word in words if word not in groups]


OWN = {"cmake": problems_of_cmake, "ctest": problems_of_ctest, "./run": problems_of_run, "./test": problems_of_test,
       "vantmedia": problems_of_vantmedia, "tools/prepare": problems_of_prepare}


def problems_of_program(program):
    if program.startswith("build/"):
        product = pathlib.PurePath(program).name
        return [] if re.search(rf"\({product}\b", cmake_files()) else [f"nothing builds {program}"]
    if "/" in program:
        return [] if os.access(SOURCE / program, os.X_OK) else [f"{program} is no program of the project"]
    return [] if program in OWN or program in MACOS or shutil.which(program) else [f"there is no {program}"]


def problems(line):
    """What is wrong with a printed command line."""
    found = []
    for program, *words in parts(line):
        found += problems_of_program(program)
        found += OWN.get(program, lambda words: [])([word for word in words if not PLACEHOLDER.match(word)])
        if program == "Tests/with-display":
            found += problems_of_program(words[0])
    return [f"{line}: {problem}" for problem in found]


class Commands(unittest.TestCase):

    maxDiff = None

    def test_are_known_with_their_options(self):
        lines = [(name, line) for name in pages.FILES for line in pages.read(name).commands]
        self.assertGreater(len(lines), 40)
        self.assertEqual([f"{name}: {problem}" for name, line in lines for problem in problems(line)], [])

    def test_that_are_wrong_are_seen(self):
        for line in ["./run wep", "./run --fast", "./run check --fast", "./test --preset fast", "./test -L nothing",
                     "./test -R NoTestIsCalledSo", "cmake --preset nowhere", "cmake --build --preset debug --target Nothing",
                     "cmake --preset debug -DVANT_NOTHING=1", "ctest -L nothing", "ctest --no-such-option",
                     "vantmedia chek DIR", "vantmedia check DIR --fast", "tools/prepare nothing", "tools/no-such-tool",
                     "build/debug/NoSuchTests", "no-such-program --help", "true && no-such-program",
                     "cmake --install build/nowhere", "Tests/with-display build/debug/NoSuchTests"]:
            with self.subTest(line):
                self.assertNotEqual(problems(line), [])


if __name__ == "__main__":
    unittest.main()
