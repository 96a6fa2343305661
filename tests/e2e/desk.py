"""A desk for the end-to-end tests: a screen of its own under one desktop's window manager, and what a person can do there.

Everything is done with the mouse and the keys, and seen on the screen. Only windows are looked up by other means: their
title, place and size, and which of them has the keys.
"""

import ctypes
import itertools
import mmap
import os
import re
import shutil
import signal
import struct
import subprocess
import tempfile
import time
import traceback
from pathlib import Path

TWIPS = 15  # a pixel
FAILURES = Path(tempfile.gettempdir()) / "morva-e2e"  # pictures of the screen at a failure

ADDRESS = "10.9.0.1"  # one's own, though none that stands for oneself: systems treat those in ways of their own

# What starts each desktop, and what its session calls itself: Qt goes by that.
DESKTOPS = {
    "none": ("", ""),
    "openbox": ("openbox --sm-disable", ""),
    "xfwm4": ("xfwm4 --compositor=off", "XFCE"),
    "mutter": ("mutter --x11", "GNOME"),
    "kwin": ("kwin_x11", "KDE"),
    "marco": ("marco --no-composite", "MATE"),
    "metacity": ("metacity --no-composite", "GNOME-Flashback:GNOME"),
    "icewm": ("icewm", "ICEWM"),
    "gnome": ("mutter --wayland --nested --wayland-display=wayland ./first", "GNOME"),
    "kde": ("./kwin_wayland --xwayland --socket=wayland --no-lockscreen --width={} --height={} ./first", "KDE"),
    "weston": ("weston --backend=x11-backend.so --use-pixman --socket=wayland --width={} --height={}", ""),
}
for one in "gnome", "kde":
    DESKTOPS[f"{one}-native"] = DESKTOPS[one]
SESSIONS = "gnome", "kde", "gnome-native", "kde-native", "weston"  # on Wayland, the last three without an X server


class Failure(Exception):
    """Something that should have happened has not, or the other way round."""


def check(holds, words):
    if not holds:
        raise Failure(words)


def awaited(condition, words, seconds=30.0):
    """What `condition` gives as soon as it gives something true; fails with `words` when that takes too long."""
    deadline = time.monotonic() + seconds
    while not (result := condition()):
        check(time.monotonic() < deadline, f"{words}: not within {seconds:g} s")
        time.sleep(0.02)
    return result


def own_network():
    """Gives this thread and what it starts a network of their own, where nobody else has the port."""
    new_user, new_net = 0x10000000, 0x40000000
    user, group = os.getuid(), os.getgid()
    libc = ctypes.CDLL(None, use_errno=True)
    if libc.unshare(new_net if user == 0 else new_user | new_net) != 0:
        raise Failure(f"no network of its own: {os.strerror(ctypes.get_errno())}")
    if user != 0:
        Path("/proc/self/setgroups").write_text("deny")
        Path("/proc/self/uid_map").write_text(f"0 {user} 1")
        Path("/proc/self/gid_map").write_text(f"0 {group} 1")
    subprocess.run(["ip", "link", "set", "lo", "up"], check=True)
    subprocess.run(["ip", "addr", "add", f"{ADDRESS}/24", "dev", "lo"], check=True)


def run(plays):
    """Gives the plays, functions by their names, and tells how each went. The exit code of the whole."""
    began, failed = time.monotonic(), 0
    for name, play in plays.items():
        started, outcome = time.monotonic(), "ok"
        try:
            play()
        except Exception as failure:  # whatever went wrong, the others may still go well
            traceback.print_exc()
            outcome, failed = f"FAILED: {failure}", failed + 1
        print(f"{time.monotonic() - started:5.1f} s  {name}: {outcome}", flush=True)
    print(f"{time.monotonic() - began:5.1f} s  in all, {failed} of {len(plays)} failed")
    return 1 if failed else 0


