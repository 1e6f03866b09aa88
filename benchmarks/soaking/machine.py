"""A machine of its own for a long run: its process table, network and disk hold nothing but what the run put
there, and all of it ends with the run. Nothing of the real machine can be stopped, scanned or waited for by
mistake. Made of namespaces, so it needs no rights."""

import ctypes
import fcntl
import os
import pathlib
import socket
import struct
import subprocess
import sys

INSIDE = "VARNET_MACHINE_INSIDE"
OUTSIDE = "mnt/host"  # what is mounted there is foreign to a scan of the disk
SPACE = "600m"


def enter(seconds):
    """Runs this very script again, with its arguments, on a machine of its own, and exits with its status.
    There it returns at once."""
    if INSIDE not in os.environ:
        os.environ[INSIDE] = "1"
        os.execvp("timeout", ["timeout", "-k", "20", str(int(seconds)), "unshare", "--user", "--map-root-user",
                              "--mount", "--pid", "--net", "--fork", "--kill-child", "--mount-proc",
                              sys.executable, "-B", os.path.abspath(sys.argv[0]), *sys.argv[1:]])
    if os.getpid() != 1:
        return
    os.chdir("/")  # where this process stands is no project of its user
    _connect_loopback()
    child = os.fork()
    if child == 0:
        _move_into(pathlib.Path("/mnt"))
        return
    # What has lost its parent ends up here.
    while True:
        pid, status = os.wait()
        if pid == child:
            os._exit(os.waitstatus_to_exitcode(status) & 0xFF)


def _connect_loopback():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as control:
        set_flags, up_and_running = 0x8914, 0x41
        fcntl.ioctl(control, set_flags, struct.pack("16sh14x", b"lo", up_and_running))


def _move_into(root):
    """The disk is one in memory. Programs come from the real one through links, which no scan follows."""
    _mount("-t", "tmpfs", "-o", "size=" + SPACE, "none", root)
    for folder in ("tmp", "run", "proc", OUTSIDE):
        (root / folder).mkdir(parents=True)
    (root / "tmp").chmod(0o1777)
    _mount("--rbind", "/", root / OUTSIDE)
    _mount("-t", "proc", "proc", root / "proc")
    for place in os.listdir("/"):
        if not (root / place).exists():
            (root / place).symlink_to(os.path.join("/", OUTSIDE, place))
    os.chroot(root)
    os.chdir("/")
    os.environ["TMPDIR"] = "/tmp"
    ctypes.CDLL(None).prctl(1, 9)  # end with the first process


def _mount(*arguments):
    subprocess.run(["mount", *map(str, arguments)], check=True)
