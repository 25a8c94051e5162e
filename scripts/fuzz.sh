#!/usr/bin/env bash
# scripts/fuzz.sh SECONDS: runs the three libFuzzer targets, SECONDS each — the page reader
# (spec.json text to layout document), the layout reader of json2img / check_all and the
# request reader of "compose serve" (raw request bytes, read whole and as they arrive).
# Seeds: one small page per block of each example page (fuzz/seeds.py), the reviewed
# layouts (tests/expected/) and the requests a browser sends to the server. The
# corpus grows in build-sanitize/fuzz-corpus between runs. An input that makes a target
# fail is copied to fuzz/regressions/<reader>/, where the test suite replays it for good.
set -euo pipefail
cd "$(dirname "$0")/.."
secs=${1:?usage: scripts/fuzz.sh SECONDS}

SKIP_BUILD=1 bash scripts/setup.sh --with-clang
BUILD_DIR=${BUILD_DIR:-build-sanitize}
export CCACHE_BASEDIR="$PWD"
CC=clang CXX=clang++ cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCOMPOSE_SANITIZE=ON -DCOMPOSE_FUZZ=ON -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
cmake --build "$BUILD_DIR" -j "${JOBS:-$(nproc)}" --target page_fuzz layout_fuzz http_fuzz

status=0
for reader in page layout http; do
  corpus="$BUILD_DIR/fuzz-corpus/$reader"
  found="$BUILD_DIR/fuzz-found/$reader"
  mkdir -p "$corpus" "$found"
  dict=fuzz/json.dict
  if [ "$reader" = page ]; then
    python3 fuzz/seeds.py page "$corpus" examples/*.json
    max_len=4096
  elif [ "$reader" = http ]; then
    python3 fuzz/seeds.py http "$corpus"
    dict=fuzz/http.dict
    max_len=2048
  else
    python3 fuzz/seeds.py layout "$corpus" tests/expected/*.json
    max_len=8192
  fi
  echo "-- fuzz $reader: ${secs}s"
  if ! "$BUILD_DIR/fuzz/${reader}_fuzz" "$corpus" -dict="$dict" -max_total_time="$secs" -timeout=20 \
      -rss_limit_mb=2048 -max_len=$max_len -print_final_stats=1 -artifact_prefix="$found/" >"$found/log.txt" 2>&1; then
    tail -n 30 "$found/log.txt" >&2
    status=1
  fi
  runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$found/log.txt" | grep -o '[0-9]*$' || echo "?")
  echo "fuzz $reader: $runs executions"
  echo "$(date -u +%F) $reader $runs" >>"$BUILD_DIR/fuzz-runs.txt"
  for f in "$found"/crash-* "$found"/timeout-* "$found"/oom-* "$found"/leak-*; do
    [ -e "$f" ] || continue
    mv "$f" "fuzz/regressions/$reader/$(basename "$f")"
    echo "[X] $reader: $(basename "$f") kept in fuzz/regressions/$reader/" >&2
    status=1
  done
done
exit "$status"
