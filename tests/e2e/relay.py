"""Two real copies of Morva with a bad line between them: what one sends reaches the other split, merged and late. 500
actions from both sides, then both boards and both chat logs have to tell the same story.

Usage: relay.py [seed]. Needs root, for a network of its own for either side.
"""

import ctypes
import multiprocessing
import os
import random
import select
import socket
import sys
import time

from desk import Desk, Failure, awaited, check, own_network, run
from player import CHANGE_DIALOG, CHESS, CMD_TRASH, PORT, Eyes, Player

ACTIONS = 500
ROUNDS = 5  # each ends with a new game
HOLD = 0.030  # seconds that the line may keep what it got
PACE = 0.025  # seconds an action takes at least
GAP = 0.010  # between two pieces of what came as one
ASIDE = 1590, 990


class Relay(multiprocessing.Process):
    """Takes the guest's connection here, makes one to the host, and carries the bytes, badly. It never brings together
    what left more than 50 ms apart. A process of its own, so that nothing else spoils its timing."""

    def __init__(self, host, chance):
        """`host` is the process that has the host's network."""
        super().__init__(daemon=True)
        self.host, self.chance = host, chance
        self.listener = socket.create_server(("127.0.0.1", PORT))
        self.pieces, self.splits, self.merges = (multiprocessing.Value("i") for _ in range(3))

    def run(self):
        guest, _ = self.listener.accept()
        # A socket belongs to the network it was made in.
        with open(f"/proc/{self.host.pid}/ns/net") as network:
            check(ctypes.CDLL(None).setns(network.fileno(), 0) == 0, "the relay can't enter the host's network")
        host = socket.create_connection(("127.0.0.1", PORT))
        for end in (guest, host):
            end.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._carry({guest: host, host: guest})

    def _carry(self, other):
        waiting = {end: [] for end in other}  # for each receiver: when to send, and what
        while True:
            dues = [queue[0][0] for queue in waiting.values() if queue]
            timeout = max(0, min(dues) - time.monotonic()) if dues else None
            for end in select.select(list(other), [], [], timeout)[0]:
                data = end.recv(4096)
                if not data:
                    return
                self._queue(waiting[other[end]], data)
            for end, queue in waiting.items():
                while queue and queue[0][0] <= time.monotonic():
                    end.sendall(queue.pop(0)[1])

    def _queue(self, queue, data):
        now = time.monotonic()
        due = now + self.chance.uniform(0, HOLD)
        if queue:
            due = max(due, queue[-1][0])
            if self.chance.random() < 0.5:
                due, head = queue.pop()
                data = head + data
                self.merges.value += 1
        cuts = sorted(self.chance.sample(range(1, len(data)), min(len(data) - 1, self.chance.choice([0, 0, 1, 2]))))
        for start, end in zip([0, *cuts], [*cuts, len(data)]):
            queue.append((due, data[start:end]))
            self.pieces.value += 1
            self.splits.value += start > 0
            due = min(due + self.chance.uniform(0, GAP), max(due, now + HOLD))


class Actor:
    """A player on a desk of their own, who acts at random on one half of the board, so that the two do not disturb each
    other, and remembers what the half has to look like."""

    LINES = ["a good move", "me", "you", "15236", "1new", "2Bob", "0", "37", "44030", "hm . . .", "/clear?", "1__"]
    CANNED = ["ctrl+c", "ctrl+x", "ctrl+z", "ctrl+w", "ctrl+i"]
    QUEENS = {"o": "t", "e": "j"}

    def __init__(self, player, columns, chance):
        self.player, self.desk, self.chance = player, player.desk, chance
        self.squares = [i for i in range(64) if i % 8 in columns]
        self.said = []
        self.new_game()

    def new_game(self):
        self.half = {i: CHESS[i] for i in self.squares}

    def act(self):
        deeds = [self.move, self.say, self.turn, self.canned, self.change, self.trash]
        self.chance.choices(deeds, [55, 20, 8, 8, 6, 3])[0]()

    def move(self):
        start, end = self._piece(), self.chance.choice([i for i in self.squares if self.half[i] == "."])
        self.player.move(start, end)
        piece, self.half[start] = self.half[start], "."
        far = end < 8 if piece == "o" else end > 55
        self.half[end] = self.QUEENS.get(piece, piece) if far else piece

    def say(self):
        line = f"{len(self.said)} {self.chance.choice(self.LINES)}" if self.chance.random() < 0.7 else \
            self.chance.choice(self.LINES)
        self.said.append(line)
        self.desk.enter(line)

    def turn(self):
        self.desk.click(*self.player.square(self.chance.choice(self.squares)), button=2)

    def canned(self):
        self.desk.keys(self.chance.choice(self.CANNED))

    def change(self):
        square = self._piece()
        self._dialog(square)
        self.desk.keys("Return")
        self._dialog_gone()
        self.half[square] = self.QUEENS.get(self.half[square], self.half[square])

    def trash(self):
        square = self._piece()
        self._dialog(square)
        self.player.window(CHANGE_DIALOG).click(*CMD_TRASH)
        self._dialog_gone()
        self.half[square] = "."

    def _piece(self):
        return self.chance.choice([i for i in self.squares if self.half[i] != "."])

    def _dialog(self, square):
        self.desk.click(*self.player.square(square), button=3)
        main = int(self.player.main.ident, 16)
        awaited(lambda: self.desk.active() not in (0, main), "the change dialog has the keys")

    def _dialog_gone(self):
        awaited(lambda: self.desk.active() == int(self.player.main.ident, 16), "the main window has the keys again")


