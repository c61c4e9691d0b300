"""A screen without a monitor, a window manager on it, and the program in a process of its own with an empty profile."""

import contextlib
import os
import shutil
import socket
import subprocess
import tempfile
import time
from pathlib import Path

PATIENCE = 60  # seconds until something that should come is missed; reached only by failures


class Missed(Exception):
    """What was waited for did not come."""


def wait_for(what, condition):
    """Waits until condition() gives something true, and returns it."""
    end = time.monotonic() + PATIENCE
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Missed(what)
        time.sleep(0.05)


class Desktop:
    def __init__(self, width=1280, height=960):
        self.folder = Path(tempfile.mkdtemp(prefix="halvane-story-"))
        read_end, write_end = os.pipe()
        self.processes = []
        server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(write_end), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp"],
            pass_fds=[write_end], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.processes.append(server)
        os.close(write_end)
        with os.fdopen(read_end) as answer:
            number = answer.readline().strip()
        if not number:
            raise Missed("a display")
        self.environment = {
            "DISPLAY": f":{number}", "PATH": os.environ["PATH"], "HOME": str(self.folder), "TMPDIR": str(self.folder / "tmp"),
            "XDG_CONFIG_HOME": str(self.folder / "config"), "XDG_DATA_HOME": str(self.folder / "data"),
            "XDG_RUNTIME_DIR": str(self.folder / "run"), "QT_QPA_PLATFORM": "xcb",
        }
        for name in ("tmp", "config", "data", "run"):
            (self.folder / name).mkdir(mode=0o700)
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "QT_SCALE_FACTOR"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        # What the platform's plug-ins keep to the end is no leak of ours, and has no name once they are unloaded; ours show in the
        # tests without a screen.
        self.environment["ASAN_OPTIONS"] = self.environment.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        self.processes.append(subprocess.Popen(["openbox"], env=self.environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        wait_for("a window manager", lambda: "_NET_SUPPORTING_WM_CHECK(WINDOW)" in
                 self.run("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"))

    def close(self, failed):
        """Ends everything; a failed story leaves a picture of its last moment."""
        if failed:
            keep = Path(tempfile.gettempdir()) / "halvane-story-failed.png"
            subprocess.run(["import", "-window", "root", str(keep)], env=self.environment, check=False)
            print(f"the screen at that moment: {keep}")
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(10)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def run(self, *words):
        """Standard output of a small tool of the screen's."""
        return subprocess.run(words, env=self.environment, capture_output=True, text=True, check=False).stdout

    def start(self, *words, output=None):
        """Starts a program; what it writes to standard output goes to the file of that path, if there is one."""
        with open(output, "wb") if output else contextlib.nullcontext() as file:
            process = subprocess.Popen([str(word) for word in words], env=self.environment, stdout=file)
        self.processes.append(process)
        return process

    def windows(self, title):
        """The visible windows with that title, by number."""
        return self.run("xdotool", "search", "--onlyvisible", "--name", f"^{title}$").split()

    def window(self, title):
        number = wait_for(f'a window "{title}"', lambda: self.windows(title))[-1]
        self.run("xdotool", "windowactivate", "--sync", number)
        return number

    def gone(self, title):
        wait_for(f'the end of the window "{title}"', lambda: not self.windows(title))

    def keys(self, *names):
        for name in names:
            self.run("xdotool", "key", "--clearmodifiers", name)

    def keys_for(self, title, *names):
        """Presses keys in the main window until the window that they open is there: a notice on top of it swallows them."""
        def opened():
            self.window("Halvane")
            self.keys(*names)
            end = time.monotonic() + 2
            while time.monotonic() < end:
                if self.windows(title):
                    return True
                time.sleep(0.05)
            return False
        wait_for(f'a window "{title}" after {names}', opened)

    def type(self, text):
        self.run("xdotool", "type", "--delay", "2", text)

    def click(self, x, y):
        self.run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def geometry(self, window):
        lines = self.run("xdotool", "getwindowgeometry", "--shell", window).splitlines()
        values = dict(line.split("=") for line in lines if "=" in line)
        return tuple(int(values[name]) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def screenshot(self, path):
        self.run("import", "-window", "root", str(path))

    def send(self, text):
        """Hands a text to the first program's socket, as a launcher does."""
        path = str(self.folder / "tmp" / "Halvane")
        wait_for("the program's socket", lambda: os.path.exists(path))
        with socket.socket(socket.AF_UNIX) as connection:
            connection.settimeout(PATIENCE)
            connection.connect(path)
            connection.sendall(text.encode())
