#!/usr/bin/python3
"""The desktop program from its start to its end, on a screen and a bus of the test's own.

    desktop_test.py X11 PROGRAM MAKE_SAMPLE      # or Wayland
"""

import contextlib
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
from screens import CORNER, WaylandScreen, X11Screen, until  # noqa: E402
from services import Logind, heard, spoken  # noqa: E402

SKIPPED = 77
SCREEN, PROGRAM, MAKE_SAMPLE = sys.argv[1:]
WIDGETS = pathlib.Path(PROGRAM).with_name("tessary-widgets")
FIRST, FIRST_NUMBER = (20, 20, 164, 164), (30, 80, 100, 50)
SECOND = (20, 220, 344, 164)
THIRD, THIRD_MEDIUM = (400, 20, 164, 164), (400, 20, 344, 164)
DRAGGED, DRAGGED_SMALL = (516, 80, 344, 164), (696, 80, 164, 164)
BESIDE_FIRST = (190, 20, 200, 180)
TWO_WIDGETS = "1  alarms  small  20,20\n2  metric  medium  20,220{}\n"


def call(*words):
    run = subprocess.run([PROGRAM, *words], capture_output=True, text=True, timeout=20)
    return run.returncode, run.stdout, run.stderr


def expect(words, status, output="", complaint=""):
    found = call(*words.split())
    wanted = (status, output, complaint and f"tessary-widgets-desktop: {complaint}\n")
    assert found == wanted, f"{words}: expected {wanted}, found {found}"


class Room:
    """A screen and a user's folders, where the desktop is started and looked at."""

    def __init__(self, folder, screen):
        self.screen = screen
        os.environ |= {"XDG_CONFIG_HOME": f"{folder}/config", "XDG_DATA_HOME": f"{folder}/data"}
        os.environ |= {"XDG_DATA_DIRS": "/usr/share", "GSETTINGS_BACKEND": "memory"}
        os.environ |= {"LC_ALL": "C.UTF-8"}
        self.state = folder / "config/tessary-widgets/desktop.json"
        self.container, self.complaints = folder / "container", folder / "complaints"
        self.programs, self.opened = folder / "data/applications", folder / "opened"
        self.complaints.touch()
        subprocess.check_call([MAKE_SAMPLE, self.container])

    def start(self, *words, program=PROGRAM):
        words = words or ("--container", self.container)
        with self.complaints.open("w") as log:
            self.desktop = self.screen.start([program, *words], stderr=log)

    def end(self):
        assert self.desktop.wait(10) == 0
        until(lambda: self.screen.picture().is_bare(), "an empty screen")

    def change_alarms(self, state):
        """Replaces their file as the host application does, by a rename."""
        made = self.container.with_name(state)
        subprocess.check_call([MAKE_SAMPLE, made, "--state", state])
        (made / "widgets/alarms.json").rename(self.container / "widgets/alarms.json")

    def until_said(self, words, widget="CloudWatch metric"):
        said = lambda: spoken("tessary-widgets-desktop").get(widget, "")
        until(lambda: said().startswith(words), f"to be read to a user: {words}")

    def until_heard(self, words, there=True):
        holds = lambda: (words in heard("tessary-widgets-desktop")) == there
        until(holds, f"{'' if there else 'no '}words for a user: {words}")

    def look(self, *part):
        return self.screen.picture().part(*part)

    def until_gallery(self, scale):
        """It has a widget's number as that is drawn for so many pixels a point."""
        self.screen.await_window("Add a Widget")
        words = f"render alarms --family medium --preview --scale {scale} --container".split()
        drawn = subprocess.check_output([WIDGETS, *words, self.container])
        pixels = subprocess.check_output("convert - -depth 8 rgb:-".split(), input=drawn)
        rows = (pixels[3 * 344 * scale * y :] for y in range(70 * scale, 85 * scale))
        parts = [row[60 * scale : 240 * scale] for row in rows]
        until(lambda: self.screen.picture().holds(parts), "a widget's own pixels")

    def until_card(self, *card):
        until(lambda: self.screen.picture().has_card(*card), f"a card at {card}")

    def until_other(self, before, part, what):
        return until(lambda: (now := self.look(*part)) != before and now, what)

    def until_again(self, before, part, what):
        until(lambda: self.look(*part) == before, what)

    def until_noted(self, words):
        until(lambda: words in self.complaints.read_text(), f"the note: {words}")


