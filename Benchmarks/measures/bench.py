"""What the benchmarks share: folders that a measured process may write to, the process itself, and a clock."""
import dataclasses
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import tempfile
import time


class Bench:
    """A home, a temporary folder and a system root of their own for each measured process; all goes in the end."""

    def __init__(self, build):
        self.build = pathlib.Path(build).resolve()
        self._made = []

    def __enter__(self):
        self.jail = self.folder()
        return self

    def __exit__(self, *_):
        for folder in self._made:
            shutil.rmtree(folder, ignore_errors=True)

    def folder(self, parent=None):
        """An empty folder, beside the jail."""
        made = pathlib.Path(tempfile.mkdtemp(prefix="vant-bench-", dir=parent))
        self._made.append(made)
        return made

    def folder_in_memory(self):
        """An empty folder where no disk is measured, if the machine has one."""
        return self.folder(os.environ.get("VANT_BENCH_TMP") or ("/dev/shm" if os.access("/dev/shm", os.W_OK) else None))

    @property
    def installer(self):
        return self.jail / "system/usr/sbin/installer"

    def fresh(self, installer="Benchmarks/ChattyInstaller"):
        """Empties the jail and makes the folders anew, with a program of the build as the system's installer."""
        shutil.rmtree(self.jail)
        for name in ["home/Library/Logs", "tmp", "root", "system/usr/sbin"]:
            (self.jail / name).mkdir(parents=True)
        (self.jail / "tmp").chmod(0o700)
        shutil.copy(self.build / installer, self.installer)
        user, group = os.getuid(), os.getgid()
        (self.jail / "passwd").write_text(f"bench:x:{user}:{group}::{self.jail}/home:/bin/sh\n")
        (self.jail / "group").write_text(f"bench:x:{group}:\n")

    def measured(self, mode, operand="", program=None, **settings):
        """Runs one measured process; its pairs of name and value. Its output goes through files, because the daemons that
        the platform starts for a new home hold on to a pipe."""
        line, errors = self.jail / "line", self.jail / "errors"
        with line.open("w") as out, errors.open("w") as err:
            ended = subprocess.run([program or self.build / "Benchmarks/PaneBench"], check=False, stdout=out, stderr=err,
                                   env=os.environ | self.environment() | settings | {
                                       "VANT_BENCH_MODE": mode, "VANT_BENCH_OPERAND": str(operand)})
        sys.stderr.write(errors.read_text(errors="replace"))
        if ended.returncode != 0:
            raise SystemExit(f"run: {mode} ended with status {ended.returncode}")
        words = line.read_text().split()
        return {name: float(value) for name, value in zip(words[::2], words[1::2], strict=True)}

    def environment(self):
        jail = self.jail
        return {
            "LD_PRELOAD": "libnss_wrapper.so", "NSS_WRAPPER_PASSWD": f"{jail}/passwd", "NSS_WRAPPER_GROUP": f"{jail}/group",
            "HOME": f"{jail}/home", "TEMP": f"{jail}/tmp", "VANT_SYSTEM_ROOT": f"{jail}/system",
            "VANT_INSTALL_ROOT": f"{jail}/root", "VANT_AUTHORIZATION": "grant"}


@dataclasses.dataclass
class Spent:
    """What a command took, its children included."""
    seconds: float
    cpu: float  # seconds, too


def children_cpu():
    """The seconds that all children so far have used."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def spent(*command, **options):
    """What a command takes that has to succeed; what it prints is dropped."""
    start, cpu = time.perf_counter(), children_cpu()
    subprocess.run([str(word) for word in command], check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                   **options)
    return Spent(time.perf_counter() - start, children_cpu() - cpu)


def peak_of(command, log, environment):
    """The peak of the resident memory of a command that has to succeed, in MiB; what it prints goes to a file."""
    with log.open("w") as out:
        process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=out, stderr=out,
                                   env=environment)
        _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise SystemExit(f"run: {command[0]} ended with status {process.returncode}\n{log.read_text(errors='replace')}")
    return used.ru_maxrss / 1024


def seconds(*command, **options):
    """How long a command takes that has to succeed; what it prints is dropped."""
    return spent(*command, **options).seconds


def shell(script, *words, **options):
    """How long a shell script takes that gets the words as "$1" and so on."""
    return seconds("bash", "-ec", script, "bash", *words, **options)
