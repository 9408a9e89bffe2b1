# SPDX-License-Identifier: GPL-3.0-or-later
"""Starts processes and makes sure that none of them, and none of their children, is left behind."""
import ctypes
import os
import signal
import subprocess
import time

PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)


def _die_with_parent():
    _libc.prctl(PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0)


def _parent_of(pid):
    """The parent's id, 0 when the process is gone."""
    try:
        with open(f"/proc/{pid}/stat", "rb") as stat:
            return int(stat.read().rsplit(b")", 1)[1].split()[1])
    except (OSError, IndexError, ValueError):
        return 0


def descendants(root):
    """Ids of all processes below `root`, children before parents."""
    children = {}
    for name in os.listdir("/proc"):
        if name.isdigit():
            children.setdefault(_parent_of(int(name)), []).append(int(name))
    found, queue = [], [root]
    while queue:
        below = children.get(queue.pop(), [])
        found += below
        queue += below
    return found[::-1]


def program_of(pid):
    """The file name of the program that a process runs, "" when it is gone."""
    try:
        return os.path.basename(os.readlink(f"/proc/{pid}/exe"))
    except OSError:
        return ""


class Supervisor:
    """Owns every process of a run. A child whose parent ends becomes ours, so that close() finds it."""

    def __init__(self):
        _libc.prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self._before = set(descendants(os.getpid()))
        self._started = []

    def start(self, command, log=None, env=None, **more):
        """Starts a command in a session of its own; its output goes to the open file `log`."""
        output = log or subprocess.DEVNULL
        self._started.append(subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output, env=env,
                                              start_new_session=True, preexec_fn=_die_with_parent, **more))
        return self._started[-1]

    def _ours(self):
        return [pid for pid in descendants(os.getpid()) if pid not in self._before]

    def _reap(self, pids):
        for pid in pids:
            try:
                os.waitpid(pid, os.WNOHANG)
            except ChildProcessError:
                pass

    def _signal_all(self, number, seconds):
        deadline = time.monotonic() + seconds
        for pid in self._ours():
            try:
                os.kill(pid, number)
            except ProcessLookupError:
                pass
        while time.monotonic() < deadline:
            self._reap(self._ours())
            if not self._ours():
                return True
            time.sleep(0.02)
        return False

    def close(self):
        """Ends everything that was started; what does not listen within two seconds is killed."""
        if self._ours() and not self._signal_all(signal.SIGTERM, 2):
            self._signal_all(signal.SIGKILL, 2)
        for process in self._started:
            process.poll()  # lets Popen see that it has been reaped
