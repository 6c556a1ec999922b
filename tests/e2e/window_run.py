"""One afternoon with the window: the sample directory is browsed, cards are marked, changed, added
and deleted by real key presses, and what was saved is read back by the terminal tool.

    window_run.py PROGRAM TOOL SAMPLE.csv FOLDER_FOR_PICTURES SCALE
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile

import virtual_screen

PROGRAM, TOOL, SAMPLE, PICTURES, SCALE = (sys.argv + [""] * 6)[1:6]
TITLE = "^Carnetel -  "


class Afternoon:
    def __init__(self, folder):
        self.stem = os.path.join(folder, "EXEMPLE")
        self.environment = {
            **os.environ, "HOME": folder, "CARNETEL_HOME": folder, "XDG_RUNTIME_DIR": folder,
            "CARNETEL_PROFILE": os.path.join(folder, "profile.ini"), "QT_SCALE_FACTOR": SCALE,
            "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8"}
        os.chmod(folder, 0o700)
        size = int(1040 * float(SCALE)), int(720 * float(SCALE))
        self.screen = virtual_screen.VirtualScreen(folder, *size)
        self.environment["DISPLAY"] = self.screen.display
        self.pictures_taken = 0

    def tool(self, *arguments):
        run = subprocess.run([TOOL, "-d", self.stem, *arguments], env=self.environment,
                             capture_output=True, text=True, check=False)
        assert run.returncode == 0, f"{arguments}: {run.stdout} {run.stderr}"
        return run.stdout

    def cards(self):
        return [json.loads(line) for line in self.tool("--json", "list").splitlines()]

    def start(self):
        return subprocess.Popen([PROGRAM, "/X", self.stem + ".DAN"], env=self.environment)

    def picture(self, name):
        self.pictures_taken += 1
        percent = int(float(SCALE) * 100)
        name = f"{percent}-{self.pictures_taken:02}-{name}.png"
        self.screen.picture(os.path.join(PICTURES, name))

    def second_instance_ends_silently(self):
        second = subprocess.run([PROGRAM], env=self.environment, capture_output=True, timeout=20,
                                check=False)
        assert (second.returncode, second.stdout, second.stderr) == (0, b"", b""), second

    def browse_and_mark(self):
        screen = self.screen
        self.picture("start")
        screen.press("Down", "Down", "Next")
        self.picture("browsed")
        screen.press("m", "m")
        self.picture("letter-m-twice")
        # The third key of the top row, without Shift: cards whose name begins with 3.
        screen.press("quotedbl")
        self.picture("digit-three")
        screen.press("Home", "space", "space", "Down", "ctrl+Down")
        self.picture("three-marks")

    def change_a_number(self):
        screen = self.screen
        screen.press("d", "Tab", "Tab", "Tab", "Tab", "Tab")
        self.picture("form-column")
        screen.press("Tab", *["Tab"] * 7, *["Tab"] * 3)
        self.picture("number-entered")
        screen.press("ctrl+a")
        screen.type("01 99 88 77 66")
        self.picture("number-typed")
        screen.press("Return")
        self.picture("number-saved")

    def add_a_card(self):
        screen = self.screen
        screen.press("Insert")
        screen.type("Ecole Zébrée")
        screen.press("Tab", "Tab")
        screen.type("3 rue de l'été")
        self.picture("new-card")
        screen.press("Return")
        screen.type("Echo de la Loire")
        screen.press("Return")
        self.picture("next-new-card")
        screen.type("Perdue")
        screen.press("Escape")
        screen.window("^Attention$")
        self.picture("lose-it")
        screen.press("Left", "Return")
        screen.wait_gone("^Attention$")
        screen.window(TITLE)
        self.picture("back-in-the-list")

    def delete_a_card(self):
        screen = self.screen
        screen.press("e", "Delete")
        screen.window("^Attention$")
        self.picture("delete")
        screen.press("Return")
        screen.wait_gone("^Attention$")
        screen.window(TITLE)
        self.picture("deleted")

    def look_at_the_rest(self):
        screen = self.screen
        screen.press("Tab", "Right", "Right")
        self.picture("tab-b")
        screen.press("Home", "shift+Tab", "alt+r")
        self.picture("menu")
        screen.press("p")
        screen.window("^Consultation$")
        self.picture("consultation")
        screen.press("Escape")
        screen.wait_gone("^Consultation$")
        screen.window(TITLE)

    def look_at_the_notes(self):
        screen = self.screen
        screen.press("Down", *["shift+Tab"], "space")
        self.picture("notes")
        screen.press("Escape")

    def quit(self, program):
        self.screen.press("alt+f")
        self.picture("menu-file")
        self.screen.press("q")
        assert program.wait(timeout=20) == 0

    def run(self):
        self.tool("create", "--description", "Exemple")
        self.tool("import", SAMPLE, "--charset", "ansi")
        before = self.cards()
        program = self.start()
        try:
            self.screen.window(TITLE)
            self.second_instance_ends_silently()
            self.browse_and_mark()
            self.change_a_number()
            self.add_a_card()
            self.delete_a_card()
            self.look_at_the_rest()
            self.look_at_the_notes()
            self.quit(program)
        finally:
            program.kill()
            program.wait()
        self.check_what_was_saved(before)
        self.failed_role_keeps_its_directory()

    def check_what_was_saved(self, before):
        after = self.cards()
        assert len(after) == len(before) + 1, (len(before), len(after))
        known = {json.dumps(card["fields"]) for card in before}
        others = [card for card in after if json.dumps(card["fields"]) not in known]
        assert len(others) == 2, others
        changed, new = others
        former = next(card for card in before if card["offset"] == changed["offset"])
        assert changed["fields"] == {**former["fields"], "Tel1": "01 99 88 77 66"}, changed
        assert new["fields"] == {"Ste1": "Ecole Zébrée", "Adr1": "3 rue de l'été"}, new
        assert "01 99 88 77 66" in self.tool("show", str(changed["row"]))
        marked = [card["row"] for card in after if card["marked"]]
        assert marked == [1, 2, 4], marked
        self.tool("check")

    def failed_role_keeps_its_directory(self):
        """A chooser whose directory cannot be opened tells nobody, and notes it as the recent one."""
        folder = os.path.dirname(self.stem)
        main_file = os.path.join(folder, "CARNETEL.DAN")
        with open(main_file, "w", encoding="ascii") as file:
            file.write("no directory")
        caller = "-APP ? -FILE x -TYPE 2 -HWND 7 -NUM 0 -APPLI X -NUMP 0".split()
        run = subprocess.run([PROGRAM, *caller], env=self.environment, capture_output=True,
                             timeout=20, check=False)
        assert (run.returncode, run.stdout) == (0, b""), run
        with open(self.environment["CARNETEL_PROFILE"], encoding="utf-8") as profile:
            assert f"File1=&1 {main_file}" in profile.read().splitlines()

    def close(self):
        self.screen.close()


def main():
    os.makedirs(PICTURES, exist_ok=True)
    folder = tempfile.mkdtemp(prefix="carnetel-e2e-")
    afternoon = Afternoon(folder)
    try:
        afternoon.run()
    finally:
        afternoon.close()
        shutil.rmtree(folder)


if __name__ == "__main__":
    main()
