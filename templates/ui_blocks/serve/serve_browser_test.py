#!/usr/bin/python3
"""compose serve in a real browser: headless Chromium driven by Selenium.

Loads the page at two sizes and checks it shows both previews side by side, saves a changed spec and checks the page
shows the new text within two seconds, shows a refused page's message over the last good
preview, and checks that paths outside the served set are 404.
With --update-screenshot the screenshot is copied to docs/serve.png.
"""
import argparse
import http.client
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

try:
    from selenium import webdriver
    from selenium.webdriver.chrome.service import Service
except ImportError:
    print("skipped: python3-selenium is not installed")
    sys.exit(77)

CHROMIUM = "/usr/bin/chromium"
DRIVER = "/usr/bin/chromedriver"


def fail(msg):
    print("FAIL: " + msg)
    sys.exit(1)


def save(path, spec):
    """Saves the way editors do: a new file renamed over the old one."""
    tmp = path + ".tmp"
    with open(tmp, "w", encoding="utf-8") as f:
        json.dump(spec, f, ensure_ascii=False)
    os.replace(tmp, path)


def wait_for(cond, seconds):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if cond():
            return True
        time.sleep(0.05)
    return cond()


def raw_status(port, path):
    """The status for a path sent byte for byte, without any normalising."""
    conn = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
    conn.putrequest("GET", path, skip_host=False, skip_accept_encoding=True)
    conn.endheaders()
    status = conn.getresponse().status
    conn.close()
    return status


