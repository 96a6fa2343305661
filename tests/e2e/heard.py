"""What assistive tools are told of an evening. A listener of its own, on the bus that a screen reader listens on, notes
what is announced and what gets the focus; a bare socket is the other side."""

import os
import subprocess
import sys

from desk import Desk, awaited, check, own_network, run
from keys import Evening

PYTHON = "/usr/bin/python3"  # Debian's own has its accessibility interface
BUS = "DBUS_SESSION_BUS_ADDRESS"
WORDS = {".": "empty", "e": "black pawn", "f": "black castle", "g": "black bishop", "h": "black knight",
         "i": "black king", "j": "black queen", "o": "white pawn", "p": "white castle", "q": "white bishop",
         "r": "white knight", "s": "white king", "t": "white queen"}


def listen(path):
    """Notes what is announced, and the names of what gets the focus."""
    import pyatspi

    sys.stdout = open(path, "w", buffering=1)

    def shown(event):
        if event.detail1 and event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
            print("says", event.source[0].name)

    def focused(event):
        if event.detail1:
            print("focus", event.source.name)

    pyatspi.Registry.registerEventListener(shown, "object:state-changed:showing")
    pyatspi.Registry.registerEventListener(focused, "object:state-changed:focused")
    print("listening")
    pyatspi.Registry.start()


def tree():
    """Prints role and name of everything below the program's windows."""
    import pyatspi

    def walk(thing):
        print(thing.getRoleName(), thing.name, sep="|")
        for child in thing:
            walk(child)

    for program in pyatspi.Registry.getDesktop(0):
        if program is not None and program.name == "morva":
            for window in program:
                walk(window)


class Heard(Evening):
    def __init__(self, desk):
        super().__init__(desk)
        self.notes = desk.folder / "notes"
        self.read = 0
        desk.start(PYTHON, __file__, "listen", self.notes)
        awaited(lambda: self.notes.exists() and "listening" in self.notes.read_text(), "the listener listens", 60)

    def hears(self, *wanted):
        """These are noted next, and nothing between them. More can follow at once."""

        def noted():
            return self.notes.read_text().splitlines()[self.read :]

        awaited(lambda: len(noted()) >= len(wanted), f"heard is {wanted}")
        check(noted()[: len(wanted)] == list(wanted), f"heard is {noted()}, not {wanted}")
        self.read += len(wanted)

    def forget(self):
        self.read = len(self.notes.read_text().splitlines())

    def tree(self):
        walk = subprocess.run([PYTHON, __file__, "tree"], env=self.desk.environment, text=True, capture_output=True)
        check(walk.returncode == 0, walk.stderr)
        return walk.stdout.splitlines()

    def table_opens(self):
        self.line.hears("2Ann")
        self.keys_go_to("Morva - Ann")

    def waiting(self):
        self.as_host()
        awaited(lambda: "You play white. Your turn" in self.notes.read_text(), "the colour is told")
        self.forget()

    def the_other_side(self):
        """All of it is said, and the focus stays in the chat line."""
        for message, words in [
            ("0hello <b>there</b>", "Bob: hello <b>there</b>"), ("me", "Bob's turn"), ("you", "Your turn"),
            ("11228", "Bob: E2 - E4 (black pawn)"), ("38", "Bob: trashed A2 (black pawn)"),
            ("40860", "Bob: A2 (nothing to black queen)"), ("1newc", "New game of checkers"),
            ("1clear", "Board cleared"), ("1new", "New game of chess"), ("1__" + 64 * "d", "New board from Bob"),
            ("1new", "New game of chess")]:
            self.line.says(message)
            self.hears("says " + words)

    def by_keys(self):
        for keys, *notes in [
            ("F6 Right", "focus A1, black castle", "focus B1, black knight"), ("space", "says black knight taken up"),
            ("Down space", "focus B2, black pawn", "says B2 is not empty"), ("Escape", "says black knight put back"),
            ("Up space", "focus B1, black knight", "says black knight taken up"),
            ("Down Down", "focus B2, black pawn", "focus B3, empty"), ("space", "focus Chat",
             "says Dropped. Ann: B1 - B3 (black knight). Bob's turn")]:
            self.keys(*keys.split())
            self.hears(*notes)
        self.line.hears("10117")
        self.put(17, "h")
        self.put(1, ".")

    def the_tree(self):
        seen = self.tree()
        squares = [line.removeprefix("list item|") for line in seen if line.startswith("list item|") and ", " in line]
        names = [f"{'ABCDEFGH'[i % 8]}{i // 8 + 1}, {WORDS[letter]}" for i, letter in enumerate(self.expected)]
        check(squares == names, f"the squares are {squares}")
        windows = [line for line in seen if line.startswith(("frame|", "dialog|"))]
        check(sorted(windows) == ["frame|Ann", "frame|Morva - Ann"], f"the windows are {windows}")
        for thing in ["list|Board", "list|History", "text|Chat", "text|Chat log", "push button|Show co-ordinates",
                      "push button|Ann, white", "push button|Bob, black, to move"]:
            check(seen.count(thing) == 1, f"{thing} in {seen}")
        check(not {"push button|Send", "push button|A", "label|Ann"} & set(seen), f"hidden things in {seen}")


def main():
    if sys.argv[1:]:
        return {"listen": listen, "tree": tree}[sys.argv[1]](*sys.argv[2:])
    if BUS not in os.environ or sys.executable != PYTHON:
        os.execvp("dbus-run-session", ["dbus-run-session", "--", PYTHON, __file__])
    own_network()
    with Desk(QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", **{BUS: os.environ[BUS]}) as desk:
        heard = Heard(desk)
        return run([desk], [heard.waiting, heard.the_other_side, heard.by_keys, heard.the_tree])


if __name__ == "__main__":
    sys.exit(main())
