"""A desktop session of our own: display, buses, tray, sleep manager and notification daemon, all in a scratch
home. Everything waits only so long, and ends only what it started."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time

from gi.repository import Gio, GLib

WATCHER = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/>
<signal name="StatusNotifierHostRegistered"/></interface></node>"""


def enter(*arguments, seconds=100):
    """Runs this very script again with these arguments inside a scratch home, a display and a session bus.
    Returns its status. Ends it after so many seconds."""
    with tempfile.TemporaryDirectory(prefix="varnet-session-") as scratch:
        read, write = os.pipe()
        display = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x900x24", "-nolisten",
                                    "tcp"], pass_fds=[write], stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        os.close(write)
        try:
            number = os.fdopen(read).readline().strip()
            if not number:
                sys.exit("Xvfb did not start")
            places = {name: f"{scratch}/{folder}" for name, folder in
                      {"HOME": "home", "XDG_CONFIG_HOME": "config", "XDG_DATA_HOME": "data",
                       "XDG_CACHE_HOME": "cache", "XDG_RUNTIME_DIR": "runtime"}.items()}
            for place in places.values():
                os.mkdir(place, 0o700)
            environment = {name: value for name, value in os.environ.items()
                           if not name.startswith(("QT_", "XDG_", "DBUS_", "WAYLAND_", "AT_SPI_"))}
            environment |= places | {"DISPLAY": ":" + number, "QT_QPA_PLATFORM": "xcb", "LANG": "C.UTF-8",
                                     "GSETTINGS_BACKEND": "memory", "NO_AT_BRIDGE": "1",
                                     "VARNET_SESSION_INSIDE": "1"}
            return subprocess.run(["dbus-run-session", "--", sys.executable, "-B", sys.argv[0], *arguments],
                                  env=environment, timeout=seconds).returncode
        finally:
            display.terminate()
            display.wait(10)


