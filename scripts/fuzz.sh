#!/usr/bin/env bash
# scripts/fuzz.sh SECONDS: runs the two libFuzzer targets, SECONDS each — the page reader
# (spec.json text to layout document) and the layout reader of json2img / check_all.
# Seeds: the example pages (examples/) and their reviewed layouts (tests/expected/). The
# corpus grows in build-sanitize/fuzz-corpus between runs. An input that makes a target
# fail is copied to fuzz/regressions/<reader>/, where the test suite replays it for good.
set -euo pipefail
cd "$(dirname "$0")/.."
secs=${1:?usage: scripts/fuzz.sh SECONDS}

SKIP_BUILD=1 bash scripts/setup.sh --with-clang
BUILD_DIR=${BUILD_DIR:-build-sanitize}
CC=clang CXX=clang++ cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCOMPOSE_SANITIZE=ON -DCOMPOSE_FUZZ=ON >/dev/null
cmake --build "$BUILD_DIR" -j "${JOBS:-$(nproc)}" --target page_fuzz layout_fuzz

status=0
for reader in page layout; do
  corpus="$BUILD_DIR/fuzz-corpus/$reader"
  found="$BUILD_DIR/fuzz-found/$reader"
  mkdir -p "$corpus" "$found"
  if [ "$reader" = page ]; then seeds=examples; else seeds=tests/expected; fi
  cp -n "$seeds"/*.json "$corpus"/ 2>/dev/null || true
  echo "-- fuzz $reader: ${secs}s"
  if ! "$BUILD_DIR/fuzz/${reader}_fuzz" "$corpus" -dict=fuzz/json.dict -max_total_time="$secs" -timeout=20 \
      -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 -artifact_prefix="$found/" 2>"$found/log.txt"; then
    status=1
  fi
  tail -n 12 "$found/log.txt"
  for f in "$found"/crash-* "$found"/timeout-* "$found"/oom-* "$found"/leak-*; do
    [ -e "$f" ] || continue
    mv "$f" "fuzz/regressions/$reader/$(basename "$f")"
    echo "[X] $reader: $(basename "$f") kept in fuzz/regressions/$reader/" >&2
    status=1
  done
done
exit "$status"
