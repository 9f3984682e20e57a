"""The command ./run, as far as it looks at its arguments."""
import fcntl
import pathlib
import shutil
import subprocess

from flow_case import SOURCE, FlowCase, run_folder

# What a Debian machine has before anything is installed on it.
BARE = ["bash", "cat", "dirname", "flock", "ls", "paste", "realpath", "sed", "sort", "env"]


class RunCommand(FlowCase):

    def setUp(self):
        super().setUp()
        self.tools = self.folder / "bin"
        self.tools.mkdir()
        for name in BARE:
            (self.tools / name).symlink_to(shutil.which(name))
        self.media = self.folder / "media"
        self.media.mkdir()

    def run_command(self, *arguments):
        return subprocess.run([str(SOURCE / "run"), *map(str, arguments)], env={"PATH": str(self.tools)}, check=False,
                              cwd=self.folder, capture_output=True, text=True, timeout=20)

    def refused(self, *arguments):
        """The one line that a mistake is answered with."""
        ended = self.run_command(*arguments)
        self.assertEqual((ended.returncode, ended.stdout), (2, ""), arguments)
        self.assertRegex(ended.stderr, r"\Arun: [^\n]+\n\Z")
        return ended.stderr

    def test_help_and_mistakes_are_answered_on_a_bare_machine(self):
        for option in ("--help", "-h"):
            ended = self.run_command("web", option)
            self.assertEqual((ended.returncode, ended.stderr), (0, ""))
            for text in ("--media DIR", "GR", "Exit status", "\n  3  "):
                self.assertIn(text, ended.stdout)
        for arguments, words in [
            (["wep"], "no flow wep"), (["media", "web"], "at once"), (["--fast"], "unknown option --fast"),
            (["--out"], "--out takes a value"), (["--language", "XX"], "--language takes one of"),
            (["--authorize=yes"], "--authorize takes"), (["--timeout", "soon"], "number"), (["--timeout=0"], "number"),
            (["media", "--offline"], "belong to web"), (["web", "--site=ftp://x"], "http://"),
            (["web", "--site", "http://x/$HOME"], "http://"), (["web", "--offline", "--site=http://x"], "exclude"),
        ]:
            with self.subTest(arguments):
                self.assertIn(words, self.refused(*arguments))

    def test_looks_at_its_arguments_before_it_does_anything(self):
        foreign, file, busy = self.folder / "foreign", self.folder / "file", self.folder / "busy"
        foreign.mkdir()
        (foreign / "thesis.txt").touch()
        file.touch()
        busy.mkdir()
        (busy / run_folder.MARK).touch()
        before = sorted(self.folder.rglob("*"))
        with (busy / run_folder.MARK).open() as mark:
            fcntl.flock(mark, fcntl.LOCK_EX)
            self.assertIn("another run", self.refused("--out", busy))
        self.assertIn("choose an empty folder", self.refused("--out", foreign))
        self.assertIn("no folder", self.refused("--out", file))
        self.assertIn("no folder", self.refused("--out", file / "below"))
        self.assertIn("there is no", self.refused("--media", self.folder / "nowhere"))
        self.assertIn("no folder", self.refused("--media", file))
        self.assertIn("inside the output folder", self.refused("--out", "busy", "--media", "busy/../busy"))
        self.assertIn("inside the output folder", self.refused("--out", self.folder / "media" / ".." / "media",
                                                               "--media", self.media))
        self.assertEqual(sorted(self.folder.rglob("*")), before)

    def test_takes_what_is_right(self):
        """What is right is taken up to the first step, for which this machine lacks everything."""
        for arguments in [[], ["web", "--offline", "--language=GR"], ["--media", "media", "--out", "new/out"],
                          ["gallery", "--timeout", "0.5"], ["web", "--site", "https://example.org/a%20b"]]:
            ended = self.run_command(*arguments)
            self.assertNotEqual(ended.returncode, 2, ended.stderr)
            self.assertRegex(ended.stderr, "prepare|sed|mapfile|not found")
        self.assertFalse(pathlib.Path(self.folder, "new").exists())
