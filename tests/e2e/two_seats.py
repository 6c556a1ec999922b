"""Two seats at one directory: two real windows, each with its own folder, profile and screen, on the
same files. What one adds comes into the other's view, a card that one edits is left alone by the
other, and each has its own marks.

    two_seats.py PROGRAM TOOL FOLDER_FOR_PICTURES
"""

import contextlib
import os
import subprocess
import sys

import trial
import virtual_screen

PROGRAM, TOOL, PICTURES = (sys.argv + [""] * 3)[1:4]
ERROR = "^Erreur$"


class Seat:
    """One seat's window, with a screen of its own, as its keyboard is."""

    def __init__(self, share, number):
        self.share = share
        self.trial = trial.Trial(PROGRAM, TOOL)
        self.screen = self.trial.screen
        self.environment = self.trial.environment
        with open(self.trial.profile, "w", encoding="utf-8") as profile:
            profile.write(f"[PhoneBook-DROV]\nFile1=&1 {share}.DAN\n")
        options = ["-APP", "?", "-FILE", os.path.join(self.trial.folder, "ECHANGE.DAT"),
                   "-TYPE", "0", "-HWND", "0", "-NUM", "0", "-APPLI", "CARNETEL",
                   "-NUMP", str(number)]
        self.process = subprocess.Popen([PROGRAM, *options], env=self.environment, text=True,
                                        stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        self.screen.window(f"{trial.MAIN_WINDOW}{share}.DAN$")

    def close(self):
        self.process.kill()
        self.process.communicate()
        self.trial.__exit__()

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
        """Card offset and bits of each entry of the seat's own address file."""
        with open(os.path.join(self.trial.folder, "COMMUN.ADR"), "rb") as file:
            rows = file.read()[320:]
        return [(int.from_bytes(rows[at:at + 4], "little"), rows[at:at + 16])
                for at in range(0, len(rows) - 15, 16)]

    def quit(self):
        self.back()
        self.press("alt+f", "q")
        output, errors = self.process.communicate(timeout=trial.PATIENCE_SECONDS)
        assert (self.process.returncode, output, errors) == (0, "", ""), (output, errors)
