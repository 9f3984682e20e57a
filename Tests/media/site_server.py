"""A download site on loopback that answers as a test has it: files, or whatever a function writes."""
import http.server
import threading


class Answer:
    """One answer. The body is bytes, or a function that writes it; `announce` is the length that is announced, by
    default that of the bytes, and None for none."""

    def __init__(self, body=b"", status=200, headers=(), announce=-1):
        self.body, self.status, self.headers = body, status, headers
        self.announce = announce if announce != -1 else len(body) if isinstance(body, bytes) else None


class Handler(http.server.BaseHTTPRequestHandler):

    def do_GET(self):
        answer = self.server.answers.get(self.path, Answer(b"Not here\n", 404))
        self.server.asked.append((self.path, self.headers.get("User-Agent", "")))
        try:
            self.send(answer)
        except (BrokenPipeError, ConnectionResetError):
            pass  # the other side has heard enough

    def send(self, answer):
        self.send_response(answer.status)
        for name, value in answer.headers:
            self.send_header(name, value)
            self.flush_headers()
        if answer.announce is not None:
            self.send_header("Content-Length", str(answer.announce))
        self.end_headers()
        if callable(answer.body):
            answer.body(self)
        else:
            self.wfile.write(answer.body)

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):

    daemon_threads = True
    block_on_close = False

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Handler)
        self.answers, self.asked = {}, []
        self.over = threading.Event()
        self.address = f"http://127.0.0.1:{self.server_address[1]}"
        threading.Thread(target=self.serve_forever, kwargs={"poll_interval": 0.02}, daemon=True).start()

    def stop(self):
        self.over.set()
        self.shutdown()
        self.server_close()
