"""Tests do not sleep: a test that waits for time is slow when all is well and red when the machine
is busy."""

import re

import lint

SLEEP = re.compile(r"\b(?:u|m|nano|q)?[sS]leep(?:_for|_until)?\s*\(|\bqWait\s*\(")
SHELL_SLEEP = re.compile(r"^\s*sleep\s+\S", re.MULTILINE)
CURE = ("wait for the thing itself (a result, a signal, a lock given back), or hand in a clock and "
        "move it; a test that really needs time to pass goes into tests/lint/excused.txt")


def check(root):
    complaints = lint.stale_excuses(root, "sleeps")
    excused = lint.excused_files(root, "sleeps")
    for path in lint.code_files(root, ("tests",), (".h", ".cc", ".py", ".sh")):
        if path in excused:
            continue
        pattern = SHELL_SLEEP if path.suffix == ".sh" else SLEEP
        text = lint.read_text(root, path)
        for match in pattern.finditer(text):
            line = text.count("\n", 0, match.start()) + 1
            complaints.append(f"{path}:{line}: sleeps; {CURE}")
    return complaints


if __name__ == "__main__":
    lint.run(check)
