"""An installed copy is whole: what desktops read of it is valid, it answers its command line, and started from "/" it
plays and shows its manual. The argument is the build's folder."""

import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests" / "e2e"))
FOLDER = tempfile.TemporaryDirectory(prefix="morva-installed-")
SHARE = Path(FOLDER.name, "usr", "share")
os.environ["MORVA"] = str(SHARE.parent / "bin" / "morva")

from desk import Desk, awaited, check, own_network, run  # noqa: E402
from player import PROGRAM, Player  # noqa: E402

VERSION = re.search(r"project\(morva VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text())[1]


def said(*command, code=0, **environment):
    """What a command that ends with that code writes on standard output and on standard error."""
    done = subprocess.run(command, env={"PATH": os.environ["PATH"], **environment}, text=True, capture_output=True)
    check(done.returncode == code, f"{command} ended with {done.returncode}: {done.stdout}{done.stderr}")
    return done.stdout, done.stderr


def what_desktops_read_is_valid():
    said("cmake", "--install", sys.argv[1], "--prefix", "/usr", DESTDIR=FOLDER.name)
    entry = SHARE / "applications" / "morva.desktop"
    metadata = SHARE / "metainfo" / "org.morva.morva.metainfo.xml"
    page = SHARE / "man" / "man6" / "morva.6"
    for judge in [("desktop-file-validate", entry), ("mandoc", "-T", "lint", "-W", "style", page)]:
        check(said(*judge) == ("", ""), f"{judge}: {said(*judge)}")
    verdict = said("appstreamcli", "validate", "--no-net", "--pedantic", "--no-color", metadata)
    newer = r"(I: \S+ unknown-tag developer\n\n)?"  # than Debian 12, whose own tag is deprecated on 13
    check(re.fullmatch(newer + r"\S+ Validation was successful(: infos: 1|\.)\n", verdict[0]), verdict)
    check(f'<release version="{VERSION}"' in metadata.read_text(), "the release in the metadata")
    check(f'"Morva {VERSION}"' in page.read_text(), "the version in the man page")
    icons = {path.relative_to(SHARE / "icons" / "hicolor").parts[0] for path in SHARE.glob("icons/hicolor/*/apps/morva*")}
    check(icons == {f"{n}x{n}" for n in (16, 24, 32, 48, 64, 128, 256)} | {"scalable", "symbolic"}, icons)


def the_command_line_is_answered():
    check(said(PROGRAM, "--version") == (f"morva {VERSION}\n", ""), said(PROGRAM, "--version"))
    lines = said(PROGRAM, "--help")[0].splitlines()
    check(10 < len(lines) < 25 and max(map(len, lines)) <= 80 and "2948" in " ".join(lines), lines)
    for words, code in [(["--nonsense"], 2), ([], 1)]:  # the second has no display
        output, complaint = said(PROGRAM, *words, code=code)
        check(output == "" and re.fullmatch("morva: .+\n", complaint), (output, complaint))


def two_copies_play_and_show_the_manual():
    with Desk() as desk:
        ann = Player(desk, "Ann", "env", "--chdir=/")
        ann.host()
        bob = Player(desk, "Bob")  # in a folder with a manual of its own
        bob.join("127.0.0.1")
        ann.table_stands()
        ann.main.activate()
        desk.type("x")
        maps = Path(f"/proc/{ann.process.pid}/maps")
        awaited(lambda: re.search(rf"{SHARE.parent}/lib/\S*morva/morva-sound\.so", maps.read_text()), "the key is heard")
        desk.keys("F1")
        ann.window("Instructions")
        for player, folder in (ann, SHARE / "games" / "morva"), (bob, bob.folder):
            check(os.readlink(f"/proc/{player.process.pid}/cwd") == str(folder), f"{player.nick}'s manual")


if __name__ == "__main__":
    own_network()
    plays = [what_desktops_read_is_valid, the_command_line_is_answered, two_copies_play_and_show_the_manual]
    sys.exit(run({play.__name__.replace("_", " "): play for play in plays}))
