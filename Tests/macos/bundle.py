"""The macOS bundle, and the programs beside it, as LLVM's tools tell of them. VANT_MACOS_BUILD names the build folder that
they lie in."""

import os
import re
import subprocess
from functools import cache
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
SOURCE = PROJECT / "Installer/Plugins/Installation/Source"
BUILD = Path(os.environ.get("VANT_MACOS_BUILD", PROJECT / "build/macos-cross"))
CONTENTS = BUILD / "VantInstallation.bundle/Contents"
BINARY = CONTENTS / "MacOS/VantInstallation"
SLICES = {"arm64": "11.0", "x86_64": "10.13"}
HOST_CONTENTS = BUILD / "VantHost.app/Contents"
HOST = HOST_CONTENTS / "MacOS/VantHost"
MEDIA = BUILD / "vantmedia"
# The standard library's file system, which the programs use and the pane does not, came with macOS 10.15.
PROGRAM_SLICES = {"arm64": "11.0", "x86_64": "10.15"}


@cache
def told(tool, *arguments, binary=BINARY):
    command = [f"llvm-{tool}-19", *arguments, str(binary)]
    return subprocess.run(command, check=True, text=True, capture_output=True).stdout


def slices(binary=BINARY):
    return set(told("lipo", "-archs", binary=binary).split())


def load_commands(architecture, binary=BINARY):
    return told("objdump", "--macho", "--private-headers", f"--arch={architecture}", binary=binary)


def minimum_version(architecture, binary=BINARY):
    mark = r"(?:minos|LC_VERSION_MIN_MACOSX\s+cmdsize \d+\s+version) ([\d.]+)"
    return re.search(mark, load_commands(architecture, binary))[1]


def libraries(architecture, binary=BINARY):
    return set(re.findall(r"cmd LC_LOAD_DYLIB\s+cmdsize \d+\s+name (\S+)", load_commands(architecture, binary)))


def imports(architecture, binary=BINARY):
    """Pairs of a symbol and the library that it is to come from."""
    lines = told("nm", "-m", "-u", "-arch", architecture, binary=binary).splitlines()
    return {re.search(r"external (\S+) \((?:from )?(.+)\)", line).groups() for line in lines if line}


def exports(architecture):
    lines = told("nm", "-g", "--defined-only", "-arch", architecture).splitlines()
    return {line.split()[-1] for line in lines if line}


class Methods:
    """What the binary has: classes, categories, methods with the encoding of their types."""

    def __init__(self, architecture):
        text = told("objdump", "--macho", "--objc-meta-data", f"--arch={architecture}")
        own = re.search(r"__objc_classlist\) section\n(.*?)^Contents of", text, re.DOTALL | re.MULTILINE)[1]
        self.classes = set(re.findall(r"^[0-9a-f]{16} 0x\w+ _OBJC_CLASS_\$_(\w+)$", own, re.MULTILINE))
        found = re.findall(r"types 0x\w+ (\S+)\n\s+imp ([-+])\[(\w+)(?:\((\w+)\))? (\S+)\]", text)
        self.types = {(sign, name, selector): types for types, sign, name, _, selector in found}
        self.categories = {f"{name}({category})" for _, _, name, category, _ in found if category}


methods = cache(Methods)


def stub(library):
    """The symbols that a library's stub offers, as a binary names them."""
    texts = (path.read_text() for path in BUILD.parent.glob("macos-sysroot/**/*.tbd"))
    text = next(text for text in texts if re.search(rf"^install-name: '.*/{re.escape(library)}(\.[^/]*)?'$", text, re.MULTILINE))

    def block(key):
        names = re.search(rf"{key}: \[ (.*?) \]", text)
        return re.findall(r"'([^']+)'", names[1]) if names else []

    offered = set(block("symbols"))
    for name in block("objc-classes"):
        offered |= {f"_OBJC_CLASS_$_{name}", f"_OBJC_METACLASS_$_{name}"}
    return offered | {f"_OBJC_EHTYPE_$_{name}" for name in block("objc-eh-types")}


def listed(name):
    """The symbols of one of the kept lists."""
    lines = (PROJECT / "cmake/macos/symbols" / name).read_text().splitlines()
    return {f"_{line.split()[0]}" for line in lines if line and not line.startswith("#")}


def offered(library, *more):
    """What the pane may take of a library; `more` names further lists, of programs, which run on newer systems alone."""
    if library == "libSystem":
        # Its stub is the platform's own and has thousands of names; the linker adds one to what is listed.
        names = listed("libSystem") | {"dyld_stub_binder"}
    elif library == "libc++":
        names = listed("libc++")
    else:
        return stub(library)
    return names.union(*(listed(f"{library}.{name}") for name in more))
