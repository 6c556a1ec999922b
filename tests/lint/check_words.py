"""Words that do not belong into a finished tree: marks of unfinished work, tests switched off, and
references to papers and threads that a reader of the repository does not have."""

import re

import lint

# Spelt in pieces, so that this file passes its own rule.
UNFINISHED = ("say what is so now, or do it now; what is left to do is not kept in the tree",
              (r"\bTO" r"DO\b", r"\bFIX" r"ME\b", r"\bX" r"XX\b", r"\bHA" r"CK\b"), 0)
SWITCHED_OFF = ("a test that does not run rots: repair it, or take it out",
                (r"\bDIS" r"ABLED_", r"\bGTEST_" r"SKIP\b"), 0)
OUTSIDE = ("say how the system behaves, in its own words; point only to files of this repository",
           (r"\bspe" r"c(?:s|\.md)?\b", r"\bspecifi" r"cations?\b", r"\bPar" r"t \d+(?:\.\d+)?\b",
            r"\bissu" r"es?\s+(?:no\.?\s*)?#?\d+", r"\b(?:fix(?:es|ed)?|clos(?:es|ed)|re" r"fs)\s+#\d+",
            r"(?:/work|\.\.)/shar" r"ed\b"), re.IGNORECASE)
RULES = [(cure, re.compile("|".join(patterns), flags))
         for cure, patterns, flags in (UNFINISHED, SWITCHED_OFF, OUTSIDE)]
# Transfer files are data of other programs; names and notes in them are nobody's words.
DATA_SUFFIXES = (".csv", ".dbf")


def is_text(content):
    return b"\0" not in content[:8192]


def check(root):
    complaints = []
    for path in lint.tracked_files(root):
        content = (root / path).read_bytes()
        if path.suffix.lower() in DATA_SUFFIXES or not is_text(content):
            continue
        lines = [str(path)] + content.decode("utf-8", "replace").splitlines()
        for number, line in enumerate(lines):
            for cure, pattern in RULES:
                match = pattern.search(line)
                if match:
                    where = f"{path}:{number}" if number else f"{path} (its name)"
                    complaints.append(f"{where}: '{match.group(0)}': {cure}")
    return complaints


if __name__ == "__main__":
    lint.run(check)
