#!/usr/bin/env python3
"""Makes the broken families beside this script, one folder a case.

Every byte is worked out here from the tables of docs/formats.md, without the program's own code, so
that the tests hold one against the other. The files are kept in the repository; after a change here
run the script and commit what it writes. With --check it writes nothing and tells what differs.

All cases are the family of one small directory with one thing wrong:

  sound                   nothing; shows that the bytes of all others are right but for their fault
  truncated-in-mid-card   the main file ends 300 bytes into its last card
  count-wrong             the header of the main file tells 9 cards, its size 4
  version-older           the main file is of version 04.10, its cards in the layout of that time;
                          expected.DAN is what an upgrade makes of it
  banner-without-version  the main file's banner holds no version
  index-missing           there is no .I01
  index-short             .I02 was cut in its tenth page
  index-offset-past-end   a slot of .I01 names a card behind the end of the main file
  address-stale           .ADR is from before the last card was added
  address-other-version   .ADR is of version 04.09
  zero-bytes              the main file is empty
  text-file               the main file is a text that somebody renamed
"""

import struct
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
STAMP = 1_000_000_000
LETTERS = b"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"
SIZES = (32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 32, 16, 24, 24, 24, 24, 24, 24, 24, 24, 21, 4, 21,
         12, 21, 14, 64, 21, 12, 12, 12)
OLD_SIZES = (32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 24, 24, 24, 24, 24, 24, 24, 24, 24, 24, 21, 4,
             21, 12, 21, 14, 128, 12, 18, 0, 0)
COMPANY, SHORT_CODE, TOWN, TITLE, SURNAME, TEL1, FAX, CODE, NOTES = 0, 5, 6, 8, 10, 18, 22, 25, 26

CARDS = (
    {COMPANY: b"Mercier", SURNAME: b"Hugo", TEL1: b"20 30 40 50", TOWN: b"Lille"},
    {COMPANY: b"Alpha Conseil", SURNAME: b"Sand", TOWN: b"Lens"},
    {COMPANY: b"Tango", SURNAME: b"Camus", FAX: b"21 31 41 51"},
    {COMPANY: b"Novembre", SURNAME: b"Balzac"},
)
# Card numbers in the order of each index, and the letter and key of each.
BY_COMPANY = ((2, b"ALPHA CONS"), (1, b"MERCIER"), (4, b"NOVEMBRE"), (3, b"TANGO"))
BY_SURNAME = ((4, b"BALZAC"), (3, b"CAMUS"), (1, b"HUGO"), (2, b"SAND"))
# First mark byte of each card, by its number: all are in the file, two are marked.
MARKS = {1: 0x03, 2: 0x01, 3: 0x03, 4: 0x01}
FLAGS = {1: 0x80, 2: 0, 3: 0x10, 4: 0}


def put(data, offset, piece):
    data[offset:offset + len(piece)] = piece


def record(fields, sizes):
    card = bytearray(768)
    for number, text in fields.items():
        assert len(text) <= sizes[number]
        put(card, sum(sizes[:number]), text)
    return bytes(card)


def stamped(card):
    return card[:764] + struct.pack("<I", STAMP)


def main_header(count, version=b"05.00", sizes=SIZES, description=b"Quatre fiches", owner=0):
    block = bytearray(768)
    put(block, 0, b"CARNETEL DROV SOFTW. VER " + version)
    put(block, 32, b"\r\n")
    put(block, 34, description)
    put(block, 76, b"\x00\r\n\x1A")
    put(block, 80, struct.pack("<IIIIHHHIH", 17213910, 256, 96, 768, count, 768, 31, STAMP, owner))
    for row, size in enumerate(sizes):
        entry = struct.pack("<HHHH", sum(sizes[:row]), 0, size, 6 if row == 12 else 1)
        put(block, 160 + 8 * row, entry)
    return bytes(block)


def main_file(count=4):
    return main_header(count) + b"".join(stamped(record(card, SIZES)) for card in CARDS)


def index_file(slots):
    """36 pages of 506 bytes; no letter has more than one of these slots."""
    pages = bytearray(506 * 36)
    for page, letter in enumerate(LETTERS):
        pages[506 * page] = letter
    for card, key in slots:
        at = 506 * LETTERS.index(key[0]) + 2
        put(pages, at, key)
        put(pages, at + 10, struct.pack("<I", 768 * card))
    return bytes(pages)


