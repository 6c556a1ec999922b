"""Qt stays under desktop/: everything else builds and tests without a screen and without Qt."""

import re

import lint

HOMES = (("src", "desktop"), ("tests", "desktop"), ("bench", "desktop"))
INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]((?:Qt\w*/)?Q[A-Za-z0-9]+|q[a-z]+\.h|Qt\w*/\S+)[>"]',
                     re.MULTILINE)


def check(root):
    complaints = []
    for path in lint.code_files(root):
        if path.parts[:2] in HOMES:
            continue
        for header in INCLUDE.findall(lint.read_text(root, path)):
            complaints.append(
                f"{path} includes {header}: Qt belongs to src/desktop, its tests and benchmarks. Say here what "
                "is needed as a small interface and let desktop/ implement it")
    return complaints


if __name__ == "__main__":
    lint.run(check)