NOTHING_PLACED = '{\n  "widgets": []\n}\n'
HINT = "No alarms are watched yet. To begin, type tessary-widgets-feed watch in a terminal."


def without_a_desktop(room):
    expect("--list", 0, complaint=HINT)
    expect("--list --info /none", 0, complaint=HINT)
    expect("--list --json", 0, NOTHING_PLACED)
    expect("--quit", 1, complaint="no desktop runs")
    expect("--add alarms", 0, "1\n")
    expect("--add metric --family medium", 0, "2\n")
    expect("--remove 3", 1, complaint="there is no widget 3")
    expect("--add clock", 2, complaint="--add: 'clock' is not one of alarms, metric, alarm")
    expect("--add", 2, complaint="--add lacks its value: expected WIDGET")
    expect("--list", 0, TWO_WIDGETS.format(""))
    assert [w["number"] for w in json.loads(room.state.read_text())["widgets"]] == [1, 2]


def says_how_to_begin(room):
    """For as long as there is no file."""
    container = room.container.with_name("bare")
    room.start("--container", container)
    room.until_noted(HINT)
    expect("--gallery", 0, complaint=HINT)
    room.until_gallery(scale=1)
    room.until_heard("tessary-widgets-feed watch")
    subprocess.check_call([MAKE_SAMPLE, container])
    room.until_heard("tessary-widgets-feed watch", False)
    shutil.rmtree(container / "widgets")
    room.until_heard("tessary-widgets-feed watch")
    expect("--quit", 0)
    room.end()


def shows_what_changes(room):
    room.until_card(*FIRST)
    room.until_card(*SECOND)
    firing = room.look(*FIRST_NUMBER)
    room.change_alarms("quiet")
    room.until_other(firing, FIRST_NUMBER, "the number of quiet alarms")
    room.change_alarms("firing")
    room.until_again(firing, FIRST_NUMBER, "the number of firing alarms")


def hides_while_locked(room, logind):
    room.until_said("orders-db CPU\nprod · us-east-1\n57.6%")
    for lock in logind.lock, logind.hint:
        lock(True)
        room.until_said("CloudWatch metric\nHidden while locked")
        lock(False)
        room.until_said("orders-db CPU")
    logind.lock(True, "38")  # another's, of which nothing is to be seen later


def obeys_calls(room):
    expect("", 0)  # runs already
    elsewhere = f"the desktop that runs shows {room.container}, --quit ends it"
    expect("--container /elsewhere", 1, complaint=elsewhere)
    expect("--add alarm --pin queue-age --position 400,20", 0, "3\n")
    room.until_card(*THIRD)
    expect("--edit 3 --family medium", 0)
    room.until_card(*THIRD_MEDIUM)
    before = room.look(*THIRD_MEDIUM)
    expect("--edit 3 --pin api-latency-p99", 0)
    room.until_other(before, THIRD_MEDIUM, "another pin")
    expect("--reload", 0)
    assert json.loads(call("--list", "--json")[1]) == json.loads(room.state.read_text())
    room.until_said("orders-db CPU")


def listed(room, words):
    until(lambda: words in call("--list")[1], f"in the list: {words}")


