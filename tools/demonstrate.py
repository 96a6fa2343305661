"""Two real copies of Morva play a short game on a virtual screen; pictures of it are left in a folder."""

import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tests" / "e2e"))

from desk import Desk, awaited, own_network  # noqa: E402
from player import Player  # noqa: E402

OPENING = [(52, 36), (12, 28), (62, 45), (1, 18), (61, 34), (6, 21)]


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    own_network()  # where it can be had, no other Morva is in the way
    with Desk(width=1600, height=1000) as desk:
        ann = Player(desk, "Ann")
        awaited(ann.windows, "the first picture")

        def keep(name):
            time.sleep(0.5)  # for what is still on its way to the screen
            desk.keep_picture(folder / f"{name}.png")

        keep("1-start")
        ann.host()
        bob = Player(desk, "Bob")
        bob.join("127.0.0.1")
        ann.sit_down(40, 60)
        bob.sit_down(820, 60)
        keep("2-table")
        for number, (start, end) in enumerate(OPENING):
            player = bob if number % 2 else ann
            player.main.activate()
            player.drag(start, end)
            time.sleep(0.3)
        ann.main.activate()
        ann.say("Good luck!")
        bob.main.activate()
        bob.say("And to you. The Italian again?")
        keep("3-game")
        ann.main.activate()
        ann.keys("ctrl+c")
        awaited(lambda: bob.find("Message"), "the call is seen")  # the focus stays where Ann types
        keep("4-check")
        bob.find("Message").activate()
        bob.answer("Message", "Return")
        ann.main.activate()
        ann.keys("ctrl+F1")
        keep("5-new-game")
    print(f"The pictures are in {folder.resolve()}")


if __name__ == "__main__":
    main(Path(sys.argv[1] if len(sys.argv) > 1 else "demonstration"))
