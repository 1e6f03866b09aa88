#!/usr/bin/python3 -B
"""The running program on a desktop: tray, windows, a second start, sleep, and settings by pointer and keyboard.

Usage: desktop_session.py PROGRAM"""

import json
import os
import pathlib
import re
import sys
import time
import unittest

from session import Session, ended, enter, terminate, wait, xdotool

MAIN = "Varnet?"
SETTINGS = "Settings"
PAGES = ["Overview", "Apps", "Projects", "Servers", "Storage", "Hall of Flame", "All sources", "Battery"]
TOGGLES = ["Launch at login", "Show whole Mac CPU in menu bar", "Notify me about sustained issues",
           "React to my Mac’s activity", "Keep in Dock when the window closes", "Automatically check for updates"]


def threads(process):
    return [name.read_text().strip() for name in pathlib.Path(f"/proc/{process.pid}/task").glob("*/comm")]


class DesktopSession(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.session = cls.enterClassContext(Session(sys.argv[1]))

    def setUp(self):
        self.session.forget()
        self.addCleanup(self.session.end_program)

    def tearDown(self):
        self.assertEqual(self.session.complaints(), "")

    def launch(self, *arguments):
        known = len(self.session.items)
        process = self.session.run(*arguments)
        wait(lambda: len(self.session.items) > known, "the item in the tray")
        return process

    def test_tray_and_windows(self):
        session = self.session
        known = len(session.items)
        program = self.launch("--login")

        with self.subTest("the item says what it is"):
            wait(lambda: re.fullmatch(r"Varnet\?( \d+%)?", session.item("Title")), "a title")
            _, _, title, _ = session.item("ToolTip")
            self.assertRegex(title, r"^Varnet\? \d+ findings$")
            pixmaps = session.item("IconPixmap")
            self.assertGreaterEqual(len(pixmaps), 2)
            for width, height, pixels in pixmaps:
                self.assertEqual(len(pixels), 4 * width * height)
                self.assertTrue(any(pixels[0::4]), f"{width} pixels wide, and all of it transparent")
            self.assertLessEqual({"Open overview", SETTINGS, "Check for Updates", "Quit Varnet"}, set(session.menu()))

        with self.subTest("a start at login is silent"):
            self.assertEqual(session.windows(MAIN), [])

        with self.subTest("a second start opens the first one's window and ends"):
            self.assertEqual(ended(session.run()), 0)
            session.window(MAIN)
            self.assertIsNone(program.poll())
            self.assertEqual(session.items[known:], session.items[-1:])

        with self.subTest("closing the window leaves the program in the tray"):
            xdotool("key", "ctrl+w")
            wait(lambda: not session.windows(MAIN), "the window to go")
            self.assertIsNone(program.poll())
            session.choose("Open overview")
            self.assertEqual(len(wait(lambda: session.windows(MAIN), "the window to come back")), 1)

        with self.subTest("the tray's menu ends it"):
            session.choose("Quit Varnet")
            self.assertEqual(ended(program), 0)

        with self.subTest("--show-window opens the window even at login"):
            program = self.launch("--login", "--show-window")
            session.window(MAIN)
            self.assertEqual(terminate(program), 0)

    def test_the_collection_is_saved_when_the_program_is_ended(self):
        session = self.session
        file = pathlib.Path(os.environ["XDG_DATA_HOME"], "Varnet", "flame-collection.json")
        program = self.launch("--login")

        def figures():
            return json.loads(file.read_text()) if file.exists() else None

        # The first pass is saved at once, the next ones a minute later or with the end.
        wait(figures, "the collection's file")
        wait(lambda: "%" in session.item("Title"), "a reading")
        time.sleep(4)
        self.assertEqual(figures()["metrics"].get("seconds", 0), 0)
        self.assertEqual(terminate(program), 0)
        self.assertGreater(figures()["metrics"]["seconds"], 0)
        self.assertEqual(file.stat().st_mode & 0o777, 0o600)

    def test_sleep_spans_no_reading(self):
        session = self.session
        program = self.launch("--show-window")

        def has_figure():
            return "%" in session.item("Title")

        # The machine's CPU is a difference of two readings. None may span the sleep, so that for one pass there
        # is no figure.
        for going in (True, False):
            with self.subTest("going to sleep" if going else "waking up"):
                wait(has_figure, "the first figure")
                session.prepare_for_sleep(going)
                wait(lambda: not has_figure(), "the figure to go")
                wait(has_figure, "the next figure")
                self.assertIsNone(program.poll())
        self.assertEqual(terminate(program), 0)

    def test_settings_by_pointer_keyboard_and_screen_reader(self):
        from screen_reader import click, everything, find, is_checked, is_focused
        session = self.session
        program = self.launch("--show-window")
        session.window(MAIN)

        with self.subTest("the sidebar is known to a screen reader"):
            find("page tab", "Overview")
            names = [name for role, name, _ in everything() if role == "page tab"]
            for page in PAGES:
                self.assertTrue(any(re.fullmatch(rf"{page}( [\d,]+)?", name) for name in names), (page, names))

        session.choose(SETTINGS)
        session.window(SETTINGS)
        with self.subTest("so is every setting"):
            toggles = [find("check box", name) for name in TOGGLES]
            for name in ("Language", "Appearance"):
                find("page tab list", name)
            for name in ("Allow access", "Clear history", "Open collection", "Reset collection"):
                find("push button", name)
            self.assertEqual([is_checked(toggle) for toggle in toggles], [False, True, False, True, False, True])

        with self.subTest("the pointer turns the figure in the tray off"):
            wait(lambda: "%" in session.item("Title"), "the figure")
            click(toggles[1])
            wait(lambda: session.setting("menuCPU") == "false", "menuCPU in the settings file")
            wait(lambda: session.item("Title") == "Varnet?", "the figure to go")
            self.assertFalse(is_checked(toggles[1]))

        with self.subTest("the keyboard turns notifications on, once the daemon has answered"):
            session.window(SETTINGS)
            xdotool("key", "Tab")
            wait(lambda: is_focused(toggles[2]), "the focus on notifications")
            xdotool("key", "space")
            wait(lambda: session.setting("notifications") == "true", "notifications in the settings file")
            self.assertIn("GetCapabilities", session.notifications_asked())
            wait(lambda: is_checked(toggles[2]), "the toggle to follow")

        with self.subTest("arrows choose the appearance"):
            click(find("page tab", "Light"))
            wait(lambda: session.setting("appearance") == "Light", "the light appearance")
            xdotool("key", "Right")
            wait(lambda: session.setting("appearance") == "Dark", "the dark appearance")

        with self.subTest("launching at login is an autostart entry"):
            click(toggles[0])
            entries = session.settings.parent.parent / "autostart"
            wait(lambda: list(entries.glob("*.desktop")), "the autostart entry")
            self.assertIn("--login", next(entries.glob("*.desktop")).read_text())

        with self.subTest("a folder chooser comes each time it is asked for, and calling it off changes nothing"):
            def choosers():
                return [name for role, name, _ in everything() if role == "dialog"]
            for _ in range(2):
                click(find("push button", "Allow access"))
                wait(choosers, "the folder chooser")
                xdotool("key", "Escape")
                wait(lambda: not choosers(), "the folder chooser to go")
            self.assertIsNone(session.setting("projectFolderBookmarks"))
            # Each has a thread that watches the folder it shows.
            wait(lambda: "FileInfoThread" not in threads(program), "the chooser's thread to go")

        self.assertEqual(terminate(program), 0)


if __name__ == "__main__":
    if "VARNET_SESSION_INSIDE" not in os.environ:
        sys.exit(enter(os.path.abspath(sys.argv[1])))
    unittest.main(argv=sys.argv[:1], verbosity=2, warnings="ignore")
