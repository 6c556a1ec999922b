"""Finds the functions of a C++ source laid out by clang-format, with their lengths in lines.

No parser: comments, strings and preprocessor lines are blanked, then every opening brace outside of
function bodies is judged by the text in front of it. That is enough for namespaces, classes,
initialisers, constructors with initialiser lists, templates, operators and test macros. Lambdas and
local classes count as part of the function they stand in.
"""

import re
from collections import namedtuple

Function = namedtuple("Function", "name line lines")

NOISE = re.compile(
    r'R"(?P<mark>[^()\\ ]{0,16})\(.*?\)(?P=mark)"'  # raw strings before all else
    r'|//[^\n]*|/\*.*?\*/'
    r'|"(?:\\.|[^"\\\n])*"'
    r"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'"  # not the digit separator of 32'767
    r"|^[ \t]*#(?:\\\n|[^\n])*",
    re.DOTALL | re.MULTILINE)
OPERATOR = re.compile(r"\boperator\s*(?:\(\)|\[\]|[^\s\w(]+|\"\"\s*\w+)")
ACCESS = re.compile(r"^\s*(?:public|protected|private|Q_SIGNALS|signals|public slots)\s*:(?!:)")
SCOPE = re.compile(r'^\s*(?:inline\s+)?(?:namespace\b|extern\s*"|extern\s*$)')
TYPE = re.compile(r"\b(?:class|struct|union|enum)\b")


def blank_noise(text):
    """`text` with comments, literals and preprocessor lines as blanks, line ends kept."""
    return NOISE.sub(lambda match: re.sub(r"[^\n]", " ", match.group(0)), text)


def outer_text(header):
    """`header` without what stands inside (), <> and []; each pair of parentheses leaves "()"."""
    header = OPERATOR.sub("operator_", header).replace("->", "  ")
    out, depth = [], 0
    for char in header:
        if char in "(<[":
            if char == "(" and depth == 0:
                out.append("()")
            depth += 1
        elif char in ")>]":
            depth = max(depth - 1, 0)
        elif depth == 0:
            out.append(char)
    return "".join(out)


def kind_of_brace(header):
    """What the brace behind `header` opens: "scope", "function" or "initialiser"."""
    if SCOPE.search(header):
        return "scope"
    outer = outer_text(header)
    if "=" in outer:
        return "initialiser"
    if "()" not in outer:
        return "scope" if TYPE.search(outer) else "initialiser"
    behind = outer[outer.index("()"):].rstrip()
    in_member_list = re.search(r"(?<!:):(?!:)", behind)
    if in_member_list and re.search(r"[\w>]$", header.rstrip()):
        return "initialiser"  # a member's value, as in `: size_{size}`
    return "function"


def name_of(header):
    header = " ".join(OPERATOR.sub(lambda match: match.group(0).replace("(", "").replace(")", ""),
                                   header).split())
    match = re.search(r"([\w:~]+|operator\S*)\s*\(([^()]*)", header)
    if not match:
        return header[:40]
    is_macro = match.group(1).startswith(("TEST", "TYPED_TEST"))
    return f"{match.group(1)}({match.group(2)})" if is_macro else match.group(1)


def closing(text, start):
    """The index behind the brace that closes the one at `start`."""
    depth = 0
    for match in re.compile(r"[{}]").finditer(text, start):
        depth += 1 if match.group(0) == "{" else -1
        if depth == 0:
            return match.end()
    return len(text)


def functions_of(source):
    """The functions of `source`: each with its name, first line and number of lines, counted from
    the first line of its declaration to its closing brace."""
    text = blank_noise(source)
    found, begin, position, parentheses = [], 0, 0, 0
    while position < len(text):
        char = text[position]
        if char in "()":
            parentheses += 1 if char == "(" else -1
        elif char == "{":
            header = text[begin:position]
            while ACCESS.search(header):
                begin += ACCESS.search(header).end()
                header = text[begin:position]
            kind = "initialiser" if parentheses > 0 else kind_of_brace(header)
            if kind != "scope":
                end = closing(text, position)
                if kind == "function":
                    first = begin + len(header) - len(header.lstrip())
                    line = text.count("\n", 0, first) + 1
                    found.append(Function(name_of(header), line, text.count("\n", first, end) + 1))
                    begin = end
                else:
                    text = text[:position] + re.sub(r"[^\n]", " ", text[position:end]) + text[end:]
                position = end
                continue
            begin = position + 1
        elif char == "}" or (char == ";" and parentheses == 0):
            begin, parentheses = position + 1, 0
        position += 1
    return found
