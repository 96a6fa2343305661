"""A player: one running Morva on a desk, and the person before it."""

import os
import shutil
import tempfile
from pathlib import Path

from desk import awaited, check

ROOT = Path(__file__).resolve().parents[2]
PROGRAM = Path(os.environ.get("MORVA", ROOT / "build" / "morva")).resolve()
PORT = 2948

# Insides of windows, pixels.
START_PICTURE = 300, 200
CHANGE_DIALOG = 231, 130
AUTHOR_WINDOW = 379, 193
SQUARE = 56
BOARD = 8 * SQUARE
MAIN_HEIGHT = 539  # without the menu bar
LOG = 0, 448, 448, 73  # within the main window below the menu bar
LOG_TEXT = 2, 450, 420, 69  # the same without its frame and scroll bar

# Controls, twips: left, top, width, height.
RDO_HOST, RDO_GUEST = (360, 480, 735, 255), (1440, 480, 735, 255)
TXT_NICK, TXT_HOST = (720, 1200, 1815, 285), (720, 1680, 1815, 285)
CMD_GO = 2655, 210, 1155, 420
CMD_CANCEL = 3390, 510, 1080, 345
CMD_OK, CMD_TRASH = (2520, 120, 855, 495), (2520, 1320, 855, 495)
RDO_BISHOP, CLR_BLACK = (240, 720, 855, 255), (1440, 1200, 735, 255)
LBL_TIME, LBL_NICK, LBL_OP_NICK = (0, 0, 3240, 465), (480, 480, 600, 375), (480, 1080, 600, 375)

CHESS = "fhgjighf" + "eeeeeeee" + 32 * "." + "oooooooo" + "prqtsqrp"
CHECKERS = ".k.k.k.k" "k.k.k.k." ".k.k.k.k" + 16 * "." + "u.u.u.u." ".u.u.u.u" "u.u.u.u."
EMPTY = 64 * "."