def opens_windows(room):
    expect("--edit 1", 1, complaint="widget 1 shows no pin")
    expect("--edit 3", 0)
    room.screen.await_window("Choose a Pinned alarm")
    room.screen.keys("Down", "Down", "Down", "Return")
    listed(room, "3  alarm  medium  400,20  ingest-lambda-errors\n")
    expect("--edit 3", 0)
    room.screen.await_window("Choose a Pinned alarm")
    room.screen.keys(*"prod", "space", *"queue", "Return")
    listed(room, "3  alarm  medium  400,20  queue-age\n")
    expect("--gallery", 0)
    room.until_gallery(scale=1)
    room.screen.keys(*["Tab"] * 4, "Return")
    listed(room, "\n4  metric  medium  ")
    listed(room, "  orders-db CPU\n")
    room.screen.keys("Escape")
    expect("--edit 4", 0)
    room.screen.await_window("Choose a Pinned metric")
    expect("--remove 4", 0)
    until(lambda: not room.screen.has_window("Choose a Pinned metric"), "the end of a removed widget's editor")
    room.until_card(*THIRD_MEDIUM)


def choose_in_menu(room, row):
    below = 760, 160, 20, 20
    before = room.look(*below)

    def opens():
        """A click that meets the window on its way may be lost, as a user's may."""
        room.screen.click(750, 150, button=3)
        with contextlib.suppress(AssertionError):
            return until(lambda: room.look(*below) != before, "the menu", 4)

    until(opens, "the menu")
    room.screen.keys(*["Down"] * row, "Return")


def obeys_the_pointer(room):
    room.screen.click(100, 100)
    room.until_noted("no program is installed that opens tessary://alarms\n")
    room.screen.move(100, 100)
    until(lambda: not room.screen.picture().is_bare(*BESIDE_FIRST), "the tooltip")
    room.screen.focus("Alarms firing")
    for keys, place in (("Right", "Down"), "40,40"), (("Left", "Up"), "20,20"):
        room.screen.keys(*keys)
        listed(room, f"1  alarms  small  {place}\n")
    room.screen.move(*CORNER)
    room.screen.drag(500, 100, 118, 63)
    room.until_card(*DRAGGED)
    listed(room, "3  alarm  medium  -140,80  queue-age\n")
    choose_in_menu(room, 2)
    room.until_card(*DRAGGED_SMALL)
    choose_in_menu(room, 3)
    until(lambda: room.screen.picture().is_bare(*DRAGGED), "the third widget's going")
    expect("--list", 0, TWO_WIDGETS.format("  orders-db CPU"))


def comes_back_with_its_monitor(room):
    if room.screen.unplug(True):
        until(lambda: room.screen.picture().is_bare(), "an empty screen")
        room.screen.unplug(False)
        room.until_card(*FIRST)
        room.until_card(*SECOND)
    expect("--quit", 0)
    room.end()


def install_a_program(room):
    """One that writes down the links it is to open."""
    script = room.opened.with_suffix(".sh")
    script.write_text(f'#!/bin/sh\necho "$1" >>"{room.opened}"\n')
    script.chmod(0o755)
    entry = f"[Desktop Entry]\nType=Application\nName=Opener\nExec={script} %u\n"
    room.programs.mkdir(parents=True)
    (room.programs / "opener.desktop").write_text(f"{entry}MimeType=x-scheme-handler/tessary;\n")
    defaults = "[Default Applications]\nx-scheme-handler/tessary=opener.desktop\n"
    (room.programs / "mimeapps.list").write_text(defaults)


def starts_again(room, logind):
    install_a_program(room)
    logind.locked = True
    room.start()
    room.until_card(*FIRST)
    room.until_card(*SECOND)
    room.until_said("CloudWatch metric\nHidden while locked")
    logind.hint(False)
    room.until_said("orders-db CPU")
    room.screen.click(100, 300)
    link = "tessary://cloudwatch/metric?pin=orders-db%20CPU\n"
    until(lambda: room.opened.exists() and room.opened.read_text() == link, f"opened: {link}")
    expect("--open 1", 0)
    link += "tessary://alarms\n"
    until(lambda: room.opened.exists() and room.opened.read_text() == link, f"opened: {link}")
    room.desktop.terminate()
    room.end()
    assert (noted := room.complaints.read_text()) == "", noted
    room.state.write_text("{")
    aside = f"{room.state}.unreadable-1"
    unreadable = f"{room.state} is unreadable and was set aside as {aside}"
    expect("--list --json", 0, NOTHING_PLACED, unreadable)
    assert pathlib.Path(aside).read_text() == "{"