class Session:
    """What stands around the program. Use it as a context."""

    def __init__(self, program, screen_reader=True):
        self.program = program
        self.screen_reader = screen_reader
        self.settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "Varnet", "Varnet.ini")
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.items = []  # bus names in the tray, in the order of their coming
        self.services = []
        self.programs = []
        # The session bus stands in for the system's.
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]

    def __enter__(self):
        try:
            self._serve_tray()
            mock = [sys.executable, "-m", "dbusmock"]
            services = {"org.freedesktop.login1": [*mock, "--system", "--template", "logind"],
                        "org.freedesktop.Notifications": [*mock, "--template", "notification_daemon", "-l",
                                                          self._log("notifications")]}
            if self.screen_reader:
                services["org.a11y.Bus"] = ["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"]
            self.services += [self._start(service) for service in services.values()]
            for name in services:
                wait(lambda: self._has_owner(name), f"{name} on the bus")
            if self.screen_reader:
                self.call("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set",
                          GLib.Variant("(ssv)", ("org.a11y.Status", "IsEnabled", GLib.Variant("b", True))))
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self._end(self.programs + self.services)

    def forget(self, settings=""):
        """Makes the user one who has been welcomed and has chosen these settings, and has done nothing else."""
        for folder in ("XDG_CONFIG_HOME", "XDG_DATA_HOME"):
            for entry in pathlib.Path(os.environ[folder]).iterdir():
                shutil.rmtree(entry)
        self.settings.parent.mkdir()
        self.settings.write_text("[General]\nonboarded=true\n" + settings)
        pathlib.Path(self._log("varnet")).write_text("")

    def run(self, *arguments):
        """Starts the program."""
        self.programs.append(self._start([self.program, *arguments], self._log("varnet")))
        return self.programs[-1]

    def end_program(self):
        """Ends every start of the program that has not ended yet."""
        self._end(self.programs)

    def complaints(self):
        """What the program said on standard error."""
        return pathlib.Path(self._log("varnet")).read_text()

    def notifications_asked(self):
        """Calls that the notification daemon has had."""
        return pathlib.Path(self._log("notifications")).read_text()

    def call(self, name, path, interface, method, arguments=None):
        """Calls something on the session bus while our own tray goes on answering."""
        answer = []
        self.bus.call(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None,
                      lambda bus, result: answer.append(result))
        wait(lambda: answer, f"{method} to answer")
        return self.bus.call_finish(answer[0]).unpack()

    # The tray.

    def item(self, name):
        """A property of the newest item in the tray."""
        return self.call(self.items[-1], "/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", name)))[0]

    def menu(self):
        """The item's menu: numbers by label."""
        _, (_, _, children) = self.call(self.items[-1], self.item("Menu"), "com.canonical.dbusmenu", "GetLayout",
                                        GLib.Variant("(iias)", (0, -1, [])))
        return {child[1]["label"]: child[0] for child in children if "label" in child[1]}

    def choose(self, label):
        """Presses an entry of the item's menu."""
        self.choose_entry(self.menu()[label])

    def choose_entry(self, number):
        """The same by the entry's number, which is the same in every language."""
        self.call(self.items[-1], self.item("Menu"), "com.canonical.dbusmenu", "Event",
                  GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("i", 0), 0)))

    def click_item(self, x, y):
        """Clicks on the newest item in the tray, which is at this point of the screen."""
        self.call(self.items[-1], "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate",
                  GLib.Variant("(ii)", (x, y)))

    # What the daemons say.

    def prepare_for_sleep(self, going):
        self._emit("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                   "PrepareForSleep", GLib.Variant("b", going))

    def press_notification(self, number):
        """Clicks on the notification that the daemon gave this number."""
        self._emit("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                   "org.freedesktop.Notifications", "ActionInvoked", GLib.Variant("u", number),
                   GLib.Variant("s", "default"))

    def _emit(self, name, path, interface, signal, *values):
        signature = "".join(value.get_type_string() for value in values)
        self.call(name, path, "org.freedesktop.DBus.Mock", "EmitSignal",
                  GLib.Variant("(sssav)", (interface, signal, signature, values)))

    # Windows.

    def windows(self, title):
        """The visible windows with exactly this title."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$"],
                               capture_output=True, text=True, timeout=10, check=False)
        return found.stdout.split()

    def window(self, title):
        """The one window with this title, with the keyboard in it."""
        wait(lambda: self.windows(title), f"the window “{title}”")
        number = self.windows(title)[0]
        xdotool("windowraise", number)
        xdotool("windowfocus", "--sync", number)
        return number

    # Settings.

    def setting(self, key):
        """The value of a key in the settings file; None when it is not there."""
        if not self.settings.exists():
            return None
        for line in self.settings.read_text().splitlines():
            if line.startswith(key + "="):
                return line[len(key) + 1:]
        return None

    def _serve_tray(self):
        def on_call(_bus, sender, _path, _interface, method, _arguments, invocation):
            if method == "RegisterStatusNotifierItem":
                self.items.append(sender)
            invocation.return_value(None)

        def on_get(_bus, _sender, _path, _interface, name):
            return {"RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
                    "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                    "ProtocolVersion": GLib.Variant("i", 0)}[name]

        info = Gio.DBusNodeInfo.new_for_xml(WATCHER).interfaces[0]
        self.bus.register_object("/StatusNotifierWatcher", info, on_call, on_get, None)
        Gio.bus_own_name_on_connection(self.bus, "org.kde.StatusNotifierWatcher", Gio.BusNameOwnerFlags.NONE,
                                       None, None)
        wait(lambda: self._has_owner("org.kde.StatusNotifierWatcher"), "our tray")

    def _has_owner(self, name):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner",
                         GLib.Variant("(s)", (name,)))[0]

    def _log(self, name):
        return os.path.join(os.environ["XDG_RUNTIME_DIR"], name + ".log")

    @staticmethod
    def _start(command, log=os.devnull):
        with open(log, "a", encoding="utf-8") as out:
            return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=out, stderr=out)

    @staticmethod
    def _end(processes):
        for process in reversed(processes):
            if process.poll() is None:
                process.terminate()
        for process in reversed(processes):
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], timeout=10, check=True)


def turn():
    """Lets our own side of the bus answer for a moment."""
    while GLib.MainContext.default().iteration(False):
        pass
    time.sleep(0.02)


def wait(condition, what, seconds=10):
    """Waits until something holds and returns it."""
    end = time.monotonic() + seconds
    while True:
        turn()
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds} s in vain for {what}")


def ended(process, seconds=10):
    """The exit status of a process that ends by itself."""
    wait(lambda: process.poll() is not None, "the end of a process", seconds)
    return process.returncode


def terminate(process):
    process.terminate()
    return ended(process)