def browser(profile):
    opts = webdriver.ChromeOptions()
    opts.binary_location = CHROMIUM
    for a in ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
              "--disable-background-networking", "--disable-component-update", "--disable-sync",
              "--user-data-dir=" + profile, "--window-size=1600,900"]:
        opts.add_argument(a)
    return webdriver.Chrome(service=Service(DRIVER), options=opts)


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("--exe", required=True)
    ap.add_argument("--source", required=True)
    ap.add_argument("--update-screenshot", action="store_true")
    args = ap.parse_args()
    if not (os.access(CHROMIUM, os.X_OK) and os.access(DRIVER, os.X_OK)):
        print("skipped: chromium or chromium-driver is not installed")
        sys.exit(77)

    work = tempfile.mkdtemp(prefix="ub_serve_browser_")
    spec_path = os.path.join(work, "spec.json")
    with open(os.path.join(args.source, "examples", "settings_800x480.json"), encoding="utf-8") as f:
        spec = json.load(f)
    save(spec_path, spec)

    server = subprocess.Popen([args.exe, "serve", spec_path, "--project", os.path.join(work, "proj"), "--port", "0",
                               "--sizes", "800x480,320x240"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    driver = None
    try:
        port = None
        for line in server.stdout:
            m = re.search(r"serving http://127\.0\.0\.1:(\d+)/", line)
            if m:
                port = int(m.group(1))
                break
        if port is None:
            fail("no address printed: " + server.stderr.read())

        driver = browser(os.path.join(work, "profile"))
        driver.get("http://127.0.0.1:%d/" % port)

        # The preview is shown: the picture loaded at 1:1 and is not a blank one.
        def preview_ready():
            return driver.execute_script(
                "const i = document.getElementById('preview0');"
                "return !!i && i.complete && i.naturalWidth === 800 && i.naturalHeight === 480 && i.width === 800;")
        if not wait_for(preview_ready, 10):
            fail("the preview did not load")
        # The second size beside the first, at 1:1.
        if not wait_for(lambda: driver.execute_script(
                "const b = document.getElementById('preview1'); return !!b && b.complete && b.naturalWidth > 0;"), 10):
            fail("the second size's preview did not load")
        beside = driver.execute_script(
            "const a = document.getElementById('preview0'), b = document.getElementById('preview1');"
            "const ra = a.getBoundingClientRect(), rb = b.getBoundingClientRect();"
            "return b.naturalWidth === 320 && b.naturalHeight === 240 && b.width === 320 &&"
            "  rb.left >= ra.right && rb.top === ra.top;")
        if not beside:
            fail("the two sizes are not shown side by side at 1:1")
        colours = driver.execute_script(
            "const i = document.getElementById('preview0'), c = document.createElement('canvas');"
            "c.width = i.naturalWidth; c.height = i.naturalHeight; const g = c.getContext('2d');"
            "g.drawImage(i, 0, 0); const d = g.getImageData(0, 0, c.width, c.height).data, s = new Set();"
            "for (let k = 0; k < d.length; k += 4 * 97) s.add(d[k] << 16 | d[k + 1] << 8 | d[k + 2]); return s.size;")
        if colours < 4:
            fail("the preview looks blank (%d colours)" % colours)
        # Hovering the title shows it in the inspector.
        title = spec["page"]["title"]
        driver.execute_script(
            "const c = st.sizes[0].controls.find(c => c.text === arguments[0]); inspect(st.sizes[0], c);", title)
        if title not in driver.find_element("id", "insp").text or not driver.find_elements("css selector", ".box"):
            fail("the inspector does not show the hovered title")
        # For the screenshot: an icon, whose picture the inspector shows.
        driver.execute_script(
            "const c = st.sizes[0].controls.find(c => c.pictures.some(p => p.startsWith('ic_'))); inspect(st.sizes[0], c);")
        wait_for(lambda: driver.execute_script(
            "const i = document.querySelector('#insp img'); return !!i && i.complete && i.naturalWidth > 0;"), 5)
        shot = os.path.join(work, "serve.png")
        driver.save_screenshot(shot)
        with open(shot, "rb") as f:
            if f.read(8) != b"\x89PNG\r\n\x1a\n":
                fail("the screenshot is not a PNG")
        if args.update_screenshot:
            shutil.copyfile(shot, os.path.join(args.source, "docs", "serve.png"))

        # A save shows the new text without a reload.
        driver.execute_script("window.notReloaded = true;")
        spec["page"]["title"] = "实时预览"
        t0 = time.monotonic()
        save(spec_path, spec)
        body = lambda: driver.execute_script("const l = document.getElementById('list'); return l ? l.innerText : '';")
        if not wait_for(lambda: "实时预览" in body(), 2.0):
            fail("the new title did not show within two seconds")
        print("new text shown after %.2f s" % (time.monotonic() - t0))
        if not driver.execute_script("return window.notReloaded === true;"):
            fail("the page was reloaded")

        # A refused page: its message over the last good preview, which stays.
        spec["page"]["blocks"].append({"type": "no_such_block"})
        save(spec_path, spec)
        # Read in one script: the message element may be redrawn between two driver calls.
        stop = lambda: driver.execute_script("const s = document.querySelector('.stop'); return s ? s.innerText : '';")
        if not wait_for(lambda: stop().strip() != "", 2.0):
            fail("the stop message did not show")
        if "at page.blocks[" not in stop():
            fail("the stop message does not name the block: " + stop())
        if not driver.execute_script("const i = document.getElementById('preview0'); return !!i && i.naturalWidth === 800;"):
            fail("the last good preview is gone")
        if "实时预览" not in body():
            fail("the last good controls are gone")

        # Only the page's own paths are served.
        for path in ["/../../etc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "/%2E%2E%2F%2E%2E%2Fetc%2Fpasswd",
                     "/..%2f..%2fetc%2fpasswd", "/images/../../../../etc/passwd", "/images/..%2f..%2f..%2fspec.json",
                     "/images/%2e%2e%2f%2e%2e%2fspec.json", "//etc/passwd", "/etc/passwd", "/images/", "/preview/"]:
            status = raw_status(port, path)
            if status != 404:
                fail("%s answered %d" % (path, status))
        driver.get("http://127.0.0.1:%d/../../etc/passwd" % port)
        if "root:" in driver.page_source:
            fail("the browser got /etc/passwd")

        # Ctrl-C stops it cleanly.
        server.send_signal(signal.SIGINT)
        try:
            rc = server.wait(timeout=10)
        except subprocess.TimeoutExpired:
            fail("the server did not stop on SIGINT")
        if rc != 0:
            fail("the server stopped with status %d" % rc)
        print("ok")
    finally:
        if driver:
            driver.quit()
        if server.poll() is None:
            server.kill()
            server.wait()
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    main()
