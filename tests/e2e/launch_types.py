"""Every launch type from 0 to 19 by its number, as programs of the suite use it: the cards are
picked by real key presses, and the bytes of the file, the three numbers that the caller is told
and the exit code are what those programs rely on.

    launch_types.py PROGRAM TOOL
"""

import os
import subprocess
import sys

import trial

PROGRAM, TOOL = (sys.argv + [""] * 2)[1:3]
FAX, MODEM, MINITEL, TEL1, TEL2 = 1, 2, 4, 8, 16
CARDS = [
    {"Ste1": "Alpha Électrique", "Ste2": "Siège", "Qualite": "Mme", "Prenom": "Anne", "Nom": "Bez",
     "Tel1": "0140000001", "Fax": "0140000002", "Ref1": "CLIENT", "Ref3": "Nord"},
    {"Ste1": "Beta", "Nom": "Zola", "Fax": "0140000012", "Modem": "0140000013", "Mtel": "3614 B"},
    {"Ste1": "Delta", "Prenom": "Luc", "Nom": "Dupont", "Tel1": "0140000021"},
    {"Ste1": "Gamma", "Nom": "Bez", "Tel1": "0140000031", "Fax": "0140000032"},
]
BLOCK = 768
REPLY_PLACE = 288


def padded(*pieces):
    """Bytes of zero with texts at their offsets. `pieces`: size, then pairs of offset and bytes."""
    image = bytearray(pieces[0])
    for offset, content in pieces[1:]:
        image[offset:offset + len(content)] = content
    return bytes(image)


def ansi(text):
    return text.encode("cp1252")


def capture(company, number="", town=""):
    return padded(156, (0, company.encode("cp850")), (66, number.encode("cp850")),
                  (102, town.encode("cp850")))


def request(surname, company="", rest=()):
    """A request of an exchange file. `rest`: pairs of field number and text."""
    rows = [(10, surname), (0, company), *rest]
    pieces = []
    for place, (field, text) in enumerate(rows):
        pieces += [(3 + 34 * place, ansi(text)), (3 + 34 * place + 32, bytes([field]))]
    return padded(173, *pieces)


