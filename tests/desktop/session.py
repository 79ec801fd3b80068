"""A desktop of its own: an X server that nobody sees, a window manager, and the editor on it, which
is worked by keys and looked at from outside. For tests and for the pictures of the documents."""

import os
import shutil
import subprocess
import tempfile
import time
from contextlib import contextmanager
from pathlib import Path

PATIENCE = 60  # seconds; a busy machine is slow, a fault lasts
TITLE = "Quillon's Vantorel v"
MORTAL = ("setpriv", "--pdeathsig", "TERM")  # what it starts ends with the test, however that ends


class Fault(Exception):
    """Something did not come about."""


def wait_for(condition, what):
    """Waits until condition() gives something true, and gives it back. `what` says, in a fault,
    what was waited for."""
    deadline = time.monotonic() + PATIENCE
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise Fault(f"waited {PATIENCE} seconds in vain: {what}")
        time.sleep(0.02)


class Desktop:
    """An X server of `size` (width, height) with a window manager. `with` ends both."""

    def __init__(self, size=(1600, 1200)):
        self.home = Path(tempfile.mkdtemp(prefix="vantrel3-desktop-"))
        inherited = {"PATH", "LANG", "LC_ALL", "TMPDIR", "LD_LIBRARY_PATH", "ASAN_OPTIONS"}
        self.environment = {name: os.environ[name] for name in inherited & os.environ.keys()}
        self.environment |= {"HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.home)}
        self.home.chmod(0o700)
        self.children = []
        try:
            self._start_server(size)
            # It says that it is there before it gives the focus to windows that open.
            ready = self.home / "ready"
            self._spawn("openbox", "--startup", f"touch {ready}")
            wait_for(ready.exists, "the window manager")
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for child in reversed(self.children):
            child.terminate()
            child.wait()
        shutil.rmtree(self.home, ignore_errors=True)

    def _spawn(self, *command, **options):
        child = subprocess.Popen([*MORTAL, *command], env=self.environment, stdin=subprocess.DEVNULL,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        self.children.append(child)
        return child

    def _start_server(self, size):
        reading, writing = os.pipe()
        server = self._spawn("Xvfb", "-displayfd", str(writing), "-screen", "0",
                             f"{size[0]}x{size[1]}x24", "-nolisten", "tcp", "-noreset",
                             pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as number:
            display = number.readline().strip()
        if not display:
            raise Fault(f"the X server ended with {server.wait()}")
        self.environment["DISPLAY"] = ":" + display
        self.run("xset", "r", "off")  # a key that a busy machine holds down long is one key

    def output(self, *command, **options):
        """What a program says; a program that fails says nothing."""
        return subprocess.run(command, env=self.environment, check=False, encoding="utf-8",
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=PATIENCE,
                              **options).stdout

    def run(self, *command, **options):
        """Runs a program that has to succeed."""
        subprocess.run(command, env=self.environment, check=True, stdout=subprocess.DEVNULL,
                       timeout=PATIENCE, **options)

    def keys(self, *keys):
        """Presses keys one after the other ("alt+m", "Tab", "Tab") in the window with the focus."""
        self.run("xdotool", "key", *keys)

    def type(self, text):
        self.run("xdotool", "type", text)

    def over(self, text):
        """Types a text over what stands in the text box with the focus."""
        self.keys("Home", "shift+End")
        self.type(text)

    def focused_title(self):
        return self.output("xdotool", "getwindowfocus", "getwindowname").strip()

    def wait_for_window(self, title):
        """Waits until a window with this title (its beginning) has the keyboard; gives its id."""
        try:
            wait_for(lambda: self.focused_title().startswith(title), f"the window {title}")
        except Fault as fault:
            raise Fault(f"{fault}; the keyboard has: {self.focused_title()}") from None
        return self.output("xdotool", "getwindowfocus").strip()

    def wait_for_dialog(self):
        """Waits until another window than the editor's own has the keyboard; gives its id."""
        wait_for(lambda: self.focused_title() and not self.focused_title().startswith(TITLE),
                 "a dialog")
        return self.output("xdotool", "getwindowfocus").strip()

    def put_on_clipboard(self, text):
        self.run("xclip", "-selection", "clipboard", input=text.encode(), stderr=subprocess.DEVNULL)

    def clipboard(self):
        return self.output("xclip", "-selection", "clipboard", "-o")

    def place(self, window):
        """Where a window's contents lie on the screen: left, top, width, height in pixels."""
        lines = self.output("xwininfo", "-id", window).splitlines()
        values = dict(line.strip().split(":", 1) for line in lines if ":" in line)
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(values[name]) for name in names)

    def picture(self, window, file):
        """Puts a picture of a window's contents into a PNG file."""
        self.run("import", "-window", window, str(file))

    def colors(self, window):
        """How often each color ("#RRGGBB") is seen in a window."""
        file = str(self.home / "colors.png")
        self.picture(window, file)
        lines = self.output("convert", file, "-alpha", "off", "-depth", "8", "-format", "%c",
                            "histogram:info:").splitlines()
        parts = [line.replace(":", " ").split() for line in lines]
        return {part[-2]: int(part[0]) for part in parts if part}

    @contextmanager
    def monitors(self, **places):
        """Divides the screen, as long as `with` lasts, into monitors with a name, a place and a
        size: name=(left, top, width, height). The one called "primary" is the primary one."""
        output = "screen"
        for name, (left, top, width, height) in places.items():
            mark = "*" if name == "primary" else ""
            self.run("xrandr", "--setmonitor", mark + name,
                     f"{width}/300x{height}/300+{left}+{top}", output)
            output = "none"
        try:
            yield
        finally:
            for name in places:
                self.run("xrandr", "--delmonitor", name)


class Editor:
    """The editor in a program directory of its own, running on a desktop."""

    def __init__(self, desktop, directory, environment=None):
        self.desktop = desktop
        self.process = subprocess.Popen(
            [*MORTAL, "./vantrel3"], cwd=directory, env=desktop.environment | (environment or {}),
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            start_new_session=True)
        desktop.children.append(self.process)
        self.window = desktop.wait_for_window(TITLE)

    def wait_for_engine(self):
        """Waits for the end of a run, and of the console window that it may have opened."""
        pid = self.process.pid
        children = Path(f"/proc/{pid}/task/{pid}/children")
        wait_for(lambda: not children.read_text(), "the end of the engine")
        self.desktop.wait_for_window(TITLE)

    def wait_for_end(self):
        wait_for(lambda: self.process.poll() is not None, "the end of the program")
        return self.process.returncode


def program_directory(root, editor, engine, share, log):
    """A program directory as it is shipped, below a folder."""
    directory = Path(root) / "program"
    directory.mkdir(parents=True)
    shutil.copytree(Path(share) / "templates", directory / "templates")
    for file, name in ((editor, "vantrel3"), (engine, "morvane.exe"), (log, "games.log"),
                       (Path(share) / "morvane.cfg", "morvane.cfg")):
        shutil.copy2(file, directory / name)
    return directory