def pieces(line):
    """The letters of a board line, "." on empty squares of whatever colour."""
    return line.replace("d", ".").replace("n", ".")


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
        """The window with that title, or with that size when it has no title; None when it isn't there."""
        for window in self.windows():
            found = window if window.title == wanted else isinstance(wanted, tuple) and window.inside(*wanted)
            if found:
                return found
        return None

    def window(self, wanted, seconds=15.0):
        return awaited(lambda: self.find(wanted), f"{self.nick}'s window {wanted}", seconds)

    def gone(self, wanted):
        awaited(lambda: not self.find(wanted), f"{self.nick}'s window {wanted} closes")

    def title(self):
        """What the main window's title says behind "Morva - ", and nothing before there is one."""
        titles = [window.title for window in self.windows() if window.title.startswith("Morva - ")]
        return titles[0].removeprefix("Morva - ") if titles else ""

    def ended(self):
        awaited(lambda: self.process.poll() is not None, f"{self.nick}'s program ends")
        check(self.process.returncode == 0, f"{self.nick}'s program ended with {self.process.returncode}")
        complaints = self.complaints.read_text()
        check(not complaints, f"{self.nick}'s program complained: {complaints}")

    # Before the game.

    def welcome(self):
        """Clicks the picture away."""
        self.window(START_PICTURE).click(100, 100)
        welcome = self.window("Morva")
        self.gone(START_PICTURE)
        welcome.activate()
        return welcome

    def fill(self, welcome, control, text):
        welcome.activate()
        welcome.click(*control)
        self.desk.keys("ctrl+a")
        self.desk.type(text)

    def listen(self):
        welcome = self.welcome()
        welcome.click(*RDO_HOST)
        self.fill(welcome, TXT_NICK, self.nick)
        self.desk.keys("Return")

    def host(self):
        self.listen()
        return self.window("Hosting game")

    def join(self, address):
        welcome = self.welcome()
        self.fill(welcome, TXT_NICK, self.nick)
        self.fill(welcome, TXT_HOST, address)
        self.desk.keys("Return")

    def sit_down(self, x, y):
        """Waits for the game to begin, and puts its two windows there."""
        awaited(self._centred, f"{self.nick}'s two windows stand side by side in the middle")
        self.main.move(x, y)
        self.tool.move(x + BOARD + 12, y)
        awaited(lambda: self._look() and self.main.x - x in range(10) and self.tool.x - x - BOARD in range(30)
                and self.main.y == self.tool.y, f"{self.nick}'s two windows in their places")

    def _look(self):
        self.main, self.tool = self.find(f"Morva - {self.nick}"), self.find(self.nick)
        return self.main and self.tool

    def _centred(self):
        return (self._look() and self.main.y == self.tool.y and self.tool.x - self.main.x - BOARD in range(10)
                and abs((self.main.x + self.tool.x + self.tool.width) - self.desk.width) < 10)

    # At the board.

    def square(self, index):
        """The middle of a square on the screen."""
        return (self.main.x + SQUARE * (index % 8) + SQUARE // 2,
                self.main.y + self.bar + SQUARE * (index // 8) + SQUARE // 2)

    @property
    def bar(self):
        return self.main.height - MAIN_HEIGHT

    def drag(self, start, end):
        self.main.activate()
        self.desk.drag(self.square(start), self.square(end))

    def move(self, start, end):
        """Drags a piece and waits to see it leave. Where the pointer goes on before, a busy screen lets the button go
        there."""
        x, y = self.square(start)

        def look():
            return self.desk.picture(x - 24, y - 24, 48, 48)

        before = look()
        self.drag(start, end)
        awaited(lambda: look() != before, f"{self.nick}'s piece leaves {start}")

    def below_bar(self, x, y, width, height):
        return self.desk.picture(self.main.x + x, self.main.y + self.bar + y, width, height)

    def board(self):
        return self.below_bar(0, 0, BOARD, BOARD)

    def square_picture(self, index):
        return self.board().part(SQUARE * (index % 8), SQUARE * (index // 8), SQUARE, SQUARE)

    def history(self):
        return self.tool.picture().part(0, 104, 216, 134)

    def clock(self):
        return self.tool.picture().part(0, 0, 216, 31)

    def has_turn(self):
        """Whether the own nick is shown in red."""
        nick = self.tool.picture().part(32, 32, 180, 25)
        return any(red > 200 and green < 80 and blue < 80 for red, green, blue in nick.colors())

    # Keys, menus, talk and files.

    def keys(self, *keys):
        self.main.activate()
        self.desk.keys(*keys)

    def say(self, text):
        self.main.activate()
        self.desk.enter(text)

    def answer(self, title, *keys):
        """Answers a box by its keys."""
        box = self.window(title)
        box.activate()
        self.desk.keys(*keys)
        awaited(lambda: box.ident not in [window.ident for window in self.windows()], f"{self.nick}'s {title} closes")
        return box

    def name_file(self, title, path):
        self.window(title).activate()
        self.desk.keys("ctrl+a")
        self.desk.enter(path)
        self.gone(title)

    def saved(self, name):
        """The pieces of the game, saved by this player."""
        self.keys("F2")
        self.name_file("Save Game as", self.folder / name)
        return self.game_file(name)

    def game_file(self, name):
        line = awaited(lambda: self._text(name), f"the file {name}")
        check(len(line) == 66 and line.endswith("\r\n"), f"{name} holds {line!r}")
        return pieces(line[:64])

    def saved_chat(self, name):
        self.keys("alt+g", "v")
        self.name_file("Save Chat", self.folder / name)
        return awaited(lambda: self._text(name), f"the file {name}")

    def _text(self, name):
        path = self.folder / name
        return path.exists() and path.read_bytes().decode()


class Eyes:
    """Read a board off the screen, once they have been told what each piece looks like."""

    LIKENESS = 25  # pixels of a square that may differ, of about 2600

    def __init__(self):
        self.known = {}

    def learn(self, player, letters):
        """Takes the first square of each letter as its looks; "." is an empty square."""
        board = player.board()
        for index, letter in enumerate(letters):
            self.known.setdefault(letter, self._looks(board, index))

    def read(self, player):
        """64 letters, as in a game file; "." for an empty square and "?" for anything else."""
        board = player.board()
        return "".join(self._letter(self._looks(board, index)) for index in range(64))

    def _letter(self, looks):
        distance = {letter: (looks ^ known).bit_count() for letter, known in self.known.items()}
        nearest = min(distance, key=distance.get)
        return nearest if distance[nearest] <= self.LIKENESS else "?"

    def _looks(self, board, index):
        """Two bits a pixel: darker than half the square's own colour, lighter than half way from it to white. The
        upper left corner, where a button can lie, is left out."""
        x, y = SQUARE * (index % 8) + 2, SQUARE * (index // 8) + 2
        inside = board.part(x, y, SQUARE - 4, SQUARE - 4)
        ground = inside.pixel(51, 51)[1]
        classes = bytes(1 if v < ground / 2 else 2 if v > (ground + 255) / 2 else 0 for v in range(256))
        greens = [row[1::4].translate(classes) for row in inside.rows]
        return int.from_bytes(b"".join(row[20:] if y < 20 else row for y, row in enumerate(greens)), "big")
