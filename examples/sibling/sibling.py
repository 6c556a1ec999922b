#!/usr/bin/env python3
"""A small program beside Carnetel, as its makers would write one: it starts Carnetel for a number,
a look-up, an insertion or a capture, waits for the end and shows what came back.

How the two talk is all in carnetel_link.py; here is what this program does with it.
"""

import argparse
import os
import sys

import carnetel_link as link

NOTHING_CAME, NOT_SERVED = 1, 3
CARRIERS = {"sortie": "stdout", "fichier": "file", "tube": "pipe"}
CAPTURE_MODES = {"silencieux": link.CAPTURE_SILENT, "revue": link.CAPTURE_REVIEW,
                 "saisie": link.CAPTURE_EDIT}


# ---- what every command does ----

def call_of(words, launch_type):
    """The call of a command: what it wants, and what the user says on the command line."""
    if words.long:
        launch_type += link.WITH_LONG_RECORDS
    return link.Call(launch_type=launch_type, file=words.fichier, seat=words.poste,
                     number=link.NUMBER_KINDS[words.numero], prefix=words.prefixe)


def run(words, call):
    """Runs Carnetel and shows its notice; ends this program when there is none."""
    if words.montrer:
        print(words.programme, *call.options(), flush=True)
    notice = link.start_and_wait(call, words.programme, CARRIERS[words.avis])
    if notice is None:
        print("Carnetel n'a rien répondu : il est déjà ouvert, ou son annuaire ne s'ouvre pas.",
              file=sys.stderr)
        sys.exit(NOT_SERVED)
    print(f"Avis {notice.message} : résultat {notice.result}, type {notice.launch_type}")
    return notice


def show(records):
    for place, record in enumerate(records, start=1):
        print(f"{place:3}. {record.number:22}{record.company}")
        if record.name:
            print(f"     {'nom':22}{record.name}")
        print(f"     {'fiche':22}{record.card} de {record.directory}")
    return 0 if records else NOTHING_CAME


# ---- the commands ----

def open_window(words):
    """The whole program; it tells nothing at its end."""
    link.start_and_wait(call_of(words, link.MAIN_WINDOW), words.programme)
    return 0


def choose(words):
    call = call_of(words, link.CHOOSE_MANY if words.plusieurs else link.CHOOSE_ONE)
    if run(words, call).result == 0:
        print("Rien n'a été choisi.")
    return show(link.take_records(words.fichier, call.long_records))


def viafax(words):
    notice = run(words, call_of(words, link.VIAFAX))
    job = link.take(words.fichier).decode(link.OEM)
    print(f"Adresses dans le travail Viafax : {notice.result}")
    print(job.replace("\r\n", "\n"), end="")
    return 0 if notice.result > 0 else NOTHING_CAME


def look_up(words):
    call = call_of(words, link.LOOK_UP)
    link.write_look_up(words.fichier, words.nom)
    run(words, call)
    return show(link.take_reply(words.fichier, call.long_records))


def rewrite(words):
    link.write_look_up(words.fichier, words.nom)
    notice = run(words, call_of(words, link.REWRITE))
    banner, texts = link.parse_request(link.take(words.fichier))
    print(f"En-tête : {banner}")
    print(f"Demande : {', '.join(texts)}")
    return 0 if notice.result == 1 else NOTHING_CAME


def insert(words):
    link.write_requests(words.fichier, words.fiche)
    notice = run(words, call_of(words, link.INSERT))
    # Carnetel deletes the file of an insertion; one that it refused is still there.
    link.take(words.fichier)
    return 0 if notice.result == 1 else NOTHING_CAME


def capture(words):
    link.write_captures(words.fichier, words.fiche)
    run(words, call_of(words, CAPTURE_MODES[words.mode]))
    link.take(words.fichier)
    return 0


def read(words):
    """What a fax program does when Carnetel has started it after a press of its button."""
    return show(link.take_records(words.fichier, words.long))


# ---- the command line ----

def fields_of(text):
    """'Ste1=Dupont & fils;Tel1=0140000001' as a dictionary."""
    pairs = [part.partition("=") for part in text.split(";")]
    for name, sign, _ in pairs:
        if not sign or name not in link.FIELDS:
            raise argparse.ArgumentTypeError(f"CHAMP=TEXTE attendu, et non {name!r}")
    return {name: value for name, _, value in pairs}


