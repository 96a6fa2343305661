"""One evening between two real copies of Morva, once under each desktop that is named: Ann sits at that desktop, Bob at
a bare screen. After whatever happens Ann goes on typing, and each line has to reach Bob.

Usage: evening.py DESKTOP..."""

import sys

from desk import DESKTOPS, Desk, Failure, awaited, check, keep_pictures, own_network, run
from player import (BOARD, CHANGE_DIALOG, CHESS, LBL_OP_NICK, LBL_TIME, LBL_VS, LST_HIST, SQUARE, Player)

ASIDE = 2, 2  # where the pointer is over nothing


class Evening:
    def __init__(self, ann_desk, bob_desk):
        self.ann_desk, self.bob_desk = ann_desk, bob_desk
        self.said = ""
        self.expected = list(CHESS)

    def type(self, words):
        """Ann types a line, without a look at where the keys go."""
        before = self.bob.log()
        self.ann.say(words)
        awaited(lambda: self.bob.log() != before, f"what Ann types {words} reaches Bob")
        self.said += f"\r\n<Ann>  {words}"

    def move(self, player, start, end):
        """Drags a piece to a square of the same colour, and waits until the other sees it there."""
        other = self.bob if player is self.ann else self.ann
        piece, bare = other.square_picture(start), other.square_picture(end)
        player.drag(start, end)
        awaited(lambda: (other.square_picture(start), other.square_picture(end)) == (bare, piece),
                f"{player.nick}'s piece goes from {start} to {end} before {other.nick}'s eyes")
        self.expected[end], self.expected[start] = self.expected[start], "."

    @staticmethod
    def middle(player):
        """The middle files of the board, where no other window throws its shadow."""
        return [player.square_picture(index) for index in range(64) if index % 8 in (4, 5)]

    def beside_vs(self):
        """Bare ground in Ann's tool window, where the menu opens and the pointer does not reach."""
        return self.ann.tool_inside().picture().part(140, 66, 70, 18)

    # The steps.

    def the_table_opens(self):
        self.ann = Player(self.ann_desk, "Ann")
        self.ann.host()
        self.bob = Player(self.bob_desk, "Bob")
        self.bob.join()
        self.bob.table_opens()
        self.bob_desk.point(*ASIDE)
        self.ann.table_opens()
        self.type("right after the start")

    def moves_both_ways(self):
        self.new_board = self.bob.board()
        self.ann_desk.point(*ASIDE)
        awaited(lambda: self.middle(self.ann) == self.middle(self.bob), "the two boards look alike, pixel by pixel")
        self.move(self.ann, 52, 36)
        self.move(self.bob, 12, 28)
        self.type("after a move of each")
        self.ann.drag(62, 55)
        self.move(self.bob, 13, 29)
        self.ann_desk.click(*self.ann.square(40))
        self.type("after a drop on a piece and a click on the board")

    def boxes(self):
        self.bob.keys("ctrl+c")
        self.ann.answer("Message", "Return")
        self.type("after a box")
        self.ann.keys("ctrl+x")
        self.bob.answer("Message", "Return")
        self.bob.keys("ctrl+z")  # no click before: the box has given the keys back
        self.ann.answer("Message", "Return")
        closed = self.ann.board()
        self.ann.menu("alt+m", "Escape")
        awaited(lambda: self.ann.keys("Escape") or self.ann.board() == closed, "the menu closes")
        self.type("after a menu")

    def the_tool_window_in_front(self):
        for control, words in [(LBL_OP_NICK, "after a click on a nick"), (LST_HIST, "after a click in the history"),
                               (LBL_TIME, "after a click on the clock")]:
            self.ann.tool_inside().click(*control)
            self.type(words)
        awaited(self.bob.has_turn, "the click on Bob's nick gives him the turn")
        self.ann.tool_inside().click(*LST_HIST)
        self.ann.keys("ctrl+c")
        self.bob.answer("Message", "Return")
        closed = self.beside_vs()
        self.ann.tool_inside().click(*LBL_VS, button=3)
        awaited(lambda: self.beside_vs() != closed, "the tool window's menu")
        self.ann.keys("Escape")
        awaited(lambda: self.beside_vs() == closed, "the tool window's menu closes")
        self.type("after the menu of the tool window")
        x, y = self.ann.corner()
        self.ann_desk.click(x + 200, y + BOARD + 40)
        self.type("after a click in the log")

    def the_last_move_flies(self):
        still = self.ann.board()
        awaited(lambda: self.ann.keys("ctrl+s") or any(self.ann.board() != still for _ in range(100)), "the disc flies")
        awaited(lambda: self.ann.board() == still, "the disc has gone")
        self.type("after the flight")

    def dialogs(self):
        for keys, title in [(["F1"], "Instructions"), (["alt+h", "a"], "About Morva 1.0.185")]:
            self.ann.menu(*keys)
            window = self.ann.window(title)
            check(window.wholly_on_the_screen(), f"{title} stands wholly on the screen")
            self.ann.keys("Escape")
            self.ann.gone(title)
            self.type(f"after {title}")

    def a_change_at_the_edge_of_the_screen(self):
        """The main window lies half beyond the lower right corner, where the dialog would too."""
        x, y = self.ann.corner()
        by = self.ann_desk.width - 300 - x, self.ann_desk.height - 440 - y
        if self.ann_desk.desktop == "none":
            self.ann.main.move(self.ann.main.x + by[0], self.ann.main.y + by[1])
        else:  # by its title bar
            self.ann_desk.drag_slowly((x + 150, y - 30), by)
        awaited(lambda: self.ann.look() and abs(self.ann.corner()[0] - x - by[0]) < 20, "Ann's window moves to the edge")
        self.ann_desk.click(*self.ann.square(51), button=3)
        if self.ann_desk.desktop != "weston":
            dialog = self.ann.window(CHANGE_DIALOG)
            check(dialog.wholly_on_the_screen(), f"the dialog at {dialog.x}, {dialog.y} is wholly on the screen")
        before = self.bob.square_picture(51)
        self.ann.keys("Return")
        awaited(lambda: self.bob.square_picture(51) != before, "the pawn becomes a queen")
        self.ann.gone(CHANGE_DIALOG)
        self.expected[51] = "t"
        self.type("after a change")

    def a_new_game(self):
        check(self.bob.saved("before.mrv") == "".join(self.expected), "Bob has seen the whole game")
        self.ann.menu("alt+g", "n", "s")  # some desktops have a use of their own for Ctrl+F1
        self.bob_desk.point(*ASIDE)
        awaited(lambda: self.bob.board() == self.new_board, "a new game")
        self.type("after a new game")

    def saving_and_leaving(self):
        self.ann.keys("F2")
        self.ann.window("Save Game as")
        self.ann.keys("Escape")
        self.ann.gone("Save Game as")
        self.type("after a file dialog")
        chats = [player.saved_chat("chat.txt") for player in (self.ann, self.bob)]
        for player, chat in zip((self.ann, self.bob), chats):
            check(chat == self.said + "\r\n", f"{player.nick}'s log: {chat!r}, should be: {self.said!r}")
        self.bob.menu("alt+g", "q")
        self.bob.ended()
        self.ann.answer("Morva", "alt+y")
        self.ann.name_file("Save Game as", self.ann.folder / "last.mrv")
        self.ann.ended()
        check(self.ann.game_file("last.mrv") == CHESS, "the last position is saved")

    def steps(self):
        return [self.the_table_opens, self.moves_both_ways, self.boxes, self.the_tool_window_in_front,
                self.the_last_move_flies, self.dialogs, self.a_change_at_the_edge_of_the_screen, self.a_new_game,
                self.saving_and_leaving]


def play(desktop):
    with Desk(desktop) as ann_desk, Desk("none") as bob_desk:
        evening = Evening(ann_desk, bob_desk)
        name = "the start"
        try:
            for step in evening.steps():
                name = step.__name__.replace("_", " ")
                step()
        except Exception as failure:
            keep_pictures([ann_desk, bob_desk], desktop)
            raise Failure(f"{name}: {failure or type(failure).__name__}") from failure


def partial(desktop):
    def step():
        play(desktop)

    step.__name__ = desktop
    return step


def main():
    own_network()
    # Weston's X server puts one window over another; it is played by name only.
    return run([], [partial(desktop) for desktop in sys.argv[1:] or DESKTOPS if sys.argv[1:] or desktop != "weston-x"])


if __name__ == "__main__":
    sys.exit(main())
