"""Documentation/site.md: its commands run as they are printed, and it names what the pane knows by name."""
import functools
import http.server
import os
import pathlib
import re
import subprocess
import threading
import unittest

from media_case import BUILD, LONGEST, SOURCE, MediaCase

PAGE = (SOURCE / "Documentation" / "site.md").read_text()
SERVED = "python3 -m http.server --directory site 8000 &"


class Quiet(http.server.SimpleHTTPRequestHandler):

    def log_message(self, *_):
        pass


def commands(heading):
    """The indented lines of a section."""
    section = PAGE.split(f"## {heading}\n")[1].split("\n## ")[0]
    return "\n".join(line[4:] for line in section.splitlines() if line.startswith("    "))


class SitePage(MediaCase):

    def serve(self, folder):
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=folder))
        threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.02}, daemon=True).start()
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"127.0.0.1:{server.server_address[1]}"

    def test_a_site_is_made_from_nothing(self):
        script = commands("A site from nothing")
        self.assertIn(SERVED, script)
        script = script.replace(SERVED, "").replace("127.0.0.1:8000", self.serve(self.folder / "work" / "site"))
        work = self.folder / "work"
        work.mkdir()
        (work / "Samples").symlink_to(SOURCE / "Samples")
        answer = subprocess.run(["bash", "-eu"], input=script, cwd=work, capture_output=True, text=True, timeout=LONGEST,
                                env=os.environ | {"PATH": f"{BUILD}:{os.environ['PATH']}"})
        self.assertEqual((answer.returncode, answer.stderr), (0, ""), answer.stdout)
        self.assertEqual(answer.stdout.count("Printer Driver.pkg: installed"), 2)
        self.assertEqual(answer.stdout.count("Fax.pkg: installed"), 2)
        self.assertTrue((work / "fetched" / "Fax.cpio.gz").exists())

    def test_packages_made_by_the_script_are_installed_whole(self):
        (self.folder / "files" / "Ünter & <drüber>").mkdir(parents=True)
        (self.folder / "files" / "Ünter & <drüber>" / "file").write_text("content\n")
        for options in ([], ["--product"]):
            made, root = self.folder / "Some Driver.pkg", pathlib.Path(f"{self.folder}/root{len(options)}")
            root.mkdir()
            script = SOURCE / "Samples" / "make-package"
            subprocess.run([script, *options, self.folder / "files", "/Library/A & B", "a.b", made], check=True,
                           timeout=LONGEST)
            subprocess.run([BUILD / "tools" / "installer", "-pkg", made, "-target", "/"], check=True, timeout=LONGEST,
                           stdout=subprocess.DEVNULL, env=os.environ | {"VANT_INSTALL_ROOT": str(root)})
            self.assertEqual((root / "Library" / "A & B" / "Ünter & <drüber>" / "file").read_text(), "content\n")

    def test_the_script_says_how_it_is_called(self):
        for words in ([], ["a", "b", "c", "d.zip"]):
            answer = subprocess.run([SOURCE / "Samples" / "make-package", *words], capture_output=True, text=True)
            self.assertEqual((answer.returncode, answer.stdout), (2, ""))
            self.assertIn("usage:", answer.stderr)

    def test_every_name_that_the_pane_knows_stands_there(self):
        plug_in = SOURCE / "Installer" / "Plugins" / "Installation" / "Source"
        names = re.findall(r'"([^"]+\.(?:pkg|app))"', (plug_in / "selection" / "ComponentCatalogue.cpp").read_text())
        self.assertGreater(len(names), 10)
        self.assertEqual([name for name in names if f"`{name}`" not in PAGE], [])


if __name__ == "__main__":
    unittest.main()
