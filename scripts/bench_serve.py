#!/usr/bin/python3
"""Benchmark of "compose serve" (not a test): a client of our own on 127.0.0.1 only.

  bench_serve.py poll   EXE PAGE [CLIENTS SECONDS]  CLIENTS clients poll the state and the
      preview as fast as they are answered, each with a preview tab's long poll open, while
      the page is saved every second; prints the answer times (median, 90th percentile, max).
  bench_serve.py save   EXE PAGE [SAVES]  saves the page SAVES times and times each save to
      the new preview: the long poll answered and the new picture received.
  bench_serve.py memory EXE PAGE [SAVES]  the server's memory after its first composition,
      after SAVES saves (with 16 clients reading the state meanwhile), and its peak.

Every figure is printed as "name value" lines after a table, for scripts to pick up.
"""
import json
import os
import re
import shutil
import signal
import socket
import statistics
import subprocess
import sys
import tempfile
import threading
import time


def percentile(values, p):
    v = sorted(values)
    return v[min(len(v) - 1, int(p / 100 * len(v)))] if v else float("nan")


class Conn:
    """One keep-alive connection that sends GETs and reads answers by Content-Length."""

    def __init__(self, port, timeout=60):
        self.port = port
        self.timeout = timeout
        self.sock = None
        self.buf = b""

    def connect(self):
        self.sock = socket.create_connection(("127.0.0.1", self.port), timeout=self.timeout)
        self.sock.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.buf = b""

    def get(self, path):
        request = ("GET %s HTTP/1.1\r\nHost: 127.0.0.1:%d\r\n\r\n" % (path, self.port)).encode()
        try:
            if self.sock is None:
                self.connect()
            self.sock.sendall(request)
            while b"\r\n\r\n" not in self.buf:
                self._more()
        except (ConnectionError, BrokenPipeError):
            # The server closes a connection that stayed idle; as a browser does, ask again
            # on a new one.
            self.close()
            self.connect()
            self.sock.sendall(request)
            while b"\r\n\r\n" not in self.buf:
                self._more()
        head, self.buf = self.buf.split(b"\r\n\r\n", 1)
        status = int(head.split(b" ", 2)[1])
        length = int(re.search(rb"(?i)content-length: *(\d+)", head).group(1))
        parts, have = [self.buf], len(self.buf)
        while have < length:
            chunk = self.sock.recv(1 << 20)
            if not chunk:
                raise ConnectionError("closed by the server")
            parts.append(chunk)
            have += len(chunk)
        data = b"".join(parts)
        body, self.buf = data[:length], data[length:]
        if re.search(rb"(?i)connection: *close", head):
            self.close()
        return status, body

    def _more(self):
        chunk = self.sock.recv(1 << 20)
        if not chunk:
            raise ConnectionError("closed by the server")
        self.buf += chunk

    def close(self):
        if self.sock is not None:
            self.sock.close()
        self.sock = None


