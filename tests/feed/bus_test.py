#!/usr/bin/python3
"""What the running feed says to the desktop and to the service manager, and hears of the machine.

    bus_test.py FEED
"""

import contextlib
import json
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent.with_name("desktop")))

from gi.repository import Gio, GLib  # noqa: E402
from home import ALARM, BROWSER, CREDENTIALS, REGIONS, Home, until  # noqa: E402
from services import connect  # noqa: E402

FEED = str(pathlib.Path(sys.argv[1]).resolve())
INTERFACE = "org.freedesktop.Notifications"
GIVEN = "".join(f'<arg type="{form}" direction="in"/>' for form in "s u s s s as a{sv} i".split())
DESKTOP = f"""<node>
  <interface name="{INTERFACE}">
    <method name="GetCapabilities"><arg type="as" direction="out"/></method>
    <method name="CloseNotification"><arg type="u" direction="in"/></method>
    <method name="Notify">{GIVEN}<arg type="u" direction="out"/></method>
  </interface>
</node>"""
SETTINGS = 'interval = 600\nnotify = {}\n[[watch]]\nprofile = "prod"\nregions = ["us-east-1"]\nignore = ["no{}"]\n'
LINK = "tessary://alarms/a?profile=prod&region=us-east-1"
PAGE = "https://us-east-1.console.aws.amazon.com/cloudwatch/deeplink.js?region=us-east-1#alarmsV2:alarm/h"

# What happens: the alarms in ALARM, the faults; and the notices that come of it.
ROUNDS = [
    ("it enters, and two more", "a b", {}, ["1! In ALARM: a | prod · us-east-1 / high", "2! In ALARM: b | prod · us-east-1 / high"]),
    ("one leaves", "a", {}, ["2: No longer in ALARM: b | prod · us-east-1"]),
    ("nobody could ask", "", {"us-east-1": "denied"}, []),
    ("it is as it was", "a", {}, []),
    ("to and fro", "a b", {}, []),
    ("a burst", "a & < > e f", {}, ["3! 5 alarms entered ALARM | &amp;, &lt;, &gt;, e, f"]),
    ("the end of a sign-in", "", {"key": "expired"}, ["4: The sign-in to prod has expired | ExpiredTokenException: The security token included in the request is expired; aws configure --profile prod"]),
    ("signed in, and another", "a & < > e f <g>", {}, ["closes 4", "5! In ALARM: <g> | prod · us-east-1 / high"]),
]


class Desktop:
    """Shows notices, and says what has come."""

    def __init__(self, address, *abilities):
        self.bus, self.abilities, self.hangs = connect(address), abilities, False
        self.news, self.shown = [], 0
        notifications = Gio.DBusNodeInfo.new_for_xml(DESKTOP).interfaces[0]
        self.bus.register_object("/org/freedesktop/Notifications", notifications, self.answer, None, None)
        Gio.bus_own_name_on_connection(self.bus, INTERFACE, 0, None, None)

    def answer(self, _bus, _sender, _path, _interface, method, words, call):
        if self.hangs:
            return
        if method == "GetCapabilities":
            call.return_value(GLib.Variant("(as)", (self.abilities,)))
        elif method == "CloseNotification":
            self.news.append(f"closes {words.unpack()[0]}")
            call.return_value(None)
        else:
            _, replaced, _, title, body, actions, hints, _ = words.unpack()
            has_link = "actions" in self.abilities and not title.startswith("Nothing")
            assert (actions == ["default", "Open"]) == has_link, actions
            self.shown += not replaced
            number, urgent = replaced or self.shown, hints["urgency"] == 2
            self.news.append(f"{number}{'!' if urgent else ':'} {title} | {body}".replace("\n", " / "))
            call.return_value(GLib.Variant("(u)", (number,)))

    def click(self, number):
        for name, form, word in ("ActivationToken", "(us)", "front"), ("ActionInvoked", "(us)", "default"), ("NotificationClosed", "(uu)", 2):
            self.bus.emit_signal(None, "/org/freedesktop/Notifications", INTERFACE, name, GLib.Variant(form, (number, word)))


class Machine:
    """A feed at work, its buses, and whoever has started it."""

    def __init__(self, home, ends):
        self.home, self.ends, self.turn, self.notify, self.heard = home, ends, 0, "true", []
        self.errors = home.folder / "errors"
        self.manager = ends.enter_context(socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM))
        self.manager.bind(str(home.folder / "manager"))
        threading.Thread(target=self.listen, daemon=True).start()
        words = "dbus-daemon --session --nofork --nosyslog --print-address".split()
        self.bus = ends.enter_context(subprocess.Popen(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True))
        ends.callback(self.bus.kill)
        self.address = self.bus.stdout.readline().strip()
        buses = "DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"
        home.environment |= dict.fromkeys(buses, self.address)
        home.write("bin/systemd-run", BROWSER).chmod(0o700)
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    def start(self, **more):
        with self.errors.open("a") as log:
            self.feed = subprocess.Popen([FEED], stderr=log, env=self.home.environment | more)
        self.ends.callback(self.feed.kill)

    def stop(self):
        start = time.monotonic()
        self.feed.send_signal(signal.SIGTERM)
        assert self.feed.wait(20) == 0 and time.monotonic() - start < 2

    def rounds(self):
        return self.home.memory.stat().st_mtime_ns if self.home.memory.exists() else 0

    def round(self, alarms, faults=None):
        """Has the feed, which may just have started, look at once: something else is to be watched."""
        REGIONS["us-east-1"]["MetricAlarms"] = [ALARM | {"AlarmName": name} for name in alarms.split()]
        self.home.write(".aws/credentials", CREDENTIALS)  # keys anew
        self.home.meet(faults or {})
        before = self.rounds()

        def nudge():
            self.turn += 1
            self.home.write(self.home.settings, SETTINGS.format(self.notify, self.turn))
            end = time.monotonic() + 2
            while self.rounds() == before and time.monotonic() < end:
                time.sleep(0.02)
            return self.rounds() != before

        until(nudge, f"a round with {alarms}")
        time.sleep(0.3)

    def listen(self):
        with contextlib.suppress(OSError):
            while words := self.manager.recv(4096).decode():
                self.heard.append(words)

    def opened(self):
        """What was called to open a page, and what it was told of this process's affairs."""
        until((self.home.folder / "opened").exists, "a page")
        time.sleep(0.2)
        return self.home.takes("opened")


