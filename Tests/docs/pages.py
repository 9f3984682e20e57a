"""The project's pages, as far as tests read them.

A fenced block marked `sh` is run as it is printed. An indented block holds commands that are too dear for that, or belong
to another machine: their programs and options are looked up. Every other fence holds no commands."""
import dataclasses
import pathlib
import re
import shlex

SOURCE = pathlib.Path(__file__).resolve().parents[2]
FILES = ["README.md", "CONTRIBUTING.md", "CHANGELOG.md", "Benchmarks/README.md", "cmake/macos/README.md",
         "Installer/GNUstep/README.md", "Installer/GNUstep/tools/README.md",
         *(str(path.relative_to(SOURCE)) for path in sorted((SOURCE / "Documentation").glob("*.md")))]
# What a span of code begins with that is a command of the project's own.
COMMAND = re.compile(r"(?:\./(?:run|test)|cmake|ctest|vantmedia)(?: |$)")


@dataclasses.dataclass
class Page:
    path: pathlib.Path
    prose: str           # without fenced and indented blocks
    scripts: list        # texts of the blocks that are run
    commands: list       # those of the indented blocks, and spans that are commands

    def anchors(self):
        """What GitHub makes of the headings."""
        return {slug(heading) for heading in re.findall(r"^#+ (.+)$", self.prose, re.MULTILINE)}

    def links(self):
        """Targets of links and pictures that do not lead out of the project."""
        targets = re.findall(r"\]\(([^)\s]+)\)", re.sub(r"`[^`]*`", "", self.prose))
        return [target for target in targets if not re.match(r"\w+:", target)]


def slug(heading):
    plain = re.sub(r"\[([^]]*)\]\([^)]*\)", r"\1", heading).lower()
    return re.sub(r"[^\w\- ]", "", plain).strip().replace(" ", "-")


def read(name):
    prose, scripts, commands, fence = [], [], [], None
    for line in (SOURCE / name).read_text(encoding="utf-8").splitlines():
        mark = re.match(r"```(\w*)", line)
        if mark and fence is None:
            fence = mark[1]
            if fence == "sh":
                scripts.append("")
        elif mark:
            fence = None
        elif fence == "sh":
            scripts[-1] += line + "\n"
        elif fence is None and line.startswith("    "):
            if commands and not is_whole(commands[-1]):
                line = commands.pop() + "\n" + line
            commands.append(line.strip())
        elif fence is None:
            prose.append(line)
    text = "\n".join(prose)
    commands += [span for span in re.findall(r"`([^`]+)`", text) if COMMAND.match(span)]
    return Page(SOURCE / name, text, scripts, commands)


def is_whole(command):
    """Not in the middle of a quoted text that goes over several lines."""
    try:
        return shlex.split(command, comments=True) is not None
    except ValueError:
        return False


def everything():
    """The text of all pages."""
    return "\n".join((SOURCE / name).read_text(encoding="utf-8") for name in FILES)
