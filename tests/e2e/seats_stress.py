#!/usr/bin/env python3
"""Several seats on one directory on a real disk: each is a process of the tool that adds, changes,
refiles and deletes cards as fast as it can, and one of them is killed again and again in the middle
of it. Every card has a mark of its own that nothing changes. Afterwards each mark is there once at
the most, as many are missing as deletions were acknowledged (and those under way at a death),
one opening is enough to make the whole family consistent, and no operation took longer than a seat
waits for the others.

    seats_stress.py CARNETEL-CLI SEATS OPERATIONS [SEED]
"""

import json
import os
import random
import subprocess
import sys
import tempfile
import threading
import time

LONGEST_WAIT = 5.0  # seconds that a seat waits for another one's change
# On top of it: its own change, and starting the process, on a machine with other work.
ALLOWANCE = 3.0
HELD = "Fiche en cours de modification par un autre poste"
NO_SUCH_ROW = "pas de fiche à la ligne"
END_OF_ANSWER = "fin-de-la-commande"  # no command has this name: the refusal ends an answer
LETTERS = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
CARDS_A_SEAT = 40  # about; no letter gets more than a page of its index that way


class Seat(threading.Thread):
    def __init__(self, tool, folder, number, seats, operations, seed):
        super().__init__()
        self.line = tool_line(tool, folder, number)
        self.number = number
        self.rows = CARDS_A_SEAT * seats
        self.operations = operations
        self.random = random.Random(seed * 1000 + number)
        self.process = None
        self.made = 0
        self.added = set()
        self.unsure = set()  # under way at a death: there or not
        self.deleted = 0
        self.unsure_deletions = 0
        self.counts = {"done": 0, "refused": 0, "no such row": 0, "killed": 0}
        self.longest = 0.0
        self.problems = []

    def company(self):
        self.made += 1
        return f"{self.random.choice(LETTERS)}{self.number}S{self.made}"

    def choose(self):
        """The words of the next operation; the mark when it adds one."""
        full = len(self.added) - self.deleted > CARDS_A_SEAT
        kinds = ["delete", "delete"] if full else ["add", "add"]
        kind = self.random.choice(kinds + ["add", "delete", "edit", "key"])
        row = str(self.random.randint(1, self.rows))
        if kind == "add":
            company = self.company()
            mark = f"{self.number}-{self.made}"
            return ["add", f"Ste1={company}", f"Nom={company[::-1]}", f"Ref1={mark}"], mark
        if kind == "edit":
            return ["edit", row, f"Ville={self.random.randint(1, 9999)}"], None
        if kind == "key":
            return ["edit", row, f"Ste1={self.company()}"], None
        return ["delete", row], None

    def ask(self, words):
        """What was told on standard error; None when the process died over it."""
        try:
            self.process.stdin.write(" ".join(words) + "\n" + END_OF_ANSWER + "\n")
            self.process.stdin.flush()
        except OSError:
            return None
        told = []
        for line in self.process.stderr:
            if END_OF_ANSWER in line:
                return told
            told.append(line.strip())
        return None

    def operate(self):
        words, mark = self.choose()
        start = time.monotonic()
        told = self.ask(words)
        if told is None:
            self.counts["killed"] += 1
            self.unsure.update([mark] if mark else [])
            self.unsure_deletions += words[0] == "delete"
            return
        self.longest = max(self.longest, time.monotonic() - start)
        text = " ".join(told)
        if not text:
            self.counts["done"] += 1
            self.added.update([mark] if mark else [])
            self.deleted += words[0] == "delete"
        elif HELD in text:
            self.counts["refused"] += 1
        elif NO_SUCH_ROW in text:
            self.counts["no such row"] += 1
        else:
            self.problems.append(f"{words}: {text}")

    def start_process(self):
        self.process = subprocess.Popen(self.line + ["batch", "--keep-going"],
                                        stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.PIPE, text=True)

    def end_process(self):
        process, self.process = self.process, None
        try:
            process.stdin.close()
        except OSError:
            pass
        process.stderr.read()
        process.wait()

    def run(self):
        for number in range(self.operations):
            if self.process is None or self.process.poll() is not None:
                if self.process is not None:
                    self.end_process()
                self.start_process()
            self.operate()
            # Seats come and go.
            if self.random.random() < 0.02:
                self.end_process()
        if self.process is not None:
            self.end_process()


