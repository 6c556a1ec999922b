"""Everything that a program has to know to work with Carnetel: how to start it, how to hear the
end, and the records in the file between the two. Standard library only; copy it if it helps.

    call = Call(launch_type=2, file="/tmp/NUM.DAT", number=NUMBER_KINDS["fax"])
    notice = start_and_wait(call)
    if notice and notice.result > 0:
        records = take_records(call.file, long=call.long_records)
"""

import os
import struct
import subprocess
import tempfile
from dataclasses import dataclass

# Launch types: what Carnetel is to do. Ten more asks for long records.
MAIN_WINDOW, CHOOSE_ONE, CHOOSE_MANY = 0, 1, 2
CAPTURE_SILENT, CAPTURE_REVIEW, CAPTURE_EDIT = 3, 4, 5
LOOK_UP, REWRITE, INSERT = 6, 7, 8
VIAFAX = 9
WITH_LONG_RECORDS = 10

NUMBER_KINDS = {"fax": 1, "modem": 2, "minitel": 4, "tel1": 8, "tel2": 16}

# The two messages of a notification.
ROLE_ENDED, INSERTION_ENDED = 1524, 1424

# Fields of a card that a request or a capture can carry, by their numbers.
FIELDS = {"Ste1": 0, "Ste2": 1, "Adr1": 2, "Adr2": 3, "Ville": 6, "Pays": 7, "Qualite": 8,
          "Prenom": 9, "Nom": 10, "Ref1": 12, "Ref2": 13, "Ref3": 14, "Ref4": 15, "Ref5": 16,
          "Ref6": 17, "Tel1": 18, "Tel2": 19, "Mtel": 20, "Fax": 22, "Modem": 24, "CP": 25,
          "Notes": 26}

# Records and requests are of Windows code page 1252, capture files and Viafax jobs of DOS 850.
ANSI, OEM = "cp1252", "cp850"

# Number, card, (name,) company, path of the directory.
SHORT_RECORD = struct.Struct("<30s I 6x 48s 60s x")
LONG_RECORD = struct.Struct("<30s I 33s 33s 60s x")
# Three unused bytes, then five rows: text, number of the field, one unused byte.
REQUEST_ROWS = 5
REQUEST = struct.Struct("<3x" + REQUEST_ROWS * "32s B x")
REQUEST_HEADER_SIZE = 96
REPLY_PLACE = 288
# Company, address, first number, kind of the second one, postal code, town, second number.
CAPTURE = struct.Struct("<33s 33s 18s B x 16s 33s 18s 3x")


@dataclass(frozen=True)
class Call:
    """One start of Carnetel. There is no option for the directory: it is the one used last."""

    launch_type: int
    file: str
    number: int = NUMBER_KINDS["fax"]
    # The window that is told the end, and comes back then. Any number but 0 asks to be told on
    # standard output; terminals tell their window in this variable.
    window: int = int(os.environ.get("WINDOWID") or 1)
    prefix: str = "?"  # in front of captured numbers; "?" is none
    appli: str = "VOISIN"  # VOISIN.INI in Carnetel's home folder has the sender of Viafax jobs
    seat: int = 0

    @property
    def long_records(self):
        return self.launch_type >= WITH_LONG_RECORDS

    def options(self):
        """In this order: Carnetel searches its command line for them one behind the other."""
        return ["-APP", self.prefix, "-FILE", self.file, "-TYPE", str(self.launch_type),
                "-HWND", str(self.window), "-NUM", str(self.number), "-APPLI", self.appli,
                "-NUMP", str(self.seat)]


@dataclass(frozen=True)
class Notice:
    """What Carnetel tells at the end of a role: a message number and its two values."""

    message: int
    result: int
    launch_type: int


def parse_notice(text):
    """The notice in what was heard, None when Carnetel had nothing to tell."""
    for line in text.splitlines():
        words = line.split()
        if len(words) == 3 and words[0] in (str(ROLE_ENDED), str(INSERTION_ENDED)):
            return Notice(*map(int, words))
    return None


