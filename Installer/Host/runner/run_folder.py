"""The folder that a run writes to: whose it is, what in it is a run's, and what the run before left."""
import contextlib
import fcntl
import pathlib
import shutil

MARK = ".vant-run"  # names what runs have made in the folder, a line each; locked while a run goes on
FORMER = ".vant-former-run"


class RunError(Exception):
    """A run that cannot start, or that died; the text says why."""


class RunFolder:
    """A run's output folder, held until it is closed. Only what runs have made is ever removed; what the run before made
    is kept aside until this one has begun."""

    def __init__(self, path):
        self.path = pathlib.Path(path).resolve()
        self.path.mkdir(parents=True, exist_ok=True)
        if not (self.path / MARK).exists() and any(self.path.iterdir()):
            raise RunError(f"{self.path} holds files that no run has written: choose an empty folder")
        self.mark = (self.path / MARK).open("a+", encoding="utf-8")
        try:
            fcntl.flock(self.mark, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            self.mark.close()
            raise RunError(f"another run is writing to {self.path}") from None
        self.former = self.path / FORMER
        self._set_former_run_aside()

    def claim(self, name):
        """The path of something that this run is about to make."""
        path = self.path / name
        if path.exists() or path.is_symlink():
            raise RunError(f"{path} was not made by a run: choose another folder")
        self.mark.write(name + "\n")
        self.mark.flush()
        return path

    def begun(self):
        """The new run has begun, so the former one's results may go."""
        remove(self.former)

    def close(self):
        """Lets go of the folder. A run that has not begun leaves the former one's results in their places."""
        if self.former.exists():
            self._remove_made()
            for item in sorted(self.former.iterdir()):
                item.rename(self.path / item.name)
                self.mark.write(item.name + "\n")
            self.former.rmdir()
        self.mark.close()

    def _set_former_run_aside(self):
        if self.former.exists():
            # A run that was killed before it had begun: what it made is nobody's result.
            self._remove_made()
            return
        self.former.mkdir()
        for name in self._made():
            if (self.path / name).exists() or (self.path / name).is_symlink():
                (self.path / name).rename(self.former / name)
        self._forget()

    def _remove_made(self):
        for name in self._made():
            remove(self.path / name)
        self._forget()

    def _made(self):
        self.mark.seek(0)
        return [pathlib.PurePath(name).name for name in self.mark.read().splitlines() if pathlib.PurePath(name).name]

    def _forget(self):
        self.mark.truncate(0)


def remove(path):
    """Removes a file or a folder, links not followed; nothing when it is not there."""
    if path.is_dir() and not path.is_symlink():
        shutil.rmtree(path)
    else:
        path.unlink(missing_ok=True)


@contextlib.contextmanager
def opened(path):
    """The folder at the path, for the length of a run."""
    folder = RunFolder(path)
    try:
        yield folder
    finally:
        folder.close()
