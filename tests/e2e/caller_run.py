"""The program as others start it: a window of another program is told what became of each role,
owns the role's window and comes back behind it.

    caller_run.py PROGRAM TOOL FOREIGN_WINDOW FOLDER_FOR_PICTURES SCALE [SESSION_MANAGER]

With a session manager, the end of the desktop's session is tried too.
"""

import json
import os
import shutil
import signal
import subprocess
import sys
import tempfile

import virtual_screen

PROGRAM, TOOL, FOREIGN, PICTURES, SCALE, SESSION_MANAGER = (sys.argv + [""] * 6)[1:7]
BOX = "^Carnetel *$"
DEAD_WINDOW = 4711


def capture(company, number="", town=""):
    """A record of a capture file."""
    record = company.ljust(33) + "".ljust(33) + number.ljust(18) + "\0 " + "".ljust(16)
    return (record + town.ljust(33) + "".ljust(21)).encode("cp850")


class Helper:
    """A program that says lines, some of them as answers."""

    def __init__(self, program, environment):
        self.process = subprocess.Popen([program], env=environment, text=True, bufsize=1,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def tell(self, question):
        self.process.stdin.write(question + "\n")

    def line(self):
        return self.process.stdout.readline().strip()

    def ask(self, question):
        self.tell(question)
        return self.line()

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()


class CalledProgram:
    def __init__(self, folder):
        self.folder = folder
        self.stem = os.path.join(folder, "CARNETEL")
        self.exchange = os.path.join(folder, "ECHANGE.DAT")
        self.profile = os.path.join(folder, "profile.ini")
        self.environment = {
            **os.environ, "HOME": folder, "CARNETEL_HOME": folder, "XDG_RUNTIME_DIR": folder,
            "CARNETEL_PROFILE": self.profile, "QT_SCALE_FACTOR": SCALE,
            "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8"}
        os.chmod(folder, 0o700)
        size = int(1040 * float(SCALE)), int(720 * float(SCALE))
        self.screen = virtual_screen.VirtualScreen(folder, *size)
        self.environment["DISPLAY"] = self.screen.display
        # The other program, which has one window.
        self.caller = Helper(FOREIGN, self.environment)
        self.caller_window = int(self.caller.line())

    def close(self):
        self.caller.close()
        self.screen.close()

    def picture(self, name):
        percent = int(float(SCALE) * 100)
        self.screen.picture(os.path.join(PICTURES, f"{percent}-called-{name}.png"))

    def tool(self, *arguments):
        run = subprocess.run([TOOL, "-d", self.stem, *arguments], env=self.environment,
                             capture_output=True, text=True, check=False)
        assert run.returncode == 0, f"{arguments}: {run.stdout} {run.stderr}"
        return run.stdout

    def companies(self):
        cards = [json.loads(line) for line in self.tool("--json", "list").splitlines()]
        return [card["fields"].get("Ste1") for card in cards]

    def set_file(self, content):
        with open(self.exchange, "wb") as file:
            file.write(content)

    def start(self, role, number=0, window=None, **streams):
        self.set_profile("File1", "")
        arguments = (f"-APP ? -FILE {self.exchange} -TYPE {role} "
                     f"-HWND {window or self.caller_window} -NUM {number} -APPLI X -NUMP 0")
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams}
        return subprocess.Popen([PROGRAM, *arguments.split()], env=self.environment, text=True,
                                **streams)

    def set_profile(self, key, value, section="PhoneBook-DROV"):
        lines = []
        if os.path.exists(self.profile):
            with open(self.profile, encoding="utf-8") as file:
                lines = [line for line in file.read().splitlines()
                         if not line.startswith(key + "=")]
        if f"[{section}]" not in lines:
            lines.append(f"[{section}]")
        lines.insert(lines.index(f"[{section}]") + 1, f"{key}={value}")
        with open(self.profile, "w", encoding="utf-8") as file:
            file.write("\n".join(lines) + "\n")

    def noted(self):
        """Whether the profile has the directory as the one worked on last."""
        with open(self.profile, encoding="utf-8") as file:
            return f"File1=&1 {self.stem}.DAN" in file.read().splitlines()

    def expect_end(self, program, told):
        """The program ends well, and its caller hears these three numbers."""
        output, errors = program.communicate(timeout=20)
        assert (program.returncode, output, errors) == (0, told + "\n", ""), (output, errors)
        message = self.caller.line()
        assert message == "message CARNETEL_NOTIFY 32 " + told, message
        assert self.noted()

    def expect_owned(self, title):
        window = self.screen.window(title)
        owner = self.caller.ask(f"owner {window}")
        assert owner == f"owner {self.caller_window}", owner

    def hide_caller(self):
        assert self.caller.ask("hide") == "hidden"
        assert self.caller.ask("shown") == "shown no"

    # ---- the roles ----

    def enrich_silently(self):
        self.set_file(capture("ALPHA", "01 40 00 00 01") + capture("BETA"))
        program = self.start(3)
        self.screen.window(BOX)
        self.picture("enriched")
        self.screen.press("Return")
        self.expect_end(program, "1524 0 3")
        assert self.companies() == ["ALPHA", "BETA"], self.companies()

    def enrich_with_edits(self):
        self.set_file(capture("GAMMA", town="LYON") + capture("DELTA"))
        self.hide_caller()
        program = self.start(15)
        self.expect_owned("^Enrichissement de l'carnetel$")
        self.picture("edit")
        self.screen.press("End")
        self.screen.type(" et fils")
        self.screen.press("Return", "alt+i", "alt+t")
        self.screen.window(BOX)
        self.screen.press("Return")
        self.expect_end(program, "1524 0 15")
        assert self.companies() == ["ALPHA", "BETA", "GAMMA et fils"], self.companies()
        assert self.caller.ask("shown") == "shown yes"

    def look_and_leave(self):
        self.set_file(capture("OMEGA", "01.40", town="NICE"))
        program = self.start(4)
        self.expect_owned("^Enrichissement de l'carnetel$")
        self.picture("review")
        self.screen.press("Escape")
        self.expect_end(program, "1524 0 4")
        assert len(self.companies()) == 3

    def choose(self):
        self.set_file(b"")
        self.hide_caller()
        program = self.start(1, 8)
        self.expect_owned("^Choix du correspondant$")
        self.picture("chooser")
        self.screen.press("Return")
        self.expect_end(program, "1524 1 0")
        assert os.path.getsize(self.exchange) == 149
        assert self.caller.ask("shown") == "shown yes"

    def hand_a_number_on(self):
        suite = os.path.join(self.folder, "suite")
        os.mkdir(suite)
        fax = os.path.join(suite, "fax")
        with open(fax, "w", encoding="ascii") as script:
            script.write('#!/bin/sh\necho "$PWD $*" > started.tmp\nmv started.tmp started\n')
        os.chmod(fax, 0o755)
        self.set_profile("VoiceAppl", fax, "ApplDROV")
        self.set_profile("FaxAppl", fax, "ApplDROV")
        self.set_profile("MinitelAppl", fax, "ApplDROV")
        self.tool("edit", "1", "Fax=01 40 00 00 02", "Mtel=3614")
        self.hide_caller()
        program = self.start(0)
        self.expect_owned("^Carnetel -  ")
        self.picture("siblings")
        # From the list backwards: the row of these buttons, of which the second one is the fax.
        self.screen.press("shift+Tab", "Right", "space")
        started = os.path.join(suite, "started")
        virtual_screen.wait_until(lambda: os.path.exists(started), "the fax program")
        with open(started, encoding="utf-8") as file:
            assert file.read() == f"{suite} /X\n"
        assert os.path.getsize(os.path.join(suite, "NUMEMI.DAT")) == 161
        self.picture("sibling-pressed")
        self.screen.press("alt+f", "q")
        output, errors = program.communicate(timeout=20)
        assert (program.returncode, output, errors) == (0, "", ""), (output, errors)
        assert self.noted()
        assert self.caller.ask("shown") == "shown yes"

    def end_by_signals(self):
        self.set_file(capture("OMEGA"))
        for role, number, title, told in ((2, 8, "^Choix du correspondant$", "1524 0 0"),
                                          (5, 0, "^Enrichissement de l'carnetel$", "1524 0 5")):
            program = self.start(role, number)
            self.screen.window(title)
            program.send_signal(signal.SIGTERM)
            self.expect_end(program, told)
        assert len(self.companies()) == 3
        self.enrichment_box_ends_by_a_signal()

    def enrichment_box_ends_by_a_signal(self):
        """The stores are closed by then: the card is there."""
        program = self.start(3)
        self.screen.window(BOX)
        program.send_signal(signal.SIGHUP)
        self.expect_end(program, "1524 0 3")
        assert "OMEGA" in self.companies()

    def other_types_run_nothing(self):
        program = self.start(20)
        output, errors = program.communicate(timeout=20)
        assert (program.returncode, output, errors) == (0, "", ""), (output, errors)
        assert self.noted()

    def caller_that_has_gone(self):
        """Neither its window nor its end of the pipe is there: the run ends as it should."""
        self.set_file(b"")
        read_end, write_end = os.pipe()
        os.close(read_end)
        program = self.start(2, 8, DEAD_WINDOW, stdout=write_end)
        os.close(write_end)
        window = self.screen.window("^Choix du correspondant$")
        assert self.caller.ask(f"owner {window}") != f"owner {DEAD_WINDOW}"
        self.screen.press("Escape")
        _, errors = program.communicate(timeout=20)
        assert (program.returncode, errors) == (0, ""), errors
        assert self.noted()

    def end_of_session_is_refused(self):
        """Whatever role runs: the user is told, and the program goes on."""
        self.set_file(capture("OMEGA"))
        manager = Helper(SESSION_MANAGER, self.environment)
        self.environment["SESSION_MANAGER"] = manager.line()
        for role, title in ((0, "^Carnetel -  "), (1, "^Choix du correspondant$"),
                            (4, "^Enrichissement de l'carnetel$")):
            program = self.start(role, 8)
            assert manager.line() == "registered"
            self.screen.window(title)
            manager.tell("shutdown")
            self.screen.window(BOX)
            self.picture(f"session-end-{role}")
            self.screen.press("Return")
            assert manager.line() == "refused"
            self.screen.wait_gone(BOX)
            self.screen.window(title)
            program.terminate()
            if role == 0:
                assert program.wait(timeout=20) == 0
            else:
                self.expect_end(program, f"1524 0 {role if role == 4 else 0}")
        del self.environment["SESSION_MANAGER"]
        manager.close()

    def run(self):
        self.tool("create")
        self.enrich_silently()
        self.enrich_with_edits()
        self.look_and_leave()
        self.choose()
        self.hand_a_number_on()
        self.end_by_signals()
        self.other_types_run_nothing()
        self.caller_that_has_gone()
        if SESSION_MANAGER:
            self.end_of_session_is_refused()
        self.tool("check")


def main():
    os.makedirs(PICTURES, exist_ok=True)
    folder = tempfile.mkdtemp(prefix="carnetel-e2e-")
    called = CalledProgram(folder)
    try:
        called.run()
    finally:
        called.close()
        shutil.rmtree(folder)


if __name__ == "__main__":
    main()
