"""Every source stands as clang-format and .clang-format lay it out."""

import os
import re
import subprocess

import lint

FILES_A_RUN = 20


def misplaced(root, paths):
    """The paths of `paths` whose text clang-format would change."""
    tool = os.environ.get("CLANG_FORMAT", "clang-format")
    done = subprocess.run([tool, "--dry-run", "-Werror", "--style=file", *map(str, paths)],
                          cwd=root, capture_output=True, text=True, check=False)
    named = set(re.findall(r"^(\S+?):\d+:\d+: error:", done.stderr, re.MULTILINE))
    if done.returncode != 0 and not named:
        return [f"clang-format failed: {done.stderr.strip()}"]
    return sorted(named)


def check(root):
    paths = lint.code_files(root)
    bad = []
    for start in range(0, len(paths), FILES_A_RUN):
        bad += misplaced(root, paths[start:start + FILES_A_RUN])
    return [f"{name}: layout; run: clang-format -i {name}" for name in bad]


if __name__ == "__main__":
    lint.run(check)
