"""Files and functions stay small enough to be read in one go.

Product code (src/) and test code are held to the budget each by itself: many short tests do not
make up for a long function of the product.
"""

import lint
from cpp_functions import functions_of

FILE_P90, FILE_MOST, HEADER_MOST = 400, 1000, 400
FUNCTION_P90, FUNCTION_MOST, FUNCTION_LONG = 30, 100, 60
LONG_IN_A_HUNDRED = 3
TREES = (("src",), ("tests", "bench", "fuzz"))
SHOWN = 10

CURE_FILE = "split it by what it deals with, so that each file can be named after one thing"
CURE_FUNCTION = "take the steps out into functions whose names say what each is for"
CURE_TABLE = "a file that is one data table goes into tests/lint/excused.txt under 'size'"


def p90(lengths):
    """The length that nine in ten do not exceed."""
    ordered = sorted(lengths)
    return ordered[-(-len(ordered) * 9 // 10) - 1] if ordered else 0


def longest(entries):
    """The texts of the longest entries (length, text), for the complaint about a whole tree."""
    return "; ".join(f"{text} {length}" for length, text in sorted(entries, reverse=True)[:SHOWN])


def check_files(tree, files):
    """`files`: (length in lines, path)."""
    complaints = []
    for length, path in files:
        most = HEADER_MOST if path.endswith(".h") else FILE_MOST
        if length > most:
            complaints.append(f"{path}: {length} lines, {most} at most; {CURE_FILE}. {CURE_TABLE}")
    share = p90([length for length, _ in files])
    if share > FILE_P90:
        complaints.append(f"{tree}: one file in ten is above {share} lines, {FILE_P90} at most; "
                          f"{CURE_FILE}. The longest: {longest(files)}")
    return complaints


def check_functions(tree, functions):
    """`functions`: (length in lines, "path:line name")."""
    complaints = [f"{where}: {length} lines, {FUNCTION_MOST} at most; {CURE_FUNCTION}"
                  for length, where in functions if length > FUNCTION_MOST]
    share = p90([length for length, _ in functions])
    if share > FUNCTION_P90:
        complaints.append(f"{tree}: one function in ten is above {share} lines, {FUNCTION_P90} at "
                          f"most; {CURE_FUNCTION}. The longest: {longest(functions)}")
    long_ones = [entry for entry in functions if entry[0] > FUNCTION_LONG]
    if len(long_ones) * 100 >= LONG_IN_A_HUNDRED * max(len(functions), 1):
        complaints.append(f"{tree}: {len(long_ones)} of {len(functions)} functions are above "
                          f"{FUNCTION_LONG} lines, fewer than {LONG_IN_A_HUNDRED} in a hundred "
                          f"allowed; {CURE_FUNCTION}. They are: {longest(long_ones)}")
    return complaints


def check(root):
    complaints = lint.stale_excuses(root, "size")
    excused = lint.excused_files(root, "size")
    for folders in TREES:
        files, functions = [], []
        for path in lint.code_files(root, folders):
            if path in excused:
                continue
            source = lint.read_text(root, path)
            files.append((source.count("\n"), str(path)))
            functions += [(function.lines, f"{path}:{function.line} {function.name}")
                          for function in functions_of(source)]
        tree = "/, ".join(folders) + "/"
        complaints += check_files(tree, files) + check_functions(tree, functions)
    return complaints


if __name__ == "__main__":
    lint.run(check)
