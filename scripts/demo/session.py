# SPDX-License-Identifier: GPL-3.0-or-later
"""One program with a virtual scanner on a display of its own and an install root of its own."""
import os
import shutil
import subprocess
import tempfile
import time

from display import Display
from processes import Supervisor, descendants, program_of
from programlog import ProgramLog
from settings import write_ini

PROGRAM = "qwd200-rooted"
FOLDERS = ("scanModeFile", "tempfiles", "tempTxtFiles")
TRANSLATION = "/usr/share/qt5/translations/qtbase_zh_CN.qm"
# What the factory settings (Letter, front side, blank pages kept) would make of the sample sheets.
DEMO_KEYS = [(group, key, value) for group in ("Scan_Scan", "Scan_PDF", "File_PDF")
             for key, value in (("paperSize", "0"), ("scanType", "3"), ("delBlank", "true"))]
PATH_GROUPS = [f"{page}_{function}_FilePath" for page in ("Scan", "File") for function in ("Scan", "PDF", "OCR")]


class SessionError(Exception):
    """The program or its surroundings did not come up."""


class TimedOut(Exception):
    pass


def natural_name(path):
    """Sort key: numbers in names count as numbers."""
    parts = []
    number = ""
    for character in os.path.basename(path) + "\0":
        if character.isdigit():
            number += character
            continue
        if number:
            parts.append((0, int(number), ""))
            number = ""
        parts.append((1, 0, character))
    return parts


def drop_old_runs(folder, days=1):
    """Removes the files of demos that were started more than that many days ago."""
    for entry in os.scandir(folder):
        if entry.is_dir() and time.time() - entry.stat().st_mtime > days * 86400:
            shutil.rmtree(entry.path, ignore_errors=True)