def tool_line(tool, folder, number):
    return ["env", f"CARNETEL_HOME={folder}/home{number}", tool, "--quiet", "--yes", "--json",
            "--directory", f"{folder}/COMMUN", "--profile", f"{folder}/profil{number}.ini",
            "--seat", str(number), "--shared-dir", f"{folder}/poste{number}"]


def run_tool(tool, folder, number, *words):
    return subprocess.run(tool_line(tool, folder, number) + list(words), capture_output=True,
                          text=True, timeout=60, check=False)


def kill_now_and_then(seat, seed):
    """Kills the seat's process at random moments until the seat has done its work."""
    moments = random.Random(seed)
    while seat.is_alive():
        seat.join(moments.uniform(0.02, 0.3))
        process = seat.process
        if process is not None and seat.is_alive():
            process.kill()


def missing_and_twice(tool, folder, seats):
    listing = run_tool(tool, folder, 1, "list")
    there = {}
    for line in listing.stdout.splitlines():
        mark = json.loads(line)["fields"].get("Ref1", "(none)")
        there[mark] = there.get(mark, 0) + 1
    twice = [mark for mark, times in there.items() if times > 1]
    added = set().union(*[seat.added for seat in seats])
    unsure = set().union(*[seat.unsure for seat in seats])
    unknown = [mark for mark in there if mark not in added | unsure]
    missing = [mark for mark in added if mark not in there]
    # A card added at a death may have been deleted since.
    lost_unsure = [mark for mark in unsure if mark not in there]
    return len(there), missing, lost_unsure, twice + unknown


def judge(tool, folder, seats):
    problems = [problem for seat in seats for problem in seat.problems]
    opened = run_tool(tool, folder, 1, "info")
    if opened.returncode != 0:
        problems.append(f"does not open: {opened.stderr}")
    check = run_tool(tool, folder, 1, "check")
    if check.returncode != 0:
        problems.append(f"not consistent: {check.stdout[:2000]}")
    there, missing, lost_unsure, wrong = missing_and_twice(tool, folder, seats)
    deleted = sum(seat.deleted for seat in seats)
    most = deleted + sum(seat.unsure_deletions for seat in seats)
    least = deleted - len(lost_unsure)
    print(f"{there} cards there, {sum(len(seat.added) for seat in seats)} acknowledged, "
          f"{len(missing)} of them missing, {deleted} to {most} deleted")
    if wrong:
        problems.append(f"cards twice or of nobody: {wrong[:10]}")
    if not least <= len(missing) <= most:
        problems.append(f"{len(missing)} cards missing, {least} to {most} deleted")
    longest = max(seat.longest for seat in seats)
    print(f"the longest operation took {longest:.2f} s")
    if longest > LONGEST_WAIT + ALLOWANCE:
        problems.append(f"an operation took {longest:.2f} s")
    return problems


def main():
    tool, number, operations = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
    seed = int(sys.argv[4]) if len(sys.argv) > 4 else random.randrange(1_000_000)
    start = time.monotonic()
    with tempfile.TemporaryDirectory(prefix="carnetel-postes-") as folder:
        made = run_tool(tool, folder, 1, "create")
        if made.returncode != 0:
            print(made.stderr)
            return 1
        seats = [Seat(tool, folder, n, number, operations, seed) for n in range(1, number + 1)]
        for seat in seats:
            seat.start()
        kill_now_and_then(seats[0], seed)
        for seat in seats:
            seat.join()
        print(f"{number} seats of {operations} operations in {time.monotonic() - start:.1f} s, "
              f"seed {seed}")
        for key in seats[0].counts:
            print(f"  {key}: {[seat.counts[key] for seat in seats]}")
        problems = judge(tool, folder, seats)
    for problem in problems[:20]:
        print(problem)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
