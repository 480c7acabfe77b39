#!/usr/bin/env python3
"""The desktop program from its start to its end, on the screen and the bus that it finds.

    xvfb-run -a -s "-screen 0 1000x500x24" dbus-run-session -- python3 desktop_test.py PROGRAM MAKE_SAMPLE
"""

import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time

PROGRAM, MAKE_SAMPLE = sys.argv[1:]
SCREEN = (1000, 500)
SMALL, MEDIUM = (164, 164), (344, 164)


class Picture:
    """What is on the screen, without a window manager and before a black ground."""

    def __init__(self):
        self.bytes = subprocess.check_output("import -window root -depth 8 rgb:-".split())
        assert len(self.bytes) == SCREEN[0] * SCREEN[1] * 3

    def part(self, x, y, width, height):
        rows = range(y, y + height)
        return b"".join(self.bytes[3 * (row * SCREEN[0] + x) :][: 3 * width] for row in rows)

    def has_card(self, x, y, size):
        """Something from edge to edge, round corners, and nothing beyond."""
        width, height = size
        edges = [
            self.part(x, y + height // 2, 1, 1),
            self.part(x + width - 1, y + height // 2, 1, 1),
            self.part(x + width // 2, y, 1, 1),
            self.part(x + width // 2, y + height - 1, 1, 1),
        ]
        corner = self.part(x, y, 3, 3) + self.part(x + width - 3, y + height - 3, 3, 3)
        beyond = self.part(x - 8, y - 8, width + 16, 8) + self.part(x + width, y - 8, 8, height + 16)
        return all(map(any, edges)) and not any(corner) and not any(beyond)


def until(holds, what):
    """Waits for something to be true, and returns it."""
    end = time.monotonic() + 15
    while time.monotonic() < end:
        if found := holds():
            return found
        time.sleep(0.02)
    raise AssertionError(f"never: {what}")


def call(*words):
    run = subprocess.run([PROGRAM, *words], capture_output=True, text=True, timeout=20)
    return run.returncode, run.stdout, run.stderr


def expect(words, status, output="", complaint=""):
    found = call(*words.split())
    assert found == (status, output, complaint and f"tessary-widgets-desktop: {complaint}\n"), (
        words,
        found,
    )


def children(process):
    tasks = pathlib.Path(f"/proc/{process.pid}/task").glob("*/children")
    return [int(pid) for task in tasks for pid in task.read_text().split()]


def replace_files(container, state):
    """Sets the files to a state as the host application does, each by a rename."""
    made = container.parent / state
    subprocess.check_call([MAKE_SAMPLE, made, "--state", state], stdout=subprocess.DEVNULL)
    for file in (made / "widgets").iterdir():
        os.replace(file, container / "widgets" / file.name)


def start(container, complaints):
    return subprocess.Popen([PROGRAM, "--container", container], stderr=complaints)


def without_a_desktop(state_file):
    expect("--list", 0)
    expect("--quit", 1, complaint="no desktop runs")
    expect("--add alarms", 0, "1\n")
    expect("--add metric --family medium", 0, "2\n")
    expect("--remove 3", 1, complaint="there is no widget 3")
    expect("--add", 2, complaint="Missing argument for --add, expected an option that --help names")
    expect("--list", 0, "1  alarms  small  20,20\n2  metric  medium  20,220\n")
    assert [w["number"] for w in json.loads(state_file.read_text())["widgets"]] == [1, 2]


def shows_what_changes(desktop, container):
    card = (20, 20, *SMALL)
    until(lambda: Picture().has_card(20, 20, SMALL), "the first widget")
    until(lambda: Picture().has_card(20, 220, MEDIUM), "the second widget")
    firing = Picture().part(*card)
    replace_files(container, "quiet")
    quiet = until(lambda: (now := Picture().part(*card)) != firing and now, "quiet alarms")
    killed = until(lambda: children(desktop), "an extension")
    for pid in killed:
        os.kill(pid, signal.SIGKILL)
    until(lambda: not children(desktop), "its end")
    replace_files(container, "firing")
    until(lambda: Picture().part(*card) != quiet, "firing alarms")
    assert not set(children(desktop)) & set(killed)


def obeys_calls(desktop, container, complaints, state_file):
    expect("", 0)  # runs already
    expect("--container /elsewhere", 1, complaint=f"the desktop that runs shows {container}, --quit ends it")
    expect("--add alarm --pin queue-age --position 400,20", 0, "3\n")
    until(lambda: Picture().has_card(400, 20, SMALL), "the third widget")
    expect("--edit 3 --family medium", 0)
    until(lambda: Picture().has_card(400, 20, MEDIUM), "the third widget, larger")
    before = Picture().part(400, 20, *MEDIUM)
    expect("--edit 3 --pin api-latency-p99", 0)
    until(lambda: Picture().part(400, 20, *MEDIUM) != before, "another pin")
    expect("--reload", 0)
    assert json.loads(call("--list", "--json")[1]) == json.loads(state_file.read_text())
    subprocess.check_call("xdotool mousemove 100 100 click 1".split())
    until(lambda: "no program is installed that opens tessary://" in complaints.read_text(), "a note")
    until(lambda: not children(desktop), "the end of an extension that nobody asks")
    assert desktop.poll() is None
    # The menu's second entry, by the keyboard.
    subprocess.check_call("xdotool mousemove 500 100 click 3 sleep 0.5 key Down Down Return".split())
    until(lambda: not any(Picture().part(400, 20, *MEDIUM)), "the third widget's going")
    expect("--list", 0, "1  alarms  small  20,20\n2  metric  medium  20,220\n")
    expect("--quit", 0)
    assert desktop.wait(10) == 0
    assert not any(Picture().bytes)


def starts_again(container, complaints, state_file):
    with complaints.open("w") as log:
        desktop = start(container, log)
        until(lambda: Picture().has_card(20, 220, MEDIUM), "the second widget, again")
        desktop.terminate()
        assert desktop.wait(10) == 0
    assert complaints.read_text() == ""
    state_file.write_text("{")
    aside = f"{state_file}.unreadable-1"
    expect("--list", 0, complaint=f"{state_file} is unreadable and was set aside as {aside}")
    assert pathlib.Path(aside).read_text() == "{"


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        os.environ |= {"XDG_CONFIG_HOME": f"{folder}/config", "XDG_DATA_HOME": f"{folder}/data"}
        os.environ |= {"XDG_DATA_DIRS": f"{folder}/none", "NO_AT_BRIDGE": "1", "LC_ALL": "C.UTF-8"}
        state_file = folder / "config/tessary-widgets/desktop.json"
        container, complaints = folder / "container", folder / "complaints"
        subprocess.check_call([MAKE_SAMPLE, container], stdout=subprocess.DEVNULL)
        without_a_desktop(state_file)
        with complaints.open("w") as log:
            desktop = start(container, log)
            try:
                shows_what_changes(desktop, container)
                obeys_calls(desktop, container, complaints, state_file)
            finally:
                desktop.kill()
        starts_again(container, complaints, state_file)


main()