def test_notices(machine, desktop):
    machine.start(NOTIFY_SOCKET=str(machine.home.folder / "manager"), WATCHDOG_USEC="1000000")
    until(lambda: "READY=1" in machine.heard, "the start")
    machine.round("")
    for what, alarms, faults, notices in ROUNDS:
        machine.round(alarms, faults)
        assert desktop.news == notices, f"{what}: {desktop.news}"
        desktop.news.clear()
    states = [words for words in machine.heard if words.startswith("STATUS=")]
    assert states[0] == "STATUS=0 firing in 1 target" and states[-1] == "STATUS=7 firing in 1 target", states
    assert "STATUS=1 firing in 1 target, 1 failed" in states and "STATUS=6 firing in 1 target, 1 paused" in states, states
    machine.heard.clear()
    time.sleep(2)
    assert len(machine.heard) > 2 and set(machine.heard) == {"WATCHDOG=1"}, machine.heard


def test_clicks(machine, desktop):
    """The manager opens what a service is clicked for, else the feed itself does."""
    desktop.click(1)
    first, *rest = machine.opened()
    words = "--user --collect --quiet --setenv=XDG_ACTIVATION_TOKEN=front --"
    assert first == f"{words} {FEED} open {LINK}" and rest == ["0077"], (first, rest)
    machine.stop()
    until(lambda: "STOPPING=1" in machine.heard, "the end")
    machine.start()
    machine.round("")
    machine.round("h")
    desktop.click(desktop.shown)
    first, *rest = machine.opened()
    assert first.startswith(PAGE) and rest[1:] == ["XDG_ACTIVATION_TOKEN=front"], (first, rest)
    desktop.news.clear()
    gone = subprocess.Popen([FEED, "open", "tessary://cloudwatch/metric?pin=gone"], env=machine.home.environment)
    until(lambda: desktop.news, "what a click leads to")
    assert desktop.news[0].endswith(": Nothing to open | no metric is pinned as 'gone' any more") and gone.wait(20) == 1, desktop.news


def test_restart(machine, desktop):
    machine.stop()
    desktop.news.clear()
    machine.start()
    machine.round("h i")
    assert [line.split(" | ")[0].partition(" ")[2] for line in desktop.news] == ["In ALARM: i"], desktop.news


def test_silence(machine, desktop):
    """Only nobody is told: what has changed meanwhile is no news later."""
    desktop.news.clear()
    machine.notify = "false"
    machine.round("h i j")
    assert json.loads(machine.home.alarms.read_text())["state"] == "watching"
    machine.notify = "true"
    machine.round("h i j k")
    assert len(desktop.news) == 1 and "In ALARM: k" in desktop.news[0], desktop.news


def test_wake(machine):
    """Many signs, one round."""
    login = connect(machine.address)
    Gio.bus_own_name_on_connection(login, "org.freedesktop.login1", 0, None, None)

    def seen(*states):
        rounds, end = {machine.rounds()}, time.monotonic() + 4
        for falls_asleep in states:
            words = GLib.Variant("(b)", (falls_asleep,))
            signal = "org.freedesktop.login1.Manager", "PrepareForSleep", words
            login.emit_signal(None, "/org/freedesktop/login1", *signal)
        while time.monotonic() < end:
            rounds.add(machine.rounds())
            time.sleep(0.02)
        return len(rounds) - 1

    assert seen(True) == 0 and seen(False, False) == 1


def test_others_at_fault(machine, desktop):
    """Nobody who shows anything, somebody who is stuck, another who can do nothing, and no bus."""
    before = len(machine.errors.read_text().splitlines())
    desktop.hangs = True
    machine.round("h i j")
    machine.round("h i j m")
    time.sleep(5.5)
    desktop.bus.close_sync()
    simple = Desktop(machine.address)
    until(lambda: len(simple.news) == 2, "all that was not shown yet")
    assert [line.split(" | ")[0] for line in simple.news] == ["1! In ALARM: m", "2: No longer in ALARM: k"], simple.news
    machine.round("h i j m <n>")
    assert simple.news[-1].startswith("3! In ALARM: <n> | "), simple.news
    machine.bus.kill()
    machine.round("h i j m <n> o")
    machine.round("h i j m <n> o p")
    lines = machine.errors.read_text().splitlines()[before:]
    assert [line.split("shown: ")[1] for line in lines] == ["Method call timed out", "there is no session bus"], lines
    machine.stop()


def main():
    with tempfile.TemporaryDirectory() as folder, contextlib.ExitStack() as ends:
        home = Home(pathlib.Path(folder))
        home.settings.write_text(SETTINGS.format("true", 0))
        ends.enter_context(home.cloud_watch())
        machine = Machine(home, ends)
        desktop = Desktop(machine.address, "actions", "body-markup")
        test_notices(machine, desktop)
        test_clicks(machine, desktop)
        test_restart(machine, desktop)
        test_silence(machine, desktop)
        test_wake(machine)
        test_others_at_fault(machine, desktop)


main()
