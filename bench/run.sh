#!/usr/bin/env bash
# Measures the main jobs on 32767 cards beside SQLite and plain file work, and the peak memory of the
# tool's commands, and prints both tables. bench/run.sh FILTER measures only the jobs that match.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh --bench >&2
cmake --preset bench >/dev/null
cmake --build --preset bench -j 2 >&2
exec python3 bench/table.py build/bench "${1:-}"
