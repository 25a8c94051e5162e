#!/usr/bin/env bash
# Benchmarks of "compose serve" (not tests), with our own client (scripts/bench_serve.py), on
# 127.0.0.1 only:
#  1. CLIENTS (16) clients polling the bench page's state and preview as fast as they are
#     answered, each with a preview tab's long poll open, while the page is saved every second:
#     answer times, median and 90th percentile;
#  2. save to new preview on the bench page (SAVES, 30): the long poll answered and the new
#     picture received, median;
#  3. the server's memory after its first composition and after 50 saves of a page of
#     MEM_BLOCKS (1,000) blocks, with 16 clients reading the state meanwhile.
# Usage: scripts/bench_serve.sh [EXE]   (EXE: the compose to measure, default this build's)
set -euo pipefail
cd "$(dirname "$0")/.."
EXE=${1:-templates/ui_blocks/compose}
BUILD_DIR=${BUILD_DIR:-build}
PAGE=examples/bench_page_1024x600.json
[ -x "$EXE" ] || bash scripts/setup.sh
cmake --build "$BUILD_DIR" --target make_page >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "== serve: ${CLIENTS:-16} clients polling $(basename "$PAGE"), saved every second =="
python3 scripts/bench_serve.py poll "$EXE" "$PAGE" "${CLIENTS:-16}" "${SECONDS_POLL:-10}"
echo
echo "== serve: save to new preview, $(basename "$PAGE") =="
python3 scripts/bench_serve.py save "$EXE" "$PAGE" "${SAVES:-30}"
echo
echo "== serve: memory, ${MEM_BLOCKS:-1000} blocks =="
"$BUILD_DIR/bench/make_page" "$PAGE" "${MEM_BLOCKS:-1000}" >"$work/page.json"
python3 scripts/bench_serve.py memory "$EXE" "$work/page.json" 50
