"""What goes wrong at a table: a taken port, hosts that aren't there, the other side dying or leaving at a bad moment,
things happening behind an open dialog. Where the other side has to do what no program does, it is a bare socket."""

import signal
import socket
import struct
import sys
import time

from desk import Desk, awaited, check, own_network, run
from player import (CHANGE_DIALOG, CHECKERS, CHESS, CMD_CANCEL, LOG_TEXT, PORT, Eyes, Player)

QUESTION = "Morva"  # the box that says that the other side has left
PAUSE = 0.06  # keeps one message apart from the next


class Peer:
    """The other side of the connection, as bytes."""

    def __init__(self, connection):
        self.connection = connection
        self.received = b""

    @classmethod
    def guest(cls):
        peer = cls(socket.create_connection(("127.0.0.1", PORT)))
        peer.send("2Raw")
        return peer

    def send(self, *messages):
        for message in messages:
            self.connection.sendall(message.encode())
            time.sleep(PAUSE)

    def receives(self, message):
        """Waits for a message; what came before it is forgotten."""

        def arrived():
            self.connection.setblocking(False)
            try:
                self.received += self.connection.recv(4096)
            except BlockingIOError:
                pass
            return message.encode() in self.received

        awaited(arrived, f"{message} goes to the other side")
        self.received = self.received.split(message.encode(), 1)[1]

    def leave(self):
        self.connection.close()

    def reset(self):
        self.connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.connection.close()


