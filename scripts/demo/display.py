# SPDX-License-Identifier: GPL-3.0-or-later
"""A display of its own (Xvfb, window manager, tray) and what a user's hands and eyes do on it."""
import os
import shutil
import subprocess
import time

SCREEN = "1366x768x24"


class DisplayError(Exception):
    pass


class Display:
    def __init__(self, supervisor, log, tray=True):
        self._env = dict(os.environ)
        self.name = self._start_server(supervisor, log)
        self._env["DISPLAY"] = self.name
        supervisor.start(["openbox"], log=log, env=self._env)
        if tray and shutil.which("trayer"):
            supervisor.start(["trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request", "--height", "24"],
                             log=log, env=self._env)
            time.sleep(0.5)  # the tray's owner must be known before the program asks for one

    def _start_server(self, supervisor, log):
        """The server picks a free display number itself and tells it when it is ready."""
        reader, writer = os.pipe()
        server = supervisor.start(["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN, "-nolisten", "tcp", "-noreset"],
                                  log=log, pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as pipe:
            number = pipe.readline().strip()
        if not number:
            raise DisplayError(f"Xvfb did not start (exit status {server.wait()})")
        return f":{number}"

    def _xdotool(self, *arguments):
        try:
            return subprocess.run(["xdotool", *arguments], env=self._env, timeout=20, stdin=subprocess.DEVNULL,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False).stdout
        except subprocess.TimeoutExpired:
            return ""

    def windows(self, window_class):
        """Visible windows of a program, largest first."""
        found = []
        for window in self._xdotool("search", "--onlyvisible", "--class", window_class).split():
            geometry = dict(line.split("=", 1) for line in
                            self._xdotool("getwindowgeometry", "--shell", window).splitlines() if "=" in line)
            found.append((int(geometry.get("WIDTH", 0)) * int(geometry.get("HEIGHT", 0)), window))
        return [window for area, window in sorted(found, reverse=True) if area > 10000]

    def press(self, window, keys):
        """Brings a window to the front and presses a key combination in it."""
        self._xdotool("windowactivate", "--sync", window)
        self._xdotool("key", "--clearmodifiers", keys)

    def type(self, text):
        """Types a text, or presses keys in turn when it is a list, in the window that has the focus."""
        if isinstance(text, str):
            self._xdotool("type", "--delay", "120", text)
        else:
            self._xdotool("key", "--delay", "60", "--clearmodifiers", *text)

    def click(self, x, y, button=1):
        self._xdotool("mousemove", str(x), str(y), "click", str(button))

    def active_window(self):
        return self._xdotool("getactivewindow").strip()

    def title(self, window):
        return self._xdotool("getwindowname", window).strip()

    def close(self, window):
        """What the window's close button does."""
        self._xdotool("windowactivate", "--sync", window)
        self._xdotool("key", "--clearmodifiers", "alt+F4")

    def screenshot(self, path, window="root"):
        """The whole screen, or one window with its frame."""
        frame = ["-frame"] if window != "root" else []
        subprocess.run(["import", *frame, "-window", window, path], env=self._env, timeout=30, check=True,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
