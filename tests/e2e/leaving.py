"""The other side leaves, is killed or cut off, whatever Ann has in front of her: she is asked, saves the game, and her
program ends. The other side is a bare socket here."""

import socket
import struct
import sys
import time

from desk import Desk, Failure, awaited, own_network, run
from player import CHANGE_DIALOG, CHESS, LBL_TIME, PORT, Player

MOVED = CHESS[:12] + "." + CHESS[13:28] + "e" + CHESS[29:]


class Peer:
    """The other side of the connection, as bytes."""

    def __init__(self):
        self.connection = socket.create_connection(("127.0.0.1", PORT))

    def send(self, message):
        self.connection.sendall(message)
        time.sleep(0.06)  # keeps one message apart from the next

    def leaves(self):
        self.connection.close()

    def is_killed(self):
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.connection.close()

    def is_cut_off(self):
        self.connection.sendall(b"112")
        self.connection.close()


def in_front(ann, peer, window):
    """Brings that window up."""
    desk = ann.desk
    if window == "a message":
        peer.send(b"0check")
        ann.window("Message")
    elif window == "the change dialog":
        desk.click(*ann.square(52), button=3)
        ann.window(CHANGE_DIALOG)
    elif window in ("About", "the author"):
        ann.menu("alt+h", "a")
        about = ann.window("About Morva 1.0.185")
        if window == "the author":
            before = about.picture()
            about.click(5715, 840, 1485, 1815)
            awaited(lambda: about.picture() != before, "the author window")
    elif window == "the question about overwriting":
        (ann.folder / "kept.mrv").touch()
        ann.keys("F2")
        ann.window("Save Game as")
        desk.enter(ann.folder / "kept.mrv")
        awaited(lambda: len(ann.windows()) == 4, "the question")
    elif window == "a menu":
        before = ann.board()
        ann.keys("alt+g")
        awaited(lambda: ann.board() != before, "the menu")
    elif window == "the menu of the clock":
        before = ann.tool.picture()
        ann.tool.click(*LBL_TIME, button=3)
        awaited(lambda: ann.tool.picture() != before, "the menu")
    elif window == "a flying disc":
        ann.keys("ctrl+s")
    elif window == "a piece in the hand":
        desk.act("mousemove", *ann.square(52), "mousedown", 1, "mousemove", *ann.square(44))
    else:
        key = {"the instructions": "F1", "the save dialog": "F2", "the open dialog": "F3"}[window]
        ann.keys(key)
        ann.window({"F1": "Instructions", "F2": "Save Game as", "F3": "Open Game"}[key])


def row(desk, window, way):
    def step():
        desk.clear()
        ann = Player(desk, "Ann")
        ann.host()
        peer = Peer()
        expected = CHESS
        if window != "nobody's nick":
            peer.send(b"2Raw")
            ann.table_opens()
            peer.send(b"11228")
            expected = MOVED
            if window != "the board":
                in_front(ann, peer, window)
        before = {w.ident for w in ann.windows()}
        getattr(peer, way)()
        ann.answer("Morva", "alt+y")
        awaited(lambda: [w for w in ann.windows() if w.title == "Save Game as" and w.ident not in before],
                "a save dialog of its own")
        desk.keys("ctrl+a")
        desk.enter(ann.folder / "last.mrv")
        ann.ended()
        if (saved := ann.game_file("last.mrv")) != expected:
            raise Failure(f"the saved game is {saved}")
        desk.act("mouseup", 1)

    step.__name__ = f"{way.replace('_', ' ')} behind {window}"
    return step


def main():
    own_network()
    with Desk("openbox") as desk:
        return run([desk], [row(desk, *case) for case in [
            ("nobody's nick", "leaves"), ("the board", "is_killed"), ("a message", "leaves"),
            ("the change dialog", "is_killed"), ("About", "is_cut_off"), ("the author", "leaves"),
            ("the instructions", "is_killed"), ("the save dialog", "is_cut_off"), ("the open dialog", "leaves"),
            ("the question about overwriting", "is_killed"), ("a menu", "is_cut_off"),
            ("the menu of the clock", "leaves"), ("a flying disc", "is_killed"), ("a piece in the hand", "is_cut_off"),
        ]])


if __name__ == "__main__":
    sys.exit(main())