class Server:
    """compose serve on a copy of the page, in a fresh project, on a free port."""

    def __init__(self, exe, page):
        self.work = tempfile.mkdtemp(prefix="bench_serve_")
        self.spec_path = os.path.join(self.work, "spec.json")
        with open(page, encoding="utf-8") as f:
            self.spec = json.load(f)
        self.saves = 0
        self.write_spec()
        self.proc = subprocess.Popen([exe, "serve", self.spec_path, "--project", os.path.join(self.work, "proj"),
                                      "--port", "0"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.port = None
        for line in self.proc.stdout:
            m = re.search(r"serving http://127\.0\.0\.1:(\d+)/", line)
            if m:
                self.port = int(m.group(1))
                break
        if self.port is None:
            raise SystemExit("compose serve did not start")
        threading.Thread(target=lambda: [None for _ in self.proc.stdout], daemon=True).start()

    def write_spec(self):
        """Saves the way editors do: a new file renamed over the old one. Returns the time of the rename."""
        self.spec["page"]["title"] = "bench %d" % self.saves
        self.saves += 1
        tmp = self.spec_path + ".tmp"
        with open(tmp, "w", encoding="utf-8") as f:
            json.dump(self.spec, f, ensure_ascii=False)
        t = time.monotonic()
        os.replace(tmp, self.spec_path)
        return t

    def state(self, conn, after=None):
        status, body = conn.get("/state" if after is None else "/state?after=%d" % after)
        if status != 200:
            raise SystemExit("/state answered %d" % status)
        return json.loads(body)

    def new_version(self, conn, v):
        """The state once its version is above v (a long poll may end first when composing takes long)."""
        while True:
            st = self.state(conn, v)
            if st["version"] > v:
                return st

    def rss_kb(self, key="VmRSS"):
        with open("/proc/%d/status" % self.proc.pid) as f:
            for line in f:
                if line.startswith(key + ":"):
                    return int(line.split()[1])
        return -1

    def stop(self):
        self.proc.send_signal(signal.SIGINT)
        try:
            self.proc.wait(timeout=20)
        except subprocess.TimeoutExpired:
            self.proc.kill()
            self.proc.wait()
        shutil.rmtree(self.work, ignore_errors=True)


def bench_poll(srv, clients, seconds):
    times, errors = [], []
    lock = threading.Lock()
    end = time.monotonic() + seconds

    def tab():
        """A preview tab: a long poll, asked again as soon as it is answered."""
        try:
            c = Conn(srv.port)
            v = -1
            while time.monotonic() < end:
                v = srv.state(c, v)["version"]
            c.close()
        except Exception as e:  # noqa: BLE001 - reported below
            errors.append(repr(e))

    def poller():
        try:
            c = Conn(srv.port)
            mine = []
            while time.monotonic() < end:
                t = time.monotonic()
                st = srv.state(c)
                mine.append(time.monotonic() - t)
                png = st["sizes"][0]["png"]
                if png:
                    t = time.monotonic()
                    status, _ = c.get(png)
                    mine.append(time.monotonic() - t)
            c.close()
            with lock:
                times.extend(mine)
        except Exception as e:  # noqa: BLE001 - reported below
            errors.append(repr(e))

    threads = [threading.Thread(target=f) for _ in range(clients) for f in (tab, poller)]
    for t in threads:
        t.start()
    saves = 0
    while time.monotonic() < end - 1:
        srv.write_spec()
        saves += 1
        time.sleep(1)
    for t in threads:
        t.join()
    if errors:
        raise SystemExit("client errors: %s" % errors[:3])
    ms = [t * 1000 for t in times]
    print("%8s %9s %9s %9s %9s %9s %6s" % ("clients", "answers", "median_ms", "p90_ms", "p99_ms", "max_ms", "saves"))
    print("%8d %9d %9.1f %9.1f %9.1f %9.1f %6d" % (clients, len(ms), statistics.median(ms), percentile(ms, 90),
                                                   percentile(ms, 99), max(ms), saves))
    print("poll_p90_ms %.1f" % percentile(ms, 90))


def bench_save(srv, saves):
    c = Conn(srv.port)
    v = srv.state(c)["version"]
    lat = []
    for _ in range(saves):
        time.sleep(0.3)
        t0 = srv.write_spec()
        st = srv.new_version(c, v)
        v = st["version"]
        status, png = c.get(st["sizes"][0]["png"])
        if status != 200 or not png.startswith(b"\x89PNG"):
            raise SystemExit("no new preview")
        lat.append((time.monotonic() - t0) * 1000)
    c.close()
    print("%6s %9s %9s %9s %9s" % ("saves", "median_ms", "p90_ms", "min_ms", "max_ms"))
    print("%6d %9.1f %9.1f %9.1f %9.1f" % (saves, statistics.median(lat), percentile(lat, 90), min(lat), max(lat)))
    print("save_to_preview_median_ms %.1f" % statistics.median(lat))


def bench_memory(srv, saves):
    c = Conn(srv.port)
    st = srv.state(c)
    snapshot_bytes = len(json.dumps(st))
    time.sleep(1)
    first = srv.rss_kb()
    stop = threading.Event()

    def reader():
        r = Conn(srv.port)
        while not stop.is_set():
            r.get("/state")
        r.close()

    readers = [threading.Thread(target=reader) for _ in range(16)]
    for t in readers:
        t.start()
    v = st["version"]
    for _ in range(saves):
        srv.write_spec()
        v = srv.new_version(c, v)["version"]
    stop.set()
    for t in readers:
        t.join()
    time.sleep(1)
    after = srv.rss_kb()
    peak = srv.rss_kb("VmHWM")
    c.close()
    print("%6s %12s %12s %12s %10s %7s" % ("saves", "state_KB", "first_MB", "after_MB", "peak_MB", "ratio"))
    print("%6d %12.0f %12.1f %12.1f %10.1f %7.2f" % (saves, snapshot_bytes / 1024, first / 1024, after / 1024,
                                                     peak / 1024, after / first))
    print("memory_ratio %.2f" % (after / first))


def main():
    if len(sys.argv) < 4 or sys.argv[1] not in ("poll", "save", "memory"):
        raise SystemExit(__doc__)
    mode, exe, page = sys.argv[1:4]
    extra = [int(a) for a in sys.argv[4:]]
    srv = Server(exe, page)
    try:
        if mode == "poll":
            bench_poll(srv, *(extra or [16, 10]))
        elif mode == "save":
            bench_save(srv, *(extra or [30]))
        else:
            bench_memory(srv, *(extra or [50]))
    finally:
        srv.stop()


if __name__ == "__main__":
    main()