class Table:
    def __init__(self, desks, seed):
        self.desks, self.chance = desks, random.Random(seed)

    def connecting(self):
        own = 'ip link set lo up && exec "$0"'
        ann = Player(self.desks[0], "Ann", "unshare", "--net", "sh", "-c", own)
        ann.host()
        self.relay = Relay(ann.process, self.chance)
        self.relay.start()
        bob = Player(self.desks[1], "Bob")
        bob.join("127.0.0.1")
        self.both = ann, bob
        for player in self.both:
            player.sit_down(10, 30)
            player.desk.point(*ASIDE)
        self.eyes = Eyes()
        self.eyes.learn(ann, CHESS)
        for player in self.both:
            player.keys("alt+m", "a")  # accept no messages: their boxes would be in the way
        self.actors = [Actor(ann, range(0, 4), self.chance), Actor(bob, range(4, 8), self.chance)]

    def five_hundred_actions(self):
        for number in range(ROUNDS):
            for _ in range(ACTIONS // ROUNDS):
                soonest_end = time.monotonic() + PACE
                self.chance.choice(self.actors).act()
                time.sleep(max(0, soonest_end - time.monotonic()))
            check(self.relay.is_alive(), "the relay has not ended")
            self.boards_are(self.expected(), f"the boards after round {number}")
            if number < ROUNDS - 1:
                self.both[number % 2].keys("ctrl+F1")
                for actor in self.actors:
                    actor.new_game()
                self.boards_are(CHESS, f"the new game after round {number}")

    def expected(self):
        halves = self.actors[0].half | self.actors[1].half
        return "".join(halves[i] for i in range(64))

    def boards_are(self, board, words):
        for player in self.both:
            player.desk.point(*ASIDE)
            try:
                awaited(lambda: self.eyes.read(player) == board, f"{words}, {player.nick}")
            except Failure as failure:
                raise Failure(f"{failure}; {self.eyes.read(player)} instead of {board}") from None

    def the_saved_games(self):
        games = [player.saved("last.mrv") for player in self.both]
        check(games[0] == games[1] == self.expected(), f"the saved games: {games}, expected {self.expected()}")

    def the_saved_chats(self):
        """Every line stands whole in both logs, the lines of each player in their order."""
        for player in self.both:
            log = player.saved_chat("chat.txt").strip("\r\n").split("\r\n")
            for actor in self.actors:
                mark = f"<{actor.player.nick}>  "
                said = [line.removeprefix(mark) for line in log if line.startswith(mark)]
                check(said == actor.said, f"{player.nick}'s log: {first_difference(said, actor.said)}")
            check(len(log) == sum(len(actor.said) for actor in self.actors), f"{player.nick}'s log has other lines")
        relay = self.relay
        print(f"         {len(log)} lines of chat, {relay.pieces.value} pieces on the line, "
              f"{relay.splits.value} splits, {relay.merges.value} merges")

    def leaving(self):
        self.both[1].keys("alt+g", "q")
        self.both[1].ended()
        self.both[0].answer("Morva", "alt+n")
        self.both[0].ended()


def first_difference(got, wanted):
    for number, (a, b) in enumerate(zip(got + [None], wanted + [None])):
        if a != b:
            return f"line {number} is {a!r} instead of {b!r}"
    return "no difference"


def main():
    if not own_network():
        print("relay.py needs a network of its own for either side, which only root can make")
        return 1
    seed = int(sys.argv[1]) if len(sys.argv) > 1 else int(time.time())
    print(f"seed {seed}")
    os.nice(-15)  # the line has its own delays; those of a busy machine come on top
    with Desk() as one, Desk() as other:
        table = Table([one, other], seed)
        return run(table.desks, [table.connecting, table.five_hundred_actions, table.the_saved_games,
                                 table.the_saved_chats, table.leaving])


if __name__ == "__main__":
    sys.exit(main())
