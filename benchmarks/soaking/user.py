"""What a restless user does with the program, by keyboard, and whether it had its effect."""

import collections
import ctypes
import os
import pathlib
import subprocess
import time

from gi.repository import GLib

from session import turn, xdotool

# Titles in both languages.
MAIN = r"^Varnet\?$"
PANEL = r"^Varnet$"
SETTINGS = r"^(Settings|Nastavení)$"
CLOUD = r"^(Cloud backup|Záloha do cloudu)$"
FEEDBACK = r"^(Send feedback|Poslat zpětnou vazbu)$"
WINDOWS = (MAIN, PANEL, SETTINGS, CLOUD, FEEDBACK)

SETTLED = 0.4   # seconds after a key that changes the view
PAGES = range(1, 9)
SEARCH = "python"
BACK_TO_CLOUD = 3  # controls from the first one of the settings backwards
PROJECTS_X, WHOLE_DISK_X = 876, 967  # pixels in the main window
MAP = "varnet-disk"  # part of the name of the folder that holds a map of the disk


class User:
    """Each act is counted: how often it was tried, and how often it had its effect."""

    def __init__(self, session, pid, projects):
        self.session = session
        self.pid = pid
        self.projects = projects
        self.tried = collections.Counter()
        self.worked = collections.Counter()
        self.servers = []
        self.scanned = self.mapped = False
        self.display = Display()

    def round(self, number, keeps_open):
        """All there is, once.

        keeps_open: the main window stays, and with it whatever the views hold on to"""
        server = self._start_server(number)
        self.main_window()
        self.pages()
        self.roast()
        self.project_scan()
        self.disk_scan()
        self.sleep_and_wake()
        self.stop(server)
        self.settings()
        self.pages()
        self.panel()
        self.feedback()
        if not keeps_open:
            self.close_all()

    def end(self):
        self.display.close()
        for process in self.servers:
            if process.poll() is None:
                process.terminate()
            process.wait()

    # Windows.

    def main_window(self):
        self.session.call("com.varnet.Varnet", "/com/varnet/Varnet", "org.freedesktop.Application", "Activate",
                          GLib.Variant("(a{sv})", ({},)))
        self._act("main window", lambda: self._focus(MAIN))

    def overview(self):
        """The main window as it is first seen."""
        self.main_window()
        self._keys("ctrl+1")

    def panel(self):
        self.session.click_item(1200, 4)
        if self._act("panel", lambda: self._focus(PANEL)):
            self._keys("Tab", "Tab", "Tab", "Down", "Up")
            self._pause(1)
            self._keys("Escape")
        self._act("panel closed", lambda: not self._windows(PANEL))

    def settings(self):
        """Another language and another appearance each time, then the account's window."""
        self._close(SETTINGS)  # a walk along the sidebar may have opened it
        language, appearance = self.session.setting("appLanguage"), self.session.setting("appearance")
        self.session.choose_entry(2)
        if not self._act("settings", lambda: self._focus(SETTINGS)):
            return
        self._keys("Tab", "Left" if language == "cs" else "Right")
        self._act("language", lambda: self.session.setting("appLanguage") != language)
        self._keys("Tab", "Left" if appearance == "Dark" else "Right")
        self._act("appearance", lambda: self.session.setting("appearance") != appearance)
        self._keys(*["Tab"] * 8)
        # Back to the first control, and from there to the last group.
        self._keys(*["shift+Tab"] * (9 + BACK_TO_CLOUD))
        self._keys("space")
        self._act("cloud window", lambda: self._focus(CLOUD))
        self._keys("Tab", "Tab")
        self._close(CLOUD)
        self._focus(SETTINGS)
        self._close(SETTINGS)

    def feedback(self):
        self.session.choose_entry(4)
        if self._act("feedback window", lambda: self._focus(FEEDBACK)):
            self._keys("Tab")
            xdotool("type", "--delay", "20", "the lid of this machine is warm")
            self._pause(SETTLED)
        self._close(FEEDBACK)

    def close_all(self):
        for title in WINDOWS:
            self._close(title)
        self._act("all windows closed", lambda: not any(map(self._windows, WINDOWS)))

    # In the main window.

    def pages(self):
        if not self._focus(MAIN):
            return
        for page in PAGES:
            self._keys(f"ctrl+{page}")
            self._pause(SETTLED)
            self._keys("Down", "Down", "Return")
            self._pause(SETTLED)
            self._keys("Escape", "Tab", "Tab")
            if page in (2, 4, 7):
                self._search(SEARCH)
                self._keys("Escape")

    def roast(self):
        self._keys("ctrl+r")
        self._pause(1)
        self._keys("Tab", "Escape")
        self._pause(SETTLED)

    def project_scan(self):
        """One to its end, and one that is stopped."""
        self._to_project_scan()
        before = self._helpers_past()
        self._keys("space")
        self._act("project scan", lambda: self._helpers_past() > before)
        self.scanned = True
        self._pause(3)
        self._to_project_scan()
        self._keys("space")
        self._to_project_scan()
        self._keys("space")

    def _to_project_scan(self):
        # Before the first one there are no figures, no layout and no folder to choose.
        self._choose_scope(PROJECTS_X)
        self._keys(*["Tab"] * (7 if self.scanned else 1))

    def _choose_scope(self, x):
        # By the pointer: where the keyboard starts on this page depends on what it shows.
        self._focus(MAIN)
        self._keys("ctrl+5")
        self._pause(SETTLED)
        for window in self._windows(MAIN)[:1]:
            xdotool("mousemove", "--window", window, str(x), "36", "click", "1")
        self._pause(SETTLED)

    def _helpers_past(self):
        """Page faults of the program's children that have ended: Git's, which a scan asks."""
        stat = pathlib.Path(f"/proc/{self.pid}/stat").read_text(encoding="utf-8")
        return int(stat.rsplit(")", 1)[1].split()[8])

    def disk_scan(self):
        """One that is stopped, and one to its end."""
        self._choose_scope(WHOLE_DISK_X)
        # Before the first one there is neither a figure nor a layout.
        self._keys(*["Tab"] * (3 if self.mapped else 1))
        before = self._maps()
        self._keys("space")
        self._act("disk scan", lambda: self._maps() - before)
        # The first one's button has given way to another place.
        if self.mapped:
            self._pause(0.3)
            self._keys("space")
            self._pause(1)
            self._keys("space")
        self.mapped = True
        self._pause(3)
        self._keys("Tab", "Down", "Right", "Return")
        self._pause(1)
        self._keys("Escape", "BackSpace")
        self._choose_scope(PROJECTS_X)

    @staticmethod
    def _maps():
        return {path.name for path in pathlib.Path("/tmp").iterdir() if MAP in path.name}

    def stop(self, server):
        """Through the list of servers and the sheet that reviews the stop."""
        if not self._focus(MAIN):
            return
        self._keys("ctrl+4")
        self._pause(SETTLED)
        self._search(pathlib.Path(os.readlink(f"/proc/{server.pid}/cwd")).name)
        self._keys("Down", "Tab", "Tab", "space")
        self._pause(1)
        self._keys("Tab", "space")
        self._act("server stopped", lambda: server.poll() is not None)
        self._pause(1.5)
        self._keys("Return", "Escape")
        self._search("")

    def sleep_and_wake(self):
        self.session.prepare_for_sleep(True)
        self._pause(0.5)
        self.session.prepare_for_sleep(False)

    # How.

    def _start_server(self, number):
        folder = self.projects / f"to-stop-{number % 4}"
        self.servers = [process for process in self.servers if process.poll() is None]
        self.servers.append(subprocess.Popen(["/usr/bin/python3", "-m", "http.server", "0", "--bind", "127.0.0.1"],
                                             cwd=folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                             stderr=subprocess.DEVNULL))
        return self.servers[-1]

    def _search(self, text):
        self._keys("ctrl+f", "ctrl+a", "BackSpace")
        if text:
            xdotool("type", "--delay", "20", text)
        self._pause(SETTLED)

    def _act(self, name, worked, seconds=8):
        self.tried[name] += 1
        end = time.monotonic() + seconds
        while not worked():
            if time.monotonic() > end:
                print(f"  without effect: {name}; open: {', '.join(self._titles())}", flush=True)
                return False
            turn()
        self.worked[name] += 1
        return True

    def _windows(self, title):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", title], capture_output=True,
                               text=True, timeout=10, check=False)
        return found.stdout.split()

    def _titles(self):
        return [subprocess.run(["xdotool", "getwindowname", window], capture_output=True, text=True, timeout=10,
                               check=False).stdout.strip() for window in self._windows(".")]

    def _focus(self, title):
        windows = self._windows(title)
        if not windows:
            return False
        subprocess.run(["xdotool", "windowraise", windows[0], "windowfocus", windows[0]], timeout=10, check=False)
        self._pause(0.1)
        return True

    def _close(self, title):
        for window in self._windows(title):
            self.display.ask_to_close(int(window))
        self._act("window closed", lambda: not self._windows(title))

    def _keys(self, *keys):
        xdotool("key", "--delay", "40", *keys)
        self._pause(0.1)

    def _pause(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            turn()


class Display:
    """What a window manager does when the cross of a window is pressed."""

    class _ClientMessage(ctypes.Structure):
        _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                    ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                    ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]

    def __init__(self):
        self._library = ctypes.CDLL("libX11.so.6")
        self._library.XOpenDisplay.restype = ctypes.c_void_p
        self._library.XInternAtom.restype = ctypes.c_ulong
        self._library.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
        self._library.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long,
                                             ctypes.c_void_p]
        self._library.XFlush.argtypes = self._library.XCloseDisplay.argtypes = [ctypes.c_void_p]
        self._display = self._library.XOpenDisplay(None)

    def ask_to_close(self, window):
        client_message = 33
        event = self._ClientMessage(type=client_message, send_event=1, display=self._display, window=window,
                                    message_type=self._atom(b"WM_PROTOCOLS"), format=32)
        event.data[0] = self._atom(b"WM_DELETE_WINDOW")
        self._library.XSendEvent(self._display, window, 0, 0, ctypes.byref(event))
        self._library.XFlush(self._display)

    def close(self):
        self._library.XCloseDisplay(self._display)

    def _atom(self, name):
        return self._library.XInternAtom(self._display, name, 0)
