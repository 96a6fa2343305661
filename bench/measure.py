"""How fast and how large Morva is beside windows with nothing in them, on a screen of its own.

measure.py BUILD_FOLDER

The two programs of a comparison take turns in one run, so that whatever else the computer does meets both. What is
compared are the medians; beside them stands how far the single pairs lie apart.
"""

import multiprocessing
import os
import random
import socket
import statistics
import sys
import time
from pathlib import Path

BUILD = Path(sys.argv[1] if len(sys.argv) > 1 else "build-bench").resolve()
os.environ["MORVA"] = str(BUILD / "installed" / "bin" / "morva")
sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "e2e"))

from desk import Desk, Failure, awaited, check, own_network  # noqa: E402: the module reads the place of the program
from player import PORT, PROGRAM, SQUARE, Player  # noqa: E402

STARTS = 15
MOVES = 101
IDLE_WINDOWS, IDLE_SECONDS = 3, 10
FLOOD_SECONDS = 10
QUITS, LINES = 15, 20
BARE_PORT = 2950
LOOK_SECONDS = 0.00005
ASIDE = 1590, 990  # where the pointer is over nothing

MS, MB = (1000, "ms"), (1 / 1024, "MB")  # of seconds; of kilobytes


class Watch:
    """Some lines of pixels of the screen, and whether they have changed."""

    def __init__(self, desk, x, y, width, height, step):
        first = desk.first_pixel + 4 * x
        self.screen = desk.screen
        self.places = [slice(start, start + 4 * width)
                       for start in range(first + y * desk.bytes_a_line, first + (y + height) * desk.bytes_a_line,
                                          step * desk.bytes_a_line)]
        self.before = self.look()

    def look(self):
        return [self.screen[place] for place in self.places]

    def changed(self):
        return self.look() != self.before

    def wait(self, what, seconds=20):
        """Looks until something has changed, and gives the time of that look. It rests between two looks: a watcher
        that never does takes the processor from what it waits for."""
        deadline = time.perf_counter() + seconds
        while not self.changed():
            check(time.perf_counter() < deadline, f"{what}: nothing to be seen")
            time.sleep(LOOK_SECONDS)
        return time.perf_counter()


def verdict(reached):
    return "reached" if reached else "not reached"


def row(words, ours, bare, unit, reach):
    """Prints one comparison: the medians, their ratio, the spread of the pairs' ratios."""
    factor, name = unit
    ratio = statistics.median(ours) / statistics.median(bare)
    pairs = sorted(a / b for a, b in zip(ours, bare))
    tenth = len(pairs) // 10
    print(f"{words:44} {statistics.median(ours) * factor:7.2f} {name} {statistics.median(bare) * factor:7.2f} {name} "
          f"{ratio:6.2f}  {pairs[tenth]:5.2f} to {pairs[-1 - tenth]:5.2f}  "
          + (f"{reach:5.2f}  {verdict(ratio <= reach)}" if reach else "    -"), flush=True)


def start_time(desk, *command):
    """From just before the program's start to the first pixel of it on the screen."""
    watch = Watch(desk, 0, 0, desk.width, desk.height - 20, 40)
    began = time.perf_counter()
    program = desk.start(*command, cwd=desk.folder)
    took = watch.wait("the first window") - began
    time.sleep(0.2)
    desk.end(program)
    awaited(lambda: not watch.changed(), "the window closes")
    time.sleep(0.1)
    return took


def compare_starts(desk):
    morva, bare = [PROGRAM], [BUILD / "bench" / "empty_window", 300, 200]
    for command in (morva, bare):
        start_time(desk, *command)  # from the disk
    pairs = [(start_time(desk, *morva), start_time(desk, *bare)) for _ in range(STARTS)]
    row("start to the first window", *zip(*pairs), MS, 1.25)


def resident(process):
    """Kilobytes: all that is in memory, and the same with what is shared divided among those who share it."""
    def value(file, name):
        lines = Path(f"/proc/{process.pid}/{file}").read_text().splitlines()
        return int(next(line for line in lines if line.startswith(name + ":")).split()[1])

    return value("status", "VmRSS"), value("smaps_rollup", "Pss")


def compare_memory(player, empty):
    (ours, ours_shared), (bare, bare_shared) = resident(player.process), resident(empty)
    row("memory with the table open, resident", [ours], [bare], MB, 1.5)
    row("  the same, shared parts divided", [ours_shared], [bare_shared], MB, None)


class Guest:
    """The other side of a game, on the bare wire."""

    def __init__(self):
        self.line = socket.create_connection(("127.0.0.1", PORT))
        self.line.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self.line.sendall(b"2Bob")
        check(self.line.recv(64) == b"2Ann", "the host says her nick")


def pixels_time(line, message, watch):
    """From the message's being handed to the socket to its change on the screen."""
    began = time.perf_counter()
    line.sendall(message)
    return watch.wait(message) - began


