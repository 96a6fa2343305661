"""An evening by keys alone, once as host and once as guest. The other side is a bare socket, which hears every byte."""

import socket
import sys

from desk import Desk, awaited, check, own_network, run
from player import BOARD, CHANGE_DIALOG, CHESS, PORT, SQUARE, START_PICTURE, Player

BLACK, WHITE, YELLOW = (0, 0, 0), (255, 255, 255), (255, 215, 0)


class Line:
    """The other side's end of the connection."""

    def __init__(self, connection):
        self.connection, self.got = connection, ""
        connection.setblocking(False)

    def says(self, message):
        self.connection.sendall(message.encode())

    def hears(self, *messages):
        """These come, and nothing else has come since the last call."""
        wanted = "".join(messages)

        def arrived():
            try:
                self.got += self.connection.recv(4096).decode()
            except BlockingIOError:
                pass
            check(wanted.startswith(self.got), f"the other side hears {self.got!r}, not {wanted!r}")
            return self.got == wanted

        awaited(arrived, f"{wanted!r} goes to the other side")
        self.got = ""


class Evening:
    def __init__(self, desk):
        self.desk = desk
        self.expected = list(CHESS)

    def keys(self, *keys):
        self.desk.keys(*keys)

    def keys_go_to(self, wanted):
        """Waits until the window has the keys: what is pressed before goes elsewhere."""

        def has_keys():
            found, active = self.ann.find(wanted), self.desk.output("xdotool", "getactivewindow")
            return found and active and int(found.ident, 16) == int(active)

        awaited(has_keys, f"the keys go to {wanted}")

    def opening(self):
        self.ann = Player(self.desk, "Ann")
        self.keys_go_to(START_PICTURE)
        self.keys("F5")
        self.keys_go_to("Morva")

    def as_host(self):
        self.opening()
        self.keys("Up", "Tab", "ctrl+a")
        self.desk.enter("Ann")
        self.ann.window("Hosting game")
        self.line = Line(socket.create_connection(("127.0.0.1", PORT)))
        self.line.says("2Bob")
        self.table_opens()

    def as_guest(self):
        self.opening()
        server = socket.create_server(("127.0.0.1", PORT))
        self.keys("Tab", "ctrl+a")
        self.desk.type("Ann")
        self.keys("Tab")
        self.desk.enter("127.0.0.1")
        server.settimeout(15)
        connection, _ = server.accept()
        server.close()
        self.line = Line(connection)
        self.line.says("2Bob")
        self.table_opens()

    def table_opens(self):
        self.line.hears("2Ann")
        self.keys_go_to("Morva - Ann")
        self.ann.sit_down(10, 30)

    # On the board; the keys begin and end in the chat line.

    @staticmethod
    def way(square):
        return ["ctrl+Home"] + square // 8 * ["Down"] + square % 8 * ["Right"]

    def cursor_shows(self, square, light=WHITE):
        left, top = SQUARE * (square % 8), SQUARE * (square // 8)

        def shows():
            side = self.ann.below_bar(left, top + SQUARE // 2, 6, 1)
            return side.pixel(1, 0) == BLACK and side.pixel(4, 0) == light

        awaited(shows, f"the cursor shows on {square}")

    def moves(self, start, end, becomes=None):
        self.keys("F6", *self.way(start), "space")
        self.cursor_shows(start, YELLOW)
        self.keys(*self.way(end), "space")
        self.line.hears(f"1{start:02}{end:02}")
        self.put(end, becomes or self.expected[start])
        self.put(start, ".")

    def other_moves(self, start, end):
        before = self.ann.square_picture(start)
        self.line.says(f"1{start:02}{end:02}")
        awaited(lambda: self.ann.square_picture(start) != before, f"Bob's move from {start}")
        self.put(end, self.expected[start])
        self.put(start, ".")

    def put(self, square, letter):
        self.expected[square] = letter

    def dialog_on(self, square, key):
        self.keys("F6", *self.way(square), key)
        dialog = self.ann.window(CHANGE_DIALOG)
        self.keys_go_to(CHANGE_DIALOG)
        x, y = self.ann.square(square)
        check(abs(dialog.x - x) < SQUARE or dialog.x + dialog.width - self.ann.main.x - BOARD in range(-9, 9),
              "the dialog stands at the square")

    def dialog_closes(self):
        self.ann.gone(CHANGE_DIALOG)
        self.keys_go_to("Morva - Ann")

    # The steps.

    def ten_moves(self):
        for mine, theirs in [((52, 36), (12, 28)), ((62, 45), (1, 18)), ((61, 34), (5, 26)), ((51, 43), (11, 19)),
                             ((59, 52), (6, 21))]:
            self.moves(*mine)
            self.other_moves(*theirs)

    def what_does_nothing(self):
        """A piece put back; a drop on a piece, which is then still carried; taking up an empty square."""
        self.keys("F6", *self.way(48), "space", "Up", "Escape", "space", *self.way(20), "space", "space")
        self.cursor_shows(20)
        self.keys(*self.way(49), "space", *self.way(57), "space", "space", "End", "Home", "Up", "Up", "space")
        self.line.hears("14940")
        self.put(49, ".")
        self.put(40, "o")

    def change_and_trash(self):
        self.dialog_on(9, "Menu")
        self.keys("Tab", "Tab", "Tab", "Up", "Tab", "Down", "Return")  # a pawn opens on the queen
        self.line.hears("409516777215")
        self.put(9, "s")
        self.dialog_closes()
        self.dialog_on(15, "shift+F10")
        self.keys("Tab", "Tab", "space")
        self.line.hears("315")
        self.put(15, ".")
        self.dialog_closes()
        self.keys("shift+F6")  # a trash and a cancel leave the keys on the board
        self.dialog_on(0, "Menu")
        self.keys("Escape")
        self.dialog_closes()
        self.keys("shift+F6")

    def the_turn(self):
        """The middle button's key, and the names in the tool window; F6 there and back."""
        self.keys("shift+F6")
        self.keys_go_to("Ann")
        self.keys("Tab", "Return", "shift+Tab", "space", "F6")
        self.line.hears("you", "me")
        self.keys_go_to("Morva - Ann")
        self.keys("ctrl+t", "ctrl+t")
        self.line.hears("you", "me")

    def talk(self):
        """Typed on the board, sent from the board, sent from a label, recalled."""
        self.keys("F6")
        self.desk.type("good move")
        self.keys("F6", "Return")
        self.line.hears("0good move")
        self.keys("Up", "Tab", "space")  # "C": the labels come out, and the keys are in the chat line
        self.desk.type("r")
        self.keys("Tab", "Return")
        self.line.hears("0good mover")
        self.keys("Up", "Up", "Return")
        self.line.hears("0good move")

    def saving(self):
        expected = "".join(self.expected)
        saved = self.ann.saved("evening.mrv")
        check(saved == expected, f"the saved board: {saved}, not {expected}")
        chat = self.ann.saved_chat("evening.txt")
        check(chat == "\r\n<Ann>  good move\r\n<Ann>  good mover\r\n<Ann>  good move\r\n", f"the saved chat: {chat!r}")

    def leaving(self):
        self.keys("alt+g", "q")
        self.ann.ended()
        self.line.connection.close()


def main():
    own_network()
    failed = 0
    for role in ("as_host", "as_guest"):
        with Desk() as desk:
            evening = Evening(desk)
            failed |= run([desk], [getattr(evening, role), evening.ten_moves, evening.what_does_nothing,
                                   evening.change_and_trash, evening.the_turn, evening.talk, evening.saving,
                                   evening.leaving])
    return failed


if __name__ == "__main__":
    sys.exit(main())
