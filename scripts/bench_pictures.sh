#!/usr/bin/env bash
# Pictures of the 1024x600 bench page: bytes, emission time against libpng's default
# encoder, and whole default runs against a reference binary. Not a test.
# Usage: scripts/bench_pictures.sh [REF_EXE] [RUNS]
#   REF_EXE  another compose binary to time against (e.g. one built from main); optional
set -euo pipefail
cd "$(dirname "$0")/.."
REF=${1:-}
RUNS=${2:-20}
EXE=$PWD/templates/ui_blocks/compose
SPEC=$PWD/examples/bench_page_1024x600.json
BUILD_DIR=${BUILD_DIR:-build}
[ -x "$EXE" ] || bash scripts/setup.sh
cmake --build "$BUILD_DIR" --target emit_bench png_compare >/dev/null
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

echo "== emission (CPU time, one process) =="
"$BUILD_DIR/bench/emit_bench" 5 "$SPEC"

echo "== picture bytes of a default run =="
"$EXE" "$SPEC" --project "$work/new" >/dev/null
if [ -n "$REF" ]; then
  "$REF" "$SPEC" --project "$work/ref" >/dev/null
  echo -n "against $REF: "
  "$BUILD_DIR/bench/png_compare" "$work/ref/resources/images" "$work/new/resources/images" | tail -1
else
  echo "$(ls "$work/new/resources/images" | wc -l) pictures, $(cat "$work/new/resources/images"/*.png | wc -c) bytes"
fi

echo "== whole default runs, fresh project each =="
if command -v hyperfine >/dev/null; then
  cmds=("$EXE $SPEC --project $work/h_new")
  [ -n "$REF" ] && cmds+=("$REF $SPEC --project $work/h_ref")
  hyperfine -N -w 3 -r "$RUNS" --prepare "rm -rf $work/h_new $work/h_ref" "${cmds[@]}"
else
  for exe in "$EXE" ${REF:+"$REF"}; do
    /usr/bin/time -f "$exe: %e s wall, %U s user, %S s sys, %M KB" "$exe" "$SPEC" --project "$work/t$RANDOM" >/dev/null
  done
fi