def compare_moves(desk, player, guest, bare_line, bare_window):
    def our_move(message):
        left, top = (middle - SQUARE // 2 for middle in player.square(int(message[-2:])))
        return pixels_time(guest.line, message, Watch(desk, left + 8, top + 8, 40, 40, 4))

    def bare_square():
        return pixels_time(bare_line, b"x", Watch(desk, bare_window.x + 8, bare_window.y + 8, 40, 40, 4))

    pairs = []
    for number in range(MOVES + 2):
        pair = []
        for measured in (lambda: our_move([b"15236", b"13652"][number % 2]), bare_square):
            time.sleep(random.uniform(0.05, 0.1))  # both at rest, at no fixed beat
            pair.append(measured())
        pairs.append(pair)
    row("a move on the wire to pixels on the screen", *zip(*pairs[2:]), MS, 1.4)


def processor_time(process):
    """Seconds, of all the program's threads."""
    return time.clock_gettime((~process.pid << 3) | 2)


def idle(process):
    began = processor_time(process)
    time.sleep(IDLE_SECONDS)
    return 100 * (processor_time(process) - began) / IDLE_SECONDS


def look_at_idleness(player, empty):
    ours = sorted(idle(player.process) for _ in range(IDLE_WINDOWS))
    print(f"{'processor time of the idle table':44} {statistics.median(ours):7.3f} %  {idle(empty):7.3f} %  "
          f"{'':6} {ours[0]:6.3f} to {ours[-1]:6.3f}   0.2   {verdict(statistics.median(ours) < 0.2)}",
          flush=True)


def under_a_flood(desk, player, guest):
    """The other side sends at full speed: the most memory, and the longest that a click waits for its effect."""

    def send():
        while True:
            guest.line.sendall(b"1523613652" * 1000)

    flood = multiprocessing.get_context("fork").Process(target=send)
    flood.start()
    ends = time.monotonic() + FLOOD_SECONDS
    memory, waits = [], []
    x, y = (corner + 11 for corner in player.corner())  # the button there
    while time.monotonic() < ends:
        desk.point(x, y)
        time.sleep(0.5)
        watch = Watch(desk, x - 6, y - 6, 12, 12, 2)
        began = time.perf_counter()
        desk.act("mousedown", 1)
        waits.append(1000 * (watch.wait("the pressed button") - began))
        desk.act("mouseup", 1)
        desk.point(*ASIDE)
        time.sleep(0.2)
        memory.append(resident(player.process)[0] / 1024)
    flood.terminate()
    flood.join()
    print(f"{'memory under a flood, at most':44} {max(memory):7.2f} MB {'':29}  128    {verdict(max(memory) < 128)}")
    print(f"{'a click under a flood, at most':44} {max(waits):7.2f} ms {'':29}  200    {verdict(max(waits) < 200)}")


def said_before_quitting(desk):
    """Seconds until both windows of one who quits right after many chat lines are gone. All of them must arrive."""
    player = Player(desk, "Ann")
    player.host()
    guest = Guest()
    player.sit_down(10, 30)
    desk.point(*ASIDE)
    watches = [Watch(desk, x, y, 40, 40, 4) for x, y in (player.square(27), (player.tool.x + 60, player.tool.y + 60))]
    lines = [f"line {number}" for number in range(1, LINES + 1)]
    player.main.activate()
    desk.act(*[word for line in lines
               for word in ("type", "--delay", 1, "--args", 1, line, "key", "--delay", 1, "Return")])
    began = time.perf_counter()
    desk.keys("alt+F4")
    gone = max(watch.wait("a window goes") for watch in watches) - began
    guest.line.settimeout(20)
    arrived = b"".join(iter(lambda: guest.line.recv(4096), b""))
    check(arrived == b"".join(b"0" + line.encode() for line in lines), f"all lines arrive: {arrived}")
    player.process.wait(20)
    return gone


def quit_behind_chat(desk):
    waits = sorted(1000 * said_before_quitting(desk) for _ in range(QUITS))
    middle = statistics.median(waits)
    print(f"{f'windows gone, quitting behind {LINES} chat lines':44} {middle:7.2f} ms {'':20} {waits[0]:6.2f} to "
          f"{waits[-1]:6.2f}  100    {verdict(middle <= 100)}", flush=True)


def at_the_table(desk):
    player = Player(desk, "Ann")
    player.host()
    guest = Guest()
    player.sit_down(10, 30)
    empty = desk.start(BUILD / "bench" / "empty_window", 448, 539)
    awaited(lambda: desk.windows(empty), "the empty window")[0].move(1100, 30)
    bare = desk.start(BUILD / "bench" / "bare_square", BARE_PORT)
    bare_window = awaited(lambda: desk.windows(bare), "the bare window")[0]
    bare_window.move(800, 300)
    bare_window = awaited(lambda: [w for w in desk.windows(bare) if w.x >= 800], "the bare window in its place")[0]
    bare_line = socket.create_connection(("127.0.0.1", BARE_PORT))
    bare_line.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    desk.point(*ASIDE)
    time.sleep(2)
    compare_memory(player, empty)
    compare_moves(desk, player, guest, bare_line, bare_window)
    time.sleep(1)
    look_at_idleness(player, empty)
    under_a_flood(desk, player, guest)


def main():
    own_network()
    print(f"load of the computer before: {os.getloadavg()[0]:.2f} on {os.cpu_count()} cores")
    print(f"{'':44} {'Morva':>10} {'empty':>10} {'ratio':>6}  {'of the pairs':14}  reach")
    with Desk() as desk:
        desk.point(*ASIDE)
        compare_starts(desk)
        at_the_table(desk)
    with Desk() as desk:
        quit_behind_chat(desk)
    print(f"load of the computer after: {os.getloadavg()[0]:.2f}")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"could not be measured: {failure}")