def request_of(text):
    """The same as rows of a request: surname and company first, whether given or not."""
    fields = fields_of(text)
    rows = [("Nom", fields.pop("Nom", "")), ("Ste1", fields.pop("Ste1", "")), *fields.items()]
    if len(rows) > link.REQUEST_ROWS:
        raise argparse.ArgumentTypeError("trois champs au plus avec Nom et Ste1")
    return rows


# The words of argparse that a user of this program can meet.
FRENCH = {
    "positional arguments": "arguments",
    "show this help message and exit": "montre cette aide",
    "%(prog)s: error: %(message)s\n": "%(prog)s : erreur : %(message)s\n",
    "the following arguments are required: %s": "il manque : %s",
    "unrecognized arguments: %s": "de trop : %s",
    "expected one argument": "il manque sa valeur",
    "invalid %(type)s value: %(value)r": "%(value)r ne convient pas",
    "invalid choice: %(value)r (choose from %(choices)s)": "%(value)r n'est pas de %(choices)s",
}
argparse._ = lambda text: FRENCH.get(text, text)


def add_command(commands, name, action, text, file="ECHANGE.DAT"):
    added = commands.add_parser(name, help=text, description=text)
    added.add_argument("--fichier", default=file, type=os.path.abspath,
                       help="le fichier entre les deux programmes (%(default)s)")
    added.set_defaults(action=action, numero="fax", long=False, prefixe="?")
    return added


def add_start(commands, name, action, text, file="ECHANGE.DAT"):
    """A command that starts Carnetel."""
    added = add_command(commands, name, action, text, file)
    added.add_argument("--programme", default="carnetel", help="le programme carnetel à lancer")
    added.add_argument("--avis", choices=CARRIERS, default="sortie",
                       help="par où l'avis de la fin doit venir (%(default)s)")
    added.add_argument("--poste", type=int, default=0, help="le numéro de ce poste en réseau")
    added.add_argument("--montrer", action="store_true", help="montre la commande lancée")
    return added


def add_number(command, default="fax"):
    command.add_argument("--numero", choices=link.NUMBER_KINDS, default=default,
                         help="le numéro voulu (%(default)s)")


def add_long(command):
    command.add_argument("--long", action="store_true", help="avec le nom dans l'enregistrement")


def make_parser():
    parser = argparse.ArgumentParser(
        description="Exemple de programme voisin de Carnetel : il le lance, attend son avis et "
                    "montre ce qui est revenu.")
    commands = parser.add_subparsers(required=True, metavar="COMMANDE")
    add_start(commands, "ouvrir", open_window,
              "ouvre l'annuaire, avec les boutons des programmes voisins")

    command = add_start(commands, "choisir", choose, "fait choisir un correspondant")
    command.add_argument("--plusieurs", action="store_true", help="ou plusieurs à la fois")
    add_number(command)
    add_long(command)

    command = add_start(commands, "viafax", viafax, "fait choisir les adresses d'un envoi Viafax",
                        file="VIAF0001.TXT")
    add_number(command)

    command = add_start(commands, "chercher", look_up,
                        "cherche le téléphone d'un nom ; l'utilisateur choisit s'il n'est pas "
                        "trouvé, ou l'est deux fois")
    command.add_argument("nom", metavar="NOM")
    add_number(command, default="tel1")
    add_long(command)

    command = add_start(commands, "reecrire", rewrite, "fait remettre en forme une demande")
    command.add_argument("nom", metavar="NOM")

    command = add_start(commands, "inserer", insert, "fait insérer des fiches")
    command.add_argument("fiche", metavar="CHAMP=TEXTE;…", nargs="+", type=request_of,
                         help="Nom, Ste1 et trois autres champs au plus")

    command = add_start(commands, "capturer", capture, "enrichit l'annuaire d'adresses captées")
    command.add_argument("fiche", metavar="CHAMP=TEXTE;…", nargs="+", type=fields_of,
                         help="de Ste1 Adr1 CP Ville Tel1, et Tel2 ou Fax")
    command.add_argument("--mode", choices=CAPTURE_MODES, default="revue", help="(%(default)s)")
    command.add_argument("--prefixe", default="?", help="devant chaque numéro (? : aucun)")

    add_long(add_command(commands, "lire", read, "montre et retire les numéros d'un fichier"))
    return parser


def main():
    words = make_parser().parse_args()
    try:
        return words.action(words)
    except OSError as error:
        print(f"Inaccessible : {error.filename}", file=sys.stderr)
        return NOT_SERVED


if __name__ == "__main__":
    sys.exit(main())
