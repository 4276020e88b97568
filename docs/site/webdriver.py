"""A browser without a window, driven through chromedriver with what comes with Python."""

import base64
import json
import os
import re
import subprocess
import tempfile
import urllib.error
import urllib.request
from collections.abc import Iterator
from contextlib import contextmanager
from dataclasses import dataclass
from pathlib import Path
from typing import Any

_PORT = re.compile(r"started successfully on port (\d+)")
# Seconds that the browser may take for one command.
_PATIENCE = 60
# Chromium draws no larger pictures than some 16,384 pixels.
_HIGHEST = 16_000
# The sandbox of the browser cannot be had in every container. All pages are our own.
_ARGUMENTS = ("--headless=new", "--no-sandbox", "--hide-scrollbars", "--disable-dev-shm-usage")


class BrowserError(Exception):
    """The browser could not be started, or refused a command."""


@dataclass(frozen=True)
class Browser:
    session: str

    def show(self, width: int, height: int, phone: bool) -> None:
        """Gives the page a window of that size, in pixels of a style sheet."""
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": phone}
        self._devtools("Emulation.setDeviceMetricsOverride", metrics)

    def prefer_dark(self, dark: bool) -> None:
        feature = {"name": "prefers-color-scheme", "value": "dark" if dark else "light"}
        self._devtools("Emulation.setEmulatedMedia", {"features": [feature]})

    def open(self, url: str) -> None:
        """Returns when the page and all that is in it have been loaded."""
        _call(f"{self.session}/url", {"url": url})

    def run(self, script: str) -> Any:
        """What a script in the page returns."""
        return _call(f"{self.session}/execute/sync", {"script": script, "args": []})

    def messages(self) -> list[str]:
        """What the console was told since it was last asked."""
        entries = _call(f"{self.session}/se/log", {"type": "browser"})
        return [f"{entry['level'].lower()}: {entry['message']}" for entry in entries]

    def picture(self, file: Path) -> None:
        """Of the whole page, as far as the browser can draw it."""
        size = self._devtools("Page.getLayoutMetrics", {})["cssContentSize"]
        height = min(size["height"], _HIGHEST)
        clip = {"x": 0, "y": 0, "width": size["width"], "height": height, "scale": 1}
        how = {"captureBeyondViewport": True, "clip": clip}
        picture = self._devtools("Page.captureScreenshot", how)
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(base64.b64decode(picture["data"]))

    def _devtools(self, command: str, parameters: dict[str, Any]) -> Any:
        body = {"cmd": command, "params": parameters}
        return _call(f"{self.session}/goog/cdp/execute", body)


@contextmanager
def browser() -> Iterator[Browser]:
    with tempfile.TemporaryDirectory() as home, _driver(home) as driver:
        arguments = [*_ARGUMENTS, f"--user-data-dir={home}/profile"]
        wanted = {
            "browserName": "chrome",
            "goog:chromeOptions": {"args": arguments},
            "goog:loggingPrefs": {"browser": "ALL"},
        }
        made = _call(f"{driver}/session", {"capabilities": {"alwaysMatch": wanted}})
        session = f"{driver}/session/{made['sessionId']}"
        try:
            yield Browser(session)
        finally:
            _request(urllib.request.Request(session, method="DELETE"))


@contextmanager
def _driver(home: str) -> Iterator[str]:
    """The address of a chromedriver that leaves the home of its user alone."""
    with subprocess.Popen(
        ["chromedriver", "--port=0"],
        env={**os.environ, "HOME": home, "XDG_CONFIG_HOME": home, "XDG_CACHE_HOME": home},
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        text=True,
    ) as process:
        try:
            yield f"http://127.0.0.1:{_port(process)}"
        finally:
            process.terminate()


def _port(process: subprocess.Popen[str]) -> str:
    said = []
    for line in process.stdout or ():
        said.append(line)
        if found := _PORT.search(line):
            return found[1]
    raise BrowserError(f"chromedriver did not start: {''.join(said)}")


def _call(address: str, body: dict[str, Any]) -> Any:
    request = urllib.request.Request(
        address, json.dumps(body).encode(), {"Content-Type": "application/json"}
    )
    return _request(request)


def _request(request: urllib.request.Request) -> Any:
    try:
        with urllib.request.urlopen(request, timeout=_PATIENCE) as answer:
            return json.load(answer)["value"]
    except urllib.error.HTTPError as error:
        said = json.load(error)["value"]
        raise BrowserError(f"{said['error']}: {said['message']}") from error
