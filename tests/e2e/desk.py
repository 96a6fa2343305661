"""A desk for the end-to-end tests: a screen of its own with a window manager, and what a person can do there.

Everything is done with the mouse and the keys, and seen on the screen. Only windows are looked up by other means: by
their process and their title or size.
"""

import ctypes
import mmap
import os
import re
import shutil
import struct
import subprocess
import tempfile
import time
import traceback
from pathlib import Path

TWIPS = 15  # a pixel
FAILURES = Path(tempfile.gettempdir()) / "morva-e2e"  # pictures of the screen at a failure


class Failure(Exception):
    """Something that should have happened has not, or the other way round."""


def check(holds, words):
    if not holds:
        raise Failure(words)


def awaited(condition, words, seconds=15.0):
    """What `condition` gives as soon as it gives something true; fails with `words` when that takes too long."""
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        if time.monotonic() > deadline:
            raise Failure(f"{words}: not within {seconds:g} s")
        time.sleep(0.01)
    return result


def settled(look):
    """What `look` sees as soon as it stays the same for a while."""
    last = None
    while last != (now := look()):
        last = now
        time.sleep(0.15)
    return now


def own_network():
    """Gives this thread and what it starts a network of their own, where nobody else has the port. Whether it could:
    only root can."""
    clone_newnet = 0x40000000
    if ctypes.CDLL(None).unshare(clone_newnet) != 0:
        return False
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    return True


def run(desks, steps, go_on=False):
    """Does the steps in turn and tells how each went. The first that fails is the last, unless they are to go on. The
    exit code of the whole."""
    began, failed = time.monotonic(), 0
    for step in steps:
        name, started = step.__name__.replace("_", " "), time.monotonic()
        try:
            step()
            outcome = "ok"
        except Exception as failure:  # whatever went wrong, the others may still go well
            outcome = f"FAILED: {failure or type(failure).__name__}"
            failed += 1
            if not isinstance(failure, Failure):
                traceback.print_exc()
        print(f"{time.monotonic() - started:5.1f} s  {name}: {outcome}", flush=True)
        if outcome != "ok":
            keep_pictures(desks, step.__name__)
            if not go_on:
                break
    print(f"{time.monotonic() - began:5.1f} s  in all, {failed} of {len(steps)} failed")
    return 1 if failed else 0


def keep_pictures(desks, name):
    FAILURES.mkdir(exist_ok=True)
    for number, desk in enumerate(desks, 1):
        path = FAILURES / f"{name}-{number}.png"
        desk.keep_picture(path)
        print(f"         the screen is in {path}")