def start_and_wait(call, program="carnetel", carrier="stdout"):
    """Runs Carnetel to its end and returns its notice.

    `carrier` is where to hear it: "stdout", or a "file" or a "pipe" of our own. None means that no
    role ran: Carnetel is open already, or cannot open its directory. It has no exit code for that.
    """
    command = [program, *call.options()]
    if carrier == "stdout":
        done = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False)
        return parse_notice(done.stdout)
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "notice")
        if carrier == "pipe":
            os.mkfifo(path)
        # Carnetel waits for nobody: a pipe needs its reader before the line comes.
        reader = os.open(path, os.O_RDONLY | os.O_NONBLOCK | os.O_CREAT)
        try:
            subprocess.run(command, stdout=subprocess.DEVNULL, check=False,
                           env={**os.environ, "CARNETEL_NOTIFY": path})
            return parse_notice(os.read(reader, 4096).decode("ascii"))
        finally:
            os.close(reader)


# ---- the file between the two programs ----

@dataclass(frozen=True)
class Record:
    """A number out of a directory."""

    number: str
    card: int  # offset in the directory's main file
    name: str  # of long records only
    company: str
    directory: str  # in capitals, cut at 60 characters


def text_of(field, code_page=ANSI):
    """The text of a field: up to its first zero byte, or all of it."""
    return field.split(b"\0")[0].decode(code_page, "replace")


def field_of(text, code_page=ANSI):
    return text.encode(code_page, "replace")


def parse_records(data, long=False):
    layout = LONG_RECORD if long else SHORT_RECORD
    whole = len(data) - len(data) % layout.size
    records = []
    for number, card, *texts in layout.iter_unpack(data[:whole]):
        *name, company, directory = map(text_of, texts)
        records.append(Record(text_of(number), card, "".join(name), company, directory))
    return records


def take(path):
    """The content of the file, which then goes: Carnetel only ever appends to it."""
    if not os.path.exists(path):
        return b""
    with open(path, "rb") as file:
        data = file.read()
    os.remove(path)
    return data


def take_records(path, long=False):
    return parse_records(take(path), long)


def write_requests(path, requests):
    """Writes an exchange file. A request is a list of up to five (field name, text): the surname,
    the company, then any others."""
    with open(path, "wb") as file:
        file.write(bytes(REQUEST_HEADER_SIZE))
        for rows in requests:
            rows = [*rows, *[("Ste1", "")] * (REQUEST_ROWS - len(rows))]
            values = [value for name, text in rows for value in (field_of(text), FIELDS[name])]
            file.write(REQUEST.pack(*values))


def write_look_up(path, surname):
    """An exchange file for one name. It ends where the reply begins, so that the record of a user
    who had to choose, which is appended, stands in the same place."""
    write_requests(path, [[("Nom", surname), ("Ste1", "")]])
    with open(path, "r+b") as file:
        file.truncate(REPLY_PLACE)


def take_reply(path, long=False):
    return parse_records(take(path)[REPLY_PLACE:], long)


def parse_request(data):
    """The banner in the header of an exchange file and the texts of its first request."""
    rows = REQUEST.unpack_from(data, REQUEST_HEADER_SIZE)
    banner = text_of(data[:REQUEST_HEADER_SIZE]).strip()
    return banner, [text_of(text) for text in rows[0::2] if text_of(text)]


def write_captures(path, cards):
    """Writes a capture file of dictionaries from field names to texts."""
    with open(path, "wb") as file:
        for card in cards:
            texts = {name: field_of(text, OEM) for name, text in card.items()}
            second_is_fax = "Fax" in texts
            second = texts.get("Fax" if second_is_fax else "Tel2", b"")
            ste1, adr1, tel1, cp, ville = (
                texts.get(name, b"") for name in ("Ste1", "Adr1", "Tel1", "CP", "Ville"))
            file.write(CAPTURE.pack(ste1, adr1, tel1, second_is_fax, cp, ville, second))
