"""The folder that a run writes to."""
import fcntl
import pathlib

import small_media
from flow_case import BUILD, FlowCase, flow, run_folder


class RunFolder(FlowCase):

    def setUp(self):
        super().setUp()
        self.out = self.folder / "out"

    def finished_run(self, *names):
        """What a run leaves that has made files of these names."""
        with run_folder.opened(self.out) as made:
            for name in names:
                made.claim(name).write_text("former")
            made.begun()

    def names(self):
        return {path.name for path in self.out.iterdir()} - {run_folder.MARK}

    def test_removes_only_what_a_run_has_made(self):
        self.finished_run("summary.json", "1-start.png")
        for name in ("notes.txt", "mine.png", "tmp"):
            (self.out / name).write_text("somebody's own")
        self.finished_run("summary.json")
        self.assertEqual(self.names(), {"notes.txt", "mine.png", "tmp", "summary.json"})

    def test_keeps_the_former_run_until_the_new_one_has_begun(self):
        self.finished_run("summary.json")
        with run_folder.opened(self.out) as new:
            self.assertFalse((self.out / "summary.json").exists())
            self.assertEqual((self.out / run_folder.FORMER / "summary.json").read_text(), "former")
            new.begun()
            self.assertFalse((self.out / run_folder.FORMER).exists())

    def test_a_run_that_never_began_leaves_the_former_one(self):
        self.finished_run("summary.json", "timeline.txt")
        options = flow.Options(flow="media", out=self.out, build=self.folder / "no build",
                               media=small_media.write_media(self.folder / "media"))
        with self.assertRaises(FileNotFoundError):
            flow.run(options)
        self.assertEqual(self.names(), {"summary.json", "timeline.txt"})
        self.finished_run()
        self.assertEqual(self.names(), set())

    def test_takes_up_a_folder_whose_run_was_killed(self):
        self.finished_run("summary.json")
        killed = run_folder.RunFolder(self.out)
        killed.claim("timeline.txt").write_text("killed")
        killed.mark.close()
        with run_folder.opened(self.out):
            pass
        self.assertEqual(self.names(), {"summary.json"})

    def test_refuses_a_folder_with_files_of_somebody_else(self):
        self.out.mkdir()
        (self.out / "thesis.txt").write_text("mine")
        with self.assertRaisesRegex(flow.RunError, "choose an empty folder"):
            run_folder.RunFolder(self.out)
        self.assertEqual(self.names(), {"thesis.txt"})

    def test_refuses_a_name_that_somebody_else_has_taken(self):
        self.finished_run("summary.json")
        (self.out / "home").mkdir()
        (self.out / "home" / "letter").write_text("mine")
        with self.assertRaisesRegex(flow.RunError, "home was not made by a run"):
            self.run_flow("media", small_media.write_media(self.folder / "media"))
        self.assertEqual((self.out / "home" / "letter").read_text(), "mine")
        self.assertTrue((self.out / "summary.json").exists())

    def test_refuses_a_second_run(self):
        with run_folder.opened(self.out) as first:
            first.claim("summary.json").write_text("first")
            with self.assertRaisesRegex(flow.RunError, "another run"):
                run_folder.RunFolder(self.out)
            self.assertEqual((self.out / "summary.json").read_text(), "first")
        with (self.out / run_folder.MARK).open() as mark:
            fcntl.flock(mark, fcntl.LOCK_EX | fcntl.LOCK_NB)

    def test_refuses_media_inside_the_folder(self):
        self.finished_run("media")
        (self.out / "media").unlink()
        media = small_media.write_media(self.out / "media")
        options = flow.Options(flow="media", out=self.out, build=pathlib.Path(BUILD), media=media)
        with self.assertRaisesRegex(flow.RunError, "lies inside the output folder"):
            flow.run(options)
        self.assertTrue((media / "SelectedInput.plist").exists())
