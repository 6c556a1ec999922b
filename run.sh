#!/bin/bash
# Sets up, builds Carnetel and starts it on a sample directory, which is made in the user's data
# folder the first time and never touched again. Without a display it shows the sample through the
# terminal tool and draws the main window into a picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/build.sh

scripts/setup.sh
build release carnetel-cli carnetel carnetel-render
cli=$PWD/build/release/src/cli/carnetel-cli
window=$PWD/build/release/src/desktop/carnetel

data=${CARNETEL_HOME:-${XDG_DATA_HOME:-${HOME:?}/.local/share}/carnetel}
mkdir -p "$data"
data=$(cd "$data" && pwd)

# The family is made in a folder beside its place and moved in at the end, the main file last: an
# interrupted run leaves nothing that looks like a directory. Settings of its own keep the user's
# out of it.
make_sample() {
  local making
  making=$(mktemp -d "$data/.exemple.XXXXXX")
  # shellcheck disable=SC2064  # the folder of now
  trap "rm -rf '$making'" EXIT
  local tool=("$cli" --profile "$making/profile.ini" --parameters "$making/EXEMPLE.TRS"
    -d "$making/EXEMPLE")
  "${tool[@]}" create --description "Correspondants d'exemple"
  "${tool[@]}" import samples/correspondants.csv --charset ansi
  rm -f "$making/EXEMPLE.TRS" "$making/profile.ini"
  local main_file file
  main_file=$(find "$making" -maxdepth 1 -iname 'EXEMPLE.DAN')
  for file in "$making"/EXEMPLE.*; do
    [ "$file" = "$main_file" ] || mv -f "$file" "$data/"
  done
  mv -n "$main_file" "$data/EXEMPLE.DAN"
  rm -rf "$making"
  trap - EXIT
}

if [ -z "$(find "$data" -maxdepth 1 -iname 'EXEMPLE.DAN')" ]; then
  echo "Création du répertoire d'exemple dans $data…"
  make_sample
fi

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "Carnetel s'ouvre sur $data/EXEMPLE.DAN"
  exec "$window" /X "$data/EXEMPLE.DAN"
fi

echo "Pas d'écran ici : voici l'exemple par l'outil carnetel-cli, et la fenêtre en image."

# show TITLE ARGUMENT...: one command of the tool on the sample, under its title.
show() {
  echo
  echo "── $1 : carnetel-cli -d EXEMPLE ${*:2}"
  "$cli" -d "$data/EXEMPLE" "${@:2}"
}

show "Le répertoire" info
letter=$(show "Les fiches de la lettre D" list --letter D)
head -n 12 <<<"$letter"
[ "$(wc -l <<<"$letter")" -le 12 ] || echo "…"
row=$(awk 'NR > 2 && match($0, /[0-9]+/) { print substr($0, RSTART, RLENGTH); exit }' <<<"$letter")
show "Une fiche entière" show "${row:-1}"

picture=$PWD/build/carnetel.png
QT_QPA_PLATFORM=offscreen "$window-render" "$data/EXEMPLE" "$picture" 2>/dev/null
echo
echo "La fenêtre principale, en image : $picture"

cat <<TEXTE

Pour continuer :

  outil() { "$cli" -d "$data/EXEMPLE" "\$@"; }
  outil find Ste1=DU --all                  les sociétés qui commencent par DU
  outil add Ste1="DUPONT S.A." Nom=Dupont Tel1="01 40 00 00 01"
  outil edit 1 Tel1="01 40 00 00 02"        modifie la fiche de la ligne 1
  outil mark 1 2 3                          marque trois fiches
  outil export /tmp/fiches.csv              exporte les fiches marquées
  outil check                               vérifie la famille de fichiers
  $cli --help
TEXTE
