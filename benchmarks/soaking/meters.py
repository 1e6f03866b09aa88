"""What the program takes of the machine, read from outside."""

import dataclasses
import os
import time

TICKS = os.sysconf("SC_CLK_TCK")


@dataclasses.dataclass
class Reading:
    memory: float      # MB resident
    own: float         # MB of it that is the process's own, not of files
    descriptors: int
    threads: int


def read(pid):
    fields = {}
    with open(f"/proc/{pid}/status", encoding="utf-8") as status:
        for line in status:
            name, _, value = line.partition(":")
            fields[name] = value.split()
    return Reading(int(fields["VmRSS"][0]) / 1024, int(fields["RssAnon"][0]) / 1024,
                   len(os.listdir(f"/proc/{pid}/fd")), int(fields["Threads"][0]))


def at_rest(pid, pause, seconds):
    """The least of each in so many seconds: what is taken for a moment only does not count."""
    end = time.monotonic() + seconds
    least = read(pid)
    while time.monotonic() < end:
        pause(1)
        now = read(pid)
        least = Reading(*map(min, dataclasses.astuple(least), dataclasses.astuple(now)))
    return least


def cpu_seconds(pid):
    with open(f"/proc/{pid}/stat", encoding="utf-8") as stat:
        fields = stat.read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def cpu_share(pid, pause, seconds):
    """Percent of one core over so many seconds."""
    before, begun = cpu_seconds(pid), time.monotonic()
    pause(seconds)
    return 100 * (cpu_seconds(pid) - before) / (time.monotonic() - begun)
