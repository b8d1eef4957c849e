"""A browser without a window, driven through chromedriver's HTTP interface."""

import json
import re
import shutil
import subprocess
import tempfile
import time
import urllib.error
import urllib.request

BROWSERS = ("chromium", "chromium-browser", "google-chrome")
ELEMENT = "element-6066-11e4-a52e-4f735466cecf"  # the protocol's word for a reference to one
KEYS = {"Enter": "\ue007", "Escape": "\ue00c", "Down": "\ue015", "Up": "\ue013", "End": "\ue010"}


def installed():
    """The browser's path, None where it or its driver is missing."""
    browsers = [path for path in map(shutil.which, BROWSERS) if path]
    return browsers[0] if browsers and shutil.which("chromedriver") else None


class Browser:
    def __init__(self, width=1280, height=800):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        for line in self.driver.stdout:
            if port := re.search(r"successfully on port (\d+)", line):
                break
        self.base = f"http://127.0.0.1:{port[1]}/session"
        options = {
            "binary": installed(),
            "args": ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                     f"--user-data-dir={self.profile.name}", f"--window-size={width},{height}"],
        }
        wanted = {"goog:chromeOptions": options, "goog:loggingPrefs": {"performance": "ALL", "browser": "ALL"}}
        session = self.call("", {"capabilities": {"alwaysMatch": wanted}})
        self.base += "/" + session["sessionId"]

    def close(self):
        try:
            self.call("", method="DELETE")
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.profile.cleanup()

    def call(self, path, body=None, method=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=120) as answer:
                return json.load(answer)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(error.read().decode()[:1000]) from None

    def open(self, url):
        # Otherwise it may be the page that is open already, at another place.
        self.call("/url", {"url": "about:blank"})
        self.call("/url", {"url": url})
        self.wait("document.documentElement.dataset.ready")

    def run(self, script, *arguments):
        return self.call("/execute/sync", {"script": script, "args": list(arguments)})

    def value(self, expression):
        return self.run(f"return {expression}")

    def wait(self, expression, seconds=60):
        end = time.monotonic() + seconds
        while not (value := self.value(expression)):
            if time.monotonic() > end:
                raise AssertionError(f"never true: {expression}; the page says: {self.value('document.body.innerText')[:300]}")
            time.sleep(0.02)
        return value

    def text(self, selector):
        return self.run("return document.querySelector(arguments[0]).textContent", selector)

    def element(self, selector):
        return self.call("/element", {"using": "css selector", "value": selector})[ELEMENT]

    def press(self, *keys):
        """Presses them where the focus is: names of KEYS, or text."""
        letters = [letter for key in keys for letter in ([KEYS[key]] if key in KEYS else key)]
        actions = [{"type": kind, "value": letter} for letter in letters for kind in ("keyDown", "keyUp")]
        self.call("/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def click(self, selector, x=0, y=0, press=True):
        """Clicks so far from the element's middle, or only points there."""
        place = {"type": "pointerMove", "x": x, "y": y, "origin": {ELEMENT: self.element(selector)}}
        actions = [place, *([{"type": "pointerDown", "button": 0}, {"type": "pointerUp", "button": 0}] if press else [])]
        self.call("/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": actions}]})

    def role_and_label(self, selector):
        path = "/element/" + self.element(selector)
        return self.call(path + "/computedrole"), self.call(path + "/computedlabel")

    def requests(self):
        """What has been asked for over any protocol since the last time."""
        log = [json.loads(entry["message"])["message"] for entry in self.call("/se/log", {"type": "performance"})]
        return [entry["params"]["request"]["url"] for entry in log if entry["method"] == "Network.requestWillBeSent"]

    def complaints(self):
        return [entry["message"] for entry in self.call("/se/log", {"type": "browser"})]

    def devtools(self, command, **parameters):
        return self.call("/goog/cdp/execute", {"cmd": command, "params": parameters})

    def screenshot(self):
        """A PNG as base64."""
        return self.call("/screenshot")