class Session:
    """Use as a context manager: leaving it ends every process that was started."""

    def __init__(self, build, feeder=None, out=None, keys=(), path_keys=(), speed="fast", tray=True):
        self.build = os.path.abspath(build)
        self.feeder = os.path.abspath(feeder or os.path.join(self.build, "samples"))
        runs = os.path.join(self.build, "demo")
        os.makedirs(runs, exist_ok=True)
        drop_old_runs(runs)
        self.folder = tempfile.mkdtemp(prefix=time.strftime("%Y%m%d-%H%M%S-"), dir=runs)
        self.root = os.path.join(self.folder, "root")
        self.saved_folder = os.path.abspath(out or os.path.join(self.folder, "saved"))
        self.log_path = os.path.join(self.folder, "program.log")
        self.log = None
        self._speed = speed
        self._tray = tray
        self._keys = DEMO_KEYS + list(keys)
        self._path_keys = [(group, "savepath", self.saved_folder) for group in PATH_GROUPS] + list(path_keys)
        self._supervisor = Supervisor()
        # Sockets need short names, which a build folder may not have.
        self._runtime = tempfile.mkdtemp(prefix="qwd200-demo-")
        self._env = {}
        self._before = {}
        self._ended_before = 0
        self._pressed = 0.0
        self.display = None
        self.scanner = None

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self._supervisor.close()
        shutil.rmtree(self._runtime, ignore_errors=True)

    # --- start ---------------------------------------------------------------------------------------------

    def prepare(self):
        """A fresh install root with the wanted settings, and the display."""
        for folder in FOLDERS:
            os.makedirs(os.path.join(self.root, folder))
        if os.path.exists(TRANSLATION):
            shutil.copyfile(TRANSLATION, os.path.join(self.root, "qt_zh_CN.qm"))
        os.symlink(os.path.join(self.build, "companions", "zip-ofd", "zip-ofd"), os.path.join(self.root, "zip-ofd"))
        write_ini(os.path.join(self.root, "QWD200.conf"), self._keys)
        write_ini(os.path.join(self.root, "QWD200_path.conf"), self._path_keys)
        with open(os.path.join(self.folder, "display.log"), "ab") as log:
            self.display = Display(self._supervisor, log, self._tray)
        self._env = self._environment()

    def _environment(self):
        env = {key: value for key, value in os.environ.items()
               if key not in ("WAYLAND_DISPLAY", "SESSION_MANAGER") and not key.startswith("QT_")}
        env.update(DISPLAY=self.display.name, QT_QPA_PLATFORM="xcb", XDG_RUNTIME_DIR=self._runtime,
                   DBUS_SESSION_BUS_ADDRESS="disabled:", QWD200_ROOT=self.root + "/",
                   QWD200_SAVE_FOLDER=self.saved_folder, VSCAN_SOCKET=os.path.join(self._runtime, "vscan"))
        return env

    @property
    def program(self):
        return os.path.join(self.build, "src", "app", PROGRAM)

    def start_program(self, wait_for_window=30):
        """Starts the program with the virtual scanner attached and waits for its window."""
        vscan = os.path.join(self.build, "vscan", "vscan")
        for needed in (vscan, self.program):
            if not os.access(needed, os.X_OK):
                raise SessionError(f"{needed} is not built")
        sheets = ["--feeder", self.feeder] if os.listdir(self.feeder) else []  # an empty feeder is not loaded
        command = [vscan, "run", "--sock", self._env["VSCAN_SOCKET"], *sheets, "--speed", self._speed, "--", self.program]
        with open(self.log_path, "ab") as log:
            self.scanner = self._supervisor.start(command, log=log, env=self._env, cwd=self.folder)
        self.log = self.log or ProgramLog(self.log_path)
        self.wait_until(lambda: self.window() is not None, wait_for_window, "the program's window did not appear")

    def start_again(self):
        """Another start of the program on the same root while the first one runs (or not); returns the process."""
        with open(self.log_path, "ab") as log:
            return self._supervisor.start([self.program], log=log, env=self._env, cwd=self.folder)

    def window(self):
        """The program's largest visible window, None before there is one."""
        windows = self.display.windows("qwd200")
        return windows[0] if windows else None

    def program_pids(self):
        return [pid for pid in descendants(os.getpid()) if program_of(pid) == PROGRAM]

    def wait_until(self, condition, seconds, failure):
        deadline = time.monotonic() + seconds
        while not condition():
            if self.scanner.poll() is not None:
                raise SessionError(f"the program ended (exit status {self.scanner.returncode}); see {self.log_path}")
            if time.monotonic() > deadline:
                raise TimedOut(failure)
            time.sleep(0.05)

    # --- scanner and scan ----------------------------------------------------------------------------------

    def vscan(self, *verb):
        """Tells the virtual scanner something ("jam-at", "2") and returns its answer."""
        result = subprocess.run([os.path.join(self.build, "vscan", "vscan"), *verb], env=self._env, timeout=20, text=True,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if result.returncode != 0:
            raise SessionError(f"vscan {' '.join(verb)}: {result.stdout.strip()}")
        return result.stdout

    def window_above(self):
        """The window that has the focus: a dialog, a viewer, or the program's main window."""
        return self.display.active_window()

    def press_key(self, code):
        """A key of the scanner; the program notices it within its poll interval."""
        progress_before = self._begin_batch()
        self.vscan("press", str(code))
        self.wait_until(lambda: self._progress_count() > progress_before, 20, "the scanner's key had no effect")

    def press_scan(self):
        self.press_scan_with("ctrl+Return")

    def _begin_batch(self):
        self.log.update()
        self._before = self._files()
        self._ended_before = self.log.batches_ended
        self._pressed = time.monotonic()
        return len(self.log.texts("progress"))

    def _progress_count(self):
        self.log.update()
        return len(self.log.texts("progress"))

    def press_scan_with(self, keys):
        """A shortcut that starts a scan, pressed again when the window was not ready for it yet."""
        progress_before = self._begin_batch()
        for _ in range(5):
            window = self.window()
            if window:
                self.display.press(window, keys)
            deadline = time.monotonic() + 3
            while time.monotonic() < deadline:
                if self._progress_count() > progress_before:
                    return
                time.sleep(0.02)
            self._pressed = time.monotonic()
        raise SessionError("the scan key had no effect")

    def wait_for_progress(self, words, seconds):
        """Waits until a progress text of this run contains `words`."""
        def seen():
            self.log.update()
            return any(words in text for text in self.log.texts("progress"))
        self.wait_until(seen, seconds, f"no progress text with {words!r}")

    def wait_for_end(self, seconds):
        """Waits for the end of the batch; returns the seconds from the press to it."""
        def ended():
            self.log.update()
            return self.log.batches_ended > self._ended_before
        self.wait_until(ended, seconds, f"the batch did not end within {seconds:g} s")
        took = time.monotonic() - self._pressed
        time.sleep(0.7)  # the window's last texts and its repaint
        self.log.update()
        return took

    def _files(self):
        """All files below the save folder with what tells a new version from an old one."""
        found = {}
        for folder, _, names in os.walk(self.saved_folder):
            for name in names:
                path = os.path.join(folder, name)
                status = os.stat(path)
                found[path] = (status.st_mtime_ns, status.st_ino)
        return found

    def new_files(self):
        """Files that this batch wrote, in the order in which they were saved."""
        after = self._files()
        new = {path for path, version in after.items() if self._before.get(path) != version}
        logged = [os.path.realpath(path) for path in self.log.texts("saved")]
        places = {path: place for place, path in enumerate(logged)}
        return sorted(new, key=lambda path: (places.get(os.path.realpath(path), len(logged)), natural_name(path)))

    def screenshot(self, name="window.png"):
        path = os.path.join(self.folder, name)
        self.display.screenshot(path)
        return path