class Faults:
    """Each scene starts on a clear desk."""

    def __init__(self, desk):
        self.desk = desk

    def host(self):
        """Ann as a host, at a table with a peer."""
        self.desk.clear()
        ann = Player(self.desk, "Ann")
        ann.host()
        peer = Peer.guest()
        peer.receives("2Ann")
        ann.sit_down(10, 30)
        self.desk.point(1590, 990)
        self.eyes = Eyes()
        self.eyes.learn(ann, CHESS)
        return ann, peer

    def shows(self, player, board, words):
        awaited(lambda: self.eyes.read(player) == board, words)

    def guest(self, address):
        """Ann as a guest who gets no further than connecting."""
        self.desk.clear()
        ann = Player(self.desk, "Ann")
        ann.join(address)
        window = ann.window("Connecting")
        picture = window.picture()
        time.sleep(1.5)  # nothing happens, for as long as one cares to wait
        self.desk.point(1590, 990)
        check([w.title for w in ann.windows()] == ["Connecting"], "the window goes on saying Connecting")
        check(window.picture() == picture, "and shows nothing else")
        window.activate()
        return ann, window

    def saves_and_ends(self, player, board):
        player.answer(QUESTION, "alt+y")
        player.name_file("Save Game as", player.folder / "kept.mrv")
        player.ended()
        saved = player.game_file("kept.mrv")
        check(saved == board, f"the saved game is {saved}")

    # Before the game.

    def port_taken(self):
        """A box says so in plain words, which the welcome dialog would be too narrow for; then the program ends."""
        self.desk.clear()
        with socket.create_server(("", PORT)):
            ann = Player(self.desk, "Ann")
            ann.listen()
            awaited(lambda: [(w.title, w.width > 400) for w in ann.windows()] == [("Morva", True)], "the box")
            ann.answer("Morva", "Return")
            ann.ended()

    def host_that_does_not_resolve(self):
        ann, window = self.guest("no.such.host.invalid")
        window.click(*CMD_CANCEL)
        ann.ended()

    def refused_and_escape(self):
        ann, _ = self.guest("127.0.0.1")
        self.desk.keys("Escape")
        ann.ended()

    def refused_and_close_box(self):
        ann, _ = self.guest("127.0.0.1")
        self.desk.keys("alt+F4")
        ann.ended()

    def host_gives_up(self):
        self.desk.clear()
        ann = Player(self.desk, "Ann")
        ann.host().click(*CMD_CANCEL)
        ann.ended()

    def guest_that_says_nothing(self):
        """It connects and goes: the host has no game to show, but asks."""
        self.desk.clear()
        ann = Player(self.desk, "Ann")
        ann.host()
        socket.create_connection(("127.0.0.1", PORT)).close()
        self.saves_and_ends(ann, CHESS)

    # The other side goes.

    def killed(self):
        self.desk.clear()
        ann = Player(self.desk, "Ann")
        ann.host()
        bob = Player(self.desk, "Bob")
        bob.join("127.0.0.1")
        for player, x in ((ann, 10), (bob, 810)):
            player.sit_down(x, 30)
        self.eyes = Eyes()
        self.desk.point(1590, 990)
        self.eyes.learn(ann, CHESS)
        bob.drag(12, 28)
        moved = CHESS[:12] + "." + CHESS[13:28] + "e" + CHESS[29:]
        self.shows(ann, moved, "Bob's move")
        bob.process.send_signal(signal.SIGKILL)
        self.saves_and_ends(ann, moved)

    def reset(self):
        ann, peer = self.host()
        peer.reset()
        ann.answer(QUESTION, "Escape")  # no
        ann.ended()
        check(not list(ann.folder.glob("*.mrv")), "nothing is saved")

    def last_words(self):
        """What was sent right before the other side left is not lost."""
        ann, peer = self.host()
        peer.connection.sendall(b"11228" b"11321")
        peer.leave()
        moved = CHESS[:12] + ".." + CHESS[14:21] + "e" + CHESS[22:28] + "e" + CHESS[29:]
        self.saves_and_ends(ann, moved)

    def leaving_behind_a_file_dialog(self):
        ann, peer = self.host()
        ann.keys("F2")
        before = ann.window("Save Game as")
        before.activate()
        self.desk.type("not this one")
        peer.leave()
        ann.answer(QUESTION, "alt+y")
        after = awaited(lambda: [w for w in ann.windows() if w.title == before.title and w.ident != before.ident],
                        "a dialog of its own")[0]
        after.activate()
        self.desk.enter(ann.folder / "kept.mrv")
        ann.ended()
        check(ann.game_file("kept.mrv") == CHESS, "the game is saved")
        check([path.name for path in ann.folder.glob("*.mrv")] == ["kept.mrv"], "and nothing else is")

    def leaving_behind_the_about_box(self):
        ann, peer = self.host()
        ann.keys("alt+h", "a")
        ann.window("About Morva 1.0.185")
        peer.leave()
        self.saves_and_ends(ann, CHESS)

    def leaving_behind_the_change_dialog(self):
        ann, peer = self.host()
        self.desk.click(*ann.square(52), button=3)
        ann.window(CHANGE_DIALOG)
        peer.leave()
        self.saves_and_ends(ann, CHESS)

    # Things that happen behind a window.

    def moves_behind_a_message_box(self):
        ann, peer = self.host()
        log = ann.below_bar(*LOG_TEXT)
        peer.send("0check")
        box = ann.window("Message")
        box.move(700, 700)
        peer.send("11228", "0go on", "11321", "me")
        moved = CHESS[:12] + ".." + CHESS[14:21] + "e" + CHESS[22:28] + "e" + CHESS[29:]
        self.shows(ann, moved, "the moves behind the box")
        awaited(lambda: ann.below_bar(*LOG_TEXT) != log, "the chat line behind the box")
        ann.answer("Message", "Return")
        ann.drag(52, 36)
        peer.receives("15236")

    def move_behind_the_save_dialog(self):
        """What is saved is the board at the end, not at the beginning of the dialog."""
        ann, peer = self.host()
        ann.keys("F2")
        ann.window("Save Game as").move(600, 600)
        peer.send("11228")
        moved = CHESS[:12] + "." + CHESS[13:28] + "e" + CHESS[29:]
        self.shows(ann, moved, "the move behind the dialog")
        ann.name_file("Save Game as", ann.folder / "now.mrv")
        check(ann.game_file("now.mrv") == moved, "the file holds the move")

    def new_game_behind_the_change_dialog(self):
        ann, peer = self.host()
        self.desk.click(*ann.square(52), button=3)
        dialog = ann.window(CHANGE_DIALOG)
        dialog.move(700, 700)
        peer.send("1newc")
        awaited(lambda: self.eyes.read(ann)[:8] == ".?.?.?.?", "the new game behind the dialog")
        self.desk.point(1590, 990)
        self.eyes.learn(ann, CHECKERS)
        self.shows(ann, CHECKERS, "the checkers position")
        dialog.activate()
        self.desk.keys("Return")
        peer.receives("452616777215")
        self.shows(ann, CHECKERS[:52] + "t" + CHECKERS[53:], "the queen is put where the dialog was opened")
        ann.drag(40, 32)
        peer.receives("14032")

    def new_game_behind_the_flying_disc(self):
        ann, peer = self.host()
        peer.send("11228")
        ann.keys("ctrl+s")
        peer.send("1clear", "1new")
        self.shows(ann, CHESS, "the new game")
        ann.drag(52, 36)
        peer.receives("15236")

    def piece_gone_from_under_the_hand(self):
        """The other side trashes the piece that is being dragged: what is dropped is nothing, on both sides."""
        ann, peer = self.host()
        self.desk.act("mousemove", *ann.square(52), "mousedown", 1, "mousemove", *ann.square(44))
        peer.send("352")
        awaited(lambda: self.eyes.read(ann)[52] == ".", "the piece is trashed")
        self.desk.act("mousemove", *ann.square(36), "mouseup", 1)
        peer.receives("15236")
        ann.drag(53, 37)
        peer.receives("15337")
        self.desk.point(1590, 990)
        self.shows(ann, CHESS[:37] + "o" + CHESS[38:52] + ".." + CHESS[54:], "the board after the next move")


def main():
    if not own_network():
        print("no network of its own: it plays on this computer's port")
    with Desk() as desk:
        scenes = Faults(desk)
        return run([desk], [
            scenes.port_taken, scenes.host_that_does_not_resolve, scenes.refused_and_escape,
            scenes.refused_and_close_box, scenes.host_gives_up, scenes.guest_that_says_nothing, scenes.killed,
            scenes.reset, scenes.last_words, scenes.leaving_behind_a_file_dialog, scenes.leaving_behind_the_about_box,
            scenes.leaving_behind_the_change_dialog, scenes.moves_behind_a_message_box,
            scenes.move_behind_the_save_dialog, scenes.new_game_behind_the_change_dialog,
            scenes.new_game_behind_the_flying_disc, scenes.piece_gone_from_under_the_hand,
        ], go_on=True)


if __name__ == "__main__":
    sys.exit(main())
