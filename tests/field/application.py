# SPDX-License-Identifier: Apache-2.0
"""An application that runs with the plug-in, and a real pointer over it. Needs xdotool and a display."""
import contextlib
import json
import os
import signal
import subprocess
import sys
import time

PATIENCE = 60  # seconds until the application shows its window


def pointer(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


class Application:
    def __init__(self, hovlets, folder, options, command, environment=None):
        """Starts the command, and writes its output to log.txt in the folder."""
        self.report = folder / "screen.json"
        self.report.unlink(missing_ok=True)
        with (folder / "log.txt").open("a", encoding="utf-8") as log:
            self.process = subprocess.Popen(
                [hovlets, "attach", "--report", self.report, "--setting", "HVKeyHideDelay=100",
                 "--setting", "HVKeyHideFadeDuration=0", *options, "--", *command],
                stdout=log, stderr=log, start_new_session=True, env={**os.environ, **(environment or {})})

    def screen(self):
        try:
            return json.loads(self.report.read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return {"shown": "", "title": "", "controls": []}

    def controls(self):
        """Waits until the controls on screen have stayed the same for a while."""
        end, last, since = time.monotonic() + PATIENCE, [], time.monotonic()
        while time.monotonic() < end:
            if self.process.poll() is not None:
                sys.exit(f"field: the application ended with status {self.process.returncode}")
            now = self.screen()["controls"]
            if now != last:
                last, since = now, time.monotonic()
            if last and time.monotonic() - since > 2:
                return last
            time.sleep(0.2)
        sys.exit("field: the application showed no controls")

    def start(self):
        """The controls of the main window, once messages about missing devices are closed."""
        controls = self.controls()
        if any(control["path"].startswith("QMessageBox") for control in controls):
            pointer("key", "Escape")
            controls = self.controls()
        return controls

    def waits_for(self, key, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            if self.screen()["shown"] == key:
                return True
            time.sleep(0.05)
        return False

    def shows(self, control):
        """Rests the pointer on a control; it moves a bit, like a hand."""
        for step in range(3):
            pointer("mousemove", control["x"] + step % 2, control["y"])
            if self.waits_for(control["key"], 2):
                return True
        return False

    def end(self):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(self.process.pid, signal.SIGKILL)  # its own session; applications may ask before they quit
        self.process.wait()


def picture(path):
    subprocess.run(["import", "-window", "root", path], check=False)
