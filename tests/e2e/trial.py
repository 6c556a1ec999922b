"""A directory, a profile and a virtual screen of one test alone, and the program started there as
another program of the suite starts it.

    with trial.Trial(PROGRAM, TOOL) as place:
        run = place.start(1, number=8)
        place.choose("Return")
        run.expect("1524 1 0")
"""

import json
import os
import shutil
import subprocess
import tempfile

import virtual_screen

CHOOSER = "^Choix du correspondant$"
ENRICHMENT = "^Enrichissement de l'carnetel$"
MAIN_WINDOW = "^Carnetel -  "
# Of messages; the main window's name goes on behind the blank.
BOX = "^Carnetel *$"
PATIENCE_SECONDS = virtual_screen.PATIENCE_SECONDS


class Trial:
    def __init__(self, program, tool):
        self.program, self.tool_path = program, tool
        self.folder = tempfile.mkdtemp(prefix="carnetel-e2e-")
        self.stem = os.path.join(self.folder, "CARNETEL")
        self.profile = os.path.join(self.folder, "profile.ini")
        self.exchange = os.path.join(self.folder, "ECHANGE1.DAT")
        self.notify = os.path.join(self.folder, "notify")
        self.environment = {
            **os.environ, "HOME": self.folder, "CARNETEL_HOME": self.folder,
            "XDG_RUNTIME_DIR": self.folder, "CARNETEL_PROFILE": self.profile,
            "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8"}
        self.screen = virtual_screen.VirtualScreen(self.folder, 1040, 720)
        self.environment["DISPLAY"] = self.screen.display

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.screen.close()
        shutil.rmtree(self.folder)

    def tool(self, *arguments):
        run = subprocess.run([self.tool_path, "-d", self.stem, *arguments], text=True, check=False,
                             env=self.environment, capture_output=True)
        assert run.returncode == 0, f"{arguments}: {run.stdout} {run.stderr}"
        return run.stdout

    def cards(self):
        return [json.loads(line) for line in self.tool("--json", "list").splitlines()]

    def card_of(self, company):
        found = [card["fields"] for card in self.cards()]
        return next(card for card in found if card.get("Ste1") == company)

    def write(self, content):
        with open(self.exchange, "wb") as file:
            file.write(content)

    def take(self):
        """What lies in the exchange file, which then goes."""
        with open(self.exchange, "rb") as file:
            content = file.read()
        os.remove(self.exchange)
        return content

    def start(self, launch_type, number=1, prefix="?"):
        """The program, and this test as its caller, which has some window. Without a profile, so
        that the directory noted at the end is this run's."""
        if os.path.exists(self.profile):
            os.remove(self.profile)
        options = ["-APP", prefix, "-FILE", self.exchange, "-TYPE", str(launch_type),
                   "-HWND", "1", "-NUM", str(number), "-APPLI", "CALLER", "-NUMP", "0"]
        return Run(self, [self.program, *options])

    def choose(self, *keys):
        self.screen.window(CHOOSER)
        self.screen.press(*keys)

    def confirm(self):
        """The message that tells what came of an enrichment or an insertion."""
        self.screen.window(BOX)
        self.screen.press("Return")
        self.screen.wait_gone(BOX)


class Run:
    def __init__(self, place, command):
        self.place = place
        self.process = subprocess.Popen(
            command, text=True, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
            env={**place.environment, "CARNETEL_NOTIFY": place.notify})

    def expect(self, told):
        """The run ends well, its caller hears `told` and nothing else, both ways, and the
        directory is noted as the one worked on last."""
        try:
            output, errors = self.process.communicate(timeout=PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise
        expected = told + "\n" if told else ""
        assert (self.process.returncode, output, errors) == (0, expected, ""), (output, errors)
        assert self.heard_elsewhere() == expected
        with open(self.place.profile, encoding="utf-8") as profile:
            assert f"File1=&1 {self.place.stem}.DAN" in profile.read().splitlines()

    def heard_elsewhere(self):
        if not os.path.exists(self.place.notify):
            return ""
        with open(self.place.notify, encoding="ascii") as file:
            heard = file.read()
        os.remove(self.place.notify)
        return heard

    def expect_running(self):
        assert self.process.poll() is None