def follows_its_dictionary(room, logind):
    """To the group that it names, and to another once it names that."""
    groups = room.programs.with_name("group-containers")
    for name, state in ("one", "firing"), ("two", "quiet"):
        subprocess.check_call([MAKE_SAMPLE, groups / name, "--state", state])
    info = room.container.with_name("info.json")
    logind.locked = False
    info.write_text('{"TessaryAppGroup": "one"}')
    expect("--add alarms", 0, "1\n")
    room.start("--info", info)
    room.until_card(*FIRST)
    firing = room.look(*FIRST_NUMBER)
    info.write_text('{"TessaryAppGroup": "two"}')
    room.until_other(firing, FIRST_NUMBER, "the number of the other group's alarms")
    shown = f"the desktop that runs shows {groups / 'two'}, --quit ends it"
    expect("--container /elsewhere", 1, complaint=shown)
    expect("--remove 1", 0)
    expect("--quit", 0)
    room.end()


MISDEEDS = {
    "deep": "/x: expected nesting at most 32 deep, found more",
    "endless": "answers with a line without end",
    "many": "a timeline of 100 entries",
    "large": "a picture of 20000 × 20000 pixels, not 164 × 164",
    "cut": "a picture that is no whole PNG",
    "noisy": "complains without end",
}


FEED = """#!/bin/sh
cd "$(dirname "$0")"
echo "$@" >>calls
if test "$1" = pin; then mv pins "$5/widgets/alarm-pins.json"; fi
cat "$1"
"""


def pins_another(room):
    """What a script in the feed's place has found, and only then puts into the file."""
    folder = room.container.with_name("account")
    folder.mkdir()
    desktop = shutil.copy(PROGRAM, folder)
    (folder / "tessary-widgets").symlink_to(WIDGETS)
    (folder / "tessary-widgets-feed").write_text(FEED)
    (folder / "tessary-widgets-feed").chmod(0o755)
    file = room.container / "widgets/alarm-pins.json"
    pins = json.loads(file.read_text())
    file.rename(folder / "pins")
    new, place = "queue-age", {"profile": "prod", "region": "us-east-1"}
    file.write_text(json.dumps(pins | {"pins": [p for p in pins["pins"] if p["id"] != new]}))
    found = [place | {"name": n, "id": n, "pinned": n != new} for n in ("orders-db-cpu-high", new)]
    (folder / "alarms").write_text(json.dumps({"alarms": found, "faults": [], "more": False}))
    (folder / "pin").write_text(json.dumps({"pins": [{"id": new}], "faults": []}))
    expect("--add alarm --pin orders-db-cpu-high --position 20,20", 0, "1\n")
    room.start("--container", room.container, program=desktop)
    room.until_card(*FIRST)
    before = room.look(*FIRST_NUMBER)
    expect("--edit 1", 0)
    room.screen.await_window("Choose a Pinned alarm")
    room.until_heard("orders-db-cpu-high")
    room.screen.keys("Tab", "Tab", "Return")
    room.screen.await_window("Pin Another Alarm")
    room.screen.keys(*"prod", "space", *"queue")
    room.until_heard("queue-age")
    room.screen.keys("Return")
    listed(room, "1  alarm  small  20,20  queue-age\n")
    room.until_other(before, FIRST_NUMBER, "another alarm")
    where = f"--json --container {room.container}"
    pinned = f"pin alarm {where} --profile prod --region us-east-1 -- queue-age\n"
    assert (folder / "calls").read_text() == f"alarms {where}\n{pinned}"
    expect("--remove 1", 0)
    expect("--quit", 0)
    room.end()


