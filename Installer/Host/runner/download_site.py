"""Download sites for the web flow: nginx on loopback, somebody's own, or one that cannot be reached."""
import contextlib
import os
import socket
import subprocess
import time
import urllib.error
import urllib.parse
import urllib.request

from run_folder import RunError

SELECTION = "SelectedInput.plist"
# A name of the reserved domain that never resolves.
UNREACHABLE = "http://download.quorvel.invalid"

# Paths are below the prefix that nginx is started with, which needs no quoting.
CONFIGURATION = """
{user}
daemon off;
worker_processes 1;
pid nginx.pid;
events {{ worker_connections 512; }}
http {{
    access_log access.log;
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    uwsgi_temp_path uwsgi;
    scgi_temp_path scgi;
    sendfile on;
    default_type application/octet-stream;
    limit_rate {rate};
    server {{ listen 127.0.0.1:{port}; root site; }}
}}
"""


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def answers(port):
    with socket.socket() as probe:
        return probe.connect_ex(("127.0.0.1", port)) == 0


@contextlib.contextmanager
def serve(root, folder, rate=None):
    """Serves the folder `root`; gives the address. nginx keeps its own files in `folder`. The rate, for each
    connection, is bytes a second as nginx writes them ("4m"); none is no limit."""
    folder.mkdir()
    port = free_port()
    # As root, nginx would read the files as a user who may not be let in.
    user = "user root;" if os.getuid() == 0 else ""
    configuration = folder / "nginx.conf"
    configuration.write_text(CONFIGURATION.format(user=user, port=port, rate=rate or 0))
    (folder / "site").symlink_to(root)
    server = subprocess.Popen(["/usr/sbin/nginx", "-p", f"{folder}/", "-e", "error.log", "-c", "nginx.conf"],
                              stdin=subprocess.DEVNULL)
    try:
        deadline = time.monotonic() + 20
        while not answers(port):
            if server.poll() is not None or time.monotonic() > deadline:
                raise RunError(f"nginx does not answer, see {folder / 'error.log'}")
            time.sleep(0.05)
        yield f"http://127.0.0.1:{port}"
    finally:
        server.terminate()
        server.wait()


def fetch_selection(site, target, name=SELECTION):
    """Fetches the site's list of components, as the earlier pages of an installer do."""
    address = site.rstrip("/") + "/" + name
    try:
        with urllib.request.urlopen(address, timeout=30) as answer:
            target.write_bytes(answer.read())
    except (urllib.error.URLError, OSError, ValueError) as error:
        raise RunError(f"{address} cannot be fetched: {error}") from error
