# SPDX-License-Identifier: Apache-2.0
"""An application that runs with the plug-in, and a real pointer over it. Needs xdotool and a display."""
import contextlib
import json
import os
import signal
import subprocess
import sys
import time
from pathlib import Path

PATIENCE = 60  # seconds until the application shows its window
GREETINGS = {"QMessageBox": "Escape", "QG_DlgInitial": "Return"}  # windows at the start, and what closes them


def pointer(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def read_plan(name):
    """The lines of a file beside this one, in columns."""
    lines = (Path(__file__).parent / name).read_text(encoding="utf-8").splitlines()
    return [line.split("\t") for line in lines if line and not line.startswith("#")]


class Application:
    def __init__(self, hovlets, folder, plan, options, command, environment=None):
        """Starts the command, and writes its output to log.txt in the folder."""
        self.first = [line[1:] for line in plan if line[0] == "click"]
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
        """The controls of the main window, once greetings are closed and the plan's clicks are done."""
        controls = self.controls()
        for window, key in GREETINGS.items():
            if any(control["path"].startswith(window) for control in controls):
                pointer("key", key)
                controls = self.controls()
        while self.first:
            kind, key = self.first.pop(0)
            control = next((each for each in controls if each["kind"] == kind and each["key"] == key), None)
            if not control:
                sys.exit(f"field: there is no {kind} {key} to click")
            pointer("mousemove", control["x"], control["y"], "click", 1)
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


def print_table(rows):
    """Rows of columns, the first of which says whether the entry showed."""
    widths = [max((len(row[column]) for row in rows), default=0) for column in range(1, len(rows[0]) if rows else 1)]
    for shown, *columns in rows:
        cells = [f"{cell:{width}}" for cell, width in zip(columns, widths)]
        print("  ".join(["yes" if shown else "NO ", *cells]).rstrip())


def counts(rows):
    """How many entries showed of each kind of control, the kind being the second column."""
    kinds = dict.fromkeys(row[1] for row in rows)
    return ", ".join(f"{kind} {sum(1 for row in rows if row[1] == kind and row[0])}"
                     f"/{sum(1 for row in rows if row[1] == kind)}" for kind in kinds)


def picture(path):
    subprocess.run(["import", "-window", "root", path], check=False)
