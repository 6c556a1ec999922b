#!/bin/bash
# Sets up, builds and tests: the floors below the window under AddressSanitizer and
# UndefinedBehaviorSanitizer, then windows, whole programs and lint in the ordinary debug build. No
# test is compiled twice. Ends with CTest's closing lines, status 0 when all passed.
#
#   ./test.sh                   everything
#   ./test.sh -R storage        the ordinary build only, with these arguments for ctest
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
. scripts/build.sh

scripts/setup.sh --test
if [ $# -gt 0 ]; then
  build dev
  exec ctest --preset dev "$@"
fi
build asan
build window
ctest --preset asan
ctest --preset window
