#!/usr/bin/python3 -B
"""A project that keeps the machine busy: the notification that the running program sends of it, and what a click
on that opens.

Usage: desktop_notification.py PROGRAM"""

import os
import pathlib
import re
import subprocess
import sys
import unittest

from session import Session, enter, terminate, wait

MAIN = "Varnet?"
# Seconds: a minute at work, and what a busy machine takes to see it begin.
PATIENCE = 110


class DesktopNotification(unittest.TestCase):
    def test_sustained_work_is_told_of_once(self):
        session = self.enterContext(Session(sys.argv[1]))
        session.forget("notifications=true\n")
        project = pathlib.Path(os.environ["HOME"], "overtime")
        project.mkdir()
        (project / "package.json").write_text('{"name": "overtime"}')
        # So many that together they stay above the line also where other work competes for the cores.
        for _ in range(6 + 2 * round(os.getloadavg()[0])):
            busy = subprocess.Popen([sys.executable, "-c", "while True: pass"], cwd=project)
            self.addCleanup(busy.wait)
            self.addCleanup(busy.kill)
        program = session.run("--login")

        def told():
            # What else is busy here may be told of too.
            return re.findall(r'Notify .* "overtime is .*', session.notifications_asked())

        wait(told, "the notification", PATIENCE)
        self.assertEqual(len(told()), 1)
        for text in ('"com.varnet.Varnet" "overtime is working overtime"',
                     '"80%+ of one CPU core for over a minute. May be intentional."',
                     '"desktop-entry": "com.varnet.Varnet"', '"suppress-sound": True'):
            self.assertIn(text, told()[0])
        self.assertEqual(session.windows(MAIN), [])

        with self.subTest("a click on it opens the window"):
            calls = re.findall(r" Notify ", session.notifications_asked())
            session.press_notification(len(calls))
            session.window(MAIN)

        with self.subTest("the same incident is told of once"):
            self.assertEqual(len(told()), 1)
            self.assertIsNotNone(session.setting("notificationDates"))
        self.assertEqual(terminate(program), 0)
        self.assertEqual(session.complaints(), "")


if __name__ == "__main__":
    if "VARNET_SESSION_INSIDE" not in os.environ:
        sys.exit(enter(os.path.abspath(sys.argv[1]), seconds=PATIENCE + 60))
    unittest.main(argv=sys.argv[:1], verbosity=2, warnings="ignore")
