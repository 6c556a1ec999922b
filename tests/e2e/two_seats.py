"""Two seats at one directory: two real windows, each with its own folder, profile and screen, on the
same files. What one adds comes into the other's view, a card that one edits is left alone by the
other, and each has its own marks.

    two_seats.py PROGRAM TOOL FOLDER_FOR_PICTURES
"""

import contextlib
import fcntl
import json
import os
import struct
import subprocess
import sys
import tempfile

import trial
import virtual_screen

PROGRAM, TOOL, PICTURES = (sys.argv + [""] * 3)[1:4]
ERROR = "^Erreur$"
# From the list through the form's fields to the first telephone number, and back.
TO_TELEPHONE = ["Tab"] * 16
BACK_FROM_TELEPHONE = ["shift+Tab"] * 16
# In the entries of an address file.
MARK = 2
# Size of a card, and offset of the first one in the main file.
CARD = 768
# Of a question about locks: kind, whence, start, length, process.
FLOCK = "hhqqi4x"


class Seat:
    """One seat's window, with a screen of its own, as its keyboard is."""

    def __init__(self, share, number, stack):
        self.trial = stack.enter_context(trial.Trial(PROGRAM, TOOL))
        self.screen = self.trial.screen
        with open(self.trial.profile, "w", encoding="utf-8") as profile:
            profile.write(f"[PhoneBook-DROV]\nFile1=&1 {share}.DAN\n")
        options = ["-APP", "?", "-FILE", os.path.join(self.trial.folder, "ECHANGE.DAT"),
                   "-TYPE", "0", "-HWND", "0", "-NUM", "0", "-APPLI", "CARNETEL",
                   "-NUMP", str(number)]
        self.process = subprocess.Popen([PROGRAM, *options], env=self.trial.environment,
                                        text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        stack.callback(self.end)
        self.screen.window(f"{trial.MAIN_WINDOW}{share}.DAN$")

    def end(self):
        self.process.kill()
        self.process.communicate()

    def press(self, *keys):
        self.screen.press(*keys)

    def back(self):
        """The keyboard goes to the main window again."""
        self.screen.window(trial.MAIN_WINDOW)

    def refused(self, picture=None):
        """The error box has come up; it is ended."""
        self.screen.window(ERROR)
        if picture:
            self.screen.picture(os.path.join(PICTURES, picture))
        self.press("Return")
        self.screen.wait_gone(ERROR)
        self.back()

    def entries(self):
        """Card offset and first byte of mark bits of each entry of the seat's own address file."""
        with open(os.path.join(self.trial.folder, "COMMUN.ADR"), "rb") as file:
            rows = file.read()[320:]
        return [(int.from_bytes(rows[at:at + 4], "little"), rows[at + 4])
                for at in range(0, len(rows) - 15, 16)]

    def quit(self):
        self.back()
        self.press("alt+f", "q")
        output, errors = self.process.communicate(timeout=trial.PATIENCE_SECONDS)
        assert (self.process.returncode, output, errors) == (0, "", ""), (output, errors)


class TwoSeats:
    def __init__(self, share, stack):
        self.share = share
        self.tool("create")
        for company in ("ALPHA", "BETA", "GAMMA"):
            self.tool("add", f"Ste1={company}")
        self.one, self.two = [Seat(share, number, stack) for number in (1, 2)]

    def tool(self, *arguments):
        """As a third seat, which has nothing open in between."""
        folder = os.path.join(os.path.dirname(self.share), "poste9")
        run = subprocess.run(
            [TOOL, "-d", self.share, "--seat", "9", "--shared-dir", folder, *arguments], text=True,
            check=False, capture_output=True)
        assert run.returncode == 0, f"{arguments}: {run.stdout} {run.stderr}"
        return run.stdout

    def first_card_is_held(self):
        """Asks the system, which gives no lock for that."""
        question = struct.pack(FLOCK, fcntl.F_WRLCK, os.SEEK_SET, CARD, CARD, 0)
        with open(self.share + ".DAN", "rb+") as file:
            answer = fcntl.fcntl(file, fcntl.F_OFD_GETLK, question)
        return struct.unpack(FLOCK, answer)[0] != fcntl.F_UNLCK

    def cards(self):
        rows = [json.loads(line)["fields"] for line in self.tool("--json", "list").splitlines()]
        return {row["Ste1"]: row.get("Tel1", "") for row in rows}

    def marked(self, seat):
        """Companies that are marked in the seat's own address file."""
        rows = map(json.loads, self.tool("--json", "list").splitlines())
        names = {row["offset"]: row["fields"]["Ste1"] for row in rows}
        return [names[offset] for offset, bits in seat.entries() if bits & MARK]

    def expect_marks(self):
        for seat, company in ((self.one, "ALPHA"), (self.two, "GAMMA")):
            virtual_screen.wait_until(lambda seat=seat, company=company:
                                      self.marked(seat) == [company], f"mark of {company}")

    def mark(self):
        self.one.press("Home", "space")
        self.two.press("End", "space")
        self.expect_marks()

    def edit_one_card(self):
        """The first who types has the card; the other one is told so and saves nothing."""
        self.one.press("Home", *TO_TELEPHONE)
        self.one.screen.type("01 11")
        virtual_screen.wait_until(self.first_card_is_held, "lock of the card")
        self.two.press("Home", "Delete")
        self.two.refused()
        self.two.press(*TO_TELEPHONE)
        self.two.screen.type("02 22")
        self.two.press("Return")
        self.two.refused("seats-held.png")
        self.two.screen.picture(os.path.join(PICTURES, "seats-after.png"))
        assert self.cards() == {"ALPHA": "", "BETA": "", "GAMMA": ""}
        self.one.press("Return")
        virtual_screen.wait_until(lambda: self.cards()["ALPHA"] == "01 11", "the card as saved")

    def add_a_card(self):
        """It comes into the view of a window that nobody touches."""
        self.two.press(*BACK_FROM_TELEPHONE)
        self.one.press("Insert")
        self.one.screen.type("BERNARD")
        self.one.press("Return")
        virtual_screen.wait_until(lambda: "BERNARD" in self.cards(), "the new card")
        virtual_screen.wait_until(lambda: len(self.two.entries()) == 4, "the card at the other seat")
        self.two.screen.picture(os.path.join(PICTURES, "seats-added.png"))
        self.expect_marks()

    def run(self):
        self.mark()
        self.edit_one_card()
        self.add_a_card()
        self.one.quit()
        self.two.quit()
        self.expect_marks()
        self.tool("check")


def main():
    os.makedirs(PICTURES, exist_ok=True)
    with contextlib.ExitStack() as stack:
        folder = stack.enter_context(tempfile.TemporaryDirectory(prefix="carnetel-e2e-"))
        TwoSeats(os.path.join(folder, "COMMUN"), stack).run()


if __name__ == "__main__":
    main()