class Picture:
    """A rectangle of the screen, as rows of four bytes a pixel: blue, green, red and one unused."""

    def __init__(self, rows):
        self.rows = rows

    def __eq__(self, other):
        return isinstance(other, Picture) and self.rows == other.rows

    def __hash__(self):
        return hash(tuple(self.rows))

    def part(self, x, y, width, height):
        return Picture([row[4 * x : 4 * (x + width)] for row in self.rows[y : y + height]])

    def pixel(self, x, y):
        blue, green, red = self.rows[y][4 * x : 4 * x + 3]
        return red, green, blue

    def colors(self):
        """How often each colour is there: a dictionary by (red, green, blue)."""
        count = {}
        for y, row in enumerate(self.rows):
            for x in range(len(row) // 4):
                color = self.pixel(x, y)
                count[color] = count.get(color, 0) + 1
        return count

    def differing(self, other):
        """The smallest rectangle outside which the two are alike: left, top, width, height. None: all alike."""
        rows = [y for y, (a, b) in enumerate(zip(self.rows, other.rows)) if a != b]
        if not rows:
            return None
        columns = {x // 4 for y in rows for x, (a, b) in enumerate(zip(self.rows[y], other.rows[y])) if a != b}
        return min(columns), rows[0], max(columns) - min(columns) + 1, rows[-1] - rows[0] + 1


class Window:
    """A window that is on the screen: its title, and the place and size of its inside in pixels."""

    def __init__(self, desk, ident, title, x, y, width, height):
        self.desk, self.ident, self.title = desk, ident, title
        self.x, self.y, self.width, self.height = x, y, width, height

    def inside(self, width, height):
        """The inside of a window that draws its own frame, when it has that size; None when it hasn't."""
        frame = (self.width - width) // 2
        if not 0 <= frame < 5 or (self.width, self.height) != (width + 2 * frame, height + 2 * frame):
            return None
        return Window(self.desk, self.ident, self.title, self.x + frame, self.y + frame, width, height)

    def at(self, left, top, width=0, height=0):
        """The place on the screen of a control's middle; the control's place and size are twips, as in the layout."""
        return self.x + int(left + width / 2) // TWIPS, self.y + int(top + height / 2) // TWIPS

    def click(self, *control, button=1):
        self.desk.click(*self.at(*control), button=button)

    def move(self, x, y):
        """Puts the upper left corner of its inside there, more or less."""
        self.desk.act("windowmove", "--sync", self.ident, x, y)

    def activate(self):
        if self.desk.active() != int(self.ident, 16):
            self.desk.act("windowactivate", "--sync", self.ident)

    def picture(self):
        return self.desk.picture(self.x, self.y, self.width, self.height)

    def stays_on_top(self):
        return "_NET_WM_STATE_ABOVE" in self.desk.output("xprop", "-id", self.ident, "_NET_WM_STATE")


class Desk:
    """One screen. Use it in a with statement: at the end every program on it is ended."""

    TREE_LINE = re.compile(
        r'^\s+(0x[0-9a-f]+) (?:"(.*)"|\(has no name\)): \(.*\)\s+(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)$', re.M)

    def __init__(self):
        self.folder = Path(tempfile.mkdtemp(prefix="morva-e2e-"))
        self.programs = []
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.folder),
            "LANG": "C.UTF-8",
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
        }

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.end(*reversed(self.programs))
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start(self):
        reader, writer = os.pipe()
        self.start("Xvfb", "-displayfd", writer, "-screen", "0", "1600x1000x24", "-fbdir", self.folder, "-noreset",
                   "-nolisten", "tcp", pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as display:
            number = display.readline().strip()
        check(number, "the screen has not started")
        self.environment["DISPLAY"] = ":" + number
        with open(self.folder / "Xvfb_screen0", "rb") as file:
            self.screen = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        # The file is a window dump: a header of big-endian numbers, the colours, the pixels.
        header = struct.unpack(">25I", self.screen[:100])
        self.width, self.height, self.bytes_a_line = header[4], header[5], header[12]
        self.first_pixel = header[0] + 12 * header[19]
        self.start("openbox", "--sm-disable")
        awaited(lambda: "window id" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"), "a window manager")

    def start(self, *command, stderr=subprocess.DEVNULL, **more):
        """Starts a program that is ended together with the desk."""
        program = subprocess.Popen([str(word) for word in command], env=self.environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=stderr, **more)
        self.programs.append(program)
        return program

    def clear(self):
        """Ends what stands on the desk; the screen stays."""
        self.end(*self.programs[2:])
        del self.programs[2:]

    @staticmethod
    def end(*programs):
        for program in programs:
            program.terminate()
            try:
                program.wait(3)
            except subprocess.TimeoutExpired:
                program.kill()
                program.wait()

    def output(self, *command):
        """What a command says of the screen."""
        command = [str(word) for word in command]
        while True:
            done = subprocess.run(command, env=self.environment, text=True, capture_output=True)
            # A window can go while the command looks at it.
            if "BadWindow" not in done.stderr and "X Error" not in done.stderr:
                return done.stdout

    def windows(self, program):
        """A program's windows on the screen, as far as they have a name. Menus have none."""
        found = self.output("xdotool", "search", "--all", "--onlyvisible", "--pid", program.pid)
        visible = {int(ident) for ident in found.split()}
        tree = self.output("xwininfo", "-root", "-tree")
        return [Window(self, ident, title, int(x), int(y), int(width), int(height))
                for ident, title, width, height, x, y in self.TREE_LINE.findall(tree) if int(ident, 16) in visible]

    def active(self):
        """The number of the window that has the keys."""
        return int(self.output("xdotool", "getactivewindow") or 0)

    def act(self, *words):
        """Mouse and keys, in the words of xdotool."""
        done = subprocess.run(["xdotool", *map(str, words)], env=self.environment, text=True, capture_output=True)
        check(done.returncode == 0, f"xdotool {words}: {done.stderr.strip()}")

    def point(self, x, y):
        self.act("mousemove", x, y)

    def click(self, x, y, button=1):
        self.act("mousemove", x, y, "click", button)

    def drag(self, start, end):
        self.act("mousemove", *start, "mousedown", 1, "mousemove", *end, "mouseup", 1)

    def keys(self, *keys):
        self.act("key", "--delay", 5, *keys)

    def type(self, text):
        self.act("type", "--delay", 3, text)

    def enter(self, text):
        self.act("type", "--delay", 3, "--args", 1, text, "key", "Return")

    def keep_picture(self, path):
        """Writes what the screen shows to a PNG file."""
        subprocess.run(["import", "-window", "root", path], env=self.environment, check=True)

    def picture(self, x=0, y=0, width=None, height=None):
        width, height = width or self.width, height or self.height
        check(x >= 0 and y >= 0 and x + width <= self.width and y + height <= self.height, "a look beside the screen")
        start = self.first_pixel + y * self.bytes_a_line + 4 * x
        lines = range(start, start + height * self.bytes_a_line, self.bytes_a_line)
        return Picture([self.screen[line : line + 4 * width] for line in lines])