class Window:
    """A window on the screen: title, place and size in pixels, with a frame that the program itself draws, if any."""

    def __init__(self, desk, ident, title, x, y, width, height):
        self.desk, self.ident, self.title = desk, ident, title
        self.x, self.y, self.width, self.height = map(int, (x, y, width, height))

    def inside(self, width, height):
        """The window less the program's own frame and title bar. None if that does not leave the size."""
        frame, title_bar = (self.width - width) // 2, self.height - height - (self.width - width) // 2
        thickest = 40 if self.desk.native else 3
        if not 0 <= frame <= thickest or not frame <= title_bar <= frame + thickest // 4 * 3 or self.width % 2 != width % 2:
            return None
        return Window(self.desk, self.ident, self.title, self.x + frame, self.y + title_bar, width, height)

    def click(self, left, top, width, height, button=1):
        """Clicks on a control's middle; its place and size are twips, as in the layout."""
        self.desk.click(self.x + int(left + width / 2) // TWIPS, self.y + int(top + height / 2) // TWIPS, button)

    def wholly_on_the_screen(self):
        return (self.x >= 0 and self.y >= 0 and self.x + self.width <= self.desk.width
                and self.y + self.height <= self.desk.height)

    def has_keys(self):
        return self.desk.output("xdotool", "getwindowfocus").strip() == str(int(self.ident, 16))

    def picture(self, left=0, top=0, width=None, height=None):
        """What the screen shows of the window, or of a rectangle of it in pixels."""
        return self.desk.picture(self.x + left, self.y + top, width or self.width, height or self.height)

    def move(self, x, y):
        """Puts it there, more or less, as a program can."""
        self.desk.output("xdotool", "windowmove", "--sync", self.ident, x, y)

    def activate(self):
        self.desk.output("xdotool", "windowactivate", "--sync", self.ident)


class View(Window):
    """A window of a Wayland session, which tells nobody where it is: one has to look where the pointer is in it."""

    def __init__(self, talk, surface, shell, ident):
        self.desk, self.talk, self.ident, self.ids = talk.desk, talk, surface, (surface, shell, ident)
        self.title, self.width, self.height, self.owner, self.place = "", 0, 0, None, None

    def corner(self):
        if self.owner:
            return self.owner.x + self.place[0], self.owner.y + self.place[1]
        self.place = self.place or self.talk.locate(self)
        return self.place

    x = property(lambda self: self.corner()[0])
    y = property(lambda self: self.corner()[1])

    def has_keys(self):
        self.talk.listen()
        return self.ident in self.talk.keyboards.values()


class Talk:
    """What a program and its Wayland session tell each other, as the program writes it down (WAYLAND_DEBUG)."""

    LINE = re.compile(r"\[ *\d+\.\d+\] (?: -> )?(\w+)[@#](\d+)\.(\w+)\((.*)\)")

    def __init__(self, desk, program):
        self.desk, self.views, self.keyboards, self.pointer, self.rest = desk, [], {}, None, b""
        self.mouse, self.over = None, None  # a desktop's own file dialogs come with devices of their own
        self.spots = [(desk.width // 2, desk.height // 2)]
        self.spots += [(x, y) for y in range(60, desk.height, 90) for x in range(60, desk.width, 150)]
        self.log = open(f"/proc/{program.pid}/fd/2", "rb", buffering=0)

    def listen(self):
        """The windows, newest last."""
        *lines, self.rest = (self.rest + self.log.read()).split(b"\n")
        for line in lines:
            if said := self.LINE.fullmatch(line.decode(errors="replace")):
                self.take(*said.groups())
        return self.views

    def find(self, ident):
        return next((view for view in reversed(self.views) if ident in view.ids), None)

    def take(self, kind, ident, verb, words):
        plain = words.split('"')[0]
        idents = re.findall(r"[@#](\d+)", plain)
        numbers = [round(float(word)) for word in re.findall(r"-?\d+(?:\.\d+)?", plain)]
        view = self.find(ident)
        if verb == "get_xdg_surface":
            self.shell = idents
        elif verb in ("get_toplevel", "get_popup"):
            self.views.append(View(self, self.shell[1], ident, idents[0]))
            self.views[-1].owner = self.find(idents[1]) if verb == "get_popup" else None
        elif kind in ("xdg_toplevel", "xdg_popup") and verb == "destroy":
            self.views.remove(view)
        elif verb == "set_title":
            view.title = words[1:-1]
        elif verb == "set_window_geometry" and (view.width, view.height) != (numbers[2], numbers[3]):
            view.width, view.height, view.place = numbers[2], numbers[3], view.owner and view.place
        elif (kind, verb) == ("xdg_popup", "configure"):
            view.place = numbers[0], numbers[1]
        elif kind == "wl_keyboard" and verb in ("enter", "leave"):
            self.keyboards[ident] = idents[0] if idents and verb == "enter" else None
        elif kind == "wl_pointer" and verb in ("enter", "motion") and self.mouse in (None, ident):
            self.mouse, self.over, self.pointer = ident, *(idents or [self.over]), numbers[-2:]

    def locate(self, view):
        """Its corner on the screen: moves the pointer about until it is in the window. (0, 0) if that closes meanwhile."""
        tried, deadline = [], time.monotonic() + 30
        for spot in itertools.cycle(self.spots):
            tried.append(spot)
            if self.corner_by(view, spot, 0.05):  # or by one of the spots before: a session can lag behind
                for x, y in tried[:-9:-1]:
                    corner = self.corner_by(view, (x + 2, y + 1), 0.3)
                    if corner and corner == self.corner_by(view, (x, y), 0.3):
                        self.spots.insert(0, (x, y))
                        return corner
            if view not in self.views:
                return 0, 0
            check(time.monotonic() < deadline, f"the window {view.title} is nowhere on the screen")

    def corner_by(self, view, spot, seconds):
        self.pointer = None
        self.desk.point(*spot)
        time.sleep(seconds)
        self.listen()
        return self.pointer and self.over == view.ident and (spot[0] - self.pointer[0], spot[1] - self.pointer[1])


class Desk:
    """One screen, for a with statement: at its end every program on it is ended. Of a failure a picture is kept."""

    TREE_LINE = re.compile(
        r'^\s+(0x[0-9a-f]+) (?:"(.*)"|\(has no name\)): \(.*\)\s+(\d+)x(\d+)\+-?\d+\+-?\d+\s+\+(-?\d+)\+(-?\d+)$', re.M)
    SETTINGS = {  # no key of a slow computer is held down
        ".config/glib-2.0/settings/keyfile": "[org/gnome/desktop/peripherals/keyboard]\nrepeat=false\n"
                                                "[org/gnome/mutter]\ncenter-new-windows=true\n",
        ".config/kcminputrc": "[Keyboard]\nKeyRepeat=nothing\n",
        ".config/weston.ini": "[shell]\npanel-position=none\nlocking=false\nclose-animation=none\nstartup-animation=none\n"
               "[keyboard]\nrepeat-rate=1\nrepeat-delay=60000\n[input-method]\npath=\n[autolaunch]\npath=./first\n"}

    def __init__(self, desktop="openbox", width=1280, height=800, **environment):
        self.desktop, self.width, self.height = desktop, width, height
        command, name = DESKTOPS[desktop]
        self.command = command.format(width, height).split()
        self.session, self.native = desktop in SESSIONS, desktop in SESSIONS[2:]
        self.talks = {}
        self.folder = Path(tempfile.mkdtemp(prefix="morva-e2e-"))
        self.programs = []
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.folder),
            "LANG": "C.UTF-8",
            "http_proxy": f"http://{ADDRESS}:9",  # which nobody answers at; it is for web pages
            "XDG_CURRENT_DESKTOP": name,
            **({"KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"} if name == "KDE" else {}),
            "XDG_SESSION_TYPE": "wayland" if self.session else "x11",
            "KWIN_COMPOSE": "Q" if self.session else "N",
            "LIBGL_ALWAYS_SOFTWARE": "1",
            "GSETTINGS_BACKEND": "keyfile",
            "MUTTER_DEBUG_DUMMY_MODE_SPECS": f"{width}x{height}",
            # Where damage comes while it paints, mutter now and then leaves it out on a screen like this one.
            "CLUTTER_PAINT": "" if self.session else "disable-clipped-redraws",
            **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")},
            **environment,
        }
        self.inside = self.environment  # what the programs on the desktop see

    def __enter__(self):
        try:
            self._start_screen()
            if self.session:
                self._start_session()
            elif self.command:
                self.start("dbus-run-session", "--", *self.command)
            if self.command and not self.native:
                awaited(self._shows_windows, f"the window manager {self.desktop}")
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, failure=None, *_):
        if failure:
            FAILURES.mkdir(exist_ok=True)
            path = FAILURES / f"{self.folder.name}-{self.desktop}.png"
            self.keep_picture(path)
            print(f"         the screen is in {path}")
        self.end(*reversed(self.programs))
        # What these have started in turn, a bus above all, does not always end with them.
        ours = f"XDG_RUNTIME_DIR={self.folder}".encode()
        for environment in Path("/proc").glob("[1-9]*/environ"):
            try:
                if ours in environment.read_bytes().split(b"\0"):
                    os.kill(int(environment.parent.name), signal.SIGKILL)
            except OSError:  # ended meanwhile, or somebody else's
                pass
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start_screen(self):
        self.environment["DISPLAY"] = ":" + self.start_and_hear(
            "Xvfb", "-screen", "0", f"{self.width}x{self.height}x24", "-fbdir", self.folder, "-noreset",
            "-nolisten", "tcp", "-displayfd")
        with open(self.folder / "Xvfb_screen0", "rb") as file:
            self.screen = mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ)
        # The file is a window dump: a header of big-endian numbers, the colours, the pixels.
        header = struct.unpack(">25I", self.screen[:100])
        self.bytes_a_line = header[12]
        self.first_pixel = header[0] + 12 * header[19]

    def _shows_windows(self):  # a window manager that says that it is there can still lose the first one
        if "window id" not in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"):
            return False
        probe = self.start("xev")
        shown = self.output("timeout", 3, "xdotool", "search", "--sync", "--onlyvisible", "--name", "Event Tester")
        self.end(probe)
        return shown

    def _start_session(self):
        """Desktop in a window that fills the screen; the programs on it get what it hands on to one that it starts."""
        shutil.copyfile(shutil.which("kwin_wayland"), self.folder / "kwin_wayland")  # without its file capabilities
        for name, words in self.SETTINGS.items():
            (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
            (self.folder / name).write_text(words)
        first, handed_on = self.folder / "first", self.folder / "environment"
        first.write_text(f"#!/bin/sh\nenv -0 >{handed_on}.new\nmv {handed_on}.new {handed_on}\nexec sleep infinity\n")
        for program in first, self.folder / "kwin_wayland":
            program.chmod(0o700)
        self.start("dbus-run-session", "--", *self.command, cwd=self.folder)
        awaited(handed_on.exists, f"the session {self.desktop}")
        self.inside = dict(line.split("=", 1) for line in handed_on.read_text().split("\0") if line)
        if self.native:
            self.inside |= {"QT_QPA_PLATFORM": "wayland", "WAYLAND_DEBUG": "1"}
            self.inside.pop("DISPLAY", None)
        if self.desktop == "weston":  # adds up steps, and can be a pixel off until the pointer is stopped by the edges
            self.act("mousemove", self.width - 1, self.height - 1, "sleep", 0.1, "mousemove", 0, 0, "sleep", 0.1)
        self.act("mousemove", 1, 1, "mousemove", 2, 2)  # it does not know where the pointer is until it moves

    def start(self, *command, stderr=subprocess.DEVNULL, **more):
        """Starts a program that is ended together with the desk."""
        self.programs.append(subprocess.Popen([str(word) for word in command], env=self.inside, stderr=stderr,
                                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, **more))
        return self.programs[-1]

    def start_and_hear(self, *command):
        """Starts one that writes a line to the file whose number stands at the end of its command. That line."""
        reader, writer = os.pipe()
        self.start(*command, writer, pass_fds=[writer])
        os.close(writer)
        with os.fdopen(reader) as file:
            line = file.readline().strip()
        check(line, f"{command[0]} has not started")
        return line

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
        """What a command says of the screen, as the programs on it see that."""
        while True:
            done = subprocess.run([str(word) for word in command], text=True, capture_output=True,
                                  env=self.inside)
            # A window can go while the command looks at it.
            if "BadWindow" not in done.stderr and "X Error" not in done.stderr:
                return done.stdout

    def windows(self, program):
        """A program's windows on the screen, as far as they have a name. Menus have none."""
        if self.native:
            if program.pid not in self.talks:
                self.talks[program.pid] = Talk(self, program)
            return list(self.talks[program.pid].listen())
        found = self.output("xdotool", "search", "--all", "--onlyvisible", "--pid", program.pid)
        visible = {int(ident) for ident in found.split()}
        tree = self.output("xwininfo", "-root", "-tree")
        return [Window(self, ident, title, x, y, width, height)
                for ident, title, width, height, x, y in self.TREE_LINE.findall(tree) if int(ident, 16) in visible]

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

    def drag_slowly(self, start, by):
        """Drags something that the desktop itself moves: it wants to see the pointer on its way."""
        steps = [["mousemove", int(start[0] + by[0] * n / 8), int(start[1] + by[1] * n / 8), "sleep", 0.02]
                 for n in range(9)]
        self.act(*steps[0], "mousedown", 1, *[word for step in steps for word in step], "mouseup", 1)
        for view in (view for talk in self.talks.values() for view in talk.views):
            view.place = view.owner and view.place

    def keys(self, *keys):
        self.act("key", "--delay", 5, *keys)

    def type(self, text):
        self.act("type", "--delay", 3, text)

    def enter(self, text):
        self.act("type", "--delay", 3, "--args", 1, text, "key", "Return")

    def keep_picture(self, path):
        """Writes what the screen shows to a PNG file."""
        subprocess.run(["import", "-window", "root", path], env=self.environment, check=True)

    def picture(self, x, y, width, height):
        """What that part of the screen shows, as far as it is on the screen: rows of four bytes a pixel."""
        right, bottom = min(x + width, self.width), min(y + height, self.height)
        x, y = max(x, 0), max(y, 0)
        lines = [self.first_pixel + row * self.bytes_a_line for row in range(y, bottom)]
        return [self.screen[line + 4 * x : line + 4 * right] for line in lines]
