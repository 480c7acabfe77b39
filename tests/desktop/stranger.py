#!/usr/bin/python3
"""Stands in for the extension's program beside a copy of the desktop, and means it no good.

The file "acts" beside it has a word for each of its starts, of which the last stays. All but timelines
it lets the program answer that the file "real" names; one timeline it answers as its word says, and ends.
A good answer leaves the file "good".
"""

import base64
import json
import pathlib
import subprocess
import sys

FOLDER = pathlib.Path(__file__).parent
MEGABYTE = 1 << 20


def next_act():
    words = (FOLDER / "acts").read_text().split()
    if words[1:]:
        (FOLDER / "acts").write_text(" ".join(words[1:]))
    return words[0]


def write(bytes_):
    sys.stdout.buffer.write(bytes_)
    sys.stdout.flush()


def with_pictures(reply, changed):
    for entry in reply["entries"]:
        entry["picture"] = base64.b64encode(changed(base64.b64decode(entry["picture"]))).decode()
    return reply


def perform(act, reply):
    entries = reply["entries"]
    if act == "deep":
        return write(b'{"id":%d,"x":%s\n' % (reply["id"], b"[" * 5 * MEGABYTE))
    if act == "endless":
        return write(b" " * 70 * MEGABYTE)
    if act == "noisy":
        return sys.stderr.write("no\x1bpaper\n" * MEGABYTE)
    if act == "many":
        reply["entries"] = entries * 20
    if act == "large":
        side = (20_000).to_bytes(4, "big")
        with_pictures(reply, lambda png: png[:16] + side + side + png[24:])
    if act == "cut":
        with_pictures(reply, lambda png: png[:8])
    if act in ("file:///", "TESSARY://x", "none"):
        for entry in entries:
            entry["url"] = None if act == "none" else act
    if act != "ends":
        write(json.dumps(reply).encode() + b"\n")
    if act == "good":
        (FOLDER / "good").touch()


act = next_act()
if act == "silent":
    sys.stdin.read()
for line in sys.stdin.buffer:
    words = [(FOLDER / "real").read_text(), *sys.argv[1:]]
    answered = subprocess.run(words, input=line, capture_output=True, check=True).stdout
    if json.loads(line)["request"] == "timeline":
        perform(act, json.loads(answered))
        break
    write(answered)
