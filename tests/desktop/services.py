"""What the desktop's tests reach by the bus: a stand-in for logind, and what a screen reader reads."""

import os
import threading

from gi.repository import Gio, GLib

LOGIND = """<node>
  <interface name="org.freedesktop.login1.Manager">
    <method name="GetSession"><arg type="s" direction="in"/><arg type="o" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.login1.Session">
    <property name="LockedHint" type="b" access="read"/>
  </interface>
</node>"""
SESSIONS = "/org/freedesktop/login1/session/_"
INTERFACE = "org.freedesktop.login1.Session"


def connect(address):
    flags = Gio.DBusConnectionFlags
    client = flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION
    return Gio.DBusConnection.new_for_address_sync(address, client, None, None)


class Logind:
    """Knows one session, 37, whose lock it announces."""

    def __init__(self):
        self.locked = False
        os.environ["XDG_SESSION_ID"] = "37"
        self.bus = connect(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
        manager, session = Gio.DBusNodeInfo.new_for_xml(LOGIND).interfaces
        self.bus.register_object("/org/freedesktop/login1", manager, self.answer, None, None)
        self.bus.register_object(f"{SESSIONS}37", session, None, self.read_hint, None)
        Gio.bus_own_name_on_connection(self.bus, "org.freedesktop.login1", 0, None, None)
        threading.Thread(target=GLib.MainLoop().run, daemon=True).start()

    @staticmethod
    def answer(_bus, _sender, _path, _interface, _method, words, call):
        if words.unpack() == ("37",):
            call.return_value(GLib.Variant("(o)", (f"{SESSIONS}37",)))
        else:
            call.return_dbus_error("org.freedesktop.login1.NoSuchSession", str(words))

    def read_hint(self, *_):
        return GLib.Variant("b", self.locked)

    def lock(self, locked, session="37"):
        self.emit(session, INTERFACE, "Lock" if locked else "Unlock", None)

    def hint(self, locked, session="37"):
        change = (INTERFACE, {"LockedHint": GLib.Variant("b", locked)}, [])
        changes = GLib.Variant("(sa{sv}as)", change)
        self.emit(session, "org.freedesktop.DBus.Properties", "PropertiesChanged", changes)

    def emit(self, session, *signal):
        self.bus.emit_signal(None, SESSIONS + session, *signal)


def call(bus, name, path, interface, method, *words):
    words = GLib.Variant(f"({'s' * len(words)})", words)
    return bus.call_sync(name, path, interface, method, words, None, 0, 10_000, None).unpack()[0]


class Reader:
    """A screen reader, which knows an application's windows and all that is in them."""

    NODE = "org.a11y.atspi.Accessible"

    def __init__(self, application):
        session = connect(os.environ["DBUS_SESSION_BUS_ADDRESS"])
        at = call(session, "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        self.bus = connect(at)
        everybody = self.children(("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))
        found = [one for one in everybody if self.read(one, "Name") == application]
        self.windows = [window for one in found for window in self.children(one)]

    def children(self, of):
        return call(self.bus, *of, self.NODE, "GetChildren")

    def read(self, of, fact):
        return call(self.bus, *of, "org.freedesktop.DBus.Properties", "Get", self.NODE, fact)

    def names(self, among):
        for one in among:
            yield self.read(one, "Name")
            yield from self.names(self.children(one))


def spoken(application):
    """What is said of an application's windows: name -> description."""
    reader = Reader(application)
    return {reader.read(one, "Name"): reader.read(one, "Description") for one in reader.windows}


def heard(application):
    """The names of all that is in them."""
    reader = Reader(application)
    return set(reader.names(reader.windows))
