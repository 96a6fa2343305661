#!/usr/bin/env python3
"""Plays two real copies of Morva over a bad line: two networks, joined by a line that delays every packet by 40 to 60 ms
and lets nothing through in one second of every four. In each round both players say a line and move right behind it, and
now and then change a piece, trash one or hand the turn over. At the end both boards and both chats must be alike, and as
they were played.

Usage: tools/bad_line.py [rounds] [seed]. Needs root, /dev/net/tun, Xvfb, openbox and xdotool; MORVA names the program.
"""

import collections
import ctypes
import difflib
import fcntl
import os
import random
import select
import struct
import subprocess
import sys
import threading
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "e2e"))
from desk import Desk, awaited, check, own_network, run  # noqa: E402
from player import CHANGE_DIALOG, CHESS, Player  # noqa: E402

CMD_TRASH = 2520, 1320, 855, 495  # twips
ADDRESSES = "10.29.48.1", "10.29.48.2"
DELAY = 0.040, 0.060  # seconds
SILENT, OF_EVERY = 1.0, 4.0  # seconds
PACE = 0.2, 0.9  # seconds between one player's turn and the other's


class BadLine(threading.Thread):
    """Carries packets between two networks, in order, each of them known by a process that lives in it."""

    def __init__(self, pids):
        super().__init__(daemon=True)
        self.ends = [self._interface(pid, address) for pid, address in zip(pids, ADDRESSES)]
        self.packets = 0

    @staticmethod
    def _interface(pid, address):
        """An interface belongs to the network in which it is made."""
        libc, opened = ctypes.CDLL(None), []

        def make():
            with open(f"/proc/{pid}/ns/net") as network:
                check(libc.setns(network.fileno(), 0) == 0, "there is no way into the network")
            tun, no_header, set_interface = 1, 0x1000, 0x400454CA
            opened.append(os.open("/dev/net/tun", os.O_RDWR | os.O_NONBLOCK))
            fcntl.ioctl(opened[0], set_interface, struct.pack("16sH22x", b"line", tun | no_header))
            subprocess.run(["ip", "addr", "add", address + "/24", "dev", "line"], check=True)
            subprocess.run(["ip", "link", "set", "line", "up"], check=True)

        maker = threading.Thread(target=make)  # a network is a thread's
        maker.start()
        maker.join()
        return opened[0]

    def run(self):
        began = time.monotonic()
        queues = [collections.deque(), collections.deque()]  # for each end: when to hand over, and what
        while True:
            now = time.monotonic()
            dues = [queue[0][0] for queue in queues if queue]
            timeout = max(0.0, min(dues) - now) if dues else None
            for end in select.select(self.ends, [], [], timeout)[0]:
                self.packets += 1
                queue = queues[1 - self.ends.index(end)]
                due = time.monotonic() + random.uniform(*DELAY)
                into = (due - began) % OF_EVERY
                if into < SILENT:
                    due += SILENT - into
                queue.append((max(due, queue[-1][0] if queue else 0), os.read(end, 65536)))
            for end, queue in zip(self.ends, queues):
                while queue and queue[0][0] <= time.monotonic():
                    os.write(end, queue.popleft()[1])


class Actor:
    """A player who acts at random on one half of the board, so that the two do not disturb each other, and remembers
    what the half has to look like."""

    ENDINGS = ["", "15236", "me", "1", "37", "1new", "0", "a good move", "hm . . ."]
    QUEENS = {"o": "t", "e": "j"}

    def __init__(self, player, columns, chance):
        self.player, self.desk, self.chance = player, player.desk, chance
        self.squares = [i for i in range(64) if i % 8 in columns]
        self.said = []
        self.moves = 0
        self.new_game()

    def new_game(self):
        self.half = {i: CHESS[i] for i in self.squares}

    def act(self):
        self.said.append(f"{len(self.said)} {self.chance.choice(self.ENDINGS)}".strip())
        self.desk.enter(self.said[-1])
        self.chance.choices([self.move, self.turn, self.change, self.trash], [80, 8, 8, 4])[0]()

    def move(self):
        start, end = self._piece(), self.chance.choice([i for i in self.squares if self.half[i] == "."])
        before = self.player.square_picture(start)
        self.player.drag(start, end)
        awaited(lambda: self.player.square_picture(start) != before, f"{self.player.nick}'s piece leaves {start}")
        piece, self.half[start] = self.half[start], "."
        far = end < 8 if piece == "o" else end > 55
        self.half[end] = self.QUEENS.get(piece, piece) if far else piece
        self.moves += 1

    def turn(self):
        self.desk.click(*self.player.square(self.chance.choice(self.squares)), button=2)

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
        self.player.window(CHANGE_DIALOG)
        time.sleep(0.3)  # until it has the keys

    def _dialog_gone(self):
        self.player.gone(CHANGE_DIALOG)
        time.sleep(0.3)  # until the main window has them again


