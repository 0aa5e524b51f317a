"""A headless Chromium that is steered through a pipe: pages are opened from files, keys are pressed, pictures taken.

    with browser.Browser() as chromium:
        page = chromium.open(path, width=1000, height=700)
        page.click("button")
        page.press("ArrowDown")
        page.value("document.activeElement.textContent")

Needs nothing but Debian's package chromium and Python.
"""

import base64
import json
import os
import pathlib
import select
import shutil
import subprocess
import tempfile
import time

PROGRAM = "chromium"
SECONDS = 180  # for each answer

# What a press of a key is to the browser.
KEYS = {"ArrowDown": 40, "ArrowUp": 38, "ArrowLeft": 37, "ArrowRight": 39, "Home": 36, "End": 35, "Enter": 13, "Escape": 27,
        "Tab": 9}


class Failure(Exception):
    """The browser did not do what it was asked for."""


def is_installed():
    return shutil.which(PROGRAM) is not None


class Browser:
    """hinting: of letters, none, slight, medium or full. With none, pages are laid out the same everywhere."""

    def __init__(self, hinting="none"):
        self.profile = tempfile.mkdtemp(prefix="vexa-browser-")
        to_browser, self.out = os.pipe()
        self.answers, from_browser = os.pipe()

        def connect():
            # Numbers above 4 first, so that none is closed that is still needed.
            ends = [os.dup2(end, 10 + place) for place, end in enumerate((to_browser, from_browser))]
            for place, end in enumerate(ends):
                os.dup2(end, 3 + place)

        self.process = subprocess.Popen(
            [PROGRAM, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", "--force-device-scale-factor=1",
             f"--font-render-hinting={hinting}", "--no-first-run", "--disable-background-networking",
             "--remote-debugging-pipe", f"--user-data-dir={self.profile}"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, close_fds=False,
            preexec_fn=connect)
        os.close(to_browser)
        os.close(from_browser)
        self.buffer = b""
        self.number = 0
        self.events = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        try:
            self.ask("Browser.close")
            self.process.wait(10)
        except (Failure, OSError, subprocess.TimeoutExpired):
            self.process.kill()
            self.process.wait()
        os.close(self.out)
        os.close(self.answers)
        shutil.rmtree(self.profile, ignore_errors=True)

    def ask(self, method, session=None, **parameters):
        """Sends one command and returns its result; events that come before it are kept."""
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if session:
            message["sessionId"] = session
        os.write(self.out, json.dumps(message).encode() + b"\0")
        while True:
            answer = self._receive()
            if answer.get("id") == self.number:
                if "error" in answer:
                    raise Failure(f"{method}: {answer['error']['message']}")
                return answer["result"]
            self.events.append(answer)

    def wait_for(self, event, session):
        """Until this event of a session has come."""
        while True:
            for place, each in enumerate(self.events):
                if each.get("method") == event and each.get("sessionId") == session:
                    del self.events[: place + 1]
                    return
            self.events.append(self._receive())

    def _receive(self):
        end = time.monotonic() + SECONDS
        while b"\0" not in self.buffer:
            ready, _, _ = select.select([self.answers], [], [], max(0, end - time.monotonic()))
            received = os.read(self.answers, 1 << 20) if ready else b""
            if not received:
                raise Failure("the browser does not answer")
            self.buffer += received
        message, _, self.buffer = self.buffer.partition(b"\0")
        return json.loads(message)

    def open(self, path, width=1000, height=700, scripts=True, scheme="light", media=""):
        """A page of its own that shows a file. media: "print" for how it looks on paper."""
        target = self.ask("Target.createTarget", url="about:blank")["targetId"]
        session = self.ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        page = Page(self, target, session)
        page.ask("Page.enable")
        page.ask("Runtime.enable")
        page.resize(width, height)
        page.ask("Emulation.setScriptExecutionDisabled", value=not scripts)
        page.ask("Emulation.setEmulatedMedia", media=media, features=[{"name": "prefers-color-scheme", "value": scheme}])
        page.ask("Page.navigate", url=pathlib.Path(path).resolve().as_uri())
        self.wait_for("Page.loadEventFired", session)
        return page


class Page:
    def __init__(self, browser, target, session):
        self.browser = browser
        self.target = target
        self.session = session

    def ask(self, method, **parameters):
        return self.browser.ask(method, self.session, **parameters)

    def close(self):
        self.browser.ask("Target.closeTarget", targetId=self.target)

    def resize(self, width, height):
        self.ask("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def value(self, expression):
        """What a script's expression is; works without the page's own scripts as well."""
        result = self.ask("Runtime.evaluate", expression=expression, returnByValue=True)
        if "exceptionDetails" in result:
            raise Failure(f"{expression}: {result['exceptionDetails']}")
        return result["result"].get("value")

    def errors(self):
        """Texts of what the page's scripts threw so far."""
        self.value("0")
        return [each["params"]["exceptionDetails"].get("exception", {}).get("description", "?")
                for each in self.browser.events
                if each.get("method") == "Runtime.exceptionThrown" and each.get("sessionId") == self.session]

    def place(self, selector):
        """Left, top, width, height of the first element, as it stands in the window."""
        rectangle = self.value(f"(r => r && [r.left, r.top, r.width, r.height])"
                               f"(document.querySelector({json.dumps(selector)})?.getBoundingClientRect())")
        if rectangle is None:
            raise Failure(f"nothing is {selector}")
        return rectangle

    def click(self, selector):
        """With the mouse, into the middle of the first element, wherever it stands."""
        self.value(f"document.querySelector({json.dumps(selector)}).scrollIntoView({{block: 'center', behavior: 'instant'}})")
        left, top, width, height = self.place(selector)
        for kind in ("mousePressed", "mouseReleased"):
            self.ask("Input.dispatchMouseEvent", type=kind, x=left + width / 2, y=top + height / 2, button="left", clickCount=1)

    def press(self, key):
        code = {"key": key, "code": key, "windowsVirtualKeyCode": KEYS[key]}
        if key == "Enter":
            code["text"] = "\r"
        self.ask("Input.dispatchKeyEvent", type="keyDown", **code)
        self.ask("Input.dispatchKeyEvent", type="keyUp", **code)

    def type(self, text):
        self.ask("Input.insertText", text=text)

    def picture(self, path, whole=True):
        """Of the whole page, or of what the window shows, as PNG."""
        data = self.ask("Page.captureScreenshot", format="png", captureBeyondViewport=whole)["data"]
        pathlib.Path(path).write_bytes(base64.b64decode(data))

    def paper(self, path):
        """As it is printed, as PDF."""
        data = self.ask("Page.printToPDF", preferCSSPageSize=True, printBackground=True)["data"]
        pathlib.Path(path).write_bytes(base64.b64decode(data))
