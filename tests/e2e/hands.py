"""What hands do that a machine doesn't: keys are held down, sentences go on while a box comes. The other side is a bare
socket, which hears every byte."""

import re
import sys
import time

from desk import Desk, awaited, check, own_network, run
from player import RDO_HOST, Line, Player


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


def main():
    own_network()
    return run({"keys held down": keys_held_down, "the first windows": the_first_windows})


if __name__ == "__main__":
    sys.exit(main())
