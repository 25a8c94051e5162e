#!/usr/bin/env bash
# Times full runs (layout, pictures, logic) on the 1024x600 bench page. Not a test.
# Usage: scripts/bench.sh [RUNS]
set -euo pipefail
cd "$(dirname "$0")/.."
RUNS=${1:-5}
EXE=templates/ui_blocks/compose
[ -x "$EXE" ] || bash scripts/setup.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for i in $(seq 1 "$RUNS"); do
  start=$(date +%s%N)
  "$EXE" examples/bench_page_1024x600.json --project "$work/p$i" >/dev/null
  end=$(date +%s%N)
  echo "run $i: $(( (end - start) / 1000000 )) ms"
done
