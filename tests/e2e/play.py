"""A whole game between two real copies of Morva on one screen, from the start-up picture to the saved file."""

import sys
import time

from desk import TWIPS, Desk, Failure, awaited, check, own_network, run, settled
from player import (AUTHOR_WINDOW, CHANGE_DIALOG, CHECKERS, CHESS, CLR_BLACK, CMD_GO, CMD_OK, CMD_TRASH, EMPTY,
                    LBL_NICK, LBL_OP_NICK, LBL_TIME, LOG_TEXT, RDO_BISHOP, RDO_GUEST, RDO_HOST, SQUARE, START_PICTURE,
                    TXT_NICK, Eyes, Player)

ASIDE = 1590, 990  # where the pointer is over nothing
PORTRAIT = 5715, 840, 1485, 1815


class Game:
    def __init__(self, desk):
        self.desk = desk
        self.eyes = Eyes()
        self.expected = CHESS  # what both boards should show

    # What the steps share.

    def other(self, player):
        return self.bob if player is self.ann else self.ann

    def put(self, letter, square):
        self.expected = self.expected[:square] + letter + self.expected[square + 1 :]

    def boards_agree(self, words):
        """Both boards come to show what is expected."""
        self.desk.point(*ASIDE)
        seen = {}

        def agree():
            seen.update((player.nick, self.eyes.read(player)) for player in self.both)
            return all(board == self.expected for board in seen.values())

        try:
            awaited(agree, words)
        except Failure as failure:
            raise Failure(f"{failure}; expected {self.expected}, seen {seen}") from None

    def turn_is(self, player):
        awaited(lambda: player.has_turn() and not self.other(player).has_turn(), f"the turn goes to {player.nick}")

    def histories_agree(self):
        awaited(lambda: self.ann.history() == self.bob.history(), "the two histories read alike")

    def move(self, player, start, end, becomes=None):
        piece = self.expected[start]
        player.move(start, end)
        self.put(".", start)
        self.put(becomes or piece, end)
        self.boards_agree(f"{player.nick}'s move from {start} to {end}")
        self.turn_is(self.other(player))

    def dialog_on(self, player, square):
        self.desk.click(*player.square(square), button=3)
        dialog, main = player.window(CHANGE_DIALOG), player.main
        dialog.activate()
        check(dialog.x + dialog.width <= main.x + main.width + 5, "the dialog stays within the window's width")
        check(dialog.y + dialog.height <= main.y + main.height + 5, "the dialog stays within the window's height")
        return dialog

    def log_changes(self, player, before, words):
        awaited(lambda: player.below_bar(*LOG_TEXT) != before, words)

    # Before the game.

    def start_up_pictures(self):
        """Bob clicks his away, Ann waits for hers to go."""
        self.bob = Player(self.desk, "Bob")
        self.bob.welcome()
        started = time.monotonic()
        self.ann = Player(self.desk, "Ann")
        self.both = self.ann, self.bob
        self.ann.window(START_PICTURE)
        self.ann.window("Morva")
        check(time.monotonic() - started >= 5, "Ann's picture stays for five seconds")
        self.ann.gone(START_PICTURE)

    def the_two_checks(self):
        welcome = self.bob.window("Morva")
        self.bob.fill(welcome, TXT_NICK, "")
        self.desk.keys("BackSpace", "Return")
        no_nick = settled(self.bob.window("Oops").picture)
        self.bob.answer("Oops", "Return")
        self.desk.type("Bob")  # it goes to the nick
        welcome.click(*CMD_GO)
        check(settled(self.bob.window("Oops").picture) != no_nick, "without a host Bob sees another text")
        self.bob.answer("Oops", "space")
        self.desk.type("127.0.0.1")  # it goes to the host

    def switching_host_and_guest(self):
        """The address stays meanwhile, as connecting will show."""
        welcome = self.bob.window("Morva")
        welcome.click(*RDO_HOST)
        lower = awaited(lambda: (found := self.bob.find("Morva")) and found.height < welcome.height and found,
                        "as a host Bob has no row for the host's address")
        check(lower.height * TWIPS == 1665, f"the host's dialog is {lower.height} pixels high")
        lower.click(*RDO_GUEST)
        awaited(lambda: self.bob.find("Morva").height * TWIPS == 2130, "the guest's dialog has its height again")

    def connecting(self):
        welcome = self.ann.window("Morva")
        welcome.activate()
        welcome.click(*RDO_HOST)
        self.ann.fill(welcome, TXT_NICK, "Ann")
        welcome.click(*CMD_GO)
        self.ann.window("Hosting game")
        self.bob.window("Morva").activate()
        self.desk.keys("Return")
        for player, place in zip(self.both, [(10, 30), (810, 30)]):
            player.sit_down(*place)
        self.ann.gone("Hosting game")
        self.bob.gone("Connecting")

    def the_first_look(self):
        self.desk.point(*ASIDE)
        self.eyes.learn(self.ann, CHESS)
        self.boards_agree("the chess position")
        self.turn_is(self.ann)
        discs = [[player.tool.picture().pixel(12, y) for y in (43, 85)] for player in self.both]
        white, black = (255, 255, 255), (0, 0, 0)
        check(discs == [[white, black], [black, white]], f"the discs show who plays white: {discs}")
        zero = self.ann.clock()
        awaited(lambda: self.ann.clock() != zero, "the clock runs")
        self.early_clock = self.ann.clock()  # for when it starts again
        for player in self.both:
            check(all(window.stays_on_top() == (window.title == player.nick) for window in player.windows()),
                  "the tool window and no other stays on top")

    # The board.

    def twelve_moves(self):
        ann, bob = self.both
        for player, start, end in [(ann, 52, 36), (bob, 12, 28), (ann, 62, 45), (bob, 6, 21), (ann, 61, 34),
                                   (bob, 5, 26), (bob, 15, 31), (ann, 11, 19), (bob, 51, 43), (ann, 59, 20)]:
            self.move(player, start, end)
        # A pawn on its far row becomes a queen, just as the other one; on the near row it stays.
        self.move(ann, 20, 59)
        self.move(ann, 49, 6, becomes="t")
        for player in self.both:
            check(player.square_picture(6) == player.square_picture(59), "the new queen is like the other")
        self.histories_agree()

    def a_near_row_converts_nothing(self):
        self.move(self.bob, 53, 61)
        self.move(self.bob, 61, 53)

    def the_title_names_the_square(self):
        self.desk.point(*self.ann.square(18))
        awaited(lambda: self.ann.title() == "Ann (C3)", "the title names C3")
        self.desk.point(*self.ann.square(63))
        awaited(lambda: self.ann.title() == "Ann (H8)", "the title names H8")

    def the_mark_under_a_drag(self):
        # The pointer stays at the lower edge, so that its hand is not over what is looked at.
        def edge(square):
            x, y = self.ann.square(square)
            return x, y + SQUARE // 2 - 5

        def seen(square):
            return self.ann.square_picture(square).part(4, 4, SQUARE - 8, SQUARE - 14)

        before = {square: seen(square) for square in (40, 42)}
        self.desk.act("mousemove", *self.ann.square(50), "mousedown", 1, "mousemove", *edge(40))
        awaited(lambda: seen(40) != before[40], "a mark under the pointer")
        self.desk.point(*edge(42))
        awaited(lambda: seen(42) != before[42] and seen(40) == before[40], "the mark follows the pointer")
        self.desk.point(*self.ann.square(36))
        awaited(lambda: seen(42) == before[42], "no mark while the pointer is over a piece")
        self.desk.act("mousemove", *edge(42), "mousemove", self.ann.main.x + 100, self.ann.main.y + 500, "mouseup", 1)
        self.boards_agree("a drop beside the board does nothing")

    def a_drop_on_a_piece(self):
        """It does nothing, so that the next middle click takes the turn from Ann."""
        self.turn_is(self.ann)
        before = self.ann.history()
        self.ann.drag(50, 45)
        self.ann.drag(50, 50)
        self.desk.click(*self.ann.square(50), button=2)
        self.turn_is(self.bob)
        self.boards_agree("a drop on a piece does nothing")
        check(self.ann.history() == before, "and is not written down")
        self.move(self.bob, 13, 29)
        check(self.ann.history() != before, "the history goes on")
        self.histories_agree()

    def handing_over_the_turn(self):
        ann, bob = self.both
        self.desk.click(*ann.square(30), button=2)
        self.turn_is(bob)
        self.desk.click(*ann.square(3), button=2)
        self.turn_is(ann)
        ann.tool.click(*LBL_OP_NICK)
        self.turn_is(bob)
        bob.tool.click(*LBL_NICK)
        self.turn_is(bob)
        bob.tool.click(*LBL_OP_NICK)
        self.turn_is(ann)
        self.desk.click(*ann.square(32))  # a click on an empty square passes
        self.turn_is(bob)
        self.boards_agree("handing over the turn leaves the board alone")

    def changing_pieces(self):
        self.dialog_on(self.bob, 8)
        self.desk.keys("Return")
        self.bob.gone(CHANGE_DIALOG)
        self.put("j", 8)  # a pawn opens the dialog on the queen
        self.boards_agree("Enter makes the pawn a queen")

        self.dialog_on(self.ann, 57).click(*RDO_BISHOP)
        self.desk.keys("Escape")
        self.ann.gone(CHANGE_DIALOG)
        self.boards_agree("Escape changes nothing")

        dialog = self.dialog_on(self.ann, 57)
        dialog.click(*RDO_BISHOP)
        dialog.click(*CLR_BLACK)
        self.desk.keys("Return")
        self.ann.gone(CHANGE_DIALOG)
        self.put("g", 57)
        self.boards_agree("the knight becomes a black bishop")
        self.histories_agree()

    def tab_in_the_change_dialog(self):
        """It goes round the three buttons, the pieces and the colours, and chooses nothing by the way."""
        dialog = self.dialog_on(self.ann, 53)
        self.desk.point(*ASIDE)
        stops = [dialog.picture()]
        while stops[-1] not in stops[1:-1]:
            self.desk.keys("Tab")
            awaited(lambda: dialog.picture() != stops[-1], "Tab moves the focus")
            stops.append(dialog.picture())
        check(len(stops) - 2 >= 5, f"Tab stops at {len(stops) - 2} places")
        dialog.click(*CMD_OK)
        self.ann.gone(CHANGE_DIALOG)
        self.put("t", 53)
        self.boards_agree("the pawn becomes a queen, as the dialog said at first")

    def trashing_a_piece(self):
        dialog = self.dialog_on(self.ann, 57)
        dialog.click(*CMD_TRASH)
        self.ann.gone(CHANGE_DIALOG)
        self.put(".", 57)
        self.boards_agree("the bishop is gone")
        self.histories_agree()

    def the_disc_flies(self):
        """Ctrl+S: a round black disc goes from square to square."""
        self.move(self.bob, 8, 40)
        still = self.ann.board()
        self.ann.keys("ctrl+s")
        seen = []  # each place with the picture
        deadline = time.monotonic() + 5
        while time.monotonic() < deadline and not (seen and self.ann.board() == still):
            board = self.ann.board()
            place = board.differing(still)
            if place and (not seen or seen[-1][0] != place):
                seen.append((place, board))
        check(self.ann.board() == still, "the disc has gone")
        whole = [(place, board) for place, board in seen if place[2] in (21, 22) and place[3] in (20, 21, 22)]
        check(len(whole) >= 3, f"the whole disc is seen on its way: {[place for place, _ in seen]}")
        for (x, y, width, height), board in whole:
            check(board.pixel(x + width // 2, y + height // 2) == (0, 0, 0), "the disc is black")
            corners = [(x, y), (x + width - 1, y), (x, y + height - 1), (x + width - 1, y + height - 1)]
            check(all(board.pixel(*corner) == still.pixel(*corner) for corner in corners), "the disc is round")
        ys = [y for (x, y, _, _), _ in whole]
        check(ys == sorted(ys) and len(set(ys)) > 2, f"the disc goes down: {ys}")
        check(all(abs(x + 11 - SQUARE // 2) < 3 for (x, _, _, _), _ in whole), "the disc keeps to the column")
        check(SQUARE < ys[0] and ys[-1] < 6 * SQUARE, f"the disc goes from A2 to A6: {ys}")

    def coordinates(self):
        stacked = {player.nick: player.board() for player in self.both}
        corner = self.ann.main.x + 11, self.ann.main.y + self.ann.bar + 11
        labels = [(20 + SQUARE * i, 3) for i in range(8)] + [(3, 20 + SQUARE * i) for i in range(8)]

        def covered():
            board = self.ann.board()
            return [(x, y) for x, y in labels
                    if board.part(x, y, 16, 16) != stacked["Ann"].part(x, y, 16, 16)]

        self.desk.click(*corner)
        self.desk.point(*ASIDE)
        awaited(lambda: len(covered()) == 16, "the labels are in their places")
        check(self.bob.board() == stacked["Bob"], "Bob's labels stay in")
        self.desk.click(*corner)
        self.desk.point(*ASIDE)
        awaited(lambda: self.ann.board() == stacked["Ann"], "the labels slide back")

    # Talk.

    def chat(self):
        ann, bob = self.both
        self.empty_log = bob.below_bar(*LOG_TEXT)
        for player, text in [(ann, "Good luck, Bob!"), (bob, "and to you <b>Ann</b> & co"), (ann, "me")]:
            listener = self.other(player)
            before = listener.below_bar(*LOG_TEXT)
            player.say(text)
            self.log_changes(listener, before, f"{listener.nick} reads what {player.nick} said")
        expected = "\r\n<Ann>  Good luck, Bob!\r\n<Bob>  and to you <b>Ann</b> & co\r\n<Ann>  me\r\n"
        for player in self.both:
            log = player.saved_chat("chat.txt")
            check(log == expected, f"{player.nick}'s log is {log!r}")

    def clearing_the_log(self):
        before = self.ann.below_bar(*LOG_TEXT)
        self.bob.say("/CLEAR")
        awaited(lambda: self.bob.below_bar(*LOG_TEXT) == self.empty_log, "Bob's log is empty")
        self.bob.say("still there?")
        self.log_changes(self.ann, before, "Ann reads the next line")
        log = self.bob.saved_chat("chat2.txt")
        check(log == "\r\n<Bob>  still there?\r\n", f"Bob's log is {log!r}")

    def canned_messages(self):
        pictures = []
        for keys in [["ctrl+c"], ["ctrl+x"], ["ctrl+z"], ["ctrl+i"], ["alt+m", "s", "w"]]:
            self.ann.keys(*keys)
            pictures.append(settled(self.bob.window("Message").picture))
            self.bob.answer("Message", "Return")
        check(len(set(pictures)) == 5, "five messages, five texts")
        log = self.ann.saved_chat("chat3.txt")
        check(log.endswith("Bob>  still there?\r\n"), f"no message is written to the log: {log!r}")

    def messages_switched_off(self):
        self.bob.keys("alt+m", "a")
        before = self.bob.below_bar(*LOG_TEXT)
        self.ann.keys("ctrl+c")
        self.ann.say("behind the message")
        self.log_changes(self.bob, before, "Bob reads the line behind the message")
        check(not self.bob.find("Message"), "Bob sees no message")
        self.bob.keys("alt+m", "a")
        self.ann.keys("ctrl+c")
        self.bob.answer("Message", "Return")

    def sounds_switched_off(self):
        def look():
            return self.bob.below_bar(0, 0, 160, 200)

        def menu():
            closed = look()
            self.bob.keys("alt+g")
            awaited(lambda: look() != closed, "the menu opens")
            picture = settled(look)
            self.desk.keys("Escape", "Escape")
            awaited(lambda: look() == closed, "the menu closes")
            return picture

        self.desk.point(*ASIDE)
        on = menu()
        self.bob.keys("alt+g", "p")
        check(menu() != on, "the menu shows that sounds are off")
        self.move(self.bob, 40, 8)
        self.bob.keys("alt+g", "p")
        check(menu() == on, "the menu shows that sounds are on")

    # Games and files.

    def checkers(self):
        self.bob.keys("shift+F1")
        awaited(lambda: all("?" in self.eyes.read(player) for player in self.both), "a new game on both boards")
        self.desk.point(*ASIDE)
        self.eyes.learn(self.bob, CHECKERS)
        self.expected = CHECKERS
        self.boards_agree("the checkers position")
        self.histories_agree()
        self.move(self.bob, 8, 24)
        self.move(self.ann, 40, 0, becomes="?")
        kings = [player.square_picture(0) for player in self.both]
        check(kings[0] == kings[1], "the king checker is the same on both boards")
        self.eyes.learn(self.ann, "v" + self.expected[1:])
        self.put("v", 0)
        self.move(self.ann, 0, 33)

    def a_cleared_board(self):
        self.ann.keys("alt+g", "c")
        self.expected = EMPTY
        self.boards_agree("an empty board")

    def a_new_chess_game(self):
        self.ann.keys("ctrl+F1")
        awaited(lambda: self.ann.clock() == self.early_clock, "the clock starts again", 8)
        self.expected = CHESS
        self.boards_agree("the chess position")
        check(len(self.ann.history().colors()) <= 3, "the history is empty")
        self.histories_agree()

    def saving_here_and_opening_there(self):
        self.move(self.ann, 57, 42)
        self.move(self.bob, 9, 25)
        kept = self.expected
        check(self.ann.saved("middle.mrv") == kept, "the file holds what the board shows")
        self.ann.keys("F2")
        window = self.ann.window("Save Game as")
        window.activate()
        self.desk.enter("middle.mrv")
        self.desk.keys("alt+y")  # overwrite
        self.ann.gone("Save Game as")
        log = self.bob.below_bar(*LOG_TEXT)
        self.desk.enter("saved")  # the main window has the keys again
        self.log_changes(self.bob, log, "Ann's line arrives")
        self.move(self.bob, 3, 38)
        self.dialog_on(self.bob, 63).click(*CMD_TRASH)
        self.bob.gone(CHANGE_DIALOG)
        self.put(".", 63)
        self.boards_agree("the castle is gone")
        self.bob.keys("F3")
        self.bob.name_file("Open Game", self.ann.folder / "middle.mrv")
        self.expected = kept
        self.boards_agree("the opened game")

    # The other windows.

    def instructions(self):
        self.ann.keys("F1")
        window = self.ann.window("Instructions")
        window.activate()
        check(not self.ann.tool.stays_on_top(), "the tool window gives way")
        check(len(window.picture().part(4, 4, 440, 300).colors()) > 10, "there is text")
        self.desk.drag(self.ann.square(52), self.ann.square(36))  # the board takes no input meanwhile
        self.move(self.bob, 25, 33)
        window.activate()
        self.desk.keys("alt+F4")
        self.ann.gone("Instructions")
        awaited(self.ann.tool.stays_on_top, "the tool window stays on top again")

    def about_and_author(self):
        self.ann.keys("alt+h", "a")
        self.ann.answer("About Morva 1.0.185", "Return")
        self.ann.keys("alt+h", "a")
        about = self.ann.window("About Morva 1.0.185")
        awaited(lambda: not self.ann.tool.stays_on_top(), "the tool window gives way")
        about.move(300, 620)
        about = awaited(lambda: (found := self.ann.find(about.title)) and found.y >= 620 and found, "the box moves")
        left, top, width, height = (value // TWIPS for value in PORTRAIT)

        def portrait():
            return self.desk.picture(about.x + left, about.y + top, width, height)

        def beside():
            return self.desk.picture(about.x + left - 50, about.y + top, 50, height)

        self.desk.point(*ASIDE)
        picture, text = settled(portrait), beside()
        about.click(*PORTRAIT)
        self.ann.window(AUTHOR_WINDOW)
        self.desk.point(*ASIDE)
        awaited(lambda: beside() != text, "the author's window lies over the box")
        check(portrait() == picture, "the portraits lie on each other")
        about.click(*PORTRAIT)
        self.ann.gone(AUTHOR_WINDOW)
        self.ann.answer(about.title, "Return")
        awaited(self.ann.tool.stays_on_top, "the tool window stays on top again")
        self.move(self.ann, 52, 36)

    def always_on_top(self):
        def nicks():
            return self.ann.tool.picture().part(0, 32, 216, 70)

        for on_top in (False, True):
            without_menu = nicks()
            self.ann.tool.click(*LBL_TIME, button=3)
            awaited(lambda: nicks() != without_menu, "the menu opens")
            self.desk.keys("Down", "Return")
            awaited(lambda: self.ann.tool.stays_on_top() == on_top, f"the tool window stays on top: {on_top}")

    def a_wider_tool_window(self):
        tool = self.ann.tool
        corner = tool.x + tool.width - 6, tool.y + tool.height + 2
        pull = ["mousemove_relative", 20, 30, "sleep", 0.05]
        self.desk.act("mousemove", *corner, "mousedown", 1, "sleep", 0.05, *pull, *pull, *pull, "mouseup", 1)
        wide = awaited(lambda: (found := self.ann.find("Ann")) and found.width > tool.width and found, "it widens")
        check(wide.height == tool.height, "it grows no higher")
        awaited(lambda: wide.picture().pixel(wide.width - 8, wide.height - 8) == (255, 255, 255), "its list widens")
        self.ann.tool = wide

    # The end.

    def leaving(self):
        self.boards_agree("the last position")
        self.desk.point(*ASIDE)
        check(self.ann.board() == self.bob.board(), "the two boards are equal, pixel by pixel")
        games = {"Bob": self.bob.saved("last.mrv")}
        self.bob.keys("alt+g", "q")
        self.bob.ended()
        self.ann.answer("Morva", "alt+y")
        self.ann.name_file("Save Game as", self.ann.folder / "last.mrv")
        self.ann.ended()
        games["Ann"] = self.ann.game_file("last.mrv")
        check(games["Ann"] == games["Bob"] == self.expected, f"both have saved the same game: {games}")


def main():
    if not own_network():
        print("no network of its own: it plays on this computer's port")
    with Desk() as desk:
        game = Game(desk)
        return run([desk], [
            game.start_up_pictures, game.the_two_checks, game.switching_host_and_guest, game.connecting,
            game.the_first_look, game.twelve_moves, game.a_near_row_converts_nothing, game.the_title_names_the_square,
            game.the_mark_under_a_drag, game.a_drop_on_a_piece, game.handing_over_the_turn, game.changing_pieces,
            game.tab_in_the_change_dialog, game.trashing_a_piece, game.the_disc_flies, game.coordinates, game.chat,
            game.clearing_the_log, game.canned_messages, game.messages_switched_off, game.sounds_switched_off,
            game.checkers, game.a_cleared_board, game.a_new_chess_game, game.saving_here_and_opening_there,
            game.instructions, game.about_and_author, game.always_on_top, game.a_wider_tool_window, game.leaving,
        ])


if __name__ == "__main__":
    sys.exit(main())
