"""Includes run downward only: a file includes its own folder and the floors below, never a floor
above and never a neighbour on the same floor."""

import re

import lint

FLOORS = (
    ("base",),
    ("platform",),
    ("storage",),
    ("selection",),
    ("transfer", "printing", "link"),
    ("shell",),
    ("desktop", "cli"),
)
FLOOR_OF = {folder: height for height, folders in enumerate(FLOORS) for folder in folders}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)
ORDER = " < ".join(" | ".join(folders) for folders in FLOORS)


def complaint_about(path, target):
    """Why the file `path` may not include `target`; None when it may."""
    tree, home = path.parts[0], path.parts[1]
    into = target.split("/")[0]
    if into in ("tests", "bench", "fuzz"):
        if tree == "src":
            return ("product code does not know its tests; move what it needs down into src/")
        return None
    if into not in FLOOR_OF:
        return ('write project includes from src/ as "folder/file.h" (helpers of tests as '
                '"tests/support/file.h") and those of libraries in <>')
    if home not in FLOOR_OF or into == home:
        return None
    if FLOOR_OF[into] < FLOOR_OF[home]:
        return None
    where = "upward" if FLOOR_OF[into] > FLOOR_OF[home] else "sideways"
    return (f"this runs {where}; floors are {ORDER}. Move what both need to a floor below, or hand "
            "it in from above through an interface that the lower floor declares")


def check(root):
    complaints = []
    for path in lint.code_files(root):
        if path.parts[0] == "src" and len(path.parts) > 2 and path.parts[1] not in FLOOR_OF:
            complaints.append(f"{path}: src/{path.parts[1]} has no floor; give it one in "
                              "tests/lint/check_includes.py and docs/architecture.md")
            continue
        if len(path.parts) < 3:
            continue
        for target in INCLUDE.findall(lint.read_text(root, path)):
            why = complaint_about(path, target)
            if why:
                complaints.append(f'{path} includes "{target}": {why}')
    return complaints


if __name__ == "__main__":
    lint.run(check)
