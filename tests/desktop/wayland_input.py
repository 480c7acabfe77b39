"""A mouse and a keyboard for a Wayland compositor that has none, by its protocols for virtual ones.

    devices = VirtualInput("/tmp/wayland-1", (1000, 500))
    devices.move(100, 100)
    devices.button(1, True)
"""

import itertools
import socket
import struct
import tempfile
import time

DISPLAY = 1  # the object that every client begins with
BUTTONS = {1: 0x110, 3: 0x111}
ROWS = {2: "1234567890", 16: "qwertyuiop", 30: "asdfghjkl", 44: "zxcvbnm"}
KEYS = {key: first + at for first, row in ROWS.items() for at, key in enumerate(row)}
KEYS |= {"Escape": 1, "minus": 12, "Tab": 15, "Return": 28, "space": 57}
KEYS |= {"Up": 103, "Left": 105, "Right": 106, "Down": 108}
LAYOUT = b"""xkb_keymap {
    xkb_keycodes { include "evdev" }; xkb_types { include "complete" };
    xkb_compat { include "complete" }; xkb_symbols { include "pc+us+inet(evdev)" };
};\0"""


def encoded(word):
    if isinstance(word, int):
        return struct.pack("<I", word)
    text = word.encode() + b"\0"
    return struct.pack("<I", len(text)) + text + b"\0" * (-len(text) % 4)


class VirtualInput:
    def __init__(self, address, size):
        self.size, self.ids, self.interfaces = size, itertools.count(2), {}
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.settimeout(15)
        self.socket.connect(address)
        self.incoming = self.socket.makefile("rb")
        self.registry = self.make(DISPLAY, 1)
        self.wait()
        seat = self.bind("wl_seat")
        self.pointer = self.make(self.bind("zwlr_virtual_pointer_manager_v1"), 0, seat)
        self.keyboard = self.make(self.bind("zwp_virtual_keyboard_manager_v1"), 0, seat)
        with tempfile.TemporaryFile(buffering=0) as file:
            file.write(LAYOUT)
            self.send(self.keyboard, 0, 1, len(LAYOUT), files=[file.fileno()])
            self.wait()

    def send(self, target, request, *words, files=()):
        body = b"".join(map(encoded, words))
        head = struct.pack("<II", target, 8 + len(body) << 16 | request)
        socket.send_fds(self.socket, [head + body], files)

    def make(self, target, request, *words):
        """Sends a request whose last word is the number of a new object, and returns that."""
        self.send(target, request, *words, new := next(self.ids))
        return new

    def bind(self, interface):
        return self.make(self.registry, 0, self.interfaces[interface], interface, 1)

    def wait(self):
        """Reads until the compositor has carried out all requests."""
        done, target = self.make(DISPLAY, 0), None
        while target != done:
            target, head = struct.unpack("<II", self.incoming.read(8))
            body = self.incoming.read((head >> 16) - 8)
            assert (target, head & 0xFFFF) != (DISPLAY, 0), f"the compositor refuses: {body}"
            if target == self.registry:
                number, length = struct.unpack_from("<II", body)
                self.interfaces[body[8 : 7 + length].decode()] = number

    def tell(self, device, request, *words):
        self.send(device, request, int(time.monotonic() * 1000) & 0xFFFFFFFF, *words)
        if device == self.pointer:
            self.send(device, 4)  # which makes one change of it
        self.wait()

    def move(self, x, y):
        self.tell(self.pointer, 1, x, y, *self.size)

    def button(self, number, down):
        self.tell(self.pointer, 2, BUTTONS[number], int(down))

    def keys(self, *names):
        for name in names:
            self.tell(self.keyboard, 1, KEYS[name], 1)
            self.tell(self.keyboard, 1, KEYS[name], 0)