class Table:
    def __init__(self, desks, keeper, rounds, seed):
        self.desks, self.keeper, self.rounds, self.chance = desks, keeper, rounds, random.Random(seed)

    def play(self):
        self.connecting()
        self.playing()
        self.comparing()

    def connecting(self):
        self.line = BadLine([self.keeper.pid, os.getpid()])
        self.line.start()
        ann = Player(self.desks[0], "Ann", "nsenter", "--net", "--target", str(self.keeper.pid))
        ann.host()
        bob = Player(self.desks[1], "Bob")
        bob.join(ADDRESSES[0])
        for player in (ann, bob):
            player.sit_down(10, 30)
            player.keys("alt+m", "a")  # accept no messages: their boxes would be in the way
        self.actors = [Actor(ann, range(0, 4), self.chance), Actor(bob, range(4, 8), self.chance)]

    def playing(self):
        for number in range(1, self.rounds + 1):
            for actor in self.actors:
                actor.act()
                time.sleep(self.chance.uniform(*PACE))
            if min(sum(piece != "." for piece in actor.half.values()) for actor in self.actors) < 4:
                self.actors[number % 2].player.keys("ctrl+F1")
                for actor in self.actors:
                    actor.new_game()
                time.sleep(4)  # both act on the new board
        time.sleep(5)

    def comparing(self):
        """The figures come first, so that they are seen of a bad run too."""
        logs = [actor.player.saved_chat("chat.txt").strip("\r\n").split("\r\n") for actor in self.actors]
        altered = 0
        for number, actor in enumerate(self.actors):
            mark = f"<{actor.player.nick}>  "
            heard = [line.removeprefix(mark) for line in logs[1 - number] if line.startswith(mark)]
            alike = difflib.SequenceMatcher(None, actor.said, heard, autojunk=False).get_matching_blocks()
            altered += max(len(actor.said), len(heard)) - sum(block.size for block in alike)
        games = [actor.player.saved("last.mrv") for actor in self.actors]
        halves = self.actors[0].half | self.actors[1].half
        expected = "".join(halves[i] for i in range(64))
        lines, moves = (sum(len(a.said) for a in self.actors), sum(a.moves for a in self.actors))
        print(f"         {lines} lines, {moves} moves, {self.line.packets} packets: {altered} lines altered or lost, "
              f"{sum(a != b for a, b in zip(*games))} squares differ", flush=True)
        check(altered == 0, "the chats are not alike")
        check(games[0] == games[1] == expected, f"the boards: {games}, expected {expected}")


def main():
    rounds = int(sys.argv[1]) if len(sys.argv) > 1 else 500
    seed = int(sys.argv[2]) if len(sys.argv) > 2 else 1
    if os.getuid() != 0 or not os.path.exists("/dev/net/tun"):
        print("tools/bad_line.py needs root and /dev/net/tun, for two networks and the line between them")
        return 1
    own_network()
    keeper = subprocess.Popen(["unshare", "--net", "sleep", "infinity"])
    try:
        time.sleep(0.5)  # until it has its network
        with Desk() as one, Desk() as other:
            table = Table([one, other], keeper, rounds, seed)
            return run({"two players over a bad line": table.play})
    finally:
        keeper.kill()


if __name__ == "__main__":
    sys.exit(main())
