"""What the lint rules share: which files there are, who is excused, how a verdict is told.

Each rule is a script check_<rule>.py with a function check(root) that returns its complaints, one
text each, and a test_<rule>.py that shows the rule a small tree it must reject.
"""

import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
CODE_FOLDERS = ("src", "tests", "bench", "fuzz")
SKIPPED_FOLDERS = (".git", "build", "__pycache__")


def tracked_files(root):
    """The files of the tree as paths relative to `root`: git's own and those git would add, or all
    outside build folders where the tree is no clone."""
    if (root / ".git").exists():
        listed = subprocess.run(
            ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            cwd=root, capture_output=True, check=False)
        if listed.returncode == 0:
            names = listed.stdout.decode("utf-8", "surrogateescape").split("\0")
            return sorted(Path(name) for name in set(names) if name and (root / name).is_file())
    found = (path.relative_to(root) for path in root.rglob("*") if path.is_file())
    return sorted(path for path in found if not set(path.parts) & set(SKIPPED_FOLDERS))


def code_files(root, folders=CODE_FOLDERS, suffixes=(".h", ".cc")):
    return [path for path in tracked_files(root)
            if path.parts[0] in folders and path.suffix in suffixes]


def read_text(root, path):
    return (root / path).read_bytes().decode("utf-8", "replace")


def excused_files(root, rule):
    """The paths that tests/lint/excused.txt excuses from `rule`. Its lines: rule, path, reason."""
    listing = root / "tests" / "lint" / "excused.txt"
    if not listing.exists():
        return set()
    excused = set()
    for line in listing.read_text(encoding="utf-8").splitlines():
        words = line.split(maxsplit=2)
        if words and not line.startswith("#") and words[0] == rule:
            excused.add(Path(words[1]))
    return excused


def stale_excuses(root, rule):
    """Complaints about excuses for files that are no longer there."""
    return [f"tests/lint/excused.txt: {path} is excused from '{rule}' but does not exist; "
            "take the line out" for path in sorted(excused_files(root, rule))
            if not (root / path).is_file()]


def run(check):
    """Ends the script: prints the complaints of `check` on the repository, status 1 when any."""
    complaints = check(ROOT)
    for complaint in complaints:
        print(complaint)
    if complaints:
        print(f"{len(complaints)} to cure")
    sys.exit(1 if complaints else 0)
