"""What hands do that a machine doesn't: keys are held down, sentences go on while a box comes. The other side is a bare
socket, which hears every byte."""

import re
import sys
import time

from desk import Desk, awaited, check, own_network, run
from player import CHANGE_DIALOG, CHESS, RDO_HOST, VERSION, Line, Player


class Table:
    """For a with statement: Ann at her table as a host."""

    def __init__(self, **environment):
        self.desk = Desk(**environment)

    def __enter__(self):
        self.desk.__enter__()
        self.ann = Player(self.desk, "Ann")
        self.ann.host()
        self.line = Line()
        self.line.says("2Bob")
        self.line.hears("2Ann")
        self.ann.table_opens()
        return self

    def __exit__(self, *failure):
        self.desk.__exit__(*failure)

    def holds(self, key, seconds=1.2):
        """Long enough for a key to repeat itself some ten times."""
        self.desk.act("keydown", key, "sleep", seconds, "keyup", key)

    def types(self, text, pace):
        """A key each so many milliseconds."""
        self.desk.act("type", "--delay", 2 * pace, text)  # xdotool waits half of that


def keys_held_down():
    """A press acts once, whatever has the focus by the time it repeats itself; text and a cursor go on."""
    with Table() as table:
        ann, line, holds = table.ann, table.line, table.holds
        holds("ctrl+t")
        line.hears("you")
        holds("ctrl+c")
        line.hears("0check")
        ann.keys("shift+F6")  # to a nick
        holds("Return")
        line.hears("me")
        ann.keys("shift+F6", "ctrl+End")
        holds("Up")
        ann.keys("Down", "space", "Down")  # from H2 to H3
        holds("space")
        line.hears("11523")
        ann.keys("Tab")  # to "C"
        holds("space")
        holds("a")
        holds("Return")
        awaited(lambda: re.fullmatch("0aa{5,}", line.received()), "a line of a's alone")


def the_first_windows():
    """The Enter that leaves the welcome window presses nothing in the next one, held down or pressed again."""
    with Desk() as desk:
        for keys in (["keydown", "Return", "sleep", 1.2, "keyup", "Return"],
                     ["key", "--delay", 80, "--repeat", 4, "Return"]):
            ann = Player(desk, "Ann")
            welcome = ann.welcome()
            welcome.click(*RDO_HOST)
            desk.act(*keys)
            ann.window("Hosting game")
            time.sleep(1)
            ann.keys("Return")
            ann.ended()


def a_sentence_goes_on():
    """A box comes in the middle of a sentence: all of that is in the chat line, and nothing has answered."""
    with Table() as table:
        ann, line, desk = table.ann, table.line, table.desk
        for pace, before, behind in [(60, 0, 0), (100, 0, 0), (130, 0, 0), (160, 0, 0), (250, 0, 0), (60, 1, 0), (60, 0, 1)]:
            table.types("no game,", pace)
            time.sleep(before)
            line.says("0check")
            if behind:
                ann.window("Message")
                time.sleep(behind)
            table.types(" I did not", pace)
            ann.keys("Return")
            check(ann.find("Message"), f"the box waits for its answer at {pace} ms a key")
            time.sleep(0.8)
            ann.keys("Return")
            ann.gone("Message")
            ann.listens()
            ann.keys("Return")
            line.hears("0no game, I did not")
        line.says("0check")
        ann.window("Message")
        time.sleep(0.8)
        table.types("n", 60)  # alone it answers nothing
        time.sleep(0.8)
        ann.keys("Return")
        ann.gone("Message")
        ann.listens()
        ann.keys("Return")
        line.hears("0n")
        line.says("0check")
        box = ann.window("Message")
        table.types("o ", 60)
        ann.keys("Escape")
        check(ann.find("Message"), "neither a space nor Escape in a sentence answers")
        desk.click(box.x + box.width - 50, box.y + box.height - 24)  # the mouse does at once
        ann.gone("Message")
        ann.listens()
        ann.keys("Return")
        line.hears("0o ")


def a_call_comes():
    """Over our own windows at once; over an open menu and a file dialog once that is closed."""
    with Table() as table:
        ann, line = table.ann, table.line
        for keys, title, waits in [(["F1"], "Instructions", False), (["alt+h", "a"], f"About Morva {VERSION}", False),
                                   (["shift+F10"], CHANGE_DIALOG, False), (["F3"], "Open Game", True),
                                   (["alt+m"], None, True)]:
            if title == CHANGE_DIALOG:
                ann.keys("F6")
            ann.menu(*keys)
            awaited(lambda: len(ann.windows()) == 3, f"{keys} opens something")
            line.says("0check")
            if waits:
                time.sleep(0.5)
                check(not ann.find("Message"), f"no box over {keys}")
                ann.keys(*(["Escape"] if title else ["Escape", "Escape"]))
            ann.answer("Message", "Return")
            if title and not waits:
                ann.window(title)
                ann.keys("Escape")
                ann.gone(title)
            ann.listens()
            ann.say("thanks")
            line.hears("0thanks")


def the_other_side_leaves():
    """In the middle of a sentence, under a desktop whose first button is No, while a save dialog is open."""
    with Table(XDG_CURRENT_DESKTOP="GNOME", GSETTINGS_BACKEND="memory") as table:
        ann, desk = table.ann, table.desk
        ann.keys("F2")
        ann.window("Save Game as")
        table.line.connection.close()
        time.sleep(0.5)
        check(len(ann.windows()) == 3, "no box over the save dialog")
        ann.keys("Escape")
        ann.window("Morva")
        table.types("why, n", 60)
        ann.keys("Return", "Escape")
        time.sleep(0.8)
        ann.keys("Escape", "alt+F4")
        time.sleep(0.8)
        ann.keys("Return")
        ann.window("Save Game as")
        ann.keys("ctrl+a")
        desk.type(ann.folder / "last.mrv")
        ann.answer("Save Game as", "Return")  # the desktop's own dialog may want a second one, for what it offers to add
        ann.ended()
        check(ann.game_file("last.mrv") == CHESS, "the game is saved")


def main():
    own_network()
    plays = {"keys held down": keys_held_down, "the first windows": the_first_windows,
                "a sentence goes on": a_sentence_goes_on,
             "a call comes": a_call_comes, "the other side leaves": the_other_side_leaves}
    return run({name: play for name, play in plays.items() if name in sys.argv[1:] or not sys.argv[1:]})


if __name__ == "__main__":
    sys.exit(main())
