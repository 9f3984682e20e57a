"""The folders of one run: everything that the host and the pane write to lies below the run's output folder."""
import grp
import os
import pathlib
import pwd
import shutil
import signal

RUN = "VANT_RUN"  # in the environment of whatever a run starts
FOLDERS = ["home", "media", "root", "system", "tmp"]
FILES = ["host.log", "summary.json", "timeline.txt"]


class Places:
    """Makes the folders afresh: an own home, temporary folder, volume, system tools, and the media with the host on it."""

    def __init__(self, folder, build):
        self.folder = folder
        self.out = folder.path
        self.build = pathlib.Path(build).resolve()
        self.home, self.media, self.volume, self.system, self.temporary = (folder.claim(name) for name in FOLDERS)
        for name in FILES:
            folder.claim(name)
        self.app = self.media / "VantHost.app"
        self.web_selection = self.media / "WebSelection.plist"
        # A home as the system makes it: with its desktop, and a folder for logs.
        for path in [self.home / "Desktop", self.home / "Library" / "Logs", self.temporary, self.volume]:
            path.mkdir(parents=True)
        self.temporary.chmod(0o700)

    def stage_media(self, media):
        """The media folder's root is the folder that holds the host application, so the host is put beside its contents."""
        media = pathlib.Path(media).resolve()
        self.media.mkdir()
        shutil.copytree(self.build / "VantHost.app", self.app)
        for item in media.iterdir():
            if item.name not in ("Resources", "VantHost.app"):
                (self.media / item.name).symlink_to(item)
        # The packages that the host itself carries: the pane asks for them as resources of the application.
        for item in (media / "Resources").glob("*"):
            (self.app / "Resources" / item.name).symlink_to(item)

    def stage_tools(self):
        """The system's package installer, where the privileged launch looks for it."""
        folder = self.system / "usr" / "sbin"
        folder.mkdir(parents=True)
        (folder / "installer").symlink_to(self.build / "tools" / "installer")

    def environment(self):
        """The process's environment: nothing of it leads to the real user's home or to the real volume."""
        user, group = pwd.getpwuid(os.getuid()), grp.getgrgid(os.getgid())
        nss = self.folder.claim("nss")
        nss.mkdir()
        (nss / "passwd").write_text(f"{user.pw_name}:x:{user.pw_uid}:{user.pw_gid}::{self.home}:/bin/sh\n")
        (nss / "group").write_text(f"{group.gr_name}:x:{group.gr_gid}:\n")
        kept = {name: value for name, value in os.environ.items() if not name.startswith(("XDG_", "VANT_"))}
        kept.setdefault("ASAN_OPTIONS", "detect_leaks=0")
        return kept | {
            "HOME": str(self.home),
            "LANG": "C.UTF-8",
            "LD_PRELOAD": " ".join(self._sanitizer_runtime() + ["libnss_wrapper.so"]),
            "LOGNAME": user.pw_name,
            "NSS_WRAPPER_DISABLE_DEEPBIND": "1",  # sanitizers do not bear it
            "NSS_WRAPPER_GROUP": str(nss / "group"),
            "NSS_WRAPPER_PASSWD": str(nss / "passwd"),
            "TEMP": str(self.temporary),
            "TMPDIR": str(self.temporary),
            RUN: str(self.out),
            "VANT_INSTALL_ROOT": str(self.volume),
            "VANT_SYSTEM_ROOT": str(self.system),
        }

    def stop_leftovers(self):
        """Ends what the run left behind: daemons that AppKit or a package started carry the run's environment."""
        ours = f"{RUN}={self.out}".encode()
        for process in pathlib.Path("/proc").glob("[0-9]*"):
            try:
                if ours in (process / "environ").read_bytes().split(b"\0"):
                    os.kill(int(process.name), signal.SIGKILL)
            except (OSError, ValueError):
                continue  # gone meanwhile, or not ours to look into

    def _sanitizer_runtime(self):
        """A sanitizer's shared runtime has to be loaded before any other library, so before those of LD_PRELOAD too."""
        cache = (self.build / "CMakeCache.txt").read_text()
        if "VANT_SANITIZE:STRING=address" not in cache:
            return []
        found = sorted(pathlib.Path("/usr/lib").glob("llvm-*/lib/clang/*/lib/linux/libclang_rt.asan-x86_64.so"))
        return [str(found[-1])] if found else []
