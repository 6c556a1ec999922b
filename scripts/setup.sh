#!/bin/bash
# Installs what the build needs from the packages of Debian 12, and only what is missing: when
# everything is there, neither apt nor the network is touched.
#
#   scripts/setup.sh            what ./run.sh needs
#   scripts/setup.sh --test     and what ./test.sh needs to try the end of a desktop's session, and
#                               printing: a reader of PDF files and, for root, a print server with
#                               a printer that makes them
#   scripts/setup.sh --bench    and what the preset bench needs
#   scripts/setup.sh --clang    and what the presets tidy and fuzz need
set -euo pipefail

packages=(build-essential cmake ninja-build ccache pkg-config git python3 clang-format
  libcli11-dev libfmt-dev libhpdf-dev nlohmann-json3-dev libgtest-dev libgmock-dev libshp-dev
  libxcb1-dev qt6-base-dev qt6-svg-dev qt6-translations-l10n fonts-dejavu-core xvfb xauth xdotool)
# Without these the tests still run, but for those that need them.
extras=()
for option in "$@"; do
  case $option in
    --test)
      extras+=(libsm-dev poppler-utils)
      # Nobody else may run the test that these are for.
      [ "$(id -u)" -ne 0 ] || extras+=(cups printer-driver-cups-pdf)
      ;;
    --bench) packages+=(libbenchmark-dev libsqlite3-dev) ;;
    --clang) packages+=(clang clang-tidy libclang-rt-14-dev) ;;
    *)
      echo "setup.sh : option inconnue / unknown option: $option" >&2
      exit 2
      ;;
  esac
done

if ! command -v dpkg-query >/dev/null; then
  echo "Carnetel : ce système n'est pas une Debian ; les outils sont supposés présents." >&2
  echo "Carnetel: not a Debian system; the tools are taken to be there." >&2
  exit 0
fi

# not_installed PACKAGE...: those of them, one a line.
not_installed() {
  local known package
  # One line a package, "name installed"; dpkg-query fails when it does not know one of them.
  # shellcheck disable=SC2016  # the fields are dpkg-query's
  known=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "$@" 2>/dev/null || true)
  for package in "$@"; do
    grep -qxF "$package installed" <<<"$known" || echo "$package"
  done
}
mapfile -t missing < <(not_installed "${packages[@]}")
absent=()
[ ${#extras[@]} -eq 0 ] || mapfile -t absent < <(not_installed "${extras[@]}")
[ $((${#missing[@]} + ${#absent[@]})) -gt 0 ] || exit 0

# give_up RAISON REASON: ends with what the user has to install by hand, well when only extras lack.
give_up() {
  if [ ${#missing[@]} -eq 0 ]; then
    echo "Carnetel : ${absent[*]} : installation impossible : $1 ; des essais sont laissés" >&2
    echo "Carnetel: ${absent[*]}: cannot install: $2; some tests are left out" >&2
    exit 0
  fi
  {
    echo "Carnetel : installation impossible : $1. À installer à la main :"
    echo "Carnetel: cannot install what is missing: $2. Install by hand:"
    echo
    echo "  apt-get install ${missing[*]}"
  } >&2
  exit 1
}

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || give_up "il faut être root" "this takes root, and there is no sudo"
  as_root=(sudo)
fi
command -v apt-get >/dev/null || give_up "apt-get manque" "there is no apt-get"

# apt <arguments>: apt-get that asks nothing and waits for another one to end.
apt() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -qq -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@" </dev/null
}

# install PACKAGE...
install() {
  echo "Installation de / installing: $*" >&2
  apt install -y --no-install-recommends "$@" >&2 || give_up "apt-get a échoué" "apt-get failed"
}

# A mirror that is out of reach matters only when the packages cannot be had after all.
apt update || echo "apt-get update: not complete, carrying on with the known packages" >&2
[ ${#missing[@]} -eq 0 ] || install "${missing[@]}"
missing=()
[ ${#absent[@]} -eq 0 ] || install "${absent[@]}"