def survives_a_stranger(room):
    """In the extension's place: the last picture stays, and tells after a while that it is one."""
    folder = room.container.with_name("stranger")
    folder.mkdir()
    desktop = shutil.copy(PROGRAM, folder)
    shutil.copy(pathlib.Path(__file__).with_name("stranger.py"), folder / "tessary-widgets")
    (folder / "real").write_text(str(WIDGETS))

    def act(words):
        (folder / "next").write_text(words)
        (folder / "next").rename(folder / "acts")

    expect("--add alarms", 0, "1\n")
    act("silent good")
    asking = room.screen.start([desktop, "--add", "alarms"])
    until(lambda: (folder / "acts").read_text() == "good", "its question for the widgets")
    room.start(program=desktop)
    room.until_card(*FIRST)
    assert room.desktop.poll() is None, "a call has taken the desktop's place"
    asking.kill()
    good = room.look(*FIRST_NUMBER)
    for misdeed, noted in MISDEEDS.items():
        (folder / "good").unlink()
        act(f"{misdeed} good")
        expect("--reload", 0)
        room.until_noted(noted)
        until((folder / "good").exists, f"a good answer after {misdeed}")
        assert room.look(*FIRST_NUMBER) == good, f"the picture after {misdeed}"
    room.until_noted("extension: no␛paper\n")
    room.until_noted(" bytes more left out\n")
    opens_its_own_links_alone(room, act)
    act("ends")
    expect("--reload", 0)
    because = "This widget could not be brought up to date: the extension ended without an answer"
    room.until_said(because, "Alarms firing")
    room.until_other(good, FIRST_NUMBER, "a dimmed number")
    later = "the widget is added, but cannot be shown yet: the extension ended without an answer"
    expect("--add alarms", 0, "2\n", later)
    act("good")
    room.screen.click(100, 100)
    room.until_again(good, FIRST_NUMBER, "the number, no longer dimmed")
    expect("--remove 1", 0)
    expect("--remove 2", 0)
    expect("--quit", 0)
    room.end()


def opens_its_own_links_alone(room, act):
    refused = "tessary-widgets-desktop: file:/// is not opened: only tessary: links are\n"
    for link, said, opened in (
        ("file:///", (1, "", refused), "\n"),
        ("TESSARY://x", (0, "", ""), "\nTESSARY://x\n"),
        ("none", (0, "", ""), "\n\n"),
    ):
        act(f"{link} good")
        expect("--reload", 0)
        done = lambda: call("--open", "1") == said and room.opened.read_text().endswith(opened)
        until(done, f"what opening {link} leads to")
    assert "file:" not in room.opened.read_text()


def draws_sharply(room):
    room.screen.refine()
    expect("--add metric", 0, "1\n")
    room.start()
    until(lambda: not room.screen.picture().is_bare(), "a card")
    expect("--gallery", 0)
    room.until_gallery(scale=2)
    room.change_alarms("quiet")
    room.until_gallery(scale=2)
    expect("--quit", 0)
    room.end()


def story(room):
    logind = Logind()
    says_how_to_begin(room)
    without_a_desktop(room)
    room.start()
    shows_what_changes(room)
    hides_while_locked(room, logind)
    obeys_calls(room)
    opens_windows(room)
    obeys_the_pointer(room)
    comes_back_with_its_monitor(room)
    starts_again(room, logind)
    follows_its_dictionary(room, logind)
    pins_another(room)
    survives_a_stranger(room)
    draws_sharply(room)


def main():
    kind = {"X11": X11Screen, "Wayland": WaylandScreen}[SCREEN]
    if not kind.is_possible():
        print(f"skipped: no {SCREEN} screen is possible here")
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory() as name, kind(name) as screen:
        room = Room(pathlib.Path(name), screen)
        try:
            story(room)
        except BaseException:
            last = tempfile.NamedTemporaryFile(suffix=".png", delete=False).name
            screen.picture().save(last)
            print(f"the last picture: {last}", room.complaints.read_text(), file=sys.stderr)
            raise


main()
