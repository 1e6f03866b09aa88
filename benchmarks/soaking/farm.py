#!/usr/bin/python3
"""Some hundreds of processes that come and go at a steady rate, in project folders: most only wait, some are busy
for a moment, some listen on a loopback port.

Usage: farm.py PROJECTS PATTERN COUNT     in those of the projects whose name fits the pattern; until standard input
ends; a line on it makes the farm pause, or go on"""

import os
import pathlib
import select
import shutil
import subprocess
import sys
import time

A_SECOND = 20          # starts
SHORT = 0.4            # seconds that every second one lives
SERVER_EVERY = 60      # starts
SERVER_LIVES = 45      # seconds
BUSY_EVERY = 40        # starts
HOT_EVERY = 6_000      # starts: one that keeps a core busy for long enough to be remarked upon
HOT_LIVES = 45
NEW_FOLDER_EVERY = 10  # starts
MOMENT = "i=0; while [ $i -lt 60000 ]; do i=$((i+1)); done"

projects = sorted(pathlib.Path(sys.argv[1]).glob(sys.argv[2]))
count = int(sys.argv[3])
# Half of the starts are gone within a moment, so that the others make up the number.
lives = count / (A_SECOND / 2)
running = []  # when to end, process, folder to remove
paused = False


def start(number, now):
    project = projects[number % len(projects)]
    folder, made = project, None
    if number % NEW_FOLDER_EVERY == 0:
        made = folder = project / f"run-{number}"
        folder.mkdir()
    if number % SERVER_EVERY == 1:
        command, end = ["/usr/bin/python3", "-m", "http.server", "0", "--bind", "127.0.0.1"], now + SERVER_LIVES
    elif number % HOT_EVERY == HOT_EVERY // 2:
        command, end = ["nice", "-n", "19", "sh", "-c", "while :; do :; done"], now + HOT_LIVES
    elif number % BUSY_EVERY == 2:
        command, end = ["sh", "-c", MOMENT], now + 5
    elif number % 2:
        command, end = ["sleep", str(SHORT)], now + SHORT + 1
    else:
        command, end = ["sleep", "600"], now + lives
    running.append((end, subprocess.Popen(command, cwd=folder, stdin=subprocess.DEVNULL,
                                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL), made))


def sweep(now):
    left = []
    for end, process, made in running:
        if process.poll() is None and now < end:
            left.append((end, process, made))
            continue
        if process.poll() is None:
            process.terminate()
            process.wait()
        if made:
            shutil.rmtree(made)
    running[:] = left


now = begun = time.monotonic()
number, held = 0, 0.0
while True:
    if select.select([sys.stdin], [], [], 0.05)[0]:
        if not os.read(0, 100):
            break
        paused = not paused
        held -= time.monotonic() if paused else -time.monotonic()
    if not paused:
        now = time.monotonic() - held
    while number < (now - begun) * A_SECOND:
        start(number, now)
        number += 1
    sweep(now)
sweep(float("inf"))