class LaunchTypes:
    def __init__(self, place):
        self.place = place
        self.path = place.stem + ".DAN"

    def record(self, card, number, name=None, path=None):
        """The hand-off record of the n-th card: a long one with a name, a short one without."""
        company = ansi(CARDS[card]["Ste1"])
        offset = ((card + 1) * BLOCK).to_bytes(4, "little")
        path = ansi((self.path.upper() if path is None else path)[:60])
        if name is None:
            return padded(149, (0, ansi(number)), (30, offset), (40, company), (88, path))
        return padded(161, (0, ansi(number)), (30, offset), (34, ansi(name)), (67, company),
                      (100, path))

    def expect_file(self, *pieces):
        content = self.place.take()
        assert content == b"".join(pieces), content

    def make_directory(self):
        self.place.tool("create")
        for card in CARDS:
            self.place.tool("add", *(f"{name}={text}" for name, text in card.items()))

    # ---- 0 and 10 ----

    def main_window(self):
        for launch_type in (0, 10):
            run = self.place.start(launch_type)
            self.place.screen.window(trial.MAIN_WINDOW)
            self.place.screen.press("alt+f", "q")
            run.expect("")

    # ---- 1, 2, 11, 12 ----

    def one_card(self):
        # Marks are not for this chooser: the blank changes nothing.
        run = self.place.start(1)
        self.place.choose("space", "Home", "Return")
        run.expect("1524 1 0")
        self.expect_file(self.record(0, "0140000002"))
        assert not any(card["marked"] for card in self.place.cards())
        self.place.write(b"what lies there ")
        run = self.place.start(11)
        self.place.choose("End", "Return")
        run.expect("1524 1 0")
        self.expect_file(b"what lies there ", self.record(3, "0140000032", "Bez"))

    def several_cards(self):
        run = self.place.start(2)
        self.place.choose("Home", "space", "End", "space", "alt+x", "s")
        run.expect("1524 2 0")
        self.expect_file(self.record(0, "0140000002", path=self.path),
                         self.record(3, "0140000032", path=self.path))
        run = self.place.start(12)
        self.place.choose("alt+x", "g")
        run.expect("1524 2 0")
        self.expect_file(self.record(0, "0140000002", "Anne Bez"),
                         self.record(1, "0140000012", "Zola"),
                         self.record(3, "0140000032", "Bez"))

    def number_kinds(self):
        for kind, card, number in ((MODEM, 1, "0140000013"), (MINITEL, 1, "3614 B"),
                                   (TEL1, 2, "0140000021"), (3, 1, "0140000012")):
            run = self.place.start(1, kind)
            self.place.choose("Home", "Down", "Return")
            run.expect("1524 1 0")
            self.expect_file(self.record(card, number))

    def no_list_of_second_telephones(self):
        self.place.tool("edit", "2", "Tel2=0140000014")
        run = self.place.start(2, TEL2)
        self.place.choose("Home", "space", "Return", "Escape")
        run.expect("1524 0 0")
        assert not os.path.exists(self.place.exchange)

    def given_up(self):
        run = self.place.start(12)
        self.place.choose("Escape")
        run.expect("1524 0 0")
        assert not os.path.exists(self.place.exchange)

    # ---- 9 and 19 ----

    def viafax(self):
        self.place.write(b"")
        run = self.place.start(9)
        self.place.choose("alt+x", "g")
        run.expect("1524 3 0")
        job = self.place.take().decode("cp850").split("\r\n")
        # The name ECHANGE1.DAT has no number behind its fourth character.
        assert job[:6] == ["NOM CLIENT", "", 'ADMIN BL=0,PW="",REL=""', "", 'PW="/"', 'PM="N",']
        assert job[9:16] == [
            'CC="CLIENT<:R:>Nord",', 'FROM="",', 'TO="Alpha Électrique",', 'RE="Siège",',
            'ADR02="Siège",', 'ADR08="Alpha Électrique",', "ADR01=0140000002,TYPE=FAXG3,PRI=2"]
        assert [line for line in job if line.startswith("ADR01")][1:] == [
            "ADR01=0140000012,TYPE=FAXG3,PRI=2", "ADR01=0140000032,TYPE=FAXG3,PRI=2"]
        assert job[-2:] == ["NNNN", ""]
        run = self.place.start(19)
        self.place.choose("Home", "Return")
        run.expect("1524 1 0")
        assert self.place.take().count(b"ADR01=") == 1

    # ---- 3, 4, 5, 13, 14, 15 ----

    def enrichment(self):
        keys = {3: [], 4: ["alt+e"], 5: ["End", "e", "Return", "alt+t"]}
        for launch_type in (3, 4, 5, 13, 14, 15):
            name = f"Capture {launch_type}"
            self.place.write(capture(name, "01.40", "Évry"))
            run = self.place.start(launch_type, prefix="0,")
            reviewed = keys[launch_type % 10]
            if reviewed:
                self.place.screen.window(trial.ENRICHMENT)
                self.place.screen.press(*reviewed)
            self.place.confirm()
            run.expect(f"1524 0 {launch_type}")
            # The company is captured in capitals; what the user adds stays as it is typed.
            card = self.place.card_of(name.upper() + ("e" if "End" in reviewed else ""))
            assert (card["Tel1"], card["Ville"]) == ("0,01:40", "Évry"), card
        os.remove(self.place.exchange)

    # ---- 6, 7, 16, 17 ----

    def look_up(self):
        for launch_type, name in ((6, None), (16, "Dupont")):
            self.place.write(bytes(96) + request("dupont"))
            self.place.start(launch_type).expect(f"1524 1 {launch_type}")
            self.expect_file(bytes(96), request("dupont"), bytes(REPLY_PLACE - 96 - 173),
                             self.record(2, "0140000021", name))

    def look_up_among_two(self):
        """Two cards of the name: the user chooses, from the second one on."""
        for launch_type, name in ((6, None), (16, "Bez")):
            exchange = bytes(96) + request("BEZ")
            self.place.write(exchange)
            run = self.place.start(launch_type, TEL1)
            self.place.choose("Return")
            run.expect(f"1524 1 {launch_type}")
            self.expect_file(exchange, self.record(3, "0140000031", name))

    def rewrite(self):
        for launch_type in (7, 17):
            self.place.write(b"x" * 96 + request("Bez", "Beta") + b"x" * 200)
            self.place.start(launch_type).expect(f"1524 1 {launch_type}")
            banner = padded(96, (0, b"Carnetel V4.00 (C) DROV SOFTWARE\r\n"))
            self.expect_file(banner, request("Bez", "Beta"), bytes(REPLY_PLACE - 96 - 173),
                             b"x" * (200 + 96 + 173 - REPLY_PLACE))

    def rewrite_of_nothing(self):
        """What cannot be served is left to the user, who leaves it too."""
        run = self.place.start(7)
        self.place.choose("Escape")
        run.expect("1524 0 7")

    # ---- 8 and 18 ----

    def insertion(self):
        for launch_type in (8, 18):
            name = f"Insérée {launch_type}"
            self.place.write(bytes(96) + request("Noël", name, [(22, "0140000042")]))
            run = self.place.start(launch_type)
            self.place.confirm()
            run.expect(f"1424 1 {launch_type}")
            assert not os.path.exists(self.place.exchange)
            card = self.place.card_of(name)
            assert card == {"Ste1": name, "Nom": "Noël", "Fax": "0140000042"}, card

    def refused_insertion(self):
        self.place.start(8).expect("1424 -1 8")

    # ---- who hears nothing ----

    def second_start(self):
        run = self.place.start(1)
        self.place.screen.window(trial.CHOOSER)
        for launch_type in (2, 8, 0):
            second = subprocess.run(
                [*run.process.args[:6], str(launch_type), *run.process.args[7:]], check=False,
                env=self.place.environment, capture_output=True, timeout=trial.PATIENCE_SECONDS)
            assert (second.returncode, second.stdout, second.stderr) == (0, b"", b""), second
        run.expect_running()
        self.place.choose("Escape")
        run.expect("1524 0 0")

    def unreadable_directory(self):
        """Without a directory no role runs but the main window."""
        with open(self.path, "wb") as file:
            file.write(b"no directory")
        self.place.write(request("Bez"))
        for launch_type in (1, 4, 6, 8, 12, 19):
            self.place.start(launch_type).expect("")
        self.expect_file(request("Bez"))

    def run(self):
        self.make_directory()
        self.main_window()
        self.one_card()
        self.several_cards()
        self.number_kinds()
        self.no_list_of_second_telephones()
        self.given_up()
        self.viafax()
        self.look_up()
        self.look_up_among_two()
        self.rewrite()
        self.rewrite_of_nothing()
        self.second_start()
        self.enrichment()
        self.insertion()
        self.refused_insertion()
        self.place.tool("check")
        self.unreadable_directory()


def main():
    with trial.Trial(PROGRAM, TOOL) as place:
        LaunchTypes(place).run()


if __name__ == "__main__":
    main()