def address_file(cards=(2, 1, 4, 3), version=b"04.10"):
    data = bytearray(320 + 16 * len(cards))
    put(data, 0, b"CARNETEL (c) DROV SOFTWARE 1992")
    put(data, 32, b"\r\n")
    put(data, 34, b"Fichier carnetel d'adresses ver " + version)
    put(data, 76, b"\x00\r\n\x1A")
    put(data, 80, struct.pack("<IIIIHHHHI", 17213910, 256, 128, 320, len(cards), 16, 0, 1, STAMP))
    put(data, 130, struct.pack("<H", sum(MARKS[card] >> 1 for card in cards)))
    for row, card in enumerate(cards):
        put(data, 320 + 16 * row, struct.pack("<IB", 768 * card, MARKS[card]))
        data[320 + 16 * row + 15] = FLAGS[card]
    return bytes(data)


def criteria_file():
    data = bytearray(295)
    put(data, 0, b"CARNETEL DROV SOFTW. VER 05.00")
    put(data, 32, b"\r\n")
    put(data, 77, b"\r\n")
    put(data, 80, struct.pack("<IIIIHH", 17213910, 0x00020033, 96, 128, 6, 23))
    put(data, 128, "Dernière Sélection".encode("cp850"))
    return bytes(data)


def group_file():
    """A group file that has the row of the whole file and no other."""
    data = bytearray(176 + 80)
    put(data, 92, struct.pack("<IHH", 176, 1, 80))
    put(data, 176, b"Tout le Fichier ")
    return bytes(data)


def family(**changed):
    """The files of a sound family by extension; None takes one away."""
    files = {"DAN": main_file(), "I01": index_file(BY_COMPANY), "I02": index_file(BY_SURNAME),
             "ADR": address_file(), "CRT": criteria_file(), "GRP": group_file(),
             "LST": b"mise en page"}
    files.update(changed)
    return {f"ESSAI.{extension}": data for extension, data in files.items() if data is not None}


NOTES_OF_128 = b"".join(b"%02d " % number for number in range(43))[:128]


def older_family():
    """Card 2 has its surname in the title field, card 3 long notes, card 4 a short postal code."""
    cards = [dict(card) for card in CARDS]
    cards[1][TITLE] = cards[1].pop(SURNAME)
    cards[2][NOTES] = NOTES_OF_128
    cards[3][SHORT_CODE] = b"75"
    old = main_header(4, b"04.10", OLD_SIZES, owner=3)
    old += b"".join(record(card, OLD_SIZES) for card in cards)
    new = [bytearray(record(card, SIZES)) for card in CARDS]
    put(new[2], 610, NOTES_OF_128[:64])
    put(new[2], 686, NOTES_OF_128[76:85])
    put(new[2], 713, NOTES_OF_128[103:])
    put(new[3], 160, b"75")
    put(new[3], 596, b"75")
    files = family(DAN=old)
    files["expected.DAN"] = main_header(4, description=b"", owner=3) + b"".join(new)
    return files


def without_version():
    data = bytearray(main_file())
    put(data, 0, b"CARNETEL DROV SOFTW.".ljust(32, b"\x00"))
    return bytes(data)


def past_the_end():
    """TANGO's slot names card 40 of 4."""
    return index_file([(40 if card == 3 else card, key) for card, key in BY_COMPANY])


def cases():
    text = "Liste des clients\r\nMercier, Lille\r\nAlpha Conseil, Lens\r\n".encode() * 20
    return {
        "sound": family(),
        "truncated-in-mid-card": family(DAN=main_file()[:768 * 4 + 300]),
        "count-wrong": family(DAN=main_file(9)),
        "version-older": older_family(),
        "banner-without-version": family(DAN=without_version()),
        "index-missing": family(I01=None),
        "index-short": family(I02=index_file(BY_SURNAME)[:506 * 9 + 100]),
        "index-offset-past-end": family(I01=past_the_end()),
        "address-stale": family(ADR=address_file((2, 1, 3))),
        "address-other-version": family(ADR=address_file(version=b"04.09")),
        "zero-bytes": {"ESSAI.DAN": b""},
        "text-file": {"ESSAI.DAN": text},
    }


def differences():
    wanted = {HERE / name / file: data for name, files in cases().items()
              for file, data in files.items()}
    there = {path for path in HERE.glob("*/*") if path.is_file()}
    for path, data in sorted(wanted.items()):
        if path not in there or path.read_bytes() != data:
            yield f"{path.relative_to(HERE)} is not what make_broken.py makes: run it"
    for path in sorted(there - set(wanted)):
        yield f"{path.relative_to(HERE)} is made by nothing: delete it"


def main():
    if sys.argv[1:] == ["--check"]:
        found = list(differences())
        print("\n".join(found))
        sys.exit(1 if found else 0)
    for name, files in cases().items():
        (HERE / name).mkdir(exist_ok=True)
        for file, data in files.items():
            (HERE / name / file).write_bytes(data)


if __name__ == "__main__":
    main()
