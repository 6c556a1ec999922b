#!/bin/bash
# Makes the README's picture of the main window anew: docs/images/main-window.png, drawn off screen
# on a fresh sample directory.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/build.sh

scripts/setup.sh
build release carnetel-cli carnetel-render
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
tool=(build/release/src/cli/carnetel-cli --profile "$folder/profile.ini"
  --parameters "$folder/EXEMPLE.TRS" --quiet -d "$folder/EXEMPLE")
"${tool[@]}" create
"${tool[@]}" import samples/correspondants.csv --charset ansi
"${tool[@]}" mark 2 4 5
mkdir -p docs/images
QT_QPA_PLATFORM=offscreen build/release/src/desktop/carnetel-render "$folder/EXEMPLE" \
  docs/images/main-window.png
echo docs/images/main-window.png
