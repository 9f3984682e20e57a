"""Servers on this machine: the sample site as ./run serves it, and one without its pace."""
import contextlib
import pathlib
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Installer" / "Host" / "runner"))

import download_site  # noqa: E402

serve_site = download_site.serve
CONFIGURATION = """
pid {folder}/pid;
error_log {folder}/errors;
daemon off;
worker_processes 1;
events {{ worker_connections 512; }}
http {{
    access_log off;
    sendfile on;
    tcp_nodelay on;
    default_type application/octet-stream;
    client_body_temp_path {folder}/body;
    proxy_temp_path {folder}/proxy;
    fastcgi_temp_path {folder}/fastcgi;
    uwsgi_temp_path {folder}/uwsgi;
    scgi_temp_path {folder}/scgi;
    server {{ listen 127.0.0.1:{port}; root {root}; }}
}}
"""


@contextlib.contextmanager
def serve(root, folder):
    """Serves the folder `root` as fast as it can; gives the address. nginx keeps its own files in `folder`."""
    folder.mkdir()
    port = download_site.free_port()
    (folder / "nginx.conf").write_text(CONFIGURATION.format(folder=folder, root=root, port=port))
    server = subprocess.Popen(["/usr/sbin/nginx", "-c", folder / "nginx.conf"], stderr=subprocess.DEVNULL)
    try:
        await_answer(server, port)
        yield f"http://127.0.0.1:{port}"
    finally:
        server.terminate()
        server.wait()


def await_answer(server, port):
    deadline = time.monotonic() + 10
    while not download_site.answers(port):
        if server.poll() is not None or time.monotonic() > deadline:
            raise SystemExit("run: nginx does not answer")
        time.sleep(0.02)
