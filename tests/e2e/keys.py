"""An evening by keys alone: as a host who hears what assistive tools are told, and as a guest. The other side is a bare
socket, which hears every byte."""

import socket
import sys
import time

from desk import ADDRESS, Desk, awaited, check, own_network, run
from player import CHANGE_DIALOG, PORT, START_PICTURE, Line, Player

PYTHON = "/usr/bin/python3"  # Debian's own has its accessibility interface

# What the other side sends, and the words for it. The focus stays in the chat line.
SAID = [
    ("0hello <b>there</b>", "Bob: hello <b>there</b>"), ("me", "Bob's turn"), ("you", "Your turn"),
    ("11228", "Bob: E2 - E4 (black pawn)"), ("38", "Bob: trashed A2 (black pawn)"),
    ("40860", "Bob: A2 (nothing to black queen)"), ("1newc", "Bob: new game of checkers"),
    ("1clear", "Bob: board cleared"), ("1__" + 64 * "d", "New board from Bob"), ("1new", "Bob: new game of chess"),
    ("10857", "Bob: A2 - B8 (black pawn). B8, black queen"),
]
# What Ann presses, what goes to the other side, and what she hears. The keys begin and end in the chat line.
PRESSED = [
    ("ctrl+c", "0check", "says Sent: Check!"), ("ctrl+plus", "", "says 125 per cent"), ("ctrl+0", "", "says 100 per cent"),
    ("Menu", "", "says Nothing to choose"), ("Escape", "", "focus Chat"),
    ("F6", "", "focus A1, black castle"), ("Up", "", "says Edge of the board"),
    ("Right", "", "focus B1, black knight"), ("space", "", "says black knight taken up"),
    ("Down space", "", "focus B2, black pawn", "says B2 is not empty"), ("Escape", "", "says black knight put back"),
    ("Up space", "", "focus B1, black knight", "says black knight taken up"),
    ("Down Down", "", "focus B2, black pawn", "focus B3, empty"),
    ("space", "10117", "focus Chat", "says Ann: B1 - B3 (black knight). Bob's turn"),
    ("shift+F6", "", "focus Ann, white"), ("Tab", "", "focus Bob, black, to move"),
    ("shift+Tab space", "me", "focus Ann, white", "says Your turn"), ("Menu", "", "focus Always on top"),
    ("Escape", "", "focus Ann, white, to move"), ("F6", "", "focus Chat"),
    ("ctrl+t", "you", "says Bob's turn"),
    ("o k F6 Return", "0ok", "focus B3, black knight", "focus Chat"),
]

def listen(path):
    """What an assistive tool does: notes what is announced, and the names of what gets the focus."""
    import pyatspi

    sys.stdout = open(path, "w", buffering=1)

    def shown(event):
        if event.detail1 and event.source.getRole() == pyatspi.ROLE_NOTIFICATION:
            print("says", event.source[0].name)

    def focused(event):
        if event.detail1:
            print("focus", event.source.name)

    pyatspi.Registry.registerEventListener(shown, "object:state-changed:showing")
    pyatspi.Registry.registerEventListener(lambda event: print("says", event.any_data), "object:announcement")  # Qt 6.8
    pyatspi.Registry.registerEventListener(focused, "object:state-changed:focused")
    pyatspi.Registry.registerEventListener(lambda _: None, "object:property-change:accessible-name")  # renews the names
    print("listening")
    pyatspi.Registry.start()


class Ann(Player):
    def opens(self):
        awaited(lambda: (first := self.find(START_PICTURE)) and first.has_keys(), "the first picture has the keys")
        self.keys("F5")
        self.window("Morva")

    def dialog_on_the_square(self, key):
        self.keys("F6", key)
        self.window(CHANGE_DIALOG)


def as_host():
    with Desk() as desk:
        bus = desk.start_and_hear("dbus-daemon", "--session", "--nofork", "--print-address")
        desk.environment |= {"DBUS_SESSION_BUS_ADDRESS": bus, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
        notes = desk.folder / "notes"
        desk.start(PYTHON, __file__, notes)
        awaited(lambda: notes.exists() and "listening" in notes.read_text(), "the listener listens", 60)
        ann = Ann(desk, "Ann")
        ann.opens()
        ann.keys("Up", "Tab", "ctrl+a")
        ann.say("Ann")
        ann.window("Hosting game")
        line = Line()
        line.says("2Bob")
        line.hears("2Ann")
        ann.table_opens()
        awaited(lambda: "You play white. Your turn" in notes.read_text(), "the colour is told")
        read = len(notes.read_text().splitlines())

        def hears(*wanted):
            """These are noted next, and nothing between them. More can follow at once."""
            nonlocal read
            awaited(lambda: len(notes.read_text().splitlines()) >= read + len(wanted), f"heard is {wanted}")
            noted = notes.read_text().splitlines()[read:]
            check(noted[: len(wanted)] == list(wanted), f"heard is {noted}, not {wanted}")
            read += len(wanted)

        for message, words in SAID:
            line.says(message)
            hears("says " + words)
        for keys, sent, *words in PRESSED:
            ann.keys(*keys.split())
            hears(*words)
            line.hears(sent)
        ann.dialog_on_the_square("Menu")
        ann.keys("Tab", "Tab", "Tab", "Up", "Tab", "Down", "Return")
        line.hears("417316777215")
        ann.gone(CHANGE_DIALOG)
        ann.listens()
        ann.keys("ctrl+s")
        awaited(lambda: "B1 - B3, B3, white bishop\n" in notes.read_text(), "the last move is told")


def is_pointed_at(ann, line, message):
    """What comes while Ann works in another program makes the desktop point at her board until she looks at it."""

    def pointed_at():
        return "_DEMANDS_ATTENTION" in ann.desk.output("xprop", "-id", ann.main.ident, "_NET_WM_STATE")

    other = ann.desk.start("xev")
    awaited(lambda: not any(window.has_keys() for window in ann.windows()), "another program has the keys")
    time.sleep(0.6)  # Qt waits for that long whether another window of the program's own gets them
    line.says(message)
    awaited(pointed_at, f"the desktop points at the board after {message}")
    ann.main.activate()
    if message == "0check":
        ann.answer("Message", "Return")
    awaited(lambda: not pointed_at(), f"the desktop no longer points at the board after {message}")
    ann.desk.end(other)


def as_guest():
    with Desk() as desk, socket.create_server((ADDRESS, PORT)) as server:
        ann = Ann(desk, "Ann")
        ann.opens()
        ann.keys("Tab", "ctrl+a")
        desk.type("Ann")
        ann.keys("Tab")
        ann.say(ADDRESS)
        server.settimeout(30)
        line = Line(server.accept()[0])
        line.says("2Bob")
        line.hears("2Ann")
        ann.table_opens()
        for message in ("15236", "0hello", "0check"):
            is_pointed_at(ann, line, message)
        ann.keys("F6", "Down", "space", "Down", "Down", "space")
        line.hears("10824")
        ann.dialog_on_the_square("shift+F10")
        ann.keys("Tab", "Tab", "space")
        line.hears("324")
        ann.gone(CHANGE_DIALOG)
        ann.listens()
        ann.keys("shift+F6")  # a trash leaves the keys on the board
        ann.menu("alt+g", "q")
        ann.ended()


def main():
    if sys.argv[1:]:
        return listen(sys.argv[1])
    own_network()
    return run({"as a host": as_host, "as a guest": as_guest})


if __name__ == "__main__":
    sys.exit(main())
