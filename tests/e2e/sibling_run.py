"""The example of a sibling program at work: what it starts, and what it shows of the answers.

    sibling_run.py PROGRAM TOOL SIBLING
"""

import os
import re
import subprocess
import sys

import trial

PROGRAM, TOOL, SIBLING = (sys.argv + [""] * 3)[1:4]


class Example:
    def __init__(self, place):
        self.place = place
        self.path = (place.stem + ".DAN").upper()

    def start(self, *words):
        """The example, which waits for the program that it starts."""
        words = [*words, "--fichier", self.place.exchange]
        if words[0] != "lire":
            words += ["--programme", PROGRAM]
        environment = {**self.place.environment, "PYTHONDONTWRITEBYTECODE": "1"}
        return subprocess.Popen([sys.executable, SIBLING, *words], env=environment, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def expect(self, run, status, *lines):
        """It ends so and has shown these lines, the width of their columns aside."""
        try:
            output, errors = run.communicate(timeout=trial.PATIENCE_SECONDS)
        except subprocess.TimeoutExpired:
            run.kill()
            raise
        shown = [" ".join(line.split()) for line in output.splitlines()]
        assert (run.returncode, shown, errors) == (status, list(lines), ""), (shown, errors)

    def card(self, row):
        return f"fiche {row * 768} de {self.path}"

    def make_directory(self):
        self.place.tool("create")
        self.place.tool("add", "Ste1=Alpha", "Nom=Bez", "Tel1=0140000001", "Fax=0140000002")
        self.place.tool("add", "Ste1=Été", "Prenom=Luc", "Nom=Zola", "Fax=0140000012")

    def chooses(self):
        for carrier in ("sortie", "fichier", "tube"):
            run = self.start("choisir", "--avis", carrier)
            self.place.choose("End", "Return")
            self.expect(run, 0, "Avis 1524 : résultat 1, type 0", "1. 0140000002 Alpha",
                        self.card(1))
            assert not os.path.exists(self.place.exchange)
        run = self.start("choisir", "--avis", "tube")
        self.place.choose("Escape")
        self.expect(run, 1, "Avis 1524 : résultat 0, type 0", "Rien n'a été choisi.")

    def chooses_several(self):
        run = self.start("choisir", "--plusieurs", "--long", "--montrer")
        self.place.choose("alt+x", "g")
        command = (f"{PROGRAM} -APP ? -FILE {self.place.exchange} -TYPE 12 -HWND 1 -NUM 1 "
                   "-APPLI VOISIN -NUMP 0")
        self.expect(run, 0, command, "Avis 1524 : résultat 2, type 0",
                    "1. 0140000012 Été", "nom Luc Zola", self.card(2),
                    "2. 0140000002 Alpha", "nom Bez", self.card(1))

    def makes_a_viafax_job(self):
        with open(os.path.join(self.place.folder, "VOISIN.INI"), "w", encoding="utf-8") as file:
            file.write("[General]\nUserName=Anne Bez\n")
        run = self.start("viafax")
        self.place.choose("Home", "Return")
        output, _ = run.communicate(timeout=trial.PATIENCE_SECONDS)
        assert run.returncode == 0
        assert output.startswith("Avis 1524 : résultat 1, type 0\n"
                                 "Adresses dans le travail Viafax : 1\nNOM CLIENT\n"), output
        assert 'FROM="Anne Bez",\nTO="Été",\n' in output, output

    def looks_up(self):
        notice = "Avis 1524 : résultat 1, type 6"
        self.expect(self.start("chercher", "bez"), 0, notice, "1. 0140000001 Alpha", self.card(1))
        run = self.start("chercher", "Zola", "--numero", "fax")
        self.place.choose("Home", "Return")
        self.expect(run, 0, notice, "1. 0140000012 Été", self.card(2))
        self.expect(self.start("chercher", "bez", "--long"), 0, "Avis 1524 : résultat 1, type 16",
                    "1. 0140000001 Alpha", "nom Bez", self.card(1))

    def rewrites(self):
        self.expect(self.start("reecrire", "Noël"), 0, "Avis 1524 : résultat 1, type 7",
                    "En-tête : Carnetel V4.00 (C) DROV SOFTWARE", "Demande : Noël")

    def inserts(self):
        run = self.start("inserer", "Nom=Noël;Ville=Évry;Fax=0140000042", "Ste1=Beta")
        self.place.confirm()
        self.expect(run, 0, "Avis 1424 : résultat 1, type 8")
        assert self.place.card_of(None) == {"Nom": "Noël", "Ville": "Évry", "Fax": "0140000042"}
        assert self.place.card_of("Beta") == {"Ste1": "Beta"}

    def captures(self):
        card = "Ste1=Cap;Adr1=3 rue de l'été;CP=75001;Ville=Évry;Tel1=0140000051;Fax=0140000052"
        fields = {"Adr1": "3 rue de l'été", "CP": "75001", "Ville": "Évry", "Tel1": "0140000051",
                  "Fax": "0140000052"}
        for mode, launch_type, keys in (("silencieux", 3, []), ("revue", 4, ["alt+e"]),
                                        ("saisie", 5, ["alt+e", "alt+t"])):
            run = self.start("capturer", "--mode", mode, card.replace("Cap", f"Cap {mode}"))
            if keys:
                self.place.screen.window(trial.ENRICHMENT)
                self.place.screen.press(*keys)
            self.place.confirm()
            self.expect(run, 0, f"Avis 1524 : résultat 0, type {launch_type}")
            added = self.place.card_of(f"CAP {mode.upper()}")
            assert {name: added.get(name) for name in fields} == fields, added

    def hears_nothing(self):
        first = self.start("ouvrir")
        self.place.screen.window(trial.MAIN_WINDOW)
        second = self.start("choisir")
        output, errors = second.communicate(timeout=trial.PATIENCE_SECONDS)
        assert (second.returncode, output) == (3, ""), output
        assert errors.startswith("Carnetel n'a rien répondu"), errors
        self.place.screen.press("alt+f", "q")
        self.expect(first, 0)

    def reads_a_file(self):
        self.place.tool("extract", self.place.exchange, "--number", "fax", "--all", "--long")
        run = self.start("lire", "--long")
        output, _ = run.communicate(timeout=trial.PATIENCE_SECONDS)
        assert run.returncode == 0
        assert re.search(r"1\. 0140000012 +Été", output), output
        self.expect(self.start("lire"), 1)

    def run(self):
        self.make_directory()
        self.chooses()
        self.chooses_several()
        self.makes_a_viafax_job()
        self.looks_up()
        self.rewrites()
        self.hears_nothing()
        self.reads_a_file()
        self.inserts()
        self.captures()
        self.place.tool("check")


def main():
    with trial.Trial(PROGRAM, TOOL) as place:
        # Terminals tell their window in it, and here is none.
        place.environment.pop("WINDOWID", None)
        Example(place).run()


if __name__ == "__main__":
    main()
