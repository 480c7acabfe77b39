#!/usr/bin/python3
"""Each fault run to its end: what the feed says, what its files hold, what the widgets show.

    faults_test.py FEED HASTY_FEED WIDGETS goldens/faults.txt      # compares with that

A case is the words of what happens to a call: a region's or the keys' fault, a variable of the
environment, `settings` and `aws` as a file (" / " ends a line, USUAL is the usual one), `pins` as a
number of them, `skew` of the other clock, `with` a program that runs the feed, `later` in seconds
when the widgets are looked at, `new` for a home where nothing is known yet, `well` for one that has
had a good round since, `real` for the program with the patience that people get, `open` for a link.
"""

import json
import pathlib
import re
import shlex
import shutil
import sys
import tempfile
import time

sys.dont_write_bytecode = True
from home import CREDENTIALS, PINS, SECRET, SETTINGS, TOKEN, Home  # noqa: E402

FEED, HASTY, PROGRAM, STORED = sys.argv[1:]


def counted(texts):
    return "; ".join(f"{texts.count(each)} × {each}" for each in sorted(set(texts)))


def files_of(home, start):
    for file in sorted(home.alarms.parent.iterdir()) if home.alarms.parent.exists() else []:
        if file.suffix != ".json":
            yield "left behind: " + file.name.strip("0123456789")
            continue
        text = json.loads(file.read_text())
        age = "now" if text["updatedMs"] >= start * 1000 else "before"
        if file == home.alarms:
            flags = [f"{each['firing']}{' paused' * each['authExpired']}{' failed' * each['failed']}" for each in text["targets"]]
            yield f"{file.name}: {text['state']}, {text['firing']} of {age}; " + ", ".join(flags)
        else:
            flags = [f"{len(each['points'])} points{' paused' * each['authExpired']}, {each.get('error')}" for each in text["pins"]]
            yield f"{file.name}: of {age}; " + counted(flags)


def widgets_of(home, at):
    checked = home.call(PROGRAM, "check")[1]
    assert checked.count(".json: usable") + checked.count("No such file") == 3, checked
    for widget in "alarms", "alarm", "metric":
        words = "render", widget, "--format", "text", "--at", str(at), "--family", "medium"
        shown = home.call(PROGRAM, *words)[1].split("\n")[1:-1]
        yield f"{widget}: " + " | ".join(shown)


def plain(line):
    """Without what differs: the time, OpenSSL's version, and which of several answers came first."""
    line = line.replace("ExpiredTokenException: The security token included in the request is expired", "the keys have expired")
    line = line.replace("Cut off at the end of the round: No answer", "No answer")
    line = line.replace("TLS connect error: error:", "OpenSSL: error:")  # as a later libcurl calls it
    return re.sub(r"é+", "é…", re.sub(r"\d+:\d\d", "HH:MM", re.sub(r"OpenSSL/[\d.]+", "OpenSSL", line)))


def happens(home, line):
    """Yields what a golden says of the case."""
    faults, variables, more, wrapper, later, call = {}, {}, {}, [], 0, [HASTY, "--once"]
    files = {"settings": SETTINGS + PINS, "aws": CREDENTIALS}
    names = {"PORT": home.port, "SECURE": home.secure_port, "HOME": str(home.folder), "LONG": "é" * 255}
    for word in shlex.split(line):
        name, _, value = word.partition("=")
        for each, text in (names | {"SECRET": SECRET, "TOKEN": TOKEN, "USUAL": files.get(name, "")}).items():
            value = value.replace(each, text)
        if name in ("new", "well"):
            shutil.rmtree(home.folder / ".local", ignore_errors=True)
        if name == "well":
            home.meet({})
            home.settings.write_text(SETTINGS + PINS)
            home.write(".aws/credentials", CREDENTIALS)
            assert home.call(FEED, "--once") == (0, "", "")
        elif name == "real":
            call[0] = FEED
        elif name == "open":
            call[1:] = ["open", value] if value else ["open"]
        elif name in files:
            files[name] = value.replace(" / ", "\n") + "\n"
        elif name == "pins":
            files["settings"] += "".join(PINS.partition("[[metric]]\n")[2].join(("[[metric]]\n", f"id = '{i}'\n")) for i in range(int(value)))
        elif name == "skew":
            more = {"skew": int(value)}
        elif name == "later":
            later = int(value)
        elif name == "with":
            wrapper = shlex.split(value)
        elif name.isupper():
            variables[name] = value
        elif name != "new":
            faults[name] = value.split(",") if "," in value else value
    home.settings.write_text(files["settings"])
    home.write(".aws/credentials", files["aws"])
    home.meet(faults, **more)
    if home.memory.exists():  # every series is due
        home.memory.write_text(re.sub(r'"seriesMs": \d+', '"seriesMs": 1', home.memory.read_text()))
    start = time.time()
    status, output, said = home.call(*wrapper, *call, **variables)
    home.kept_no_secret()
    yield f"ends with {status}" + (", printed something" if output else "")
    for name, text in names.items():
        said = said.replace(text, name)
    yield from ("! " + each.removeprefix("tessary-widgets-feed: ") for each in said.splitlines())
    if "open" in call:
        yield from home.takes("opened")
    else:
        yield from files_of(home, start)
        yield from widgets_of(home, time.time() + later)
    home.takes("come")


def main():
    stored, received = pathlib.Path(STORED), []
    with tempfile.TemporaryDirectory() as folder:
        home = Home(pathlib.Path(folder))
        with home.cloud_watch():
            for line in stored.read_text().splitlines():
                if line.startswith(("#", "$ ")):
                    received.append(line)
                if line.startswith("$ "):
                    received += map(plain, happens(home, line[2:]))
    text = "\n".join(received) + "\n"
    written = pathlib.Path(tempfile.gettempdir(), "received-" + stored.name)
    if text != stored.read_text():
        written.write_text(text)
        sys.exit(f"differs from what is stored; to look and to accept it:\n  diff {stored} {written}\n  cp {written} {stored}")


main()
