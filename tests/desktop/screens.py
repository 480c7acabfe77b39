"""The screens that the desktop is tested on, each with a bus of its own. Both end what they started.

    with WaylandScreen(folder) as screen:  # the folder is the screen's to fill
        screen.start(["gtk3-demo"])        # finds it in the environment
        screen.click(100, 100)
        screen.keys("q", "Return")
        screen.picture().save("after.png")
"""

import contextlib
import os
import pathlib
import shutil
import subprocess
import time

from wayland_input import VirtualInput

SIZE = WIDTH, HEIGHT = 1000, 500
CORNER = WIDTH - 1, HEIGHT - 1  # where the pointer waits
GROUND = "#204060"  # which no card is of
NOBODY = 65534


def until(holds, what, seconds=15):
    """Waits for something to be true, and returns it."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if found := holds():
            return found
        time.sleep(0.02)
    raise AssertionError(f"never came: {what}")


class Picture:
    """What is on a screen: rows of pixels of three bytes."""

    def __init__(self, rgb):
        assert len(rgb) == WIDTH * HEIGHT * 3, f"{len(rgb)} bytes"
        self.bytes = rgb

    def part(self, x, y, width, height):
        rows = range(y, y + height)
        return b"".join(self.bytes[3 * (row * WIDTH + x) :][: 3 * width] for row in rows)

    def is_bare(self, x=0, y=0, width=WIDTH, height=HEIGHT - 8):
        """Shows the ground; by default but for the waiting pointer, which a picture may include."""
        return self.part(x, y, width, height) == bytes.fromhex(GROUND[1:]) * (width * height)

    def holds(self, rows):
        return all(row in self.bytes for row in rows)

    def has_card(self, x, y, width, height):
        """Something from edge to edge, round corners, and nothing beyond."""
        middle, right = (x + width // 2, y + height // 2), (x + width - 1, y + height - 1)
        edges = (x, middle[1]), (right[0], middle[1]), (middle[0], y), (middle[0], right[1])
        corners = (x, y, 3, 3), (right[0] - 2, right[1] - 2, 3, 3)
        beyond = (x - 8, y - 8, width + 16, 8), (x + width, y - 8, 8, height + 16)
        bare = all(self.is_bare(*part) for part in corners + beyond)
        return bare and not any(self.is_bare(*at, 1, 1) for at in edges)

    def save(self, file):
        convert = f"convert -size {WIDTH}x{HEIGHT} -depth 8 rgb:- png:{file}"
        subprocess.run(convert.split(), input=self.bytes, check=True)


class Screen:
    """Of one colour, without panels. The bus is the session's and the system's in one."""

    def __init__(self, folder):
        self.folder, self.ends = pathlib.Path(folder), contextlib.ExitStack()
        os.environ["XDG_RUNTIME_DIR"] = str(folder)

    def __enter__(self):
        with contextlib.ExitStack() as failed:
            failed.push(self.ends)
            self.open()
            words = "dbus-daemon --session --nofork --nosyslog --print-address".split()
            bus = self.start(words, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
            with bus.stdout as lines:
                address = lines.readline().decode().strip()
            os.environ |= {"DBUS_SESSION_BUS_ADDRESS": address, "DBUS_SYSTEM_BUS_ADDRESS": address}
            failed.pop_all()
        return self

    def __exit__(self, *_):
        self.ends.close()

    def start(self, words, rights="", **more):
        """Starts a program that ends with the screen, and with this process however that ends."""
        leash = f"setpriv --pdeathsig TERM {rights}".split()
        process = subprocess.Popen([*leash, *words], **more)
        self.ends.callback(self.stop, process)
        return process

    @staticmethod
    def stop(process):
        process.terminate()
        try:
            process.wait(5)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def click(self, x, y, button=1):
        """And moves on to where no tooltip comes up."""
        self.move(x, y)
        self.button(button, True)
        self.button(button, False)
        self.move(*CORNER)

    def drag(self, x, y, by_x, by_y):
        self.move(x, y)
        self.button(1, True)
        for step in range(1, 11):
            self.move(x + by_x * step // 10, y + by_y * step // 10)
        self.button(1, False)
        self.move(*CORNER)


class X11Screen(Screen):
    """Xvfb, without a window manager."""

    @staticmethod
    def is_possible():
        return True

    def open(self):
        reader, writer = os.pipe()
        words = f"Xvfb -noreset -screen 0 {WIDTH}x{HEIGHT}x24 -displayfd {writer}".split()
        self.start(words, pass_fds=[writer], stderr=subprocess.DEVNULL)
        os.close(writer)
        with open(reader, encoding="ascii") as lines:
            os.environ |= {"DISPLAY": f":{lines.readline().strip()}", "GDK_BACKEND": "x11"}
        subprocess.check_call(["xsetroot", "-solid", GROUND])

    def picture(self):
        return Picture(subprocess.check_output("import -window root -depth 8 rgb:-".split()))

    def move(self, x, y):
        self.tell("mousemove", str(x), str(y))

    def button(self, number, down):
        self.tell("mousedown" if down else "mouseup", str(number))

    def keys(self, *names):
        self.tell("key", *names)

    def await_window(self, title):
        """Also gives it the keyboard, as there is no window manager that would."""
        self.tell("search", "--sync", "--onlyvisible", "--name", title, "windowfocus", "--sync")

    focus = await_window

    def has_window(self, title):
        return subprocess.call(["xdotool", "search", "--onlyvisible", "--name", title]) == 0

    def refine(self):
        """Two pixels a point, for programs that are started from now on."""
        os.environ["GDK_SCALE"] = "2"

    def unplug(self, out):
        # What xrandr cannot do after that, making the screen's size none, is of no interest.
        words = ["xrandr", "--output", "screen", "--off" if out else "--auto"]
        subprocess.run(words, stderr=subprocess.DEVNULL, check=False)
        return True

    @staticmethod
    def tell(*words):
        subprocess.check_call(["xdotool", *words])


class WaylandScreen(Screen):
    """Sway without devices, which draws into memory."""

    CONFIG = f"""
        xwayland disable
        output * mode --custom {WIDTH}x{HEIGHT}@60Hz
        output * bg {GROUND} solid_color
        default_border none
    """

    @staticmethod
    def rights():
        """Those of another user than root, which sway refuses to be."""
        return "" if os.geteuid() else f"--reuid={NOBODY} --regid={NOBODY} --clear-groups"

    @classmethod
    def is_possible(cls):
        """Not where root can be no other user."""
        return subprocess.call(f"setpriv --pdeathsig TERM {cls.rights()} true".split()) == 0

    def open(self):
        folder, config = self.folder / "compositor", self.folder / "sway.config"
        folder.mkdir(mode=0o700)
        config.write_text(self.CONFIG)
        rights = self.rights()
        if rights:
            self.folder.chmod(0o711)
            shutil.chown(folder, NOBODY, NOBODY)
        settings = {"WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman"}
        settings |= {"WLR_LIBINPUT_NO_DEVICES": "1", "XDG_RUNTIME_DIR": folder, "HOME": folder}
        words = ["sway", "--config", config]
        self.start(words, rights, env=os.environ | settings, stderr=subprocess.DEVNULL)
        until(lambda: [*folder.glob("sway-ipc.*")], "the compositor's other socket")
        self.ipc = str([*folder.glob("sway-ipc.*")][0])
        socket = str(until(lambda: [*folder.glob("wayland-?")], "the compositor's socket")[0])
        os.environ |= {"WAYLAND_DISPLAY": socket, "GDK_BACKEND": "wayland"}
        devices = VirtualInput(socket, SIZE)
        self.move, self.button, self.keys = devices.move, devices.button, devices.keys
        self.move(*CORNER)
        until(lambda: self.picture().is_bare(), "the ground")

    def picture(self):
        head, size, depth, pixels = subprocess.check_output("grim -t ppm -".split()).split(b"\n", 3)
        assert (head, size, depth) == (b"P6", b"%d %d" % SIZE, b"255"), (head, size, depth)
        return Picture(pixels)

    def tell(self, *words):
        return subprocess.check_output(["swaymsg", "--socket", self.ipc, "--raw", *words], text=True)

    def await_window(self, title):
        until(lambda: self.has_window(title), title)

    def focus(self, _):
        """What was clicked on has the keyboard."""

    def has_window(self, title):
        return f'"name": "{title}"' in self.tell("--type", "get_tree")

    def refine(self):
        self.tell("output", "*", "scale", "2")

    def unplug(self, _):
        """Without a graphics card, this compositor cannot lose a monitor."""
        return False
