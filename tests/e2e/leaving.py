"""The other side, a bare socket, goes, whatever Ann has in front of her: she is asked, saves, and her program ends."""

import socket
import struct
import sys
import time

from desk import Desk, awaited, check, own_network, run
from player import CHANGE_DIALOG, CHESS, Line, Player

MOVED = CHESS[:12] + "." + CHESS[13:28] + "e" + CHESS[29:]


def leaves(line):
    line.connection.close()


def is_killed(line):
    line.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    line.connection.close()


def is_cut_off(line):
    line.says("112")
    line.connection.close()


def the_question_about_overwriting(ann):
    (ann.folder / "kept.mrv").touch()
    ann.keys("F2")
    ann.window("Save Game as")
    ann.say(ann.folder / "kept.mrv")
    awaited(lambda: len(ann.windows()) == 4, "the question")


# Who goes how, what Ann has in front of her then, and the keys that close what is not asked over.
ROWS = {
    "leaves behind nobody's nick": (leaves, None),
    "is killed behind the change dialog": (
        is_killed, lambda ann: ann.desk.click(*ann.square(52), button=3) or ann.window(CHANGE_DIALOG)),
    "is killed behind the question about overwriting": (is_killed, the_question_about_overwriting, "Escape", "Escape"),
    "is cut off behind a menu": (is_cut_off, lambda ann: ann.menu("alt+g", "Down"), "Escape"),
    "is cut off behind a piece in the hand": (is_cut_off, lambda ann: ann.desk.act(
        "mousemove", *ann.square(52), "mousedown", 1, "mousemove", *ann.square(44))),
}


def play(how, in_front, *closing):
    with Desk() as desk:
        ann = Player(desk, "Ann")
        ann.host()
        ann.line, expected = Line(), CHESS
        if in_front:
            ann.line.says("2Raw")
            ann.table_opens()
            before, expected = ann.square_picture(28), MOVED
            ann.line.says("11228")
            awaited(lambda: ann.square_picture(28) != before, "the move is seen")
            in_front(ann)
        dialogs = {window.ident for window in ann.windows()}
        how(ann.line)
        if closing:
            time.sleep(0.3)
            check({window.ident for window in ann.windows()} == dialogs, "no question over a menu or a file dialog")
            ann.keys(*closing)
        ann.answer("Morva", "alt+y")
        awaited(lambda: any(w.title == "Save Game as" and w.ident not in dialogs and w.has_keys() for w in ann.windows()),
                "a save dialog of its own")
        ann.keys("ctrl+a")
        ann.say(ann.folder / "last.mrv")
        ann.ended()
        check(ann.game_file("last.mrv") == expected, "the last position is saved")


def main():
    own_network()
    return run({name: lambda row=row: play(*row) for name, row in ROWS.items()})


if __name__ == "__main__":
    sys.exit(main())
