"""What keeps a run at a moment until its picture has been taken: an installer, or a download site, that waits there."""
import contextlib
import fcntl
import functools
import http.server
import shlex
import threading

INSTALLER = """#!/bin/bash
# Installs what it is told to, and pauses in one package, once that many hundredths of it are done.
set -o pipefail
case "$*" in
*/{package}*) ;;
*) exec {installer} "$@" ;;
esac
{installer} "$@" | while IFS= read -r line; do
    printf '%s\\n' "$line"
    if [[ ! $paused && $line =~ ^installer:%([0-9]+) && ${{BASH_REMATCH[1]}} -ge {percent} ]]; then
        paused=yes
        flock --shared {gate} true
    fi
done
"""


class InstallerHold:
    """Has the installer of one package wait at a percentage. Closed from the start; also opened when its holder dies."""

    def __init__(self, package, percent):
        self.package = package
        self.percent = percent
        self.gate = None

    def put_in(self, places):
        """Takes the place of the run's installer tool."""
        tool = places.system / "usr" / "sbin" / "installer"
        gate = places.system / "gate"
        self.gate = gate.open("w")
        fcntl.flock(self.gate, fcntl.LOCK_EX)
        real = shlex.quote(str(tool.resolve()))
        tool.unlink()
        tool.write_text(INSTALLER.format(package=shlex.quote(self.package), installer=real, percent=self.percent,
                                         gate=shlex.quote(str(gate))))
        tool.chmod(0o755)

    def release(self):
        if self.gate:
            self.gate.close()


class SiteHold:
    """A download site on loopback that keeps back what of each file lies behind its first bytes."""

    def __init__(self, root, at_first):
        """At first it sends that many bytes of a file; every one when that is None."""
        self.root = root
        self.at_first = at_first
        self.released = threading.Event()
        self.address = None

    @contextlib.contextmanager
    def served(self):
        handler = functools.partial(_Handler, self, directory=str(self.root))
        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler) as server:
            self.address = f"http://127.0.0.1:{server.server_port}"
            threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.05}, daemon=True).start()
            try:
                yield self
            finally:
                self.release()
                server.shutdown()

    def release(self):
        self.released.set()


class _Handler(http.server.SimpleHTTPRequestHandler):

    def __init__(self, hold, *arguments, **options):
        self.hold = hold
        super().__init__(*arguments, **options)

    def copyfile(self, source, outputfile):
        # Whoever fetches may have gone meanwhile.
        with contextlib.suppress(ConnectionError):
            outputfile.write(source.read(self.hold.at_first))
            if source.peek(1):
                self.hold.released.wait()
                super().copyfile(source, outputfile)

    def log_message(self, *_):
        pass
