#!/bin/bash
# Sets up, builds and tests: the core under AddressSanitizer and UndefinedBehaviorSanitizer, then
# everything in the ordinary debug build. Ends with CTest's closing lines, status 0 when all passed.
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
build dev
ctest --preset asan
ctest --preset dev
