"""A player: one running Morva on a desk, and the person before it. Or only the other end of the line, a bare socket."""

import os
import re
import shutil
import socket
import tempfile
import time
from pathlib import Path

from desk import ADDRESS, Window, awaited, check

ROOT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.get("MORVA", ROOT / "build" / "morva")).resolve()
VERSION = re.search(r"project\(morva VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]
PORT = 2948

# Insides of windows, pixels.
START_PICTURE = 300, 200
CHANGE_DIALOG = 231, 130
SQUARE = 56
BOARD = 8 * SQUARE
MAIN_HEIGHT = 539  # without the menu bar
TOOL_WIDTH, TOOL_HEIGHT, STRIP = 216, 238, 22  # the caption's strip where it is docked
LOG_TEXT = 2, 450, 420, 69  # within the main window below the menu bar, without frame and scroll bar
NICKS, HISTORY = (32, 32, 60, 70), (4, 130, 60, 60)  # within the tool window; the nicks beside where its menu opens

# Controls, twips: left, top, width, height.
RDO_HOST, TXT_NICK, TXT_HOST = (360, 480, 735, 255), (720, 1200, 1815, 285), (720, 1680, 1815, 285)
LBL_TIME, LBL_NICK = (0, 0, 3240, 465), (480, 480, 600, 375)
LST_HIST = 0, 1560, 3240, 2010

CHESS = "fhgjighf" + "eeeeeeee" + 32 * "." + "oooooooo" + "prqtsqrp"


class Player:
    def __init__(self, desk, nick, *wrapper):
        """`wrapper` is a command that runs the program."""
        self.desk, self.nick = desk, nick
        self.folder = Path(tempfile.mkdtemp(prefix=f"{nick}-", dir=desk.folder))
        shutil.copy(ROOT / "assets" / "morva.txt", self.folder)
        self.complaints = self.folder / "stderr"
        with open(self.complaints, "wb") as complaints:
            self.process = desk.start(*wrapper, PROGRAM, cwd=self.folder, stderr=complaints)

    # Windows.

    def windows(self):
        return self.desk.windows(self.process)

    def find(self, wanted):
        """The window with that title, or with that inside when it has no title; None when it isn't there."""
        for window in self.windows():
            found = window if window.title == wanted else isinstance(wanted, tuple) and window.inside(*wanted)
            if found:
                return found
        return None

    def window(self, wanted):
        """Waits for it to come, to have the keys and to stand still: the program moves some once it knows their frame."""

        def stands():
            before, now = self.find(wanted), self.find(wanted)
            still = before and now and (self.desk.native or (before.x, before.y) == (now.x, now.y))
            return still and now.has_keys() and now

        return awaited(stands, f"{self.nick}'s window {wanted}, with the keys")

    def gone(self, wanted):
        awaited(lambda: not self.find(wanted), f"{self.nick}'s window {wanted} closes")

    def ended(self):
        awaited(lambda: self.process.poll() is not None, f"{self.nick}'s program ends")
        check(self.process.returncode == 0, f"{self.nick}'s program ended with {self.process.returncode}")
        complaints = re.sub(r"(?m)^\[ *\d+\.\d+\] .*\n", "", self.complaints.read_text(errors="replace"))
        check(not complaints, f"{self.nick}'s program complained: {complaints}")

    # Before the game.

    def welcome(self):
        """Clicks the picture away, which goes by itself before a slow computer looks. The inside of the welcome dialog,
        as a guest sees it."""
        first = awaited(lambda: self.find(START_PICTURE) or self.find("Morva"), f"{self.nick}'s first picture")
        if first.title != "Morva":
            first.click(0, 0, 2000, 2000)
        self.gone(START_PICTURE)
        return self.window("Morva").inside(261, 142)

    def fill(self, welcome, control, text):
        welcome.click(*control)
        self.desk.type(text)

    def host(self):
        welcome = self.welcome()

        def lower():
            """The dialog as a host sees it: without a row for an address. It may just have moved away from a click."""
            (self.find("Morva").inside(261, 142) or welcome).click(*RDO_HOST)
            return self.find("Morva").inside(261, 111)

        self.fill(awaited(lower, "a host's welcome dialog"), TXT_NICK, self.nick)
        self.desk.keys("Return")
        self.window("Hosting game")

    def join(self, address=ADDRESS):
        welcome = self.welcome()
        self.fill(welcome, TXT_NICK, self.nick)
        self.fill(welcome, TXT_HOST, address)
        self.desk.keys("Return")

    def table_stands(self):
        """Waits for the game's two windows to stand side by side, as far as the desktop lets them."""

        def stand():
            if not self.look() or not self.main.wholly_on_the_screen() or not self.tool.wholly_on_the_screen():
                return False
            gap = self.tool_inside().x - self.corner()[0] - BOARD
            beside = self.main.x + self.tool.x + self.tool.width - self.desk.width  # how far the two are off the middle
            return self.desk.native or 0 <= gap <= 12 and abs(self.tool.y - self.main.y) < 12 and abs(beside) < 12

        awaited(stand, f"{self.nick}'s two windows stand side by side, wholly on the screen")

    def table_opens(self):  # on a desk where no other table has the keys
        self.table_stands()
        self.listens()

    def sit_down(self, x, y):  # puts the game's two windows there once it has begun
        self.table_stands()
        self.main.move(x, y)
        self.tool.move(x + BOARD + 12, y)
        awaited(lambda: self.look() and self.main.x - x in range(10) and self.tool.x - x - BOARD in range(30)
                and self.main.y == self.tool.y, f"{self.nick}'s two windows in their places")

    def look(self):  # anew each time: the game's two windows may have been moved
        windows = self.windows()
        # The main window's title goes on with the name of the square under the pointer.
        self.main = next((w for w in windows if w.title.startswith(f"Morva - {self.nick}")), None)
        if self.desk.native:  # docked
            if not self.main or self.main.width < BOARD + TOOL_WIDTH:
                return False
            x, y = self.corner()
            self.tool = Window(self.desk, None, self.nick, x + BOARD, y + STRIP, TOOL_WIDTH, TOOL_HEIGHT)
        else:
            self.tool = next((w for w in windows if w.title == self.nick or w.inside(TOOL_WIDTH, TOOL_HEIGHT)), None)
        return self.main and self.tool

    def listens(self):  # some desktops take a while to hand the keys back
        awaited(lambda: self.main.has_keys() or not self.desk.native and self.tool.has_keys(),
                f"the keys go to {self.nick}'s table")

    # At the board.

    def corner(self):
        """The upper left corner of the board on the screen."""
        frame = (self.main.width - BOARD - self.desk.native * TOOL_WIDTH) // 2
        return self.main.x + frame, self.main.y + self.main.height - frame - MAIN_HEIGHT

    def square(self, index):
        """The middle of a square on the screen."""
        x, y = self.corner()
        return x + SQUARE * (index % 8) + SQUARE // 2, y + SQUARE * (index // 8) + SQUARE // 2

    def drag(self, start, end):
        self.desk.drag(self.square(start), self.square(end))

    def below_bar(self, x, y, width, height):
        left, top = self.corner()
        return self.desk.picture(left + x, top + y, width, height)

    def board(self):
        return self.below_bar(0, 0, BOARD, BOARD)

    def square_picture(self, index):
        """The middle of a square, where neither the mark of a drag nor a frame for the keys is seen."""
        x, y = SQUARE * (index % 8) + 12, SQUARE * (index // 8) + 10
        return self.below_bar(x, y, SQUARE - 24, SQUARE - 20)

    def log(self):
        return self.below_bar(*LOG_TEXT)

    def tool_inside(self):
        """The tool window without a frame of its own; it may have been widened."""
        frame = (self.main.width - BOARD) // 2 * (not self.desk.native)
        return self.tool.inside(self.tool.width - 2 * frame, TOOL_HEIGHT)

    # Keys, talk and files. What is typed goes wherever the keys go.

    def keys(self, *keys):
        self.desk.keys(*keys)

    def menu(self, *keys):
        """Opens a menu by the first key, and chooses in it by the others, as each submenu comes up."""
        windows = len(self.windows())
        for depth, key in enumerate(keys[:-1], 1):
            self.desk.keys(key)
            awaited(lambda: len(self.windows()) == windows + depth, f"{self.nick}'s menu {key}")
        self.desk.keys(keys[-1])

    def tool_menu(self, *keys):
        """Opens the tool window's menu, which is to come up at the pointer, and closes it by these keys."""
        x, y = self.tool_inside().x + 60, self.tool_inside().y + 64
        self.desk.click(x, y, button=3)

        def menu():
            return any(abs(w.x - x) < 9 and abs(w.y - y) < 9 for w in self.windows())

        awaited(menu, f"{self.nick}'s menu of the tool window at {x}, {y}")
        self.press_until(lambda: not menu(), *keys)

    def say(self, text):
        self.desk.enter(text)

    def answer(self, title, *keys):
        """Answers a box by its keys. A box that has just come takes no Enter for a moment, nor does it
        while keys come."""
        self.window(title)
        self.press_until(lambda: not self.find(title), *keys)

    def press_until(self, condition, *keys):
        """Presses them again now and then: some desktops take a while to hand them to a window that has just come."""

        def pressed():
            self.desk.keys(*keys)
            until = time.monotonic() + 0.9
            while not condition() and time.monotonic() < until:
                time.sleep(0.02)
            return condition()

        awaited(pressed, f"something of {self.nick}'s takes {keys}")

    def name_file(self, title, path):
        self.window(title)
        self.desk.keys("ctrl+a", "BackSpace")
        self.desk.type(path)
        self.answer(title, "Return")

    def text_of(self, name):
        """What stands in a file of the player's, once it is there. It appears whole."""
        path = self.folder / name
        awaited(path.exists, f"the file {name}")
        return path.read_bytes().decode()

    def game_file(self, name):
        """The letters of the saved board, "." on empty squares of whatever colour."""
        line = self.text_of(name)
        check(len(line) == 66 and line.endswith("\r\n"), f"{name} holds {line!r}")
        return line[:64].replace("d", ".").replace("n", ".")

    def saved(self, name):
        """The pieces of the game, saved by this player."""
        self.keys("F2")
        self.name_file("Save Game as", self.folder / name)
        return self.game_file(name)

    def saved_chat(self, name):
        self.menu("alt+g", "v")
        self.name_file("Save Chat", self.folder / name)
        return self.text_of(name)


class Line:
    """The other end of a host's line, or of the given one."""

    def __init__(self, connection=None):
        self.connection, self.got = connection or socket.create_connection((ADDRESS, PORT)), ""

    def says(self, message):
        self.connection.sendall(message.encode())

    def hears(self, *messages):
        """These come, and nothing else has come since the last call."""
        wanted = "".join(messages)

        def arrived():
            got = self.received()
            check(wanted.startswith(got), f"the other side hears {got!r}, not {wanted!r}")
            return got == wanted

        awaited(arrived, f"{wanted!r} goes to the other side")
        self.got = ""

    def received(self):
        """All that has come since the last call of hears."""
        self.connection.setblocking(False)
        try:
            self.got += self.connection.recv(4096).decode()
        except BlockingIOError:
            pass
        return self.got
