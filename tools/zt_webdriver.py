"""Headless Chromium driven through chromedriver's WebDriver HTTP API, with the standard
library alone, for the browser tests and benchmarks of the report page."""

import base64
import json
import os
import shutil
import socket
import struct
import subprocess
import tempfile
import time
import urllib.error
import urllib.request
import zlib

CHROMIUM_ARGS = [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync",
    "--hide-scrollbars", "--force-device-scale-factor=1",
]
ELEMENT_KEY = "element-6066-11e4-a52e-4f735466cecf"


def find_browser():
    """The paths of chromium and chromedriver, or None with the missing one's name."""
    chromium = shutil.which("chromium") or shutil.which("chromium-browser")
    driver = shutil.which("chromedriver")
    if not chromium:
        return None, "chromium"
    if not driver:
        return None, "chromedriver"
    return (chromium, driver), None


def _free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


class Browser:
    """One chromedriver and one headless Chromium session with a new, empty profile."""

    def __init__(self, chromium, driver, width=1400, height=1000):
        self.profile = tempfile.mkdtemp(prefix="zt-chromium-")
        self.port = _free_port()
        self.driver = subprocess.Popen([driver, "--port=%d" % self.port],
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.base = "http://127.0.0.1:%d" % self.port
        self.session = None
        try:
            self._wait_ready()
            options = {"binary": chromium,
                       "args": CHROMIUM_ARGS + ["--user-data-dir=" + self.profile,
                                                "--window-size=%d,%d" % (width, height)]}
            reply = self._call("POST", "/session", {"capabilities": {"alwaysMatch": {
                "browserName": "chrome", "goog:chromeOptions": options}}})
            self.session = "/session/" + reply["sessionId"]
        except Exception:
            self.close()
            raise

    def _wait_ready(self):
        deadline = time.monotonic() + 30
        while True:
            try:
                if self._call("GET", "/status").get("ready"):
                    return
            except (urllib.error.URLError, ConnectionError):
                pass
            if time.monotonic() > deadline or self.driver.poll() is not None:
                raise RuntimeError("chromedriver did not start")
            time.sleep(0.1)

    def _call(self, method, path, body=None):
        data = json.dumps(body).encode() if body is not None else None
        request = urllib.request.Request(self.base + path, data=data, method=method,
                                         headers={"Content-Type": "application/json"})
        try:
            with urllib.request.urlopen(request, timeout=120) as reply:
                return json.loads(reply.read())["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError("WebDriver %s %s: %s" % (method, path, error.read()[:500]))

    def close(self):
        if self.session:
            try:
                self._call("DELETE", self.session)
            except (RuntimeError, urllib.error.URLError, ConnectionError):
                pass
            self.session = None
        self.driver.terminate()
        self.driver.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()

    def open(self, path):
        """Loads a local file and waits for its load event."""
        self._call("POST", self.session + "/url", {"url": "file://" + os.path.abspath(path)})

    def run(self, script, *args):
        return self._call("POST", self.session + "/execute/sync",
                          {"script": script, "args": list(args)})

    def run_async(self, script, *args):
        """Runs a script that hands its result to the callback given as its last argument."""
        return self._call("POST", self.session + "/execute/async",
                          {"script": script, "args": list(args)})

    def element(self, css):
        """The WebDriver reference of the first element that matches."""
        return self._call("POST", self.session + "/element",
                          {"using": "css selector", "value": css})

    def click(self, css):
        self._call("POST", self.session + "/element/%s/click" % self.element(css)[ELEMENT_KEY], {})

    def perform(self, *sources):
        """Runs input sources (pointer, wheel, key) as the Actions API takes them."""
        self._call("POST", self.session + "/actions", {"actions": list(sources)})
        self._call("DELETE", self.session + "/actions")

    def drag(self, css, dx, dy):
        """Presses the mouse at the middle of the element, moves it by (dx, dy), lets go."""
        self.perform({"type": "pointer", "id": "mouse", "parameters": {"pointerType": "mouse"},
                      "actions": [
                          {"type": "pointerMove", "origin": self.element(css), "x": 0, "y": 0},
                          {"type": "pointerDown", "button": 0},
                          {"type": "pointerMove", "origin": "pointer", "x": dx, "y": dy,
                           "duration": 100},
                          {"type": "pointerUp", "button": 0}]})

    def wheel(self, css, delta_y):
        """Turns the wheel over the middle of the element."""
        self.perform({"type": "wheel", "id": "wheel", "actions": [
            {"type": "scroll", "origin": self.element(css), "x": 0, "y": 0, "deltaX": 0,
             "deltaY": delta_y}]})

    def press(self, *keys):
        """Presses and lets go of each key in turn, on the focused element ("\ue014" is the
        right arrow)."""
        actions = []
        for key in keys:
            actions += [{"type": "keyDown", "value": key}, {"type": "keyUp", "value": key}]
        self.perform({"type": "key", "id": "keyboard", "actions": actions})

    def screenshot(self):
        """The visible page as PNG bytes."""
        return base64.b64decode(self._call("GET", self.session + "/screenshot"))


def png_pixels(png):
    """Width, height, bytes per pixel and the unfiltered rows of an 8-bit RGB(A) PNG, or of
    an 8-bit indexed one given as RGBA through its palette and its transparency."""
    width, height, depth, kind = struct.unpack(">IIBB", png[16:26])
    if depth != 8 or kind not in (2, 3, 6):
        raise ValueError("only 8-bit RGB, RGBA or indexed images are read")
    at, data, palette, alphas = 8, b"", b"", b""
    while at < len(png):
        length, chunk = struct.unpack(">I4s", png[at:at + 8])
        body = png[at + 8:at + 8 + length]
        if chunk == b"IDAT":
            data += body
        elif chunk == b"PLTE":
            palette = body
        elif chunk == b"tRNS":
            alphas = body
        at += 12 + length
    raw = zlib.decompress(data)
    bpp = {2: 3, 3: 1, 6: 4}[kind]
    stride = width * bpp
    rows, previous = [], bytearray(stride)
    for y in range(height):
        kind_byte = raw[y * (stride + 1)]
        row = bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            a = row[i - bpp] if i >= bpp else 0
            b = previous[i]
            c = previous[i - bpp] if i >= bpp else 0
            if kind_byte == 1:
                row[i] = (row[i] + a) & 255
            elif kind_byte == 2:
                row[i] = (row[i] + b) & 255
            elif kind_byte == 3:
                row[i] = (row[i] + (a + b) // 2) & 255
            elif kind_byte == 4:
                p = a + b - c
                pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
                row[i] = (row[i] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
        rows.append(bytes(row))
        previous = row
    if kind == 3:
        colours = [palette[3 * i:3 * i + 3] + bytes([alphas[i] if i < len(alphas) else 255])
                   for i in range(len(palette) // 3)]
        rows = [b"".join(colours[index] for index in row) for row in rows]
        bpp = 4
    return width, height, bpp, rows
